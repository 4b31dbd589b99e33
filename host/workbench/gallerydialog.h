// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <QList>

class QLabel;
class QListWidget;

namespace Core {
class IFileWizardFactory;
}

namespace Workbench {

/// Lets the user choose among the kinds of new files that plug-ins offer.
class GalleryDialog : public QDialog
{
    Q_OBJECT

public:
    /// @p wizards (not owned) must not be empty and must outlive the dialog.
    explicit GalleryDialog(const QList<Core::IFileWizardFactory *> &wizards,
                           QWidget *parent = nullptr);

    Core::IFileWizardFactory *chosenWizard() const;

private:
    QList<Core::IFileWizardFactory *> m_wizards;
    QListWidget *m_list;
    QLabel *m_description;
};

} // namespace Workbench
