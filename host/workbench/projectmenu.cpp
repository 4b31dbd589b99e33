// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "projectmenu.h"

#include "optionsdialog.h"
#include "projectdock.h"

#include <te/designmanager.h>
#include <te/teconstants.h>

#include <QFileDialog>
#include <QInputDialog>
#include <QPointer>

namespace Workbench {

ProjectMenu::ProjectMenu(TE::DesignManager *design, ProjectDock *dock, QWidget *parent)
    : QMenu(tr("&Project"), parent)
    , m_design(design)
    , m_dock(dock)
    , m_filesMenu(new QMenu(tr("&Selected Files"), this))
{
    createFilesMenu();
    m_projectActions.append(addAction(tr("&Add Files..."), this, &ProjectMenu::addFiles));
    addMenu(m_filesMenu);
    addSeparator();
    m_projectActions.append(addAction(tr("Set &Top Module..."), this, &ProjectMenu::setTop));
    m_projectActions.append(addAction(tr("&Options..."), this, &ProjectMenu::showOptions));

    connect(dock, &ProjectDock::selectionChanged, this, &ProjectMenu::updateActions);
    updateActions();
}

void ProjectMenu::createFilesMenu()
{
    m_filesMenu->addAction(tr("&Enable"), this, [this] { setEnabledForSelection(true); });
    m_filesMenu->addAction(tr("&Disable"), this, [this] { setEnabledForSelection(false); });
    QMenu *types = m_filesMenu->addMenu(tr("Set &Type"));
    const QStringList names = TE::fileTypeNames();
    for (int type = 0; type < names.size(); ++type)
        types->addAction(names.at(type), this, [this, type] { setTypeOfSelection(type); });
    m_filesMenu->addSeparator();
    m_filesMenu->addAction(tr("&Remove from Project"), this, &ProjectMenu::removeFiles);
}

void ProjectMenu::updateActions()
{
    for (QAction *action : qAsConst(m_projectActions))
        action->setEnabled(m_design->hasProject());
    m_filesMenu->setEnabled(!m_dock->selectedFiles().isEmpty());
}

void ProjectMenu::addFiles()
{
    const QPointer<ProjectMenu> self(this);
    const QStringList paths = QFileDialog::getOpenFileNames(
        parentWidget(), tr("Add Files"), m_design->workingDir(),
        tr("Design files (*.v *.vh *.sv *.svh *.vhd *.vhdl *.tarn *.sdc *.pdc);;All files (*)"));
    for (const QString &path : paths) {
        if (self)
            m_design->addFile(path);
    }
}

void ProjectMenu::removeFiles()
{
    m_design->removeFiles(m_dock->selectedFiles());
}

void ProjectMenu::setEnabledForSelection(bool enabled)
{
    const QStringList paths = m_dock->selectedFiles();
    for (const QString &path : paths)
        m_design->setFileEnabled(path, enabled);
}

void ProjectMenu::setTypeOfSelection(int type)
{
    const QStringList paths = m_dock->selectedFiles();
    for (const QString &path : paths)
        m_design->setFileType(path, type);
}

void ProjectMenu::setTop()
{
    const QPointer<ProjectMenu> self(this);
    bool ok = false;
    const QString top = QInputDialog::getText(
        parentWidget(), tr("Top Module"), tr("Top module (empty: found automatically):"),
        QLineEdit::Normal, m_design->getOptionValue(QLatin1String(TE::OPT::TOPMODULE)).toString(),
        &ok);
    if (self && ok)
        m_design->setOptionValue(QLatin1String(TE::OPT::TOPMODULE), top.trimmed());
}

void ProjectMenu::showOptions()
{
    const QPointer<OptionsDialog> dialog(new OptionsDialog(m_design, parentWidget()));
    dialog->exec();
    delete dialog;
}

} // namespace Workbench
