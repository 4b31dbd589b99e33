// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "portrows.h"

#include "portmatch.h"
#include "probeportsoptionwidget.h"

#include <model/configsnapshot.h>
#include <select/probedialog.h>

#include <QTreeWidget>

namespace TARN {

PortRows::PortRows(ProbeType type, TarnCore *core, QTreeWidget *tree, QWidget *page)
    : m_type(type)
    , m_core(core)
    , m_tree(tree)
    , m_page(page)
{
}

QString PortRows::textOf(int position) const
{
    return (m_type == ProbeTypeOut ? ProbePortsOptionWidget::tr("Probe Out%1")
                                   : ProbePortsOptionWidget::tr("Probe In%1"))
        .arg(position);
}

int PortRows::positionOf(const ProbeIn *port) const
{
    for (int i = 0; i < portCount(); ++i) {
        if (portAt(i) == port)
            return i;
    }
    return -1;
}

void PortRows::removePort(int position)
{
    const ProbeIn *port = portAt(position);
    const auto dialogs = m_page->findChildren<ProbeDialog *>(QString(), Qt::FindDirectChildrenOnly);
    for (ProbeDialog *dialog : dialogs) {
        if (dialog->port() == port)
            dialog->closeWidget();
    }
    deletePort(position);
    deleteRow(position);
}

void PortRows::renumber()
{
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i)
        m_tree->topLevelItem(i)->setText(0, textOf(i));
}

void PortRows::restore(const Ports &target)
{
    if (portCount() == target.size() && m_tree->topLevelItemCount() == target.size()) {
        for (int i = 0; i < target.size(); ++i)
            showValue(i, *target.at(i));
    }
    if (!showsAll(target))
        showAll(target);
    for (int i = 0; i < target.size(); ++i)
        assign(i, *target.at(i));
    keepStored();
}

void PortRows::showAll(const Ports &target)
{
    const bool known = matchRowsToPorts();
    const auto same = [&](int i, int k) { return known && shows(i, *target.at(k)); };
    const QVector<int> sources = matchPorts(portCount(), target.size(), same);
    QVector<int> anew;
    for (int k = 0; k < target.size(); ++k) {
        if (sources.at(k) == -1 || !same(sources.at(k), k))
            anew.append(k);
    }
    beginChange(anew.size());
    arrange(sources);
    for (const int k : qAsConst(anew))
        assign(k, *target.at(k));
    showStored(anew);
    renumber();
    endChange();
}

bool PortRows::showsAll(const Ports &target) const
{
    if (portCount() != target.size() || m_tree->topLevelItemCount() != target.size())
        return false;
    for (int i = 0; i < target.size(); ++i) {
        if (!shows(i, *target.at(i)))
            return false;
    }
    return true;
}

void PortRows::arrange(const QVector<int> &sources)
{
    QVector<bool> stays(portCount(), false);
    for (const int source : sources) {
        if (source != -1)
            stays[source] = true;
    }
    for (int i = 0; i < stays.size(); ++i) {
        if (!stays.at(i))
            prepareRemoval(i);
    }
    for (int i = stays.size() - 1; i >= 0; --i) {
        if (!stays.at(i))
            removePort(i);
    }
    for (int k = 0; k < sources.size(); ++k) {
        if (sources.at(k) == -1) {
            insertPort(k);
            insertRow(k);
        }
    }
}

bool PortRows::matchRowsToPorts()
{
    if (m_tree->topLevelItemCount() == portCount())
        return true;
    // Someone else added ports to the core, or removed some.
    while (m_tree->topLevelItemCount() > portCount())
        deleteRow(m_tree->topLevelItemCount() - 1);
    while (m_tree->topLevelItemCount() < portCount())
        insertRow(m_tree->topLevelItemCount());
    return false;
}

} // namespace TARN
