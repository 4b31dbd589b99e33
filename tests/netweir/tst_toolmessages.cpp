// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/verilator/toolmessages.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;

namespace {

QStringList userMessages(const QByteArray &output)
{
    return toUserMessages(parseToolOutput(output), [](const ToolMessage &message) {
        return Place{QString::fromUtf8(message.file), message.line, message.column};
    });
}

} // namespace

class TestToolMessages : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void readAsTheUserNeedsThem_data();
    void readAsTheUserNeedsThem();
    void knowTheirKind();
    void comeOnceEach();
    void showTheCauseAndCountWhatFollows_data();
    void showTheCauseAndCountWhatFollows();
    void endWithTheNumberLeftOut();
};

void TestToolMessages::readAsTheUserNeedsThem_data()
{
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *name, const char *output, const QStringList &expected) {
        QTest::newRow(name) << QByteArray(output) << expected;
    };
    row("nothing", "", {});
    row("error", "%Error: a.v:7:2: syntax error, unexpected IDENTIFIER\n",
        {QStringLiteral("ERROR: a.v:7:2: syntax error, unexpected IDENTIFIER")});
    row("error with a code", "%Error-PINNOTFOUND: a.v:1:28: Pin not found: 'zz'\n",
        {QStringLiteral("ERROR: a.v:1:28: Pin not found: 'zz'")});
    row("error without a place", "%Error: Specified --top-module 'x' was not found\n",
        {QStringLiteral("ERROR: Specified --top-module 'x' was not found")});
    row("warning", "%Warning-WIDTH: a.v:1:2: Too wide\n",
        {QStringLiteral("WARNING: a.v:1:2: Too wide")});
    row("colon in the text", "%Error: a.v:7:2: this: 3:4: that\n",
        {QStringLiteral("ERROR: a.v:7:2: this: 3:4: that")});
    row("colon and blank in the name", "%Error: a: b.v:7:2: text\n",
        {QStringLiteral("ERROR: a: b.v:7:2: text")});
    row("excerpts and advice",
        "%Error: a.v:7:2: text\n"
        "    7 | wire x\n"
        "      | ^~~~\n"
        "        ... For error description see https://example.org\n"
        "                 ... Use \"/* verilator lint_off X */\" and lint_on around source\n"
        "                 b.v:2:8: ... Location of original declaration\n"
        "%Error: Cannot continue\n"
        "%Error: Verilator aborted. Consider trying --debug --gdbbt\n"
        "%Error: Exiting due to 1 error(s)\n",
        {QStringLiteral("ERROR: a.v:7:2: text")});
    row("include",
        "%Error: a.v:1:10: Cannot find include file: x.vh\n"
        "%Error: a.v:1:10: This may be because there's no search path specified with -I<dir>.\n"
        "        ... Looked in:\n"
        "             x.vh\n",
        {QStringLiteral("ERROR: a.v:1:10: Cannot find the include file \"x.vh\". Add its folder to "
                        "the include paths.")});
    row("macro", "%Error: a.v:1:1: Define or directive not defined: '`X'\n",
        {QStringLiteral("ERROR: a.v:1:1: The macro `X is not defined. Define it in the options or "
                        "in a file that is read earlier.")});
    row("string", "%Error: a.v:8:5: Unterminated string\n",
        {QStringLiteral("ERROR: a.v:7:5: Unterminated string")});
    row("interface", "%Error: a.v:1:1: Cannot find file containing interface: 'x_if'\n",
        {QStringLiteral("ERROR: a.v:1:1: The interface \"x_if\" is not defined. Add the file that "
                        "defines it.")});
    row("internal error", "%Error: Internal Error: a.v:3:5: ../V3Ast.cpp:123: Bad node\n",
        {QStringLiteral("ERROR: a.v:3:5: The elaborator cannot read this construct (Internal "
                        "Error: Bad node).")});
    row("no line end", "%Error: a.v:7:2: text", {QStringLiteral("ERROR: a.v:7:2: text")});
}

void TestToolMessages::readAsTheUserNeedsThem()
{
    QFETCH(QByteArray, output);
    QFETCH(QStringList, expected);
    QCOMPARE(userMessages(output), expected);
}

void TestToolMessages::knowTheirKind()
{
    const QVector<ToolMessage> messages = parseToolOutput(
        "%Error: a-b.v:7:2: syntax error\n%Error-UNSUPPORTED: a.v:1:2: Unsupported: x\n");
    QCOMPARE(messages.size(), 2);
    QCOMPARE(messages[0].code, QByteArray());
    QCOMPARE(messages[1].code, QByteArray("UNSUPPORTED"));
    QCOMPARE(messages[1].file, QByteArray("a.v"));
}

