// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "renametable.h"

#include <support/testcase.h>

#include <netweir/hierachy.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>

#include <QCoreApplication>
#include <QSet>
#include <QTest>

using TARN::ProbeType;
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

QTEST_GUILESS_MAIN(TestRenames)
#include "tst_renames.moc"
