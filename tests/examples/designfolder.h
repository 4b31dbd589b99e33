// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/netlisttext.h>
#include <netweir/rtlextraction.h>
#include <netweir/rtlnetlist.h>
#include <support/files.h>
#include <te/designmanager.h>
#include <te/project.h>

#include <QDir>
#include <QRegularExpression>

#include <algorithm>
#include <memory>

/// Designs in folders. A folder contains the sources, the list (design.f or project.json), the
/// expected netlist (expected.net, in the form of netlisttext.h, missing when the design cannot
/// open) and the expected messages (messages.txt, the beginning of each, missing when there are
/// none). A first line "jtag" of the netlist says that the design uses the JTAG primitive.
///
/// The netlists are written by hand, from the rules of the languages.
namespace TarnTest {

inline QStringList linesOf(const QString &path)
{
    return QString::fromUtf8(readFile(path)).split('\n', Qt::SkipEmptyParts);
}

/// The result of reading a folder.
struct Outcome
{
    QStringList tops;
    QStringList messages;
    std::unique_ptr<NETWEIR::RtlNetlist> netlist;
};

/// The project of the user: project.json, or design.f after the words of arguments.txt. When there
/// is none, a line of @p messages says why.
inline bool readProject(const QDir &folder, TE::Project *project, QStringList *messages)
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

inline Outcome openFolder(const QDir &folder)
{
    Outcome outcome;
    TE::Project project;
    if (!readProject(folder, &project, &outcome.messages))
        return outcome;
    TE::DesignManager manager;
    manager.setProject(project);
    QMap<QString, QVariant> info = manager.getSourceFileInfo();
    QStringList modules;
    NETWEIR::catchRtlModules(outcome.tops, modules, outcome.messages, info, nullptr);
    if (!outcome.messages.filter(QRegularExpression("^ERROR")).isEmpty())
        return outcome;
    NETWEIR::RtlNetlist *built = nullptr;
    NETWEIR::catchRtlNetsWithProgressDialog(&built, outcome.messages, nullptr);
    outcome.netlist.reset(built);
    return outcome;
}

/// The faults in the messages of a design, empty when there are none. Each message has to begin
/// with a line of messages.txt, and each line has to begin a message.
inline QString problemsOf(const QStringList &messages, const QStringList &expected)
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

/// Reads a folder. Returns what differs from its expectations, empty when nothing does.
inline QString differencesOf(const QDir &folder, Outcome *outcome)
{
    if (!folder.exists("expected.net") && !folder.exists("messages.txt"))
        return QStringLiteral("nothing is expected");
    *outcome = openFolder(folder);
    outcome->messages.replaceInStrings(folder.path() + '/', QString());

    const QString expected = QString::fromUtf8(readFile(folder.filePath("expected.net")));
    QString actual;
    if (outcome->netlist) {
        actual = outcome->netlist->usesJtagPrimitive() ? QStringLiteral("jtag\n") : QString();
        actual += netlistText(outcome->netlist->top());
    }
    QString problems = problemsOf(outcome->messages, linesOf(folder.filePath("messages.txt")));
    if (actual != expected)
        problems += "got:\n" + actual + "expected:\n" + expected;
    return problems;
}

/// Each net is found under its full name, which is unique.
inline bool namesAreConsistent(const NETWEIR::RtlNetlist &netlist)
{
    QList<NETWEIR::RtlNet *> nets = netlist.top()->singleNetsIncludeSub();
    for (const NETWEIR::RtlNetBus *bus : netlist.top()->netbusesIncludeSub())
        nets += bus->nets();
    return std::all_of(nets.cbegin(), nets.cend(), [&netlist](const NETWEIR::RtlNet *net) {
        return netlist.findNet(net->fullPathName()) == net;
    });
}

} // namespace TarnTest
