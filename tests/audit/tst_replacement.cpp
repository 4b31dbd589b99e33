// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configtext.h"
#include "randomdesign.h"

#include <support/setting.h>
#include <support/testcase.h>

#include <audit/candidates.h>
#include <audit/replacement.h>
#include <audit/signalfit.h>
#include <model/bitstring.h>
#include <model/configsnapshot.h>
#include <model/netsignals.h>
#include <model/portbits.h>
#include <model/portlimits.h>
#include <netweir/hierachy.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>

#include <QCoreApplication>
#include <QTest>

using namespace TARN;
using NETWEIR::Hierachy;
using NETWEIR::NetlistBuilder;
using TarnTest::coresFrom;
using TarnTest::KnownDesign;
using TarnTest::RandomDesign;
using TarnTest::signalFrom;

namespace {

ConfigSnapshot snapshotFrom(const QStringList &lines)
{
    const Cores cores = coresFrom(lines);
    return snapshotOf(cores.list);
}

/// "a d[1:0]=d[1],d[0] 0x5": the signals, buses with their members, and the value.
QString textOf(const PortSnapshot &port)
{
    QStringList words;
    for (const SignalItem &item : port.signals) {
        QStringList members;
        for (const SignalItem &member : item.members)
            members.append(member.name);
        words.append(members.isEmpty() ? item.name : item.name + '=' + members.join(','));
    }
    words.append(port.initialValue);
    return words.join(' ').trimmed();
}

QString textOf(const ConfigSnapshot &config)
{
    QStringList lines;
    for (const ConfigSnapshot::Core &core : config.cores) {
        lines.append(QString("core %1").arg(core.content->userClock).trimmed());
        for (const auto &port : core.content->probeIns)
            lines.append("in: " + textOf(*port));
        for (const auto &port : core.content->probeOuts)
            lines.append("out: " + textOf(*port));
    }
    return lines.join('\n');
}

Place placeOf(int core, ProbeType type, int port, int signal)
{
    return {core, type, port, signal, -1};
}

/// A port with one net and a bus of @p width bits.
ConfigSnapshot wideConfig(int width)
{
    SignalItem bus = signalFrom("top/w");
    bus.kind = SignalItem::Bus;
    for (int i = 0; i < width; ++i)
        bus.members.append(signalFrom(QString("top/w[%1]").arg(i)));
    Cores cores;
    cores.add(0)->addProbeIn(0);
    cores.list.first()->probeIns.first()->signals = {signalFrom("top/old"), bus};
    return snapshotOf(cores.list);
}

/// top/u_new: clk, q (not for Probe Out), r, sum[3:0], part[1:0] (part[1] not for Probe Out), and
/// sub/flag; top: still, clk.
std::unique_ptr<NETWEIR::RtlNetlist> newNetlist()
{
    NetlistBuilder builder("top");
    builder.addNet(builder.top(), "still");
    builder.addNet(builder.top(), "clk");
    Hierachy *instance = builder.addHierachy(builder.top(), "u_new", "module");
    builder.addNet(instance, "clk");
    builder.addNet(instance, "q", {false, true});
    builder.addNet(instance, "r");
    builder.addBus(instance, "sum", 3, 0);
    builder.addBus(instance, "part", 1, 0, {{false, true}, {}});
    builder.addBus(instance, "wide", 299, 0);
    builder.addNet(builder.addHierachy(instance, "sub", "module"), "flag");
    return builder.take();
}

/// What a port is after a replacement, found step by step and bit by bit.
class Reference
{
public:
    Reference(const PortSnapshot &port, int position, SignalItem by)
    {
        removeDisabledMembers(&by);
        QString bits = fittedBits(stringHextoBinfor0x(port.initialValue), 0, widthOf(port.signals));
        for (const SignalItem &item : port.signals)
            m_values.append(takeBits(bits, item.width()));
        m_items = port.signals;
        replace(position, by);
    }

    QString text(bool out) const
    {
        PortSnapshot port;
        port.signals = m_items;
        const QString bits = m_values.join("");
        if (out)
            port.initialValue = bits.isEmpty() ? "0x0" : "0x" + stringBintoHex(bits);
        return textOf(port);
    }

