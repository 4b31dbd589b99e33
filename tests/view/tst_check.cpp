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
#include <QFileSystemWatcher>
#include <QTest>

using TARN::TarnCore;
using TARN::private_impl::TarnViewPrivate;
using TarnTest::net;

namespace {

TarnCore *addCore(TarnViewPrivate *document, int index)
{
    auto *core = new TarnCore(index);
    document->cores.append(core);
    return core;
}

} // namespace

/// What the view adds to checkConfig(), whose test covers the rules.
class TestCheck : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void errorsAreLines()
    {
        TarnViewPrivate document(nullptr);
        addCore(&document, 1)->syncUserClock = true;
        addCore(&document, 0);
        QString errors = "former text";
        QVERIFY(!document.check(&errors));
        QCOMPARE(errors, QStringLiteral("Tarn 1: At least one Probe In port or Probe Out port "
                                        "should be enabled\n"
                                        "Tarn 1: No synchronization clock specified\n"
                                        "Tarn 0: At least one Probe In port or Probe Out port "
                                        "should be enabled"));
    }

    void goodConfigurationClearsTheText()
    {
        TarnViewPrivate document(nullptr);
        addCore(&document, 0)->addProbeIn(0);
        document.cores.last()->probeIns.last()->signals.append(net("s"));
        QString errors = "former text";
        QVERIFY(document.check(&errors));
        QCOMPARE(errors, QString());
    }

    void clockIsLookedUpInTheNetlistOfTheView()
    {
        TarnViewPrivate document(nullptr);
        TarnCore *core = addCore(&document, 0);
        core->addProbeIn(0);
        core->probeIns.last()->signals.append(net("s"));
        core->syncUserClock = true;
        core->userClock = "top/clk";
        QVERIFY(!document.check(nullptr));

        NETWEIR::NetlistBuilder builder("top");
        builder.addNet(builder.top(), "clk", {});
        document.setNlsData(builder.take().release());
        QVERIFY(document.check(nullptr));
    }

    void errorTextMayBeNull()
    {
        TarnViewPrivate document(nullptr);
        TarnCore *core = addCore(&document, 0);
        QVERIFY(!document.check(nullptr));
        core->addProbeIn(0);
        core->probeIns.last()->signals.append(net("s"));
        QVERIFY(document.check(nullptr));
    }
};

TARN_TEST_MAIN(TestCheck)
#include "tst_check.moc"
