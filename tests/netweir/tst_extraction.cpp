// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designfixture.h"
#include "netlisttext.h"
#include "temporaryfolder.h"
#include "toolscript.h"

#include <netweir/internal/sources/designsources.h>

#include <support/testcase.h>

#include <QApplication>
#include <QProcess>
#include <QTest>

#include <unistd.h>

using namespace NETWEIR;
using TarnTest::DesignFixture;
using TarnTest::ToolScript;

class TestExtraction : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void readsADesign();
    void reportsTheSameTwice();
    void buildsOnlyWhatWasGiven();
    void findsTops_data();
    void findsTops();
    void reportsErrors_data();
    void reportsErrors();
    void warnsOfWhatDoesNotStopADesign_data();
    void warnsOfWhatDoesNotStopADesign();
    void saysWhyThereIsNoTop_data();
    void saysWhyThereIsNoTop();
    void refusesFilesTheToolCannotRead_data();
    void refusesFilesTheToolCannotRead();
    void readsUnknownModules_data();
    void readsUnknownModules();
    void readsUnknownModulesWithTypes();
    void asksForModulesOfInterfacesAndArrays();
    void learnsMissingPinsFromTheTool_data();
    void learnsMissingPinsFromTheTool();
    void takesSwitchesAndAliasesForDrivers_data();
    void takesSwitchesAndAliasesForDrivers();
    void ignoresDimensionsOutsideTheDesign();
    void seesTheJtagPrimitive_data();
    void seesTheJtagPrimitive();
    void takesRecursionThatEnds_data();
    void takesRecursionThatEnds();
    void refusesRecursionOfTheTopThroughOthers();
    void readsAnyPath_data();
    void readsAnyPath();
    void looksForIncludesBesideTheFileFirst();
    void readsIncludePathsInOrder();
    void carriesMacrosFromFileToFile();
    void readsMacrosOfTheProject();
    void readsAsSynthesisDoes();
    void definesTheMacroOfTheToolWhenNeeded_data();
    void definesTheMacroOfTheToolWhenNeeded();
    void readsLibraryFiles();
    void readsLibraryFilesInTheirOrder();
    void findsModulesInLibraryFolders();
    void findsPackagesInLibraryFolders();
    void saysWhatIsWrongInLibraryFolders();
    void readsEachFileInItsLanguage_data();
    void readsEachFileInItsLanguage();
    void readsDelays_data();
    void readsDelays();
    void timesOutAfterTwoMinutesByDefault();
    void neverMentionsItsFolder();

private:
    const TarnTest::TemporaryFolder m_folder;
};

void TestExtraction::cleanup()
{
    TestCase::cleanup();
    m_folder.verifyNothingIsLeft();
}

void TestExtraction::readsADesign()
{
    DesignFixture design;
    design.add(QStringLiteral("top.v"),
               "`include \"defs.vh\"\nmodule top(input clk, output [`W-1:0] q);\n"
               "sub u0(.c(clk), .q(q));\nendmodule\n");
    design.add(QStringLiteral("sub.sv"), "module sub(input logic c, output logic [`W-1:0] q);\n"
                                         "always_ff @(posedge c) q <= q + 1'b1;\nendmodule\n");
    TarnTest::writeFile(design.path(QStringLiteral("defs.vh")), "`define W 4\n");
    design.findModules();
    QCOMPARE(design.messages, QStringList());
    QCOMPARE(design.tops, QStringList(QStringLiteral("top")));
    QCOMPARE(design.modules, QStringList({QStringLiteral("top"), QStringLiteral("sub")}));
    QVERIFY(design.buildNetlist());
    QCOMPARE(design.netMessages, QStringList());
    QVERIFY(design.netlist->findNet(QStringLiteral("top/u0/q[3]")));
    QCOMPARE(debugLines().size(), 1);
    const QRegularExpression line(
        QStringLiteral("^netlist read: top top, 10 nets, 2 buses, 2 nodes, [0-9]+\\.[0-9]{2} s$"));
    QVERIFY2(line.match(debugLines().constFirst()).hasMatch(),
             qPrintable(debugLines().constFirst()));
}

void TestExtraction::reportsTheSameTwice()
{
    DesignFixture design;
    design.add(QStringLiteral("top.v"), "module top(input a); endmodule\n");
    QVERIFY(design.extract());
    // There is no new design, so the last one is built again.
    QVERIFY(design.buildNetlist());
    QVERIFY(design.netlist->findNet(QStringLiteral("top/a")));
    // A new extraction reads the changed source.
    TarnTest::writeFile(design.path(QStringLiteral("top.v")), "module top(input b); endmodule\n");
    QVERIFY(design.extract());
    QVERIFY(design.netlist->findNet(QStringLiteral("top/b")));
    QVERIFY(!design.netlist->findNet(QStringLiteral("top/a")));
}

void TestExtraction::buildsOnlyWhatWasGiven()
{
    DesignFixture none;
    none.findModules();
    const QString reason =
        QStringLiteral("WARNING: The design has no Verilog source. Add one, or enable it.");
    QCOMPARE(none.messages, QStringList(reason));
    QVERIFY(none.tops.isEmpty() && none.modules.isEmpty());
    QVERIFY(!none.buildNetlist());
    QCOMPARE(none.netMessages.size(), 2);
    QCOMPARE(none.netMessages[0], reason);
    QVERIFY(none.netMessages[1].startsWith(QLatin1String("ERROR")));
    QCOMPARE(debugLines(), none.messages + none.netMessages);

    DesignFixture two;
    two.add(QStringLiteral("a.v"), "module a; endmodule module b; endmodule\n");
    two.findModules();
    QVERIFY(!two.buildNetlist());
    QCOMPARE(two.netMessages.value(1),
             QStringLiteral("ERROR: The design has no single top module. Set the top module."));
}

void TestExtraction::findsTops_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("top");
    QTest::addColumn<QString>("tops");
    QTest::addColumn<QString>("modules");
    QTest::addColumn<bool>("built");
    const auto row = [](const char *name, const char *source, const char *top, const char *tops,
                        const char *modules, bool built) {
        QTest::newRow(name) << QByteArray(source) << QString::fromLatin1(top)
                            << QString::fromLatin1(tops) << QString::fromLatin1(modules) << built;
    };
    row("one", "module b; endmodule module a; b u(); endmodule", "", "a", "b a", true);
    row("three", "module c; endmodule module a; endmodule module b; endmodule", "", "c a b",
        "c a b", false);
    row("three and a choice", "module c; endmodule module a; endmodule module b; endmodule", "a",
        "a", "c a b", true);
    row("choice of a lower one", "module b; endmodule module a; b u(); endmodule", "b", "b", "b a",
        true);
    row("unknown choice", "module b; endmodule module a; b u(); endmodule", "x", "a", "b a", true);
    row("unknown choice of two", "module b; endmodule module a; endmodule", "x", "b a", "b a",
        false);
    row("choice in other letters", "module b; endmodule module a; endmodule", "A", "b a", "b a",
        false);
    row("itself",
        "module a #(parameter N = 2); generate if (N > 0) a #(N - 1) u(); endgenerate"
        " endmodule",
        "", "a", "a", true);
    row("untaken branch",
        "module b; endmodule module a; generate if (0) b u(); endgenerate endmodule", "", "a",
        "b a", true);
    row("without parentheses", "module b; endmodule module a; b u; endmodule", "", "a", "b a",
        true);
    row("comment", "module b; endmodule module a; /* b u(); */ endmodule", "", "b a", "b a", false);
    row("by a macro",
        "`define INST(m, n) m n ();\nmodule b; endmodule module a; `INST(b, u)"
        " endmodule",
        "", "a", "b a", true);
    row("compiled out", "module b; endmodule\n`ifdef X\nmodule a; b u(); endmodule\n`endif", "",
        "b", "b", true);
    row("no modules", "`define A\n", "", "", "", false);
    row("no modules and a choice", "`define A\n", "x", "", "", false);
}