    int width() const { return m_values.join("").size(); }

private:
    static QStringList netsOf(const SignalItem &item)
    {
        QStringList nets;
        for (const SignalItem &member : item.members)
            nets.append(member.name);
        return nets.isEmpty() ? QStringList(item.name) : nets;
    }

    static bool contains(const QStringList &all, const QStringList &some)
    {
        return std::all_of(some.cbegin(), some.cend(),
                           [&all](const QString &net) { return all.contains(net); });
    }

    static QString indexOf(const QString &name)
    {
        return name.endsWith(']') ? name.section('[', -1) : QString();
    }

    void replace(int position, const SignalItem &by)
    {
        QStringList others;
        for (int i = m_items.size() - 1; i >= 0; --i) {
            const QStringList nets = netsOf(m_items.at(i));
            if (i != position && contains(netsOf(by), nets) && !contains(nets, netsOf(by)))
                m_gone.prepend(i);
            else if (i != position)
                others += nets;
        }
        if (contains(others, netsOf(by))) {
            m_items.removeAt(position);
            m_values.removeAt(position);
            return;
        }
        QStringList names = netsOf(m_items.at(position));
        const QStringList ownNames = names;
        const QString ownValues = m_values.at(position);
        QString values = ownValues;
        for (const int i : qAsConst(m_gone)) {
            names += netsOf(m_items.at(i));
            values += m_values.at(i);
        }
        QString bits;
        for (const QString &net : netsOf(by)) {
            int at = names.indexOf(net);
            for (int i = 0; at == -1 && i < ownNames.size(); ++i) {
                if (!indexOf(net).isEmpty() && indexOf(ownNames.at(i)) == indexOf(net))
                    at = i;
            }
            bits += at == -1 ? QChar('0') : values.at(at);
        }
        m_values[position] = by.width() == 1 && ownValues.size() == 1 ? ownValues : bits;
        m_items[position] = by;
        for (int i = m_gone.size() - 1; i >= 0; --i) {
            m_items.removeAt(m_gone.at(i));
            m_values.removeAt(m_gone.at(i));
        }
    }

    QList<SignalItem> m_items;
    QStringList m_values;
    QList<int> m_gone;
};

} // namespace

class TestReplacement : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void takesThePlace_data();
    void takesThePlace();
    void disabledMembersAreLeftOut();
    void restIsShared();
    void limitOfAPort();
    void clockIsReplaced();
    void placesThatDoNotExist();
    void nameIsReplacedEverywhere_data();
    void nameIsReplacedEverywhere();
    void prefixReplacesWhatIsMissing();
    void prefixRespectsTheLimit();
    void prefixMakesNoRepeats();
    void prefixReplacesWhatItExplains();
    void changedBusesAreTakenOver();
    void randomReplacements();
};

