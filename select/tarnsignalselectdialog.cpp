// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "tarnsignalselectdialog.h"

#include "keypress.h"
#include "resultrows.h"
#include "rtlnetlisttreeview.h"
#include "sizememory.h"
#include "ui_tarnsignalselectdialog.h"

#include <probes/signaltree.h>
#include <sdk/netweir.h>
#include <widgets/treerows.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDebug>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>
#include <QRegExp>

namespace TARN {

namespace {

/// Size that the user gave the dialog last.
QSize searchDialogSize;

/// Shows that a search is under way: by the cursor and on the button that started it.
class Busy
{
public:
    explicit Busy(QWidget *button)
        : m_button(button)
        , m_focused(button->hasFocus())
    {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        m_button->setEnabled(false);
    }
    ~Busy()
    {
        m_button->setEnabled(true);
        if (m_focused)
            m_button->setFocus(); // Disabling the button moved the focus on.
        QApplication::restoreOverrideCursor();
    }
    Q_DISABLE_COPY(Busy)

private:
    QWidget *m_button;
    bool m_focused;
};

/// What the list of results says when a search has found nothing.
QString noticeFor(const SearchOptions &options)
{
    if (patternFault(options).isEmpty())
        return TarnSignalSelectDialog::tr("Nothing found.");
    return options.patternSyntax == QRegExp::RegExp
               ? TarnSignalSelectDialog::tr("The expression is invalid.")
               : TarnSignalSelectDialog::tr("The wildcard is invalid.");
}

/// Runs a dialog, which may go away with its parent, and returns what @p result takes from it when
/// it was accepted.
template <typename Result>
Result runDialog(NETWEIR::RtlNetlist *netlist, ProbeType type, QWidget *parent,
                 Result (TarnSignalSelectDialog::*result)() const)
{
    const QPointer<TarnSignalSelectDialog> dialog(
        new TarnSignalSelectDialog(netlist, type, parent));
    Result chosen;
    if (dialog->exec() == QDialog::Accepted) // Then it is still there.
        chosen = (dialog->*result)();
    delete dialog;
    return chosen;
}

} // namespace

TarnSignalSelectDialog::TarnSignalSelectDialog(NETWEIR::RtlNetlist *netlist, ProbeType type,
                                               QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::TarnSignalSelectDialog>())
    , m_netlist(netlist)
    , m_moduleTree(new RtlNetlistTreeView(this))
    , m_type(type)
{
    ui->setupUi(this);
    ui->radioButtonNormal->setChecked(true);
    ui->checkBoxAdvancedFilter->setChecked(false);
    ui->widget_4->setVisible(false);
    setUpLists();
    setUpModuleTree();
    setUpButtons();
    new SizeMemory(this, &searchDialogSize);
}

TarnSignalSelectDialog::~TarnSignalSelectDialog() = default;

QList<SignalItem> TarnSignalSelectDialog::getNetName(NETWEIR::RtlNetlist *netlist, ProbeType type,
                                                     QWidget *parent)
{
    return runDialog(netlist, type, parent, &TarnSignalSelectDialog::getSelectedNets);
}

QString TarnSignalSelectDialog::getOneNetName(NETWEIR::RtlNetlist *netlist, ProbeType type,
                                              QWidget *parent)
{
    return runDialog(netlist, type, parent, &TarnSignalSelectDialog::getOneSelectedNetName);
}

void TarnSignalSelectDialog::setUpLists()
{
    for (LargeTreeWidget *list :
         {static_cast<LargeTreeWidget *>(ui->treeWidget), ui->treeWidgetAddSignal}) {
        list->setHeaderHidden(true);
        list->setTextElideMode(Qt::ElideMiddle);
        list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    }
    connect(ui->treeWidget, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem *row) {
        if (ResultTreeWidget::canBeChosen(row))
            mergeSignals(ui->treeWidgetAddSignal, {signalOfResult(row)});
    });
    ui->treeWidgetAddSignal->installEventFilter(this);
}

void TarnSignalSelectDialog::setUpModuleTree()
{
    m_moduleTree->setItemsExpandable(false);
    fillModuleTree();
    // In this order: a model that is set later would take the view away again.
    ui->comboBoxSearchIn->setModel(m_moduleTree->model());
    ui->comboBoxSearchIn->setView(m_moduleTree);
    connect(ui->comboBoxSearchIn, QOverload<int>::of(&QComboBox::activated), this,
            &TarnSignalSelectDialog::pickModule);
    ui->comboBoxSearchIn->installEventFilter(this);
    m_moduleTree->installEventFilter(this);
}