void TestExtraction::findsTops()
{
    QFETCH(QByteArray, source);
    QFETCH(QString, top);
    QFETCH(QString, tops);
    QFETCH(QString, modules);
    QFETCH(bool, built);
    DesignFixture design;
    design.add(QStringLiteral("a.v"), source);
    design.set(TE::DesignInfo::Top, top);
    design.findModules();
    QCOMPARE(design.firstError(), QString());
    QCOMPARE(design.tops.join(QLatin1Char(' ')), tops);
    QCOMPARE(design.modules.join(QLatin1Char(' ')), modules);
    QCOMPARE(design.buildNetlist() != nullptr, built);
    if (built) {
        QCOMPARE(design.netlist->top()->instName(), tops);
        QCOMPARE(design.netlist->top()->moduleName(), tops);
    }
}

void TestExtraction::reportsErrors_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("error"); // Beginning.
    const auto row = [](const char *name, const char *source, const char *error) {
        QTest::newRow(name) << QByteArray(source) << QString::fromLatin1(error);
    };
    row("syntax", "module top;\nwire a\nendmodule\n", "ERROR: a.v:3:1: syntax error");
    row("syntax behind an include", "`include \"i.vh\"\nmodule top;\n  wire = ;\nendmodule\n",
        "ERROR: a.v:3:8: syntax error");
    row("syntax in an include", "`include \"bad.vh\"\nmodule top; endmodule\n",
        "ERROR: bad.vh:2:6: syntax error");
    row("no end", "module top;\nwire a;\n", "ERROR: a.v:2:7: syntax error, unexpected end of file");
    row("misspelt", "modul top;\nendmodule\n", "ERROR: a.v:1:1: syntax error");
    row("end too many with two tops", "module a; endmodule\nmodule b; endmodule\nendmodule\n",
        "ERROR: a.v:3:1: syntax error");
    row("missing include", "module top;\n`include \"none.vh\"\nendmodule\n",
        "ERROR: a.v:2:10: Cannot find the include file \"none.vh\". Add its folder to the include "
        "paths.");
    row("undefined macro", "module top;\nwire [`W:0] a;\nendmodule\n",
        "ERROR: a.v:2:7: The macro `W is not defined.");
    row("open condition", "`ifdef A\nmodule top; endmodule\n", "ERROR: a.v:4:1: `ifdef not");
    row("duplicate", "module top; endmodule\nmodule b; endmodule\n\nmodule top; endmodule\n",
        "ERROR: a.v:4: \"top\" is defined a second time; the first definition is in a.v:1. Rename "
        "or remove one of them.");
    row("unknown pin", "module top;\nsub u(.x(1'b0));\nendmodule\nmodule sub(input y); endmodule\n",
        "ERROR: a.v:2:8: Pin not found: 'x'");
    row("unknown pin of a primitive", "module top;\nKX_BUFG u(.I(1'b0), .Q());\nendmodule\n",
        "ERROR: a.v:2:22: Pin not found: 'Q'");
    row("recursion", "module a;\na u();\nendmodule\n",
        "ERROR: a.v:1: The instantiation never ends (a -> a). Break the circle or end it with a "
        "generate condition.");
    row("mutual recursion", "module a;\nb u();\nendmodule\nmodule b;\na u();\nendmodule\n",
        "ERROR: a.v:1: No top module: every module is instantiated by another one (a -> b -> a). "
        "Set the top module or break the circle.");
    row("recursion below the top",
        "module top; a u(); endmodule\nmodule a; b u(); endmodule\n"
        "module b; a u(); endmodule\n",
        "ERROR: a.v:2: The instantiation never ends (a -> b -> a).");
    row("recursion of several that ends",
        "module top; a u(); endmodule\nmodule a #(parameter N = 2); b #(N) u(); endmodule\n"
        "module b #(parameter N = 2); generate if (N > 0) a #(N - 1) v(); endgenerate endmodule\n",
        "ERROR: a.v:2: Recursion through several modules (a -> b -> a) cannot be read. Break the "
        "circle or make it one module that instantiates itself.");
    row("recursion of several with one of themselves",
        "module top; a u(); endmodule\nmodule a; generate if (0) a u(); if (0) b v(); endgenerate"
        " endmodule\nmodule b; generate if (0) a u(); endgenerate endmodule\n",
        "ERROR: a.v:2: Recursion through several modules (a -> b -> a) cannot be read.");
    row("two-dimensional array of instances",
        "module top;\nsub u[3:0](),\n  v[1:0][2]();\nendmodule\nmodule sub; endmodule\n",
        "ERROR: a.v:3: Arrays of instances of \"sub\" with several dimensions are not supported. "
        "Use one dimension, or generate loops.");
    row("two-dimensional array below",
        "module top; b u(); endmodule\nmodule b;\nsub u[3:0][1:0]();\nendmodule\n"
        "module sub; endmodule\n",
        "ERROR: a.v:3: Arrays of instances of \"sub\" with several dimensions");
    row("unknown interface", "module top(x_if p);\nendmodule\n", "ERROR: a.v:1:");
    row("range error", "module top;\nwire [a:0] b;\nendmodule\n", "ERROR: a.v:2:");
}

void TestExtraction::reportsErrors()
{
    QFETCH(QByteArray, source);
    QFETCH(QString, error);
    DesignFixture design;
    design.add(QStringLiteral("a.v"), source);
    TarnTest::writeFile(design.path(QStringLiteral("i.vh")), "\n\n\n");
    TarnTest::writeFile(design.path(QStringLiteral("bad.vh")), "\nwire = 1;\n");
    design.findModules();
    QVERIFY2(design.firstError().startsWith(error),
             qPrintable(design.messages.join(QLatin1Char('\n'))));
    for (const QString &message : qAsConst(design.messages))
        QVERIFY(!message.contains(QLatin1Char('\n')));
    // The other call reports the same, also on the debug stream.
    QVERIFY(!design.buildNetlist());
    QCOMPARE(design.netMessages, design.messages);
    QCOMPARE(debugLines(), design.messages);
}

void TestExtraction::warnsOfWhatDoesNotStopADesign_data()
{
    QTest::addColumn<QString>("what");
    QTest::addColumn<QString>("warning");
    QTest::newRow("empty file") << "empty"
                                << "WARNING: empty.v: The file is empty.";
    QTest::newRow("unknown top")
        << "top"
        << "WARNING: The design has no module \"x\". Candidates for the top module: top.";
    QTest::newRow("include folder") << "include"
                                    << "WARNING: none: The include folder does not exist.";
    QTest::newRow("macro") << "macro"
                           << "WARNING: a.v:3:13: Redefining existing define: 'A', with different "
                              "value: '2'";
}

