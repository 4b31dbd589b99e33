// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configsamples.h"

#include <model/configdifference.h>
#include <model/configsnapshot.h>
#include <probes/signalsamples.h>
#include <support/testcase.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>

#include <functional>
#include <limits>

using TARN::ConfigSnapshot;
using TARN::SignalItem;
using TARN::snapshotOf;
using TARN::TarnCore;
using TarnTest::bus;
using TarnTest::net;

namespace {

using Edit = std::function<void(TarnCore *)>;

/// "<kind>*<count> core.port.signal", with 'i' or 'o' before the port.
QString textOf(const TARN::ConfigDifference &difference)
{
    static const char *const kinds[] = {"none",    "cores+", "cores-", "ports+", "ports-",
                                        "signals", "value",  "clock",  "several"};
    return QStringLiteral("%1*%2 %3.%4%5.%6")
        .arg(QLatin1String(kinds[difference.kind]))
        .arg(difference.count)
        .arg(difference.core)
        .arg(difference.type == TARN::ProbeTypeOut ? QLatin1Char('o') : QLatin1Char('i'))
        .arg(difference.port)
        .arg(difference.signal);
}

/// One core for each letter, told apart by its clock; each with two ports of either kind.
Cores namedCores(const QString &letters)
{
    Cores cores;
    for (const QChar letter : letters) {
        TarnCore *core = cores.add(cores.list.size());
        core->userClock = letter;
        for (int i = 0; i < 2; ++i) {
            core->addProbeIn(i);
            core->addProbeOut(i);
            core->probeIns.last()->signals = {net(letter + QStringLiteral("/in")),
                                              bus(letter + QStringLiteral("/bus"), 4)};
            core->probeOuts.last()->signals = {bus(letter + QStringLiteral("/out"), 8)};
            core->probeOuts.last()->initialValue = QStringLiteral("0x1%1").arg(i);
        }
    }
    return cores;
}

/// For each core the position in @p former of the same object, '-' for a new one.
QString originOf(const ConfigSnapshot &snapshot, const ConfigSnapshot &former)
{
    QString origins;
    for (const ConfigSnapshot::Core &core : snapshot.cores) {
        QString origin = QStringLiteral("-");
        for (int i = 0; i < former.cores.size(); ++i) {
            if (former.cores.at(i).content == core.content)
                origin = QString::number(i);
        }
        origins += origin;
    }
    return origins;
}

/// The configuration at all limits.
Cores largestCores()
{
    Cores cores;
    for (int c = 0; c < 16; ++c) {
        TarnCore *core = cores.add(c);
        for (int i = 0; i < 64; ++i) {
            core->addProbeIn(i);
            core->addProbeOut(i);
            core->probeIns.last()->signals = {
                bus(QStringLiteral("top/in%1_%2").arg(c).arg(i), 128)};
            core->probeOuts.last()->signals = {
                bus(QStringLiteral("top/out%1_%2").arg(c).arg(i), 128)};
            core->probeOuts.last()->initialValue =
                QStringLiteral("0x") + QString(32, QLatin1Char('A'));
        }
    }
    return cores;
}

} // namespace

Q_DECLARE_METATYPE(Edit)

class TestConfigSnapshot : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void coresRoundTrip();
    void newCoresAreIndependent();
    void unchangedCoresAreTheSameObject();
    void equalListsWithoutCommonMemoryAreTheSameObject();
    void anEditRenewsItsPortAlone_data();
    void anEditRenewsItsPortAlone();
    void theModuleIsKeptButNotCompared();
    void coresAroundAGapAreShared_data();
    void coresAroundAGapAreShared();
    void signalsAreComparedInEveryField_data();
    void signalsAreComparedInEveryField();
    void deeplyNestedMembersAreCompared();
    void sharedSignalsNeedNoSecondComparison();
    void anUnchangedLargeConfigurationTakesLittleTime();
    void differenceNamesTheEditAndItsPlace_data();
    void differenceNamesTheEditAndItsPlace();
    void oneCoreMoreOrLessIsTheOnlyDifference_data();
    void oneCoreMoreOrLessIsTheOnlyDifference();
};

