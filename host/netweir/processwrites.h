// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

namespace NETWEIR {

/// How processes of the design write a variable.
enum class ProcessWrites : quint8 {
    None,
    Possible, ///< None, but it is a reg, integer or time, which only processes write in Verilog.
    Blocking,
    Nonblocking, ///< Perhaps also by blocking assignments.
};

} // namespace NETWEIR
