// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/testcase.h>

#include <core/ifilewizardfactory.h>
#include <core/projectmanager.h>

#include <QTest>

class TestProjectManager : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void knowsTheOpenProject();
};

void TestProjectManager::knowsTheOpenProject()
{
    struct Project final : Core::IProject
    {
        void addFile(const QString &path) override { added.append(path); }
        QStringList added;
    };

    QCOMPARE(Core::ProjectManager::currentProject(), nullptr);
    Project project;
    Core::ProjectManager::setCurrentProject(&project);
    Core::ProjectManager::currentProject()->addFile(QStringLiteral("a.tarn"));
    QCOMPARE(project.added, QStringList("a.tarn"));
    Core::ProjectManager::setCurrentProject(nullptr);
    QCOMPARE(Core::ProjectManager::currentProject(), nullptr);
}

QTEST_GUILESS_MAIN(TestProjectManager)
#include "tst_projectmanager.moc"
