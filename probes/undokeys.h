// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QEvent;
class QKeyEvent;
class QLineEdit;

namespace TARN {

/// Answers @p event if it asks who gets a key of undo or redo: @p line, as long as it has typing to
/// undo or redo, or else the shortcuts of the window. Accepts it for the line. Returns whether it
/// asked that.
bool decideUndoKey(const QLineEdit *line, QEvent *event);

/// Whether the key of @p event means undo or redo.
bool isUndoKey(const QKeyEvent *event);

} // namespace TARN
