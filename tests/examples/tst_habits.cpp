// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/netlisttext.h>
#include <netweir/rtlextraction.h>
#include <netweir/rtlnetlist.h>
#include <support/files.h>
#include <support/testcase.h>
#include <te/designmanager.h>
#include <te/project.h>

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QtTest>

#include <algorithm>
#include <memory>

namespace {

/// Variables that the file lists use. Nobody sets NOBODY_SETS_THIS.
void setEnvironment(const QDir &folder)
{
    qputenv("PROJECT_ROOT", folder.path().toLocal8Bit());
    qputenv("LIBRARY_NAME", "common_cells");
}

QStringList linesOf(const QString &path)
{
    return QString::fromUtf8(TarnTest::readFile(path)).split('\n', Qt::SkipEmptyParts);
}

/// The result of reading a habit.
struct Outcome
{
    QStringList messages;
    std::unique_ptr<NETWEIR::RtlNetlist> netlist;
};

/// The project of the user: project.json, or design.f after the words of arguments.txt. When there
/// is none, a line of @p messages says why.
bool readProject(const QDir &folder, TE::Project *project, QStringList *messages)
{
    QString error;
    bool good = false;
    if (folder.exists("project.json")) {
        good = TE::readProject(folder.filePath("project.json"), project, &error);
    } else {
        QStringList arguments;
        for (const QString &line : linesOf(folder.filePath("arguments.txt")))
            arguments += line.split(' ');
        arguments += {"-f", "design.f"};
        good = TE::projectFromArguments(arguments, folder.path(), project, messages, &error);
    }
    if (!good)
        messages->append("ERROR: " + error);
    return good;
}

Outcome open(const QDir &folder)
{
    Outcome outcome;
    TE::Project project;
    if (!readProject(folder, &project, &outcome.messages))
        return outcome;
    TE::DesignManager manager;
    manager.setProject(project);
    QMap<QString, QVariant> info = manager.getSourceFileInfo();
    QStringList tops;
    QStringList modules;
    NETWEIR::catchRtlModules(tops, modules, outcome.messages, info, nullptr);
    if (!outcome.messages.filter(QRegularExpression("^ERROR")).isEmpty())
        return outcome;
    NETWEIR::RtlNetlist *built = nullptr;
    NETWEIR::catchRtlNetsWithProgressDialog(&built, outcome.messages, nullptr);
    outcome.netlist.reset(built);
    return outcome;
}

/// The faults in the messages of a habit, empty when there are none. Each message has to begin with
/// a line of messages.txt, and each line has to begin a message.
QString problemsOf(const QStringList &messages, const QStringList &expected)
{
    QString problems;
    for (const QString &text : expected) {
        const bool said =
            std::any_of(messages.begin(), messages.end(),
                        [&text](const QString &message) { return message.startsWith(text); });
        if (!said)
            problems += "no message: " + text + '\n';
    }
    for (const QString &message : messages) {
        const bool isExpected =
            std::any_of(expected.begin(), expected.end(),
                        [&message](const QString &text) { return message.startsWith(text); });
        if (!isExpected)
            problems += "not expected: " + message + '\n';
    }
    return problems;
}

} // namespace

/// Designs as users write them. Each shows a common habit of listing, guarding, ordering or writing
/// files. A folder contains the sources, the list (design.f or project.json), the expected netlist
/// (expected.net, in the form of netlisttext.h, missing when the design cannot open) and the
/// expected messages (messages.txt, the beginning of each, missing when there are none).
///
/// The netlists are written by hand, from the rules of the language.
class TestHabits : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void habitOpens_data();
    void habitOpens();
};

void TestHabits::habitOpens_data()
{
    QTest::addColumn<QString>("habit");
    const QStringList habits =
        QDir(TARN_HABITS_DIR).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    QVERIFY(habits.size() >= 40);
    for (const QString &habit : habits)
        QTest::newRow(qPrintable(habit)) << habit;
}

void TestHabits::habitOpens()
{
    QFETCH(QString, habit);
    const QDir folder(QStringLiteral(TARN_HABITS_DIR "/") + habit);
    QVERIFY(folder.exists("expected.net") || folder.exists("messages.txt"));
    setEnvironment(folder);
    Outcome outcome = open(folder);
    outcome.messages.replaceInStrings(folder.path() + '/', QString());

    const QString expected = QString::fromUtf8(TarnTest::readFile(folder.filePath("expected.net")));
    const QString actual =
        outcome.netlist ? TarnTest::netlistText(outcome.netlist->top()) : QString();
    QString problems = problemsOf(outcome.messages, linesOf(folder.filePath("messages.txt")));
    if (actual != expected)
        problems += "got:\n" + actual + "expected:\n" + expected;
    QVERIFY2(problems.isEmpty(), qPrintable('\n' + problems));
}

TARN_TEST_MAIN(TestHabits)
#include "tst_habits.moc"
