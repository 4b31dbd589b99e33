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
    const bool undo = key->matches(QKeySequence::Undo);
    if (!undo && !key->matches(QKeySequence::Redo))
        return false;
    event->setAccepted(undo ? line->isUndoAvailable() : line->isRedoAvailable());
    return true;
}

} // namespace TARN
