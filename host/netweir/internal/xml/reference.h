// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pugixml.hpp>

#include <functional>
#include <string_view>
#include <vector>

namespace NETWEIR::Internal {

/// An expression and the scope of its names. Refers to the document.
struct Occurrence
{
    pugi::xml_node node;
    int scope = 0;
};

/// A reference to a variable with the selections around it. Refers to the document.
struct Reference
{
    pugi::xml_node node;               ///< "varref" or "varxref".
    std::vector<pugi::xml_node> steps; ///< Selections, innermost first.
    int scope = 0;

    /// The name of the variable.
    std::string_view name() const;
    /// The names before it in a hierarchical reference, joined with '.'.
    std::string_view path() const;
    bool isHierarchical() const;
    /// All selections are constant.
    bool isConstant() const;
};

/// Calls @p visit for each variable that @p target writes. @p target is the left side of an
/// assignment or the connection of an output. Parts of concatenations come most significant first.
void forEachReference(const Occurrence &target,
                      const std::function<void(const Reference &)> &visit);

} // namespace NETWEIR::Internal
