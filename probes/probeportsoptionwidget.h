// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/tarncore.h>
#include <sdk/qutil.h>

#include <QWidget>

#include <memory>

class QTreeWidget;
class QTreeWidgetItem;

namespace NETWEIR {
class RtlNetlist;
}

namespace TARN {

class InitialValueLine;

namespace Ui {
class ProbePortsOptionWidget;
}

/// The page with the ports of one core: their signals, the initial values of the Probe Out ports
/// and the user clock.
///
/// Owns its form. Core and netlist are guests, which may be deleted before this widget. A dialog
/// edits the signals of the ports directly; save() writes the rest into the core. Showing the ports
/// takes time in proportion to their signals.
class ProbePortsOptionWidget final : public QWidget, public QUtil::IEventHandler
{
    Q_OBJECT

public:
    ProbePortsOptionWidget(TarnCore *core, NETWEIR::RtlNetlist *netlist, QWidget *parent);
    ~ProbePortsOptionWidget() override;

    // QUtil::IEventHandler
    void handleIEvent(const QUtil::IEvent *event) override;

public Q_SLOTS:
    /// Writes the page into the core.
    void save();

    /// Uses @p netlist, which may be null, from now on. The previous one must still exist: open
    /// dialogs let go of it here.
    void setNlsdata(NETWEIR::RtlNetlist *netlist);

    /// Emits modified(), for the widgets of the page.
    void spendModified() { Q_EMIT modified(); }

    void onAddProbeIn();
    void onRemoveProbeIn();
    void onAddProbeOut();
    void onRemoveProbeOut();

    /// Opens the dialog for the port to whose rows @p item belongs.
    void editProbeIn(QTreeWidgetItem *item, int column);
    void editProbeOut(QTreeWidgetItem *item, int column);

    // The trees of the Probe Out ports and of their initial values are kept alike.
    void onProbeOutClicked(QTreeWidgetItem *item, int column);
    void onValueTreeClicked(QTreeWidgetItem *item, int column);
    void onProbeOutTreeCollapsed(QTreeWidgetItem *item);
    void onProbeOutTreeExpanded(QTreeWidgetItem *item);
    void onValueTreeCollapsed(QTreeWidgetItem *item);
    void onValueTreeExpanded(QTreeWidgetItem *item);
    void onScrollProbeOutChanged();
    void onScrollInitialValueChanged();

    void onCheckUserClock();
    void onbtnUserClock();

    // Rebuild the rows of the signals.
    void updateProbeInTree();
    void updateProbeOutTree();

Q_SIGNALS:
    /// The user changed something.
    void modified();
    /// Another netlist was set.
    void netlistChanged();

private:
    void setUpTrees();
    void setUpUserClock();
    void connectWidgets();
    void connectTrees();
    /// Lets Return and Enter edit the current row of @p tree, as a double click does.
    void editByKey(QTreeWidget *tree, void (ProbePortsOptionWidget::*edit)(QTreeWidgetItem *, int));

    void addProbeInRow(int index);
    InitialValueLine *addProbeOutRow(int index);
    void renumber(QTreeWidget *tree, ProbeType type);
    /// Text of the row of a port.
    static QString textOf(ProbeType type, int index);

    void editPort(ProbeType type, QTreeWidgetItem *item);
    /// Closes the dialog that edits @p port, which is about to be deleted, if one is open.
    void closeDialogOf(const ProbeIn *port);
    void enableUserClock(bool enabled);
    void warn(const QString &text);

    std::unique_ptr<Ui::ProbePortsOptionWidget> ui;
    TarnCore *m_core;
    NETWEIR::RtlNetlist *m_netlist;
};

} // namespace TARN
