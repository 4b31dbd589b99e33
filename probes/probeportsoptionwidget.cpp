// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "probeportsoptionwidget.h"

#include "initialvalueline.h"
#include "portbits.h"
#include "signaltree.h"
#include "value2tree.h"

#include "ui_probeportsoptionwidget.h"

#include <model/bitstring.h>
#include <sdk/qutil.h>
#include <sdk/te.h>
#include <select/probedialog.h>
#include <select/tarnsignalselectdialog.h>
#include <widgets/modaldialog.h>

#include <QScrollBar>
#include <QSet>
#include <QShortcut>
#include <QVector>

#include <initializer_list>

namespace TARN {

namespace {

constexpr int PortType = 1001;
constexpr int SignalType = 1002;
constexpr int MaximumPorts = 64;

/// A Probe Out port in the trees.
struct OutPort
{
    QList<SignalItem> items;
    int width;
    QString bits;
    QTreeWidgetItem *row;
    QTreeWidgetItem *valueRow;
    InitialValueLine *line;
};

/// Replaces the rows of the port's signals in both trees, in that of the values without labels.
void makeRows(const OutPort &port)
{
    qDeleteAll(port.row->takeChildren());
    qDeleteAll(port.valueRow->takeChildren());
    signals2ProbeOutTree(port.row, port.items, SignalType);
    QList<QTreeWidgetItem *> valueRows;
    for (int i = 0; i < port.items.size(); ++i)
        valueRows.append(new QTreeWidgetItem(SignalType));
    port.valueRow->addChildren(valueRows);
}

void fitLine(const OutPort &port)
{
    port.line->setEnabled(port.width != 0);
    // The mask first: the old one would cut a longer value. Without bits the line shows 0.
    port.line->updateValidatorForWidth(port.width);
    port.line->setText(QStringLiteral("0x") + stringBintoHex(port.bits));
}

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
    while (item && item->type() == SignalType)
        item = item->parent();
    return tree->indexOfTopLevelItem(item);
}

/// Selects the row of @p to that corresponds to @p item of @p from, and nothing else.
void mirrorSelection(const QTreeWidget *from, QTreeWidgetItem *item, QTreeWidget *to)
{
    to->clearSelection();
    QTreeWidgetItem *twin = nullptr;
    if (item->type() == PortType) {
        twin = to->topLevelItem(from->indexOfTopLevelItem(item));
    } else if (item->type() == SignalType) {
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
    setUpTrees();
    setUpUserClock();
    connectTrees();
    connectWidgets();
    QUtil::EventManager::instance()->subscribe(this, TE::E_DEVICE_CHANGE);
}

ProbePortsOptionWidget::~ProbePortsOptionWidget()
{
    QUtil::EventManager::instance()->unsubscribe(this, TE::E_DEVICE_CHANGE);
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
    for (int i = 0; i < m_core->probeIns.size(); ++i)
        addProbeInRow(i);
    for (int i = 0; i < m_core->probeOuts.size(); ++i) {
        const ProbeOut *port = m_core->probeOuts.at(i);
        InitialValueLine *line = addProbeOutRow(i);
        line->updateValidatorForWidth(port->singleSignals().size());
        line->setText(port->initialValue);
    }
    updateProbeInTree();
    updateProbeOutTree();
}

void ProbePortsOptionWidget::setUpUserClock()
{
    ui->lineEditUserClock->setText(m_core->userClock);
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
    connect(ui->lineEditUserClock, &QLineEdit::textChanged, this, &Page::modified);
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
    if (count >= MaximumPorts) {
        warn(tr("Support 64 Probe Ins at most."));
        return;
    }
    m_core->addProbeIn(count);
    addProbeInRow(count);
    Q_EMIT modified();
}

void ProbePortsOptionWidget::onAddProbeOut()
{
    const int count = m_core->probeOuts.size();
    if (count >= MaximumPorts) {
        warn(tr("Support 64 Probe Outs at most."));
        return;
    }
    m_core->addProbeOut(count);
    addProbeOutRow(count);
    updateProbeOutTree();
    Q_EMIT modified();
}

void ProbePortsOptionWidget::onRemoveProbeIn()
{
    if (m_core->probeIns.size() == 1) {
        warn(tr("Support 1 Probe In at least."));
        return;
    }
    const QList<QTreeWidgetItem *> rows = selectedRows(ui->treeProbeIn);
    for (QTreeWidgetItem *row : rows) {
        // For the row of a signal that is -1: it goes, but its port stays as it is.
        const int index = ui->treeProbeIn->indexOfTopLevelItem(row);
        closeDialogOf(m_core->getProbeIn(index));
        m_core->removeProbeIn(index);
        delete row;
    }
    renumber(ui->treeProbeIn, ProbeTypeIn);
    m_core->updateProbeIn();
    Q_EMIT modified();
}

void ProbePortsOptionWidget::onRemoveProbeOut()
{
    if (m_core->probeOuts.size() == 1) {
        warn(tr("Support 1 Probe Out at least."));
        return;
    }
    const QList<QTreeWidgetItem *> rows = selectedRows(ui->treeProbeOut);
    for (QTreeWidgetItem *row : rows) {
        const int index = ui->treeProbeOut->indexOfTopLevelItem(row);
        if (index == -1)
            break;
        closeDialogOf(m_core->getProbeOut(index));
        m_core->removeProbeOut(index);
        ui->treeValue->deletePort(index);
        delete row;
    }
    renumber(ui->treeProbeOut, ProbeTypeOut);
    for (int i = 0; i < ui->treeValue->topLevelItemCount(); ++i) {
        if (InitialValueLine *line = ui->treeValue->lineAt(i))
            line->setIndex(i);
    }
    m_core->updateProbeOut();
    Q_EMIT modified();
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
    const int index = portOf(tree, item);
    ProbeIn *port = out ? m_core->getProbeOut(index) : m_core->getProbeIn(index);
    if (!port)
        return;
    auto *dialog = new ProbeDialog(port, m_netlist, type, this);
    if (out)
        connect(this, &ProbePortsOptionWidget::netlistChanged, dialog, &ProbeDialog::closeWidget);
    if (execAndDelete(dialog) != QDialog::Accepted) // Or the page was deleted with the dialog.
        return;
    if (out)
        updateProbeOutTree();
    else
        updateProbeInTree();
    if (QTreeWidgetItem *row = tree->topLevelItem(index)) {
        const int scrolled = tree->verticalScrollBar()->value();
        tree->setCurrentItem(row); // Scrolls to the row, which may be far above the one clicked.
        row->setExpanded(true);
        tree->verticalScrollBar()->setValue(scrolled);
    }
    Q_EMIT modified();
}

void ProbePortsOptionWidget::closeDialogOf(const ProbeIn *port)
{
    for (ProbeDialog *dialog : findChildren<ProbeDialog *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (dialog->port() == port)
            dialog->closeWidget();
    }
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
    Q_EMIT modified();
}

void ProbePortsOptionWidget::onbtnUserClock()
{
    const QString name = TarnSignalSelectDialog::getOneNetName(m_netlist, ProbeTypeIn, this);
    if (name.isEmpty()) // Or the page was deleted with the dialog.
        return;
    ui->lineEditUserClock->setText(name);
    Q_EMIT modified();
}

void ProbePortsOptionWidget::updateProbeInTree()
{
    for (int i = 0; i < ui->treeProbeIn->topLevelItemCount(); ++i) {
        QTreeWidgetItem *row = ui->treeProbeIn->topLevelItem(i);
        qDeleteAll(row->takeChildren());
        if (const ProbeIn *port = m_core->getProbeIn(i))
            signals2Tree(row, port->signals, SignalType);
    }
}

void ProbePortsOptionWidget::updateProbeOutTree()
{
    QVector<OutPort> ports;
    for (int i = 0; i < ui->treeProbeOut->topLevelItemCount(); ++i) {
        const ProbeOut *port = m_core->getProbeOut(i);
        InitialValueLine *line = ui->treeValue->lineAt(i);
        if (!port || !line)
            continue;
        const int width = port->singleSignals().size();
        ports.append({port->signals, width,
                      fittedBits(stringHextoBinfor0x(line->displayText()), line->getWidth(), width),
                      ui->treeProbeOut->topLevelItem(i), ui->treeValue->topLevelItem(i), line});
    }

    // Each step for all ports before the next one: the tree compares every row that comes or goes
    // with all labels that exist.
    ui->treeValue->suspendLayout();
    for (const OutPort &port : qAsConst(ports))
        ui->treeValue->deleteLabels(port.valueRow);
    for (const OutPort &port : qAsConst(ports)) {
        makeRows(port);
        fitLine(port);
    }
    for (OutPort &port : ports) {
        values2Tree(ui->treeValue, port.valueRow, port.items, port.bits, port.line);
        port.line->setInert(false);
    }
    ui->treeValue->resumeLayout();
}

void ProbePortsOptionWidget::addProbeInRow(int index)
{
    auto *row = new QTreeWidgetItem(ui->treeProbeIn, PortType);
    row->setText(0, textOf(ProbeTypeIn, index));
}

InitialValueLine *ProbePortsOptionWidget::addProbeOutRow(int index)
{
    auto *row = new QTreeWidgetItem(ui->treeProbeOut, PortType);
    row->setText(0, textOf(ProbeTypeOut, index));
    auto *valueRow = new QTreeWidgetItem(ui->treeValue, PortType);
    auto *line = new InitialValueLine(index, this);
    ui->treeValue->setItemWidget(valueRow, 0, line);
    QWidget *above = ui->treeValue->lineAt(index - 1);
    setTabOrder(above ? above : ui->treeValue, line);
    return line;
}

void ProbePortsOptionWidget::renumber(QTreeWidget *tree, ProbeType type)
{
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        tree->topLevelItem(i)->setText(0, textOf(type, i));
}

QString ProbePortsOptionWidget::textOf(ProbeType type, int index)
{
    return (type == ProbeTypeOut ? tr("Probe Out%1") : tr("Probe In%1")).arg(index);
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
