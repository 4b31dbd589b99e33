// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMessageBox>
#include <QString>

class QDialog;
class QWidget;

namespace TARN {

/// Runs @p dialog, made with new, modally and deletes it. The dialog may go away with its parent
/// while it is open; the result is then QDialog::Rejected, and the caller has to check which of its
/// own objects are left.
int execAndDelete(QDialog *dialog);

/// What a message box shows.
struct Message
{
    QMessageBox::Icon icon = QMessageBox::Critical;
    QString title;
    QString text; ///< Shown as it is, never as markup: it may hold names of files and nets.
    QString detailedText{};
    QMessageBox::StandardButtons buttons = QMessageBox::Ok;
    QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
    QMessageBox::StandardButton escapeButton = QMessageBox::NoButton;
};

/// Shows @p message modally and returns the button of the answer. Unlike the functions of
/// QMessageBox it survives the death of @p parent, and then returns QMessageBox::NoButton.
QMessageBox::StandardButton showMessage(QWidget *parent, const Message &message);

} // namespace TARN
