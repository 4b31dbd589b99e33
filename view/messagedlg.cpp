// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "messagedlg.h"

#include "ui_messagedlg.h"

#include <QPushButton>

namespace TARN {

MessageDlg::MessageDlg(QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::MessageDlg>())
{
    ui->setupUi(this);
    connect(ui->buttonBox->button(QDialogButtonBox::Ok), &QPushButton::clicked, this,
            &QDialog::accept);
    // The dialog sees the text's events first and lets them all pass.
    ui->textEdit->viewport()->installEventFilter(this);
}

MessageDlg::~MessageDlg() = default;

void MessageDlg::setDetailMsg(const QStringList &messages)
{
    ui->textEdit->setPlainText(messages.join(QLatin1Char('\n')));
}

} // namespace TARN