void TestExtraction::warnsOfWhatDoesNotStopADesign()
{
    QFETCH(QString, what);
    QFETCH(QString, warning);
    DesignFixture design;
    design.add(QStringLiteral("a.v"), what == QLatin1String("macro")
                                          ? "`define A 1\n`define A 2\nmodule top; endmodule\n"
                                          : "module top; endmodule\n");
    if (what == QLatin1String("empty"))
        design.add(QStringLiteral("empty.v"), "");
    else if (what == QLatin1String("top"))
        design.set(TE::DesignInfo::Top, QStringLiteral("x"));
    else if (what == QLatin1String("include"))
        design.set(TE::DesignInfo::IncludePaths, QStringList(design.path(QStringLiteral("none"))));
    QVERIFY(design.extract());
    QCOMPARE(design.messages.size(), 1);
    QCOMPARE(debugLines().mid(0, 1), design.messages);
    QCOMPARE(debugLines().size(), 2); // The other line is about the netlist.
    QCOMPARE(design.messages[0].remove(design.path(QString()) + QLatin1Char('/')), warning);
}

void TestExtraction::saysWhyThereIsNoTop_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("top");
    QTest::addColumn<QStringList>("reasons");
    const auto row = [](const char *name, const char *source, const char *top,
                        const QStringList &reasons) {
        QTest::newRow(name) << QByteArray(source) << QString::fromLatin1(top) << reasons;
    };
    const QString noModule = QStringLiteral("WARNING: The sources define no module. Add the files "
                                            "that define the modules of the design.");
    const QString noTop = QStringLiteral("WARNING: No top module: every module is instantiated or "
                                         "bound. Set the top module.");
    row("no module", "`define A\n", "", {noModule});
    row("no module and a choice", "package p; endpackage\n", "x", {noModule});
    row("several", "module b; endmodule module a; endmodule", "",
        {QStringLiteral("WARNING: The design has several candidates for the top module: b, a.")});
    row("several and a choice", "module b; endmodule module a; endmodule", "x",
        {QStringLiteral("WARNING: The design has no module \"x\". Candidates for the top module: "
                        "b, a.")});
    row("all bound", "module b; endmodule bind b b u();\n", "", {noTop});
    row("instantiated by an interface", "module b; endmodule interface i; b u(); endinterface", "x",
        {QStringLiteral("WARNING: The design has no module \"x\"."), noTop});
}

/// Callers show only errors, so the debug stream says why there is no top.
void TestExtraction::saysWhyThereIsNoTop()
{
    QFETCH(QByteArray, source);
    QFETCH(QString, top);
    QFETCH(QStringList, reasons);
    DesignFixture design;
    design.add(QStringLiteral("a.sv"), source);
    design.set(TE::DesignInfo::Top, top);
    design.findModules();
    QVERIFY(design.tops.size() != 1);
    QCOMPARE(design.messages, reasons);
    QCOMPARE(debugLines(), reasons);
}

void TestExtraction::refusesFilesTheToolCannotRead_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("error");
    const auto row = [](const char *file, const char *error) {
        QTest::newRow(file) << QString::fromLatin1(file) << QString::fromLatin1(error);
    };
    row("missing.v", "ERROR: missing.v: The file does not exist.");
    row("folder.v", "ERROR: folder.v: This is a folder.");
    row("nul.v", "ERROR: nul.v: The file is not text: it contains NUL bytes.");
    row("utf16.v", "ERROR: utf16.v: The file is not text: it contains NUL bytes.");
    row("long.v", "ERROR: long.v:2: The line is longer than 1 MB.");
    row("includes.v", "ERROR: nul.vh: The file is not text: it contains NUL bytes.");
    row("nul.vhd", "ERROR: nul.vhd: The file is not text: it contains NUL bytes.");
    row("lib.VHDL", "ERROR: lib.VHDL: The file is not text: it contains NUL bytes.");
    row("fifo.v", "ERROR: fifo.v: This is not a regular file.");
    if (geteuid() != 0) // Root may read everything.
        row("locked.v", "ERROR: locked.v: The file cannot be read:");
}

void TestExtraction::refusesFilesTheToolCannotRead()
{
    QFETCH(QString, file);
    QFETCH(QString, error);
    DesignFixture design;
    design.add(QStringLiteral("top.v"), "module top; endmodule\n");
    if (file == QLatin1String("missing.v")) {
        design.list(file);
    } else if (file == QLatin1String("folder.v")) {
        QDir().mkpath(design.path(file));
        design.list(file);
    } else if (file == QLatin1String("nul.v")) {
        design.add(file, QByteArray("module a; \0 endmodule\n", 22));
    } else if (file == QLatin1String("utf16.v")) {
        design.add(file, QByteArray("\xff\xfem\0o\0", 6));
    } else if (file == QLatin1String("long.v")) {
        design.add(file, "module a;\n" + QByteArray(1100000, ' ') + "endmodule\n");
    } else if (file == QLatin1String("includes.v")) {
        TarnTest::writeFile(design.path(QStringLiteral("mid.vh")), "`include \"nul.vh\"\n");
        TarnTest::writeFile(design.path(QStringLiteral("nul.vh")), QByteArray("a\0b", 3));
        design.add(file, "`include \"mid.vh\"\nmodule a; endmodule\n");
    } else if (file == QLatin1String("nul.vhd")) {
        design.add(file, QByteArray("entity a is end; \0", 18));
    } else if (file == QLatin1String("lib.VHDL")) {
        TarnTest::writeFile(design.path(file), QByteArray("entity a is end; \0", 18));
        design.set(TE::DesignInfo::LibraryFiles, QStringList(design.path(file)));
    } else if (file == QLatin1String("fifo.v")) {
        QCOMPARE(QProcess::execute(QStringLiteral("mkfifo"), {design.path(file)}), 0);
        design.list(file);
    } else {
        design.add(file, "module a; endmodule\n");
        QFile::setPermissions(design.path(file), QFile::WriteOwner);
    }
    design.findModules();
    QVERIFY2(design.firstError().startsWith(error),
             qPrintable(design.messages.join(QLatin1Char('\n'))));
    // The sources in the other language are known.
    const bool isVhdl = file.contains(QLatin1String(".vhd"), Qt::CaseInsensitive);
    QCOMPARE(design.modules, isVhdl ? QStringList{QStringLiteral("top")} : QStringList());
    QCOMPARE(design.tops, design.modules);
    QVERIFY(!design.buildNetlist());
}

