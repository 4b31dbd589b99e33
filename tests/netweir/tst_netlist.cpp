// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/hierachy.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>

#include <netweir/internal/ground/readguard.h>

#include <support/setting.h>
#include <support/testcase.h>

#include <QHash>
#include <QRandomGenerator>
#include <QTest>

#include <vector>

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

/// A random netlist and the names that all its nets and buses must have, which are simply joined.
class RandomNetlist
{
public:
    explicit RandomNetlist(quint32 seed)
        : m_random(seed)
    {
        m_nodes.push_back({m_builder.top(), QStringLiteral("top/")});
        const int steps = m_random.bounded(400);
        for (int i = 0; i < steps; ++i)
            addSomething();
        netlist = m_builder.take();
    }

    struct Net
    {
        RtlNet *net;
        QString name;
        QString path;
    };

    struct Bus
    {
        RtlNetBus *bus;
        QString name;
        QString path;
    };

    std::unique_ptr<RtlNetlist> netlist;
    std::vector<Net> nets; ///< In the order in which they were added.
    std::vector<Bus> buses;

private:
    struct Node
    {
        Hierachy *node;
        QString prefix;
    };

    /// Few different names, so that paths are often equal, and some that look like other paths.
    QString anyName()
    {
        static const QStringList names{
            "a",       "b",      "d", "a/b",    "d[3]",  "a/d",
            "g[0].w",  "x.y[1]", "[", "d[1:0]", "d[-2]", QString::fromUtf8("\u00e4\u4e2d"),
            "a/a/d[2]"};
        const int number = m_random.bounded(names.size() + 1);
        return number < names.size() ? names.at(number) : QString(m_random.bounded(700), u'n');
    }

    /// One of the last nodes, so that some designs become deep.
    Node anyNode()
    {
        const int last = int(m_nodes.size()) - 1;
        return m_nodes.at(std::size_t(last - m_random.bounded(std::min(last + 1, 5))));
    }

    void addSomething()
    {
        const Node parent = anyNode();
        const QString name = anyName();
        const QString path = parent.prefix + name;
        switch (m_random.bounded(3)) {
        case 0:
            m_nodes.push_back({m_builder.addHierachy(parent.node, name, QStringLiteral("m")),
                               path + QLatin1Char('/')});
            break;
        case 1:
            nets.push_back({m_builder.addNet(parent.node, name), name, path});
            break;
        default:
            addBus(parent, name);
        }
    }

    void addBus(const Node &parent, const QString &name)
    {
        const int left = m_random.bounded(-12, 13);
        const int right = m_random.bounded(-12, 13);
        const QString range = QStringLiteral("[%1:%2]").arg(left).arg(right);
        RtlNetBus *bus = m_builder.addBus(parent.node, name, left, right);
        buses.push_back({bus, name + range, parent.prefix + name + range});
        int index = left;
        for (RtlNet *net : bus->nets()) {
            const QString bit = QStringLiteral("%1[%2]").arg(name).arg(index);
            nets.push_back({net, bit, parent.prefix + bit});
            index += left > right ? -1 : 1;
        }
    }

    QRandomGenerator m_random;
    NetlistBuilder m_builder{QStringLiteral("top")};
    std::vector<Node> m_nodes;
};

} // namespace

class TestNetlist : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void nodesKnowTheirNamesParentAndChildren();
    void netNamesJoinTheLevelsWithSlashes();
    void nameOfASingleNetIsNotCopied();
    void copiedNamesUseTheMemoryAgain();
    void namesAreThoseOfAllParts();
    void findNetKnowsAllNames();
    void busMembersFollowTheDeclaration_data();
    void busMembersFollowTheDeclaration();
    void busCarriesAMarkWhenAnyMemberDoes();
    void oneMarkServesAllMembers();
    void subtreeListsGoNodeByNodeInOrder();
    void findNetComparesWholeNames();
    void findNetComparesNamesOfTheSameHash();
    void findNetFindsEveryNet();
    void findNetGivesTheFirstOfEqualNames();
    void largeNetlistKeepsEachNet();
    void anEmptyNetlistFindsNothing();
    void jtagFlagIsKept();
    void namesOutliveTheNetlist();
    void deepHierarchyNeedsNoStack();
    void deepHierarchyNeedsLittleMemory();
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

