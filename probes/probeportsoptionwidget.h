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
/// Owns its form. Core and netlist are guests: their owner deletes them when it likes, before this
/// widget as well. Signals are edited in the ports directly, by a dialog; the rest reaches the core
/// by save(). Showing the ports costs time in proportion to their signals.
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

    /// Uses @p netlist, which may be null, from now on. The former one must be alive still: dialogs
    /// that are open let go of it here.
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

    /// Make the rows of the signals anew.
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
    /// Return and Enter do with the current row of @p tree what a double click does with a row.
    void editByKey(QTreeWidget *tree, void (ProbePortsOptionWidget::*edit)(QTreeWidgetItem *, int));

    void addProbeInRow(int index);
    InitialValueLine *addProbeOutRow(int index);
    void removeValueRow(int index);
    void deleteLabels(QTreeWidgetItem *valueRow, InitialValueLine *line);
    void deleteWidget(QTreeWidgetItem *valueRow);
    InitialValueLine *lineOf(int row) const;
    void renumber(QTreeWidget *tree, ProbeType type);

    void editPort(ProbeType type, QTreeWidgetItem *item);
    /// Closes the dialog that edits @p port, which is about to go, if there is one.
    void closeDialogOf(const ProbeIn *port);
    void enableUserClock(bool enabled);
    void warn(const QString &text);

    std::unique_ptr<Ui::ProbePortsOptionWidget> ui;
    TarnCore *m_core;
    NETWEIR::RtlNetlist *m_netlist;
};

} // namespace TARN
