// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVector>

namespace NETWEIR::Internal {

/// A path of the user and the plain name under which the tool knows it.
struct PathAlias
{
    QByteArray alias;
    QString path;
};

/// The files that the preprocessor has read, by number and by the name that it prints.
class SourceNames
{
public:
    /// @p files are the input files of the tool.
    explicit SourceNames(const QVector<PathAlias> &files);

    /// Numbers the file @p name, once; @p folders are the include folders.
    int add(const QByteArray &name, const QVector<PathAlias> &folders);

    const QString &path(int number) const { return m_paths[number]; }

    /// The path for a name. Null for a name that is not a source.
    QString path(const QByteArray &name) const;

private:
    QString resolve(const QByteArray &name, const QVector<PathAlias> &folders) const;

    QHash<QByteArray, QString> m_given;  ///< Paths of the input files, by alias.
    QVector<QString> m_paths;            ///< By number.
    QHash<QByteArray, int> m_numbers;    ///< By name.
    QHash<QByteArray, int> m_cutNumbers; ///< By the name up to its first blank.
};

/// @p name up to its first blank, where the preprocessor cuts the names of files in some places.
QByteArray upToBlank(const QByteArray &name);

} // namespace NETWEIR::Internal