void TestReplacement::takesThePlace_data()
{
    QTest::addColumn<QString>("port");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("by");
    QTest::addColumn<QString>("after");

    QTest::newRow("net by net") << "out 0x5: a b c" << 1 << "x"
                                << "a x c 0x5";
    QTest::newRow("net by net, bit set") << "out 0x2: a b c" << 1 << "x"
                                         << "a x c 0x2";
    QTest::newRow("bus grew") << "out 0x16: a d[2:0]=2,1,0 c" << 1 << "d[3:0]=3,2,1,0"
                              << "a d[3:0]=d[3],d[2],d[1],d[0] c 0x26";
    QTest::newRow("bus grew at its end") << "out 0x1B: a d[2:1]=2,1 c c2" << 1 << "d[2:0]=2,1,0"
                                         << "a d[2:0]=d[2],d[1],d[0] c c2 0x33";
    QTest::newRow("bus shrank") << "out 0x1B: a d[2:0]=2,1,0 c" << 1 << "d[1:0]=1,0"
                                << "a d[1:0]=d[1],d[0] c 0xB";
    QTest::newRow("bus reversed") << "out 0xC: d[0:3]=0,1,2,3" << 0 << "d[3:0]=3,2,1,0"
                                  << "d[3:0]=d[3],d[2],d[1],d[0] 0x3";
    QTest::newRow("bus renamed") << "out 0xA: d[3:0]=3,2,1,0" << 0 << "e[4:0]=4,3,2,1,0"
                                 << "e[4:0]=e[4],e[3],e[2],e[1],e[0] 0x0A";
    QTest::newRow("net by bus") << "out 0x3: a b" << 1 << "d[1:0]=1,0"
                                << "a d[1:0]=d[1],d[0] 0x4";
    QTest::newRow("bit by its bus") << "out 0x3: a d[1]" << 1 << "d[1:0]=1,0"
                                    << "a d[1:0]=d[1],d[0] 0x6";
    QTest::newRow("net by bus of one bit") << "out 0x3: a b" << 1 << "d[0:0]=0"
                                           << "a d[0:0]=d[0] 0x3";
    QTest::newRow("bus by bit") << "out 0x6: a d[1:0]=1,0" << 1 << "d[1]"
                                << "a d[1] 0x3";
    QTest::newRow("bus by net") << "out 0x7: a d[1:0]=1,0" << 1 << "x"
                                << "a x 0x2";
    QTest::newRow("bus of one bit by net") << "out 0x3: a d[0:0]=0" << 1 << "x"
                                           << "a x 0x3";
    QTest::newRow("no value") << "out: a b" << 1 << "x"
                              << "a x 0x0";
    // As the page shows it: bits on the left stay, zeros follow.
    QTest::newRow("value too short") << "out 0x5: a b c d e f" << 1 << "x"
                                     << "a x c d e f 0x14";
    QTest::newRow("value too long") << "out 0xF2: a b c" << 1 << "x"
                                    << "a x c 0x2";
    QTest::newRow("value that is none") << "out 0xZZ: a b" << 1 << "x"
                                        << "a x 0x0";
    QTest::newRow("Probe In") << "in: a b" << 0 << "d[1:0]=1,0"
                              << "d[1:0]=d[1],d[0] b";

    QTest::newRow("net is there") << "out 0x3: a x b" << 2 << "x"
                                  << "a x 0x1";
    QTest::newRow("net is in a bus") << "out 0x5: d[1:0]=1,0 b" << 1 << "d[1]"
                                     << "d[1:0]=d[1],d[0] 0x2";
    QTest::newRow("bus is there") << "out 0x9: d[1:0]=1,0 e[1:0]=1,0" << 1 << "d[1:0]=1,0"
                                  << "d[1:0]=d[1],d[0] 0x2";
    QTest::newRow("bus is there with fewer bits")
        << "out 0x9: d[1:0]=1,0 e[1:0]=1,0" << 1 << "d[2:0]=2,1,0"
        << "d[2:0]=d[2],d[1],d[0] 0x2";
    QTest::newRow("its bits are there as nets")
        << "out 0x1A: d[0] a e[1:0]=1,0 d[1]" << 2 << "d[1:0]=1,0"
        << "a d[1:0]=d[1],d[0] 0x5";
    QTest::newRow("its bits are there in two buses")
        << "out 0x2B: d[2:1]=2,1 a e[1:0]=1,0 d[0:-1]=0,-1" << 2 << "d[1:0]=1,0"
        << "d[2:1]=d[2],d[1] a d[0:-1]=d[0],d[-1] 0x0B";
    QTest::newRow("bus that it covers in part")
        << "out 0xD: d[2:1]=2,1 e[1:0]=1,0" << 1 << "d[1:0]=1,0"
        << "d[2:1]=d[2],d[1] d[1:0]=d[1],d[0] 0xD";
    QTest::newRow("same again") << "out 0x9: d[1:0]=1,0 b c" << 0 << "d[1:0]=1,0"
                                << "d[1:0]=d[1],d[0] b c 0x9";
}

void TestReplacement::takesThePlace()
{
    QFETCH(QString, port);
    QFETCH(int, position);
    QFETCH(QString, by);
    QFETCH(QString, after);
    ConfigSnapshot config = snapshotFrom({"core", port});
    const ProbeType type = port.startsWith("in") ? ProbeTypeIn : ProbeTypeOut;
    QVERIFY(replaceSignal(&config, placeOf(0, type, 0, position), signalFrom(by)));
    const CoreSnapshot &core = *config.cores.first().content;
    QCOMPARE(textOf(*(type == ProbeTypeIn ? core.probeIns : core.probeOuts).first()), after);
}

