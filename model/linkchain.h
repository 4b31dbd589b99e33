// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

namespace TARN {

/// @p path and, as long as a symbolic link stands there, where it leads. The last one is no link
/// and need not exist. Empty when the links have no end.
QStringList linkChain(const QString &path);

} // namespace TARN
