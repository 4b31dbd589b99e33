// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "probedialog.h"

#include "keypress.h"
#include "signalrowmark.h"
#include "sizememory.h"
#include "tarnsignalselectdialog.h"
#include "ui_probedialog.h"

#include <model/limittexts.h>
#include <model/portlimits.h>
#include <probes/signaltree.h>
#include <widgets/modaldialog.h>
#include <widgets/treerows.h>

#include <QPointer>

#include <algorithm>

namespace TARN {

/// Size that the user gave the dialog last.
static QSize portDialogSize;

static QString titleOf(ProbeType type)
{
    switch (type) {
    case ProbeTypeIn:
        return ProbeDialog::tr("Probe In Port");
    case ProbeTypeOut:
        return ProbeDialog::tr("Probe Out Port");
    }
    return QString();
}

ProbeDialog::ProbeDialog(ProbeIn *port, NETWEIR::RtlNetlist *netlist, ProbeType type,
                         QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::ProbeDialog>())
    , m_port(port)
    , m_netlist(netlist)
    , m_type(type)
{
    ui->setupUi(this);
    ui->btnRemove->setEnabled(false);
    ui->treeWidget->setStyleSheet(QStringLiteral("QTreeWidget::item { height: 20px;}"));
    ui->treeWidget->setTextElideMode(Qt::ElideMiddle);
    const auto markOf = [this](const QModelIndex &row) {
        return signalRowMark(m_marks, m_type, row);
    };
    ui->treeWidget->setItemDelegate(new RowMarks(markOf, ui->treeWidget));
    signals2Tree(ui->treeWidget, port->signals, 0);
    setWindowTitle(titleOf(type));
    connect(ui->btnAdd, &QAbstractButton::clicked, this, &ProbeDialog::onAdd);
    connect(ui->btnRemove, &QAbstractButton::clicked, this, &ProbeDialog::onRemove);
    ui->treeWidget->installEventFilter(this);
    showCount();
    new SizeMemory(this, &portDialogSize);
}

ProbeDialog::~ProbeDialog() = default;

void ProbeDialog::setNetlist(NETWEIR::RtlNetlist *netlist)
{
    m_netlist = netlist;
    const auto searches = findChildren<TarnSignalSelectDialog *>();
    for (TarnSignalSelectDialog *search : searches)
        search->setNetlist(netlist);
    ui->treeWidget->viewport()->update(); // The marks follow the netlist.
}

void ProbeDialog::setMarks(const SignalMarks *marks)
{
    m_marks = marks;
    ui->treeWidget->viewport()->update();
}

void ProbeDialog::onAdd()
{
    const QPointer<ProbeDialog> guard(this);
    const QList<SignalItem> chosen = TarnSignalSelectDialog::getNetName(m_netlist, m_type, this);
    if (!guard)
        return;
    mergeSignals(ui->treeWidget, chosen);
    showCount();
}

void ProbeDialog::onRemove()
{
    const QList<QTreeWidgetItem *> selected = ui->treeWidget->selectedItems();
    for (QTreeWidgetItem *row : selected) {
        if (row->parent())
            delete row; // Before its parent, with which it would go.
    }
    removeSelectedTopLevelRows(ui->treeWidget);
    showCount();
}

bool ProbeDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == ui->treeWidget && isPressOf(Qt::Key_Delete, event)) {
        ui->btnRemove->click(); // Nothing while it is disabled.
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void ProbeDialog::on_treeWidget_itemSelectionChanged()
{
    const QList<QTreeWidgetItem *> selected = ui->treeWidget->selectedItems();
    const bool topLevelOnly =
        std::none_of(selected.cbegin(), selected.cend(),
                     [](const QTreeWidgetItem *row) { return row->parent(); });
    ui->btnRemove->setEnabled(!selected.isEmpty() && topLevelOnly);
}

QList<SignalItem> ProbeDialog::shownSignals() const
{
    QList<SignalItem> items;
    for (int i = 0; i < ui->treeWidget->topLevelItemCount(); ++i)
        items.append(signalOfRow(ui->treeWidget->topLevelItem(i)));
    return items;
}

void ProbeDialog::showCount()
{
    const int width = widthOf(shownSignals());
    ui->labelCount->setText(tr("%1 of %2").arg(width).arg(MaxPortSignals));
    ui->labelCount->setStyleSheet(width > MaxPortSignals ? QStringLiteral("QLabel { color: red }")
                                                         : QString());
}

void ProbeDialog::accept()
{
    const QList<SignalItem> chosen = shownSignals();
    if (widthOf(chosen) > MaxPortSignals) {
        Message warning;
        warning.icon = QMessageBox::Warning;
        warning.title = tr("Warning");
        warning.text = tr(LimitTexts::TooManySignals);
        showMessage(this, warning);
        return;
    }
    m_port->signals = chosen;
    QDialog::accept();
}

void ProbeDialog::closeWidget()
{
    Q_EMIT closeOldSearchDialog();
    const auto above = findChildren<QDialog *>();
    for (QDialog *dialog : above)
        dialog->reject();
    close();
}

} // namespace TARN
