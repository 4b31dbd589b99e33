// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/hierachy.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR;

namespace {

template <typename Net>
QStringList fullNames(const QList<Net *> &nets)
{
    QStringList names;
    for (const Net *net : nets)
        names.append(net->fullPathName());
    return names;
}

QStringList fullBusNames(const QList<RtlNetBus *> &buses)
{
    QStringList names;
    for (const RtlNetBus *bus : buses)
        names.append(bus->fullBusName());
    return names;
}

} // namespace

class TestNetlist : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void nodesKnowTheirNamesParentAndChildren();
    void netNamesJoinTheLevelsWithSlashes();
    void busMembersFollowTheDeclaration_data();
    void busMembersFollowTheDeclaration();
    void busCarriesAMarkWhenAnyMemberDoes();
    void oneMarkServesAllMembers();
    void subtreeListsGoNodeByNodeInOrder();
    void findNetComparesWholeNames();
    void findNetFindsEveryNet();
    void findNetGivesTheFirstOfEqualNames();
    void anEmptyNetlistFindsNothing();
    void jtagFlagIsKept();
    void namesOutliveTheNetlist();
    void deepHierarchyNeedsNoStack();
};

void TestNetlist::nodesKnowTheirNamesParentAndChildren()
{
    NetlistBuilder builder(QStringLiteral("top"));
    Hierachy *u0 = builder.addHierachy(builder.top(), QStringLiteral("u0"), QStringLiteral("uart"));
    Hierachy *u1 = builder.addHierachy(builder.top(), QStringLiteral("u1"), QStringLiteral("uart"));
    Hierachy *fifo = builder.addHierachy(u1, QStringLiteral("fifo"), QStringLiteral("sync_fifo"));
    const auto netlist = builder.take();

    const Hierachy *top = netlist->top();
    QCOMPARE(top->instName(), QStringLiteral("top"));
    QCOMPARE(top->moduleName(), QStringLiteral("top"));
    QVERIFY(!top->parent());
    QCOMPARE(top->children(), (QList<Hierachy *>{u0, u1}));
    QCOMPARE(fifo->instName(), QStringLiteral("fifo"));
    QCOMPARE(fifo->moduleName(), QStringLiteral("sync_fifo"));
    QCOMPARE(fifo->parent(), u1);
    QVERIFY(fifo->children().isEmpty());
}

void TestNetlist::netNamesJoinTheLevelsWithSlashes()
{
    NetlistBuilder builder(QStringLiteral("top"));
    Hierachy *u0 = builder.addHierachy(builder.top(), QStringLiteral("u0"), QStringLiteral("m"));
    const RtlNet *clk = builder.addNet(builder.top(), QStringLiteral("clk"));
    const RtlNet *div = builder.addNet(u0, QStringLiteral("g[0].clk_div"));
    const RtlNetBus *bus = builder.addBus(u0, QStringLiteral("data"), 1, 0);
    const auto netlist = builder.take();

    QCOMPARE(clk->name(), QStringLiteral("clk"));
    QCOMPARE(clk->fullPathName(), QStringLiteral("top/clk"));
    QCOMPARE(div->name(), QStringLiteral("g[0].clk_div"));
    QCOMPARE(div->fullPathName(), QStringLiteral("top/u0/g[0].clk_div"));
    QCOMPARE(bus->BusName(), QStringLiteral("data[1:0]"));
    QCOMPARE(bus->fullBusName(), QStringLiteral("top/u0/data[1:0]"));
    QCOMPARE(bus->nets().first()->name(), QStringLiteral("data[1]"));
}

