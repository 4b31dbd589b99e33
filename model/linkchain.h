// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

namespace TARN {

/// @p path and, link by link, the paths to which it leads. The last one is no link and need not
/// exist. Empty when the links form a circle.
QStringList linkChain(const QString &path);

} // namespace TARN
