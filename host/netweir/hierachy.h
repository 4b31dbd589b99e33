// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "netweir_global.h"

#include <QList>
#include <QString>

namespace NETWEIR {

namespace Internal {
class PathPrefix;
}

class RtlNet;
class RtlNetBus;
class NetlistBuilder;

/// A node of the design hierarchy: the top module, an instance or an interface instance. Owned by
/// the RtlNetlist and valid as long as it; immutable.
class NETWEIR_EXPORT Hierachy
{
public:
    Hierachy()
        : m_nameShape(0)
        , m_isVhdl(false)
    {
    }
    Q_DISABLE_COPY(Hierachy)

    /// Name of the instance within its parent; of the top node, the name of the top module.
    const QString &instName() const { return m_instName; }

    /// Name of the module as its source has it, without parameter values.
    const QString &moduleName() const { return m_moduleName; }

    /// The unit is written in VHDL, and so are the names of the node's own nets. Otherwise it is
    /// written in Verilog or SystemVerilog.
    bool isVhdl() const { return m_isVhdl; }

    /// Null for the top node.
    Hierachy *parent() const { return m_parent; }

    /// Child nodes, in the order of the source.
    const QList<Hierachy *> &children() const { return m_children; }

    /// Own single nets, in the order of the source; bits of buses are not among them.
    const QList<RtlNet *> &nets() const { return m_nets; }

    /// Own buses, in the order of the source.
    const QList<RtlNetBus *> &buses() const { return m_buses; }

    /// The single nets of the node, then those of each child's subtree in order. Takes time linear
    /// in the result and the nodes visited, at any depth.
    QList<RtlNet *> singleNetsIncludeSub() const;

    /// The buses of the node, then those of each child's subtree in order.
    QList<RtlNetBus *> netbusesIncludeSub() const;

private:
    friend class NetlistBuilder;
    friend class RtlNetlist;

    QString m_instName;
    QString m_moduleName;
    const Internal::PathPrefix *m_prefix = nullptr; ///< Of the names of the node's own nets.
    Hierachy *m_parent = nullptr;
    QList<Hierachy *> m_children;
    QList<RtlNet *> m_nets;
    QList<RtlNetBus *> m_buses;
    quint32 m_nameShape : 28; ///< See RtlNetlist::nameStepsOf().
    bool m_isVhdl : 1;
};

} // namespace NETWEIR
