// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/sources/hiddencode.h>
#include <netweir/rtlnetbus.h>

#include "designfixture.h"

#include <support/testcase.h>

#include <QApplication>
#include <QStandardPaths>
#include <QTest>

using namespace NETWEIR::Internal;

namespace {

/// The nets and buses of the top, or the messages if the design cannot be read.
QString netsOf(TarnTest::DesignFixture *design)
{
    if (!design->extract())
        return design->messages.join(QLatin1Char('\n'));
    QStringList names;
    for (const NETWEIR::RtlNet *net : design->netlist->top()->nets())
        names.append(net->name());
    for (const NETWEIR::RtlNetBus *bus : design->netlist->top()->buses())
        names.append(bus->BusName());
    names.sort();
    return names.join(QLatin1Char(' '));
}

/// Without blanks next to others or at the ends of lines.
QByteArray squeezed(const QByteArray &text)
{
    QByteArrayList lines = text.split('\n');
    for (QByteArray &line : lines)
        line = line.simplified();
    return lines.join('\n');
}

} // namespace

class TestHiddenCode : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void marksAreToldFromComments_data();
    void marksAreToldFromComments();
    void codeBetweenMarksIsBlanked_data();
    void codeBetweenMarksIsBlanked();
    void designsAreReadWithoutHiddenCode_data();
    void designsAreReadWithoutHiddenCode();
    void marksComeOutOfMacrosAndIncludes_data();
    void marksComeOutOfMacrosAndIncludes();
    void faultsOfHiddenCodeDoNotStopADesign_data();
    void faultsOfHiddenCodeDoNotStopADesign();
    void faultsBesideHiddenCodeKeepTheirPlaces_data();
    void faultsBesideHiddenCodeKeepTheirPlaces();
    void regionsWithoutAnEndAreReported();
    void pageBreaksAreBlanks();
    void designsOpenWithoutTheFilter();
    void aDesignMayDefineTheMacroOfSynthesisItself();
};

void TestHiddenCode::marksAreToldFromComments_data()
{
    QTest::addColumn<QByteArray>("comment");
    QTest::addColumn<int>("mark");
    const auto row = [](const char *comment, HidingMark mark) {
        QTest::newRow(comment) << QByteArray(comment) << int(mark);
    };
    row("// synopsys translate_off", HidingMark::Off);
    row("//synthesis translate_off", HidingMark::Off);
    row("// pragma translate_on", HidingMark::On);
    row("/* synopsys translate_on */", HidingMark::On);
    row("/*synopsys\ttranslate_off*/", HidingMark::Off);
    row("/* synopsys\n   translate_off\n*/", HidingMark::Off);
    row("/** synopsys translate_off */", HidingMark::Off);
    row("// SYNTHESIS Translate_Off", HidingMark::Off);
    row("// anyword   translate_off  \r", HidingMark::Off);
    row("// a_maker-s translate_on", HidingMark::On);
    row("/*verilator translate_off*/", HidingMark::Off);
    row("// synopsys translate_off simulation only", HidingMark::Off);
    row("// anyword translate_off -- simulation", HidingMark::Off);
    row("// see translate_off below", HidingMark::None);
    row("// translate_off", HidingMark::None);
    row("// the synopsys translate_off", HidingMark::None);
    row("// // synopsys translate_off", HidingMark::None);
    row("// synopsys translate_offset", HidingMark::None);
    row("// synopsys full_case", HidingMark::None);
    row("/*verilator lint_off WIDTH*/", HidingMark::None);
    row("//", HidingMark::None);
}

void TestHiddenCode::marksAreToldFromComments()
{
    QFETCH(QByteArray, comment);
    QTEST(int(hidingMarkOf(comment)), "mark");
}

