// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

namespace TARN {

/// Replaces the content of the file at @p path, creating the file when there is none. Afterwards
/// the file holds the whole new content, or, when false is returned, its former content; @p error
/// then tells why. This holds on a full disk and when the process is killed. In a folder that
/// forbids new files, the file itself is written: after a kill restoreFile() makes it whole again,
/// with a copy that is kept in the user's state folder during the write.
///
/// Keeps the permissions and, where the system allows it, owner and group. A symbolic link stays
/// and its target is replaced. Of several hard links this name gets the new content, the others
/// keep the former. A file that the user may not write is refused.
bool replaceFile(const QString &path, const QByteArray &content, QString *error);

/// Completes an interrupted write into the file at @p path. Returns false when there was none.
/// @p content becomes what was to be written, even when the file can no longer be written.
bool restoreFile(const QString &path, QByteArray *content);

} // namespace TARN
