// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string_view>

namespace NETWEIR::Internal {

/// Whether the name behind @p text, the end of a source up to that name, is declared as a variable
/// by a keyword of Verilog: "reg [3:0] a, " does. The text may begin anywhere. Nothing if no
/// declaration begins in it.
std::optional<bool> declaresVariable(std::string_view text);

} // namespace NETWEIR::Internal
