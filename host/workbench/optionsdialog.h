// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QSpinBox;

namespace TE {
class DesignManager;
}

namespace Workbench {

/// Edits the options of the project. Accepting the dialog passes the changed options to the design
/// manager, which raises the host's events.
class OptionsDialog : public QDialog
{
    Q_OBJECT

public:
    /// @p design is not owned.
    explicit OptionsDialog(TE::DesignManager *design, QWidget *parent = nullptr);

public Q_SLOTS:
    void accept() override;

private:
    void createForm();
    void load();

    TE::DesignManager *m_design;
    QPlainTextEdit *m_includePaths;
    QComboBox *m_standard;
    QComboBox *m_vhdlStandard;
    QComboBox *m_tool;
    QSpinBox *m_timeout;
    QPlainTextEdit *m_macros;
    QPlainTextEdit *m_libraryFiles;
    QPlainTextEdit *m_libraryFolders;
    QLineEdit *m_device;
    QLabel *m_problem;
};

} // namespace Workbench
