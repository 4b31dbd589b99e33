// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core_global.h"

#include <QString>

namespace Core {

/// The project as far as plug-ins may change it.
class CORE_EXPORT IProject
{
public:
    virtual ~IProject();

    /// Adds the file at @p path to the project; its type follows from its extension.
    virtual void addFile(const QString &path) = 0;
};

/// Knows the open project; there is at most one.
class CORE_EXPORT ProjectManager
{
public:
    /// The open project, null when there is none. Not owned.
    static IProject *currentProject();

    /// For the application. The caller keeps @p project and resets it before deleting it.
    static void setCurrentProject(IProject *project);
};

} // namespace Core
