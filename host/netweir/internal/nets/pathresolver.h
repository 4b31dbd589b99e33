// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "instancetree.h"

#include <string>
#include <string_view>

namespace NETWEIR::Internal {

class InterfaceBindings;
class TypeTable;

/// A scope of an instance; the instance is negative for none.
struct InstanceScope
{
    int instance = -1;
    int scope = 0;
};

/// A variable of an instance; the instance is negative for none.
struct InstanceVariable
{
    int instance = -1;
    int variable = -1;
};

/// Follows hierarchical names from a scope of an instance to what they name.
///
/// Owns nothing. Each component of a path is a hash step or two in every scope and instance that it
/// is looked for in.
class PathResolver
{
public:
    /// All have to outlive this; @p bindings may still grow.
    PathResolver(const TypeTable &types, const InstanceTree &tree,
                 const InterfaceBindings &bindings);

    /// The scope, instance or interface that @p dotted, components joined with '.', names in
    /// @p from.
    InstanceScope resolve(const InstanceScope &from, std::string_view dotted) const;

    /// The net that @p name stands for where @p dotted leads to from @p from.
    InstanceVariable netAt(const InstanceScope &from, std::string_view dotted,
                           std::string_view name) const;

private:
    InstanceScope step(const InstanceScope &from, const std::string &component) const;
    InstanceScope stepToElement(const InstanceScope &from, const std::string &component) const;
    InstanceScope walk(InstanceScope from, const std::vector<std::string> &path, int first) const;
    InstanceScope resolveWithin(const InstanceScope &from,
                                const std::vector<std::string> &path) const;
    InstanceScope boundTo(int instance, int port, qint64 position) const;
    InstanceScope around(int instance) const;

    const TypeTable &m_types;
    const InstanceTree &m_tree;
    const InterfaceBindings &m_bindings;
};

} // namespace NETWEIR::Internal
