// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core_global.h"

#include <QList>
#include <QObject>
#include <QString>

#include <memory>

class QWidget;

namespace Core {

class IView;

/// Shows views, each in a container widget of its own (the view's parent widget from showView()
/// on), and owns them. One view at most is active. GUI thread only.
///
/// Closing a container, by whatever way, closes its view and no other: the view is asked first
/// (its closeEvent() may refuse, and then container and view stay), viewClosed() is emitted while
/// the view is still whole, and container and view are deleted when control returns to the event
/// loop.
///
/// Receivers of the signals may open and close views: a change of the active view that happens
/// meanwhile is announced once they have returned. A view that somebody deletes without closing it
/// leaves without viewClosed().
class CORE_EXPORT ViewManager : public QObject
{
    Q_OBJECT

public:
    static ViewManager *instance();

    /// Shows @p view, making it active; a view that is not known yet gets its container first.
    static void showView(IView *view);

    /// Asks @p view to close. True when it did.
    static bool closeView(IView *view);

    /// Activates @p context, with the actions registered for it, whenever @p view is active.
    /// Where several contexts of one view offer an action for the same command, that of the
    /// greatest @p priority wins.
    static void registerContext(IView *view, const QString &context, int priority);

    /// The widget to use as parent of a dialog that belongs to no view; null without a main window.
    static QWidget *dialogParent();

    // For the application:

    /// The widget that shows the views as tabs; the caller takes ownership by parenting it.
    static QWidget *viewArea();
    static void setDialogParent(QWidget *parent);
    /// Every shown view, in order of showing.
    static QList<IView *> views();
    static IView *activeView();
    /// Asks every view to close, in order of showing, and stops at the first that refuses.
    static bool closeAllViews();

Q_SIGNALS:
    /// The active view changed. Null when no view is left. (The odd spelling is part of the
    /// interface: receivers connect by name.)
    void viewActiveted(Core::IView *view);
    /// @p view was closed; it is still whole and about to be deleted.
    void viewClosed(Core::IView *view);

private:
    struct Private;

    ViewManager();
    ~ViewManager() override;

    std::unique_ptr<Private> d;
};

} // namespace Core
