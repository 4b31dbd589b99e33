// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "tarnview_p.h"

#include "edithistory.h"
#include "filestate.h"
#include "findings.h"
#include "tarnoptionwidget.h"
#include "tarnview.h"
#include "unsavedcopy.h"

#include <model/configcheck.h>
#include <model/configdifference.h>
#include <model/limittexts.h>
#include <model/linkchain.h>
#include <model/portlimits.h>
#include <model/tarnconfig.h>
#include <model/tarncore.h>
#include <sdk/netweir.h>
#include <widgets/modaldialog.h>

#include <QAction>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QPointer>

namespace TARN::private_impl {

namespace {

void logIndexes(const char *title, const QList<TarnCore *> &cores)
{
    qDebug("%s", title);
    for (const TarnCore *core : cores)
        qDebug("%d", core->index);
}

} // namespace

TarnViewPrivate::TarnViewPrivate(TarnView *view)
    : q(view)
    , addAction(std::make_unique<QAction>(tr("Add")))
    , removeAction(std::make_unique<QAction>(tr("Remove")))
    , watcher(std::make_unique<QFileSystemWatcher>())
    , history(std::make_unique<EditHistory>(this))
    , findings(std::make_unique<Findings>(history.get()))
    , unsaved(std::make_unique<UnsavedCopy>(this))
{
    connect(watcher.get(), &QFileSystemWatcher::directoryChanged, this,
            &TarnViewPrivate::onFolderChange);
}

TarnViewPrivate::~TarnViewPrivate()
{
    unsaved.reset();
    findings.reset();
    history.reset();
    watcher.reset();
    addAction.reset();
    removeAction.reset();
    netlist.reset();
    qDeleteAll(cores);
}

void TarnViewPrivate::addOneTarn(int index)
{
    if (cores.size() >= MaxCores) {
        showMessage(q, {QMessageBox::Warning, tr("Warning"), tr(LimitTexts::TooManyCores)});
        return;
    }
    auto *core = new TarnCore(index);
    cores.append(core);
    auto *page = new TarnOptionWidget(core, netlist.get(), q);
    optionWidgets.append(page);
    q->addTarnOptionWidget(page);
    q->onModified();
    history->record();
}

void TarnViewPrivate::removeOneTarn(int index)
{
    if (cores.size() == 1) {
        showMessage(q, {QMessageBox::Warning, tr("Remove TARN"), tr(LimitTexts::OnlyCore)});
        return;
    }
    if (index < 0 || index >= cores.size())
        return;

    const QPointer<TarnViewPrivate> self(this);
    const QPointer<TarnOptionWidget> page(optionWidgets.at(index));
    Message question;
    question.icon = QMessageBox::Question;
    question.title = tr("Remove TARn"); // Spelt so: users and scripts know the box by this title.
    question.text = tr("Do you want to remove TARN %1 ?").arg(index);
    question.buttons = QMessageBox::Ok | QMessageBox::Cancel;
    question.defaultButton = QMessageBox::Ok;
    if (showMessage(q, question) != QMessageBox::Ok || !self)
        return;
    // A reload behind the question may have replaced the cores.
    if (page && cores.size() > 1)
        removePage(page);
}

void TarnViewPrivate::removePage(TarnOptionWidget *page)
{
    const int position = optionWidgets.indexOf(page);
    optionWidgets.removeAt(position);
    q->removeTarnOptionWidget(page);
    delete page;
    delete cores.takeAt(position);

    logIndexes("before changed", cores);
    for (int i = 0; i < cores.size(); ++i)
        cores.at(i)->index = i;
    logIndexes("after changed", cores);
    q->onModified();
    history->record();
}

void TarnViewPrivate::initTarnOptionWidget()
{
    for (TarnCore *core : qAsConst(cores)) {
        auto *page = new TarnOptionWidget(core, netlist.get(), nullptr);
        optionWidgets.append(page);
        q->addTarnOptionWidget(page);
    }
}

void TarnViewPrivate::clearTarns()
{
    for (int i = optionWidgets.size() - 1; i >= 0; --i)
        q->takeOut(optionWidgets.at(i));
    qDeleteAll(optionWidgets);
    optionWidgets.clear();
    qDeleteAll(cores);
    cores.clear();
}

void TarnViewPrivate::showSnapshot(const ConfigSnapshot &current, const ConfigSnapshot &target)
{
    const ChangedCores changed = changedCores(current, target);
    const int inPlace = qMin(changed.before, changed.after);
    for (int i = changed.before - 1; i >= inPlace; --i)
        deleteTarn(changed.first + i);
    for (int i = 0; i < inPlace; ++i)
        optionWidgets.at(changed.first + i)->restore(*target.cores.at(changed.first + i).content);
    for (int i = inPlace; i < changed.after; ++i)
        insertTarn(changed.first + i, newCore(0, *target.cores.at(changed.first + i).content));
    for (int i = 0; i < cores.size(); ++i)
        cores.at(i)->index = target.cores.at(i).index;
    q->showCoreList();
}

void TarnViewPrivate::insertTarn(int position, std::unique_ptr<TarnCore> core)
{
    auto *page = new TarnOptionWidget(core.get(), netlist.get(), q);
    cores.insert(position, core.release());
    optionWidgets.insert(position, page);
    q->insertPage(position, page);
}

void TarnViewPrivate::deleteTarn(int position)
{
    TarnOptionWidget *page = optionWidgets.takeAt(position);
    q->takePage(page);
    delete page;
    delete cores.takeAt(position);
}

TarnCore *TarnViewPrivate::getTarnByIndex(int index) const
{
    for (TarnCore *core : cores) {
        if (core->index == index)
            return core;
    }
    return nullptr;
}

TarnOptionWidget *TarnViewPrivate::getTarnWidgetByIndex(int index) const
{
    for (TarnOptionWidget *page : optionWidgets) {
        if (page->core()->index == index)
            return page;
    }
    return nullptr;
}

void TarnViewPrivate::setModified(bool value)
{
    if (modified == value)
        return;
    modified = value;
    if (modificationCallback)
        modificationCallback(value);
}

bool TarnViewPrivate::save()
{
    qDebug("save lumo");
    history->commitTyping();
    for (TarnOptionWidget *page : qAsConst(optionWidgets))
        page->save();
    history->followStored();

    QString errors;
    if (!check(&errors)) {
        showCheckErrors(errors);
        return false;
    }

    unwatchFile(); // The view's own write must raise no banner.
    if (netlist) {
        for (TarnCore *core : qAsConst(cores))
            core->module = netlist->top()->instName();
    }
    const bool written = writeTARNConfigToXml(cores, filePath);
    watchFile();
    if (!written) {
        showMessage(q, {QMessageBox::Critical, tr("Error"),
                        tr("Can not save to %1").arg(QDir::toNativeSeparators(filePath))});
        return false;
    }
    history->setSaved();
    unsaved->setSaved();
    q->showUnmodified();
    return true;
}

void TarnViewPrivate::showCheckErrors(const QString &errors)
{
    Message message;
    message.title = tr("Error");
    // The blanks make the box wide enough for the details.
    message.text = tr("Your settings contain some errors.") + QString(13, QLatin1Char(' '));
    message.detailedText = errors;
    message.defaultButton = QMessageBox::Ok;
    message.escapeButton = QMessageBox::Ok;
    showMessage(q, message);
}

bool TarnViewPrivate::check(QString *errors) const
{
    const QStringList found = checkConfig(cores, netlist.get());
    if (errors)
        *errors = found.join(QLatin1Char('\n'));
    return found.isEmpty();
}

void TarnViewPrivate::setNlsData(NETWEIR::RtlNetlist *newNetlist)
{
    // The former netlist goes last: pages may look at it until they have the new one.
    std::unique_ptr<NETWEIR::RtlNetlist> former = std::move(netlist);
    netlist.reset(newNetlist);
    findings->setNetlist(newNetlist);
    for (TarnOptionWidget *page : qAsConst(optionWidgets))
        page->setNlsdata(newNetlist);
}

void TarnViewPrivate::watchFile()
{
    unwatchFile();
    m_watchedIdentity = fileIdentity(filePath);
    if (filePath.isEmpty())
        return;
    const bool exists = watcher->addPath(filePath);
    QStringList places = linkChain(filePath);
    if (places.isEmpty())
        places.append(filePath);
    // The watcher follows links, so that a replaced link shows in its folder alone. So does the
    // return of a missing file.
    if (exists)
        places.removeLast();
    for (const QString &place : qAsConst(places))
        watchFolderOf(place);
}

void TarnViewPrivate::watchFolderOf(const QString &path)
{
    // The folder may be missing too: wait in the nearest one for it.
    QString folder = QFileInfo(path).absolutePath();
    while (!QFileInfo::exists(folder))
        folder = QFileInfo(folder).path();
    watcher->addPath(folder);
}

void TarnViewPrivate::unwatchFile()
{
    const QStringList watched = watcher->files() + watcher->directories();
    if (!watched.isEmpty())
        watcher->removePaths(watched);
}

void TarnViewPrivate::onFolderChange()
{
    const bool sameFile = fileIdentity(filePath) == m_watchedIdentity;
    if (sameFile && !watcher->files().isEmpty())
        return; // Watching anew would lose changes that are not reported yet.
    watchFile();
    if (!sameFile)
        q->onFileChange();
}

} // namespace TARN::private_impl
