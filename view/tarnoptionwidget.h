// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTabWidget>

namespace NETWEIR {
class RtlNetlist;
}

namespace TARN {

class ProbePortsOptionWidget;
class TarnCore;

/// The page of one core. It owns neither core nor netlist; both may be deleted before it.
class TarnOptionWidget final : public QTabWidget
{
    Q_OBJECT

public:
    TarnOptionWidget(TarnCore *core, NETWEIR::RtlNetlist *netlist, QWidget *parent);
    ~TarnOptionWidget() override;

    TarnCore *core() const { return m_core; }
    NETWEIR::RtlNetlist *netlist() const { return m_netlist; }

    /// Stores the page's widgets in the core.
    void save();

    /// Uses @p netlist, which may be null, from now on.
    void setNlsdata(NETWEIR::RtlNetlist *netlist);

Q_SIGNALS:
    /// The user changed something. (Receivers connect to the name as it is spelt.)
    void modifed();

private:
    TarnCore *m_core;
    NETWEIR::RtlNetlist *m_netlist;
    ProbePortsOptionWidget *m_ports;
};

} // namespace TARN
