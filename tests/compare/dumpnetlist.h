// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QVector>

namespace NETWEIR {
class Hierachy;
class RtlNet;
class RtlNetBus;
class RtlNetlist;
} // namespace NETWEIR

namespace TarnCompare {

class Choice;
class Dump;

/// The objects of a netlist with a number each, in the order of the tree.
class NumberedNetlist
{
public:
    explicit NumberedNetlist(NETWEIR::RtlNetlist *netlist);

    NETWEIR::RtlNetlist *netlist() const { return m_netlist; }
    const QVector<NETWEIR::Hierachy *> &nodes() const { return m_nodes; }
    /// Of each node its single nets, then the members of its buses.
    const QVector<NETWEIR::RtlNet *> &nets() const { return m_nets; }
    const QVector<NETWEIR::RtlNetBus *> &buses() const { return m_buses; }

    /// "none" for null, "?" for an object that the tree does not have.
    QString numberOf(const void *object) const;
    template <typename Object>
    QString numbersOf(const QList<Object *> &objects) const
    {
        QString numbers;
        for (const Object *object : objects)
            numbers += numberOf(object) + QLatin1Char(' ');
        return numbers;
    }

private:
    NETWEIR::RtlNetlist *m_netlist;
    QVector<NETWEIR::Hierachy *> m_nodes;
    QVector<NETWEIR::RtlNet *> m_nets;
    QVector<NETWEIR::RtlNetBus *> m_buses;
    QHash<const void *, int> m_numbers;
};

/// All that can be seen of the netlist: nodes, nets, buses and members with their names, steps of
/// names, marks and order, and what is found under each name.
void dumpNetlist(Dump *dump, const NumberedNetlist &design, Choice *choice);

/// @p name with a small change.
QString alike(const QString &name, Choice *choice);

} // namespace TarnCompare
