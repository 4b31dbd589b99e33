// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace NETWEIR::Internal {

/// The task of an element in a definition. Elements that are read in the same way share a kind.
enum class ElementKind {
    Other,
    Array,
    Assignment,
    Block,
    Call,
    Initial,
    Instance,
    Modport,
    Process,
    Pull,
    Routine,
    Skipped,
    Variable,
    MemoryFile,
    WritesAll,
    WritesFirst,
    WritesSecond,
};

/// The kind of the elements with this name; Other for all names without a meaning of their own.
ElementKind elementKindOf(std::string_view name);

} // namespace NETWEIR::Internal
