// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "editmenu.h"

#include <core/iview.h>
#include <core/viewmanager.h>

#include <QActionEvent>

namespace Workbench {

EditMenu::EditMenu(QWidget *parent)
    : QMenu(tr("&Edit"), parent)
{
    connect(Core::ViewManager::instance(), &Core::ViewManager::viewActiveted, this,
            &EditMenu::showActionsOf);
    showActionsOf(Core::ViewManager::activeView());
}

void EditMenu::showActionsOf(QWidget *view)
{
    if (m_view)
        m_view->removeEventFilter(this);
    m_view = view;
    clear();
    if (view) {
        addActions(view->actions());
        view->installEventFilter(this);
    }
    updateEnabled();
}

/// Passes on what the view is told about its actions; their changes reach the menu without help.
bool EditMenu::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ActionAdded) {
        const auto *added = static_cast<QActionEvent *>(event);
        insertAction(added->before(), added->action());
    } else if (event->type() == QEvent::ActionRemoved) {
        removeAction(static_cast<QActionEvent *>(event)->action());
    }
    return QMenu::eventFilter(watched, event);
}

void EditMenu::actionEvent(QActionEvent *event)
{
    QMenu::actionEvent(event);
    updateEnabled();
}

void EditMenu::updateEnabled()
{
    menuAction()->setEnabled(!isEmpty());
}

} // namespace Workbench
