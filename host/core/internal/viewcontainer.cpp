// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "viewcontainer.h"

#include <core/iview.h>

#include <QCloseEvent>
#include <QCoreApplication>
#include <QVBoxLayout>

namespace Core {

ViewContainer::ViewContainer(IView *view)
    : m_view(view)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view);
    view->show();
    // Closing the last of them must not quit the application.
    setAttribute(Qt::WA_QuitOnClose, false);
    view->setAttribute(Qt::WA_QuitOnClose, false);
    view->installEventFilter(this);
    connect(view, &QObject::destroyed, this, &ViewContainer::onViewDestroyed);
}

ViewContainer::~ViewContainer()
{
    if (m_view)
        disconnect(m_view, nullptr, this, nullptr);
    finish();
}

bool ViewContainer::tryToClose()
{
    // The result of close() does not tell: during another close() it is true without asking.
    const QPointer<ViewContainer> guard(this);
    close();
    return !guard || m_closed;
}

void ViewContainer::closeEvent(QCloseEvent *event)
{
    const QPointer<ViewContainer> guard(this);
    const bool agreed = m_closed || viewAgrees();
    event->setAccepted(agreed);
    if (!guard || !agreed)
        return;
    finish();
    if (guard)
        deleteLater();
}

bool ViewContainer::viewAgrees()
{
    if (!m_view)
        return true;
    const QPointer<ViewContainer> guard(this);
    QCloseEvent question;
    m_question = &question;
    QCoreApplication::sendEvent(m_view, &question);
    if (guard)
        m_question = nullptr;
    return !guard || !m_view || question.isAccepted();
}

bool ViewContainer::eventFilter(QObject *watched, QEvent *event)
{
    // A call closes the view instead of its container: take the common path. The type is checked
    // first because m_view must not be used while the view is being destroyed.
    if (event->type() == QEvent::Close && event != m_question && watched == m_view) {
        event->setAccepted(tryToClose());
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void ViewContainer::finish()
{
    if (m_closed)
        return;
    m_closed = true;
    if (m_view)
        Q_EMIT closed();
}

void ViewContainer::onViewDestroyed()
{
    m_view.clear(); // The pointer would become null only later.
    if (m_closed)
        return;
    m_closed = true;
    Q_EMIT viewLost();
    deleteLater();
}

} // namespace Core