void TestHiddenCode::codeBetweenMarksIsBlanked_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("expected");
    QTest::addColumn<QByteArray>("regions");
    const auto row = [](const char *name, const QByteArray &text, const QByteArray &expected,
                        const char *regions) {
        QByteArray full = text;
        QByteArray left = expected;
        for (QByteArray *const marked : {&full, &left}) {
            marked->replace("OFF", "/*verilator synopsys translate_off*/");
            marked->replace("ON", "/*verilator synopsys translate_on*/");
        }
        QTest::newRow(name) << full << left << QByteArray(regions);
    };
    row("nothing", "wire a;\n", "wire a;\n", "");
    row("lines", "a\nOFF\nb\nON\nc\n", "a\n\n\n\nc\n", "2:3-3");
    row("within a line", "a OFF b ON c\n", "a c\n", "1:2-0");
    row("mark behind code", "OFF\na ON\nOFF\nb ON c\n", "\n\n\n c\n", "1:2-2 3:4-3");
    row("twice", "OFF b ON a OFF\nb\nON\n", "a\n\n\n", "1:2-0 1:2-2");
    row("does not nest", "OFF a OFF b ON c ON d", "c d", "1:2-0");
    row("shown without being hidden", "a ON b", "a b", "");
    row("never ends", "a\nOFF b\nc\n", "a\n\n\n", "2:3-4 open");
    row("not in a string", "\"OFF\" a ON", "\"OFF\" a", "");
    row("comment beside the point", "a /*verilator no translate_off here*/ b", "a b", "");
    row("string with a quote", "\"\\\"OFF\" a", "\"\\\"OFF\" a", "");
    row("string without an end", "OFF\n it's \" not\nON\na", "\n\n\na", "1:2-2");
    row("not in an escaped name", "\\xOFF b", "\\xOFF b", "");
    row("a region that is a comment", "OFF /* a */ ON b", "b", "1:2-0");
    row("lasting directive", "OFF\n`default_nettype none\n`timescale 1ns/1ps\n`FOO(3)\nON a",
        "\n`default_nettype none\n\n\n a", "1:2-4");
}

void TestHiddenCode::codeBetweenMarksIsBlanked()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, expected);
    const int length = text.size();
    QByteArrayList regions;
    for (const HiddenRegion &region : blankHiddenCode(&text)) {
        regions.append(QByteArray::number(region.mark) + ':' + QByteArray::number(region.first) +
                       '-' + QByteArray::number(region.last) + (region.closed ? "" : " open"));
    }
    QCOMPARE(text.size(), length);
    QCOMPARE(squeezed(text), squeezed(expected));
    QTEST(regions.join(' '), "regions");
}

void TestHiddenCode::designsAreReadWithoutHiddenCode_data()
{
    QTest::addColumn<QByteArray>("off");
    QTest::addColumn<QByteArray>("on");
    QTest::newRow("line") << QByteArray("// synopsys translate_off\n")
                          << QByteArray("// synopsys translate_on\n");
    QTest::newRow("block") << QByteArray("/* synthesis translate_off */")
                           << QByteArray("/* synthesis translate_on */");
    QTest::newRow("block of several lines")
        << QByteArray("/* pragma\n * translate_off\n */") << QByteArray("/*pragma translate_on*/");
    QTest::newRow("block with stars in front")
        << QByteArray("/*\n * synthesis translate_off\n */\n")
        << QByteArray("/**\r\n\t* synthesis\ttranslate_on\r\n\t**/\n");
    QTest::newRow("upper case") << QByteArray("// PRAGMA TRANSLATE_OFF\r\n")
                                << QByteArray("//PRAGMA TRANSLATE_ON\r\n");
    QTest::newRow("line that ends in a backslash")
        << QByteArray("// maker translate_off \\\n") << QByteArray("// maker translate_on \\\n");
    QTest::newRow("behind a directive")
        << QByteArray("`undef NOTHING // synthesis translate_off\n")
        << QByteArray("`ifndef NOTHING // synthesis translate_on\n`endif\n");
    QTest::newRow("in one branch of a condition")
        << QByteArray("`ifdef SYNTHESIS\n// synopsys translate_off\n`endif\n")
        << QByteArray("`ifndef SYNTHESIS\n`else\n// synopsys translate_on\n`endif\n");
}