void TestReplacement::disabledMembersAreLeftOut()
{
    const auto netlist = newNetlist();
    NETWEIR::RtlNetBus *part = netlist->top()->children().first()->buses().at(1);
    ConfigSnapshot config = snapshotFrom({"core", "in: a", "out 0x1: a"});
    QVERIFY(replaceSignal(&config, placeOf(0, ProbeTypeIn, 0, 0), signalOf(part, ProbeTypeIn)));
    QVERIFY(replaceSignal(&config, placeOf(0, ProbeTypeOut, 0, 0), signalOf(part, ProbeTypeOut)));
    QCOMPARE(textOf(config), QString("core\n"
                                     "in: top/u_new/part[1:0]=top/u_new/part[1],top/u_new/part[0]\n"
                                     "out: top/u_new/part[1:0]=top/u_new/part[0] 0x1"));
    SignalItem nothing = signalOf(part, ProbeTypeOut);
    nothing.members = {nothing.members.first()};
    const ConfigSnapshot before = config;
    QVERIFY(!replaceSignal(&config, placeOf(0, ProbeTypeOut, 0, 0), nothing));
    QVERIFY(sameObjects(config, before));
}

void TestReplacement::restIsShared()
{
    const ConfigSnapshot before =
        snapshotFrom({"core", "in: a", "in: b", "out: c", "out: d", "core", "in: a", "out: c"});
    ConfigSnapshot after = before;
    QVERIFY(replaceSignal(&after, placeOf(0, ProbeTypeOut, 1, 0), signalFrom("x")));
    QCOMPARE(after.cores.at(1).content, before.cores.at(1).content);
    const CoreSnapshot &was = *before.cores.at(0).content;
    const CoreSnapshot &is = *after.cores.at(0).content;
    QVERIFY(was.probeIns == is.probeIns);
    QCOMPARE(is.probeOuts.at(0), was.probeOuts.at(0));
    QCOMPARE(textOf(*was.probeOuts.at(1)), QString("d"));
    QCOMPARE(textOf(*is.probeOuts.at(1)), QString("x 0x0"));
}

void TestReplacement::limitOfAPort()
{
    const SignalItem two = signalFrom("top/d[1:0]=1,0");
    ConfigSnapshot fits = wideConfig(MaxPortSignals - 2);
    QVERIFY(replaceSignal(&fits, placeOf(0, ProbeTypeIn, 0, 0), two));
    QCOMPARE(widthOf(fits.cores.first().content->probeIns.first()->signals), MaxPortSignals);

    ConfigSnapshot full = wideConfig(MaxPortSignals - 1);
    const ConfigSnapshot before = full;
    QVERIFY(!replaceSignal(&full, placeOf(0, ProbeTypeIn, 0, 0), two));
    QVERIFY(sameObjects(full, before));
    QVERIFY(replaceSignal(&full, placeOf(0, ProbeTypeIn, 0, 0), signalFrom("top/x")));
}

void TestReplacement::clockIsReplaced()
{
    const ConfigSnapshot before = snapshotFrom({"core top/clk", "in: a", "core top/clk"});
    ConfigSnapshot after = before;
    QVERIFY(replaceSignal(&after, {1, ProbeTypeIn, -1, -1, -1}, signalFrom("top/u0/clk")));
    QCOMPARE(textOf(after), QString("core top/clk\nin: a\ncore top/u0/clk"));
    QVERIFY(after.cores.at(1).content->syncUserClock);
    QCOMPARE(after.cores.at(0).content, before.cores.at(0).content);
}

void TestReplacement::placesThatDoNotExist()
{
    ConfigSnapshot config = snapshotFrom({"core", "in: a"});
    const ConfigSnapshot before = config;
    const SignalItem by = signalFrom("x");
    QVERIFY(!replaceSignal(&config, placeOf(-1, ProbeTypeIn, 0, 0), by));
    QVERIFY(!replaceSignal(&config, placeOf(1, ProbeTypeIn, 0, 0), by));
    QVERIFY(!replaceSignal(&config, placeOf(0, ProbeTypeIn, 1, 0), by));
    QVERIFY(!replaceSignal(&config, placeOf(0, ProbeTypeOut, 0, 0), by));
    QVERIFY(!replaceSignal(&config, placeOf(0, ProbeTypeIn, 0, -1), by));
    QVERIFY(!replaceSignal(&config, placeOf(0, ProbeTypeIn, 0, 1), by));
    QVERIFY(sameObjects(config, before));
}