void TestNetlist::nameOfASingleNetIsNotCopied()
{
    NetlistBuilder builder(QStringLiteral("top"));
    const QString name = QStringLiteral("clk");
    const RtlNet *net = builder.addNet(builder.top(), name);
    QCOMPARE(net->name().constData(), name.constData());
}

void TestNetlist::copiedNamesUseTheMemoryAgain()
{
    NetlistBuilder builder(QStringLiteral("top"));
    const RtlNet *net = builder.addNet(builder.top(), QStringLiteral("clk"));
    const RtlNetBus *bus = builder.addBus(builder.top(), QStringLiteral("data"), 7, 0);
    QString name;
    name.reserve(100);
    const QChar *memory = name.constData();
    bus->copyFullBusName(&name);
    QCOMPARE(name, QStringLiteral("top/data[7:0]"));
    net->copyFullPathName(&name);
    QCOMPARE(name, QStringLiteral("top/clk"));
    QCOMPARE(name.constData(), memory);

    const QString shared = name;
    const RtlNet *bit = bus->nets().last();
    QCOMPARE(bit->copyFullPathName(&name, net), 4);
    QCOMPARE(name, QStringLiteral("top/data[0]"));
    QCOMPARE(shared, QStringLiteral("top/clk"));
    const RtlNet *below = builder.addNet(
        builder.addHierachy(builder.top(), QStringLiteral("u0"), QStringLiteral("m")),
        QStringLiteral("q"));
    QCOMPARE(below->copyFullPathName(&name, bit), 0);
    QCOMPARE(name, QStringLiteral("top/u0/q"));
}

void TestNetlist::namesAreThoseOfAllParts()
{
    const quint32 seed = TarnTest::setting("TARN_NETLIST_SEED", 1);
    const quint32 rounds = TarnTest::setting("TARN_NETLIST_ROUNDS", 60);
    for (quint32 i = 0; i < rounds; ++i) {
        const RandomNetlist random(seed + i);
        QString copy;
        QString kept;
        const RtlNet *before = nullptr;
        for (const RandomNetlist::Net &net : random.nets) {
            QCOMPARE(net.net->name(), net.name);
            QCOMPARE(net.net->fullPathName(), net.path);
            net.net->copyFullPathName(&copy);
            QCOMPARE(copy, net.path);
            const QString former = kept;
            const int same = net.net->copyFullPathName(&kept, before);
            QCOMPARE(kept, net.path);
            QCOMPARE(kept.left(same), former.left(same));
            before = net.net;
        }
        for (const RandomNetlist::Bus &bus : random.buses) {
            QCOMPARE(bus.bus->BusName(), bus.name);
            QCOMPARE(bus.bus->fullBusName(), bus.path);
            bus.bus->copyFullBusName(&copy);
            QCOMPARE(copy, bus.path);
        }
    }
}

