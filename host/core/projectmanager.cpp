// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "projectmanager.h"

namespace Core {

namespace {
IProject *openProject = nullptr;
}

IProject::~IProject() = default;

IProject *ProjectManager::currentProject()
{
    return openProject;
}

void ProjectManager::setCurrentProject(IProject *project)
{
    openProject = project;
}

} // namespace Core
