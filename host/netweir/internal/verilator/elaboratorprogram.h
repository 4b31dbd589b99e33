// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace NETWEIR::Internal {

/// Path of the elaborator: the environment variable TARN_VERILATOR, otherwise "verilator_bin" on
/// the PATH, otherwise the path at build time. Null when there is none; @p error then says what to
/// do.
QString findElaborator(QString *error);

} // namespace NETWEIR::Internal
