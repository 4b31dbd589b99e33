// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/parts/partroot.h>

#include <string>
#include <string_view>

namespace NETWEIR::Internal {

/// The value of a generic, which a stub reports while GHDL elaborates it, because no table shows
/// it: "FILE:L:C:@0ms:(report note): netweir-generic:INSTANCE|NAME|KIND|VALUE"
///
/// The kind is i for an integer, r for a real number, b for the letters of std_ulogic, o for a
/// boolean, t for a text as the codes of its letters with commas between them.
struct GenericLine
{
    std::string instance; ///< As VHDL names it: ":top(rtl):g(0):u1@sub(netweir_border):".
    QString name;
    GenericValue value;
};

/// False when @p line is no such line.
bool parseGenericLine(std::string_view line, GenericLine *result);

} // namespace NETWEIR::Internal
