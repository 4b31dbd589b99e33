// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "unsavedbanner.h"

#include "ui_reloadbanner.h"

#include <QDir>
#include <QLocale>

namespace TARN {

namespace {

QString shown(const QDateTime &time)
{
    return QLocale().toString(time, QLocale::ShortFormat);
}

} // namespace

UnsavedBanner::UnsavedBanner(QWidget *parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::ReloadBanner>())
{
    ui->setupUi(this);
    setObjectName(QStringLiteral("TARN__UnsavedBanner"));
    // A path may look like markup.
    ui->labelFile->setTextFormat(Qt::PlainText);
}

UnsavedBanner::~UnsavedBanner() = default;

void UnsavedBanner::showFound(const QString &filePath, const QDateTime &time,
                              const QDateTime &fileTime)
{
    ui->btnA->setText(tr("Restore"));
    ui->btnB->setText(tr("Discard"));
    connect(ui->btnA, &QPushButton::clicked, this, &UnsavedBanner::restore);
    connect(ui->btnB, &QPushButton::clicked, this, &UnsavedBanner::discard);
    setText(fileTime > time
                ? tr("There are unsaved changes to the file '%1' from %2. The file itself is "
                     "newer.\nDo you want to restore them?")
                : tr("There are unsaved changes to the file '%1' from %2.\nDo you want to restore "
                     "them?"),
            filePath, shown(time));
}

void UnsavedBanner::showUnreadable(const QString &filePath, const QString &reason)
{
    ui->btnA->hide();
    ui->btnB->setText(tr("OK"));
    connect(ui->btnB, &QPushButton::clicked, this, &UnsavedBanner::dismissed);
    setText(tr("There are unsaved changes to the file '%1' that can not be read. They are "
               "kept.\n%2"),
            filePath, reason);
}

void UnsavedBanner::showNotKept(const QString &filePath, const QString &reason)
{
    ui->btnA->setText(tr("Keep It"));
    ui->btnB->setText(tr("Close"));
    connect(ui->btnA, &QPushButton::clicked, this, &UnsavedBanner::dismissed);
    connect(ui->btnB, &QPushButton::clicked, this, &UnsavedBanner::closeAnyway);
    setText(tr("The unsaved changes to the file '%1' can be kept nowhere.\n%2\nDo you still want "
               "to keep it open?"),
            filePath, reason);
}

/// The second placeholder is for @p detail. A path may hold what looks like a placeholder.
void UnsavedBanner::setText(const QString &text, const QString &filePath, const QString &detail)
{
    ui->labelFile->setText(text.arg(QDir::toNativeSeparators(filePath), detail));
}

} // namespace TARN
