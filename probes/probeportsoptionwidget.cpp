// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "probeportsoptionwidget.h"

#include "initialvalueline.h"
#include "inportrows.h"
#include "outportrows.h"

#include "ui_probeportsoptionwidget.h"

#include <model/configsnapshot.h>
#include <model/limittexts.h>
#include <model/portlimits.h>
#include <sdk/qutil.h>
#include <sdk/te.h>
#include <select/probedialog.h>
#include <select/signalrowmark.h>
#include <select/tarnsignalselectdialog.h>
#include <widgets/modaldialog.h>

#include <QPointer>
#include <QScrollBar>
#include <QSet>
#include <QShortcut>
#include <QSignalBlocker>

#include <initializer_list>

namespace TARN {

namespace {

/// The selected rows of @p tree without those below another one.
QList<QTreeWidgetItem *> selectedRows(const QTreeWidget *tree)
{
    const QList<QTreeWidgetItem *> selected = tree->selectedItems();
    const QSet<QTreeWidgetItem *> all(selected.cbegin(), selected.cend());
    QList<QTreeWidgetItem *> rows;
    for (QTreeWidgetItem *row : selected) {
        QTreeWidgetItem *above = row->parent();
        while (above && !all.contains(above))
            above = above->parent();
        if (!above)
            rows.append(row);
    }
    return rows;
}

/// Top-level index of the port to whose rows @p item belongs.
int portOf(const QTreeWidget *tree, QTreeWidgetItem *item)
{
    while (item && item->type() == PortRows::SignalType)
        item = item->parent();
    return tree->indexOfTopLevelItem(item);
}

/// Selects the row of @p to that corresponds to @p item of @p from, and nothing else.
void mirrorSelection(const QTreeWidget *from, QTreeWidgetItem *item, QTreeWidget *to)
{
    to->clearSelection();
    QTreeWidgetItem *twin = nullptr;
    if (item->type() == PortRows::PortType) {
        twin = to->topLevelItem(from->indexOfTopLevelItem(item));
    } else if (item->type() == PortRows::SignalType) {
        QTreeWidgetItem *port = item->parent();
        twin = to->topLevelItem(from->indexOfTopLevelItem(port));
        twin = twin ? twin->child(port->indexOfChild(item)) : nullptr;
    }
    if (twin)
        twin->setSelected(true);
}

void mirrorExpansion(const QTreeWidget *from, QTreeWidgetItem *item, QTreeWidget *to)
{
    if (QTreeWidgetItem *twin = to->topLevelItem(from->indexOfTopLevelItem(item)))
        twin->setExpanded(item->isExpanded());
}

void mirrorScroll(const QTreeWidget *from, QTreeWidget *to)
{
    // Lays out the rows that were just expanded: the range of the scroll bar counts them only then.
    to->visualItemRect(to->topLevelItem(0));
    to->verticalScrollBar()->setValue(from->verticalScrollBar()->value());
}

} // namespace

ProbePortsOptionWidget::ProbePortsOptionWidget(TarnCore *core, NETWEIR::RtlNetlist *netlist,
                                               QWidget *parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::ProbePortsOptionWidget>())
    , m_core(core)
    , m_netlist(netlist)
{
    ui->setupUi(this);
    // With the form's stretch alone, Probe In would get only what the two columns beside it leave.
    ui->splitter->setSizes({200, 300});
    m_ins = std::make_unique<InPortRows>(core, ui->treeProbeIn, this);
    m_outs = std::make_unique<OutPortRows>(core, ui->treeProbeOut, ui->treeValue, this);
    setUpTrees();
    setUpUserClock();
    connectTrees();
    connectWidgets();
    QUtil::EventManager::instance()->subscribe(this, TE::E_DEVICE_CHANGE);
}

ProbePortsOptionWidget::~ProbePortsOptionWidget()
{
    QUtil::EventManager::instance()->unsubscribe(this, TE::E_DEVICE_CHANGE);
    ui->lineEditUserClock->disconnect(this); // It may lose the focus later.
    // The labels of a line are deleted before the line.
    for (int i = 0; i < ui->treeValue->topLevelItemCount(); ++i) {
        if (InitialValueLine *line = ui->treeValue->lineAt(i))
            line->setInert(true);
    }
}

void ProbePortsOptionWidget::setUpTrees()
{
    for (QTreeWidget *tree :
         std::initializer_list<QTreeWidget *>{ui->treeProbeIn, ui->treeProbeOut, ui->treeValue}) {
        tree->setStyleSheet(
            QStringLiteral("QTreeWidget::item { height: 20px;}QTreeWidget{ icon-size: 17px; }"));
    }
    setUpMarks(ui->treeProbeIn, ProbeTypeIn);
    setUpMarks(ui->treeProbeOut, ProbeTypeOut);
    for (int i = 0; i < m_core->probeIns.size(); ++i)
        m_ins->insertRow(i);
    m_ins->rebuildAll();
    for (int i = 0; i < m_core->probeOuts.size(); ++i)
        m_outs->insertRow(i);
    m_outs->showAllStored();
}

void ProbePortsOptionWidget::setUpMarks(QTreeWidget *tree, ProbeType type)
{
    const auto markOf = [this, type](const QModelIndex &row) {
        if (row.parent().isValid())
            return signalRowMark(m_marks, type, row);
        const ProbeIn *port = m_marks ? rowsOf(type)->portAt(row.row()) : nullptr;
        return port ? rowMarkOf(m_marks->ofPort(port->signals, type)) : RowMark();
    };
    tree->setItemDelegate(new RowMarks(markOf, tree));
}

void ProbePortsOptionWidget::setUpUserClock()
{
    ui->lineEditUserClock->setApplied(m_core->userClock);
    ui->checkUserClock->setChecked(m_core->syncUserClock);
    enableUserClock(m_core->syncUserClock);
}

void ProbePortsOptionWidget::connectTrees()
{
    using Page = ProbePortsOptionWidget;
    connect(ui->treeProbeIn, &QTreeWidget::itemDoubleClicked, this, &Page::editProbeIn);
    connect(ui->treeProbeOut, &QTreeWidget::itemClicked, this, &Page::onProbeOutClicked);
    connect(ui->treeProbeOut, &QTreeWidget::itemDoubleClicked, this, &Page::editProbeOut);
    connect(ui->treeProbeOut, &QTreeWidget::itemCollapsed, this, &Page::onProbeOutTreeCollapsed);
    connect(ui->treeProbeOut, &QTreeWidget::itemExpanded, this, &Page::onProbeOutTreeExpanded);
    connect(ui->treeValue, &QTreeWidget::itemClicked, this, &Page::onValueTreeClicked);
    connect(ui->treeValue, &QTreeWidget::itemCollapsed, this, &Page::onValueTreeCollapsed);
    connect(ui->treeValue, &QTreeWidget::itemExpanded, this, &Page::onValueTreeExpanded);
    connect(ui->treeProbeOut->verticalScrollBar(), &QScrollBar::valueChanged, this,
            &Page::onScrollProbeOutChanged);
    connect(ui->treeValue->verticalScrollBar(), &QScrollBar::valueChanged, this,
            &Page::onScrollInitialValueChanged);
    editByKey(ui->treeProbeIn, &Page::editProbeIn);
    editByKey(ui->treeProbeOut, &Page::editProbeOut);
}

void ProbePortsOptionWidget::editByKey(QTreeWidget *tree,
                                       void (ProbePortsOptionWidget::*edit)(QTreeWidgetItem *, int))
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto *shortcut = new QShortcut(key, tree);
        shortcut->setContext(Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, this, [this, tree, edit] {
            if (QTreeWidgetItem *item = tree->currentItem())
                (this->*edit)(item, 0);
        });
    }
}

