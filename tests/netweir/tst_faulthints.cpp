// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designfixture.h"

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

namespace {

const QLatin1String
    Advice(" Change its type to SystemVerilog in the project, or add -sv to the file "
           "list.");

QString wordOf(const char *word)
{
    return QStringLiteral("\"%1\" is a keyword of SystemVerilog, but the file is read as Verilog "
                          "1364-2005.")
               .arg(QLatin1String(word)) +
           Advice;
}

QString followers(int number)
{
    return QStringLiteral("%1 more error(s) that follow from those above").arg(number);
}

/// Messages about a design, without its folder.
QStringList messagesOf(TarnTest::DesignFixture *design)
{
    design->findModules();
    QStringList result = design->messages;
    return result.replaceInStrings(design->path(QString()) + QLatin1Char('/'), QString());
}

} // namespace

/// Errors of whole designs as users read them.
class TestFaultHints : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void wordsOfSystemVerilogAreNamed_data();
    void wordsOfSystemVerilogAreNamed();
    void wordsOfSystemVerilogMayBeNames();
    void packagesInVerilogFilesAreNamed();
    void otherErrorsAreLeftAlone_data();
    void otherErrorsAreLeftAlone();
    void theCauseComesOnce_data();
    void theCauseComesOnce();
};

void TestFaultHints::wordsOfSystemVerilogAreNamed_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("beginning");
    QTest::addColumn<QString>("end");
    const auto row = [](const char *word, const char *beginning, const char *text) {
        QTest::addRow("%s, %s", word, text)
            << QByteArray(text) << QString::fromUtf8(beginning) << wordOf(word);
    };
    row("logic", "ERROR: top.v:1:18: \"logic\"",
        "module top(input logic a, output logic b);\nassign b = a;\nendmodule\n");
    row("logic", "ERROR: top.v:2:7: syntax error, unexpected '['",
        "module top;\nlogic [3:0] c;\nlogic d;\nendmodule\n");
    row("logic", "ERROR: top.v:2:1: \"logic\"", "module top;\nlogic d;\nlogic e;\nendmodule\n");
    row("int", "ERROR: top.v:2:1: \"int\"", "module top;\nint d; bit e;\nendmodule\n");
    row("always_ff", "ERROR: top.v:2:11: syntax error",
        "module top(input a, output reg b);\nalways_ff @(posedge a) b <= 1;\n\n\n\n\n\n"
        "always_comb begin b = a; end\nendmodule\n");
    row("always_comb", "ERROR: top.v:3:1: syntax error",
        "module top(input a, output reg b);\nalways_comb\nbegin b = a; end\nendmodule\n");
    row("always_comb", "ERROR: top.v:2:15: syntax error",
        "module top(input a, output reg b);\nalways_comb b = a;\nendmodule\n");
    row("typedef", "ERROR: top.v:2:14: syntax error",
        "module top;\ntypedef enum {A, B} t;\nt x;\nendmodule\n");
    row("interface", "ERROR: top.v:1:1: syntax error",
        "interface x;\nlogic a;\nendinterface\nmodule top; endmodule\n");
    row("package", "ERROR: top.v:1:1: syntax error",
        "package p;\nparameter X = 1;\nendpackage\nmodule top; endmodule\n");
    row("import", "ERROR: top.v:2:9: syntax error",
        "module top;\nimport p::*;\nwire [X:0] d; endmodule\n");
    row("unique", "ERROR: top.v:3:8: syntax error",
        "module top; reg a;\nalways @(*) begin\nunique case (a) 1: a = 1; endcase end\n"
        "endmodule\n");
}

void TestFaultHints::wordsOfSystemVerilogAreNamed()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, beginning);
    QFETCH(QString, end);
    TarnTest::DesignFixture design;
    design.add(QStringLiteral("top.v"), text);
    const QStringList messages = messagesOf(&design);
    QVERIFY(!messages.isEmpty());
    QVERIFY2(messages.first().startsWith(beginning), qPrintable(messages.join('\n')));
    QVERIFY2(messages.first().endsWith(end), qPrintable(messages.join('\n')));
    QVERIFY2(messages.filter(QStringLiteral("ERROR")).size() == 1, qPrintable(messages.join('\n')));

    TarnTest::DesignFixture changed;
    changed.add(QStringLiteral("top.v"), text, TE::SystemVerilogFile);
    const QString error = messagesOf(&changed).join('\n');
    QVERIFY2(!error.contains(QLatin1String("is a word of")), qPrintable(error));
}

void TestFaultHints::wordsOfSystemVerilogMayBeNames()
{
    TarnTest::DesignFixture design;
    design.add(QStringLiteral("top.v"), "module top(input do, output logic, bit);\n"
                                        "wire package = do; assign logic = package;\n"
                                        "int interface(.byte(bit)); endmodule\n"
                                        "module int(output byte); endmodule\n");
    QVERIFY2(design.extract(), qPrintable(design.messages.join('\n')));
    QCOMPARE(design.messages, QStringList());
}

void TestFaultHints::packagesInVerilogFilesAreNamed()
{
    TarnTest::DesignFixture design;
    design.add(QStringLiteral("p.v"), "\npackage p;\nparameter X = 1;\nendpackage\n");
    design.add(QStringLiteral("top.sv"), "module top; import p::*; wire [X:0] d; endmodule\n");
    QCOMPARE(messagesOf(&design).value(0),
             QStringLiteral("ERROR: top.sv:1:20: The package \"p\" is declared in p.v:2, which is "
                            "read as Verilog.") +
                 Advice);
}

