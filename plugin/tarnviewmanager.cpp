// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "tarnviewmanager.h"

#include "tarnconstants.h"

#include <sdk/core.h>
#include <sdk/dev.h>
#include <sdk/te.h>
#include <view/hostdesign.h>
#include <view/tarnview.h>
#include <widgets/modaldialog.h>

#include <QAction>
#include <QDebug>
#include <QFileInfo>
#include <QPointer>

namespace TARN::Impl {

struct TarnViewManager_Private
{
    QAction *saveAction = nullptr;  ///< Child of the manager.
    QPointer<TarnView> currentView; ///< The last editor view that became active.
    QList<TarnView *> views;        ///< In order of opening; owned by the host.
    bool hasCurrent = false;        ///< The active view is currentView.
};

} // namespace TARN::Impl

namespace TARN {

TarnViewManager *TarnViewManager::s_instance = new TarnViewManager;

TarnViewManager::TarnViewManager()
    : d(std::make_unique<Impl::TarnViewManager_Private>())
{
}

TarnViewManager::~TarnViewManager()
{
    s_instance = nullptr;
}

TarnViewManager *TarnViewManager::instance()
{
    return s_instance;
}

TarnViewManager *TarnViewManager::ensureInstance()
{
    if (!s_instance)
        s_instance = new TarnViewManager;
    return s_instance;
}

void TarnViewManager::initialize()
{
    if (d->saveAction)
        return;
    d->saveAction = new QAction(this);
    Core::ActionManager::registerAction(d->saveAction, Core::Constants::A_FILE_SAVE, TARN_CONTEXT);
    d->saveAction->setEnabled(false);

    connect(d->saveAction, &QAction::triggered, this, &TarnViewManager::onActSave);
    Core::ViewManager *host = Core::ViewManager::instance();
    connect(host, &Core::ViewManager::viewActiveted, this, &TarnViewManager::onCurrentViewChanged);
    connect(host, &Core::ViewManager::viewClosed, this, &TarnViewManager::onTarnViewClosed);
}

void TarnViewManager::deinit()
{
    d.reset();
    delete this;
}

bool TarnViewManager::openTarnView(const QString &filePath, const DEV::DeviceArg &device)
{
    if (TarnView *open = findView(filePath)) {
        Core::ViewManager::instance()->showView(open);
        return true;
    }

    // Guarded: reading the design and message boxes run event loops.
    QPointer<TarnViewManager> self(this);
    QPointer<TarnView> view(new TarnView(nullptr));
    const QString netlistPath = HostDesign::resultFile(TE::RES_NETLIST);
    QString errorText;
    if (!view->open(filePath, netlistPath, &errorText)) {
        if (!errorText.isEmpty())
            showMessage(Core::ViewManager::instance()->dialogParent(),
                        {QMessageBox::Critical, tr("Error"), errorText});
        delete view;
    } else if (!self) {
        delete view;
    } else if (TarnView *open = findView(filePath)) {
        delete view; // Opened once more meanwhile: a file never has two views.
        Core::ViewManager::instance()->showView(open);
    } else if (view) {
        addView(view, device);
    }
    // Callers cannot tell a failure by the result: hosts take false for "not my kind of file".
    return true;
}

void TarnViewManager::addView(TarnView *view, const DEV::DeviceArg &device)
{
    qDebug().noquote().nospace() << "create tarn view: " << static_cast<void *>(view);
    view->setDeviceName(device.deviceName);
    d->views.append(view);
    connect(view, &TarnView::modificationStatusChanged, this, &TarnViewManager::onTarnViewModified);
    // For a view that is deleted without being closed.
    connect(view, &QObject::destroyed, this, [this, view] { d->views.removeAll(view); });
    Core::ViewManager::instance()->registerContext(view, TARN_CONTEXT, 1);
    Core::ViewManager::instance()->showView(view);
}

bool TarnViewManager::closeTarnView(const QString &filePath)
{
    TarnView *view = findView(filePath);
    if (!view)
        return false;
    Core::ViewManager::instance()->closeView(view);
    return true;
}

QList<TarnView *> TarnViewManager::tarnViews() const
{
    return d->views;
}

void TarnViewManager::onCurrentViewChanged(Core::IView *view)
{
    auto *tarnView = qobject_cast<TarnView *>(view);
    // The pointer to the last editor view stays when another kind of view becomes active.
    if (tarnView)
        d->currentView = tarnView;
    d->hasCurrent = tarnView;
    updateActions();
}

void TarnViewManager::onTarnViewModified(bool)
{
    auto *view = qobject_cast<TarnView *>(sender());
    if (view && view == d->currentView)
        updateActions();
}

void TarnViewManager::onActSave()
{
    if (d->currentView && d->currentView->isModified())
        d->currentView->save();
}

void TarnViewManager::onTarnViewClosed(Core::IView *view)
{
    auto *tarnView = qobject_cast<TarnView *>(view);
    if (!tarnView)
        return;
    d->views.removeAll(tarnView);
    if (d->currentView == tarnView) {
        d->currentView = nullptr;
        d->hasCurrent = false;
    }
    updateActions();
}

void TarnViewManager::updateActions()
{
    if (!d->saveAction)
        return; // A view is used before initialize().
    if (!d->hasCurrent || !d->currentView) {
        d->saveAction->setEnabled(false);
        return;
    }
    const QString title = d->currentView->windowTitle();
    d->saveAction->setText(tr("&Save \"%1\"").arg(title));
    d->saveAction->setToolTip(tr("Save \"%1\"").arg(title));
    d->saveAction->setEnabled(d->currentView->isModified());
}

TarnView *TarnViewManager::findView(const QString &filePath) const
{
    const QString path = QFileInfo(filePath).absoluteFilePath();
    for (TarnView *view : qAsConst(d->views)) {
        if (QFileInfo(view->file()).absoluteFilePath() == path)
            return view;
    }
    return nullptr;
}

} // namespace TARN