void TestExtraction::readsUnknownModules_data()
{
    QTest::addColumn<QByteArray>("body");
    const auto row = [](const char *name, const char *body) {
        QTest::newRow(name) << QByteArray(body);
    };
    row("positional", "X u(a, b[3:0]);");
    row("named", "X u(.A(a), .B(b[3:0]));");
    row("array", "X u[3:0](.A(a), .B(b));");
    row("positional array", "X u[3:0](a, b);");
    row("by a macro", "`define MK(n, s) X #(.W(s)) n``_i (.A(a), .B(b[s-1:0]));\n`MK(u, 4)");
    row("named parameters", "X #(.W(4), .MODE(\"FAST\"), .F(1.5)) u(.A(a), .B(b[3:0]));");
    row("positional parameters", "X #(4, \"FAST\") u(a);");
    row("defparam", "X u(.A(a)); defparam u.W = 4, u.MODE = \"FAST\";");
    row("open pins", "X u(.A(), .B(a)), v(, a);");
    row("keywords as names", "X #(.do(1)) u(.final(a), .bit(b[0]));");
    row("escaped names", "\\X/1 \\u/1 (.\\A[0] (a));");
    row("several widths", "X u(.A(a)); X v(.A(b)); X w(.A(b[1:0]), .C(a));");
    row("untaken", "generate if (0) X u(.A(a)); endgenerate");
    row("mixed", "X u(.A(a)); X v(a, b, a, b);");
    row("device", "wire c; KX_PLL #(.CLKFBOUT_MULT(4)) u(.CLKIN(a), .CLKOUT0(c)); X v(.A(c));");
}

void TestExtraction::readsUnknownModules()
{
    QFETCH(QByteArray, body);
    DesignFixture design;
    design.add(QStringLiteral("top.v"),
               "`timescale 1ns/1ps\n`default_nettype none\nmodule top(input wire a);\n"
               "wire [3:0] b;\n" +
                   body + "\nendmodule\n");
    QVERIFY2(design.extract(),
             qPrintable((design.messages + design.netMessages).join(QLatin1Char('\n'))));
    QCOMPARE(design.messages, QStringList());
    QCOMPARE(design.modules, QStringList(QStringLiteral("top")));
    QVERIFY(design.netlist->findNet(QStringLiteral("top/b[3]")));
    // They are no nodes of the design.
    QVERIFY(design.netlist->top()->children().isEmpty());
}

void TestExtraction::readsUnknownModulesWithTypes()
{
    DesignFixture design;
    design.add(QStringLiteral("top.sv"),
               "module top; typedef logic [1:0] pair; wire a, b, c, d;\n"
               "X #(.T(logic [3:0]), .N(2)) u(.A(a));\nX #(.T(pair)) v(.A(b));\n"
               "X w(.A(c));\nY #(3, pair) x(.A(d));\nendmodule\n");
    QVERIFY2(design.extract(), qPrintable(design.messages.join(QLatin1Char('\n'))));
    QCOMPARE(design.messages + design.netMessages, QStringList());
    for (const char *net : {"top/a", "top/b", "top/c", "top/d"})
        QVERIFY(design.netlist->findNet(QLatin1String(net))->excludedForProbeOut());
}

void TestExtraction::asksForModulesOfInterfacesAndArrays()
{
    DesignFixture design;
    design.add(QStringLiteral("top.sv"), "interface link; logic l; endinterface\n"
                                         "module top; link i(); wire w[1:0];\n"
                                         "X u(.A(i));\n  X v(.B(w));\nendmodule\n");
    design.findModules();
    const QStringList errors = design.messages.filter(QRegularExpression(QStringLiteral(
        "^ERROR: .*top.sv:(3:6|4:8): An interface or an array is connected to a module that no "
        "file defines\\. Add the file that defines the module\\.$")));
    QVERIFY2(errors.size() == 2, qPrintable(design.messages.join(QLatin1Char('\n'))));
    QVERIFY(!design.buildNetlist());
}

void TestExtraction::learnsMissingPinsFromTheTool_data()
{
    QTest::addColumn<QByteArray>("missing"); // Messages of the tool beside that of pin b.
    QTest::addColumn<QByteArray>("needed");  // What the stubs of the second run have to hold.
    QTest::addColumn<QString>("error");
    const QByteArray all("echo \"%Error-PINNOTFOUND: text0.v:3:1: Pin not found: 'c'\" >&2\n"
                         "echo \"%Error: text0.v:2:7: Parameter pin not found: 'P'\" >&2\n");
    QTest::newRow("one") << QByteArray() << QByteArray("input.*b ") << QString();
    QTest::newRow("all of them at once")
        << all << QByteArray("parameter.*P .*input.*b .*input.*c ") << QString();
    QTest::newRow("once only") << QByteArray() << QByteArray("input.*d ")
                               << QStringLiteral("ERROR: top.v:2:9: Pin not found: 'd'");
}

/// The scan does not see these pins. The first run misses them, the second one is the last.
void TestExtraction::learnsMissingPinsFromTheTool()
{
    QFETCH(QByteArray, missing);
    QFETCH(QByteArray, needed);
    QFETCH(QString, error);
    DesignFixture design;
    design.add(QStringLiteral("top.v"), "module top; wire w;\nU u(\n.a(w));\nendmodule\n");
    const ToolScript fake("[ \"$1\" = -E ] || {\n"
                          "if ! grep -q 'input.*b ' stubs.sv; then\n"
                          "echo \"%Error-PINNOTFOUND: text0.v:2:8: Pin not found: 'b'\" >&2\n" +
                          missing +
                          "exit 1\n"
                          "elif ! grep -q '" +
                          needed +
                          "' stubs.sv; then\n"
                          "echo \"%Error-PINNOTFOUND: text0.v:2:9: Pin not found: 'd'\" >&2\n"
                          "exit 1\n"
                          "fi }\n" +
                          ToolScript::elaborate());
    design.findModules();
    QCOMPARE(design.firstError(), error);
    QCOMPARE(bool(design.buildNetlist()), error.isEmpty());
    QCOMPARE(design.netMessages.filter(QStringLiteral("ERROR")).isEmpty(), error.isEmpty());
}

/// The output of the elaborator lacks them.
void TestExtraction::takesSwitchesAndAliasesForDrivers_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("driven");
    QTest::newRow("none") << QByteArray() << QString();
    QTest::newRow("switch") << QByteArray("tran t1(pad, w);") << QStringLiteral("w");
    QTest::newRow("controlled") << QByteArray("tranif1 (x, pad, w);") << QStringLiteral("x");
    QTest::newRow("resistive") << QByteArray("rtranif0 r(pad, x, w); rtran (w, pad);")
                               << QStringLiteral("w x");
    QTest::newRow("bit of a bus") << QByteArray("tran (pad, v[1]);") << QStringLiteral("v[1] v[0]");
    QTest::newRow("in a scope") << QByteArray("generate if (1) begin : h tran (pad, g.z); end"
                                              " endgenerate")
                                << QStringLiteral("g.z");
    QTest::newRow("alias") << QByteArray("alias w = pad;") << QStringLiteral("w");
    QTest::newRow("alias of parts")
        << QByteArray("alias {w, x} = v;") << QStringLiteral("w x v[1] v[0]");
}

void TestExtraction::takesSwitchesAndAliasesForDrivers()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, driven);
    DesignFixture design;
    design.add(QStringLiteral("top.sv"), "module top(inout pad); wire w, x; wire [1:0] v;\n"
                                         "generate if (1) begin : g wire z; end endgenerate\n" +
                                             body + "\nendmodule\n");
    QVERIFY2(design.extract(), qPrintable(design.messages.join(QLatin1Char('\n'))));
    QStringList found;
    for (const char *name : {"w", "x", "v[1]", "v[0]", "g.z"}) {
        const RtlNet *net = design.netlist->findNet(QStringLiteral("top/") + QLatin1String(name));
        QVERIFY(net);
        if (net->excludedForProbeOut())
            found.append(QLatin1String(name));
    }
    QCOMPARE(found.join(QLatin1Char(' ')), driven);
}

