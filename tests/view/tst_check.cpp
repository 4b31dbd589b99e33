// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/testcase.h>

#include <model/tarncore.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnetlist.h>
#include <probes/signalsamples.h>
#include <view/tarnoptionwidget.h>
#include <view/tarnview_p.h>

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QFileSystemWatcher>
#include <QTest>

using TARN::ProbeIn;
using TARN::SignalItem;
using TARN::TarnCore;
using TARN::private_impl::TarnViewPrivate;
using TarnTest::bus;
using TarnTest::net;

namespace {

/// A netlist with the net "top/clk" and the net "top/mem", which cannot be read.
NETWEIR::RtlNetlist *netlist()
{
    NETWEIR::NetlistBuilder builder("top");
    NETWEIR::NetMarks unreadable;
    unreadable.excludedForProbeIn = true;
    NETWEIR::NetMarks driven;
    driven.excludedForProbeOut = true;
    builder.addNet(builder.top(), "clk", driven);
    builder.addNet(builder.top(), "mem", unreadable);
    return builder.take().release();
}

TarnCore *addCore(TarnViewPrivate *document, int index)
{
    auto *core = new TarnCore(index);
    document->cores.append(core);
    return core;
}

void addIn(TarnCore *core, int index, const QList<SignalItem> &items)
{
    core->addProbeIn(index);
    core->probeIns.last()->signals = items;
}

void addOut(TarnCore *core, int index, const QList<SignalItem> &items)
{
    core->addProbeOut(index);
    core->probeOuts.last()->signals = items;
}

QString errorsOf(const TarnViewPrivate &document)
{
    QString errors = "former text";
    if (document.check(&errors) != errors.isEmpty())
        return "result and errors differ: " + errors;
    return errors;
}

} // namespace

