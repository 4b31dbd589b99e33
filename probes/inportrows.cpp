// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "inportrows.h"

#include "signaltree.h"

#include <model/configsnapshot.h>

#include <QTreeWidget>

namespace TARN {

namespace {

/// Whether there is a row for each signal and member: the user can remove rows without signals.
bool isComplete(const QTreeWidgetItem *portRow, const QList<SignalItem> &items)
{
    if (portRow->childCount() != items.size())
        return false;
    for (int i = 0; i < items.size(); ++i) {
        if (portRow->child(i)->childCount() != items.at(i).members.size())
            return false;
    }
    return true;
}

} // namespace

InPortRows::InPortRows(TarnCore *core, QTreeWidget *tree, QWidget *page)
    : PortRows(ProbeTypeIn, core, tree, page)
{
}

void InPortRows::insertRow(int position)
{
    auto *row = new QTreeWidgetItem(PortType);
    row->setText(0, textOf(position));
    m_tree->insertTopLevelItem(position, row);
}

void InPortRows::rebuildAll()
{
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i)
        rebuild(i);
}

void InPortRows::rebuild(int position)
{
    QTreeWidgetItem *row = m_tree->topLevelItem(position);
    qDeleteAll(row->takeChildren());
    if (const ProbeIn *port = portAt(position))
        signals2Tree(row, port->signals, SignalType);
    m_tree->viewport()->update(); // The row of a collapsed port may have another mark.
}

void InPortRows::insertPort(int position)
{
    m_core->probeIns.insert(position, new ProbeIn);
}

void InPortRows::deleteRow(int position)
{
    delete m_tree->topLevelItem(position);
}

bool InPortRows::shows(int position, const PortSnapshot &content) const
{
    return sameSignals(portAt(position)->signals, content.signals) &&
           isComplete(m_tree->topLevelItem(position), content.signals);
}

void InPortRows::assign(int position, const PortSnapshot &content)
{
    ProbeIn *port = portAt(position);
    port->index = content.index;
    port->signals = content.signals;
}

void InPortRows::showStored(const QVector<int> &positions)
{
    for (const int position : positions)
        rebuild(position);
}

} // namespace TARN
