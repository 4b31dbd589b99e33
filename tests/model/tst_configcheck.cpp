// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configsamples.h"

#include <support/setting.h>
#include <support/testcase.h>

#include <model/configcheck.h>
#include <model/drivenbits.h>
#include <model/signalbits.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnetlist.h>
#include <probes/signalsamples.h>

#include <QElapsedTimer>
#include <QMap>
#include <QTest>

#include <random>

using TARN::checkConfig;
using TARN::SignalItem;
using TARN::TarnCore;
using TarnTest::bus;
using TarnTest::net;

namespace {

struct Port
{
    int index;
    QList<SignalItem> items;
};

struct Core
{
    int index;
    QList<Port> ins;
    QList<Port> outs;
    bool syncUserClock = false;
    QString userClock = {};
};

const QString NoPort = "At least one Probe In port or Probe Out port should be enabled";
const QString NoClock = "No synchronization clock specified";
const QString UnknownClock = "The output probe synchronizes with user clock does not exist";
const QString InvalidClock = "Invalid user clock selected for output probe synchronization";

/// Of each bit with several drivers, by its name, these drivers in order.
using Drivers = QMap<QString, QStringList>;

QString driverText(int port, int signal, int bit)
{
    return QStringLiteral("%1/%2/%3").arg(port).arg(signal).arg(bit);
}

Drivers severalDrivers(const QMap<int, QList<SignalItem>> &ports)
{
    Drivers drivers;
    for (auto port = ports.begin(); port != ports.end(); ++port) {
        TARN::forEachBit(*port, [&](const QString &name, int signal, int bit) {
            drivers[name] += driverText(port.key(), signal, bit);
        });
    }
    for (auto bit = drivers.begin(); bit != drivers.end();) {
        bit->sort();
        bit = bit->size() > 1 ? bit + 1 : drivers.erase(bit);
    }
    return drivers;
}

Drivers severalDrivers(const TARN::DrivenBits &bits)
{
    Drivers drivers;
    for (int i = 0; i < bits.severalCount(); ++i) {
        QStringList &texts = drivers[bits.name(i)];
        for (const TARN::DrivenBits::Driver &driver : bits.drivers(i))
            texts += driverText(driver.port, driver.signal, driver.bit);
        texts.sort();
    }
    return drivers;
}

Cores coresOf(const QList<Core> &descriptions)
{
    Cores cores;
    for (const Core &description : descriptions) {
        TarnCore *core = cores.add(description.index);
        core->syncUserClock = description.syncUserClock;
        core->userClock = description.userClock;
        for (const Port &port : description.ins) {
            core->addProbeIn(port.index);
            core->probeIns.last()->signals = port.items;
        }
        for (const Port &port : description.outs) {
            core->addProbeOut(port.index);
            core->probeOuts.last()->signals = port.items;
        }
    }
    return cores;
}

/// A netlist with the net "top/clk", which is driven, and the net "top/mem", which cannot be read.
std::unique_ptr<NETWEIR::RtlNetlist> netlist()
{
    NETWEIR::NetlistBuilder builder("top");
    NETWEIR::NetMarks unreadable;
    unreadable.excludedForProbeIn = true;
    NETWEIR::NetMarks driven;
    driven.excludedForProbeOut = true;
    builder.addNet(builder.top(), "clk", driven);
    builder.addNet(builder.top(), "mem", unreadable);
    return builder.take();
}

} // namespace

Q_DECLARE_METATYPE(Core)