void TestConfigSnapshot::coresRoundTrip()
{
    const Cores cores = sampleCores();
    const ConfigSnapshot snapshot = snapshotOf(cores.list);
    QCOMPARE(coresText(Cores(TARN::newCores(snapshot)).list), coresText(cores.list));
    QVERIFY(TARN::newCores(ConfigSnapshot()).isEmpty());
}

void TestConfigSnapshot::newCoresAreIndependent()
{
    const Cores cores = namedCores(QStringLiteral("a"));
    const ConfigSnapshot snapshot = snapshotOf(cores.list);
    const QString before = coresText(cores.list);
    cores.list.first()->probeIns.first()->signals[1].members[2].name = QStringLiteral("other");
    cores.list.first()->probeOuts.last()->initialValue.clear();
    cores.list.first()->removeProbeIn(1);
    QCOMPARE(coresText(Cores(TARN::newCores(snapshot)).list), before);
}

void TestConfigSnapshot::unchangedCoresAreTheSameObject()
{
    const Cores cores = sampleCores();
    const ConfigSnapshot first = snapshotOf(cores.list);
    const ConfigSnapshot second = snapshotOf(cores.list, first);
    QVERIFY(TARN::sameObjects(first, second));

    // The number belongs to the snapshot, not to the shared object.
    cores.list.last()->index = 9;
    const ConfigSnapshot third = snapshotOf(cores.list, second);
    QCOMPARE(originOf(third, second), QStringLiteral("01"));
    QCOMPARE(third.cores.last().index, 9);
    QVERIFY(!TARN::sameObjects(second, third));
}

void TestConfigSnapshot::equalListsWithoutCommonMemoryAreTheSameObject()
{
    const ConfigSnapshot first = snapshotOf(namedCores(QStringLiteral("ab")).list);
    const ConfigSnapshot second = snapshotOf(namedCores(QStringLiteral("ab")).list, first);
    QVERIFY(TARN::sameObjects(first, second));
}

void TestConfigSnapshot::anEditRenewsItsPortAlone_data()
{
    QTest::addColumn<Edit>("edit");
    QTest::addColumn<QString>("renewed");
    const auto row = [](const char *name, const QString &renewed, const Edit &edit) {
        QTest::newRow(name) << edit << renewed;
    };
    row("signal", QStringLiteral("in1"),
        [](TarnCore *core) { core->probeIns.at(1)->signals.append(net(QStringLiteral("top/x"))); });
    row("no signals", QStringLiteral("out0"),
        [](TarnCore *core) { core->probeOuts.at(0)->signals.clear(); });
    row("member", QStringLiteral("out1"), [](TarnCore *core) {
        core->probeOuts.at(1)->signals[0].members[3].name = QStringLiteral("top/x");
    });
    row("value", QStringLiteral("out0"),
        [](TarnCore *core) { core->probeOuts.at(0)->initialValue = QStringLiteral("0x0"); });
    row("port index", QStringLiteral("in0"),
        [](TarnCore *core) { core->probeIns.at(0)->index = 7; });
    row("clock", QString(), [](TarnCore *core) { core->userClock = QStringLiteral("top/clk"); });
    row("clock off", QString(), [](TarnCore *core) { core->syncUserClock = true; });
    row("port more", QStringLiteral("in2"), [](TarnCore *core) { core->addProbeIn(2); });
    row("port fewer", QString(), [](TarnCore *core) { core->removeProbeOut(1); });
}

