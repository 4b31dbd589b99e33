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

struct Q_DECL_HIDDEN ViewManager::Private
{
    QPointer<QWidget> area;
    QPointer<QWidget> dialogParent;
    QList<ViewContainer *> containers; ///< Those of open views, in the order of showing.
    QHash<const QObject *, QList<Context>> contexts;
    QPointer<QObject> announced; ///< Only compared: it may be half destroyed.
    bool announcedNone = true;
    int holds = 0; ///< While positive, viewActiveted waits: all receivers see the same order.

    /// The area while it is whole, null once its destructor has begun: it then is no QTabWidget any
    /// more, but deletes its views later.
    QTabWidget *tabs() const { return qobject_cast<QTabWidget *>(area.data()); }
    QTabWidget *ensureTabs();
    void addView(IView *view);
    void updateTab(ViewContainer *container);
    void onClosed(ViewContainer *container);
    void remove(ViewContainer *container);
    void activateContexts(const IView *view);
    void announceActive();
};

QTabWidget *ViewManager::Private::ensureTabs()
{
    if (QTabWidget *existing = tabs())
        return existing;
    auto *created = new QTabWidget;
    area = created;
    created->setTabsClosable(true);
    created->setMovable(true);
    created->setDocumentMode(true);
    connect(created, &QTabWidget::currentChanged, instance(), [this] { announceActive(); });
    connect(created, &QTabWidget::tabCloseRequested, instance(), [created](int index) {
        if (auto *container = qobject_cast<ViewContainer *>(created->widget(index)))
            container->tryToClose();
    });
    return created;
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
            [this, container] { remove(container); });
    ++holds;
    ensureTabs()->addTab(container, tabText(view));
    updateTab(container);
    --holds;
}

void ViewManager::Private::updateTab(ViewContainer *container)
{
    const IView *view = container->view();
    QTabWidget *whole = tabs();
    if (!view || !whole)
        return;
    const int index = whole->indexOf(container);
    whole->setTabText(index, tabText(view));
    whole->setTabToolTip(index, view->windowTitle());
}

void ViewManager::Private::onClosed(ViewContainer *container)
{
    ++holds;
    remove(container);
    Q_EMIT instance()->viewClosed(container->view());
    --holds;
    announceActive();
}

void ViewManager::Private::remove(ViewContainer *container)
{
    containers.removeOne(container);
    if (QTabWidget *whole = tabs())
        whole->removeTab(whole->indexOf(container));
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
    if (holds > 0)
        return;
    ++holds;
    const auto toAnnounce = [this](const IView *view) {
        return view ? view != announced : containers.isEmpty() && !announcedNone;
    };
    for (IView *view = activeView(); toAnnounce(view); view = activeView()) {
        announced = view;
        announcedNone = !view;
        activateContexts(view);
        Q_EMIT instance()->viewActiveted(view);
    }
    --holds;
}

ViewManager::ViewManager()
    : d(new Private)
{
}

ViewManager::~ViewManager() = default;

ViewManager *ViewManager::instance()
{
    // Never destroyed: plug-ins and views may live until the very end of the process.
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
    d->ensureTabs()->setCurrentWidget(containerOf(view));
    d->announceActive();
}

bool ViewManager::closeView(IView *view)
{
    ViewContainer *container = containerOf(view);
    return container && container->tryToClose();
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
    return instance()->d->ensureTabs();
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
    const QTabWidget *area = instance()->d->tabs();
    const auto *current =
        area ? qobject_cast<const ViewContainer *>(area->currentWidget()) : nullptr;
    return current ? current->view() : nullptr;
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
