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

/// Builds an RtlNetlist node by node and net by net. For readers of elaborated designs and for
/// tests; a net costs one allocation, that of its name, and about 0.1 us.
class NETWEIR_EXPORT NetlistBuilder
{
public:
    /// Starts a netlist whose top node carries @p topModule as instance and as module name.
    explicit NetlistBuilder(const QString &topModule);
    ~NetlistBuilder();

    Hierachy *top() const;

    Hierachy *addHierachy(Hierachy *parent, const QString &instName, const QString &moduleName);

    RtlNet *addNet(Hierachy *node, const QString &name, NetMarks marks = {});

    /// Adds the bus "name[left:right]" with the members "name[left]" to "name[right]".
    /// @p marks holds one entry a member in that order, or one for all, or none for unmarked.
    RtlNetBus *addBus(Hierachy *node, const QString &name, int left, int right,
                      const std::vector<NetMarks> &marks = {});

    void setUsesJtagPrimitive(bool uses);

    /// The netlist; the builder is spent afterwards.
    std::unique_ptr<RtlNetlist> take();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NETWEIR
