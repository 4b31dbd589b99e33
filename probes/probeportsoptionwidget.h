// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class QTreeWidget;

namespace NETWEIR {
class RtlNetlist;
}

namespace TARN {

class TarnCore;

/// The ports of one core with their signals. Core and netlist are guests: its owner deletes them
/// when it likes, before this widget as well.
class ProbePortsOptionWidget final : public QWidget
{
    Q_OBJECT

public:
    ProbePortsOptionWidget(TarnCore *core, NETWEIR::RtlNetlist *netlist, QWidget *parent);
    ~ProbePortsOptionWidget() override;

    /// Writes the page into the core.
    void save();

    /// Uses @p netlist, which may be null, from now on.
    void setNlsdata(NETWEIR::RtlNetlist *netlist);

    /// Emits modified(), for the widgets of the page.
    void spendModified() { Q_EMIT modified(); }

Q_SIGNALS:
    /// The user changed something.
    void modified();
    /// Another netlist was set.
    void netlistChanged();

private:
    NETWEIR::RtlNetlist *m_netlist;
    QTreeWidget *m_ports;
};

} // namespace TARN
