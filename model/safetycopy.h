// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

namespace TARN {

// A file that is written in place holds a mixture of its former and its new content when the
// process ends amidst. For so long both stand in a file of the user's state folder
// ($XDG_STATE_HOME or ~/.local/state), named after the path of the file.

/// Puts both contents on the disk before the file at @p path is touched. That file exists.
bool keepSafetyCopy(const QString &path, const QByteArray &former, const QByteArray &content,
                    QString *error);

/// Removes the copy, if there is one: the file at @p path is whole again.
void dropSafetyCopy(const QString &path);

/// Whether a write into the file at @p path came to no end: there is a copy of both contents, and
/// the file holds a mixture of them. @p content is the one that it was to get. A file that anybody
/// else wrote since is no such mixture. Costs next to nothing without a copy.
bool findUnfinishedWrite(const QString &path, QByteArray *content);

} // namespace TARN
