// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <QStringList>

#include <memory>

namespace TARN {

namespace Ui {
class MessageDlg;
}

/// Lists messages one below the other, unwrapped. The caller sets the title and runs the dialog.
class MessageDlg final : public QDialog
{
    Q_OBJECT

public:
    explicit MessageDlg(QWidget *parent = nullptr);
    ~MessageDlg() override;

    void setDetailMsg(const QStringList &messages);

private:
    std::unique_ptr<Ui::MessageDlg> ui;
};

} // namespace TARN
