// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/files.h>
#include <support/testcase.h>
#include <tool/command.h>
#include <tool/help.h>

#include <QApplication>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

using Tool::Command;
using Tool::Option;

namespace {

/// An option as a synopsis has it: "-o, --output FILE", "--in PATH".
QString synopsisOf(const Option &option)
{
    const QString name = option.name == "--output" ? "-o, --output"
                         : option.name == "--help" ? "-h, --help"
                                                   : option.name;
    return option.value.isEmpty() ? name : name + ' ' + option.value;
}

/// The text of a line such as .BI \-\-in " PATH": with two fonts the words are not separated.
QString textOfMacro(const QString &line)
{
    QStringList words;
    QRegularExpressionMatchIterator match =
        QRegularExpression("\"([^\"]*)\"|\\S+").globalMatch(line.section(' ', 1));
    while (match.hasNext()) {
        const QRegularExpressionMatch word = match.next();
        words.append(word.capturedStart(1) >= 0 ? word.captured(1) : word.captured());
    }
    return words.join(line.section(' ', 0, 0).size() == 2 ? " " : "");
}

/// The lines of the manual page, without the escapes and fonts of its language.
QStringList plainLines(const QByteArray &page)
{
    QStringList lines = QString::fromUtf8(page).split('\n');
    for (QString &line : lines) {
        line.replace(QRegularExpression("\\\\f[A-Z]"), "");
        line.replace("\\-", "-").replace("\\*(lq", "\"").replace("\\*(rq", "\"");
        if (line.startsWith(".B") || line.startsWith(".I"))
            line = textOfMacro(line);
    }
    return lines;
}

QStringList sorted(QStringList list)
{
    list.sort();
    return list;
}

} // namespace

/// Compares help texts, manual page and completion with the table of commands.
class TestManual : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void helpListsAllCommands();
    void helpIsOnNarrowLines();
    void helpHasAllOptions();
    void pageHasAllCommands();
    void pageHasAllOptions();
    void pageHasAllSteps();
    void completesCommands();
    void completesOptions();
    void completesValues();
    void completesSteps();
    void completesFiles_data();
    void completesFiles();

private:
    QStringList completions(const QStringList &words);

    QStringList m_page;
    QTemporaryDir m_folder;
};

void TestManual::initTestCase()
{
    m_page = plainLines(TarnTest::readFile(TARN_TOOL_DIR "/tarn.1"));
    QVERIFY(m_page.contains(".SH COMMANDS"));
    for (const char *file : {"a.tarn", "my core.TARN", "design.json", "top.v", "sub/b.tarn"})
        TarnTest::writeFile(m_folder.filePath(file), "");
}

void TestManual::helpListsAllCommands()
{
    const QString help = Tool::programHelp();
    for (const Command *command : Tool::commands()) {
        const QRegularExpression line("^  " + command->name + "  +" +
                                          QRegularExpression::escape(command->summary) + "$",
                                      QRegularExpression::MultilineOption);
        QVERIFY2(help.contains(line), qPrintable(command->name));
    }
}

void TestManual::helpIsOnNarrowLines()
{
    QStringList texts = {Tool::programHelp()};
    for (const Command *command : Tool::commands())
        texts.append(Tool::commandHelp(*command));
    for (const QString &text : qAsConst(texts)) {
        QVERIFY(text.endsWith('\n'));
        const QStringList lines = text.split('\n');
        for (const QString &line : lines)
            QVERIFY2(line.size() <= 80 && !line.endsWith(' '), qPrintable(line));
    }
}

void TestManual::helpHasAllOptions()
{
    for (const Command *command : Tool::commands()) {
        const QString help = Tool::commandHelp(*command);
        QVERIFY(help.startsWith("Usage: tarn " + command->name + " [OPTION...] " +
                                command->synopsis + '\n'));
        const QVector<Option> options = Tool::allOptions(*command);
        for (const Option &option : options)
            QVERIFY2(help.contains("\n  " + synopsisOf(option)), qPrintable(option.name));
    }
}

/// The heading of a command in the manual page. Without own options it names none.
static QString headingOf(const Command &command)
{
    const bool hasOptions = Tool::allOptions(command).size() > 1;
    return ".SS tarn " + command.name + (hasOptions ? " [OPTION...] " : " ") + command.synopsis;
}

void TestManual::pageHasAllCommands()
{
    QStringList expected;
    for (const Command *command : Tool::commands())
        expected.append(headingOf(*command));
    QCOMPARE(m_page.filter(QRegularExpression("^\\.SS ")), expected);
}

void TestManual::pageHasAllOptions()
{
    for (const Command *command : Tool::commands()) {
        const int begin = m_page.indexOf(headingOf(*command)) + 1;
        const int end = m_page.indexOf(QRegularExpression("^\\.S[SH] .*"), begin);
        QStringList found;
        for (int i = begin; i < end; ++i) {
            if (m_page.at(i - 1) == ".TP" && m_page.at(i).startsWith('-'))
                found.append(m_page.at(i));
        }
        QStringList expected;
        const QVector<Option> options = Tool::allOptions(*command);
        for (const Option &option : options) {
            if (option.name != "--help") // It stands at the end of all.
                expected.append(synopsisOf(option));
        }
        QCOMPARE(found, expected);
    }
    const int options = m_page.indexOf(".SH OPTIONS");
    QVERIFY(m_page.indexOf("-h, --help", options) > options);
}

void TestManual::pageHasAllSteps()
{
    const QString text = m_page.join('\n');
    for (const Command *command : Tool::commands()) {
        for (const QString &step : command->stepNames)
            QVERIFY2(text.contains(QRegularExpression("(\n|, )" + step + " ?")), qPrintable(step));
    }
}

