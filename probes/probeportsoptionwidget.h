// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "typing.h"

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

class InPortRows;
class OutPortRows;
class PortRows;
class SignalMarks;
struct CoreSnapshot;

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

    /// The core as save() would write it, with or without typed text: the signals of the core, and
    /// values and clock of the widgets. An initial value that the user left alone is the one in the
    /// core, even when it does not fit the port. Shares with @p former, which may be null, all that
    /// is equal. Takes little time when the core shares the lists of its signals with @p former.
    std::shared_ptr<const CoreSnapshot>
    shown(Typing typing, const std::shared_ptr<const CoreSnapshot> &former) const;

    /// Takes typed text as applied from now on, without dealing it out to the bits. Emits nothing,
    /// and leaves the core alone.
    void keepTyping();

    /// Makes core and page equal to @p target, but for the module, which every save sets. The page
    /// shows what a new page would show. Rebuilds the rows of ports that differ; the other rows
    /// stay as they are. What is typed and not in @p target is lost. Closes the dialogs of ports
    /// that go. Emits neither modified() nor edited().
    void restore(const CoreSnapshot &target);

    /// Makes the row current, selects it and brings it into sight. Positions that do not exist, and
    /// bits of Probe Out ports, which have no rows, stand for the row above.
    ///
    /// @p port -1 means the user clock, @p signal -1 the row of the port, @p bit -1 that of the
    /// signal. What is shown gets the focus, unless the port's line has it. A line that loses it
    /// applies its text and may show a box, during which the page can go away.
    void showRow(ProbeType type, int port, int signal, int bit);

    /// Marks rows by @p marks, which may be null and outlives the page; so do the dialogs of ports.
    /// Call it again to show other marks.
    void setMarks(const SignalMarks *marks);

    /// Emits edited() for the line of an initial value.
    void finishValue() { Q_EMIT edited(); }
    /// Emits typingUndone() for the same line.
    void finishUndo() { Q_EMIT typingUndone(); }

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
    /// An edit by the user is complete. Comes after modified(), and once for text that is applied.
    void edited();
    /// The user undid typing in a line. Comes after modified().
    void typingUndone();
    /// Another netlist was set.
    void netlistChanged();

private:
    void setUpTrees();
    void setUpMarks(QTreeWidget *tree, ProbeType type);
    void setUpUserClock();
    void connectWidgets();
    void connectTrees();
    /// Lets Return and Enter edit the current row of @p tree, as a double click does.
    void editByKey(QTreeWidget *tree, void (ProbePortsOptionWidget::*edit)(QTreeWidgetItem *, int));

    void editPort(ProbeType type, QTreeWidgetItem *item);
    PortRows *rowsOf(ProbeType type) const;
    void restoreUserClock(const CoreSnapshot &target);
    void showUserClock();
    /// Emits modified() and edited().
    void finishEdit();
    void enableUserClock(bool enabled);
    void warn(const QString &text);

    std::unique_ptr<Ui::ProbePortsOptionWidget> ui;
    TarnCore *m_core;
    NETWEIR::RtlNetlist *m_netlist;
    const SignalMarks *m_marks = nullptr;
    std::unique_ptr<InPortRows> m_ins;
    std::unique_ptr<OutPortRows> m_outs;
};

} // namespace TARN
