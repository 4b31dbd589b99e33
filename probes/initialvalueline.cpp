// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "initialvalueline.h"

#include "portbits.h"
#include "probeportsoptionwidget.h"
#include "undokeys.h"
#include "valuetree.h"

#include <model/limittexts.h>
#include <widgets/modaldialog.h>

#include <QDropEvent>
#include <QHideEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QRegExpValidator>
#include <QShowEvent>

namespace TARN {

namespace {

constexpr int PrefixLength = 2; // "0x"

} // namespace

InitialValueLine::InitialValueLine(int index, ProbePortsOptionWidget *page, QWidget *parent)
    : QLineEdit(parent)
    , m_index(index)
    , m_page(page)
{
    connect(this, &QLineEdit::editingFinished, this, &InitialValueLine::onTextChange);
    setContextMenuPolicy(Qt::NoContextMenu);
    setFixedHeight(ValueTree::RowHeight);
    m_validator = new QRegExpValidator(this);
    updateValidator();
    setText(valueText(QString()));
    keepText();
    installEventFilter(this);
}

int InitialValueLine::getWidth() const
{
    int width = 0;
    for (const QLabel *label : m_bitLabels)
        width += label->text().size();
    return width;
}

QString InitialValueLine::getStringValue() const
{
    QString bits;
    for (const QLabel *label : m_bitLabels)
        bits += label->text();
    return bits;
}

void InitialValueLine::updateValidatorForWidth(int width)
{
    const QString shown = displayText();
    m_validator->setRegExp(QRegExp(QStringLiteral("[A-F0-9]")));
    setInputMask(QString());
    // The two leading positions hold the prefix, whose 'x' the upper-casing mark must not reach.
    setInputMask(QStringLiteral("NN>%1;0").arg(QString(valueDigits(width), QLatin1Char('H'))));
    setValidator(m_validator);
    setText(shown);
}

void InitialValueLine::onTextChange()
{
    // The box of a rejection takes the focus, which would reject the value again.
    if (m_inert || m_hidden || m_applying)
        return;
    if (const std::optional<QString> bits = enteredBits(displayText(), getWidth())) {
        dealOut(*bits);
    } else {
        const QPointer<InitialValueLine> self(this);
        m_applying = true;
        rejectValue();
        if (!self)
            return;
        m_applying = false;
    }
    setText(labelText());
    const bool differs = displayText() != m_applied;
    keepText();
    if (!differs)
        return;
    m_stored.clear(); // Also when the next edit leads back to the same text.
    if (m_page)
        m_page->finishValue();
}

QString InitialValueLine::value(Typing typing, const QString &stored) const
{
    const QString text = typing == Typing::Included ? displayText() : m_applied;
    return text == m_stored ? stored : text;
}

void InitialValueLine::keepText()
{
    m_applied = displayText();
    if (getWidth() != m_storedWidth)
        m_stored.clear();
}

void InitialValueLine::keepTyping()
{
    if (displayText() == m_applied)
        return;
    const int cursor = cursorPosition();
    setText(displayText()); // Forgets the single keys.
    setCursorPosition(cursor);
    keepText();
    m_stored.clear();
}

void InitialValueLine::showStored(const QString &stored)
{
    dealOut(storedBits(stored, getWidth()));
    setText(labelText());
    keepStored();
}

void InitialValueLine::keepStored()
{
    m_applied = displayText();
    m_stored = m_applied;
    m_storedWidth = getWidth();
}

bool InitialValueLine::agreesWithLabels() const
{
    return displayText() == labelText();
}

QString InitialValueLine::labelText() const
{
    return valueText(getStringValue());
}

void InitialValueLine::showBits(QLabel *label, const QString &bits)
{
    label->setText(bits);
    if (bits.size() > 1)
        label->setToolTip(bits); // Those of a wide bus are cut off on the label.
}

void InitialValueLine::dealOut(const QString &bits)
{
    int position = 0;
    for (QLabel *label : qAsConst(m_bitLabels)) {
        const int length = label->text().size();
        showBits(label, bits.mid(position, length));
        position += length;
    }
}

void InitialValueLine::rejectValue()
{
    const QString shown = displayText().mid(PrefixLength);
    const QPointer<InitialValueLine> self(this);
    Message message;
    message.icon = QMessageBox::Information;
    message.title = tr("Error");
    message.text = tr(LimitTexts::ValueTooWide).arg(shown, QString::number(m_index));
    showMessage(this, message);
    if (self)
        markPage();
}

void InitialValueLine::hideEvent(QHideEvent *event)
{
    // Comes before the loss of the focus. A minimised window keeps its lines as they are.
    m_hidden = !event->spontaneous();
    QLineEdit::hideEvent(event);
}

void InitialValueLine::showEvent(QShowEvent *event)
{
    m_hidden = false;
    QLineEdit::showEvent(event);
}

bool InitialValueLine::endangersPrefix(const QKeyEvent *event) const
{
    const int start = hasSelectedText() ? selectionStart() : cursorPosition();
    if (start < PrefixLength)
        return event->key() != Qt::Key_Left && event->key() != Qt::Key_Right;
    return start == PrefixLength && !hasSelectedText() && event->key() == Qt::Key_Backspace;
}

void InitialValueLine::keyPressEvent(QKeyEvent *event)
{
    if (endangersPrefix(event))
        return;
    // Each key that acts marks the page, whatever becomes of the text, and does so once: an input
    // method may end its composition at the key.
    markPage();
    m_keyActs = true;
    changeText([this, event] { QLineEdit::keyPressEvent(event); });
    m_keyActs = false;
    if (m_page && isUndoKey(event))
        m_page->finishUndo();
}

void InitialValueLine::mouseReleaseEvent(QMouseEvent *event)
{
    // The middle button pastes.
    if (changeText([this, event] { QLineEdit::mouseReleaseEvent(event); }))
        markPage();
}

void InitialValueLine::dropEvent(QDropEvent *event)
{
    if (!changeText([this, event] { QLineEdit::dropEvent(event); })) {
        event->setDropAction(Qt::IgnoreAction); // Nothing was taken: the source keeps its text.
        event->ignore();
        return;
    }
    markPage();
    // The text is applied when the line loses the focus, so it has to get the focus first.
    QMetaObject::invokeMethod(
        this, [this] { setFocus(Qt::MouseFocusReason); }, Qt::QueuedConnection);
}

void InitialValueLine::inputMethodEvent(QInputMethodEvent *event)
{
    if (changeText([this, event] { QLineEdit::inputMethodEvent(event); }) && !m_keyActs)
        markPage();
}

template <typename Change>
bool InitialValueLine::changeText(const Change &change)
{
    const QString before = displayText();
    const int cursor = cursorPosition();
    int anchor = cursor; // The other end of the selection.
    if (hasSelectedText())
        anchor = selectionStart() == cursor ? selectionEnd() : selectionStart();
    change();
    if (displayText().leftRef(PrefixLength) == before.leftRef(PrefixLength))
        return displayText() != before;
    setText(before);
    setSelection(anchor, cursor - anchor);
    return false;
}

void InitialValueLine::markPage()
{
    if (m_page)
        m_page->spendModified();
}

bool InitialValueLine::outlivesLossOfFocus()
{
    const QPointer<InitialValueLine> self(this);
    // A window that closes takes the focus away before its widgets learn that they are hidden.
    const bool windowCloses = isVisible() && window()->isHidden();
    if (!windowCloses)
        onTextChange();
    return self;
}

bool InitialValueLine::decidesUndoKey(QEvent *event) const
{
    return event->type() == QEvent::ShortcutOverride &&
           !endangersPrefix(static_cast<QKeyEvent *>(event)) && decideUndoKey(this, event);
}

bool InitialValueLine::event(QEvent *event)
{
    if (event->type() == QEvent::FocusOut && !outlivesLossOfFocus())
        return true;
    if (decidesUndoKey(event))
        return true;
    // Past QLineEdit on purpose: other shortcuts of the window go before typing here, and no text
    // is dragged out of the line.
    return QWidget::event(event); // NOLINT(bugprone-parent-virtual-call)
}

bool InitialValueLine::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == this && event->type() == QEvent::FocusOut && !outlivesLossOfFocus())
        return true;
    return QObject::eventFilter(watched, event);
}

} // namespace TARN
