// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "sourcenames.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace NETWEIR::Internal {

SourceNames::SourceNames(const QVector<PathAlias> &files)
{
    for (const PathAlias &file : files)
        m_given.insert(file.alias, file.path);
}

int SourceNames::add(const QByteArray &name, const QVector<PathAlias> &folders)
{
    const auto known = m_numbers.constFind(name);
    if (known != m_numbers.constEnd())
        return *known;
    const int number = m_paths.size();
    m_paths.append(resolve(name, folders));
    m_numbers.insert(name, number);
    m_cutNumbers.insert(upToBlank(name), number);
    return number;
}

QString SourceNames::resolve(const QByteArray &name, const QVector<PathAlias> &folders) const
{
    const auto given = m_given.constFind(name);
    if (given != m_given.constEnd())
        return *given;
    for (const PathAlias &folder : folders) {
        if (name.startsWith(folder.alias + '/'))
            return QDir::cleanPath(folder.path + QFile::decodeName(name.mid(folder.alias.size())));
    }
    return QFile::decodeName(name);
}

QString SourceNames::path(const QByteArray &name) const
{
    const int known = m_numbers.value(name, m_cutNumbers.value(name, -1));
    return known >= 0 ? m_paths[known] : m_given.value(name);
}

QByteArray upToBlank(const QByteArray &name)
{
    const auto blank =
        std::find_if(name.begin(), name.end(), [](char c) { return c == ' ' || c == '\t'; });
    return name.left(int(blank - name.begin()));
}

} // namespace NETWEIR::Internal