void TestToolMessages::comeOnceEach()
{
    QCOMPARE(
        userMessages("%Error: a.v:1:1: x\n%Error: a.v:1:1: y\n%Error: a.v:1:1: x\n"),
        QStringList({QStringLiteral("ERROR: a.v:1:1: x"), QStringLiteral("ERROR: a.v:1:1: y")}));
}

void TestToolMessages::showTheCauseAndCountWhatFollows_data()
{
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *name, const QByteArrayList &errors,
                        const QStringList &expected) {
        QByteArray output;
        for (const QByteArray &error : errors)
            output += "%Error: " + error + '\n';
        QTest::newRow(name) << output << expected;
    };
    const auto followers = [](int number) {
        return QStringLiteral("%1 more error(s) that follow from those above").arg(number);
    };
    const QString syntax = QStringLiteral("ERROR: %1: syntax error, unexpected IDENTIFIER");
    const QByteArray unexpected(": syntax error, unexpected IDENTIFIER");
    row("syntax errors behind one",
        {"a.v:7:2" + unexpected, "a.v:7:9" + unexpected, "a.v:9:1" + unexpected,
         "a.v:12:1" + unexpected},
        {syntax.arg(QStringLiteral("a.v:7:2")), followers(3)});
    row("syntax errors apart",
        {"a.v:7:2" + unexpected, "b.v:8:9" + unexpected, "a.v:11:1" + unexpected},
        {syntax.arg(QStringLiteral("a.v:7:2")), syntax.arg(QStringLiteral("b.v:8:9")),
         syntax.arg(QStringLiteral("a.v:11:1"))});
    row("other errors behind a syntax error", {"a.v:7:2" + unexpected, "a.v:7:3: Bad"},
        {syntax.arg(QStringLiteral("a.v:7:2")), QStringLiteral("ERROR: a.v:7:3: Bad")});
    row("macro",
        {"a.v:3:1: Define or directive not defined: '`X'", "a.v:3:3" + unexpected,
         "b.v:9:1: Define or directive not defined: '`X'",
         "b.v:19:1: Define or directive not defined: '`Y'"},
        {QStringLiteral("ERROR: a.v:3:1: The macro `X is not defined. Define it in the options or "
                        "in a file that is read earlier."),
         QStringLiteral("ERROR: b.v:19:1: The macro `Y is not defined. Define it in the options or "
                        "in a file that is read earlier."),
         followers(2)});
    row("include",
        {"a.v:1:10: Cannot find include file: x.vh", "b.v:1:10: Cannot find include file: x.vh"},
        {QStringLiteral("ERROR: a.v:1:10: Cannot find the include file \"x.vh\". Add its folder "
                        "to the include paths."),
         followers(1)});
    row("type",
        {"a.v:1:1: Cannot find file containing module: 't'",
         "a.v:9:1: Cannot find file containing module: 't'"},
        {QStringLiteral("ERROR: a.v:1:1: The module or type \"t\" is not defined. Add the file "
                        "that defines it."),
         followers(1)});
    row("the same name in two files",
        {"a.v:1:1: Can't find definition of variable: 'x'",
         "a.v:5:1: Can't find definition of variable: 'x'",
         "b.v:1:1: Can't find definition of variable: 'x'"},
        {QStringLiteral("ERROR: a.v:1:1: Can't find definition of variable: 'x'"),
         QStringLiteral("ERROR: b.v:1:1: Can't find definition of variable: 'x'"), followers(1)});
}

void TestToolMessages::showTheCauseAndCountWhatFollows()
{
    QFETCH(QByteArray, output);
    QFETCH(QStringList, expected);
    QCOMPARE(userMessages(output), expected);
}

void TestToolMessages::endWithTheNumberLeftOut()
{
    QByteArray output;
    for (int i = 1; i <= 1234; ++i)
        output += "%Error: a.v:" + QByteArray::number(i) + ":1: x\n";
    const QStringList messages = userMessages(output);
    QCOMPARE(messages.size(), 1001);
    QCOMPARE(messages[999], QStringLiteral("ERROR: a.v:1000:1: x"));
    QCOMPARE(messages.last(), QStringLiteral("234 more message(s)"));
}

TARN_TEST_MAIN(TestToolMessages)
#include "tst_toolmessages.moc"