void TestHiddenCode::designsAreReadWithoutHiddenCode()
{
    QFETCH(QByteArray, off);
    QFETCH(QByteArray, on);
    TarnTest::DesignFixture design;
    // The macro must not pass on the comment in its definition.
    design.add(QStringLiteral("top.v"),
               "`define W 2 // width, /* not */ synopsys translate_off\n"
               "module top(input clk); wire [`W-1:0] before; // \"synopsys\" translate_off\n" +
                   off + "wire hidden; this is no code \"\n`define LATE late\n" + on +
                   "wire after; wire `LATE;\n"
                   "// // synopsys translate_off\n"
                   "initial $display(\"// synopsys translate_off\");\n"
                   "wire last;\nendmodule\n");
    QCOMPARE(netsOf(&design), QStringLiteral("after before[1:0] clk last late"));
}

void TestHiddenCode::marksComeOutOfMacrosAndIncludes_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::newRow("macro") << QByteArray("`define OFF /* synopsys translate_off */\n"
                                         "`define ON /* synopsys translate_on */\n"
                                         "module top; wire a;\n`OFF wire hidden; `ON\nwire z;\n");
    QTest::newRow("argument") << QByteArray("`define OUT(x) x\nmodule top; wire a;\n"
                                            "`OUT(/* synopsys translate_off */ wire hidden; /* "
                                            "synopsys translate_on */ wire z;)\n");
    QTest::newRow("include") << QByteArray(
        "module top; wire a;\n`include \"off.vh\"\nwire hidden;\n"
        "`include \"on.vh\"\nwire z;\n");
    QTest::newRow("whole include")
        << QByteArray("module top; wire a;\n`include \"whole.vh\"\nwire z;\n");
    QTest::newRow("include by the name in a macro")
        << QByteArray("`define FILE \"whole.vh\"\nmodule top; wire a;\n`include `FILE\nwire z;\n");
    QTest::newRow("no word in front")
        << QByteArray("module top; wire a;\n// translate_off\nwire z;\n");
    QTest::newRow("the word of the filter")
        << QByteArray("module top; wire a;\n/*verilator translate_off*/ wire b;\n"
                      "/* verilator translate_on */ wire z;\n");
    QTest::newRow("branch not taken")
        << QByteArray("module top; wire a;\n`ifdef NEVER\n// synopsys translate_off\n`endif\n"
                      "wire z;\n");
}

void TestHiddenCode::marksComeOutOfMacrosAndIncludes()
{
    QFETCH(QByteArray, source);
    TarnTest::DesignFixture design;
    TarnTest::writeFile(design.path(QStringLiteral("off.vh")), "// synopsys translate_off\n");
    TarnTest::writeFile(design.path(QStringLiteral("on.vh")), "// synopsys translate_on\n");
    TarnTest::writeFile(design.path(QStringLiteral("whole.vh")),
                        "// synopsys translate_off\nwire hidden;\n// synopsys translate_on\n");
    design.add(QStringLiteral("top.v"), source + "endmodule\n");
    QCOMPARE(netsOf(&design), QStringLiteral("a z"));
    QCOMPARE(design.messages, QStringList());
}

void TestHiddenCode::faultsOfHiddenCodeDoNotStopADesign_data()
{
    QTest::addColumn<QByteArray>("hidden");
    QTest::newRow("syntax") << QByteArray("end else begin ( [[\n");
    QTest::newRow("macro") << QByteArray("`UNKNOWN_MACRO(a, b)\n");
    QTest::newRow("macro without an end") << QByteArray("`UNKNOWN_MACRO(a, \n");
    QTest::newRow("include") << QByteArray("`include \"missing.vh\"\n");
    QTest::newRow("string") << QByteArray("don't use \" here\n");
    QTest::newRow("error") << QByteArray("`error \"simulation only\"\n");
    QTest::newRow("endmodule") << QByteArray("endmodule module other; endmodule\n");
}

void TestHiddenCode::faultsOfHiddenCodeDoNotStopADesign()
{
    QFETCH(QByteArray, hidden);
    TarnTest::DesignFixture design;
    design.add(QStringLiteral("top.v"), "module top; wire a;\n// synopsys translate_off\n" +
                                            hidden +
                                            "// synopsys translate_on\nwire z;\n"
                                            "endmodule\n");
    design.add(QStringLiteral("next.v"), "module next; wire b; top u(); endmodule\n");
    QCOMPARE(netsOf(&design), QStringLiteral("b"));
    QCOMPARE(design.messages, QStringList());
    QCOMPARE(design.modules, (QStringList{QStringLiteral("top"), QStringLiteral("next")}));
}

