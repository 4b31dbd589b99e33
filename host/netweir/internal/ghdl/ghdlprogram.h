// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace NETWEIR::Internal {

/// Path of GHDL: the environment variable TARN_GHDL, otherwise "ghdl" on the PATH, otherwise the
/// path at build time. Null when there is none; @p error then says what to do.
QString findGhdl(QString *error);

} // namespace NETWEIR::Internal
