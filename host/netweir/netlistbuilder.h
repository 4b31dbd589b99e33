// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "netweir_global.h"
#include "processwrites.h"

#include <QString>

#include <memory>
#include <vector>

namespace NETWEIR {

class Hierachy;
class RtlNet;
class RtlNetBus;
class RtlNetlist;

/// The two exclusion marks of a net, and who writes its variable.
struct NetMarks
{
    bool excludedForProbeIn = false;
    bool excludedForProbeOut = false;
    ProcessWrites processWrites = ProcessWrites::None;
};

/// Builds an RtlNetlist node by node and net by net, for readers of elaborated designs and for
/// tests. A net costs about 20 ns and shares the string of its name with the caller: who passes the
/// same string for each instance of a module stores it once.
class NETWEIR_EXPORT NetlistBuilder
{
public:
    /// Starts a netlist. @p topModule is the instance and module name of its top node.
    explicit NetlistBuilder(const QString &topModule);
    ~NetlistBuilder();

    Hierachy *top() const;

    Hierachy *addHierachy(Hierachy *parent, const QString &instName, const QString &moduleName);

    RtlNet *addNet(Hierachy *node, const QString &name, NetMarks marks = {});

    /// Adds the bus "name[left:right]" with the members "name[left]" to "name[right]". @p marks has
    /// one entry per member in that order, one entry for all members, or none for no marks.
    RtlNetBus *addBus(Hierachy *node, const QString &name, int left, int right,
                      const std::vector<NetMarks> &marks = {});

    /// The unit of @p node is written in VHDL or not. Nodes that are added below it later are in
    /// the same language. The top is in Verilog at first.
    void setVhdl(Hierachy *node, bool isVhdl);

    /// The lengths of the identifiers in the name, for names in which an identifier contains a
    /// point or a bracket. After each identifier come its indexes, then a point and the next one.
    /// The lengths of a bus are those of its members too. Equal lists share their memory.
    void setIdentifiers(Hierachy *node, const std::vector<int> &lengths);
    void setIdentifiers(RtlNet *net, const std::vector<int> &lengths);
    void setIdentifiers(RtlNetBus *bus, const std::vector<int> &lengths);

    void setUsesJtagPrimitive(bool uses);

    /// The netlist. The builder cannot be used afterwards.
    std::unique_ptr<RtlNetlist> take();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NETWEIR