void TestNetlist::busMembersFollowTheDeclaration_data()
{
    QTest::addColumn<int>("left");
    QTest::addColumn<int>("right");
    QTest::addColumn<QString>("bus");
    QTest::addColumn<QStringList>("members");

    QTest::newRow("falling") << 2 << 0 << "top/d[2:0]"
                             << QStringList{"top/d[2]", "top/d[1]", "top/d[0]"};
    QTest::newRow("rising") << 0 << 2 << "top/d[0:2]"
                            << QStringList{"top/d[0]", "top/d[1]", "top/d[2]"};
    QTest::newRow("one bit") << 0 << 0 << "top/d[0:0]" << QStringList{"top/d[0]"};
    QTest::newRow("offset") << 9 << 8 << "top/d[9:8]" << QStringList{"top/d[9]", "top/d[8]"};
    QTest::newRow("negative") << 0 << -1 << "top/d[0:-1]" << QStringList{"top/d[0]", "top/d[-1]"};
    QTest::newRow("rising negative")
        << -11 << -10 << "top/d[-11:-10]" << QStringList{"top/d[-11]", "top/d[-10]"};
}

void TestNetlist::busMembersFollowTheDeclaration()
{
    QFETCH(int, left);
    QFETCH(int, right);
    QFETCH(QString, bus);
    QFETCH(QStringList, members);

    NetlistBuilder builder(QStringLiteral("top"));
    const RtlNetBus *added = builder.addBus(builder.top(), QStringLiteral("d"), left, right);
    QCOMPARE(added->fullBusName(), bus);
    QCOMPARE(fullNames(added->nets()), members);
    QVERIFY(builder.top()->nets().isEmpty());
}

void TestNetlist::busCarriesAMarkWhenAnyMemberDoes()
{
    NetlistBuilder builder(QStringLiteral("top"));
    const RtlNetBus *none = builder.addBus(builder.top(), QStringLiteral("a"), 1, 0);
    const RtlNetBus *in =
        builder.addBus(builder.top(), QStringLiteral("b"), 1, 0, {{}, {true, false}});
    const RtlNetBus *out =
        builder.addBus(builder.top(), QStringLiteral("c"), 1, 0, {{false, true}, {}});

    QVERIFY(!none->excludedForProbeIn());
    QVERIFY(!none->excludedForProbeOut());
    QVERIFY(in->excludedForProbeIn());
    QVERIFY(!in->excludedForProbeOut());
    QVERIFY(!in->nets().first()->excludedForProbeIn());
    QVERIFY(in->nets().last()->excludedForProbeIn());
    QVERIFY(!out->excludedForProbeIn());
    QVERIFY(out->excludedForProbeOut());
    QVERIFY(out->nets().first()->excludedForProbeOut());
    QVERIFY(!out->nets().last()->excludedForProbeOut());
}

void TestNetlist::oneMarkServesAllMembers()
{
    NetlistBuilder builder(QStringLiteral("top"));
    const RtlNetBus *bus = builder.addBus(builder.top(), QStringLiteral("a"), 2, 0, {{true, true}});
    for (const RtlNet *net : bus->nets()) {
        QVERIFY(net->excludedForProbeIn());
        QVERIFY(net->excludedForProbeOut());
    }
}

void TestNetlist::subtreeListsGoNodeByNodeInOrder()
{
    NetlistBuilder builder(QStringLiteral("top"));
    Hierachy *a = builder.addHierachy(builder.top(), QStringLiteral("a"), QStringLiteral("m"));
    Hierachy *b = builder.addHierachy(builder.top(), QStringLiteral("b"), QStringLiteral("m"));
    Hierachy *ax = builder.addHierachy(a, QStringLiteral("x"), QStringLiteral("n"));
    // Filled out of order: the lists follow the hierarchy.
    for (Hierachy *node : {b, ax, a, builder.top()}) {
        builder.addNet(node, QStringLiteral("n"));
        builder.addBus(node, QStringLiteral("d"), 0, 0);
    }

    QCOMPARE(fullNames(builder.top()->singleNetsIncludeSub()),
             (QStringList{"top/n", "top/a/n", "top/a/x/n", "top/b/n"}));
    QCOMPARE(fullBusNames(builder.top()->netbusesIncludeSub()),
             (QStringList{"top/d[0:0]", "top/a/d[0:0]", "top/a/x/d[0:0]", "top/b/d[0:0]"}));
    QCOMPARE(fullNames(a->singleNetsIncludeSub()), (QStringList{"top/a/n", "top/a/x/n"}));
}

