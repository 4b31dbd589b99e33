// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "modaldialog.h"

#include <QPointer>

namespace TARN {

int execAndDelete(QDialog *dialog)
{
    const QPointer<QDialog> guard(dialog);
    const int result = dialog->exec();
    delete guard;
    return result;
}

QMessageBox::StandardButton showMessage(QWidget *parent, const Message &message)
{
    auto *box = new QMessageBox(message.icon, message.title, message.text, message.buttons, parent);
    box->setTextFormat(Qt::PlainText);
    box->setDetailedText(message.detailedText);
    box->setDefaultButton(message.defaultButton);
    box->setEscapeButton(message.escapeButton);
    // A message box returns the button; the button value of QDialog::Rejected is NoButton.
    return static_cast<QMessageBox::StandardButton>(execAndDelete(box));
}

} // namespace TARN