void ProbePortsOptionWidget::connectWidgets()
{
    using Page = ProbePortsOptionWidget;
    connect(ui->btnProbeInAdd, &QPushButton::clicked, this, &Page::onAddProbeIn);
    connect(ui->btnProbeInRemove, &QPushButton::clicked, this, &Page::onRemoveProbeIn);
    connect(ui->btnProbeOutAdd, &QPushButton::clicked, this, &Page::onAddProbeOut);
    connect(ui->btnProbeOutRemove, &QPushButton::clicked, this, &Page::onRemoveProbeOut);
    connect(ui->checkUserClock, &QCheckBox::clicked, this, &Page::onCheckUserClock);
    connect(ui->btnUserClock, &QPushButton::clicked, this, &Page::onbtnUserClock);
    connect(ui->lineEditUserClock, &UserClockLine::changed, this, &Page::modified);
    connect(ui->lineEditUserClock, &UserClockLine::applied, this, &Page::edited);
    connect(ui->lineEditUserClock, &UserClockLine::typingUndone, this, &Page::typingUndone);
}

void ProbePortsOptionWidget::handleIEvent(const QUtil::IEvent *event)
{
    // Nets do not depend on the device: the page stays as it is.
    Q_UNUSED(event)
}

void ProbePortsOptionWidget::save()
{
    m_core->userClock = ui->lineEditUserClock->text();
    m_core->syncUserClock = ui->checkUserClock->isChecked();
    for (ProbeOut *port : qAsConst(m_core->probeOuts)) {
        if (const InitialValueLine *line = ui->treeValue->lineAt(port->index))
            port->initialValue = line->displayText();
    }
    m_outs->keepStored();
    ui->lineEditUserClock->keepText();
}

