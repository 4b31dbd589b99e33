// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bitrange.h"
#include "instancemarks.h"

#include <netweir/internal/parts/part.h>

#include <string_view>
#include <vector>

namespace NETWEIR::Internal {

class ElaboratedDesign;
class InterfaceBindings;
class InstanceTree;
class Layout;
class PathResolver;
struct BorderPin;
struct Connection;
struct ElsewhereReference;
struct InterfaceBinding;
struct PlacedVariable;
struct Segment;

/// Completes the marks of the instances: ports of the first instance, writes to other nodes,
/// modports, and drivers that reach instances through their ports.
///
/// Used for the instances below one root. Time is linear in the instances and their bits.
class InstanceMarker
{
public:
    /// The results of the earlier phases, which must outlive the marker.
    struct Inputs
    {
        const ElaboratedDesign &design;
        const InstanceTree &tree;
        const InterfaceBindings &bindings;
        const PathResolver &paths;
        const Layout &layout;
        const std::vector<MarkedDefinition> &marked; ///< By the number of the definition.
    };

    /// @p marks contains the marks of the definitions.
    InstanceMarker(const Inputs &inputs, InstanceMarks *marks);

    /// For a top: its inputs and bidirectional ports are driven from outside.
    void mark();
    /// @p driven tells which bits of the ports of the first instance are driven from outside.
    void mark(const DrivenPorts &driven);

    /// Which bits of a foreign instance in @p parent are driven at @p pin: leftmost first, as many
    /// as are connected, or one entry for all.
    std::vector<bool> drivenBits(int parent, const BorderPin &pin) const;

private:
    /// Bits of an instance; the instance is negative for none.
    struct Target
    {
        int instance = -1;
        BitRange range;
    };

    void markInstances();
    void markPort(const PlacedVariable &port, const std::vector<bool> &driven);
    void markOmittedElsewhere(int instance);
    void markWritesElsewhere(int instance);
    void markModports(const InterfaceBinding &binding);
    void markModport(int interface, std::string_view modport);
    void markConnections(int instance, bool toInterfaces);
    void markConnection(int instance, const Connection &connection, int child);
    const quint8 *marksOf(int instance, const Segment &segment) const;
    Target targetOf(int instance, const ElsewhereReference &reference) const;
    void markOut(int instance, const BitRange &range);
    const MarkedDefinition &definitionOf(int instance) const;
    const PlacedVariable &variableOf(int instance, int variable) const;

    const Inputs m_inputs;
    InstanceMarks *m_marks;
};

} // namespace NETWEIR::Internal