void TestConfigSnapshot::anEditRenewsItsPortAlone()
{
    QFETCH(Edit, edit);
    QFETCH(QString, renewed);
    const Cores cores = namedCores(QStringLiteral("abc"));
    const ConfigSnapshot before = snapshotOf(cores.list);
    edit(cores.list.at(1));
    const ConfigSnapshot after = snapshotOf(cores.list, before);
    QCOMPARE(originOf(after, before), QStringLiteral("0-2"));
    QCOMPARE(coresText(Cores(TARN::newCores(after)).list), coresText(cores.list));

    const TARN::CoreSnapshot &former = *before.cores.at(1).content;
    const TARN::CoreSnapshot &content = *after.cores.at(1).content;
    QStringList others;
    for (int i = 0; i < content.probeIns.size(); ++i) {
        if (content.probeIns.at(i) != former.probeIns.value(i))
            others.append(QStringLiteral("in%1").arg(i));
    }
    for (int i = 0; i < content.probeOuts.size(); ++i) {
        if (content.probeOuts.at(i) != former.probeOuts.value(i))
            others.append(QStringLiteral("out%1").arg(i));
    }
    QCOMPARE(others.join(QLatin1Char(' ')), renewed);
}

void TestConfigSnapshot::theModuleIsKeptButNotCompared()
{
    const Cores cores = namedCores(QStringLiteral("a"));
    cores.list.first()->module = QStringLiteral("before");
    const ConfigSnapshot before = snapshotOf(cores.list);
    cores.list.first()->module = QStringLiteral("after");
    QVERIFY(TARN::sameObjects(snapshotOf(cores.list, before), before));
    QCOMPARE(Cores(TARN::newCores(before)).list.first()->module, QStringLiteral("before"));
}

void TestConfigSnapshot::coresAroundAGapAreShared_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("origins");
    QTest::newRow("none") << QString() << QString() << QString();
    QTest::newRow("first one") << QString() << QStringLiteral("a") << QStringLiteral("-");
    QTest::newRow("all gone") << QStringLiteral("abc") << QString() << QString();
    QTest::newRow("added at the end")
        << QStringLiteral("abc") << QStringLiteral("abcd") << QStringLiteral("012-");
    QTest::newRow("removed in the middle")
        << QStringLiteral("abcd") << QStringLiteral("acd") << QStringLiteral("023");
    QTest::newRow("removed in front")
        << QStringLiteral("abcd") << QStringLiteral("bcd") << QStringLiteral("123");
    QTest::newRow("two inserted") << QStringLiteral("abc") << QStringLiteral("axybc")
                                  << QStringLiteral("0--12");
    QTest::newRow("two in place of one")
        << QStringLiteral("abc") << QStringLiteral("axyc") << QStringLiteral("0--2");
    QTest::newRow("one of two equal ones")
        << QStringLiteral("aab") << QStringLiteral("ab") << QStringLiteral("02");
    QTest::newRow("a second equal one")
        << QStringLiteral("ab") << QStringLiteral("aab") << QStringLiteral("0-1");
}

void TestConfigSnapshot::coresAroundAGapAreShared()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    const Cores cores = namedCores(after);
    const ConfigSnapshot former = snapshotOf(namedCores(before).list);
    const ConfigSnapshot snapshot = snapshotOf(cores.list, former);
    QTEST(originOf(snapshot, former), "origins");
    QCOMPARE(coresText(Cores(TARN::newCores(snapshot)).list), coresText(cores.list));
}

void TestConfigSnapshot::signalsAreComparedInEveryField_data()
{
    QTest::addColumn<SignalItem>("other");
    const SignalItem item = bus(QStringLiteral("top/d"), 2);
    const auto row = [&](const char *name, const std::function<void(SignalItem *)> &change) {
        SignalItem other = item;
        change(&other);
        QTest::newRow(name) << other;
    };
    row("name", [](SignalItem *i) { i->name += QLatin1Char('x'); });
    row("display name", [](SignalItem *i) { i->displayName = QStringLiteral("d"); });
    row("enabled", [](SignalItem *i) { i->enabled = false; });
    row("usable", [](SignalItem *i) { i->usable = false; });
    row("kind", [](SignalItem *i) { i->kind = SignalItem::Net; });
    row("fewer members", [](SignalItem *i) { i->members.removeLast(); });
    row("member's name", [](SignalItem *i) { i->members[1].name.clear(); });
    row("member's usable", [](SignalItem *i) { i->members[0].usable = false; });
    row("member of member", [](SignalItem *i) { i->members[1].members.append(SignalItem()); });
}