/// What bash offers for the last of @p words.
QStringList TestManual::completions(const QStringList &words)
{
    QProcess bash;
    bash.setWorkingDirectory(m_folder.path());
    bash.start("bash", QStringList({"--norc", "-c",
                                    "set -u; source '" TARN_TOOL_DIR "/tarn.bash'\n"
                                    "COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1))\n"
                                    "_tarn\n"
                                    "[ ${#COMPREPLY[@]} -eq 0 ] || printf '%s\\n' "
                                    "\"${COMPREPLY[@]}\"",
                                    "bash", "tarn"}) +
                           words);
    if (!bash.waitForFinished())
        return {"bash does not end"};
    const QByteArray errors = bash.readAllStandardError();
    if (!errors.isEmpty())
        return {QString::fromUtf8(errors)};
    return sorted(QString::fromUtf8(bash.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts));
}

void TestManual::completesCommands()
{
    QStringList first;
    for (const Command *command : Tool::commands())
        first.append(command->name.section(' ', 0, 0));
    first.removeDuplicates();
    QCOMPARE(completions({""}), sorted(first + QStringList({"help", "-h", "--help", "--version"})));
    QCOMPARE(completions({"help", ""}), sorted(first));
    for (const Command *command : Tool::commands()) {
        const QStringList name = command->name.split(' ');
        const QStringList before = name.mid(0, name.size() - 1);
        QCOMPARE(completions(before + QStringList(name.last().left(4))), QStringList(name.last()));
        QCOMPARE(completions(QStringList("help") + name), QStringList(name.last()));
    }
}

void TestManual::completesOptions()
{
    for (const Command *command : Tool::commands()) {
        const QStringList name = command->name.split(' ');
        QStringList expected = {"-h"};
        if (command->hasOutput)
            expected.append("-o");
        const QVector<Option> options = Tool::allOptions(*command);
        for (const Option &option : options) {
            expected.append(option.name);
            QCOMPARE(completions(name + QStringList(option.name)).contains(option.name), true);
        }
        QStringList offered = completions(name + QStringList("-"));
        if (command->takesDesign) {
            for (const char *option : {"-f", "-F", "-I", "-D", "-v", "-y", "-sv", "--top",
                                       "--language", "--work", "--std"}) {
                QVERIFY2(offered.contains(option), option);
                if (!expected.contains(option))
                    offered.removeOne(option);
            }
            offered.removeDuplicates();
        }
        QCOMPARE(offered, sorted(expected));
        QVERIFY(completions(name + QStringList("--h")).contains("--help"));
    }
}

void TestManual::completesValues()
{
    const QStringList files = {"a.tarn", "design.json", "my core.TARN", "sub", "top.v"};
    for (const Command *command : Tool::commands()) {
        const QStringList name = command->name.split(' ');
        const QVector<Option> options = Tool::allOptions(*command);
        for (const Option &option : options) {
            if (option.value.isEmpty())
                continue;
            QStringList values = sorted(option.value.split('|'));
            if (option.value == "FILE")
                values = files;
            else if (values.size() == 1)
                values.clear();
            QCOMPARE(completions(name + QStringList({option.name, ""})), values);
            QCOMPARE(completions(name + QStringList({option.name, "="})), values);
            if (values.size() > 1 && values != files) {
                const QString last = values.last();
                QCOMPARE(completions(name + QStringList({option.name, "=", last.left(3)})),
                         QStringList(last));
            }
        }
        if (command->hasOutput)
            QCOMPARE(completions(name + QStringList({"-o", ""})), files);
    }
}

void TestManual::completesSteps()
{
    for (const Command *command : Tool::commands()) {
        if (command->words != Command::Words::Steps)
            continue;
        const QStringList beginning = {command->name, "a.tarn"};
        for (const QString &step : command->stepNames) {
            QVERIFY2(completions(beginning + QStringList(step.left(3))).contains(step),
                     qPrintable(step));
            QCOMPARE(completions(beginning + QStringList({step, ""})), sorted(command->stepNames));
            // The design comes before the steps.
            QCOMPARE(completions(beginning + QStringList({step, "-f"})), QStringList());
            const bool takesPatterns = step == "signals";
            QCOMPARE(completions(beginning + QStringList({step, "0.in0", "--wi"})),
                     takesPatterns ? QStringList("--wildcard") : QStringList());
        }
    }
}

void TestManual::completesFiles_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("configurations") << "show|" << QStringList({"a.tarn", "my core.TARN", "sub"});
    QTest::newRow("a beginning") << "show|my" << QStringList("my core.TARN");
    QTest::newRow("a folder") << "show|sub/" << QStringList("sub/b.tarn");
    QTest::newRow("behind an option") << "show|--json|a" << QStringList("a.tarn");
    QTest::newRow("of a command of two words") << "export|map|a" << QStringList("a.tarn");
    QTest::newRow("of a design") << "check|"
                                 << QStringList(
                                        {"a.tarn", "design.json", "my core.TARN", "sub", "top.v"});
    QTest::newRow("a list of a design") << "nets|-f|to" << QStringList("top.v");
    QTest::newRow("a folder of a design") << "nets|-I|" << QStringList("sub");
    QTest::newRow("no files for a top") << "nets|--top|" << QStringList();
    QTest::newRow("editions") << "nets|--std|" << QStringList({"08", "93"});
    QTest::newRow("the file of edit") << "edit|a" << QStringList("a.tarn");
    QTest::newRow("nothing unknown") << "frob|--" << QStringList("--help");
}

void TestManual::completesFiles()
{
    QFETCH(QString, line);
    QFETCH(QStringList, expected);
    QCOMPARE(completions(line.split('|')), expected);
}

TARN_TEST_MAIN(TestManual)
#include "tst_manual.moc"
