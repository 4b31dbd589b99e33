// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "partroot.h"

#include <functional>
#include <vector>

namespace NETWEIR {
class Hierachy;
class NetlistBuilder;
} // namespace NETWEIR

namespace NETWEIR::Internal {

/// The primitive that no design may use beside the debug cores. VHDL writes it in any case.
constexpr char JtagPrimitive[] = "KX_JTAG";

/// Which bits of the input and inout ports of an instance are driven outside of it, by the names of
/// the ports: leftmost bit first. A single entry holds for all bits of the port. A missing port is
/// not connected: it has no driven bit.
using DrivenPorts = QMap<QString, std::vector<bool>>;

/// An instance of a unit of the other language, met while a part is added to the netlist.
struct BorderInstance
{
    int root = 0; ///< Index in Part::foreignRoots().
    Hierachy *parent = nullptr;
    QString name; ///< Local name in the parent: "g[0].u1".
    /// As many entries as the connected bits. They may be those of all elements of an array.
    DrivenPorts driven;
    /// Of an element of an array of instances: how many elements are left of it, and how many there
    /// are.
    qint64 position = 0;
    qint64 count = 1;
    std::vector<int> identifiers; ///< See NetlistBuilder::setIdentifiers(); empty if not needed.
};

using BorderHandler = std::function<void(const BorderInstance &)>;

/// The elaborated units of one language: below each root, all instances down to those of units of
/// the other language, the borders. Immutable until buildLast(). Its functions may run in any
/// thread; those that take time proportional to the design call ReadGuard::check(), so they may
/// throw ReadingEnded.
///
/// Marks at a border: an instance of a foreign unit drives its outputs and inouts. In the foreign
/// unit, an input bit is driven if the connected bit outside is.
class Part
{
public:
    Part() = default;
    Part(const Part &) = delete;
    Part &operator=(const Part &) = delete;
    virtual ~Part() = default;

    /// The units of the other language that instances of this part name, each once, in the spelling
    /// of this part.
    virtual const std::vector<PartRoot> &foreignRoots() const = 0;

    // The roots of this part have the indexes with which they were given to the elaborator.

    /// Name of the unit of @p root, as declared.
    virtual QString unitName(int root) const = 0;

    /// Its ports, as declared and in order of declaration.
    virtual std::vector<PartPort> ports(int root) const = 0;

    /// Adds the nets of @p root to @p node, which exists already, and below it the instances with
    /// their nets. Calls @p border for each instance of a foreign unit when its node is to be
    /// added, so that the children of each node are in the order of the source. @p driven has the
    /// names of ports() and as many entries as they have bits; it does not matter for a
    /// top. May be called several times for one root. Linear in what it adds.
    virtual void build(int root, const DrivenPorts &driven, Hierachy *node, NetlistBuilder *builder,
                       const BorderHandler &border) const = 0;

    /// The same for a part of which nothing is asked afterwards. It may let go of what it has while
    /// the netlist grows.
    virtual void buildLast(int root, const DrivenPorts &driven, Hierachy *node,
                           NetlistBuilder *builder, const BorderHandler &border)
    {
        build(root, driven, node, builder, border);
    }

    /// An instance of the JTAG primitive is in this part.
    virtual bool usesJtagPrimitive() const = 0;
};

} // namespace NETWEIR::Internal
