// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

namespace TARN {

// When the process ends while it writes a file in place, the file holds a mixture of its former and
// its new content. During the write, a file in the user's state folder (statefolder.h) keeps both.

/// Puts both contents on the disk before the file at @p path, which exists, is touched.
bool keepSafetyCopy(const QString &path, const QByteArray &former, const QByteArray &content,
                    QString *error);

/// Removes the copy, if there is one: the file at @p path is whole again.
void dropSafetyCopy(const QString &path);

/// True when a write into the file at @p path was interrupted: there is a copy of both contents,
/// and the file holds a mixture of them. A file that was written by others since is no mixture.
/// @p content becomes the new content. Costs next to nothing without a copy.
bool findUnfinishedWrite(const QString &path, QByteArray *content);

} // namespace TARN
