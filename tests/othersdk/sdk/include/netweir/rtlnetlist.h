// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>

namespace NETWEIR {

class Hierachy;
class RtlNet;
class RtlNetBus;

/// The nets of one small design: "top" with the nets clk and done, which is driven, and the bus
/// data[1:0], and in it an instance "u0" of "leaf" with the net q.
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
