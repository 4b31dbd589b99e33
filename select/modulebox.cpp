// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "modulebox.h"

#include <QAbstractItemView>
#include <QScreen>
#include <QScrollBar>

namespace TARN {

void ModuleBox::showPopup()
{
    const int scrollBar = view()->verticalScrollBar()->sizeHint().width();
    const int needed = view()->sizeHintForColumn(0) + scrollBar + 2 * view()->frameWidth();
    const QMargins frame = view()->parentWidget()->contentsMargins();
    const int room = screen()->availableSize().width() - frame.left() - frame.right();
    view()->setMinimumWidth(qMin(needed, room));
    QComboBox::showPopup();
}

} // namespace TARN
