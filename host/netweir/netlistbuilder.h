// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "netweir_global.h"

#include <QString>

#include <memory>
#include <vector>

namespace NETWEIR {

class Hierachy;
class RtlNet;
class RtlNetBus;
class RtlNetlist;

/// The two exclusion marks of a net.
struct NetMarks
{
    bool excludedForProbeIn = false;
    bool excludedForProbeOut = false;
};

/// Builds an RtlNetlist node by node and net by net, for readers of elaborated designs and for
/// tests. A net costs one allocation, for its name, and about 0.1 us.
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

    void setUsesJtagPrimitive(bool uses);

    /// The netlist. The builder cannot be used afterwards.
    std::unique_ptr<RtlNetlist> take();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NETWEIR