class TestCheck : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void coreWithoutAvailablePort()
    {
        TarnViewPrivate document(nullptr);
        TarnCore *core = addCore(&document, 0);
        const QString expected =
            "Tarn 0: At least one Probe In port or Probe Out port should be enabled";
        QCOMPARE(errorsOf(document), expected);
        addIn(core, 0, {});
        addOut(core, 0, {});
        QCOMPARE(errorsOf(document), expected);
    }

    void onePortOfEitherKindIsEnough()
    {
        TarnViewPrivate document(nullptr);
        addIn(addCore(&document, 0), 0, {net("a")});
        addOut(addCore(&document, 1), 0, {net("b")});
        QCOMPARE(errorsOf(document), QString());
    }

    void prefixHasTheIndexAndDriversThePosition()
    {
        TarnViewPrivate document(nullptr);
        TarnCore *core = addCore(&document, 3);
        core->syncUserClock = true;
        addOut(core, 1, {net("top/s")});
        addOut(core, 2, {net("top/s")});
        QCOMPARE(errorsOf(document),
                 QStringLiteral("Tarn 3: No synchronization clock specified\n"
                                "ERROR:Signal \"top/s\" has multiple drivers(tarn_0->Probe Out1, "
                                "tarn_0->Probe Out2,)"));
    }

    void driversOfSeveralCoresAreNamedInOrder()
    {
        TarnViewPrivate document(nullptr);
        addOut(addCore(&document, 8), 0, {net("s")});
        addOut(addCore(&document, 4), 2, {bus("b[1:0]", {"s", "t"})});
        QCOMPARE(errorsOf(document),
                 QStringLiteral("ERROR:Signal \"s\" has multiple drivers(tarn_0->Probe Out0, "
                                "tarn_1->Probe Out2,)"));
    }

    void bitTwiceInOnePortNamesThePortTwice()
    {
        TarnViewPrivate document(nullptr);
        addOut(addCore(&document, 0), 5, {net("b[0]"), bus("b[1:0]", {"b[1]", "b[0]"})});
        QCOMPARE(errorsOf(document),
                 QStringLiteral("ERROR:Signal \"b[0]\" has multiple drivers(tarn_0->Probe Out5, "
                                "tarn_0->Probe Out5,)"));
    }

    void sampledSignalsAreNoDrivers()
    {
        TarnViewPrivate document(nullptr);
        TarnCore *core = addCore(&document, 0);
        addIn(core, 0, {net("s"), net("s")});
        addIn(core, 1, {net("s")});
        addOut(core, 0, {net("s")});
        QCOMPARE(errorsOf(document), QString());
    }

    void multipleDriversComeLastSortedByCodeUnits()
    {
        TarnViewPrivate document(nullptr);
        for (int index = 0; index < 2; ++index) {
            TarnCore *core = addCore(&document, index);
            core->syncUserClock = true;
            addOut(core, 0, {net("z"), net(QString(QChar(0xe4))), net("a"), net("B")});
        }
        QString expected = "Tarn 0: No synchronization clock specified\n"
                           "Tarn 1: No synchronization clock specified";
        const QStringList sorted{"B", "a", "z", QString(QChar(0xe4))};
        for (const QString &name : sorted)
            expected += "\nERROR:Signal \"" + name +
                        "\" has multiple drivers(tarn_0->Probe Out0, tarn_1->Probe Out0,)";
        QCOMPARE(errorsOf(document), expected);
    }

    void placeholdersInNamesStay()
    {
        TarnViewPrivate document(nullptr);
        addOut(addCore(&document, 0), 0, {net("%2 %1"), net("%2 %1")});
        QCOMPARE(errorsOf(document),
                 QStringLiteral("ERROR:Signal \"%2 %1\" has multiple drivers(tarn_0->Probe Out0, "
                                "tarn_0->Probe Out0,)"));
    }

    void clockRule_data()
    {
        QTest::addColumn<bool>("sync");
        QTest::addColumn<QString>("clock");
        QTest::addColumn<bool>("haveNetlist");
        QTest::addColumn<QString>("error");
        const QString none = "Tarn 7: No synchronization clock specified";
        const QString unknown =
            "Tarn 7: The output probe synchronizes with user clock does not exist";
        const QString invalid =
            "Tarn 7: Invalid user clock selected for output probe synchronization";
        QTest::newRow("off, empty") << false << "" << true << "";
        QTest::newRow("off, unknown") << false << "top/none" << true << "";
        QTest::newRow("off, invalid") << false << "top/mem" << true << "";
        QTest::newRow("empty") << true << "" << true << none;
        QTest::newRow("empty, no netlist") << true << "" << false << none;
        QTest::newRow("good, though driven") << true << "top/clk" << true << "";
        QTest::newRow("unknown") << true << "clk" << true << unknown;
        QTest::newRow("no netlist") << true << "top/clk" << false << unknown;
        QTest::newRow("unreadable") << true << "top/mem" << true << invalid;
    }

    void clockRule()
    {
        QFETCH(bool, sync);
        QFETCH(QString, clock);
        QFETCH(bool, haveNetlist);
        TarnViewPrivate document(nullptr);
        TarnCore *core = addCore(&document, 7);
        addIn(core, 0, {net("s")});
        core->syncUserClock = sync;
        core->userClock = clock;
        document.setNlsData(haveNetlist ? netlist() : nullptr);
        QTEST(errorsOf(document), "error");
    }

    void bothRulesOfACoreComeInOrder()
    {
        TarnViewPrivate document(nullptr);
        addCore(&document, 1)->syncUserClock = true;
        addCore(&document, 0);
        QCOMPARE(errorsOf(document),
                 QStringLiteral(
                     "Tarn 1: At least one Probe In port or Probe Out port should be enabled\n"
                     "Tarn 1: No synchronization clock specified\n"
                     "Tarn 0: At least one Probe In port or Probe Out port should be enabled"));
    }

    void errorTextMayBeNull()
    {
        TarnViewPrivate document(nullptr);
        TarnCore *core = addCore(&document, 0);
        QVERIFY(!document.check(nullptr));
        addIn(core, 0, {net("s")});
        QVERIFY(document.check(nullptr));
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
        TarnViewPrivate document(nullptr);
        int bit = 0;
        for (int index = 0; index < 16; ++index) {
            TarnCore *core = addCore(&document, index);
            for (int port = 0; port < 64; ++port) {
                QList<SignalItem> items;
                for (int i = 0; i < 256; ++i)
                    items.append(
                        net("top/u_core/u_path/data[" + QString::number(bit++ % names) + ']'));
                addOut(core, port, items);
            }
        }
        QElapsedTimer timer;
        timer.start();
        QString errors;
        QVERIFY(!document.check(&errors));
        const qint64 elapsed = timer.elapsed();
        QCOMPARE(errors.count('\n') + 1, names);
        qInfo("checked %d bits in %lld ms", bit, static_cast<long long>(elapsed));
        // Room for sanitizers on a busy machine; quadratic work takes minutes.
        QVERIFY2(elapsed < 10000, "too slow");
    }
};

TARN_TEST_MAIN(TestCheck)
#include "tst_check.moc"
