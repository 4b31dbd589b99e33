// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/ghdl/ghdlmessages.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;

namespace {

const QByteArray Trace = "\n"
                         "******************** GHDL Bug occurred ***************************\n"
                         "Please report this bug on https://github.com/ghdl/ghdl/issues\n"
                         "GHDL release: 2.0.0 (tarball) [Dunoon edition]\n"
                         "Command line:\n"
                         "/usr/bin/ghdl-mcode -r top\n"
                         "Exception TYPES.INTERNAL_ERROR raised\n"
                         "Exception information:\n"
                         "raised TYPES.INTERNAL_ERROR : vhdl-errors.adb:30\n"
                         "Call stack traceback locations:\n"
                         "0x560c93dcdb27 0x560c93ef387b\n"
                         "******************************************************************\n";

QString lines(const QVector<GhdlMessage> &messages)
{
    QString result;
    for (const GhdlMessage &message : messages)
        result += QStringLiteral("%1|%2|%3|%4\n")
                      .arg(QString::fromUtf8(message.file))
                      .arg(message.line)
                      .arg(message.column)
                      .arg(QString::fromUtf8(message.text));
    return result;
}

} // namespace

class TestGhdlMessages final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsErrors_data();
    void findsErrors();
    void namesWhatIsMissing_data();
    void namesWhatIsMissing();
    void advises_data();
    void advises();
};

void TestGhdlMessages::findsErrors_data()
{
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QString>("expected");

    QTest::newRow("nothing") << QByteArray() << QString();
    QTest::newRow("analysis") << QByteArray("a.vhd:4:11: no declaration for \"t\"\r\n"
                                            "a.vhd:6:2: no declaration for \"y\"")
                              << "a.vhd|4|11|no declaration for \"t\"\n"
                                 "a.vhd|6|2|no declaration for \"y\"\n";
    QTest::newRow("mark of errors") << QByteArray("a.vhd:4:11:error: bad\n") << "a.vhd|4|11|bad\n";
    QTest::newRow("more lines") << QByteArray("u.vhd:3:30: can't associate 'a' with port \"a\"\n"
                                              "u.vhd:3:30: (type of 'a' is bit)\n"
                                              "t.vhd:3:21: (type of port \"a\" is std_logic)\n")
                                << "u.vhd|3|30|can't associate 'a' with port \"a\" (type of 'a' is "
                                   "bit) (type of port \"a\" is std_logic)\n";
    QTest::newRow("declared twice")
        << QByteArray("a.vhd:4:10: identifier \"x\" already used for a declaration\n"
                      "a.vhd:3:10: previous declaration: signal \"x\"\n")
        << "a.vhd|4|10|identifier \"x\" already used for a declaration in line 3\n";
    QTest::newRow("warnings") << QByteArray(
                                     "t.vhd:8:2:warning: instance \"u\" is not bound [-Wbinding]\n"
                                     "t.vhd:3:14:warning: (in default configuration of t(rtl))\n"
                                     "t.vhd:3:14: (in default configuration of t(rtl))\n")
                              << QString();
    QTest::newRow("remarks") << QByteArray("/usr/bin/ghdl-mcode: importation has failed due to "
                                           "compilation error\n"
                                           "/usr/bin/ghdl-mcode:error: error during elaboration\n")
                             << QString();
    QTest::newRow("elaboration")
        << QByteArray("/usr/bin/ghdl-mcode:error: bound check failure at a.vhd:7\n"
                      "  from: work.t(rtl).u.CMP_ELAB at a.vhd:2\n"
                      "  from: Elaboration of design\n"
                      "/usr/bin/ghdl-mcode:error: error during elaboration\n")
        << "a.vhd|7|0|bound check failure\n";
    QTest::newRow("place in the trace")
        << QByteArray("/usr/bin/ghdl-mcode:error: overflow detected\n"
                      "  from: process work.t(rtl).P1 at z2.vhd:14\n")
        << "z2.vhd|14|0|overflow detected\n";
    QTest::newRow("signal") << QByteArray("for signal: .md(rtl).x\n"
                                          "/usr/bin/ghdl-mcode:error: several sources for "
                                          "unresolved signal\n")
                            << "|0|0|several sources for unresolved signal: .md(rtl).x\n";
    QTest::newRow("top") << QByteArray("/usr/bin/ghdl-mcode: entity \"utop\" cannot be at the top "
                                       "of a design\n"
                                       "s0.vhd:14:22: (port \"a\" is unconstrained)\n")
                         << "s0.vhd|14|22|entity \"utop\" cannot be at the top of a design (port "
                            "\"a\" is unconstrained)\n";
    QTest::newRow("failure") << QByteArray("s0.vhd:25:64:@0ms:(report failure): no way\n"
                                           "/usr/bin/ghdl-mcode:error: report failed\n")
                             << "s0.vhd|25|64|report failure: no way\n";
    QTest::newRow("note") << QByteArray("s0.vhd:25:64:@0ms:(report note): W: 3\n") << QString();
    QTest::newRow("internal error")
        << Trace << "|0|0|internal error: TYPES.INTERNAL_ERROR : vhdl-errors.adb:30\n";
    QTest::newRow("cut trace") << Trace.left(200) << "|0|0|internal error\n";
    QTest::newRow("unknown construct")
        << "translate_expression: cannot handle IIR_KIND_EXTERNAL_SIGNAL_NAME (s0.vhd:19:94)\n" +
               Trace
        << "s0.vhd|19|94|cannot handle IIR_KIND_EXTERNAL_SIGNAL_NAME\n";
    QTest::newRow("garbage") << QByteArray("\x01\xff:::\n.vhd:1:1: x\na.vhd:x: y\n: error: \n")
                             << QString();
}

