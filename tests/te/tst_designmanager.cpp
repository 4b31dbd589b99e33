// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <te/designmanager.h>

#include "eventlog.h"

#include <support/testcase.h>
#include <te/designinfo.h>
#include <te/flowmanager.h>
#include <te/taskengine.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

using namespace TE;

namespace {

Project sample()
{
    Project project;
    project.name = QStringLiteral("demo");
    project.workingDir = QStringLiteral("/w");
    project.sources = {{"/w/a.v", VerilogFile, true},  {"/w/b.sv", SystemVerilogFile, true},
                       {"/w/c.vhd", VhdlFile, true},   {"/w/off.v", VerilogFile, false},
                       {"/w/x.tarn", TarnFile, true},  {"/w/y.sdc", ConstraintFile, true},
                       {"/w/z.txt", UnknownFile, true}};
    return project;
}

} // namespace

class TestDesignManager : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void withoutProjectAnswersWithEmptyValues();
    void sourceInfoHoldsEnabledDesignSourcesInOrder();
    void vhdlFilesHaveALibrary();
    void sourceInfoHoldsOptions();
    void optionsHaveDefaults_data();
    void optionsHaveDefaults();
    void fileInfoTakesRelativePaths();
    void libraryFileIsAnEnabledDesignSource();
    void settingAProjectRaisesNoEvent();
    void changesRaiseEvents();
    void changesOfNothingRaiseNothing();
    void optionsRefuseWrongValues();
    void eventsComeAfterTheChange();
    void libraryFilesAreAddedAndRemoved();
    void libraryFoldersAreReadAnew();
    void removingManyFilesIsFast();
    void handlersMayChangeTheProject();
    void resultFileLiesInTheWorkingFolder();

private:
    DesignManager *design() { return TaskEngine::instance()->designManager(); }
};

void TestDesignManager::init()
{
    TestCase::init();
    design()->setProject(sample());
}

void TestDesignManager::withoutProjectAnswersWithEmptyValues()
{
    design()->closeProject();
    QVERIFY(!design()->hasProject());
    QCOMPARE(design()->getSourceFileInfo(), (QMap<QString, QVariant>()));
    QCOMPARE(design()->workingDir(), QString());
    QCOMPARE(design()->getFileInfo("/w/a.v").type, int(UnknownFile));
    QCOMPARE(TaskEngine::instance()->flowManager()->resultFile(RES_NETLIST), QString());
    TarnTest::EventLog log;
    QVERIFY(!design()->addFile("/w/new.v"));
    QVERIFY(!design()->setOptionValue(OPT::TOPMODULE, "top"));
    QVERIFY(!design()->setMacros({"A"}));
    QVERIFY(!design()->setLibraryFiles({"/w/l.v"}));
    QVERIFY(!design()->setDevice({"KX", "", "", ""}));
    QCOMPARE(log.take(), QStringList());
}

void TestDesignManager::sourceInfoHoldsEnabledDesignSourcesInOrder()
{
    QStringList files;
    for (const QVariant &entry : design()->getSourceFileInfo().value("Files").toList()) {
        const QVariantMap file = entry.toMap();
        QCOMPARE(file.size(), file.contains("Library") ? 3 : 2);
        files.append(file.value("Path").toString() + ' ' + file.value("Type").toString());
        if (file.contains("Library"))
            files.last() += ' ' + file.value("Library").toString();
    }
    QCOMPARE(files, QStringList({"/w/a.v 2", "/w/b.sv 3", "/w/c.vhd 4 work"}));
}

void TestDesignManager::vhdlFilesHaveALibrary()
{
    const auto library = [this] {
        return design()->getSourceFileInfo().value("Files").toList().at(2).toMap().value("Library");
    };
    TarnTest::EventLog log;
    QSignalSpy changed(design(), &DesignManager::projectChanged);
    QVERIFY(design()->setFileLibrary("c.vhd", "DSP_Cells"));
    QCOMPARE(library(), QVariant("dsp_cells"));
    QCOMPARE(log.take(), QStringList("TE.File.Modified file=/w/c.vhd"));
    QCOMPARE(changed.size(), 1);
    for (const char *refused : {"dsp_cells", "DSP_CELLS", "", "a b", "ieee"})
        QVERIFY2(!design()->setFileLibrary("c.vhd", refused), refused);
    QVERIFY(!design()->setFileLibrary("a.v", "cells"));
    QVERIFY(!design()->setFileLibrary("none.vhd", "cells"));
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(changed.size(), 1);

    QVERIFY(design()->setFileType("c.vhd", UnknownFile));
    QVERIFY(design()->setFileType("c.vhd", VhdlFile));
    QCOMPARE(library(), QVariant("work"));
}