void TestConfigSnapshot::signalsAreComparedInEveryField()
{
    QFETCH(SignalItem, other);
    const SignalItem item = bus(QStringLiteral("top/d"), 2);
    QVERIFY(TARN::sameSignals({item}, {bus(QStringLiteral("top/d"), 2)}));
    QVERIFY(!TARN::sameSignals({item}, {other}));
    QVERIFY(!TARN::sameSignals({item}, {item, item}));
    QVERIFY(!TARN::sameSignals({}, {item}));
}

void TestConfigSnapshot::deeplyNestedMembersAreCompared()
{
    const auto nested = [](const QString &innermost) {
        SignalItem item = net(innermost);
        for (int i = 0; i < 2000; ++i) {
            SignalItem outer = net(QStringLiteral("top/d"));
            outer.members.append(item);
            item = outer;
        }
        return QList<SignalItem>{item};
    };
    QVERIFY(TARN::sameSignals(nested(QStringLiteral("a")), nested(QStringLiteral("a"))));
    QVERIFY(!TARN::sameSignals(nested(QStringLiteral("a")), nested(QStringLiteral("b"))));
}

void TestConfigSnapshot::sharedSignalsNeedNoSecondComparison()
{
    const Cores cores = namedCores(QStringLiteral("a"));
    const ConfigSnapshot former = snapshotOf(namedCores(QStringLiteral("a")).list);
    const ConfigSnapshot snapshot = snapshotOf(cores.list, former);
    TARN::shareSignals(cores.list.first(), *snapshot.cores.first().content);
    for (int i = 0; i < 2; ++i) {
        const TARN::CoreSnapshot &content = *former.cores.first().content;
        QVERIFY(cores.list.first()->probeIns.at(i)->signals.isSharedWith(
            content.probeIns.at(i)->signals));
        QVERIFY(cores.list.first()->probeOuts.at(i)->signals.isSharedWith(
            content.probeOuts.at(i)->signals));
    }
    // Ports that came meanwhile stay as they are.
    cores.list.first()->addProbeIn(2);
    cores.list.first()->removeProbeOut(1);
    TARN::shareSignals(cores.list.first(), *snapshot.cores.first().content);
    QVERIFY(cores.list.first()->probeIns.at(2)->signals.isEmpty());
}

void TestConfigSnapshot::anUnchangedLargeConfigurationTakesLittleTime()
{
    const Cores cores = largestCores();
    const ConfigSnapshot first = snapshotOf(cores.list);
    // The least of several: other programs take time too.
    qint64 least = std::numeric_limits<qint64>::max();
    for (int i = 0; i < 20; ++i) {
        QElapsedTimer timer;
        timer.start();
        const ConfigSnapshot second = snapshotOf(cores.list, first);
        least = qMin(least, timer.nsecsElapsed());
        QVERIFY(TARN::sameObjects(first, second));
    }
    qInfo("%d ports compared in %.3f ms", 16 * 128, double(least) / 1e6);
    // Comparing the 262,144 bits themselves would take much longer.
    QVERIFY(least < 3 * 1000 * 1000);
}

