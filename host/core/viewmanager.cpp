// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "viewmanager.h"

#include "actionmanager.h"
#include "internal/viewcontainer.h"
#include "iview.h"

#include <QHash>
#include <QPointer>
#include <QTabWidget>

#include <algorithm>

namespace Core {

namespace {

struct Context
{
    QString name;
    int priority;
};

ViewContainer *containerOf(const IView *view)
{
    return view ? qobject_cast<ViewContainer *>(view->parentWidget()) : nullptr;
}

/// A tab shows '&' as a mnemonic unless it is doubled.
QString tabText(const IView *view)
{
    return view->shortTitle().replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

struct ViewManager::Private
{
    QPointer<QTabWidget> area;
    QPointer<QWidget> dialogParent;
    QList<ViewContainer *> containers; ///< Of open views, in order of showing.
    QHash<const QObject *, QList<Context>> contexts;
    const IView *announced = nullptr; ///< Only compared: it may be gone.

    QTabWidget *tabs();
    void addView(IView *view);
    void updateTab(ViewContainer *container);
    void onClosed(ViewContainer *container);
    void onViewLost(ViewContainer *container);
    void removeTab(ViewContainer *container);
    void activateContexts(const IView *view);
    void announceActive();
};

QTabWidget *ViewManager::Private::tabs()
{
    if (!area) {
        area = new QTabWidget;
        area->setTabsClosable(true);
        area->setMovable(true);
        area->setDocumentMode(true);
        connect(area, &QTabWidget::currentChanged, instance(), [this] { announceActive(); });
        connect(area, &QTabWidget::tabCloseRequested, instance(), [this](int index) {
            if (auto *container = qobject_cast<ViewContainer *>(area->widget(index)))
                container->tryToClose();
        });
    }
    return area;
}

void ViewManager::Private::addView(IView *view)
{
    auto *container = new ViewContainer(view);
    containers.append(container);
    const auto update = [this, container] { updateTab(container); };
    connect(view, &IView::shortTitleChanged, container, update);
    connect(view, &QWidget::windowTitleChanged, container, update);
    connect(container, &ViewContainer::closed, instance(),
            [this, container] { onClosed(container); });
    connect(container, &ViewContainer::viewLost, instance(),
            [this, container] { onViewLost(container); });
    tabs()->addTab(container, tabText(view));
    updateTab(container);
}

void ViewManager::Private::updateTab(ViewContainer *container)
{
    const IView *view = container->view();
    if (!view || !area)
        return;
    const int index = area->indexOf(container);
    area->setTabText(index, tabText(view));
    area->setTabToolTip(index, view->windowTitle());
}

void ViewManager::Private::onClosed(ViewContainer *container)
{
    containers.removeOne(container);
    Q_EMIT instance()->viewClosed(container->view());
    removeTab(container);
}

void ViewManager::Private::onViewLost(ViewContainer *container)
{
    containers.removeOne(container);
    removeTab(container);
}

void ViewManager::Private::removeTab(ViewContainer *container)
{
    if (area)
        area->removeTab(area->indexOf(container));
    announceActive();
}

void ViewManager::Private::activateContexts(const IView *view)
{
    QStringList names;
    const QList<Context> registered = contexts.value(view);
    for (const Context &context : registered)
        names.append(context.name);
    ActionManager::setActiveContexts(names);
}

void ViewManager::Private::announceActive()
{
    IView *view = activeView();
    if (view == announced)
        return;
    announced = view;
    activateContexts(view);
    Q_EMIT instance()->viewActiveted(view);
}

ViewManager::ViewManager()
    : d(new Private)
{
}

ViewManager::~ViewManager() = default;

ViewManager *ViewManager::instance()
{
    // Never destroyed: plug-ins and views may leave at the very end of the process.
    static auto *manager = new ViewManager;
    return manager;
}

void ViewManager::showView(IView *view)
{
    if (!view)
        return;
    Private *d = instance()->d.get();
    if (!containerOf(view))
        d->addView(view);
    ViewContainer *container = containerOf(view);
    if (!container->isClosed())
        d->tabs()->setCurrentWidget(container);
}

bool ViewManager::closeView(IView *view)
{
    ViewContainer *container = containerOf(view);
    return container && (container->isClosed() || container->tryToClose());
}

void ViewManager::registerContext(IView *view, const QString &context, int priority)
{
    if (!view)
        return;
    Private *d = instance()->d.get();
    if (!d->contexts.contains(view)) {
        connect(view, &QObject::destroyed, instance(),
                [d](QObject *gone) { d->contexts.remove(gone); });
    }
    QList<Context> &contexts = d->contexts[view];
    const auto sameName = [&context](const Context &other) { return other.name == context; };
    contexts.erase(std::remove_if(contexts.begin(), contexts.end(), sameName), contexts.end());
    const auto lower = [priority](const Context &other) { return other.priority < priority; };
    contexts.insert(std::find_if(contexts.begin(), contexts.end(), lower), {context, priority});
    if (view == activeView())
        d->activateContexts(view);
}

QWidget *ViewManager::dialogParent()
{
    return instance()->d->dialogParent;
}

void ViewManager::setDialogParent(QWidget *parent)
{
    instance()->d->dialogParent = parent;
}

QWidget *ViewManager::viewArea()
{
    return instance()->d->tabs();
}

QList<IView *> ViewManager::views()
{
    QList<IView *> views;
    for (const ViewContainer *container : qAsConst(instance()->d->containers))
        views.append(container->view());
    return views;
}

IView *ViewManager::activeView()
{
    const Private *d = instance()->d.get();
    const auto *current =
        d->area ? qobject_cast<const ViewContainer *>(d->area->currentWidget()) : nullptr;
    return current && !current->isClosed() ? current->view() : nullptr;
}

bool ViewManager::closeAllViews()
{
    const Private *d = instance()->d.get();
    while (!d->containers.isEmpty()) {
        if (!d->containers.first()->tryToClose())
            return false;
    }
    return true;
}

} // namespace Core
