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
    connect(m_ports, &ProbePortsOptionWidget::edited, this, &TarnOptionWidget::edited);
    connect(m_ports, &ProbePortsOptionWidget::typingUndone, this, &TarnOptionWidget::typingUndone);
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

std::shared_ptr<const CoreSnapshot>
TarnOptionWidget::shown(Typing typing, const std::shared_ptr<const CoreSnapshot> &former) const
{
    return m_ports->shown(typing, former);
}

void TarnOptionWidget::keepTyping()
{
    m_ports->keepTyping();
}

void TarnOptionWidget::restore(const CoreSnapshot &target)
{
    m_ports->restore(target);
}

void TarnOptionWidget::showRow(ProbeType type, int port, int signal, int bit)
{
    m_ports->showRow(type, port, signal, bit);
}

void TarnOptionWidget::setMarks(const SignalMarks *marks)
{
    m_ports->setMarks(marks);
}

} // namespace TARN