void TestNetlist::findNetKnowsAllNames()
{
    const quint32 seed = TarnTest::setting("TARN_NETLIST_SEED", 1);
    const quint32 rounds = TarnTest::setting("TARN_NETLIST_ROUNDS", 60);
    for (quint32 i = 0; i < rounds; ++i) {
        const RandomNetlist random(seed + i);
        QHash<QString, RtlNet *> firsts;
        for (const RandomNetlist::Net &net : random.nets) {
            if (!firsts.contains(net.path))
                firsts.insert(net.path, net.net);
        }
        for (const RandomNetlist::Net &net : random.nets) {
            QCOMPARE(random.netlist->findNet(net.path), firsts.value(net.path));
            for (const QString &other : {net.name, net.path + 'x', net.path.chopped(1),
                                         net.path.mid(1), 'x' + net.path.mid(1)})
                QCOMPARE(random.netlist->findNet(other), firsts.value(other));
        }
        for (const RandomNetlist::Bus &bus : random.buses)
            QCOMPARE(random.netlist->findNet(bus.path), firsts.value(bus.path));
    }
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
    QTest::newRow("lowest") << -2147483647 << -2147483647 - 1 << "top/d[-2147483647:-2147483648]"
                            << QStringList{"top/d[-2147483647]", "top/d[-2147483648]"};
    QTest::newRow("highest") << 2147483646 << 2147483647 << "top/d[2147483646:2147483647]"
                             << QStringList{"top/d[2147483646]", "top/d[2147483647]"};
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

/// "Aa" and "BB" are equal to the hash.
void TestNetlist::findNetComparesNamesOfTheSameHash()
{
    NetlistBuilder builder(QStringLiteral("top"));
    Hierachy *node = builder.addHierachy(builder.top(), QStringLiteral("Aa"), QStringLiteral("m"));
    RtlNet *net = builder.addNet(node, QStringLiteral("n"));
    RtlNet *single = builder.addNet(builder.top(), QStringLiteral("Aa"));
    RtlNetBus *bus = builder.addBus(builder.top(), QStringLiteral("Aa"), 1, 0);
    const auto netlist = builder.take();

    QCOMPARE(netlist->findNet(QStringLiteral("top/Aa/n")), net);
    QCOMPARE(netlist->findNet(QStringLiteral("top/Aa")), single);
    QCOMPARE(netlist->findNet(QStringLiteral("top/Aa[1]")), bus->nets().first());
    QVERIFY(!netlist->findNet(QStringLiteral("top/BB/n")));
    QVERIFY(!netlist->findNet(QStringLiteral("top/BB")));
    QVERIFY(!netlist->findNet(QStringLiteral("top/BB[1]")));
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

/// With so many nets the store has pieces of memory of each kind.
void TestNetlist::largeNetlistKeepsEachNet()
{
    constexpr int Buses = 100;
    constexpr int Width = 8192;
    std::vector<NetMarks> marks(Width);
    for (std::size_t bit = 0; bit < marks.size(); bit += 3)
        marks[bit].excludedForProbeIn = true;
    NetlistBuilder builder(QStringLiteral("top"));
    for (int i = 0; i < Buses; ++i) {
        Hierachy *node = builder.addHierachy(builder.top(), QStringLiteral("u%1").arg(i),
                                             QStringLiteral("unit"));
        builder.addNet(node, QStringLiteral("clk"));
        builder.addBus(node, QStringLiteral("data"), 0, Width - 1, marks);
    }
    const std::unique_ptr<RtlNetlist> netlist = builder.take();

    for (int i = 0; i < Buses; ++i) {
        const Hierachy *node = netlist->top()->children().at(i);
        const QString path = QStringLiteral("top/u%1/").arg(i);
        QCOMPARE(node->nets().at(0)->fullPathName(), path + QLatin1String("clk"));
        const QList<RtlNet *> &bits = node->buses().at(0)->nets();
        QCOMPARE(bits.size(), Width);
        for (int bit = 0; bit < Width; ++bit)
            QCOMPARE(bits.at(bit)->excludedForProbeIn(), bit % 3 == 0);
        for (const int bit : {0, 255, 256, Width / 2, Width - 1}) {
            const QString name = path + QStringLiteral("data[%1]").arg(bit);
            QCOMPARE(bits.at(bit)->fullPathName(), name);
            QCOMPARE(netlist->findNet(name), bits.at(bit));
        }
    }
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

/// The paths of all nodes, one by one, would take 8 GB.
void TestNetlist::deepHierarchyNeedsLittleMemory()
{
    constexpr int Depth = 20000;
    Internal::ReadLimits limits;
    limits.memoryLimit = 100 * 1024 * 1024;
    QString error;
    const bool good = Internal::readWithin(
        limits,
        [](QString *) {
            NetlistBuilder builder(QStringLiteral("top"));
            Hierachy *node = builder.top();
            for (int i = 0; i < Depth; ++i)
                node = builder.addHierachy(node, QStringLiteral("instance_%1").arg(i % 10),
                                           QStringLiteral("m"));
            const RtlNet *net = builder.addNet(node, QStringLiteral("n"));
            QString path = QStringLiteral("top/");
            for (int i = 0; i < Depth; ++i)
                path += QStringLiteral("instance_%1/").arg(i % 10);
            path += QLatin1Char('n');
            const QString full = net->fullPathName();
            const auto netlist = builder.take();
            Internal::ReadGuard::checkNow();
            return full == path && netlist->findNet(path) == net;
        },
        &error);
    QVERIFY2(good, qPrintable(error));
}

QTEST_APPLESS_MAIN(TestNetlist)
#include "tst_netlist.moc"
