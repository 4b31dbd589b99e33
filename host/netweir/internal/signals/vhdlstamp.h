// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/parts/part.h>

namespace NETWEIR::Internal {

class DrivenBits;
struct VhdlPartContent;

/// Adds the nets of @p root to @p node and the instances below it to the netlist. Calls @p border
/// for instances of units of the other language. Linear in what it adds, without recursion.
void stampVhdl(const VhdlPartContent &content, int root, const DrivenBits &driven, Hierachy *node,
               NetlistBuilder *builder, const BorderHandler &border);

} // namespace NETWEIR::Internal
