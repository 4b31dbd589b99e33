// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

namespace TARN {

/// What tells whether another file stands at @p path by now: the links on the way, and the number
/// of the file that they lead to.
QByteArray fileIdentity(const QString &path);

/// The same, and what changes with every write to that file.
QByteArray fileState(const QString &path);

} // namespace TARN
