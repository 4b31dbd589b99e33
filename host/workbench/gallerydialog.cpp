// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "gallerydialog.h"

#include <core/ifilewizardfactory.h>

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace Workbench {

GalleryDialog::GalleryDialog(const QList<Core::IFileWizardFactory *> &wizards, QWidget *parent)
    : QDialog(parent)
    , m_wizards(wizards)
    , m_list(new QListWidget(this))
    , m_description(new QLabel(this))
{
    setWindowTitle(tr("New File"));
    m_list->setObjectName(QStringLiteral("wizards"));
    m_description->setObjectName(QStringLiteral("description"));
    m_description->setWordWrap(true);
    auto *buttons =
        new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, Qt::Horizontal, this);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("Next..."));

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_list);
    layout->addWidget(m_description);
    layout->addWidget(buttons);
    resize(420, 300);

    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_list, &QListWidget::itemActivated, this, &QDialog::accept);
    connect(m_list, &QListWidget::currentRowChanged, this,
            [this] { m_description->setText(chosenWizard()->description()); });
    for (const Core::IFileWizardFactory *wizard : wizards)
        m_list->addItem(wizard->displayName());
    m_list->setCurrentRow(0);
}

Core::IFileWizardFactory *GalleryDialog::chosenWizard() const
{
    return m_wizards.at(qMax(0, m_list->currentRow()));
}

} // namespace Workbench
