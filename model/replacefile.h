// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

namespace TARN {

/// Replaces the content of the file at @p path, creating the file when there is none. Afterwards
/// the file holds the whole new content, or, when false is returned, its former content; @p error
/// then tells why. This holds on a full disk and when the process is killed. A folder that forbids
/// new files leaves no other way than writing into the file itself: after a kill restoreFile()
/// makes it whole again, with a copy that is kept in the user's state folder while the file is
/// written.
///
/// Keeps the permissions and, where the system allows it, owner and group. A symbolic link stays
/// and its target is replaced. Of several hard links this name gets the new content, the others
/// keep the former. A file that the user may not write is refused.
bool replaceFile(const QString &path, const QByteArray &content, QString *error);

/// Repeats a write into the file at @p path that came to no end. Returns false when there was none.
/// @p content is what was to be written; when the file can no longer be written, it stands there
/// alone.
bool restoreFile(const QString &path, QByteArray *content);

} // namespace TARN