void TestConfigSnapshot::differenceNamesTheEditAndItsPlace_data()
{
    QTest::addColumn<Edit>("edit");
    QTest::addColumn<QString>("forward");
    QTest::addColumn<QString>("back");
    const auto row = [](const char *name, const char *forward, const char *back, const Edit &edit) {
        QTest::newRow(name) << edit << QString::fromLatin1(forward) << QString::fromLatin1(back);
    };
    row("nothing", "none*0 -1.i-1.-1", "none*0 -1.i-1.-1", [](TarnCore *) {});
    row("port added", "ports+*1 1.i2.-1", "ports-*1 1.i1.-1",
        [](TarnCore *core) { core->addProbeIn(2); });
    row("first port removed", "ports-*1 1.o0.-1", "ports+*1 1.o0.-1", [](TarnCore *core) {
        core->removeProbeOut(0);
        core->updateProbeOut();
    });
    row("all ports removed", "ports-*2 1.i-1.-1", "ports+*2 1.i0.-1", [](TarnCore *core) {
        core->removeProbeIn(0);
        core->removeProbeIn(0);
    });
    row("signal appended", "signals*0 1.i1.2", "signals*0 1.i1.-1",
        [](TarnCore *core) { core->probeIns.at(1)->signals.append(net(QStringLiteral("top/x"))); });
    row("signal replaced", "signals*0 1.o0.0", "signals*0 1.o0.0", [](TarnCore *core) {
        core->probeOuts.at(0)->signals[0] = net(QStringLiteral("top/x"));
        core->probeOuts.at(0)->initialValue = QStringLiteral("0x1");
    });
    row("value", "value*0 1.o1.-1", "value*0 1.o1.-1",
        [](TarnCore *core) { core->probeOuts.at(1)->initialValue = QStringLiteral("0x0"); });
    row("clock", "clock*0 1.o-1.-1", "clock*0 1.o-1.-1",
        [](TarnCore *core) { core->syncUserClock = true; });
    row("number of a port", "several*0 1.i0.-1", "several*0 1.i0.-1",
        [](TarnCore *core) { core->probeIns.at(0)->index = 4; });
    row("two ports", "several*0 1.o0.-1", "several*0 1.o0.-1", [](TarnCore *core) {
        core->probeOuts.at(0)->initialValue = QStringLiteral("0x0");
        core->probeOuts.at(1)->initialValue = QStringLiteral("0x0");
    });
    row("port and clock", "several*1 1.i2.-1", "several*1 1.i1.-1", [](TarnCore *core) {
        core->addProbeIn(2);
        core->userClock.clear();
    });
}

void TestConfigSnapshot::differenceNamesTheEditAndItsPlace()
{
    QFETCH(Edit, edit);
    const Cores cores = namedCores(QStringLiteral("abc"));
    const ConfigSnapshot before = snapshotOf(cores.list);
    edit(cores.list.at(1));
    const ConfigSnapshot after = snapshotOf(cores.list, before);
    QTEST(textOf(TARN::difference(before, after)), "forward");
    QTEST(textOf(TARN::difference(after, before)), "back");
}

void TestConfigSnapshot::oneCoreMoreOrLessIsTheOnlyDifference_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *before, const char *after, const char *text) {
        QTest::addRow("%s to %s", before, after)
            << QString::fromLatin1(before) << QString::fromLatin1(after)
            << QString::fromLatin1(text);
    };
    row("", "ab", "cores+*2 0.i-1.-1");
    row("ab", "abc", "cores+*1 2.i-1.-1");
    row("ab", "xab", "cores+*1 0.i-1.-1");
    row("abc", "ac", "cores-*1 1.i-1.-1");
    row("abc", "ab", "cores-*1 1.i-1.-1");
    row("ab", "", "cores-*2 -1.i-1.-1");
    row("abc", "xyc", "several*0 0.i0.0");
    row("abc", "axyc", "several*0 1.i0.0");
}

void TestConfigSnapshot::oneCoreMoreOrLessIsTheOnlyDifference()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    const ConfigSnapshot former = snapshotOf(namedCores(before).list);
    const ConfigSnapshot snapshot = snapshotOf(namedCores(after).list, former);
    QTEST(textOf(TARN::difference(former, snapshot)), "text");
}

TARN_TEST_MAIN(TestConfigSnapshot)
#include "tst_configsnapshot.moc"
