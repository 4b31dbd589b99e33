// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "typing.h"

#include <QLineEdit>
#include <QList>
#include <QPointer>
#include <QString>

class QLabel;
class QRegExpValidator;

namespace TARN {

class ProbePortsOptionWidget;

/// Line editor for the initial value of one Probe Out port: "0x" and upper-case hexadecimal digits.
///
/// Keeps the value and the bit labels beside the port's signals consistent: the labels hold the
/// value's bits, most significant first, and so define the width. The labels belong to the tree
/// that shows them, which calls clearBitLabels() before it deletes one. What the line shows is its
/// displayText(): text() leaves out the characters that the input mask fills in.
///
/// Every change of the text by the user marks the page, be it typed, pasted, dropped or composed by
/// an input method; a change that reaches into the prefix is undone. setText() marks nothing.
///
/// A line that is hidden with its page, or disabled, deleted or rebuilt by it, loses the focus.
/// Then it neither applies its text nor shows boxes. It notices by itself that it is hidden; in the
/// other cases the page makes it inert.
class InitialValueLine final : public QLineEdit
{
    Q_OBJECT

public:
    /// @p page is told of edits; it may go away first.
    InitialValueLine(int index, ProbePortsOptionWidget *page, QWidget *parent = nullptr);

    /// Number of the port, for messages.
    int index() const { return m_index; }
    void setIndex(int index) { m_index = index; }

    /// Makes room for so many labels, which a list that grows would have twice.
    void reserveBitLabels(int count) { m_bitLabels.reserve(count); }
    void addBitLabel(QLabel *label) { m_bitLabels.append(label); }
    void clearBitLabels() { m_bitLabels.clear(); }

    /// Writes @p bits on @p label, which may be a bit label of any line.
    static void showBits(QLabel *label, const QString &bits);

    /// Number of bits on the labels.
    int getWidth() const;
    /// The bits on the labels, in order.
    QString getStringValue() const;

    /// Limits the input to the digits that @p width bits need, at least one.
    void updateValidatorForWidth(int width);
    void updateValidator() { updateValidatorForWidth(getWidth()); }

    /// The initial value of the port. Without a change by the user it is @p stored, the value in
    /// the core, though the line shows it fitted to the width; else it is the text.
    QString value(Typing typing, const QString &stored) const;
    /// From now on the shown text is the applied one.
    void keepText();
    /// The same for typed text, which the line itself does not undo any more.
    void keepTyping();
    /// Shows @p stored, the value in the core, as far as it fits the labels.
    void showStored(const QString &stored);
    /// From now on the shown text is the applied one, and stands for the value in the core until
    /// the user edits it or the width changes.
    void keepStored();
    /// Whether the labels show the bits of the text.
    bool agreesWithLabels() const;

    /// An inert line keeps its text and its labels as they are.
    void setInert(bool inert) { m_inert = inert; }

    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

public Q_SLOTS:
    /// Deals the shown value out to the bit labels, or rejects it when it needs more bits. Tells
    /// the page when the value is another one afterwards.
    void onTextChange();

protected:
    void dropEvent(QDropEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    /// Applies the text. False when the line was deleted while a box about it was open.
    bool outlivesLossOfFocus();
    bool endangersPrefix(const QKeyEvent *event) const;
    /// A key that the line ignores is left to the window, whose undo then takes back the typing
    /// here.
    bool decidesUndoKey(QEvent *event) const;
    /// Runs @p change, made by the user, and undoes it when it reached into the prefix. Returns
    /// whether the line shows another text afterwards.
    template <typename Change>
    bool changeText(const Change &change);
    void markPage();
    /// The text for the bits on the labels.
    QString labelText() const;
    void dealOut(const QString &bits);
    void rejectValue();

    int m_index;
    QPointer<ProbePortsOptionWidget> m_page;
    QRegExpValidator *m_validator;
    QList<QLabel *> m_bitLabels;
    QString m_applied; ///< The text without what is typed and not applied yet.
    QString m_stored;  ///< The text that stands for the value in the core, if any.
    int m_storedWidth = 0;
    bool m_inert = false;
    bool m_hidden = false;
    bool m_applying = false;
    bool m_keyActs = false;
};

} // namespace TARN