void TarnSignalSelectDialog::fillModuleTree()
{
    m_pickedModule = nullptr;
    m_moduleTree->setNetlistData(m_netlist);
    m_moduleTree->expandAll();
    ui->comboBoxSearchIn->setToolTip(RtlNetlistTreeView::pathOf(m_moduleTree->topLevelItem(0)));
}

void TarnSignalSelectDialog::pickModule(int row)
{
    // Keys and wheel move the closed box among the top-level rows, and the tree does not follow.
    if (m_moduleTree->currentItem()->text(0) != ui->comboBoxSearchIn->currentText())
        m_moduleTree->setCurrentItem(m_moduleTree->topLevelItem(row));
    m_pickedModule = m_moduleTree->currentItem();
    ui->comboBoxSearchIn->setToolTip(RtlNetlistTreeView::pathOf(m_pickedModule));
}

bool TarnSignalSelectDialog::eventFilter(QObject *watched, QEvent *event)
{
    keepPickedModule(watched, event);
    return handleKey(watched, event) || QDialog::eventFilter(watched, event);
}

void TarnSignalSelectDialog::keepPickedModule(const QObject *watched, const QEvent *event)
{
    // The popup makes every row under the mouse current, and typing in the closed box may do so
    // with a row that is not picked. Then the row picked before becomes current again, but only
    // after the box has read its pick.
    const bool popupCloses = watched == m_moduleTree && event->type() == QEvent::Hide;
    if (popupCloses || (watched == ui->comboBoxSearchIn && event->type() == QEvent::KeyPress)) {
        const auto restore = [this] {
            if (!m_moduleTree->isVisible())
                m_moduleTree->setCurrentItem(m_pickedModule);
        };
        QMetaObject::invokeMethod(this, restore, Qt::QueuedConnection);
    }
}

/// Handles Delete in the chosen list and Return on OK and Cancel.
bool TarnSignalSelectDialog::handleKey(QObject *watched, const QEvent *event)
{
    if (watched == ui->treeWidgetAddSignal && isPressOf(Qt::Key_Delete, event)) {
        onDelSignal();
        return true;
    }
    auto *button = qobject_cast<QAbstractButton *>(watched);
    if (button && isPressOf(Qt::Key_Return, event)) {
        button->click();
        return true;
    }
    return false;
}

void TarnSignalSelectDialog::setUpButtons()
{
    ui->btnAdd->setToolTip(tr("Add"));
    ui->btnAddAll->setToolTip(tr("Add all"));
    ui->btnDel->setToolTip(tr("Remove"));
    ui->btnDelAll->setToolTip(tr("Remove all"));
    connect(ui->btnAdd, &QAbstractButton::clicked, this, &TarnSignalSelectDialog::onAddSignal);
    connect(ui->btnAddAll, &QAbstractButton::clicked, this,
            &TarnSignalSelectDialog::onAddAllSignal);
    connect(ui->btnDel, &QAbstractButton::clicked, this, &TarnSignalSelectDialog::onDelSignal);
    connect(ui->btnDelAll, &QAbstractButton::clicked, this,
            &TarnSignalSelectDialog::onDelAllSignal);
    const QList<QAbstractButton *> endings = ui->buttonBox->buttons();
    for (QAbstractButton *button : endings)
        button->installEventFilter(this);
}

void TarnSignalSelectDialog::setNetlist(NETWEIR::RtlNetlist *netlist)
{
    m_netlist = netlist;
    ui->treeWidget->clear();
    ui->treeWidget->setNotice(QString());
    fillModuleTree();
}

QList<SignalItem> TarnSignalSelectDialog::getSelectedNets() const
{
    QList<SignalItem> items;
    forEachRow(ui->treeWidgetAddSignal, [&items](const QTreeWidgetItem *row) {
        if (std::optional<SignalItem> stored = storedSignal(row))
            items.append(*std::move(stored));
    });
    return items;
}

QString TarnSignalSelectDialog::getOneSelectedNetName() const
{
    const QList<SignalItem> items = getSelectedNets();
    if (items.isEmpty())
        return QString();
    const SignalItem &first = items.constFirst();
    if (first.members.isEmpty())
        return first.name;
    for (const SignalItem &member : first.members) {
        if (member.enabled)
            return member.name;
    }
    return QString();
}

void TarnSignalSelectDialog::on_pushButtonSearch_clicked()
{
    const Busy busy(ui->pushButtonSearch);
    ui->treeWidget->clear();
    const SearchOptions options = searchOptions();
    ui->treeWidget->setNotice(search(options) ? QString() : noticeFor(options));
}