void TestReplacement::nameIsReplacedEverywhere_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("after"); // The lines that change.
    QTest::newRow("net") << "top/still"
                         << "top/u_new/r" << 3
                         << QStringList(
                                {"in: top/u_new/r top/clk", "in: top/u_new/r",
                                 "out: top/u_new/r top/u_new/sum[3:0]=top/u_new/sum[3],"
                                 "top/u_new/sum[2],top/u_new/sum[1],top/u_new/sum[0] 0x15"});
    QTest::newRow("net and clock in use")
        << "top/clk"
        << "top/u_new/clk" << 2
        << QStringList({"core top/u_new/clk", "in: top/still top/u_new/clk"});
    QTest::newRow("bit of a bus in place of a bus")
        << "top/u_new/sum[3:0]"
        << "top/u_new/sum[2]" << 1 << QStringList({"out: top/still top/u_new/sum[2] 0x3"});
    QTest::newRow("bus, by its usable bits")
        << "top/u_new/sum[3:0]"
        << "top/u_new/part[1:0]" << 1
        << QStringList({"out: top/still top/u_new/part[1:0]=top/u_new/part[0] 0x3"});
    QTest::newRow("only ports that can hold it")
        << "top/still"
        << "top/u_new/q" << 2 << QStringList({"in: top/u_new/q top/clk", "in: top/u_new/q"});
    QTest::newRow("too many bits") << "top/still"
                                   << "top/u_new/wide[299:0]" << -1 << QStringList();
    QTest::newRow("not in the design") << "top/still"
                                       << "top/gone" << 0 << QStringList();
    QTest::newRow("not in the configuration") << "top/gone"
                                              << "top/still" << 0 << QStringList();
}

void TestReplacement::nameIsReplacedEverywhere()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(QStringList, after);
    const auto netlist = newNetlist();
    const DesignNames names(netlist.get());
    ConfigSnapshot config = snapshotFrom({
        "core top/clk",
        "in: top/still top/clk",
        "core",
        "in: top/still",
        "out 0x15: top/still top/u_new/sum[3:0]=3,2,1,0",
    });
    const ConfigSnapshot before = config;
    QTEST(replaceName(&config, from, to, names), "count");
    const QStringList former = textOf(before).split('\n');
    QStringList changed;
    const QStringList lines = textOf(config).split('\n');
    for (int i = 0; i < lines.size(); ++i) {
        if (lines.at(i) != former.at(i))
            changed.append(lines.at(i));
    }
    QCOMPARE(changed, after);
    QCOMPARE(sameObjects(config, before), after.isEmpty());
}

void TestReplacement::prefixReplacesWhatIsMissing()
{
    const auto netlist = newNetlist();
    const DesignNames names(netlist.get());
    const ConfigSnapshot before = snapshotFrom({
        "core top/u_old/clk",
        "in: top/u_old/q top/still top/u_old/sub/flag top/u_old/gone top/u_older/q",
        "in: top/still",
        "out 0x2D: top/u_old/sum[3:0]=3,2,1,0 top/u_old/q top/u_old/r",
        "out 0x1: top/u_old/part[1:0]=0",
        "core",
        "in: top/still",
    });
    ConfigSnapshot after = before;
    QCOMPARE(replacePrefix(&after, "top/u_old", "top/u_new", names), 5);
    QCOMPARE(textOf(after),
             QString("core top/u_new/clk\n"
                     "in: top/u_new/q top/still top/u_new/sub/flag top/u_old/gone top/u_older/q\n"
                     "in: top/still\n"
                     "out: top/u_new/sum[3:0]=top/u_new/sum[3],top/u_new/sum[2],top/u_new/sum[1],"
                     "top/u_new/sum[0] top/u_old/q top/u_new/r 0x2D\n"
                     "out: top/u_old/part[1:0]=top/u_old/part[0] 0x1\n"
                     "core\n"
                     "in: top/still"));
    QCOMPARE(after.cores.at(1).content, before.cores.at(1).content);
    QCOMPARE(after.cores.at(0).content->probeIns.at(1), before.cores.at(0).content->probeIns.at(1));
    QCOMPARE(after.cores.at(0).content->probeOuts.at(1),
             before.cores.at(0).content->probeOuts.at(1));

    // What is in the design is not missing, and a clock that is not used neither.
    CoreSnapshot unused = *after.cores.at(1).content;
    unused.userClock = "top/u_old/clk";
    after.cores[1].content = std::make_shared<const CoreSnapshot>(unused);
    const ConfigSnapshot done = after;
    QCOMPARE(replacePrefix(&after, "top/u_new", "top", names), 0);
    QCOMPARE(replacePrefix(&after, "top/u_old", "top/u_new", names), 0);
    QVERIFY(sameObjects(after, done));
}

