// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "bitlabel.h"

#include "valuetree.h"

#include <QEvent>

namespace TARN {

BitLabel::BitLabel(const QString &bits)
{
    setFixedHeight(ValueTree::RowHeight); // By itself it would make its row a pixel higher.
    m_silent = true;
    setText(bits);
    m_silent = false;
    hide();
}

const QMetaObject *BitLabel::metaObject() const
{
    // A new text is announced by the accessible object of the label, which is made for that by its
    // class. There is none for a plain object, and nobody to tell of a text that was never shown.
    return m_silent ? &QObject::staticMetaObject : QLabel::metaObject();
}

void BitLabel::setVisible(bool visible)
{
    if (!m_held || !visible)
        QLabel::setVisible(visible);
}

bool BitLabel::event(QEvent *event)
{
    if (m_followsStyle)
        return QLabel::event(event);
    switch (event->type()) {
    case QEvent::ParentChange:
    case QEvent::PolishRequest:
    case QEvent::StyleChange:
        return true;
    case QEvent::Polish:
        return followStyle(event);
    default:
        return QLabel::event(event);
    }
}

bool BitLabel::followStyle(QEvent *polish)
{
    m_followsStyle = true;
    const bool polished = QLabel::event(polish);
    QEvent missed(QEvent::StyleChange);
    QLabel::event(&missed);
    return polished;
}

} // namespace TARN
