// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// A synthetic design whose text weighs more than its nets, like sources that people write: many
/// files with comments, headers that every module includes, macros for registers, generate loops,
/// functions and case statements, below the top "large_top".
struct LargeSources
{
    int files = 300; ///< Without headers and the file of the top.
    int modulesPerFile = 3;
    int usedPerFile = 1; ///< The others are text that the top does not need.

    /// Writes all files below @p folder. Returns the sources in the order of the project.
    QStringList write(const QString &folder) const;

    /// The folder with the headers.
    static QString includeFolder(const QString &folder);
};
