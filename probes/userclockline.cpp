// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "userclockline.h"

#include "undokeys.h"

#include <QHideEvent>
#include <QPointer>

namespace TARN {

UserClockLine::UserClockLine(QWidget *parent)
    : QLineEdit(parent)
{
    connect(this, &QLineEdit::textEdited, this, [this] { m_typed = true; });
    connect(this, &QLineEdit::textChanged, this, &UserClockLine::onTextChanged);
    connect(this, &QLineEdit::editingFinished, this, &UserClockLine::onEditingFinished);
}

QString UserClockLine::text(Typing typing) const
{
    return typing == Typing::Included ? text() : m_applied;
}

void UserClockLine::setApplied(const QString &text)
{
    m_applied = text;
    setText(text);
}

void UserClockLine::onTextChanged()
{
    const bool typed = m_typed;
    m_typed = false;
    const QPointer<UserClockLine> self(this);
    Q_EMIT changed();
    if (!self)
        return;
    if (!typed)
        apply();
    else if (isRedoAvailable()) // Only an undo leaves something to redo.
        Q_EMIT typingUndone();
}

void UserClockLine::onEditingFinished()
{
    // A window that closes takes the focus away before its widgets learn that they are hidden.
    const bool windowCloses = isVisible() && window()->isHidden();
    if (!m_hidden && !windowCloses)
        apply();
}

void UserClockLine::apply()
{
    if (text() == m_applied)
        return;
    keepText();
    Q_EMIT applied();
}

void UserClockLine::keepText()
{
    m_applied = text();
    if (!isUndoAvailable() && !isRedoAvailable())
        return; // Keeps the selection.
    const int cursor = cursorPosition();
    setText(m_applied); // Forgets the single keys.
    setCursorPosition(cursor);
}

bool UserClockLine::event(QEvent *event)
{
    return decideUndoKey(this, event) || QLineEdit::event(event);
}

void UserClockLine::dropEvent(QDropEvent *event)
{
    QLineEdit::dropEvent(event);
    // What was dropped is applied when the line loses the focus, so it has to get the focus first.
    QMetaObject::invokeMethod(
        this, [this] { setFocus(Qt::MouseFocusReason); }, Qt::QueuedConnection);
}

void UserClockLine::hideEvent(QHideEvent *event)
{
    m_hidden = !event->spontaneous();
    QLineEdit::hideEvent(event);
}

void UserClockLine::showEvent(QShowEvent *event)
{
    m_hidden = false;
    QLineEdit::showEvent(event);
}

} // namespace TARN