void TestReplacement::prefixRespectsTheLimit()
{
    const auto netlist = newNetlist();
    const DesignNames names(netlist.get());
    Cores cores = coresFrom({"core top/u_old/clk", "in: top/u_old/r"});
    // A bus of which the port has only some bits.
    SignalItem wide = signalFrom("top/u_old/wide[299:0]=1,0");
    cores.list.first()->probeIns.first()->signals.append(wide);
    ConfigSnapshot config = snapshotOf(cores.list);
    const ConfigSnapshot before = config;
    QCOMPARE(replacePrefix(&config, "top/u_old", "top/u_new", names), -1);
    QVERIFY(sameObjects(config, before));
}

void TestReplacement::prefixMakesNoRepeats()
{
    const auto netlist = newNetlist();
    const DesignNames names(netlist.get());
    ConfigSnapshot config = snapshotFrom({
        "core",
        "in: top/u_old/r top/u_new/r top/u_old/sum[2] top/u_new/sum[3:0]=3,2,1,0 top/u_old/r",
    });
    QCOMPARE(replacePrefix(&config, "top/u_old", "top/u_new", names), 3);
    QCOMPARE(textOf(config), QString("core\nin: top/u_new/r top/u_new/sum[3:0]=top/u_new/sum[3],"
                                     "top/u_new/sum[2],top/u_new/sum[1],top/u_new/sum[0]"));
}

/// The number that a change says it explains is the number that it replaces.
void TestReplacement::prefixReplacesWhatItExplains()
{
    const auto netlist = newNetlist();
    const DesignNames names(netlist.get());
    ConfigSnapshot config = snapshotFrom({
        "core top/u_old/clk",
        "in: top/u_old/q top/u_old/sum[1] top/u_old/gone",
        "out: top/u_old/sum[3:0]=3,2,1,0 top/u_old/q top/u_old/r",
        "out: top/u_old/r top/u_old/part[1:0]=1,0",
    });
    QVector<MissingName> missing{{"top/u_old/clk", false, ProbeTypeIn}};
    const CoreSnapshot &core = *config.cores.first().content;
    for (const SignalItem &item : core.probeIns.first()->signals)
        missing.append({item.name, !item.members.isEmpty(), ProbeTypeIn});
    for (const auto &port : core.probeOuts) {
        for (const SignalItem &item : port->signals)
            missing.append({item.name, !item.members.isEmpty(), ProbeTypeOut});
    }
    CandidateSearch search(names);
    search.setMissing(missing);
    while (!search.step(std::chrono::seconds(1))) {
    }
    const QVector<Replacement> changes = search.prefixChanges();
    QCOMPARE(changes.size(), 1);
    QCOMPARE(changes.first().explains, 6);
    QCOMPARE(replacePrefix(&config, changes.first().from, changes.first().to, names), 6);
}

