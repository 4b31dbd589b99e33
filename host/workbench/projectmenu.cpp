// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "projectmenu.h"

#include "optionsdialog.h"
#include "projectdock.h"

#include <core/viewmanager.h>
#include <te/designmanager.h>
#include <te/teconstants.h>

#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPointer>
#include <QSet>

#include <algorithm>

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
    m_setLibrary =
        m_filesMenu->addAction(tr("Set &Library..."), this, &ProjectMenu::setLibraryOfSelection);
    m_filesMenu->addSeparator();
    m_filesMenu->addAction(tr("&Remove from Project"), this, &ProjectMenu::removeFiles);
}

void ProjectMenu::updateActions()
{
    for (QAction *action : qAsConst(m_projectActions))
        action->setEnabled(m_design->hasProject());
    const QStringList paths = m_dock->selectedFiles();
    m_filesMenu->setEnabled(!paths.isEmpty());
    m_setLibrary->setEnabled(std::any_of(paths.begin(), paths.end(), [this](const QString &path) {
        return m_design->getFileInfo(path).type == TE::VhdlFile;
    }));
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

/// Other files among the selected ones have no library.
void ProjectMenu::setLibraryOfSelection()
{
    const QStringList paths = m_dock->selectedFiles();
    const QSet<QString> selected(paths.begin(), paths.end());
    const QList<TE::ProjectSource> &sources = m_design->project().sources;
    const auto first =
        std::find_if(sources.begin(), sources.end(), [&selected](const TE::ProjectSource &source) {
            return source.type == TE::VhdlFile && selected.contains(source.path);
        });
    if (first == sources.end())
        return;
    const QPointer<ProjectMenu> self(this);
    const QString library = askLibrary(first->library);
    if (!self || library.isEmpty())
        return;
    for (const QString &path : paths)
        m_design->setFileLibrary(path, library);
}

/// The library that the user chooses among those of the project, or enters; null for none.
QString ProjectMenu::askLibrary(const QString &current)
{
    QStringList libraries = {QLatin1String(TE::DefaultVhdlLibrary)};
    for (const TE::ProjectSource &source : m_design->project().sources)
        libraries.append(source.library);
    libraries.removeDuplicates();
    bool ok = false;
    QString library = QInputDialog::getItem(parentWidget(), tr("VHDL Library"),
                                            tr("Library of the selected VHDL files:"), libraries,
                                            libraries.indexOf(current), true, &ok)
                          .trimmed();
    QString problem;
    if (!ok || TE::normalizeVhdlLibrary(&library, &problem))
        return ok ? library : QString();
    QMessageBox::critical(Core::ViewManager::dialogParent(), tr("Error"),
                          tr("The library \"%1\" %2.").arg(library, problem));
    return {};
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