void TestGhdlMessages::findsErrors()
{
    QFETCH(QByteArray, output);
    QTEST(lines(parseGhdlErrors(output)), "expected");
}

void TestGhdlMessages::namesWhatIsMissing_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("unit");
    QTest::addColumn<QByteArray>("library");

    QTest::newRow("unit") << QByteArray("unit \"nope\" not found in library \"work\"")
                          << QByteArray("nope") << QByteArray();
    QTest::newRow("entity") << QByteArray("entity 'm1' was not analysed") << QByteArray("m1")
                            << QByteArray();
    QTest::newRow("package") << QByteArray("package \"px\" was not analysed") << QByteArray("px")
                             << QByteArray();
    QTest::newRow("library") << QByteArray("cannot find resource library \"lib\"") << QByteArray()
                             << QByteArray("lib");
    QTest::newRow("other") << QByteArray("no declaration for \"x\"") << QByteArray()
                           << QByteArray();
}

void TestGhdlMessages::namesWhatIsMissing()
{
    QFETCH(QByteArray, text);
    GhdlMessage message;
    message.text = text;
    QTEST(missingUnitOf(message), "unit");
    QTEST(missingLibraryOf(message), "library");
}

void TestGhdlMessages::advises_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("expected");

    QTest::newRow("as it is") << QByteArray("no declaration for \"x\"")
                              << "no declaration for \"x\"";
    QTest::newRow("width") << QByteArray("bound check failure")
                           << "A value or a width does not fit (bound check failure). Compare the "
                              "widths of the ports and what is connected to them, and the values "
                              "of the generics.";
    QTest::newRow("missing unit") << QByteArray("unit \"x\" not found in library \"work\"")
                                  << "unit \"x\" not found in library \"work\". Add the file that "
                                     "declares it.";
    const QString newer = QStringLiteral("Set the VHDL standard to 1076-2008 in the options of the "
                                         "project, or put --std 08 into the file list.");
    QTest::newRow("construct of a newer edition")
        << QByteArray("case generate not allowed before VHDL 2008. Compile with --std=08")
        << "case generate not allowed before VHDL 2008. " + newer;
    QTest::newRow("type of a newer edition")
        << QByteArray("array element of type \"t\" is not allowed before vhdl08")
        << "array element of type \"t\" is not allowed before vhdl08. " + newer;
    QTest::newRow("top") << QByteArray("entity \"t\" cannot be at the top of a design (port \"a\" "
                                       "is unconstrained and has no default value)")
                         << "The entity \"t\" cannot be the top (port \"a\" is unconstrained and "
                            "has no default value). Give the port a range or a default, or choose "
                            "another top.";
    QTest::newRow("external name")
        << QByteArray("cannot handle IIR_KIND_EXTERNAL_SIGNAL_NAME")
        << "External names (\"<< ... >>\") are not supported. Hide the code from synthesis or "
           "connect the signal through ports.";
    QTest::newRow("concatenation at an unconstrained port")
        << QByteArray("cannot handle IIR_KIND_CONCATENATION_OPERATOR")
        << "GHDL cannot read what is written here (cannot handle "
           "IIR_KIND_CONCATENATION_OPERATOR). Write it in another way, for example with a signal "
           "in place of an expression.";
    QTest::newRow("internal error")
        << QByteArray("internal error: X : y.adb:30")
        << "GHDL cannot read the design (internal error: X : y.adb:30). Reading fewer files may "
           "show which one it cannot read.";
}

void TestGhdlMessages::advises()
{
    QFETCH(QByteArray, text);
    QTEST(ghdlErrorText(text), "expected");
}

TARN_TEST_MAIN(TestGhdlMessages)
#include "tst_ghdlmessages.moc"
