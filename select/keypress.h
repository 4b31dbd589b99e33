// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QKeyEvent>

namespace TARN {

/// Whether @p event is a press of @p key, with any modifiers.
inline bool isPressOf(Qt::Key key, const QEvent *event)
{
    return event->type() == QEvent::KeyPress && static_cast<const QKeyEvent *>(event)->key() == key;
}

} // namespace TARN
