// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>

namespace NETWEIR {

class RtlNet;
class RtlNetBus;
class RtlNetlist;

class Hierachy
{
public:
    QString instName() { return m_instName; }
    QString moduleName() { return m_moduleName; }
    Hierachy *parent() { return m_parent; }
    QList<Hierachy *> children() { return m_children; }
    QList<RtlNet *> nets() { return m_nets; }
    QList<RtlNetBus *> buses() { return m_buses; }

    QList<RtlNet *> singleNetsIncludeSub()
    {
        QList<RtlNet *> all = m_nets;
        foreach (Hierachy *child, m_children)
            all += child->singleNetsIncludeSub();
        return all;
    }
    QList<RtlNetBus *> netbusesIncludeSub()
    {
        QList<RtlNetBus *> all = m_buses;
        foreach (Hierachy *child, m_children)
            all += child->netbusesIncludeSub();
        return all;
    }

private:
    friend class RtlNetlist;

    QString m_instName;
    QString m_moduleName;
    Hierachy *m_parent = nullptr;
    QList<Hierachy *> m_children;
    QList<RtlNet *> m_nets;
    QList<RtlNetBus *> m_buses;
};

} // namespace NETWEIR
