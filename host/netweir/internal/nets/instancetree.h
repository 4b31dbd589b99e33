// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <vector>

namespace NETWEIR::Internal {

struct Definition;
struct InstanceItem;

/// A node of the hierarchy: the top, or an instance of a module or interface.
struct Instance
{
    const Definition *definition = nullptr;
    int parent = -1;     ///< Negative for the top.
    int item = -1;       ///< Index among the instances in the definition of the parent.
    qint64 position = 0; ///< Position in an array of instances, from the left.
    int firstChild = 0;
};

/// The instances of a design: the top first, each instance before its children, and the children of
/// an instance side by side.
///
/// Owns the instances and refers to the definitions, which must outlive it. Does not change once it
/// is built. Time and memory are linear in the instances, without recursion.
class InstanceTree
{
public:
    /// Lists @p top and all instances below it. False when there are too many.
    bool build(const Definition &top);

    int size() const;
    const Instance &at(int instance) const;
    const Definition &definitionOf(int instance) const { return *at(instance).definition; }

    /// The item in the parent's definition of an instance other than the top.
    const InstanceItem &itemOf(int instance) const;

    /// The child at @p position of the item; negative when there is none.
    int childOf(int instance, int item, qint64 position) const;

    /// The name of an instance other than the top within its parent: "g[0].u[3]".
    QString nameOf(int instance) const;

    /// The lengths of the identifiers in that name, if one has a point or a bracket in it;
    /// otherwise empty.
    std::vector<int> identifiersOf(int instance) const;

private:
    void addChildren(int parent);

    std::vector<Instance> m_instances;
};

} // namespace NETWEIR::Internal
