// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QToolButton>

namespace TARN {

/// Tool button that opens a dialog. It may be deleted while the dialog is open, after which its
/// base class would still write to it.
class DialogButton final : public QToolButton
{
public:
    using QToolButton::QToolButton;

protected:
    void mouseReleaseEvent(QMouseEvent *event) override
    {
        // The rest serves buttons with a menu.
        QAbstractButton::mouseReleaseEvent(event); // NOLINT(bugprone-parent-virtual-call)
    }
};

} // namespace TARN
