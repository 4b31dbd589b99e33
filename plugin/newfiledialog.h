// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>

#include <memory>

namespace TARN {

namespace Ui {
class NewFileDialog;
}

/// Asks for a name and a folder and creates an empty configuration file there. Owns its form.
class NewFileDialog final : public QDialog
{
    Q_OBJECT

public:
    /// @p path is the folder to suggest; empty for the user's home folder.
    NewFileDialog(const QString &path, QWidget *parent);
    ~NewFileDialog() override;

    /// Path of the file to create: folder, "/", name and ".tarn", without the white space at both
    /// ends. The extension is added even to a name that has it.
    QString filePath() const;

public Q_SLOTS:
    /// Creates the file and closes the dialog; on failure says why and keeps it open.
    void accept() override;
    void onBrowse();

private:
    bool createFile(const QString &target, QString *error) const;
    static bool writeEmptyConfig(const QString &target, QString *error);

    std::unique_ptr<Ui::NewFileDialog> ui;
};

} // namespace TARN
