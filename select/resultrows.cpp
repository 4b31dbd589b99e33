// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "resultrows.h"

#include "netsearch.h"

#include <probes/signaltree.h>
#include <sdk/netweir.h>

#include <QIcon>
#include <QTreeWidgetItem>

namespace TARN {

QList<QTreeWidgetItem *> newResultRows(const QList<NETWEIR::RtlNet *> &nets,
                                       const QList<NETWEIR::RtlNetBus *> &buses, ProbeType type)
{
    QList<QTreeWidgetItem *> rows;
    rows.reserve(nets.size() + buses.size());
    for (NETWEIR::RtlNetBus *bus : buses)
        rows.append(newSignalRow(signalOf(bus, type), 0));
    for (NETWEIR::RtlNet *net : nets)
        rows.append(newSignalRow(signalOf(net, type), 0));
    return rows;
}

QTreeWidgetItem *newModuleRow(const ModuleForWidget &module, ProbeType type)
{
    auto *row = new QTreeWidgetItem({module.name});
    row->setToolTip(0, module.name);
    row->setIcon(0, QIcon(QStringLiteral(":/lumoins/image/module.png")));
    row->setFlags(row->flags() & ~Qt::ItemIsSelectable);
    for (NETWEIR::RtlNetBus *bus : module.buses) {
        const auto &nets = bus->nets();
        QStringList names{bus->BusName()};
        names.reserve(nets.size() + 1);
        for (NETWEIR::RtlNet *net : nets)
            names.append(net->name());
        signal2TreeItemForHierarchy(row, signalOf(bus, type), names, 0);
    }
    for (NETWEIR::RtlNet *net : module.nets)
        signal2TreeItemForHierarchy(row, signalOf(net, type), {net->name()}, 0);
    return row;
}

SignalItem signalOfResult(const QTreeWidgetItem *row)
{
    if (row->data(0, Qt::UserRole).canConvert<SignalItem>())
        return signalOfRow(row);
    SignalItem item;
    item.name = row->data(0, Qt::DisplayRole).toString();
    item.kind = SignalItem::Bus;
    return item;
}

} // namespace TARN
