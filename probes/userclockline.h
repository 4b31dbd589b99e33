// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "typing.h"

#include <QLineEdit>
#include <QString>

namespace TARN {

/// Line editor for the name of the user clock.
///
/// Tells a change from a complete edit: typed text is applied by Return or by the loss of the
/// focus, text that the program sets at once. A line that is hidden with its page loses the focus
/// too, but applies nothing: the page may be on its way out.
class UserClockLine final : public QLineEdit
{
    Q_OBJECT

public:
    explicit UserClockLine(QWidget *parent = nullptr);

    QString text(Typing typing) const;
    using QLineEdit::text;

    /// Shows @p text as applied. Emits changed() when it is another one, but not applied().
    void setApplied(const QString &text);
    /// From now on the shown text is the applied one. Nothing of the typing can be undone any more.
    void keepText();

    bool event(QEvent *event) override;

Q_SIGNALS:
    /// The text is another one. Comes before applied().
    void changed();
    /// An edit is complete, and the text is another one than at the last time.
    void applied();
    /// The user undid typing, by a key or in the context menu. Comes after changed().
    void typingUndone();

protected:
    void dropEvent(QDropEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void onTextChanged();
    void onEditingFinished();
    void apply();

    QString m_applied;
    bool m_typed = false; ///< The change that is about to be told of was made by the user.
    bool m_hidden = false;
};

} // namespace TARN
