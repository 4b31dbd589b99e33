// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "reloadbanner.h"

#include "ui_reloadbanner.h"

#include <QDir>

namespace TARN {

ReloadBanner::ReloadBanner(CheckType type, const QString &filePath, QWidget *parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::ReloadBanner>())
{
    ui->setupUi(this);
    // A path may look like markup.
    ui->labelFile->setTextFormat(Qt::PlainText);
    if (type == Changed)
        initChanged(QDir::toNativeSeparators(filePath));
    else
        initRemoved(QDir::toNativeSeparators(filePath));
}

ReloadBanner::~ReloadBanner() = default;

void ReloadBanner::setText(const QString &text)
{
    ui->labelFile->setText(text);
}

void ReloadBanner::initChanged(const QString &nativePath)
{
    ui->btnA->setText(tr("Reload"));
    ui->btnB->setText(tr("Cancel"));
    connect(ui->btnA, &QPushButton::clicked, this, &ReloadBanner::reload);
    connect(ui->btnB, &QPushButton::clicked, this, &ReloadBanner::cancel);
    setText(tr("The file '%1' changed on disk.\nDo you want to reload?").arg(nativePath));
}

void ReloadBanner::initRemoved(const QString &nativePath)
{
    ui->btnA->setText(tr("Keep It"));
    ui->btnB->setText(tr("Close"));
    connect(ui->btnA, &QPushButton::clicked, this, &ReloadBanner::keepIt);
    connect(ui->btnB, &QPushButton::clicked, this, &ReloadBanner::closeIt);
    setText(tr("The file '%1' has been removed on disk.\nDo you still want to keep it?")
                .arg(nativePath));
}

} // namespace TARN