void ProbePortsOptionWidget::keepTyping()
{
    m_outs->keepTyping();
    ui->lineEditUserClock->keepText();
}

std::shared_ptr<const CoreSnapshot>
ProbePortsOptionWidget::shown(Typing typing,
                              const std::shared_ptr<const CoreSnapshot> &former) const
{
    CoreSnapshot core;
    core.module = m_core->module;
    core.userClock = ui->lineEditUserClock->text(typing);
    core.syncUserClock = ui->checkUserClock->isChecked();
    const CoreSnapshot none;
    const CoreSnapshot &before = former ? *former : none;
    for (int i = 0; i < m_core->probeIns.size(); ++i) {
        core.probeIns.append(
            snapshotOf(*m_core->probeIns.at(i), QString(), before.probeIns.value(i)));
    }
    for (int i = 0; i < m_core->probeOuts.size(); ++i) {
        const ProbeOut *port = m_core->probeOuts.at(i);
        const InitialValueLine *line = ui->treeValue->lineAt(port->index);
        const QString value = line ? line->value(typing, port->initialValue) : port->initialValue;
        core.probeOuts.append(snapshotOf(*port, value, before.probeOuts.value(i)));
    }
    return shared(std::move(core), former);
}

void ProbePortsOptionWidget::restore(const CoreSnapshot &target)
{
    m_ins->restore(target.probeIns);
    m_outs->restore(target.probeOuts);
    restoreUserClock(target);
}

void ProbePortsOptionWidget::restoreUserClock(const CoreSnapshot &target)
{
    m_core->userClock = target.userClock;
    m_core->syncUserClock = target.syncUserClock;
    const QSignalBlocker blocker(ui->lineEditUserClock);
    setUpUserClock();
}

void ProbePortsOptionWidget::showRow(ProbeType type, int port, int signal, int bit)
{
    const bool out = type == ProbeTypeOut;
    QTreeWidget *tree = out ? ui->treeProbeOut : ui->treeProbeIn;
    QTreeWidgetItem *row = tree->topLevelItem(port);
    if (!row) {
        showUserClock();
        return;
    }
    for (const int position : {signal, bit}) {
        QTreeWidgetItem *below = row->child(position);
        if (!below)
            break;
        row->setExpanded(true);
        row = below;
    }
    tree->setCurrentItem(row, 0, QItemSelectionModel::ClearAndSelect);
    tree->scrollToItem(row);
    if (out)
        mirrorSelection(tree, row, ui->treeValue);
    const QWidget *line = out ? ui->treeValue->lineAt(port) : nullptr;
    if (!line || !line->hasFocus())
        tree->setFocus();
}