void TestExtraction::ignoresDimensionsOutsideTheDesign()
{
    DesignFixture design;
    design.add(QStringLiteral("a.v"),
               "module top; wire w; endmodule\nmodule sub; endmodule\n"
               "module other; sub u[1:0][1:0](); reg [1:0] m [3:0][1:0]; endmodule\n");
    design.set(TE::DesignInfo::Top, QStringLiteral("top"));
    QVERIFY2(design.extract(), qPrintable(design.messages.join(QLatin1Char('\n'))));
    QCOMPARE(design.messages, QStringList());
}

void TestExtraction::seesTheJtagPrimitive_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<bool>("uses");
    QTest::newRow("none") << QByteArray("wire KX_JTAG;") << false;
    QTest::newRow("live") << QByteArray("KX_JTAG j(.TCK(a));") << true;
    QTest::newRow("below") << QByteArray("sub u();") << true;
    QTest::newRow("untaken") << QByteArray("generate if (0) KX_JTAG j(.TCK(a)); endgenerate")
                             << false;
    QTest::newRow("comment") << QByteArray("// KX_JTAG j(.TCK(a));") << false;
}

void TestExtraction::seesTheJtagPrimitive()
{
    QFETCH(QByteArray, body);
    QFETCH(bool, uses);
    DesignFixture design;
    design.add(QStringLiteral("top.v"), "module top(input a);\n" + body +
                                            "\nendmodule\nmodule sub; KX_JTAG j(); endmodule\n");
    design.set(TE::DesignInfo::Top, QStringLiteral("top"));
    QVERIFY(design.extract());
    QCOMPARE(design.netlist->usesJtagPrimitive(), uses);
}

void TestExtraction::takesRecursionThatEnds_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("top");
    QTest::addColumn<QString>("expected");
    const QByteArray tree("module tree #(parameter N = 2)(input a, output y); wire t;\n"
                          "generate if (N == 0) begin assign y = a; end\n"
                          "else begin : g tree #(N - 1) u(a, t); assign y = t; end\n"
                          "endgenerate\nendmodule\n");
    const QString whole = QStringLiteral("tree : tree\n"
                                         "    a O\n    y O\n    t O\n"
                                         "    g.u : tree\n"
                                         "        a O\n        y O\n        t O\n"
                                         "        g.u : tree\n"
                                         "            a O\n            y O\n            t .\n");
    QTest::newRow("below the top")
        << "module top(input b, output z); tree #(1) u(b, z); endmodule\n" + tree << QString()
        << QStringLiteral(
               "top : top\n    b O\n    z O\n"
               "    u : tree\n        a O\n        y O\n        t O\n"
               "        g.u : tree\n            a O\n            y O\n            t .\n");
    QTest::newRow("of the top") << tree << QString() << whole;
    QTest::newRow("of the chosen top") << tree + "module other; tree u(); endmodule\n"
                                       << QStringLiteral("tree") << whole;
    QTest::newRow("without a block")
        << QByteArray("module a #(parameter N = 2); generate if (N > 0) a #(N - 1) u();"
                      " endgenerate endmodule\n")
        << QString() << QStringLiteral("a : a\n    genblk1.u : a\n        genblk1.u : a\n");
    QTest::newRow("with stubs and the device")
        << QByteArray("module r #(parameter N = 1)(inout io, output [1:0] q); wire c, d;\n"
                      "KX_BUFG b(.I(d), .O(c)); none x(.p(q[0]));\n"
                      "generate if (N > 0) r #(N - 1) u(io); endgenerate\nendmodule\n")
        << QString()
        << QStringLiteral("r : r\n    io O\n    c O\n    d .\n    q[1:0] .O\n"
                          "    genblk1.u : r\n"
                          "        io O\n        c O\n        d .\n        q[1:0] .O\n");
    QTest::newRow("of an escaped name")
        << QByteArray("module \\r.1 #(parameter N = 1); wire w;\n"
                      "generate if (N > 0) begin : g \\r.1 #(N - 1) u(); end endgenerate\n"
                      "endmodule\n")
        << QString() << QStringLiteral("r.1 : r.1\n    w .\n    g.u : r.1\n        w .\n");
}

void TestExtraction::takesRecursionThatEnds()
{
    QFETCH(QByteArray, source);
    QFETCH(QString, top);
    QFETCH(QString, expected);
    DesignFixture design;
    design.add(QStringLiteral("top.v"), source);
    design.set(TE::DesignInfo::Top, top);
    QVERIFY2(design.extract(), qPrintable(design.messages.join(QLatin1Char('\n'))));
    QCOMPARE(design.messages, QStringList());
    QCOMPARE(TarnTest::netlistText(design.netlist->top()), expected);
}

void TestExtraction::refusesRecursionOfTheTopThroughOthers()
{
    DesignFixture design;
    design.add(QStringLiteral("a.v"),
               "module a #(parameter N = 2); b #(N) u(); endmodule\n"
               "module b #(parameter N = 2); generate if (N > 0) a #(N - 1) v(); endgenerate"
               " endmodule\n");
    design.set(TE::DesignInfo::Top, QStringLiteral("a"));
    design.findModules();
    QVERIFY2(design.firstError().startsWith(QLatin1String(
                 "ERROR: a.v:1: Recursion through several modules (a -> b -> a) cannot be read.")),
             qPrintable(design.firstError()));
    QVERIFY(!design.buildNetlist());
}

void TestExtraction::readsAnyPath_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("file");
    QTest::newRow("plain") << "src"
                           << "top.v";
    QTest::newRow("blanks") << "my src"
                            << "my top.v";
    QTest::newRow("quotes") << "it's \"mine\""
                            << "a \"b\" 'c'.v";
    QTest::newRow("umlauts") << QStringLiteral("Entw\u00fcrfe") << QStringLiteral("z\u00e4hler.v");
    QTest::newRow("other characters") << "a$HOME*?;&#%+-x"
                                      << "${b}+(1),2.v";
    QTest::newRow("backslash") << "a\\b"
                               << "c\\d.v";
    QTest::newRow("like an option") << "-I"
                                    << "-v.v";
}

void TestExtraction::readsAnyPath()
{
    QFETCH(QString, folder);
    QFETCH(QString, file);
    DesignFixture design(folder);
    TarnTest::writeFile(design.path(QStringLiteral("inc dir/x.vh")), "`include \"y.vh\"\n");
    TarnTest::writeFile(design.path(QStringLiteral("inc dir/y.vh")), "`define W 4\n");
    TarnTest::writeFile(design.path(QStringLiteral("near.vh")), "`define V 2\n");
    design.add(file,
               "`include \"x.vh\"\n`include \"near.vh\"\nmodule top; wire [`W:`V] a; endmodule\n");
    design.set(TE::DesignInfo::IncludePaths, QStringList(design.path(QStringLiteral("inc dir"))));
    QVERIFY2(design.extract(), qPrintable(design.messages.join(QLatin1Char('\n'))));
    QVERIFY(design.netlist->findNet(QStringLiteral("top/a[4]")));

    TarnTest::writeFile(design.path(file),
                        "`include \"x.vh\"\nmodule top;\nwire = 1;\nendmodule\n");
    design.findModules();
    QVERIFY2(design.firstError().startsWith(QStringLiteral("ERROR: %1:3:6: ").arg(file)),
             qPrintable(design.messages.join(QLatin1Char('\n'))));

    TarnTest::writeFile(design.path(file), "`include \"none.vh\"\nmodule top; endmodule\n");
    design.findModules();
    QVERIFY2(design.firstError().startsWith(QStringLiteral("ERROR: %1:1:10: ").arg(file)),
             qPrintable(design.messages.join(QLatin1Char('\n'))));
}