void TestDesignManager::sourceInfoHoldsOptions()
{
    design()->setOptionValue(OPT::TOPMODULE, "main");
    design()->setOptionValue(OPT::INCLUDEPATH, QStringList({"inc/../h", "/abs", "."}));
    design()->setOptionValue(OPT::Verilog_Standard, "1800-2017");
    design()->setOptionValue(OPT::VHDL_Standard, "93");
    design()->setOptionValue(OPT::EXTRACTION_TIMEOUT, 5);
    design()->setMacros({"A", "B=1"});
    design()->setLibraryFiles({"lib.v"});
    Project project = design()->project();
    project.libraryFolders = QStringList("/cells");
    project.libraryExtensions = QStringList(".vlib");
    QCOMPARE(design()->getSourceFileInfo().value("LibraryExtensions").toStringList(),
             QStringList({".v", ".sv"}));
    design()->setProject(project);
    QMap<QString, QVariant> info = design()->getSourceFileInfo();
    info.remove("Files");
    const QMap<QString, QVariant> expected = {{"Top", "main"},
                                              {"IncludePaths", QStringList({"/w/h", "/abs", "/w"})},
                                              {"Macros", QStringList({"A", "B=1"})},
                                              {"LibraryFiles", QStringList("/w/lib.v")},
                                              {"LibraryFolders", QStringList("/cells")},
                                              {"LibraryExtensions", QStringList(".vlib")},
                                              {"Standard", "1800-2017"},
                                              {"VhdlStandard", "1076-1993"},
                                              {"Timeout", 5}};
    QCOMPARE(info, expected);
}

void TestDesignManager::optionsHaveDefaults_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("top") << "TopModule" << QVariant(QString());
    QTest::newRow("include") << "IncludePath" << QVariant(QStringList());
    QTest::newRow("tool") << "Synthesize_tool" << QVariant("OstraSynthesis");
    QTest::newRow("standard") << "Verilog_Standard" << QVariant("1364-2005");
    QTest::newRow("VHDL standard") << "VHDL_Standard" << QVariant("1076-2008");
    QTest::newRow("timeout") << "Extraction_Timeout" << QVariant(120);
    QTest::newRow("unknown") << "Colour" << QVariant();
}

void TestDesignManager::optionsHaveDefaults()
{
    QFETCH(QString, name);
    QTEST(design()->getOptionValue(name), "value");
}

void TestDesignManager::fileInfoTakesRelativePaths()
{
    QCOMPARE(design()->getFileInfo("b.sv").type, int(SystemVerilogFile));
    QVERIFY(design()->getFileInfo("sub/../b.sv").enabled);
    QCOMPARE(design()->getFileInfo("/w/off.v").type, int(VerilogFile));
    QVERIFY(!design()->getFileInfo("/w/off.v").enabled);
    QCOMPARE(design()->getFileInfo("/elsewhere/a.v").type, int(UnknownFile));
    QVERIFY(!design()->getFileInfo("/elsewhere/a.v").enabled);
}

void TestDesignManager::libraryFileIsAnEnabledDesignSource()
{
    design()->setLibraryFiles({"lib.sv", "cells.lib"});
    QCOMPARE(design()->getFileInfo("lib.sv").type, int(SystemVerilogFile));
    QCOMPARE(design()->getFileInfo("cells.lib").type, int(VerilogFile));
    QVERIFY(design()->getFileInfo("cells.lib").enabled);
}

void TestDesignManager::settingAProjectRaisesNoEvent()
{
    TarnTest::EventLog log;
    QSignalSpy changed(design(), &DesignManager::projectChanged);
    design()->setProject(sample());
    design()->closeProject();
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(changed.size(), 2);
}

