// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>

namespace NETWEIR {

class Hierachy;
class RtlNet;
class RtlNetBus;

/// The netlist of one small design: "top" has the net clk, the driven net done, the bus data[1:0],
/// and an instance "u0" of "leaf" with the net q.
class RtlNetlist
{
public:
    RtlNetlist();
    ~RtlNetlist();

    Hierachy *top() { return m_top; }
    RtlNet *findNet(const QString &fullPathName);
    bool usesJtagPrimitive() { return false; }

private:
    RtlNet *newNet(const QString &path, const QString &name, bool driven = false);

    Hierachy *m_top;
    QList<Hierachy *> m_nodes;
    QList<RtlNet *> m_nets;
    QList<RtlNetBus *> m_buses;
};

} // namespace NETWEIR
