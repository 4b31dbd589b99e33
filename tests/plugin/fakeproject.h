// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <core/projectmanager.h>

#include <QStringList>

/// The open project for as long as it lives; remembers the files that are added.
class FakeProject final : public Core::IProject
{
public:
    FakeProject() { Core::ProjectManager::setCurrentProject(this); }
    ~FakeProject() override { Core::ProjectManager::setCurrentProject(nullptr); }

    // Core::IProject
    void addFile(const QString &path) override { files.append(path); }

    QStringList files;
};