void TestDesignManager::changesRaiseEvents()
{
    TarnTest::EventLog log;
    QSignalSpy changed(design(), &DesignManager::projectChanged);
    QVERIFY(design()->addFile("new.vhd"));
    QCOMPARE(log.take(), QStringList("TE.File.Add file=/w/new.vhd"));
    QCOMPARE(design()->getFileInfo("new.vhd").type, int(VhdlFile));
    QVERIFY(design()->addFile("odd.txt", SystemVerilogFile));
    QCOMPARE(log.take(), QStringList("TE.File.Add file=/w/odd.txt"));
    QVERIFY(design()->getFileInfo("odd.txt").enabled);
    QVERIFY(design()->removeFile("b.sv"));
    QCOMPARE(log.take(), QStringList("TE.File.Remove file=/w/b.sv type=3"));
    QVERIFY(design()->setFileEnabled("a.v", false));
    QCOMPARE(log.take(), QStringList("TE.File.Change.Enable file=/w/a.v type=2 enable=false"));
    QVERIFY(design()->setFileEnabled("a.v", true));
    QCOMPARE(log.take(), QStringList("TE.File.Change.Enable file=/w/a.v type=2 enable=true"));
    QVERIFY(design()->setFileType("odd.txt", ConstraintFile));
    QCOMPARE(log.take(), QStringList("TE.File.Change.Type file=/w/odd.txt type=1 previous=3"));
    for (const char *option : {"TopModule", "Extraction_Timeout", "IncludePath", "Synthesize_tool",
                               "Verilog_Standard"}) {
        const QVariantMap values = {{"TopModule", "t"},
                                    {"Extraction_Timeout", 9},
                                    {"IncludePath", QStringList("i")},
                                    {"Synthesize_tool", "Synplify"},
                                    {"Verilog_Standard", "1364-1995"}};
        QVERIFY(design()->setOptionValue(option, values.value(option)));
        QCOMPARE(design()->getOptionValue(option), values.value(option));
        QCOMPARE(log.take(), QStringList(QStringLiteral("TE.Option.Change option=") + option));
    }
    QVERIFY(design()->setMacros({"A=1"}));
    QCOMPARE(log.take(), QStringList({"TE.Option.Change option=Macros",
                                      "TE.Option.Change option=IncludePath"}));
    QCOMPARE(design()->getOptionValue(OPT::MACROS).toStringList(), QStringList("A=1"));
    // Views need not know the option.
    QVERIFY(design()->setOptionValue(OPT::VHDL_Standard, "vhdl-93"));
    QCOMPARE(design()->getOptionValue(OPT::VHDL_Standard), QVariant("1076-1993"));
    QCOMPARE(log.take(), QStringList({"TE.Option.Change option=VHDL_Standard",
                                      "TE.Option.Change option=IncludePath"}));
    QVERIFY(design()->setDevice({"KX", "P", "-1", "KX70"}));
    QCOMPARE(log.take(), QStringList("TE.Device.Change"));
    QCOMPARE(design()->project().device.deviceName, QStringLiteral("KX70"));
    QCOMPARE(changed.size(), 14);
}

void TestDesignManager::changesOfNothingRaiseNothing()
{
    TarnTest::EventLog log;
    QSignalSpy changed(design(), &DesignManager::projectChanged);
    QVERIFY(!design()->addFile("sub/../a.v"));
    QVERIFY(!design()->removeFile("none.v"));
    QVERIFY(!design()->removeFiles({}));
    QVERIFY(!design()->setFileEnabled("a.v", true));
    QVERIFY(!design()->setFileEnabled("none.v", true));
    QVERIFY(!design()->setFileType("a.v", VerilogFile));
    QVERIFY(!design()->setFileType("none.v", VerilogFile));
    QVERIFY(!design()->setOptionValue(OPT::TOPMODULE, QString()));
    QVERIFY(!design()->setOptionValue(OPT::Verilog_Standard, "1364-2005"));
    QVERIFY(!design()->setOptionValue(OPT::VHDL_Standard, "2008"));
    QVERIFY(!design()->setMacros({}));
    QVERIFY(!design()->setLibraryFiles({}));
    QVERIFY(!design()->setDevice({}));
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(changed.size(), 0);
}

void TestDesignManager::optionsRefuseWrongValues()
{
    TarnTest::EventLog log;
    QVERIFY(!design()->setOptionValue("Colour", "red"));
    QVERIFY(!design()->setOptionValue(OPT::Verilog_Standard, "1999"));
    QVERIFY(!design()->setOptionValue(OPT::VHDL_Standard, "1999"));
    QVERIFY(!design()->setOptionValue(OPT::EXTRACTION_TIMEOUT, 0));
    QVERIFY(!design()->setOptionValue(OPT::INCLUDEPATH, 3));
    QVERIFY(!design()->setMacros({"A", "no name"}));
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(design()->getOptionValue(OPT::EXTRACTION_TIMEOUT), QVariant(120));
}

void TestDesignManager::eventsComeAfterTheChange()
{
    TarnTest::EventLog log;
    QList<bool> known;
    log.onEvent = [&] { known.append(design()->getFileInfo("new.v").enabled); };
    design()->addFile("new.v");
    design()->setFileEnabled("new.v", false);
    design()->setFileEnabled("new.v", true);
    design()->removeFile("new.v");
    QCOMPARE(known, QList<bool>({true, false, true, false}));
}

