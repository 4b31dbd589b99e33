// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/testcase.h>

#include <model/tarncore.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnetlist.h>
#include <probes/probeportsoptionwidget.h>
#include <view/tarnoptionwidget.h>

#include <QApplication>
#include <QSignalSpy>
#include <QTest>

using TARN::ProbePortsOptionWidget;
using TARN::TarnOptionWidget;

class TestTarnOptionWidget : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void showsTheProbePortsInATab()
    {
        TARN::TarnCore core(3);
        const TarnOptionWidget page(&core, nullptr, nullptr);
        QCOMPARE(page.count(), 1);
        QCOMPARE(page.tabText(0), QStringLiteral("Probe Ports"));
        QVERIFY(qobject_cast<ProbePortsOptionWidget *>(page.widget(0)));
        QCOMPARE(page.core(), &core);
        QVERIFY(!page.netlist());
    }

    void forwardsModifiedUnderItsOwnSpelling()
    {
        TARN::TarnCore core(0);
        TarnOptionWidget page(&core, nullptr, nullptr);
        QSignalSpy modified(&page, SIGNAL(modifed()));
        QVERIFY(modified.isValid());
        Q_EMIT page.findChild<ProbePortsOptionWidget *>()->modified();
        QCOMPARE(modified.count(), 1);
    }

    void passesTheNetlistOn()
    {
        const auto netlist = NETWEIR::NetlistBuilder("top").take();
        TARN::TarnCore core(0);
        TarnOptionWidget page(&core, nullptr, nullptr);
        QSignalSpy changed(page.findChild<ProbePortsOptionWidget *>(),
                           &ProbePortsOptionWidget::netlistChanged);
        page.setNlsdata(netlist.get());
        QCOMPARE(page.netlist(), netlist.get());
        QCOMPARE(changed.count(), 1);
        page.setNlsdata(nullptr);
        QVERIFY(!page.netlist());
        QCOMPARE(changed.count(), 2);
    }

    void outlivesItsCoreAndNetlist()
    {
        auto netlist = NETWEIR::NetlistBuilder("top").take();
        auto core = std::make_unique<TARN::TarnCore>(0);
        core->addProbeIn(0);
        auto page = std::make_unique<TarnOptionWidget>(core.get(), netlist.get(), nullptr);
        page->save();
        core.reset();
        netlist.reset();
        page.reset(); // Touching either is found by the address sanitizer.
    }
};

TARN_TEST_MAIN(TestTarnOptionWidget)
#include "tst_tarnoptionwidget.moc"