void TestNetlist::findNetComparesWholeNames()
{
    NetlistBuilder builder(QStringLiteral("top"));
    Hierachy *u0 = builder.addHierachy(builder.top(), QStringLiteral("u0"), QStringLiteral("m"));
    RtlNet *escaped = builder.addNet(builder.top(), QStringLiteral("a/b.c[3]"));
    RtlNetBus *bus = builder.addBus(u0, QStringLiteral("d"), 3, 0);
    const auto netlist = builder.take();

    QCOMPARE(netlist->findNet(QStringLiteral("top/a/b.c[3]")), escaped);
    QCOMPARE(netlist->findNet(QStringLiteral("top/u0/d[2]")), bus->nets().at(1));
    QVERIFY(!netlist->findNet(QStringLiteral("top/u0/d[3:0]")));
    QVERIFY(!netlist->findNet(QStringLiteral("top/u0/d[4]")));
    QVERIFY(!netlist->findNet(QStringLiteral("u0/d[2]")));
    QVERIFY(!netlist->findNet(QStringLiteral("TOP/U0/D[2]")));
    QVERIFY(!netlist->findNet(QString()));
}

void TestNetlist::findNetFindsEveryNet()
{
    NetlistBuilder builder(QStringLiteral("top"));
    QList<RtlNet *> all;
    for (int i = 0; i < 5000; ++i)
        all.append(builder.addNet(builder.top(), QStringLiteral("n%1").arg(i)));
    all += builder.addBus(builder.top(), QStringLiteral("d"), 4999, 0)->nets();
    const auto netlist = builder.take();

    for (RtlNet *net : qAsConst(all))
        QCOMPARE(netlist->findNet(net->fullPathName()), net);
    QVERIFY(!netlist->findNet(QStringLiteral("top/n5000")));
}

void TestNetlist::findNetGivesTheFirstOfEqualNames()
{
    // An escaped name may spell the path of another net.
    NetlistBuilder builder(QStringLiteral("top"));
    Hierachy *a = builder.addHierachy(builder.top(), QStringLiteral("a"), QStringLiteral("m"));
    const RtlNet *escaped = builder.addNet(builder.top(), QStringLiteral("a/b"));
    builder.addNet(a, QStringLiteral("b"));
    const auto netlist = builder.take();
    QCOMPARE(netlist->findNet(QStringLiteral("top/a/b")), escaped);
}

void TestNetlist::anEmptyNetlistFindsNothing()
{
    NetlistBuilder builder(QStringLiteral("top"));
    const auto netlist = builder.take();
    QVERIFY(!netlist->findNet(QStringLiteral("top")));
    QVERIFY(netlist->top()->singleNetsIncludeSub().isEmpty());
    QVERIFY(netlist->top()->netbusesIncludeSub().isEmpty());
}

void TestNetlist::jtagFlagIsKept()
{
    NetlistBuilder without(QStringLiteral("top"));
    QVERIFY(!without.take()->usesJtagPrimitive());
    NetlistBuilder with(QStringLiteral("top"));
    with.setUsesJtagPrimitive(true);
    QVERIFY(with.take()->usesJtagPrimitive());
}

void TestNetlist::namesOutliveTheNetlist()
{
    QString kept;
    {
        NetlistBuilder builder(QStringLiteral("top"));
        builder.addNet(builder.top(), QStringLiteral("clk"));
        const auto netlist = builder.take();
        kept = netlist->top()->nets().first()->fullPathName();
    }
    QCOMPARE(kept, QStringLiteral("top/clk"));
}

void TestNetlist::deepHierarchyNeedsNoStack()
{
    constexpr int Depth = 3000;
    NetlistBuilder builder(QStringLiteral("t"));
    Hierachy *node = builder.top();
    for (int i = 0; i < Depth; ++i)
        node = builder.addHierachy(node, QStringLiteral("u"), QStringLiteral("m"));
    builder.addNet(node, QStringLiteral("n"));
    const auto netlist = builder.take();
    QCOMPARE(netlist->top()->singleNetsIncludeSub().size(), 1);
}

QTEST_APPLESS_MAIN(TestNetlist)
#include "tst_netlist.moc"
