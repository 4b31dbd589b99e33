// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "newfiledialog.h"

#include "ui_newfiledialog.h"

#include <files/sizelimitguard.h>
#include <model/configwriter.h>
#include <sdk/core.h>

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>

#include <algorithm>

namespace TARN {

namespace {

/// The folder in the path of the new file: white space in front of the path does not count.
QString folderOf(const QString &typed)
{
    const auto isSpace = [](QChar c) { return c.isSpace(); };
    const QString path = typed + QLatin1Char('/');
    const auto begin = std::find_if_not(path.cbegin(), path.cend(), isSpace);
    return QDir::cleanPath(QString(begin, static_cast<int>(path.cend() - begin)));
}

} // namespace

NewFileDialog::NewFileDialog(const QString &path, QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::NewFileDialog>())
{
    ui->setupUi(this);
    ui->editCreateIn->setText(QDir::toNativeSeparators(path.isEmpty() ? QDir::homePath() : path));

    const bool hasProject = Core::ProjectManager::currentProject();
    ui->checkBoxAddToCurrent->setEnabled(hasProject);
    ui->checkBoxAddToCurrent->setChecked(hasProject);

    connect(ui->btnBrowse, &QPushButton::clicked, this, &NewFileDialog::onBrowse);
}

NewFileDialog::~NewFileDialog() = default;

QString NewFileDialog::filePath() const
{
    const QString path =
        ui->editCreateIn->text() + QLatin1Char('/') + ui->editName->text() + QLatin1String(".tarn");
    return path.trimmed();
}

void NewFileDialog::accept()
{
    QString error;
    const QString target = QDir::cleanPath(filePath());
    if (!createFile(target, &error)) {
        ui->labelInfo->setText(error);
        return;
    }
    auto *project = Core::ProjectManager::currentProject();
    if (project && ui->checkBoxAddToCurrent->isChecked())
        project->addFile(target);
    QDialog::accept();
}

void NewFileDialog::onBrowse()
{
    // On the heap and guarded: this dialog may be deleted meanwhile, and its children with it.
    QPointer<QFileDialog> browser(
        new QFileDialog(this, tr("Select Directory"), ui->editCreateIn->text()));
    browser->setFileMode(QFileDialog::Directory);
    browser->setOption(QFileDialog::ShowDirsOnly);
    const bool chosen = browser->exec() == QDialog::Accepted;
    if (!browser)
        return;
    if (chosen)
        ui->editCreateIn->setText(browser->selectedFiles().value(0));
    delete browser;
}

bool NewFileDialog::createFile(const QString &target, QString *error) const
{
    const QString typedFolder = ui->editCreateIn->text();
    const QString folder = folderOf(typedFolder);
    if (ui->editName->text().isEmpty())
        *error = tr("Please enter a name.");
    else if (typedFolder.isEmpty())
        *error = tr("Please enter a path.");
    else if (!QDir(folder).exists() && !QDir().mkpath(folder))
        *error = tr("Cannot make the path %1.").arg(typedFolder);
    else if (QFileInfo::exists(target))
        *error = tr("File %1 already exists.").arg(target);
    else
        return writeEmptyConfig(target, error);
    return false;
}

bool NewFileDialog::writeEmptyConfig(const QString &target, QString *error)
{
    const Files::SizeLimitGuard guard;
    // NewOnly: not even a file that appears just now is overwritten.
    QFile file(target);
    const bool opened = file.open(QIODevice::WriteOnly | QIODevice::NewOnly);
    if (opened && file.write(ConfigWriter({}).content()) >= 0 && file.flush())
        return true;
    *error = tr("Can not create file %1\n%2").arg(target, file.errorString());
    file.close();
    if (opened)
        QFile::remove(target); // The member function refuses after a failed write.
    return false;
}

} // namespace TARN
