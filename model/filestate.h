// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

namespace TARN {

/// Stays the same as long as @p path leads to the same file over the same links.
QByteArray fileIdentity(const QString &path);

/// Stays the same as long as fileIdentity() does and nothing is written to the file.
QByteArray fileState(const QString &path);

} // namespace TARN
