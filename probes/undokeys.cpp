// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "undokeys.h"

#include <QKeyEvent>
#include <QLineEdit>

namespace TARN {

bool decideUndoKey(const QLineEdit *line, QEvent *event)
{
    if (event->type() != QEvent::ShortcutOverride)
        return false;
    const auto *key = static_cast<QKeyEvent *>(event);
    if (!isUndoKey(key))
        return false;
    event->setAccepted(key->matches(QKeySequence::Undo) ? line->isUndoAvailable()
                                                        : line->isRedoAvailable());
    return true;
}

bool isUndoKey(const QKeyEvent *event)
{
    return event->matches(QKeySequence::Undo) || event->matches(QKeySequence::Redo);
}

} // namespace TARN
