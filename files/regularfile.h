// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

class QFile;

namespace Files {

/// What came of the wish to read a file.
enum class Access {
    Granted,
    Folder,
    Special, ///< A pipe, a socket or a device.
    TooLarge,
    Failed,
};

/// Opens the regular file at @p path, or the one that a link there leads to, as @p file for
/// reading. Never waits: nothing else is opened, even when it takes the place of the file just now,
/// since reading a pipe or a device may have no end. @p error becomes the reason of the system,
/// without the path, of Access::Failed.
Access openRegularFile(const QString &path, QFile *file, QString *error);

/// Reads the whole regular file at @p path when it has @p limit bytes at most. Takes memory for
/// what is there, not for what is allowed. @p content is empty unless access was granted. Calls
/// @p afterPiece, which may throw, after each MB.
Access readRegularFile(const QString &path, qint64 limit, QByteArray *content, QString *error,
                       const std::function<void()> &afterPiece = {});

} // namespace Files
