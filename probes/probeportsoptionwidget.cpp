// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "probeportsoptionwidget.h"

#include <model/tarncore.h>

#include <QTreeWidget>
#include <QVBoxLayout>

namespace TARN {

static void addSignals(QTreeWidgetItem *parent, const QList<SignalItem> &items)
{
    for (const SignalItem &item : items) {
        const QString &text = item.displayName.isEmpty() ? item.name : item.displayName;
        addSignals(new QTreeWidgetItem(parent, {text}), item.members);
    }
}

ProbePortsOptionWidget::ProbePortsOptionWidget(TarnCore *core, NETWEIR::RtlNetlist *netlist,
                                               QWidget *parent)
    : QWidget(parent)
    , m_netlist(netlist)
    , m_ports(new QTreeWidget(this))
{
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_ports);
    m_ports->setHeaderHidden(true);
    m_ports->setUniformRowHeights(true);

    for (int i = 0; i < core->probeIns.size(); ++i)
        addSignals(new QTreeWidgetItem(m_ports, {tr("Probe In%1").arg(i)}),
                   core->probeIns.at(i)->signals);
    for (int i = 0; i < core->probeOuts.size(); ++i)
        addSignals(new QTreeWidgetItem(m_ports, {tr("Probe Out%1").arg(i)}),
                   core->probeOuts.at(i)->signals);
    for (int i = 0; i < m_ports->topLevelItemCount(); ++i)
        m_ports->topLevelItem(i)->setExpanded(true);
}

ProbePortsOptionWidget::~ProbePortsOptionWidget() = default;

void ProbePortsOptionWidget::save()
{
    // The ports are only shown: there is nothing to store yet.
}

void ProbePortsOptionWidget::setNlsdata(NETWEIR::RtlNetlist *netlist)
{
    m_netlist = netlist;
    Q_EMIT netlistChanged();
}

} // namespace TARN
