// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

namespace Core {

class Project
{
public:
    void addFile(const QString &path) { files.append(path); }

    QStringList files;
};

class ProjectManager
{
public:
    static Project *currentProject();
};

} // namespace Core
