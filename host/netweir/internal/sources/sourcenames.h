// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVector>

namespace NETWEIR::Internal {

/// A path that users know, and the plain name that the tool is given for it.
struct PathAlias
{
    QByteArray alias;
    QString path;
};

/// The files that the preprocessor read, by their numbers and by the names that it prints.
class SourceNames
{
public:
    /// @p files are those that the tool was given.
    explicit SourceNames(const QVector<PathAlias> &files);

    /// Numbers the file @p name, once; @p folders are the include folders.
    int add(const QByteArray &name, const QVector<PathAlias> &folders);

    const QString &path(int number) const { return m_paths[number]; }

    /// The path behind a name. Null for a name that is no source.
    QString path(const QByteArray &name) const;

private:
    QString resolve(const QByteArray &name, const QVector<PathAlias> &folders) const;

    QHash<QByteArray, QString> m_given;  ///< Paths of the files that the tool was given, by alias.
    QVector<QString> m_paths;            ///< By number.
    QHash<QByteArray, int> m_numbers;    ///< By name.
    QHash<QByteArray, int> m_cutNumbers; ///< By the name up to its first blank.
};

/// @p name up to its first blank, where the preprocessor cuts the names of files in some places.
QByteArray upToBlank(const QByteArray &name);

} // namespace NETWEIR::Internal
