// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

class QFile;

namespace Files {

/// The result of opening or reading a file.
enum class Access {
    Granted,
    Folder,
    Special, ///< A pipe, a socket or a device.
    TooLarge,
    Failed,
};

/// Opens the regular file at @p path, or the target of a link there, as @p file for reading. Never
/// opens a pipe or a device, even if one replaces the file at that moment, because reading it may
/// never end. For Access::Failed, @p error is the reason of the system without the path.
Access openRegularFile(const QString &path, QFile *file, QString *error);

/// Reads the whole regular file at @p path if it has no more than @p limit bytes. The memory needed
/// depends on the size of the file, not on the limit. @p content is empty unless access is granted.
/// Calls @p afterPiece, which may throw, after each MB.
Access readRegularFile(const QString &path, qint64 limit, QByteArray *content, QString *error,
                       const std::function<void()> &afterPiece = {});

} // namespace Files
