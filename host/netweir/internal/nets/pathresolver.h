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

/// Resolves hierarchical names in a scope of an instance.
///
/// Owns nothing. Each component of a path takes one or two hash look-ups per scope and instance
/// that is searched.
class PathResolver
{
public:
    /// All arguments must outlive this object; @p bindings may still grow.
    PathResolver(const TypeTable &types, const InstanceTree &tree,
                 const InterfaceBindings &bindings);

    /// The scope, instance or interface with the path @p dotted, components joined with '.', as
    /// seen from @p from.
    InstanceScope resolve(const InstanceScope &from, std::string_view dotted) const;

    /// The net @p name in the scope that resolve() finds for @p dotted and @p from.
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
