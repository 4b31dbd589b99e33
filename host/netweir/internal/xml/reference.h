// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pugixml.hpp>

#include <functional>
#include <string_view>
#include <vector>

namespace NETWEIR::Internal {

/// An expression and the scope of the names in it. Refers into the document.
struct Occurrence
{
    pugi::xml_node node;
    int scope = 0;
};

/// A reference to a variable together with the selections around it. Refers into the document.
struct Reference
{
    pugi::xml_node node;               ///< "varref" or "varxref".
    std::vector<pugi::xml_node> steps; ///< Selections, innermost first.
    int scope = 0;

    /// The name of the variable.
    std::string_view name() const;
    /// Of a hierarchical reference, the names in front of it, joined with '.'.
    std::string_view path() const;
    bool isHierarchical() const;
    /// No selection depends on anything but constants.
    bool isConstant() const;
};

/// Calls @p visit for every variable that @p target, the left side of an assignment or something
/// connected to an output, writes: the parts of concatenations from the most significant on.
void forEachReference(const Occurrence &target,
                      const std::function<void(const Reference &)> &visit);

} // namespace NETWEIR::Internal