void TestDesignManager::libraryFilesAreAddedAndRemoved()
{
    TarnTest::EventLog log;
    QVERIFY(design()->setLibraryFiles({"one.v", "two.sv"}));
    QCOMPARE(log.take(), QStringList({"TE.File.Add file=/w/one.v", "TE.File.Add file=/w/two.sv"}));
    QVERIFY(design()->setLibraryFiles({"three.v", "one.v"}));
    QCOMPARE(log.take(),
             QStringList({"TE.File.Remove file=/w/two.sv type=3", "TE.File.Add file=/w/three.v"}));
    QVERIFY(design()->setLibraryFiles({"one.v", "three.v"}));
    QCOMPARE(log.take(), QStringList("TE.File.Modified file=/w/one.v"));
    QVERIFY(!design()->setLibraryFiles({"one.v", "three.v"}));
    QVERIFY(design()->setLibraryFiles({}));
    QCOMPARE(log.take(), QStringList({"TE.File.Remove file=/w/one.v type=2",
                                      "TE.File.Remove file=/w/three.v type=2"}));
}

void TestDesignManager::libraryFoldersAreReadAnew()
{
    TarnTest::EventLog log;
    QVERIFY(!design()->getFileInfo("/w/cells/a.v").enabled);
    QVERIFY(design()->setLibraryFolders({"cells", "/more/cells"}));
    const QStringList events = {"TE.Option.Change option=LibraryFolders",
                                "TE.Option.Change option=IncludePath"};
    QCOMPARE(log.take(), events);
    QCOMPARE(design()->getOptionValue("LibraryFolders").toStringList(),
             QStringList({"/w/cells", "/more/cells"}));
    QVERIFY(!design()->setLibraryFolders({"/w/cells", "/more/../more/cells"}));
    QCOMPARE(log.take(), QStringList());

    // A file in a library folder is a design source, like a library file.
    QCOMPARE(design()->getFileInfo("cells/a.v").type, int(VerilogFile));
    QCOMPARE(design()->getFileInfo("/more/cells/a.sv").type, int(SystemVerilogFile));
    QVERIFY(design()->getFileInfo("cells/a.v").enabled);
    for (const char *none : {"cells/a.txt", "cells/sub/a.v", "cells.v", "more/cells/a.v"})
        QVERIFY2(!design()->getFileInfo(none).enabled, none);
    Project project = design()->project();
    project.libraryExtensions = QStringList{".vlib"};
    design()->setProject(project);
    QVERIFY(design()->getFileInfo("cells/a.vlib").enabled);
    QVERIFY(!design()->getFileInfo("cells/a.v").enabled);
    QVERIFY(design()->setLibraryFolders({}));
    QCOMPARE(log.take(), events);
}

void TestDesignManager::removingManyFilesIsFast()
{
    Project project = sample();
    QStringList half;
    for (int i = 0; i < 20000; ++i) {
        project.sources.append({QStringLiteral("/none/f%1.v").arg(i), VerilogFile, true});
        if (i % 2)
            half.append(project.sources.last().path);
    }
    QElapsedTimer timer;
    timer.start();
    design()->setProject(project);
    TarnTest::EventLog log;
    QSignalSpy changed(design(), &DesignManager::projectChanged);
    QVERIFY(design()->removeFiles(half));
    QCOMPARE(log.lines().size(), half.size());
    QCOMPARE(changed.size(), 1);
    QCOMPARE(design()->project().sources.size(), 10007);
    QVERIFY(design()->setFileEnabled("/none/f19998.v", false));
    QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
}

void TestDesignManager::handlersMayChangeTheProject()
{
    TarnTest::EventLog log;
    log.onEvent = [&] {
        log.onEvent = nullptr;
        design()->closeProject();
    };
    QVERIFY(design()->removeFiles({"a.v", "b.sv"}));
    QCOMPARE(log.take(), QStringList({"TE.File.Remove file=/w/a.v type=2",
                                      "TE.File.Remove file=/w/b.sv type=3"}));
    QVERIFY(!design()->hasProject());
}

void TestDesignManager::resultFileLiesInTheWorkingFolder()
{
    const FlowManager *flow = TaskEngine::instance()->flowManager();
    QCOMPARE(flow->resultFile("RES.netlist"), QStringLiteral("/w/demo.netlist"));
    QCOMPARE(flow->resultFile("RES.other"), QString());
}

TARN_TEST_MAIN(TestDesignManager)
#include "tst_designmanager.moc"