void TestExtraction::looksForIncludesBesideTheFileFirst()
{
    DesignFixture design;
    design.add(QStringLiteral("a/a.v"),
               "`include \"d.vh\"\nmodule top; wire [`D:0] w; b u(); endmodule\n");
    design.add(QStringLiteral("b/b.v"), "`include \"d.vh\"\nmodule b; wire [`D:0] w; endmodule\n");
    TarnTest::writeFile(design.path(QStringLiteral("a/d.vh")), "`undef D\n`define D 1\n");
    TarnTest::writeFile(design.path(QStringLiteral("b/d.vh")), "`undef D\n`define D 2\n");
    QVERIFY(design.extract());
    QVERIFY(!design.netlist->findNet(QStringLiteral("top/w[2]")));
    QVERIFY(design.netlist->findNet(QStringLiteral("top/u/w[2]")));
}

void TestExtraction::readsIncludePathsInOrder()
{
    DesignFixture design;
    design.add(QStringLiteral("a.v"), "`include \"d.vh\"\nmodule top; wire [`D:0] w; endmodule\n");
    TarnTest::writeFile(design.path(QStringLiteral("x/d.vh")), "`define D 1\n");
    TarnTest::writeFile(design.path(QStringLiteral("y/d.vh")), "`define D 2\n");
    const QString x = design.path(QStringLiteral("x"));
    const QString y = design.path(QStringLiteral("y"));
    design.set(TE::DesignInfo::IncludePaths, QStringList({y, x}));
    QVERIFY(design.extract());
    QVERIFY(design.netlist->findNet(QStringLiteral("top/w[2]")));
    design.set(TE::DesignInfo::IncludePaths, QStringList({x, y}));
    QVERIFY(design.extract());
    QVERIFY(!design.netlist->findNet(QStringLiteral("top/w[2]")));
}

void TestExtraction::carriesMacrosFromFileToFile()
{
    DesignFixture design;
    design.add(QStringLiteral("z.v"), "`define WIDTH 8\n");
    design.add(QStringLiteral("a.v"), "module top; wire [`WIDTH-1:0] w; endmodule\n");
    QVERIFY(design.extract());
    QVERIFY(design.netlist->findNet(QStringLiteral("top/w[7]")));
}

void TestExtraction::readsMacrosOfTheProject()
{
    DesignFixture design;
    design.add(QStringLiteral("a.v"), "module top;\n`ifdef FLAG\nwire [`WIDTH:0] w;\n`endif\n"
                                      "initial $display(`TEXT);\nendmodule\n");
    design.set(TE::DesignInfo::Macros,
               QStringList({QStringLiteral("FLAG"), QStringLiteral("WIDTH=2+1"),
                            QStringLiteral("TEXT=\"a b\"")}));
    QVERIFY2(design.extract(), qPrintable(design.messages.join(QLatin1Char('\n'))));
    QVERIFY(design.netlist->findNet(QStringLiteral("top/w[3]")));
}

void TestExtraction::readsAsSynthesisDoes()
{
    DesignFixture design;
    design.add(QStringLiteral("a.v"), "module top;\n`ifdef SYNTHESIS\nwire s;\n`endif\n"
                                      "`ifdef VERILATOR\nwire v;\n`endif\nendmodule\n");
    QVERIFY(design.extract());
    QVERIFY(design.netlist->findNet(QStringLiteral("top/s")));
    QVERIFY(!design.netlist->findNet(QStringLiteral("top/v")));
}

void TestExtraction::definesTheMacroOfTheToolWhenNeeded_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QStringList>("macros");
    QTest::addColumn<QStringList>("messages");
    QTest::addColumn<QString>("net"); // Empty: no netlist.
    const auto row = [](const char *name, const char *source, const QStringList &macros,
                        const QStringList &messages, const char *net) {
        QTest::newRow(name) << QByteArray(source) << macros << messages << QString::fromLatin1(net);
    };
    const auto defined = [](const char *reason) {
        return QStringLiteral("WARNING: The sources are read with the macro VERILATOR defined, "
                              "since they cannot be read without it: ") +
               QString::fromLatin1(reason);
    };
    row("not needed",
        "`ifdef VERILATOR\nmodule top; wire a; endmodule\n`else\n"
        "module top; wire b; endmodule\n`endif\n",
        {}, {}, "top/b");
    row("for the elaborator",
        "`ifndef VERILATOR\nwire = 1;\n`endif\nmodule top; wire a; endmodule\n", {},
        {defined("a.v:2:6: syntax error, unexpected '='")}, "top/a");
    row("for the preprocessor",
        "`ifndef VERILATOR\n`include \"none.vh\"\n`endif\nmodule top; wire a; endmodule\n", {},
        {defined("a.v:2:10: Cannot find the include file \"none.vh\". Add its folder to the "
                 "include paths.")},
        "top/a");
    row("in an include", "module top; wire a;\n`include \"hides.vh\"\nendmodule\n", {},
        {defined("hides.vh:2:6: syntax error, unexpected '='")}, "top/a");
    row("for the scan",
        "`ifndef VERILATOR\nmodule top; wire b; endmodule\n`endif\nmodule top; wire a; "
        "endmodule\n",
        {},
        {defined("a.v:4: \"top\" is defined a second time; the first definition is in a.v:2. "
                 "Rename or remove one of them.")},
        "top/a");
    row("as bad with it", "// VERILATOR\nmodule top; wire a;\nwire = 1;\nendmodule\n", {},
        {QStringLiteral("ERROR: a.v:3:6: syntax error, unexpected '='")}, "");
    row("worse with it",
        "`ifdef VERILATOR\n`include \"none.vh\"\n`include \"nil.vh\"\n`endif\n"
        "module top;\nwire = 1;\nendmodule\n",
        {}, {QStringLiteral("ERROR: a.v:6:6: syntax error, unexpected '='")}, "");
    row("better with it, but not well",
        "`ifndef VERILATOR\n`include \"none.vh\"\n`include \"nil.vh\"\n`endif\n"
        "module top;\nwire = 1;\nendmodule\n",
        {},
        {defined(
             "a.v:2:10: Cannot find the include file \"none.vh\". Add its folder to the include "
             "paths."),
         QStringLiteral("ERROR: a.v:6:6: syntax error, unexpected '='")},
        "");
    row("no top with it",
        "`ifdef VERILATOR\nmodule a; endmodule module b; endmodule\n`else\nmodule top;\nwire = 1;\n"
        "endmodule\n`endif\n",
        {}, {QStringLiteral("ERROR: a.v:5:6: syntax error, unexpected '='")}, "");
    row("not named", "module top;\nwire = 1;\nendmodule\n", {},
        {QStringLiteral("ERROR: a.v:2:6: syntax error, unexpected '='")}, "");
    row("defined anyway", "`ifdef VERILATOR\nmodule top; wire a; endmodule\n`endif\n",
        {QStringLiteral("VERILATOR")}, {}, "top/a");
}

