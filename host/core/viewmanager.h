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

/// Shows and owns views, each in a container widget of its own, which is the view's parent widget
/// from showView() on. At most one view is active. GUI thread only.
///
/// Closing a container in any way closes its view and no other. The view is asked first: its
/// closeEvent() may refuse, and then container and view stay. viewClosed() is emitted while the
/// view is still whole. Container and view are deleted when control returns to the event loop.
///
/// Receivers of the signals may open and close views. A change of the active view in the meantime
/// is announced after they have returned. A view that is deleted without being closed leaves
/// without viewClosed().
class CORE_EXPORT ViewManager : public QObject
{
    Q_OBJECT

public:
    static ViewManager *instance();

    /// Shows @p view and makes it active. A new view gets its container first.
    static void showView(IView *view);

    /// Asks @p view to close. True when it closed.
    static bool closeView(IView *view);

    /// Activates @p context, with the actions registered for it, whenever @p view is active. When
    /// several contexts of a view have an action for the same command, the greatest @p priority
    /// wins.
    static void registerContext(IView *view, const QString &context, int priority);

    /// The parent for dialogs that belong to no view; null without a main window.
    static QWidget *dialogParent();

    // For the application:

    /// The widget that shows the views as tabs. The caller takes ownership by giving it a parent.
    static QWidget *viewArea();
    static void setDialogParent(QWidget *parent);
    /// All shown views, in the order of showing.
    static QList<IView *> views();
    static IView *activeView();
    /// Asks all views to close, in the order of showing, and stops at the first that refuses.
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
