// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace NETWEIR::Internal {

/// Path of the elaborator: the environment variable TARN_VERILATOR, else "verilator_bin" on the
/// PATH, else where it was when this library was built. Null when there is none; @p error then says
/// what to do.
QString findElaborator(QString *error);

} // namespace NETWEIR::Internal