void TestExtraction::definesTheMacroOfTheToolWhenNeeded()
{
    QFETCH(QByteArray, source);
    QFETCH(QStringList, macros);
    QFETCH(QStringList, messages);
    QFETCH(QString, net);
    DesignFixture design;
    TarnTest::writeFile(design.path(QStringLiteral("hides.vh")),
                        "`ifndef VERILATOR\nwire = 1;\n`endif\n");
    design.add(QStringLiteral("a.v"), source);
    design.set(TE::DesignInfo::Macros, macros);
    design.findModules();
    QStringList found = design.messages;
    found.replaceInStrings(design.path(QString()) + QLatin1Char('/'), QString());
    found.replaceInStrings(QRegularExpression(QStringLiteral(", expecting .*")), QString());
    QCOMPARE(found, messages);
    QCOMPARE(design.buildNetlist() != nullptr, !net.isEmpty());
    if (!net.isEmpty()) {
        QVERIFY(design.netlist->findNet(net));
        QCOMPARE(design.netMessages, QStringList());
    }
}

void TestExtraction::readsLibraryFiles()
{
    DesignFixture design;
    design.add(QStringLiteral("a.v"), "module top; lib u(); own v(); endmodule\n"
                                      "module own; wire mine; endmodule\n");
    TarnTest::writeFile(design.path(QStringLiteral("lib.v")),
                        "module lib; wire w; endmodule\nmodule own; wire theirs; endmodule\n"
                        "module unused; other x(); endmodule\n");
    design.set(TE::DesignInfo::LibraryFiles, QStringList(design.path(QStringLiteral("lib.v"))));
    QVERIFY2(design.extract(), qPrintable(design.messages.join(QLatin1Char('\n'))));
    QCOMPARE(design.messages, QStringList());
    QCOMPARE(design.tops, QStringList(QStringLiteral("top")));
    QCOMPARE(design.modules, QStringList({QStringLiteral("top"), QStringLiteral("own")}));
    QVERIFY(design.netlist->findNet(QStringLiteral("top/u/w")));
    QVERIFY(design.netlist->findNet(QStringLiteral("top/v/mine")));

    design.set(TE::DesignInfo::LibraryFiles, QStringList(design.path(QStringLiteral("none.v"))));
    design.findModules();
    QCOMPARE(design.firstError(), QStringLiteral("ERROR: none.v: The library file does not exist. "
                                                 "Remove it from the options."));
}

/// Macros carry over from one to the next, and the first definition of a module counts.
void TestExtraction::readsLibraryFilesInTheirOrder()
{
    DesignFixture design;
    QByteArray top = "module top; same s();";
    QStringList paths;
    for (int i = 0; i < 12; ++i) {
        const QByteArray number = QByteArray::number(i);
        const QByteArray before = i == 0 ? QByteArray("1") : "`W" + QByteArray::number(i - 1);
        top += " m" + number + " u" + number + "();";
        paths.append(design.path(QStringLiteral("lib%1.v").arg(12 - i)));
        TarnTest::writeFile(paths.last(), "`define W" + number + " 1+" + before + "\nmodule m" +
                                              number + "; wire [`W" + number +
                                              ":0] w; endmodule\nmodule same; wire w" + number +
                                              "; endmodule\n");
    }
    design.add(QStringLiteral("a.v"), top + " endmodule\n");
    design.set(TE::DesignInfo::LibraryFiles, paths);
    QVERIFY2(design.extract(), qPrintable(design.messages.join(QLatin1Char('\n'))));
    QVERIFY(design.netlist->findNet(QStringLiteral("top/u11/w[13]")));
    QVERIFY(design.netlist->findNet(QStringLiteral("top/s/w0")));

    // A file that is listed twice, or as a source too, is read once.
    paths.append({paths.first(), design.path(QStringLiteral("a.v"))});
    design.set(TE::DesignInfo::LibraryFiles, paths);
    QVERIFY2(design.extract(), qPrintable(design.messages.join(QLatin1Char('\n'))));
    QVERIFY(design.netlist->findNet(QStringLiteral("top/u11/w[13]")));
}

void TestExtraction::findsModulesInLibraryFolders()
{
    DesignFixture design;
    const auto write = [&design](const char *name, const QByteArray &text) {
        TarnTest::writeFile(design.path(QString::fromLatin1(name)), text);
    };
    design.add(QStringLiteral("a.v"), "`define WIDTH 4\n"
                                      "module top; first u(); second v(); plain w(.x(1'b1));\n"
                                      "own o(); empty e(); endmodule\n"
                                      "module own; wire mine; endmodule\n"
                                      "module unused_too; fourth x(); endmodule\n");
    write("cells/first.v", "module first; wire [`WIDTH-1:0] w; third t(); endmodule\n");
    write("more/first.v", "module first; wire wrong; endmodule\n");
    // Files that are found need further files.
    write("cells/third.sv", "module third; logic l; second s(); endmodule\n"
                            "module not_needed; fifth x(); endmodule\n");
    write("more/second.vlib", "module second; wire w; endmodule\n");
    write("more/fourth.v", "module fourth; endmodule\n");
    write("cells/empty.v", "// Another module of that name is meant.\nmodule other; endmodule\n");
    // Files that are not needed are not read, so their errors do not matter.
    write("cells/own.v", "oops\n");
    write("cells/fifth.v", "oops\n");
    write("cells/top.v", "oops\n");
    design.set(TE::DesignInfo::LibraryFolders, QStringList({design.path(QStringLiteral("cells")),
                                                            design.path(QStringLiteral("more"))}));
    design.set(TE::DesignInfo::Top, QStringLiteral("top"));
    design.set(TE::DesignInfo::LibraryExtensions,
               QStringList({QStringLiteral(".vlib"), QStringLiteral(".v"), QStringLiteral(".sv")}));
    for (int i = 0; i < 2; ++i) {
        QVERIFY2(design.extract(), qPrintable(design.messages.join(QLatin1Char('\n'))));
        QCOMPARE(design.messages, QStringList());
        QCOMPARE(design.modules, QStringList({QStringLiteral("top"), QStringLiteral("own"),
                                              QStringLiteral("unused_too")}));
        for (const char *net : {"top/u/w[3]", "top/u/t/l", "top/u/t/s/w", "top/v/w", "top/o/mine"})
            QVERIFY2(design.netlist->findNet(QString::fromLatin1(net)), net);
        QVERIFY(!design.netlist->findNet(QStringLiteral("top/u/wrong")));
    }
    // The result is used up: everything is read once more.
    QVERIFY(design.buildNetlist());
    QVERIFY(design.netlist->findNet(QStringLiteral("top/u/t/s/w")));
}

