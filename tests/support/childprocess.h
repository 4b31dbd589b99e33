// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <functional>

#include <sys/types.h>

namespace TarnTest {

/// Runs @p check in a child process, so that its limits and its user end with it. Returns the
/// error that @p check returns, empty for none.
QString inChild(const std::function<QString()> &check);

// For child processes alone:

/// Root may write everywhere: tests of what is forbidden run as another user.
bool becomeOrdinaryUser();

/// Limits the files of this process to @p size. A write beyond that fails and comes with a signal
/// that ends a process without a handler.
void limitFileSize(quint64 size);

/// Mounts a file system of @p size bytes on @p folder, for this process only.
bool mountSmallDisk(const QString &folder, int size);

// For any process:

/// Whether a child can mountSmallDisk(). Only root can, and not everywhere.
bool canMountSmallDisk(const QString &folder);

/// The user that becomeOrdinaryUser() means.
constexpr uid_t OrdinaryUser = 65534;

/// Makes that user the owner of the file or folder, if this one is root.
void giveToOrdinaryUser(const QString &path);

} // namespace TarnTest