void TestReplacement::changedBusesAreTakenOver()
{
    const auto netlist = newNetlist();
    const DesignNames names(netlist.get());
    const ConfigSnapshot before = snapshotFrom({
        "core top/gone",
        "in: top/u_new/sum[2:0]=2,1,0 top/still top/u_new/sum[3] top/u_new/gone[1:0]=1,0",
        "in: top/u_new/sum[3:0]=3,2,1,0 top/u_new/sum[3:0]=2,1",
        "out 0x16: top/u_new/sum[0:3]=0,1,2,3 top/u_new/part[0:1]=0",
    });
    ConfigSnapshot after = before;
    QCOMPARE(takeOverBuses(&after, names), 3);
    QCOMPARE(textOf(after), QString("core top/gone\n"
                                    "in: top/u_new/sum[3:0]=top/u_new/sum[3],top/u_new/sum[2],"
                                    "top/u_new/sum[1],top/u_new/sum[0] top/still "
                                    "top/u_new/gone[1:0]=top/u_new/gone[1],top/u_new/gone[0]\n"
                                    "in: top/u_new/sum[3:0]=top/u_new/sum[3],top/u_new/sum[2],"
                                    "top/u_new/sum[1],top/u_new/sum[0] "
                                    "top/u_new/sum[3:0]=top/u_new/sum[2],top/u_new/sum[1]\n"
                                    "out: top/u_new/sum[3:0]=top/u_new/sum[3],top/u_new/sum[2],"
                                    "top/u_new/sum[1],top/u_new/sum[0] "
                                    "top/u_new/part[1:0]=top/u_new/part[0] 0x1A"));
    QCOMPARE(after.cores.at(0).content->probeIns.at(1), before.cores.at(0).content->probeIns.at(1));

    ConfigSnapshot full = snapshotFrom({"core", "in: top/u_new/wide[1:0]=1,0"});
    const ConfigSnapshot former = full;
    QCOMPARE(takeOverBuses(&full, names), -1);
    QVERIFY(sameObjects(full, former));
}

void TestReplacement::randomReplacements()
{
    const quint32 seed = TarnTest::setting("TARN_REPLACEMENT_SEED", 1);
    const quint32 runs = TarnTest::setting("TARN_REPLACEMENT_RUNS", 300);
    int replaced = 0;
    for (quint32 run = 0; run < runs; ++run) {
        RandomDesign random(seed + run);
        const KnownDesign design = random.design();
        ConfigSnapshot config = random.config(design);
        const QList<NETWEIR::RtlNet *> nets = design.netlist->top()->singleNetsIncludeSub();
        const QList<NETWEIR::RtlNetBus *> buses = design.netlist->top()->netbusesIncludeSub();
        for (int step = 0; step < 20; ++step) {
            const Place place = placeOf(random.below(2), ProbeType(random.below(2)),
                                        random.below(3), random.below(4));
            if (place.core >= config.cores.size())
                continue;
            const CoreSnapshot &core = *config.cores.at(place.core).content;
            const auto &ports = place.type == ProbeTypeOut ? core.probeOuts : core.probeIns;
            if (place.port >= ports.size() || place.signal >= ports.at(place.port)->signals.size())
                continue;
            const bool bus = !buses.isEmpty() && (nets.isEmpty() || random.chance(50));
            if (!bus && nets.isEmpty())
                continue;
            SignalItem by = bus ? signalOf(buses.at(random.below(buses.size())), place.type)
                                : signalOf(nets.at(random.below(nets.size())), place.type);
            SignalItem left = by;
            removeDisabledMembers(&left);
            if (bus && left.members.isEmpty())
                continue;
            const Reference expected(*ports.at(place.port), place.signal, by);
            QVERIFY(expected.width() <= MaxPortSignals);
            QVERIFY(replaceSignal(&config, place, by));
            const CoreSnapshot &after = *config.cores.at(place.core).content;
            const auto &port =
                (place.type == ProbeTypeOut ? after.probeOuts : after.probeIns).at(place.port);
            QVERIFY2(textOf(*port) == expected.text(place.type == ProbeTypeOut),
                     qPrintable(QString("seed %1: %2")
                                    .arg(seed + run)
                                    .arg(textOf(*port) + ", expected " +
                                         expected.text(place.type == ProbeTypeOut))));
            ++replaced;
        }
    }
    QVERIFY(replaced > int(runs));
}

QTEST_GUILESS_MAIN(TestReplacement)
#include "tst_replacement.moc"