void TestExtraction::findsPackagesInLibraryFolders()
{
    DesignFixture design;
    const auto write = [&design](const char *name, const QByteArray &text) {
        TarnTest::writeFile(design.path(QString::fromLatin1(name)), text);
    };
    design.add(QStringLiteral("a.sv"), "module top import widths::*; (input logic [W-1:0] d);\n"
                                       "import other::*; word::word_t w; none_t n; endmodule\n");
    write("lib/widths.sv", "package widths; localparam W = base::B + 1; endpackage\n");
    write("lib/word.sv", "package word; typedef logic [4:0] word_t; endpackage\n");
    write("lib/base.sv", "package base; localparam B = 2; endpackage\n");
    design.set(TE::DesignInfo::LibraryFolders, QStringList(design.path(QStringLiteral("lib"))));
    design.set(TE::DesignInfo::LibraryExtensions, QStringList(QStringLiteral(".sv")));
    QVERIFY(!design.extract());
    QVERIFY2(design.firstError().contains(QLatin1String("declares the package \"other\"")),
             qPrintable(design.messages.join(QLatin1Char('\n'))));
    write("lib/other.sv", "package other; typedef logic none_t; endpackage\n");
    QVERIFY2(design.extract(), qPrintable(design.messages.join(QLatin1Char('\n'))));
    QVERIFY(design.netlist->findNet(QStringLiteral("top/d[2]")));
    QVERIFY(!design.netlist->findNet(QStringLiteral("top/d[3]")));
    QVERIFY(design.netlist->findNet(QStringLiteral("top/w[4]")));
}

void TestExtraction::saysWhatIsWrongInLibraryFolders()
{
    DesignFixture design;
    design.add(QStringLiteral("a.v"), "module top; lib u(); endmodule\n");
    const QString none = design.path(QStringLiteral("none"));
    design.set(TE::DesignInfo::LibraryFolders, QStringList({none, design.path(QString())}));
    design.set(TE::DesignInfo::LibraryExtensions,
               QStringList({QStringLiteral(".v"), QStringLiteral(".sv")}));
    QVERIFY(design.extract());
    const QStringList missing = {
        QStringLiteral("WARNING: %1: The library folder does not exist.").arg(none)};
    QCOMPARE(design.messages, missing);

    // Reported once, although the folder is searched several times.
    TarnTest::writeFile(design.path(QStringLiteral("lib.sv")),
                        "module lib; logic l; lib2 u(); endmodule\n");
    TarnTest::writeFile(design.path(QStringLiteral("lib2.v")), "module lib2; wire w; endmodule\n");
    QVERIFY(design.extract());
    QCOMPARE(design.messages, missing);
    QVERIFY(design.netlist->findNet(QStringLiteral("top/u/u/w")));

    TarnTest::writeFile(design.path(QStringLiteral("lib2.v")), "module lib2;\nwire = ;\n");
    QVERIFY(!design.extract());
    QVERIFY2(design.firstError().startsWith(QStringLiteral("ERROR: lib2.v:2:6: ")),
             qPrintable(design.messages.join(QLatin1Char('\n'))));
}

void TestExtraction::readsEachFileInItsLanguage_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("standard");
    QTest::addColumn<bool>("systemVerilog");
    QTest::newRow("Verilog") << "a.v" << 2 << "1364-2005" << false;
    QTest::newRow("Verilog 2001") << "a.v" << 2 << "1364-2001" << false;
    QTest::newRow("no standard") << "a.v" << 2 << "" << false;
    QTest::newRow("SystemVerilog by the standard") << "a.v" << 2 << "1800-2017" << true;
    QTest::newRow("SystemVerilog by its name") << "a.sv" << 2 << "1364-2001" << true;
    QTest::newRow("capital name") << "A.SV" << 2 << "1364-2001" << true;
    QTest::newRow("SystemVerilog by its type") << "a.v" << 3 << "1364-2001" << true;
    QTest::newRow("any name") << "a.txt" << 3 << "1364-2001" << true;
    QTest::newRow("any name in Verilog") << "a.txt" << 2 << "1364-2001" << false;
}

void TestExtraction::readsEachFileInItsLanguage()
{
    QFETCH(QString, name);
    QFETCH(int, type);
    QFETCH(QString, standard);
    QFETCH(bool, systemVerilog);
    DesignFixture design;
    design.set(TE::DesignInfo::Standard, standard);
    design.add(name,
               systemVerilog ? "module top; logic l; interface_i i(); endmodule\n"
                               "interface interface_i; endinterface\n"
                             : "module top; wire logic, bit; interface program(logic);"
                               " endmodule\nmodule interface(input bit); endmodule\n",
               type);
    QVERIFY2(design.extract(), qPrintable(design.messages.join(QLatin1Char('\n'))));
    QCOMPARE(design.tops, QStringList(QStringLiteral("top")));
    QVERIFY(design.netlist->findNet(systemVerilog ? QStringLiteral("top/l")
                                                  : QStringLiteral("top/program/bit")));
}

void TestExtraction::readsDelays_data()
{
    QTest::addColumn<QByteArray>("process");
    QTest::newRow("delays only") << QByteArray("initial #10 d = 0;");
    QTest::newRow("events and waits")
        << QByteArray("initial begin #10 d = 0; @(posedge a); wait (a); end");
}

void TestExtraction::readsDelays()
{
    QFETCH(QByteArray, process);
    DesignFixture design;
    design.add(QStringLiteral("a.v"), "module top(input a, output reg b, output c, output reg d);\n"
                                      "wire e;\nalways @(posedge a) b <= #1 ~e;\n"
                                      "assign #2 c = e;\n" +
                                          process + "\nendmodule\n");
    QVERIFY2(design.extract(), qPrintable(design.messages.join(QLatin1Char('\n'))));
    QCOMPARE(design.messages, QStringList());
    for (const char driven : {'a', 'b', 'c', 'd', 'e'}) {
        const RtlNet *net = design.netlist->findNet(QStringLiteral("top/") + QLatin1Char(driven));
        QVERIFY(net);
        QCOMPARE(net->excludedForProbeOut(), driven != 'e');
    }
}

void TestExtraction::timesOutAfterTwoMinutesByDefault()
{
    const auto timeout = [](const QVariant &value) {
        return Internal::readDesignSources({{QLatin1String(TE::DesignInfo::Timeout), value}})
            .timeoutSeconds;
    };
    QCOMPARE(Internal::readDesignSources({}).timeoutSeconds, 120);
    QCOMPARE(timeout(0), 120);
    QCOMPARE(timeout(-1), 120);
    QCOMPARE(timeout(7), 7);
}

void TestExtraction::neverMentionsItsFolder()
{
    DesignFixture design;
    design.add(QStringLiteral("top.v"),
               "module top;\nsub u(.x(1'b0));\nX v(.a());\nwire = ;\n`Y\nendmodule\n"
               "module sub; endmodule\n");
    design.add(QStringLiteral("b.sv"), "`include \"none\"\nmodule b; top.u.x a; endmodule\n");
    design.set(TE::DesignInfo::Top, QStringLiteral("top"));
    for (const bool withInclude : {true, false}) {
        if (!withInclude)
            TarnTest::writeFile(design.path(QStringLiteral("none")), "");
        design.findModules();
        QVERIFY(!design.firstError().isEmpty());
        for (const QString &message : qAsConst(design.messages)) {
            QVERIFY2(!message.contains(QLatin1String("netweir_")), qPrintable(message));
            QVERIFY2(!message.contains(QRegularExpression(QStringLiteral("text[0-9]"))),
                     qPrintable(message));
            QVERIFY2(!message.contains(m_folder.path() + QLatin1String("/tarn")),
                     qPrintable(message));
        }
    }
}

TARN_TEST_MAIN(TestExtraction)
#include "tst_extraction.moc"
