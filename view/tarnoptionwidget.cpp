// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "tarnoptionwidget.h"

#include <probes/probeportsoptionwidget.h>

namespace TARN {

TarnOptionWidget::TarnOptionWidget(TarnCore *core, NETWEIR::RtlNetlist *netlist, QWidget *parent)
    : QTabWidget(parent)
    , m_core(core)
    , m_netlist(netlist)
    , m_ports(new ProbePortsOptionWidget(core, netlist, this))
{
    addTab(m_ports, tr("Probe Ports"));
    connect(m_ports, &ProbePortsOptionWidget::modified, this, &TarnOptionWidget::modifed);
}

TarnOptionWidget::~TarnOptionWidget() = default;

void TarnOptionWidget::save()
{
    m_ports->save();
}

void TarnOptionWidget::setNlsdata(NETWEIR::RtlNetlist *netlist)
{
    m_netlist = netlist;
    m_ports->setNlsdata(netlist);
}

} // namespace TARN
