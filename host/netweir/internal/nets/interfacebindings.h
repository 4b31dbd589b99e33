// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

namespace NETWEIR::Internal {

class ElaboratedDesign;
class InstanceTree;

/// What an interface port of an instance is bound to.
struct InterfaceBinding
{
    int instance = 0;
    int port = 0;                ///< The variable in the definition of the instance.
    std::vector<int> interfaces; ///< From the left; one for a port that is no array.
};

/// The interface ports of a design and the interface instances that they stand for.
///
/// Owns the bindings, which take memory for each interface port of each instance. A lookup is a
/// binary search.
class InterfaceBindings
{
public:
    /// Instances have to come in rising order.
    void add(InterfaceBinding binding);

    /// Null when that port is not bound.
    const std::vector<int> *find(int instance, int port) const;

    /// In the order of the instances.
    const std::vector<InterfaceBinding> &all() const { return m_bindings; }

private:
    std::vector<InterfaceBinding> m_bindings;
};

/// Binds the interface ports of all instances, from the top on down.
InterfaceBindings bindInterfaces(const ElaboratedDesign &design, const InstanceTree &tree);

} // namespace NETWEIR::Internal
