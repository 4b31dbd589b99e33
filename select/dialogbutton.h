// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QToolButton>

namespace TARN {

/// Tool button that opens a dialog, and may be deleted while the dialog is open: QToolButton would
/// write to it after that.
class DialogButton final : public QToolButton
{
public:
    using QToolButton::QToolButton;

protected:
    void mouseReleaseEvent(QMouseEvent *event) override
    {
        // What QToolButton adds serves buttons with a menu.
        QAbstractButton::mouseReleaseEvent(event); // NOLINT(bugprone-parent-virtual-call)
    }
};

} // namespace TARN