void ProbePortsOptionWidget::showUserClock()
{
    if (!ui->lineEditUserClock->isEnabled()) {
        ui->checkUserClock->setFocus();
        return;
    }
    ui->lineEditUserClock->setFocus();
    ui->lineEditUserClock->selectAll();
}

void ProbePortsOptionWidget::setMarks(const SignalMarks *marks)
{
    m_marks = marks;
    ui->treeProbeIn->viewport()->update();
    ui->treeProbeOut->viewport()->update();
    for (ProbeDialog *dialog : findChildren<ProbeDialog *>(QString(), Qt::FindDirectChildrenOnly))
        dialog->setMarks(marks);
}

void ProbePortsOptionWidget::finishEdit()
{
    const QPointer<ProbePortsOptionWidget> self(this);
    Q_EMIT modified();
    if (self)
        Q_EMIT edited();
}

void ProbePortsOptionWidget::setNlsdata(NETWEIR::RtlNetlist *netlist)
{
    m_netlist = netlist;
    updateProbeInTree();
    for (ProbeDialog *dialog : findChildren<ProbeDialog *>(QString(), Qt::FindDirectChildrenOnly))
        dialog->setNetlist(netlist);
    for (TarnSignalSelectDialog *dialog :
         findChildren<TarnSignalSelectDialog *>(QString(), Qt::FindDirectChildrenOnly))
        dialog->setNetlist(netlist);
    Q_EMIT netlistChanged();
}

void ProbePortsOptionWidget::onAddProbeIn()
{
    const int count = m_core->probeIns.size();
    if (count >= MaxPorts) {
        warn(tr(LimitTexts::TooManyIns));
        return;
    }
    m_core->addProbeIn(count);
    m_ins->insertRow(count);
    finishEdit();
}

void ProbePortsOptionWidget::onAddProbeOut()
{
    const int count = m_core->probeOuts.size();
    if (count >= MaxPorts) {
        warn(tr(LimitTexts::TooManyOuts));
        return;
    }
    m_core->addProbeOut(count);
    m_outs->insertRow(count);
    updateProbeOutTree();
    finishEdit();
}

void ProbePortsOptionWidget::onRemoveProbeIn()
{
    if (m_core->probeIns.size() == 1) {
        warn(tr(LimitTexts::OnlyIn));
        return;
    }
    const QList<QTreeWidgetItem *> rows = selectedRows(ui->treeProbeIn);
    for (QTreeWidgetItem *row : rows) {
        const int index = ui->treeProbeIn->indexOfTopLevelItem(row);
        if (index == -1)
            delete row; // That of a signal: it goes, but its port stays as it is.
        else
            m_ins->removePort(index);
    }
    m_ins->renumber();
    m_core->updateProbeIn();
    finishEdit();
}

void ProbePortsOptionWidget::onRemoveProbeOut()
{
    if (m_core->probeOuts.size() == 1) {
        warn(tr(LimitTexts::OnlyOut));
        return;
    }
    const QList<QTreeWidgetItem *> rows = selectedRows(ui->treeProbeOut);
    for (QTreeWidgetItem *row : rows) {
        const int index = ui->treeProbeOut->indexOfTopLevelItem(row);
        if (index == -1)
            break;
        m_outs->removePort(index);
    }
    m_outs->renumber();
    m_core->updateProbeOut();
    finishEdit();
}

void ProbePortsOptionWidget::editProbeIn(QTreeWidgetItem *item, int column)
{
    Q_UNUSED(column)
    editPort(ProbeTypeIn, item);
}

void ProbePortsOptionWidget::editProbeOut(QTreeWidgetItem *item, int column)
{
    Q_UNUSED(column)
    editPort(ProbeTypeOut, item);
}

