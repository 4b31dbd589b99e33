// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QSize>

class QDialog;

namespace TARN {

/// Opens a dialog with the size that the user gave the last one of its kind.
///
/// Only a size that the user changes is remembered: without that, every dialog opens with the size
/// of its form. A maximised dialog counts with the size that it had before.
class SizeMemory final : public QObject
{
public:
    /// Resizes @p dialog, which becomes the owner, to @p size unless that is invalid. @p size must
    /// outlive the dialog and gets its size when it is closed.
    SizeMemory(QDialog *dialog, QSize *size);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QDialog *m_dialog;
    QSize *m_size;
    bool m_resizedByUser = false;
};

} // namespace TARN
