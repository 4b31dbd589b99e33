// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <workbench/projectstore.h>

#include <support/files.h>
#include <support/waiting.h>
#include <support/windowtest.h>
#include <te/designmanager.h>
#include <te/teconstants.h>

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using TarnTest::ModalScript;
using TarnTest::readFile;
using TarnTest::runDueEvents;
using TarnTest::writeFile;
using Workbench::ProjectStore;

class TestProjectStore : public TarnTest::WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void changesAreSavedAtOnce();
    void manyChangesAreSavedTogether();
    void openingDoesNotWrite();
    void closingSavesWhatIsPending();
    void foreignChangeIsNotOverwrittenSilently();
    void failedSaveAsksOnce();
    void projectWithoutFileAsks_data();
    void projectWithoutFileAsks();
    void saveAsKeepsIncludeFolders();

private:
    void open();
    QString path(const QString &name) const { return m_dir->filePath(name); }
    QByteArray saved() const { return readFile(path("p.json")); }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<TE::DesignManager> m_design;
    std::unique_ptr<ProjectStore> m_store;
};

namespace {

const QByteArray Sample = R"({"version": 1, "sources": [{"file": "a.v"}],
                             "options": {"IncludePath": ["inc", "/abs"]}})";

ModalScript::Box saveQuestion(const QString &project)
{
    return {QMessageBox::Question, "Save Project",
            "Save the changes of the project \"" + project + "\"?",
            QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QString()};
}

} // namespace

void TestProjectStore::init()
{
    WindowTest::init();
    m_dir = std::make_unique<QTemporaryDir>();
    m_design = std::make_unique<TE::DesignManager>();
    m_store = std::make_unique<ProjectStore>(m_design.get());
    writeFile(path("p.json"), Sample);
}

void TestProjectStore::cleanup()
{
    m_store.reset();
    m_design.reset();
    m_dir.reset();
    WindowTest::cleanup();
}

void TestProjectStore::open()
{
    TE::Project project;
    QString error;
    QVERIFY2(TE::readProject(path("p.json"), &project, &error), qPrintable(error));
    m_store->setProject(project);
}

void TestProjectStore::changesAreSavedAtOnce()
{
    open();
    m_design->addFile("new.v");
    QVERIFY(m_store->isModified());
    QTRY_VERIFY(!m_store->isModified());
    QVERIFY(saved().contains("\"new.v\""));
    m_design->setOptionValue(TE::OPT::TOPMODULE, "main");
    QTRY_VERIFY(saved().contains("\"main\""));
}

void TestProjectStore::manyChangesAreSavedTogether()
{
    open();
    for (int i = 0; i < 200; ++i)
        m_design->addFile(QStringLiteral("f%1.v").arg(i));
    QCOMPARE(saved(), Sample);
    QTRY_VERIFY(saved().contains("\"f199.v\""));
}

void TestProjectStore::openingDoesNotWrite()
{
    open();
    runDueEvents();
    QCOMPARE(saved(), Sample);
    QVERIFY(!m_store->isModified());
    m_store->closeProject();
    runDueEvents();
    QCOMPARE(saved(), Sample);
    QVERIFY(!m_design->hasProject());
}

void TestProjectStore::closingSavesWhatIsPending()
{
    open();
    m_design->removeFile("a.v");
    QVERIFY(m_store->mayClose());
    QVERIFY(!saved().contains("a.v"));
}

void TestProjectStore::foreignChangeIsNotOverwrittenSilently()
{
    const ModalScript::Box question{QMessageBox::Question, "Project Changed",
                                    "The project file \"" + path("p.json") +
                                        "\" was changed by another program. Overwrite it?",
                                    QMessageBox::Yes | QMessageBox::No, QString()};
    open();
    writeFile(path("p.json"), Sample + "\n");
    script().expectBox(question, QMessageBox::No);
    m_design->addFile("new.v");
    QTRY_COMPARE(script().problems(), QString());
    QCOMPARE(saved(), Sample + "\n");
    QVERIFY(m_store->isModified());

    script().expectBox(question, QMessageBox::Yes);
    QVERIFY(m_store->mayClose());
    QVERIFY(saved().contains("\"new.v\""));
}

void TestProjectStore::failedSaveAsksOnce()
{
    open();
    // The folder is gone, so the file cannot be written.
    QVERIFY(QDir(m_dir->path()).removeRecursively());
    const ModalScript::Box failure{QMessageBox::Critical, "Error",
                                   "Cannot save the project " + path("p.json") +
                                       ": No such file or directory",
                                   QMessageBox::Ok, QString()};
    script().expectBox(failure);
    m_design->addFile("new.v");
    QTRY_COMPARE(script().problems(), QString());
    m_design->addFile("newer.v");
    runDueEvents();
    QVERIFY(m_store->isModified());

    script().expectBox(failure);
    script().expectBox(saveQuestion("p"), QMessageBox::Cancel);
    QVERIFY(!m_store->mayClose());

    QVERIFY(QDir().mkpath(m_dir->path()));
    QVERIFY(m_store->mayClose());
    QVERIFY(saved().contains("newer.v"));
}

void TestProjectStore::projectWithoutFileAsks_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("closes");
    QTest::addColumn<bool>("saves");
    QTest::newRow("save") << int(QMessageBox::Save) << true << true;
    QTest::newRow("discard") << int(QMessageBox::Discard) << true << false;
    QTest::newRow("cancel") << int(QMessageBox::Cancel) << false << false;
}

void TestProjectStore::projectWithoutFileAsks()
{
    QFETCH(int, answer);
    QFETCH(bool, saves);
    TE::Project project;
    project.name = QStringLiteral("demo");
    project.workingDir = m_dir->path();
    m_store->setProject(project);
    QVERIFY(m_store->mayClose());
    m_design->addFile("new.v");
    runDueEvents();
    QVERIFY(m_store->isModified());

    script().expectBox(saveQuestion("demo"), QMessageBox::StandardButton(answer));
    if (saves) {
        script().expectDialog("QFileDialog", "Save Project As",
                              [](QDialog *dialog) { QMetaObject::invokeMethod(dialog, "accept"); });
    }
    QTEST(m_store->mayClose(), "closes");
    QCOMPARE(QFileInfo::exists(path("demo.json")), saves);
    QCOMPARE(m_store->isModified(), !saves);
}

void TestProjectStore::saveAsKeepsIncludeFolders()
{
    open();
    QVERIFY(QDir().mkpath(path("other")));
    QVERIFY(m_store->saveAs(path("other/copy.json")));
    const TE::Project &project = m_design->project();
    QCOMPARE(project.name, QStringLiteral("copy"));
    QCOMPARE(project.workingDir, path("other"));
    QCOMPARE(project.options.value(TE::OPT::INCLUDEPATH).toStringList(),
             QStringList({path("inc"), "/abs"}));
    QCOMPARE(project.sources.first().path, path("a.v"));
    m_design->setOptionValue(TE::OPT::TOPMODULE, "main");
    QTRY_VERIFY(readFile(path("other/copy.json")).contains("\"main\""));
    QCOMPARE(saved(), Sample);
}

TARN_TEST_MAIN(TestProjectStore)
#include "tst_projectstore.moc"
