// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "iview.h"

#include <QDebug>

namespace Core {

IView::IView(QWidget *parent)
    : QWidget(parent)
{
    connect(this, &QWidget::windowTitleChanged, this, &IView::onWindowTitleChanged);
}

IView::~IView()
{
    qDebug().noquote().nospace() << "IView: " << windowTitle() << " destoryed";
}

QString IView::shortTitle() const
{
    return m_hasShortTitle ? m_shortTitle : windowTitle();
}

void IView::setShortTitle(const QString &title)
{
    const QString former = shortTitle();
    m_shortTitle = title;
    m_hasShortTitle = true;
    if (title != former)
        Q_EMIT shortTitleChanged(title);
}

void IView::onWindowTitleChanged(const QString &title)
{
    if (!m_hasShortTitle)
        Q_EMIT shortTitleChanged(title);
}

} // namespace Core
