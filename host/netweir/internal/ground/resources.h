// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace NETWEIR::Internal {

/// Path of a file or folder that is built into the library.
QString resourcePath(const QString &name);

} // namespace NETWEIR::Internal
