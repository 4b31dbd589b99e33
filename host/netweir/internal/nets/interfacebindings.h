// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

namespace NETWEIR::Internal {

class ElaboratedDesign;
class InstanceTree;

/// The interfaces to which an interface port of an instance is bound.
struct InterfaceBinding
{
    int instance = 0;
    int port = 0;                ///< The variable in the definition of the instance.
    std::vector<int> interfaces; ///< From the left; one interface for a port that is not an array.
};

/// The interface ports of a design and the interface instances to which they are bound.
///
/// Owns the bindings, one per interface port and instance. A look-up is a binary search.
class InterfaceBindings
{
public:
    /// Instances must be added in rising order, and so the ports of each.
    void add(InterfaceBinding binding);

    /// Null when the port is not bound.
    const std::vector<int> *find(int instance, int port) const;

    /// In the order of the instances and of their ports.
    const std::vector<InterfaceBinding> &all() const { return m_bindings; }

private:
    std::vector<InterfaceBinding> m_bindings;
};

/// Binds the interface ports of all instances, from the top down.
InterfaceBindings bindInterfaces(const ElaboratedDesign &design, const InstanceTree &tree);

} // namespace NETWEIR::Internal