void ProbePortsOptionWidget::editPort(ProbeType type, QTreeWidgetItem *item)
{
    const bool out = type == ProbeTypeOut;
    QTreeWidget *tree = out ? ui->treeProbeOut : ui->treeProbeIn;
    PortRows *rows = rowsOf(type);
    ProbeIn *port = rows->portAt(portOf(tree, item));
    if (!port)
        return;
    auto *dialog = new ProbeDialog(port, m_netlist, type, this);
    dialog->setMarks(m_marks);
    if (out)
        connect(this, &ProbePortsOptionWidget::netlistChanged, dialog, &ProbeDialog::closeWidget);
    if (execAndDelete(dialog) != QDialog::Accepted) // Or the page was deleted with the dialog.
        return;
    rows->rebuildAll();
    if (QTreeWidgetItem *row = tree->topLevelItem(rows->positionOf(port))) {
        const int scrolled = tree->verticalScrollBar()->value();
        tree->setCurrentItem(row); // Scrolls to the row, which may be far above the one clicked.
        row->setExpanded(true);
        tree->verticalScrollBar()->setValue(scrolled);
    }
    finishEdit();
}

PortRows *ProbePortsOptionWidget::rowsOf(ProbeType type) const
{
    if (type == ProbeTypeOut)
        return m_outs.get();
    return m_ins.get();
}

void ProbePortsOptionWidget::onProbeOutClicked(QTreeWidgetItem *item, int column)
{
    Q_UNUSED(column)
    mirrorSelection(ui->treeProbeOut, item, ui->treeValue);
}

void ProbePortsOptionWidget::onValueTreeClicked(QTreeWidgetItem *item, int column)
{
    Q_UNUSED(column)
    mirrorSelection(ui->treeValue, item, ui->treeProbeOut);
}

void ProbePortsOptionWidget::onProbeOutTreeCollapsed(QTreeWidgetItem *item)
{
    mirrorExpansion(ui->treeProbeOut, item, ui->treeValue);
}

void ProbePortsOptionWidget::onProbeOutTreeExpanded(QTreeWidgetItem *item)
{
    mirrorExpansion(ui->treeProbeOut, item, ui->treeValue);
}

void ProbePortsOptionWidget::onValueTreeCollapsed(QTreeWidgetItem *item)
{
    mirrorExpansion(ui->treeValue, item, ui->treeProbeOut);
}

void ProbePortsOptionWidget::onValueTreeExpanded(QTreeWidgetItem *item)
{
    mirrorExpansion(ui->treeValue, item, ui->treeProbeOut);
}

void ProbePortsOptionWidget::onScrollProbeOutChanged()
{
    mirrorScroll(ui->treeProbeOut, ui->treeValue);
}

void ProbePortsOptionWidget::onScrollInitialValueChanged()
{
    mirrorScroll(ui->treeValue, ui->treeProbeOut);
}

void ProbePortsOptionWidget::onCheckUserClock()
{
    enableUserClock(ui->checkUserClock->isChecked());
    finishEdit();
}

void ProbePortsOptionWidget::onbtnUserClock()
{
    const QString name = TarnSignalSelectDialog::getOneNetName(m_netlist, ProbeTypeIn, this);
    if (name.isEmpty()) // Or the page was deleted with the dialog.
        return;
    ui->lineEditUserClock->setApplied(name);
    finishEdit();
}

void ProbePortsOptionWidget::updateProbeInTree()
{
    m_ins->rebuildAll();
}

void ProbePortsOptionWidget::updateProbeOutTree()
{
    m_outs->rebuildAll();
}

void ProbePortsOptionWidget::enableUserClock(bool enabled)
{
    ui->labelClock->setEnabled(enabled);
    ui->lineEditUserClock->setEnabled(enabled);
    ui->btnUserClock->setEnabled(enabled);
}

void ProbePortsOptionWidget::warn(const QString &text)
{
    Message message;
    message.icon = QMessageBox::Warning;
    message.title = tr("Warning");
    message.text = text;
    showMessage(this, message);
}

} // namespace TARN
