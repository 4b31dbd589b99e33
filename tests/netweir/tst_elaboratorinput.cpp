// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "scanneddesign.h"

#include <netweir/internal/tool/workfolder.h>
#include <netweir/internal/verilator/elaboratorinput.h>

#include <support/files.h>
#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;
using TarnTest::ScannedDesign;

namespace {

ElaboratorInput inputOf(const ScannedDesign &design)
{
    std::vector<PartRoot> roots(1);
    roots.front().unit = QString::fromUtf8(design.scan.moduleScan().units.first().name);
    roots.front().isTop = true;
    static const ForeignUnits none;
    return ElaboratorInput(design.sources, design.text, design.scan, none,
                           ElaborationRoots(roots, design.scan, false));
}

/// The files among the arguments, behind the last option that all designs share.
QStringList filesOf(const ElaboratorInput &input)
{
    const QStringList arguments = input.arguments();
    return arguments.mid(arguments.indexOf("+1800-2017ext+sv") + 1);
}

} // namespace

Q_DECLARE_METATYPE(QVector<ScannedDesign::File>)

class TestElaboratorInput : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void namesFilesThatItWrites_data();
    void namesFilesThatItWrites();
    void wrapsATopThatInstantiatesItself();
    void learns_data();
    void learns();
    void learnsThatDelaysMatter();
    void leavesOutWhatCannotBeRead();
    void saysThatAFileCannotBeWritten_data();
    void saysThatAFileCannotBeWritten();
};

void TestElaboratorInput::namesFilesThatItWrites_data()
{
    using File = ScannedDesign::File;
    QTest::addColumn<QVector<File>>("files");
    QTest::addColumn<QString>("arguments");
    QTest::newRow("in their order")
        << QVector<File>({{"b.v", "module b; endmodule"}, {"a.sv", "module a; b u(); endmodule"}})
        << "text0.v text1.sv";
    QTest::newRow("package of a later file")
        << QVector<File>(
               {{"a.sv", "module a; import p::*; endmodule"}, {"p.sv", "package p; endpackage"}})
        << "text1.sv text0.sv";
    QTest::newRow("library") << QVector<File>({{"a.v", "module a; b u(); endmodule"},
                                               {"lib/b.v", "module b; endmodule"}})
                             << "text0.v -v text000001.v";
    QTest::newRow("unknown module")
        << QVector<File>({{"a.v", "module a; b u(); endmodule"}}) << "text0.v stubs.sv";
    QTest::newRow("top of itself")
        << QVector<File>({{"a.v", "module a; generate if (0) a u(); endgenerate endmodule"}})
        << "text0.v wrapper.v";
}

void TestElaboratorInput::namesFilesThatItWrites()
{
    QFETCH(QVector<ScannedDesign::File>, files);
    QFETCH(QString, arguments);
    const ScannedDesign design(files);
    const ElaboratorInput input = inputOf(design);
    QCOMPARE(filesOf(input).join(' '), arguments);

    const WorkFolder folder;
    QString error;
    QVERIFY2(input.write(folder, &error), qPrintable(error));
    QStringList written = filesOf(input);
    written.removeAll("-v");
    written.sort();
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), written);
}

void TestElaboratorInput::wrapsATopThatInstantiatesItself()
{
    const ScannedDesign design(
        QByteArray("module a; generate if (0) a u(); endgenerate endmodule"));
    const ElaboratorInput input = inputOf(design);
    const WorkFolder folder;
    QString error;
    QVERIFY(input.write(folder, &error));
    QCOMPARE(TarnTest::readFile(folder.path("wrapper.v")),
             QByteArray("module netweir_top;\n\\a r0 ();\nendmodule\n"));
    QVERIFY(input.arguments().contains("netweir_top"));
    QVERIFY(input.readOptions().rootsAreWrapped);
}

void TestElaboratorInput::learns_data()
{
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QByteArray>("stub"); // Null: nothing is learnt.
    QTest::newRow("pin") << QByteArray("%Error: text0.v:2:3: Pin not found: 'p'\n")
                         << QByteArray("input [8191:0] \\p ");
    QTest::newRow("parameter") << QByteArray("%Error: text0.v:2:3: Parameter pin not found: 'P'\n")
                               << QByteArray("parameter \\P = 0");
    QTest::newRow("pin of a known module")
        << QByteArray("%Error: text0.v:3:3: Pin not found: 'p'\n") << QByteArray();
    QTest::newRow("another error")
        << QByteArray("%Error: text0.v:2:3: syntax error\n") << QByteArray();
}

void TestElaboratorInput::learns()
{
    QFETCH(QByteArray, output);
    QFETCH(QByteArray, stub);
    const ScannedDesign design(
        QByteArray("module a;\nunknown u();\nb v(); endmodule\nmodule b; endmodule"));
    ElaboratorInput input = inputOf(design);
    QCOMPARE(input.learn(parseToolOutput(output)), !stub.isNull());
    QVERIFY2(input.stubs().text().contains(stub), input.stubs().text().constData());
    QVERIFY(!input.learn(parseToolOutput(output))); // Nothing new.
}

void TestElaboratorInput::learnsThatDelaysMatter()
{
    const ScannedDesign design(QByteArray("module a; initial #1; endmodule"));
    ElaboratorInput input = inputOf(design);
    QVERIFY(input.arguments().contains("--no-timing"));
    const auto messages = parseToolOutput("%Error-NOTIMING: text0.v:1:3: no timing\n");
    QVERIFY(input.learn(messages));
    QVERIFY(input.arguments().contains("--timing"));
    QVERIFY(!input.learn(messages));
}

/// An omitted module becomes an unknown module.
void TestElaboratorInput::leavesOutWhatCannotBeRead()
{
    const ScannedDesign design(QByteArray("module a; b u(); endmodule\n"
                                          "module b;\nwire w;\nendmodule"));
    ElaboratorInput input = inputOf(design);
    QVERIFY(input.stubs().isEmpty());
    const auto messages = parseToolOutput("%Error-UNSUPPORTED: text0.v:3:1: Unsupported: x\n");
    QCOMPARE(input.leaveOut(messages),
             QStringList("WARNING: left out: /src/a.v:2: module b: Unsupported: x"));
    QCOMPARE(input.readOptions().unknownModules, QSet<QString>({"b"}));
    QCOMPARE(filesOf(input), QStringList({"text0.v", "stubs.sv"}));
    QCOMPARE(input.leaveOut(messages), QStringList());
}

void TestElaboratorInput::saysThatAFileCannotBeWritten_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"text0.v", "wrapper.v", "stubs.sv"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

/// Each file matters: without it, the elaborator would report another cause.
void TestElaboratorInput::saysThatAFileCannotBeWritten()
{
    QFETCH(QString, name);
    const ScannedDesign design(
        QByteArray("module a; b v(); generate if (0) a u(); endgenerate endmodule"));
    const ElaboratorInput input = inputOf(design);
    const WorkFolder folder;
    QVERIFY(QDir(folder.path()).mkpath(name));
    QString error;
    QVERIFY(!input.write(folder, &error));
    QVERIFY2(error.startsWith("A file in the temporary folder in "), qPrintable(error));
}

TARN_TEST_MAIN(TestElaboratorInput)
#include "tst_elaboratorinput.moc"