class TestConfigCheck : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void rulesOfPortsAndDrivers_data()
    {
        QTest::addColumn<QList<Core>>("description");
        QTest::addColumn<QStringList>("errors");
        const QList<SignalItem> s{net("s")};
        const QString umlaut(QChar(0xe4));
        const QList<SignalItem> unsorted{net("z"), net(umlaut), net("a"), net("B")};
        const auto twoDrivers = [](const QString &name) {
            return "ERROR:Signal \"" + name +
                   "\" has multiple drivers(tarn_0->Probe Out0, tarn_1->Probe Out0,)";
        };

        QTest::newRow("no core") << QList<Core>{} << QStringList{};
        QTest::newRow("no port") << QList<Core>{{0, {}, {}}} << QStringList{"Tarn 0: " + NoPort};
        QTest::newRow("ports without signals are not available")
            << QList<Core>{{0, {{0, {}}}, {{0, {}}}}} << QStringList{"Tarn 0: " + NoPort};
        QTest::newRow("one port of either kind is enough")
            << QList<Core>{{0, {{0, {net("a")}}}, {}}, {1, {}, {{0, {net("b")}}}}} << QStringList{};
        QTest::newRow("prefix has the index, drivers the position")
            << QList<Core>{{3, {}, {{1, s}, {2, s}}, true}}
            << QStringList{"Tarn 3: " + NoClock,
                           "ERROR:Signal \"s\" has multiple drivers(tarn_0->Probe Out1, "
                           "tarn_0->Probe Out2,)"};
        QTest::newRow("drivers of several cores, in order")
            << QList<Core>{{8, {}, {{0, s}}}, {4, {}, {{2, {bus("b[1:0]", {"s", "t"})}}}}}
            << QStringList{"ERROR:Signal \"s\" has multiple drivers(tarn_0->Probe Out0, "
                           "tarn_1->Probe Out2,)"};
        QTest::newRow("a bit twice in one port names the port twice")
            << QList<Core>{{0, {}, {{5, {net("b[0]"), bus("b[1:0]", {"b[1]", "b[0]"})}}}}}
            << QStringList{"ERROR:Signal \"b[0]\" has multiple drivers(tarn_0->Probe Out5, "
                           "tarn_0->Probe Out5,)"};
        QTest::newRow("sampled signals are no drivers")
            << QList<Core>{{0, {{0, s + s}, {1, s}}, {{0, s}}}} << QStringList{};
        QTest::newRow("multiple drivers come last, sorted by code units")
            << QList<Core>{{0, {}, {{0, unsorted}}, true}, {1, {}, {{0, unsorted}}, true}}
            << QStringList{"Tarn 0: " + NoClock, "Tarn 1: " + NoClock, twoDrivers("B"),
                           twoDrivers("a"),      twoDrivers("z"),      twoDrivers(umlaut)};
        QTest::newRow("placeholders in names stay")
            << QList<Core>{{0, {}, {{0, {net("%2 %1"), net("%2 %1")}}}}}
            << QStringList{"ERROR:Signal \"%2 %1\" has multiple drivers(tarn_0->Probe Out0, "
                           "tarn_0->Probe Out0,)"};
        QTest::newRow("port first, then clock, core by core")
            << QList<Core>{{1, {}, {}, true}, {0, {}, {}}}
            << QStringList{"Tarn 1: " + NoPort, "Tarn 1: " + NoClock, "Tarn 0: " + NoPort};
    }

    void rulesOfPortsAndDrivers()
    {
        QFETCH(QList<Core>, description);
        const Cores cores = coresOf(description);
        QTEST(checkConfig(cores.list, nullptr), "errors");
    }

    void clockRule_data()
    {
        QTest::addColumn<bool>("sync");
        QTest::addColumn<QString>("clock");
        QTest::addColumn<bool>("haveNetlist");
        QTest::addColumn<QString>("error");
        QTest::newRow("off, empty") << false << "" << true << "";
        QTest::newRow("off, unknown") << false << "top/none" << true << "";
        QTest::newRow("off, invalid") << false << "top/mem" << true << "";
        QTest::newRow("empty") << true << "" << true << NoClock;
        QTest::newRow("empty, no netlist") << true << "" << false << NoClock;
        QTest::newRow("good, though driven") << true << "top/clk" << true << "";
        QTest::newRow("unknown") << true << "clk" << true << UnknownClock;
        QTest::newRow("no netlist") << true << "top/clk" << false << UnknownClock;
        QTest::newRow("unreadable") << true << "top/mem" << true << InvalidClock;
    }

    void clockRule()
    {
        QFETCH(bool, sync);
        QFETCH(QString, clock);
        QFETCH(bool, haveNetlist);
        QFETCH(QString, error);
        const Cores cores = coresOf({{7, {{0, {net("s")}}}, {}, sync, clock}});
        const auto design = haveNetlist ? netlist() : nullptr;
        const QStringList expected =
            error.isEmpty() ? QStringList() : QStringList{"Tarn 7: " + error};
        QCOMPARE(checkConfig(cores.list, design.get()), expected);
    }

    void errorsTellWhatTheyAreAbout()
    {
        const QList<SignalItem> s{net("s")};
        const Cores cores = coresOf(
            {{9, {{0, s}}, {}}, {7, {}, {}, true}, {5, {}, {{0, s + s}}, true, "top/none"}});
        QStringList found;
        const QVector<TARN::ConfigError> errors = TARN::configErrors(cores.list, nullptr);
        for (const TARN::ConfigError &error : errors)
            found += QString("%1 %2 %3").arg(error.kind).arg(error.core).arg(error.name);
        QCOMPARE(found, QStringList({"0 1 ", "1 1 ", "1 2 ", "2 -1 s"}));
    }

    /// Ports come and go, some more than once between two looks at what they drive.
    void driversOfBitsFollowThePorts()
    {
        const quint32 seed = TarnTest::setting("TARN_DRIVERS_SEED", 1);
        qInfo("seed %u", seed);
        std::mt19937 random(seed);
        const auto below = [&random](int end) { return int(random() % quint32(end)); };
        TARN::DrivenBits bits;
        QMap<int, QList<SignalItem>> ports;
        for (int step = 0; step < 800; ++step) {
            if (ports.isEmpty() || below(100) < (step / 200 % 2 ? 30 : 70)) {
                QList<SignalItem> items;
                for (int i = below(6); i >= 0; --i)
                    items.append(below(4) ? net("n" + QString::number(below(400)))
                                          : bus("b" + QString::number(below(50)), 3));
                ports.insert(bits.add(items), items);
            } else {
                const int port = ports.keys().at(below(ports.size()));
                bits.remove(port);
                ports.remove(port);
            }
            if (below(3) == 0)
                continue;
            bits.settle();
            QCOMPARE(severalDrivers(bits), severalDrivers(ports));
        }
    }

    /// Every bit of a configuration at all limits in conflict, with few and with many names.
    void largestConfigurationIsCheckedQuickly_data()
    {
        QTest::addColumn<int>("names");
        QTest::newRow("one name") << 1;
        QTest::newRow("one name a bit of a port") << 256;
        QTest::newRow("every bit driven twice") << 16 * 64 * 256 / 2;
    }

    void largestConfigurationIsCheckedQuickly()
    {
        QFETCH(int, names);
        Cores cores;
        int bit = 0;
        for (int index = 0; index < 16; ++index) {
            TarnCore *core = cores.add(index);
            for (int port = 0; port < 64; ++port) {
                core->addProbeOut(port);
                for (int i = 0; i < 256; ++i)
                    core->probeOuts.last()->signals.append(
                        net("top/u_core/u_path/data[" + QString::number(bit++ % names) + ']'));
            }
        }
        QElapsedTimer timer;
        timer.start();
        const QStringList errors = checkConfig(cores.list, nullptr);
        const qint64 elapsed = timer.elapsed();
        QCOMPARE(errors.size(), names);
        qInfo("checked %d bits in %lld ms", bit, static_cast<long long>(elapsed));
        // Room for sanitizers on a busy machine; quadratic work takes minutes.
        QVERIFY2(elapsed < 10000, "too slow");
    }
};

TARN_TEST_MAIN(TestConfigCheck)
#include "tst_configcheck.moc"