bool TarnSignalSelectDialog::search(const SearchOptions &options)
{
    if (ui->checkBoxAdvancedFilter->isChecked() && ui->checkBoxHierarchyView->isChecked()) {
        qDebug().noquote().nospace() << "checked Hierarchy View";
        if (!options.searchIn)
            return false;
        const ModuleForWidget found = searchNetsHierarchy(options);
        setTreeWidget(found);
        return !found.nets.isEmpty() || !found.buses.isEmpty() || !found.subModules.isEmpty();
    }
    QList<NETWEIR::RtlNet *> nets;
    QList<NETWEIR::RtlNetBus *> buses;
    searchNets(m_netlist, options, nets, buses);
    setTreeWidget(nets, buses);
    return !nets.isEmpty() || !buses.isEmpty();
}

SearchOptions TarnSignalSelectDialog::searchOptions() const
{
    SearchOptions options;
    options.pattern = ui->lineEditName->text();
    options.caseSensitivity =
        ui->checkBoxCaseSensitive->isChecked() ? Qt::CaseSensitive : Qt::CaseInsensitive;
    if (!ui->radioButtonNormal->isChecked()) {
        options.usePattern = true;
        options.patternSyntax =
            ui->radioButtonWildcard->isChecked() ? QRegExp::WildcardUnix : QRegExp::RegExp;
    }
    options.useSearchIn = true;
    options.searchIn = m_netlist ? m_netlist->top() : nullptr;
    options.includeSubentries = true;
    if (ui->checkBoxAdvancedFilter->isChecked()) {
        if (const auto *row = dynamic_cast<RtlTreeItem *>(m_moduleTree->currentItem()))
            options.searchIn = row->hierachy();
        options.includeSubentries = ui->checkBoxIncludeSubentries->isChecked();
    }
    return options;
}

void TarnSignalSelectDialog::on_checkBoxAdvancedFilter_toggled(bool checked)
{
    ui->widget_4->setVisible(checked);
}

void TarnSignalSelectDialog::setTreeWidget(const QList<NETWEIR::RtlNet *> &nets,
                                           const QList<NETWEIR::RtlNetBus *> &buses)
{
    QElapsedTimer timer;
    timer.start();
    const QList<NETWEIR::RtlNetBus *> shownBuses =
        m_netlist ? buses : QList<NETWEIR::RtlNetBus *>();
    ui->treeWidget->addTopLevelItems(newResultRows(nets, shownBuses, m_type));
    qDebug().noquote().nospace() << timer.elapsed() / 1000.0 << "s";
}

void TarnSignalSelectDialog::setTreeWidget(const ModuleForWidget &module)
{
    // The row gets everything below it before it goes into the tree: telling the tree of each
    // module would cost more than the rows.
    QTreeWidgetItem *row = newModuleRow(module, m_type);
    for (const ModuleForWidget &subModule : module.subModules)
        addModuleInWidget(row, subModule);
    ui->treeWidget->addTopLevelItem(row);
    row->setExpanded(true);
}

void TarnSignalSelectDialog::addModuleInWidget(QTreeWidgetItem *parent,
                                               const ModuleForWidget &module)
{
    QTreeWidgetItem *row = newModuleRow(module, m_type);
    for (const ModuleForWidget &subModule : module.subModules)
        addModuleInWidget(row, subModule);
    parent->addChild(row);
}

void TarnSignalSelectDialog::onAddSignal()
{
    TreeMerge merge(ui->treeWidgetAddSignal);
    ResultSignals results;
    forEachSelectedRow(ui->treeWidget,
                       [&](const QTreeWidgetItem *row) { merge.add(results.of(row)); });
    merge.finish();
}

void TarnSignalSelectDialog::onAddAllSignal()
{
    TreeMerge merge(ui->treeWidgetAddSignal);
    ResultSignals results;
    forEachRow(ui->treeWidget, [&](const QTreeWidgetItem *row) { merge.add(results.of(row)); });
    merge.finish();
}

void TarnSignalSelectDialog::onDelSignal()
{
    removeSelectedTopLevelRows(ui->treeWidgetAddSignal);
}

void TarnSignalSelectDialog::onDelAllSignal()
{
    ui->treeWidgetAddSignal->clear();
}

void TarnSignalSelectDialog::keyPressEvent(QKeyEvent *event)
{
    // Return in the name field is to search, not to end the dialog, so QDialog sees no key at all.
    if (event->key() == Qt::Key_Return)
        on_pushButtonSearch_clicked();
    else
        event->ignore();
}

void TarnSignalSelectDialog::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    // Showing the button box makes OK the default button, which would take Return and Enter.
    const auto buttons = ui->buttonBox->findChildren<QPushButton *>();
    for (QPushButton *button : buttons) {
        button->setAutoDefault(false);
        button->setDefault(false);
    }
}

} // namespace TARN
