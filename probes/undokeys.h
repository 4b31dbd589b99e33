// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QEvent;
class QKeyEvent;
class QLineEdit;

namespace TARN {

/// Decides whether @p line or a shortcut of the window gets the keys of undo and redo: the line as
/// long as it has typing to undo or redo. Returns whether @p event asks that; the answer is that it
/// is accepted, or not.
bool decideUndoKey(const QLineEdit *line, QEvent *event);

/// Whether the key of @p event means undo or redo.
bool isUndoKey(const QKeyEvent *event);

} // namespace TARN
