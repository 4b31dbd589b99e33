// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "renametable.h"

#include <support/testcase.h>

#include <audit/candidates.h>
#include <audit/designnames.h>
#include <netweir/hierachy.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>

#include <QCoreApplication>
#include <QSet>
#include <QTest>

#include <algorithm>
#include <chrono>

using TARN::CandidateSearch;
using TARN::ProbeType;
using TARN::Replacement;
using TarnTest::isBusName;
using TarnTest::MissingSignal;
using TarnTest::PrefixChange;
using TarnTest::Rename;

namespace {

/// The names of a netlist that a port of the kind can hold.
QSet<QString> usableNames(NETWEIR::RtlNetlist *netlist, ProbeType type)
{
    const auto isUsable = [type](const auto *signal) {
        return type == TARN::ProbeTypeIn ? !signal->excludedForProbeIn()
                                         : !signal->excludedForProbeOut();
    };
    QSet<QString> names;
    for (const NETWEIR::RtlNet *net : netlist->top()->singleNetsIncludeSub()) {
        if (isUsable(net))
            names.insert(net->fullPathName());
    }
    for (const NETWEIR::RtlNetBus *bus : netlist->top()->netbusesIncludeSub()) {
        if (!isUsable(bus))
            continue;
        names.insert(bus->fullBusName());
        for (const NETWEIR::RtlNet *net : bus->nets())
            names.insert(net->fullPathName());
    }
    return names;
}

QSet<QString> allNames(NETWEIR::RtlNetlist *netlist)
{
    return usableNames(netlist, TARN::ProbeTypeIn) + usableNames(netlist, TARN::ProbeTypeOut);
}

/// Without the '/' at the end that a prefix may have.
QString pathOf(QString prefix)
{
    if (prefix.endsWith('/'))
        prefix.chop(1);
    return prefix;
}

/// What the signal is called after the replacement.
QString renamed(const QString &name, const Replacement &by)
{
    if (by.kind == Replacement::Signal)
        return by.to;
    return pathOf(by.to) + name.mid(pathOf(by.from).size());
}

bool isPrefix(const Replacement &replacement, const PrefixChange &wanted)
{
    return replacement.kind == Replacement::Prefix && pathOf(replacement.from) == wanted.from &&
           pathOf(replacement.to) == wanted.to && replacement.explains == wanted.explains;
}

QString text(const Replacement &replacement)
{
    return QStringLiteral("%1 -> %2 (%3)")
        .arg(replacement.from, replacement.to)
        .arg(replacement.explains);
}

/// Whether the first candidate for a missing signal is the right one: for a signal that one of the
/// prefix changes explains, that change.
bool isRight(const MissingSignal &missing, const QList<PrefixChange> &prefixes,
             const QVector<Replacement> &candidates)
{
    if (candidates.isEmpty() || missing.successors.isEmpty())
        return candidates.isEmpty() && missing.successors.isEmpty();
    const Replacement &first = candidates.first();
    const bool explained =
        std::any_of(prefixes.cbegin(), prefixes.cend(), [&missing](const PrefixChange &prefix) {
            const QString name = prefix.to + missing.name.mid(prefix.from.size());
            return missing.name.startsWith(prefix.from + '/') && missing.successors.contains(name);
        });
    return missing.successors.contains(renamed(missing.name, first)) &&
           (!explained || first.kind == Replacement::Prefix);
}

/// What the search finds for one rename and an engineer would not; empty when there is nothing.
QStringList mistakes(const Rename &rename)
{
    const TARN::DesignNames names(rename.netlist.get());
    CandidateSearch search(names);
    QVector<TARN::MissingName> missingNames;
    for (const MissingSignal &missing : rename.missing)
        missingNames.append({missing.name, isBusName(missing.name), missing.type});
    search.setMissing(missingNames);
    while (!search.step(std::chrono::milliseconds(10))) {
    }

    QStringList mistakes;
    for (const MissingSignal &missing : rename.missing) {
        const QVector<Replacement> found = search.candidates(missing.name, missing.type);
        if (!isRight(missing, rename.prefixes, found)) {
            mistakes.append(missing.name + QStringLiteral(": ") +
                            (found.isEmpty() ? QStringLiteral("nothing") : text(found.first())));
        }
    }
    const QVector<Replacement> changes = search.prefixChanges();
    for (const PrefixChange &wanted : rename.prefixes) {
        const auto isWanted = [&wanted](const Replacement &found) {
            return isPrefix(found, wanted);
        };
        if (std::none_of(changes.cbegin(), changes.cend(), isWanted))
            mistakes.append(QStringLiteral("no change of ") + wanted.from);
    }
    return mistakes;
}

} // namespace

/// The table of renames: whether it is sound, and how often the search finds what an engineer would
/// take.
class TestRenames : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_renames = TarnTest::readRenames(QStringLiteral(TARN_RENAMES_FILE)); }

    void tableHasEnoughRows();
    void rowIsSound_data() { addRows(); }
    void rowIsSound();
    void firstCandidatesAreThoseOfAnEngineer();

private:
    void addRows();

    QList<Rename> m_renames;
};

void TestRenames::addRows()
{
    QTest::addColumn<int>("row");
    for (int i = 0; i < m_renames.size(); ++i)
        QTest::newRow(qPrintable(m_renames.at(i).title)) << i;
}

void TestRenames::tableHasEnoughRows()
{
    int withoutCandidate = 0;
    QSet<QString> titles;
    for (const Rename &rename : qAsConst(m_renames)) {
        titles.insert(rename.title);
        if (rename.missing.first().successors.isEmpty())
            ++withoutCandidate;
    }
    QCOMPARE(titles.size(), m_renames.size());
    QVERIFY(m_renames.size() >= 64);
    QVERIFY(withoutCandidate >= 6);
}

void TestRenames::rowIsSound()
{
    QFETCH(int, row);
    const Rename &rename = m_renames.at(row);
    const QSet<QString> names = allNames(rename.netlist.get());
    QSet<QString> successors;
    for (const MissingSignal &missing : rename.missing) {
        QVERIFY2(!names.contains(missing.name), qPrintable(missing.name));
        const QSet<QString> usable = usableNames(rename.netlist.get(), missing.type);
        for (const QString &successor : missing.successors) {
            QVERIFY2(usable.contains(successor), qPrintable(successor));
            successors.insert(successor);
        }
    }
    // There is something else to take by mistake.
    QVERIFY((names - successors).size() >= 4);

    for (const PrefixChange &prefix : rename.prefixes) {
        int explained = 0;
        for (const MissingSignal &missing : rename.missing) {
            const QString renamed = prefix.to + missing.name.mid(prefix.from.size());
            if (missing.name.startsWith(prefix.from + '/') && missing.successors.contains(renamed))
                ++explained;
        }
        QCOMPARE(explained, prefix.explains);
    }
}

void TestRenames::firstCandidatesAreThoseOfAnEngineer()
{
    int right = 0;
    for (const Rename &rename : qAsConst(m_renames)) {
        const QStringList wrong = mistakes(rename);
        if (wrong.isEmpty())
            ++right;
        else
            qInfo("%s: %s", qPrintable(rename.title), qPrintable(wrong.join(QStringLiteral("; "))));
    }
    qInfo("%d of %d renames", right, m_renames.size());
    QVERIFY(right * 60 >= m_renames.size() * 54);
}

QTEST_GUILESS_MAIN(TestRenames)
#include "tst_renames.moc"
