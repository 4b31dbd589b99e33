// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "exampleproject.h"

#include <model/tarnconfig.h>
#include <model/tarncore.h>
#include <support/files.h>
#include <support/testcase.h>
#include <te/teconstants.h>

#include <QApplication>
#include <QDirIterator>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace TarnTest;

namespace {

/// The cores of an example's configuration file, deleted at the end of the scope.
class Cores
{
public:
    explicit Cores(const QString &path)
        : m_cores(TARN::readTARNConfigFromXml(path, &m_ok, &m_error))
    {
    }
    ~Cores() { qDeleteAll(m_cores); }

    Cores(const Cores &) = delete;
    Cores &operator=(const Cores &) = delete;

    bool ok() const { return m_ok; }
    const QString &error() const { return m_error; }
    const QList<TARN::TarnCore *> &list() const { return m_cores; }

private:
    bool m_ok = false;
    QString m_error;
    QList<TARN::TarnCore *> m_cores;
};

} // namespace

/// Projects and configuration files of the bundled examples, as files.
class TestExampleFiles : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyFolderIsAnExample();
    void projectIsComplete_data() { addExamples(); }
    void projectIsComplete();
    void projectFileIsWhatTheWorkbenchWrites_data() { addExamples(); }
    void projectFileIsWhatTheWorkbenchWrites();
    void configurationFileIsWhatTheWriterWrites_data() { addExamples(); }
    void configurationFileIsWhatTheWriterWrites();
    void configurationShowsEveryKindOfSetting_data() { addExamples(); }
    void configurationShowsEveryKindOfSetting();
    void everySourceIsListed_data() { addExamples(); }
    void everySourceIsListed();

private:
    static void addExamples();
};

void TestExampleFiles::addExamples()
{
    QTest::addColumn<QString>("name");
    for (const QString &name : exampleNames())
        QTest::newRow(qPrintable(name)) << name;
}

void TestExampleFiles::everyFolderIsAnExample()
{
    const QStringList folders = QDir(QStringLiteral(TARN_EXAMPLES_DIR))
                                    .entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    QCOMPARE(folders, exampleNames());
}

void TestExampleFiles::projectIsComplete()
{
    QFETCH(QString, name);
    const TE::Project project = exampleProject(name);
    QCOMPARE(project.name, name);
    QVERIFY(!project.options.value(TE::OPT::TOPMODULE).toString().isEmpty());
    QCOMPARE(project.options.value(TE::OPT::INCLUDEPATH).toStringList(), QStringList{"include"});
    QVERIFY(!project.macros.isEmpty());
    QCOMPARE(project.device.deviceName, QStringLiteral("KX70-FBG484-2"));

    int disabled = 0;
    bool listsConfiguration = false;
    for (const TE::ProjectSource &source : project.sources) {
        QVERIFY2(QFileInfo(source.path).isFile(), qPrintable(source.path));
        QCOMPARE(source.type, TE::fileTypeOf(source.path));
        disabled += source.enabled ? 0 : 1;
        listsConfiguration |= source.path == examplePath(name, name + ".tarn");
    }
    QCOMPARE(disabled, 1);
    QVERIFY(listsConfiguration);
}

void TestExampleFiles::projectFileIsWhatTheWorkbenchWrites()
{
    QFETCH(QString, name);
    const TE::Project original = exampleProject(name);
    QTemporaryDir folder;
    TE::Project moved = original;
    const auto move = [&](QString &path) {
        path = folder.filePath(QDir(original.workingDir).relativeFilePath(path));
    };
    move(moved.filePath);
    moved.workingDir = folder.path();
    for (TE::ProjectSource &source : moved.sources)
        move(source.path);

    QString error;
    QVERIFY2(TE::writeProject(moved, &error), qPrintable(error));
    QCOMPARE(readFile(moved.filePath), readFile(original.filePath));
}

void TestExampleFiles::configurationFileIsWhatTheWriterWrites()
{
    QFETCH(QString, name);
    const QString path = examplePath(name, name + ".tarn");
    QVERIFY(TARN::checkTARNFile(path));
    const Cores cores(path);
    QVERIFY2(cores.ok(), qPrintable(cores.error()));

    QTemporaryDir folder;
    const QString copy = folder.filePath("copy.tarn");
    QVERIFY(TARN::writeTARNConfigToXml(cores.list(), copy));
    QCOMPARE(readFile(copy), readFile(path));
}

void TestExampleFiles::configurationShowsEveryKindOfSetting()
{
    QFETCH(QString, name);
    const Cores cores(examplePath(name, name + ".tarn"));
    const QString top = exampleProject(name).options.value(TE::OPT::TOPMODULE).toString();
    QVERIFY(!cores.list().isEmpty());

    bool nets = false;
    bool buses = false;
    for (const TARN::TarnCore *core : cores.list()) {
        QCOMPARE(core->module, top);
        QVERIFY(core->syncUserClock);
        QVERIFY(core->userClock.startsWith(top + '/'));
        QVERIFY(!core->getAvailableProbeIns().isEmpty());
        QVERIFY(!core->getAvailableProbeOuts().isEmpty());
        for (const TARN::ProbeOut *port : core->probeOuts)
            QVERIFY(port->initialValue.startsWith("0x"));
        for (const TARN::ProbeIn *port : core->probeIns) {
            for (const TARN::SignalItem &signal : port->signals) {
                nets |= signal.kind == TARN::SignalItem::Net && signal.members.isEmpty();
                buses |= signal.kind == TARN::SignalItem::Bus && !signal.members.isEmpty();
            }
        }
    }
    QVERIFY(nets && buses);
}

void TestExampleFiles::everySourceIsListed()
{
    QFETCH(QString, name);
    QStringList listed;
    for (const TE::ProjectSource &source : exampleProject(name).sources) {
        if (source.type != TE::TarnFile)
            listed.append(source.path);
    }
    QDirIterator files(examplePath(name, "rtl"), QDir::Files, QDirIterator::Subdirectories);
    QStringList found;
    while (files.hasNext())
        found.append(files.next());
    listed.sort();
    found.sort();
    QCOMPARE(listed, found);
}

TARN_TEST_MAIN(TestExampleFiles)
#include "tst_examplefiles.moc"