void TestHiddenCode::faultsBesideHiddenCodeKeepTheirPlaces_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<QString>("expected");
    QTest::newRow("include") << QByteArray("`include \"missing.vh\"\n")
                             << QStringLiteral("ERROR: top.v:7:10: Cannot find the include file");
    QTest::newRow("syntax") << QByteArray("wire = ;\n")
                            << QStringLiteral("ERROR: top.v:7:6: syntax error");
    QTest::newRow("macro") << QByteArray("`UNKNOWN\n")
                           << QStringLiteral("ERROR: top.v:7:1: The macro");
}

void TestHiddenCode::faultsBesideHiddenCodeKeepTheirPlaces()
{
    QFETCH(QByteArray, fault);
    TarnTest::DesignFixture design;
    design.add(QStringLiteral("top.v"),
               "module top; wire a;\n/* synopsys\n translate_off */\nwire\n"
               "hidden; `include \"nothing.vh\" 3.5\" wide\n// synopsys translate_on\n" +
                   fault + "endmodule\n");
    design.findModules();
    QFETCH(QString, expected);
    QVERIFY2(design.firstError().startsWith(expected), qPrintable(design.firstError()));
}

void TestHiddenCode::regionsWithoutAnEndAreReported()
{
    TarnTest::DesignFixture design;
    TarnTest::writeFile(design.path(QStringLiteral("open.vh")), "\n// synopsys translate_off\n");
    design.add(QStringLiteral("a.v"),
               "module a; b u(); endmodule\n`include \"open.vh\"\nmodule hidden; endmodule\n");
    design.add(QStringLiteral("b.v"), "module b; wire seen; endmodule\n// synopsys translate_on\n");
    QVERIFY2(design.extract(), qPrintable(design.messages.join('\n')));
    QCOMPARE(design.modules, (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    QCOMPARE(design.messages,
             QStringList{QStringLiteral("WARNING: %1:2: The code after this comment is hidden up "
                                        "to the end of the file. Add a comment with translate_on "
                                        "where the design continues.")
                             .arg(design.path(QStringLiteral("open.vh")))});
}

void TestHiddenCode::pageBreaksAreBlanks()
{
    TarnTest::DesignFixture design;
    design.add(QStringLiteral("top.v"), "module\ftop;\n\f\nwire a;\v wire\fb;\nendmodule\n\f\n");
    QCOMPARE(netsOf(&design), QStringLiteral("a b"));
}

void TestHiddenCode::designsOpenWithoutTheFilter()
{
    const QByteArray elaborator =
        QStandardPaths::findExecutable(QStringLiteral("verilator_bin")).toLocal8Bit();
    TarnTest::DesignFixture design;
    design.add(QStringLiteral("top.v"),
               "module top; wire a; // synopsys translate_off\nwire b;\nendmodule\n");
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/nonexistent");
    qputenv("TARN_VERILATOR", elaborator);
    const QString nets = netsOf(&design);
    qputenv("PATH", path);
    qunsetenv("TARN_VERILATOR");
    QCOMPARE(nets, QStringLiteral("a b"));
    QCOMPARE(design.messages,
             QStringList{QStringLiteral("WARNING: Code that comments hide from synthesis is read "
                                        "too, because Perl is not installed.")});
}

void TestHiddenCode::aDesignMayDefineTheMacroOfSynthesisItself()
{
    TarnTest::DesignFixture design;
    design.set(TE::DesignInfo::Macros, QStringList{QStringLiteral("SYNTHESIS=7")});
    design.add(QStringLiteral("top.v"), "`ifdef SYNTHESIS\n`define HAS 1\n`endif\n"
                                        "module top; wire [`SYNTHESIS:`HAS] a; endmodule\n"
                                        "`undef SYNTHESIS\n`define SYNTHESIS\n");
    QVERIFY(design.extract());
    QCOMPARE(design.netlist->top()->buses().size(), 1);
    QCOMPARE(design.messages, QStringList());
}

TARN_TEST_MAIN(TestHiddenCode)
#include "tst_hiddencode.moc"