void TestFaultHints::otherErrorsAreLeftAlone_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("syntax") << QByteArray("module top;\nwire a\nwire logic;\nendmodule\n")
                            << QStringList{QStringLiteral(
                                   "ERROR: top.v:3:1: syntax error, unexpected wire, expecting ',' "
                                   "or ';'")};
    QTest::newRow("word in the line in front")
        << QByteArray("module top;\nwire logic; wire a;\nwire = 1;\nendmodule\n")
        << QStringList{QStringLiteral("ERROR: top.v:3:6: syntax error, unexpected '=', expecting "
                                      "IDENTIFIER or do or final or randomize")};
    QTest::newRow("expression")
        << QByteArray("module top;\nwire a, b, c;\nassign a = b c;\nendmodule\n")
        << QStringList{QStringLiteral("ERROR: top.v:3:14: syntax error, unexpected IDENTIFIER, "
                                      "expecting ',' or ';'")};
    QTest::newRow("undeclared")
        << QByteArray("module top;\nwire b;\nassign b = inside;\nendmodule\n")
        << QStringList{
               QStringLiteral("ERROR: top.v:3:12: Can't find definition of variable: 'inside'")};
}

void TestFaultHints::otherErrorsAreLeftAlone()
{
    QFETCH(QByteArray, text);
    TarnTest::DesignFixture design;
    design.add(QStringLiteral("top.v"), text);
    QTEST(messagesOf(&design), "expected");
}

void TestFaultHints::theCauseComesOnce_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<QByteArray>("other");
    const auto row = [](const char *name, const char *text, const QStringList &expected,
                        const char *other = "") {
        QTest::newRow(name) << QByteArray(text) << expected << QByteArray(other);
    };
    row("type of a port", "module top(input t a,\n output t b);\nendmodule\n",
        {QStringLiteral("ERROR: top.sv:1:18: The type \"t\" is not defined. Add the file that "
                        "defines it."),
         followers(1)});
    row("type of a variable", "module top;\nt a;\n\n\n\n\n\nt b;\nendmodule\n",
        {QStringLiteral("ERROR: top.sv:2:1: The module or type \"t\" is not defined. Add the file "
                        "that defines it."),
         followers(1)});
    row("type with a range", "module top;\nt [3:0] a;\nendmodule\n",
        {QStringLiteral("ERROR: top.sv:2:3: syntax error, unexpected '[', expecting IDENTIFIER or "
                        "randomize. \"t\" may be a type that no file defines."),
         followers(1)},
        "module n;\nt [2:0] b;\nendmodule\n");
    row("macro", "module top;\nwire [`WIDTH-1:0] a;\nwire [`WIDTH-1:0] b;\nendmodule\n",
        {QStringLiteral("ERROR: top.sv:2:7: The macro `WIDTH is not defined. Define it in the "
                        "options or in a file that is read earlier."),
         followers(3)},
        "module n;\n\n\n\n\nwire [`WIDTH:0] b;\nendmodule\n");
    row("macro that is a statement",
        "module top;\nreg a;\n`DFF(a, b)\nalways @* begin `CALL end\nendmodule\n",
        {QStringLiteral("ERROR: top.sv:3:1: The macro `DFF is not defined. Define it in the "
                        "options or in a file that is read earlier."),
         QStringLiteral("ERROR: top.sv:4:17: The macro `CALL is not defined. Define it in the "
                        "options or in a file that is read earlier."),
         followers(1)});
    row("include", "`include \"none.vh\"\nmodule top;\nwire [`WIDTH:0] a;\nendmodule\n",
        {QStringLiteral("ERROR: top.sv:1:10: Cannot find the include file \"none.vh\". Add its "
                        "folder to the include paths."),
         followers(1)},
        "`include \"none.vh\"\nmodule n; endmodule\n");
    row("package by its scope",
        "module top;\np::t a;\n\n\n\n\n\nq::t b; wire c = p::X;\nendmodule\n",
        {QStringLiteral("ERROR: top.sv:2:1: No file declares the package \"p\". Add the file that "
                        "declares it."),
         QStringLiteral("ERROR: top.sv:8:1: No file declares the package \"q\". Add the file that "
                        "declares it."),
         followers(2)});
    row("independent errors", "module top;\nwire = 1;\nendmodule\n",
        {QStringLiteral("ERROR: top.sv:2:6: syntax error, unexpected '=', expecting IDENTIFIER or "
                        "do or final or randomize"),
         QStringLiteral("ERROR: n.sv:2:1: syntax error, unexpected endmodule, expecting ',' or "
                        "';'")},
        "module n; wire a\nendmodule\n");
}

void TestFaultHints::theCauseComesOnce()
{
    QFETCH(QByteArray, text);
    TarnTest::DesignFixture design;
    QFETCH(QByteArray, other);
    design.add(QStringLiteral("top.sv"), text);
    if (!other.isEmpty())
        design.add(QStringLiteral("n.sv"), other);
    design.set(TE::DesignInfo::Top, QStringLiteral("top"));
    QTEST(messagesOf(&design), "expected");
}

TARN_TEST_MAIN(TestFaultHints)
#include "tst_faulthints.moc"
