// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "tarnview.h"

#include "edithistory.h"
#include "filestate.h"
#include "findings.h"
#include "findingspane.h"
#include "hostdesign.h"
#include "messagedlg.h"
#include "reloadbanner.h"
#include "tarnoptionwidget.h"
#include "tarnview_p.h"
#include "ui_changedbanner.h"
#include "ui_tarnview.h"
#include "unsavedcopy.h"

#include <model/designreading.h>
#include <model/tarnconfig.h>
#include <model/tarncore.h>
#include <sdk/netweir.h>
#include <sdk/qutil.h>
#include <sdk/te.h>
#include <widgets/modaldialog.h>

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QFontMetrics>
#include <QHeaderView>
#include <QMenu>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QSignalBlocker>
#include <QTimer>

namespace TARN {

using private_impl::TarnViewPrivate;

namespace {

constexpr int FileCheckDelay = 500; // Milliseconds.

QStringList subscribedEvents()
{
    return {TE::E_FILE_ADD,     TE::E_FILE_REMOVE,   TE::E_FILE_CH_ENABLE,
            TE::E_FILE_CH_TYPE, TE::E_FILE_MODIFIED, TE::E_OPTION_CHANGE};
}

/// Makes @p dock wide enough for its title, which would be cut off otherwise.
void fitTitle(QDockWidget *dock)
{
    const QFontMetrics metrics = dock->fontMetrics();
    dock->setMinimumWidth(metrics.horizontalAdvance(dock->windowTitle() + QStringLiteral("MM")));
}

/// True when the design's files, or how they are read, change with @p event.
bool changesDesign(const QUtil::IEvent &event)
{
    const QString name = event.name();
    const int type = event.get(TE::K_TYPE).toInt();
    if (name == TE::E_FILE_ADD || name == TE::E_FILE_MODIFIED)
        return HostDesign::isEnabledSource(event.get(TE::K_FILE).toString());
    if (name == TE::E_FILE_REMOVE)
        return HostDesign::isSourceType(type);
    // Only enabling prompts; after disabling, the current netlist stays.
    if (name == TE::E_FILE_CH_ENABLE)
        return HostDesign::isSourceType(type) && event.get(TE::K_ENABLE).toBool();
    if (name == TE::E_FILE_CH_TYPE) {
        return HostDesign::isSourceType(type) ||
               HostDesign::isSourceType(event.get(TE::K_PREVIOUS).toInt());
    }
    if (name == TE::E_OPTION_CHANGE) {
        const QString option = event.get(TE::K_OPTION).toString();
        return option == TE::OPT::INCLUDEPATH || option == TE::OPT::Verilog_Standard;
    }
    return false;
}

} // namespace

TarnView::TarnView(QWidget *parent)
    : Core::IView(parent)
    , ui(std::make_unique<Ui::TarnView>())
    , m_changedBanner(std::make_unique<Ui::ChangedBanner>())
    , m_checkTimer(new QTimer(this))
{
    ui->setupUi(this);
    ui->treeWidget->header()->setSectionResizeMode(QHeaderView::Stretch);
    fitTitle(ui->dockWidget);
    d = std::make_unique<TarnViewPrivate>(this);
    connect(d->watcher.get(), &QFileSystemWatcher::fileChanged, this, &TarnView::onFileChange);
    d->modificationCallback = [this](bool modified) { Q_EMIT modificationStatusChanged(modified); };
    connect(d->unsaved.get(), &UnsavedCopy::closeWanted, this, &TarnView::closeItself);
    m_checkTimer->setSingleShot(true);
    m_checkTimer->setInterval(FileCheckDelay);
    connect(m_checkTimer, &QTimer::timeout, this, &TarnView::checkForReload);

    // The page follows the current item, however that changes.
    connect(ui->treeWidget, &QTreeWidget::currentItemChanged, this, &TarnView::showCurrentCore);

    m_changedBanner->setupUi(ui->widgetChanged);
    connect(m_changedBanner->okBtn, &QPushButton::clicked, this, &TarnView::onOKBtn);
    ui->widgetChanged->hide();

    m_bannerLayout = new QHBoxLayout(ui->widget_3);
    m_bannerLayout->setSpacing(0);
    m_bannerLayout->setContentsMargins(0, 0, 0, 0);
    ui->widget_3->hide();

    m_findingsPane = new FindingsPane(d->findings.get(), this);
    connect(m_findingsPane, &FindingsPane::chosen, this, &TarnView::showPlace);
    connect(d->findings.get(), &Findings::changed, this, &TarnView::markPages);

    subscribeEvent();
}

TarnView::~TarnView()
{
    unsubscribeEvent();
    ui->treeWidget->disconnect(this); // Losing its items changes the current one.
    delete m_findingsPane;            // It shows what the document owns.
    ui.reset();
    d.reset();
}

bool TarnView::open(const QString &filePath, const QString &, QString *errorText)
{
    qDebug(" This is open file to Tarn");
    d->unsaved->end();
    d->filePath = filePath;
    finishTARNFile(filePath);
    d->watchFile();

    if (!checkTARNFile(filePath)) {
        if (errorText)
            *errorText = tr("%1 open file failed.").arg(filePath);
        return false;
    }
    bool ok = false;
    const QList<TarnCore *> cores = readTARNConfigFromXml(filePath, &ok, errorText);
    if (!ok) {
        qDeleteAll(cores);
        return false;
    }
    d->setModified(false);
    showCores(cores);
    // A file without cores was just given one. Hosts expect the mark of this change in the short
    // title alone.
    setWindowTitle(QFileInfo(filePath).fileName());
    changeTarnWidget(0);
    d->history->begin();
    const QPointer<TarnView> self(this);
    const bool read = readRtlNetlist();
    if (self && read)
        d->unsaved->begin();
    return read;
}

void TarnView::showCores(const QList<TarnCore *> &cores)
{
    const QSignalBlocker untilAllAreThere(ui->treeWidget);
    const EditHistory::Pause noEdit(d->history.get());
    d->clearTarns();
    ui->treeWidget->clear(); // Gaps in the indexes of former cores leave items behind.
    d->cores = cores;
    if (cores.isEmpty())
        d->addOneTarn(0);
    else
        d->initTarnOptionWidget();
}

bool TarnView::save()
{
    const QString tool = HostDesign::optionValue(TE::OPT::SYNTHESIZE_TOOL).toString();
    const QString refusal = saveRefusal(tool);
    if (!refusal.isEmpty()) {
        showError(tr("Error"), refusal);
        return false;
    }
    return d->save();
}

QString TarnView::file() const
{
    return d->filePath;
}

bool TarnView::isModified() const
{
    return d->modified;
}

void TarnView::setModified(bool modified)
{
    d->modified = modified;
    Q_EMIT modificationStatusChanged(modified);
}

void TarnView::showUnmodified()
{
    d->setModified(false);
    showTitle(QString());
}

void TarnView::showTitle(const QString &mark)
{
    const QString title = QFileInfo(d->filePath).fileName() + mark;
    setWindowTitle(title);
    setShortTitle(title);
}

void TarnView::onModified()
{
    if (d->modified)
        return;
    d->setModified(true);
    showTitle(QStringLiteral(" *"));
}

void TarnView::onOKBtn()
{
    ui->widgetChanged->hide();
}

// Cores and pages

int TarnView::addTarnOptionWidget(TarnOptionWidget *page)
{
    insertPage(ui->stackedWidget->count(), page);
    new QTreeWidgetItem(ui->treeWidget, {tr("tarn_%1").arg(page->core()->index)});
    return ui->stackedWidget->count();
}

void TarnView::insertPage(int position, TarnOptionWidget *page)
{
    ui->stackedWidget->insertWidget(position, page);
    connect(page, &TarnOptionWidget::modifed, this, &TarnView::onModified);
    page->setMarks(d->findings->marks());
    m_findingsPane->setTabBehind(page);
    connect(page, &TarnOptionWidget::edited, this, [this, page] { d->history->record(page); });
    connect(page, &TarnOptionWidget::typingUndone, this, [this] { d->history->followTyping(); });
}

void TarnView::takePage(TarnOptionWidget *page)
{
    ui->stackedWidget->removeWidget(page);
    page->disconnect(this);
}

void TarnView::showCoreList()
{
    const QSignalBlocker untilAllAreThere(ui->treeWidget);
    while (ui->treeWidget->topLevelItemCount() > d->cores.size())
        delete ui->treeWidget->takeTopLevelItem(d->cores.size());
    while (ui->treeWidget->topLevelItemCount() < d->cores.size())
        new QTreeWidgetItem(ui->treeWidget);
    for (int i = 0; i < d->cores.size(); ++i)
        ui->treeWidget->topLevelItem(i)->setText(0, tr("tarn_%1").arg(d->cores.at(i)->index));
}

EditHistory *TarnView::history() const
{
    return d->history.get();
}

void TarnView::removeTarnOptionWidget(TarnOptionWidget *page)
{
    takeOut(page);
    for (int i = 0; i < ui->treeWidget->topLevelItemCount(); ++i)
        ui->treeWidget->topLevelItem(i)->setText(0, tr("tarn_%1").arg(i));
}

void TarnView::takeOut(TarnOptionWidget *page)
{
    const QSignalBlocker untilRenumbered(ui->treeWidget);
    takePage(page);
    delete ui->treeWidget->takeTopLevelItem(page->core()->index);
}

void TarnView::changeTarnWidget(int index)
{
    TarnOptionWidget *page = d->getTarnWidgetByIndex(index);
    if (!page)
        return;
    ui->stackedWidget->setCurrentWidget(page);
    ui->treeWidget->setCurrentItem(ui->treeWidget->topLevelItem(index));
    ui->dockWidget_2->setWindowTitle(tr("tarn_%1").arg(index));
}

void TarnView::showPlace(const Place &place)
{
    // A line that loses the focus applies its text, which may show a box.
    const QPointer<TarnOptionWidget> page(d->optionWidgets.value(place.core));
    if (!page)
        return;
    changeTarnWidget(page->core()->index);
    if (page)
        page->showRow(place.type, place.port, place.signal, place.bit);
}

void TarnView::markPages()
{
    for (TarnOptionWidget *page : qAsConst(d->optionWidgets))
        page->setMarks(d->findings->marks());
}

void TarnView::showCurrentCore()
{
    changeTarnWidget(ui->treeWidget->indexOfTopLevelItem(ui->treeWidget->currentItem()));
}

void TarnView::on_treeWidget_clicked(const QModelIndex &index)
{
    // Row and column serve as a point of the viewport: the click counts when it hits an item.
    const QTreeWidgetItem *item = ui->treeWidget->itemAt(index.row(), index.column());
    if (item && d->getTarnByIndex(index.row()))
        changeTarnWidget(index.row());
}

void TarnView::on_treeWidget_doubleClicked(const QModelIndex &index)
{
    on_treeWidget_clicked(index);
}

void TarnView::on_treeWidget_customContextMenuRequested(const QPoint &pos)
{
    const QPersistentModelIndex index(ui->treeWidget->indexAt(pos));
    d->addAction->setEnabled(true);
    d->removeAction->setEnabled(index.isValid());

    const QPointer<TarnView> self(this);
    const QPointer<QMenu> menu(new QMenu(this)); // If it goes with the view, nothing is chosen.
    menu->addAction(d->addAction.get());
    menu->addAction(d->removeAction.get());
    const QAction *chosen = menu->exec(QCursor::pos());
    delete menu;

    int shown = 0;
    if (chosen && chosen == d->addAction.get()) {
        shown = d->cores.size();
        d->addOneTarn(shown);
    } else if (chosen && chosen == d->removeAction.get() && index.isValid()) {
        d->removeOneTarn(index.row());
    } else {
        return;
    }
    if (self)
        changeTarnWidget(shown);
}

void TarnView::closeEvent(QCloseEvent *event)
{
    const bool accepted = mayClose();
    if (accepted)
        d->unsaved->end();
    event->setAccepted(accepted);
}

/// Asks when there are unsaved changes. False when the view was deleted meanwhile.
bool TarnView::mayClose()
{
    if (!isModified())
        return true;
    Message question;
    question.icon = QMessageBox::Question;
    question.title = tr("Save");
    question.text = tr("Save changes to \"%1\" ?").arg(QDir::toNativeSeparators(file()));
    question.buttons = QMessageBox::Ok | QMessageBox::Discard | QMessageBox::Cancel;
    question.defaultButton = QMessageBox::Ok;
    // NoButton when the view was deleted meanwhile.
    const QMessageBox::StandardButton answer = showMessage(this, question);
    // The synthesis tool is not checked: a setting must not keep the view from closing.
    return answer == QMessageBox::Discard || (answer == QMessageBox::Ok && d->save());
}

// Changes of the file on disk

void TarnView::onFileChange()
{
    if (d->fileChangePending)
        return;
    d->fileChangePending = true;
    m_checkTimer->start();
}

void TarnView::checkForReload()
{
    ReloadBanner *banner = nullptr;
    if (QFileInfo::exists(file())) {
        banner = new ReloadBanner(ReloadBanner::Changed, file(), this);
        connect(banner, &ReloadBanner::reload, this, &TarnView::onBannerReload);
        connect(banner, &ReloadBanner::cancel, this, &TarnView::onBannerCancel);
    } else {
        banner = new ReloadBanner(ReloadBanner::Removed, file(), this);
        connect(banner, &ReloadBanner::keepIt, this, &TarnView::onBannerKeep);
        connect(banner, &ReloadBanner::closeIt, this, &TarnView::onBannerClose);
    }
    showBanner(banner);
}

void TarnView::showBanner(QWidget *banner)
{
    m_bannerLayout->addWidget(banner);
    banner->show();
    ui->widget_3->show();
}

ReloadBanner *TarnView::sendingBanner() const
{
    return qobject_cast<ReloadBanner *>(sender());
}

void TarnView::removeBanner(QWidget *banner)
{
    if (!banner)
        return;
    const bool hadFocus = banner->isAncestorOf(QApplication::focusWidget());
    banner->hide();
    m_bannerLayout->removeWidget(banner);
    banner->setParent(nullptr);
    banner->deleteLater(); // One of its buttons is still handling the click.
    // Else it would leave the view, whose keys work only with the focus.
    if (hadFocus)
        ui->treeWidget->setFocus();
}

void TarnView::onBannerReload()
{
    const QPointer<ReloadBanner> banner(sendingBanner());
    finishTARNFile(file());
    const QByteArray state = fileState(file());
    if (!reloadTarnFile()) {
        const QPointer<TarnView> self(this);
        showMessage(this, {QMessageBox::Warning, tr("Reload Tarn"), tr("Invalid TARN file.")});
        if (self)
            closeUnsaved(banner);
        return;
    }
    d->watchFile();
    removeBanner(banner);
    d->fileChangePending = false;
    if (fileState(file()) != state) // Written again while it was read.
        onFileChange();
}

void TarnView::onBannerCancel()
{
    removeBanner(sendingBanner());
    answerFileChange();
}

void TarnView::onBannerKeep()
{
    removeBanner(sendingBanner());
    answerFileChange();
}

void TarnView::answerFileChange()
{
    d->watchFile(); // A replaced or deleted file has dropped out of the watcher.
    d->fileChangePending = false;
}

void TarnView::onBannerClose()
{
    closeUnsaved(sendingBanner());
}

void TarnView::closeUnsaved(ReloadBanner *banner)
{
    removeBanner(banner);
    d->fileChangePending = false;
    if (!closeItself())
        d->watchFile();
}

/// Closes the view without a question. Leaves a copy of unsaved changes behind; when that fails,
/// the view stays and returns false.
bool TarnView::closeItself()
{
    if (isModified() && !d->unsaved->leaveBehind())
        return false;
    d->setModified(false);
    closeContainer();
    return true;
}

void TarnView::closeContainer()
{
    QWidget *container = parentWidget();
    if (!container) {
        close(); // The host does not show it yet: its creator deletes it.
        return;
    }
    container->setAttribute(Qt::WA_DeleteOnClose);
    container->close();
}

void TarnView::onReloadCancel()
{
    removeBanner(sendingBanner());
    m_designChangePending = false;
}

bool TarnView::reloadTarnFile()
{
    if (!checkTARNFile(file()))
        return false;
    d->history->commitTyping();
    showCores(readTARNConfigFromXml(file(), nullptr, nullptr));
    changeTarnWidget(0);
    d->history->recordReload();
    d->unsaved->setReloaded();
    return true;
}

// The design

bool TarnView::readRtlNetlist()
{
    d->setNlsData(nullptr);
    const QPointer<TarnView> self(this);
    const ExtractorCalls calls{
        [this](QMap<QString, QVariant> &info, QStringList &tops, QStringList &modules,
               QStringList &messages) { getRtlModules(info, tops, modules, messages); },
        [self] { return self ? self->updateRtlNetlist() : nullptr; }};
    DesignFault fault;
    std::unique_ptr<NETWEIR::RtlNetlist> netlist =
        readDesign(HostDesign::sourceFileInfo(), calls, &fault);
    if (!self)
        return false;
    if (!netlist) {
        showFault(fault);
        return false;
    }
    d->setNlsData(netlist.release());
    return true;
}

NETWEIR::RtlNetlist *TarnView::updateRtlNetlist()
{
    NETWEIR::RtlNetlist *netlist = nullptr;
    QStringList messages;
    NETWEIR::catchRtlNetsWithProgressDialog(&netlist, messages, nullptr);
    return netlist;
}

void TarnView::getRtlModules(QMap<QString, QVariant> &info, QStringList &tops, QStringList &modules,
                             QStringList &messages)
{
    NETWEIR::catchRtlModules(tops, modules, messages, info, nullptr);
}

void TarnView::showFault(const DesignFault &fault)
{
    if (fault.messages.isEmpty()) {
        showError(fault.title, fault.text);
        return;
    }
    auto *dialog = new MessageDlg(this);
    dialog->setWindowTitle(fault.title);
    dialog->setDetailMsg(fault.messages);
    execAndDelete(dialog);
}

void TarnView::showError(const QString &title, const QString &text)
{
    showMessage(this, {QMessageBox::Critical, title, text});
}

QStringList TarnView::includePaths() const
{
    const QString workingDir = HostDesign::workingDir();
    QStringList paths = HostDesign::optionValue(TE::OPT::INCLUDEPATH).toStringList();
    for (QString &path : paths) {
        if (QDir::isRelativePath(path))
            path = QDir::cleanPath(workingDir + QLatin1Char('/') + path);
    }
    return paths;
}

void TarnView::subscribeEvent()
{
    const QStringList events = subscribedEvents();
    for (const QString &event : events)
        QUtil::EventManager::instance()->subscribe(this, event);
}

void TarnView::unsubscribeEvent()
{
    const QStringList events = subscribedEvents();
    for (const QString &event : events)
        QUtil::EventManager::instance()->unsubscribe(this, event);
}

void TarnView::handleIEvent(const QUtil::IEvent *event)
{
    if (m_designChangePending)
        return;
    if (changesDesign(*event))
        designFileChanged();
    else if (event->name() == TE::E_OPTION_CHANGE &&
             event->get(TE::K_OPTION).toString() == TE::OPT::TOPMODULE)
        topModuleChanged();
}

void TarnView::designFileChanged()
{
    showDesignBanner(tr("Design files changed. Do you want to reload?"));
}

void TarnView::topModuleChanged()
{
    showDesignBanner(tr("Top module changed. Do you want to reload?"));
}

void TarnView::showDesignBanner(const QString &text)
{
    m_designChangePending = true;
    auto *banner = new ReloadBanner(ReloadBanner::Changed, QString(), this);
    connect(banner, &ReloadBanner::reload, this, &TarnView::onRtlReload);
    connect(banner, &ReloadBanner::cancel, this, &TarnView::onReloadCancel);
    showBanner(banner);
    banner->setText(text);
}

void TarnView::onRtlReload()
{
    removeBanner(sendingBanner());
    const Findings::State former = d->findings->state();
    const QPointer<TarnView> self(this);
    const bool read = readRtlNetlist();
    if (!self)
        return;
    if (read) {
        d->findings->reportReload(former);
        m_designChangePending = false;
        return;
    }
    // The change stays unanswered: the view is about to go.
    if (!closeItself())
        m_designChangePending = false;
}

} // namespace TARN
