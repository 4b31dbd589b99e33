// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/setting.h>
#include <support/testcase.h>

#include <audit/candidates.h>
#include <audit/designnames.h>
#include <netweir/hierachy.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>

#include <QCoreApplication>
#include <QSet>
#include <QTest>

#include <algorithm>
#include <random>

using namespace TARN;
using NETWEIR::Hierachy;
using NETWEIR::NetlistBuilder;
using NETWEIR::NetMarks;
using NETWEIR::RtlNetlist;

using Missing = QVector<MissingName>;
using Netlist = std::shared_ptr<RtlNetlist>;

Q_DECLARE_METATYPE(Netlist)

namespace {

/// A netlist from words: "a/b" is the net b in the instance a below the top, "a/b[3:0]" a bus, "a/"
/// an instance without nets. Behind a net, "!" excludes it for Probe Out and "?" for Probe In.
Netlist netlistFrom(const QString &text)
{
    NetlistBuilder builder("top");
    QHash<QString, Hierachy *> nodes{{QString(), builder.top()}};
    const QStringList words = text.split(' ', Qt::SkipEmptyParts);
    for (QString word : words) {
        NetMarks marks;
        marks.excludedForProbeOut = word.contains('!');
        marks.excludedForProbeIn = word.contains('?');
        word.remove('!').remove('?');
        const QStringList levels = word.section('/', 0, -2).split('/', Qt::SkipEmptyParts);
        QString path;
        for (const QString &level : levels) {
            Hierachy *parent = nodes.value(path);
            path += level + '/';
            if (!nodes.contains(path))
                nodes.insert(path, builder.addHierachy(parent, level, "module"));
        }
        const QString leaf = word.section('/', -1);
        const QString range = leaf.section('[', -1);
        if (leaf.endsWith(']') && range.contains(':'))
            builder.addBus(nodes.value(path), leaf.section('[', 0, -2),
                           range.section(':', 0, 0).toInt(),
                           range.section(':', 1, 1).chopped(1).toInt(), {marks});
        else if (!leaf.isEmpty())
            builder.addNet(nodes.value(path), leaf, marks);
    }
    return builder.take();
}

/// Names below the top; those that end with a range are buses.
Missing missingFrom(const QString &text, ProbeType type = ProbeTypeIn)
{
    Missing missing;
    const QStringList words = text.split(' ', Qt::SkipEmptyParts);
    for (const QString &word : words)
        missing.append({"top/" + word, word.endsWith(']') && word.contains(':'), type});
    return missing;
}

QString textOf(const Replacement &found)
{
    if (found.kind == Replacement::Prefix)
        return QString("%1 -> %2 (%3)").arg(found.from, found.to).arg(found.explains);
    return found.bus ? found.to + " bus" : found.to;
}

QString textOf(const QVector<Replacement> &found)
{
    QStringList lines;
    for (const Replacement &each : found)
        lines.append(textOf(each));
    return lines.join("; ");
}

void searchAll(CandidateSearch *search, std::chrono::microseconds slice = std::chrono::seconds(1))
{
    while (!search->step(slice)) {
    }
}

/// Everything that was found for the names.
QString allText(const CandidateSearch &search, const Missing &missing)
{
    QStringList lines{textOf(search.prefixChanges())};
    for (const MissingName &each : missing)
        lines.append(each.name + ": " + textOf(search.candidates(each.name, each.type)));
    lines.sort();
    return lines.join('\n');
}

using Random = std::mt19937;

int below(Random *random, int end)
{
    return int((*random)() % unsigned(end));
}

QString randomName(Random *random)
{
    static const QStringList words{"rx",   "tx",    "data", "valid", "ready", "count", "addr",
                                   "core", "lane",  "fifo", "state", "error", "frame", "q",
                                   "reg",  "phase", "sum",  "index", "mode",  "level", "en"};
    QStringList parts;
    const int count = 1 + below(random, 3);
    for (int i = 0; i < count; ++i)
        parts.append(words.at(below(random, words.size())));
    if (below(random, 4) == 0)
        parts.append(QString::number(below(random, 12)));
    return parts.join(below(random, 8) == 0 ? "" : "_");
}

QString newName(Random *random, QSet<QString> *used)
{
    QString name = randomName(random);
    while (used->contains(name))
        name += QString::number(below(random, 10));
    used->insert(name);
    return name;
}

/// A design by chance, in which one instance got another name.
struct RenamedDesign
{
    Netlist netlist;
    QString from;
    QString to;
    Missing missing; ///< What was below that instance.
};

RenamedDesign renamedDesign(Random *random)
{
    struct Node
    {
        Hierachy *node;
        QString path;
        QSet<QString> names;
    };
    NetlistBuilder builder("top");
    QVector<Node> nodes{{builder.top(), "top", {}}};
    const int count = 2 + below(random, 25);
    for (int i = 0; i < count; ++i) {
        const int parent = below(random, nodes.size());
        const QString name = newName(random, &nodes[parent].names);
        nodes.append({builder.addHierachy(nodes[parent].node, name, "module"),
                      nodes[parent].path + '/' + name,
                      {}});
    }
    QStringList names;
    for (Node &node : nodes) {
        const int nets = 2 + below(random, 8);
        for (int i = 0; i < nets; ++i) {
            const QString name = newName(random, &node.names);
            const int width = below(random, 3) == 0 ? 1 + below(random, 8) : 0;
            if (width == 0)
                builder.addNet(node.node, name);
            else
                builder.addBus(node.node, name, width - 1, 0);
            names.append(node.path + '/' + name +
                         (width == 0 ? QString() : QString("[%1:0]").arg(width - 1)));
        }
    }
    RenamedDesign design;
    const int renamed = 1 + below(random, nodes.size() - 1);
    design.to = nodes[renamed].path;
    QSet<QString> siblings;
    for (const Node &node : qAsConst(nodes))
        siblings.insert(node.path.section('/', -1));
    design.from = design.to.section('/', 0, -2) + '/' + newName(random, &siblings);
    for (const QString &name : qAsConst(names)) {
        if (name.startsWith(design.to + '/'))
            design.missing.append(
                {design.from + name.mid(design.to.size()), name.contains(':'), ProbeTypeIn});
    }
    std::shuffle(design.missing.begin(), design.missing.end(), *random);
    design.netlist = builder.take();
    return design;
}

/// Names that are no names.
QStringList hostileNames()
{
    QStringList names{"",         "/",
                      "//",       "top",
                      "top/",     "/top/clk",
                      "top//clk", "[",
                      "]",        "[]",
                      "top/[3]",  "top/x[",
                      "top/x]",   "top/x[3",
                      "top/x[:]", "top/x[99999999999999999999]",
                      "top/x(7)", "top/\\a/b[3] ",
                      "top/\\ ",  "top/_",
                      "top/$0",   "top/0"};
    names.append("top/" + QString(20000, '/') + "clk");
    names.append("top/" + QString(20000, 'x'));
    names.append("top/" + QString("a_").repeated(20000));
    names.append("top" + QString("/u").repeated(20000) + "/clk");
    names.append(QString("top/") + QChar(0xd800) + QChar('a') + QChar(0xdc00));
    names.append(QString("top/") + QChar(0) + QChar(0xffff));
    names.append("top/" + QString::fromUtf8("größe_ΔΣ"));
    return names;
}

} // namespace

class TestCandidates : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void findsTheSuccessor_data();
    void findsTheSuccessor();
    void offersOnlyWhatPortsCanHold();
    void prefixChangeComesFirst();
    void oneNameIsNoPrefixChange();
    void namesThatStayedDoNotMove();
    void instanceThatStaysIsNoSibling();
    void countsEveryEntry();
    void clockCanTakeABit();
    void findsInLargeInstances_data();
    void findsInLargeInstances();
    void nothingBeforeTheSearch();
    void laterNamesChangeNothingForOthers();
    void remembersMoves();
    void bearsAnyName();
    void bearsAnyDesign();
    void resultsDoNotDependOnSlicesOrOrder();
    void findsARenamedInstance();
};

void TestCandidates::findsTheSuccessor_data()
{
    QTest::addColumn<QString>("design");
    QTest::addColumn<QString>("missing");
    QTest::addColumn<QString>("first");

    const QString counter = "u0/cnt_r u0/cnt_max u0/clk u1/cnt_q u1/clk clk";
    QTest::newRow("other suffix") << counter << "u0/cnt_q"
                                  << "top/u0/cnt_r";
    QTest::newRow("other case") << "u0/rx_data_valid u0/rx_data"
                                << "u0/rxDataValid"
                                << "top/u0/rx_data_valid";
    QTest::newRow("typing error") << "u0/receive u0/recover u0/clk"
                                  << "u0/recieve"
                                  << "top/u0/receive";
    QTest::newRow("bus with another suffix") << "u0/sum_r[7:0] u0/sum_r2[3:0]"
                                             << "u0/sum_q[7:0]"
                                             << "top/u0/sum_r[7:0] bus";
    QTest::newRow("other range") << "u0/sum[8:0] u0/sum_q[7:0]"
                                 << "u0/sum[7:0]"
                                 << "top/u0/sum[8:0] bus";
    QTest::newRow("range reversed") << "u0/sum[0:7] u0/sum_q[7:0]"
                                    << "u0/sum[7:0]"
                                    << "top/u0/sum[0:7] bus";
    QTest::newRow("bus becomes a net") << "u0/busy u0/done"
                                       << "u0/busy[0:0]"
                                       << "top/u0/busy";
    QTest::newRow("net becomes a bus") << "u0/busy[1:0] u0/done"
                                       << "u0/busy"
                                       << "top/u0/busy[1:0] bus";
    QTest::newRow("bit of a bus") << "u0/sum_r[7:0] u0/max_r[7:0]"
                                  << "u0/sum_q[5]"
                                  << "top/u0/sum_r[5]";
    QTest::newRow("bit that is no longer there") << "u0/sum[3:0]"
                                                 << "u0/sum[5]" << QString();
    QTest::newRow("bit to net") << "u0/ack_0 u0/ack_1"
                                << "u0/ack[1]"
                                << "top/u0/ack_1";
    QTest::newRow("net to bit") << "u0/ack[3:0]"
                                << "u0/ack_1"
                                << "top/u0/ack[1]";
    QTest::newRow("generate scope") << "g[0].x g[1].x y"
                                    << "x_1"
                                    << "top/g[1].x";
    QTest::newRow("other generate scope") << "g(0).x g(1).x y"
                                          << "g[1].x"
                                          << "top/g(1).x";
    QTest::newRow("generate scope renamed")
        << "lamp_drive[0].level lamp_drive[1].level lamp_drive[0].duty level"
        << "led_drive[0].level"
        << "top/lamp_drive[0].level";
    QTest::newRow("generate scope with another number") << "lamp[0].level lamp[1].level"
                                                        << "lamp[2].level" << QString();
    QTest::newRow("instance renamed") << "u_fifo/full u_filter/full u_fir/full"
                                      << "i_fifo/full"
                                      << "top/u_fifo/full";
    QTest::newRow("instance moved") << "a/u_fifo/level_reached b/level a/u_fir/level_high"
                                    << "u_fifo/level_reached"
                                    << "top/a/u_fifo/level_reached";
    QTest::newRow("net moved into an instance") << "core/u_alu/result core/u_fpu/state"
                                                << "core/alu_result"
                                                << "top/core/u_alu/result";
    QTest::newRow("net moved out of an instance") << "core/alu_result core/state"
                                                  << "core/u_alu/result"
                                                  << "top/core/alu_result";
    QTest::newRow("nothing alike") << counter << "u0/parity" << QString();
    QTest::newRow("another number") << "u0/lane_0 u0/lane_1"
                                    << "u0/lane_2" << QString();
    QTest::newRow("a sibling by its meaning") << "u0/aw_valid u0/ar_valid"
                                              << "u0/w_valid" << QString();
    QTest::newRow("removed instance") << "a/clk b/clk c/clk clk d/clk"
                                      << "gone/ready" << QString();
}

void TestCandidates::findsTheSuccessor()
{
    QFETCH(QString, design);
    QFETCH(QString, missing);
    QFETCH(QString, first);
    const Netlist netlist = netlistFrom(design);
    const DesignNames names(netlist.get());
    CandidateSearch search(names);
    const Missing names1 = missingFrom(missing);
    search.setMissing(names1);
    searchAll(&search);
    const QVector<Replacement> found = search.candidates(names1.first().name, ProbeTypeIn);
    QCOMPARE(found.isEmpty() ? QString() : textOf(found.first()), first);
    QVERIFY(found.size() <= 9);
}

void TestCandidates::offersOnlyWhatPortsCanHold()
{
    const Netlist netlist = netlistFrom("u0/sum_r! u0/sum_reg? u0/max_r[1:0]! u0/max_reg[1:0]?");
    const DesignNames names(netlist.get());
    CandidateSearch search(names);
    search.setMissing(missingFrom("u0/sum_q u0/max_q[1:0] u0/max_q[1]", ProbeTypeIn) +
                      missingFrom("u0/sum_q u0/max_q[1:0] u0/max_q[1]", ProbeTypeOut));
    searchAll(&search);
    QCOMPARE(textOf(search.candidates("top/u0/sum_q", ProbeTypeIn)), QString("top/u0/sum_r"));
    QCOMPARE(textOf(search.candidates("top/u0/sum_q", ProbeTypeOut)), QString("top/u0/sum_reg"));
    QCOMPARE(textOf(search.candidates("top/u0/max_q[1:0]", ProbeTypeIn)),
             QString("top/u0/max_r[1:0] bus"));
    QCOMPARE(textOf(search.candidates("top/u0/max_q[1:0]", ProbeTypeOut)),
             QString("top/u0/max_reg[1:0] bus"));
    QCOMPARE(textOf(search.candidates("top/u0/max_q[1]", ProbeTypeIn)), QString("top/u0/max_r[1]"));
    QCOMPARE(textOf(search.candidates("top/u0/max_q[1]", ProbeTypeOut)),
             QString("top/u0/max_reg[1]"));
}

void TestCandidates::prefixChangeComesFirst()
{
    const Netlist netlist =
        netlistFrom("u_new/clk u_new/sub/ready u_new/sum[3:0] u_old2/clk clk ready");
    const DesignNames names(netlist.get());
    CandidateSearch search(names);
    search.setMissing(missingFrom("u_old/clk u_old/sub/ready u_old/sum[3:0] u_old/gone"));
    searchAll(&search);
    const QString change = "top/u_old -> top/u_new (3)";
    QCOMPARE(textOf(search.prefixChanges()), change);
    for (const char *name : {"clk", "sub/ready", "sum[3:0]"}) {
        const QVector<Replacement> found =
            search.candidates(QString("top/u_old/") + name, ProbeTypeIn);
        QCOMPARE(textOf(found.value(0)), change);
        QCOMPARE(found.value(1).to, QString("top/u_new/") + name);
    }
    QCOMPARE(textOf(search.candidates("top/u_old/gone", ProbeTypeIn)), QString());
}

void TestCandidates::oneNameIsNoPrefixChange()
{
    const Netlist netlist = netlistFrom("u_fifo/clk u_fifo/full");
    const DesignNames names(netlist.get());
    CandidateSearch search(names);
    // In ports of both kinds, and twice in one kind: still one name.
    search.setMissing(missingFrom("i_fifo/full i_fifo/full") +
                      missingFrom("i_fifo/full", ProbeTypeOut));
    searchAll(&search);
    QCOMPARE(textOf(search.prefixChanges()), QString());
    QCOMPARE(textOf(search.candidates("top/i_fifo/full", ProbeTypeOut)),
             QString("top/u_fifo/full"));
}

/// Signals that are renamed at the top often keep their names at the ports of an instance below.
void TestCandidates::namesThatStayedDoNotMove()
{
    const Netlist netlist = netlistFrom("set_point[3:0] gates u_ctl/setpoint[3:0] u_ctl/stop_gate");
    const DesignNames names(netlist.get());
    CandidateSearch search(names);
    search.setMissing(missingFrom("setpoint[3:0] stop_gate"));
    searchAll(&search);
    QCOMPARE(textOf(search.prefixChanges()), QString());
    QCOMPARE(textOf(search.candidates("top/setpoint[3:0]", ProbeTypeIn).value(0)),
             QString("top/set_point[3:0] bus"));

    // When most of them are nowhere else, they all moved.
    const Netlist split = netlistFrom("set_point u_ctl/setpoint u_ctl/enable u_ctl/watchdog");
    const DesignNames splitNames(split.get());
    CandidateSearch splitSearch(splitNames);
    splitSearch.setMissing(missingFrom("setpoint enable watchdog"));
    searchAll(&splitSearch);
    const QString change = "top -> top/u_ctl (3)";
    QCOMPARE(textOf(splitSearch.prefixChanges()), change);
    QCOMPARE(textOf(splitSearch.candidates("top/setpoint", ProbeTypeIn).value(0)), change);
}

/// What is removed from one instance is often still in another one.
void TestCandidates::instanceThatStaysIsNoSibling()
{
    const Netlist netlist = netlistFrom("u_rx/clk u_tx/clk u_tx/bit_count u_tx/state[2:0]");
    const DesignNames names(netlist.get());
    CandidateSearch search(names);
    search.setMissing(missingFrom("u_rx/bit_count u_rx/state[2:0]"));
    searchAll(&search);
    QCOMPARE(textOf(search.prefixChanges()), QString());
    search.setMissing(missingFrom("u_gone/bit_count u_gone/state[2:0]"));
    searchAll(&search);
    QCOMPARE(textOf(search.prefixChanges()), QString("top/u_gone -> top/u_tx (2)"));
}

void TestCandidates::countsEveryEntry()
{
    const Netlist netlist = netlistFrom("u_fifo/clk u_fifo/full!");
    const DesignNames names(netlist.get());
    CandidateSearch search(names);
    search.setMissing(missingFrom("i_fifo/clk i_fifo/full i_fifo/clk") +
                      missingFrom("i_fifo/full i_fifo/clk", ProbeTypeOut));
    searchAll(&search);
    QCOMPARE(textOf(search.prefixChanges()), QString("top/i_fifo -> top/u_fifo (4)"));
    QCOMPARE(textOf(search.candidates("top/i_fifo/full", ProbeTypeOut)), QString());
}

void TestCandidates::clockCanTakeABit()
{
    const Netlist netlist = netlistFrom("u0/clk[0:0] u0/rst");
    const DesignNames names(netlist.get());
    CandidateSearch search(names);
    search.setMissing(missingFrom("u0/clk"));
    searchAll(&search);
    QCOMPARE(textOf(search.candidates("top/u0/clk", ProbeTypeIn)),
             QString("top/u0/clk[0:0] bus; top/u0/clk[0]"));
}

void TestCandidates::findsInLargeInstances_data()
{
    QTest::addColumn<QString>("missing");
    QTest::addColumn<QString>("first");
    QTest::newRow("suffix") << "phase_error_q"
                            << "top/phase_error_r";
    QTest::newRow("number") << "lane_data_77_q"
                            << "top/lane_data_77";
    QTest::newRow("another number") << "lane_data_2000" << QString();
    QTest::newRow("letter more") << "synchroniser"
                                 << "top/synchronizer";
    QTest::newRow("letters changed places") << "qaudrature"
                                            << "top/quadrature";
    QTest::newRow("word in one") << "phaseerror_r"
                                 << "top/phase_error_r";
    QTest::newRow("instance") << "u_block_17/clk"
                              << "top/i_block_17/clk";
    QTest::newRow("moved, with many of its name") << "far/away/deep_9/u/clk"
                                                  << "top/a_9/deep_9/u/clk";
}

void TestCandidates::findsInLargeInstances()
{
    QFETCH(QString, missing);
    QFETCH(QString, first);
    QString text = "phase_error_r synchronizer quadrature ";
    for (int i = 0; i < 1000; ++i)
        text += QString("lane_data_%1 i_block_%1/clk a_%1/deep_%1/u/clk ").arg(i);
    const Netlist netlist = netlistFrom(text);
    const DesignNames names(netlist.get());
    CandidateSearch search(names);
    search.setMissing(missingFrom(missing));
    searchAll(&search);
    const QVector<Replacement> found = search.candidates("top/" + missing, ProbeTypeIn);
    QCOMPARE(found.isEmpty() ? QString() : textOf(found.first()), first);
}

void TestCandidates::nothingBeforeTheSearch()
{
    const Netlist netlist = netlistFrom("u_fifo/clk u_fifo/full");
    const DesignNames names(netlist.get());
    CandidateSearch search(names);
    QVERIFY(search.step(std::chrono::microseconds(0)));
    const Missing missing = missingFrom("i_fifo/clk i_fifo/full");
    search.setMissing(missing);
    QCOMPARE(allText(search, missing), QString("\ntop/i_fifo/clk: \ntop/i_fifo/full: "));
    QVERIFY(!search.step(std::chrono::microseconds(0)));
    searchAll(&search);
    const QString found = allText(search, missing);
    QVERIFY(found.contains("top/i_fifo -> top/u_fifo (2)"));
    // The same names again need no search.
    search.setMissing(missing);
    QVERIFY(search.step(std::chrono::microseconds(0)));
    QCOMPARE(allText(search, missing), found);
    search.setMissing({});
    QVERIFY(search.step(std::chrono::microseconds(0)));
    QCOMPARE(textOf(search.prefixChanges()), QString());
    QCOMPARE(textOf(search.candidates("top/i_fifo/clk", ProbeTypeIn)), QString());
}

void TestCandidates::laterNamesChangeNothingForOthers()
{
    const Netlist netlist = netlistFrom("u_fifo/clk u_fifo/full u_fifo/level_r x y_r");
    const DesignNames names(netlist.get());
    CandidateSearch search(names);
    // In the middle of a search as well.
    search.setMissing(missingFrom("u_fifo/level_q"));
    search.step(std::chrono::microseconds(0));
    search.setMissing(missingFrom("i_fifo/clk i_fifo/full"));
    search.step(std::chrono::microseconds(0));
    search.setMissing(missingFrom("u_fifo/level_q y_q"));
    searchAll(&search);
    QCOMPARE(textOf(search.candidates("top/u_fifo/level_q", ProbeTypeIn)),
             QString("top/u_fifo/level_r"));
    QCOMPARE(textOf(search.candidates("top/y_q", ProbeTypeIn)), QString("top/y_r"));
    QCOMPARE(textOf(search.candidates("top/i_fifo/clk", ProbeTypeIn)), QString());
}

/// As when a user replaces what a prefix change explains, and then looks at what is left.
void TestCandidates::remembersMoves()
{
    const Netlist netlist = netlistFrom("u_bridge/a u_bridge/b u_bridge/carrier[10:0] u_mux/c d e");
    const DesignNames names(netlist.get());
    CandidateSearch search(names);
    search.setMissing(missingFrom("u_pwm/a u_pwm/b u_pwm/carrier[9:0]"));
    searchAll(&search);
    QCOMPARE(textOf(search.prefixChanges()), QString("top/u_pwm -> top/u_bridge (2)"));
    const QString carrier = "top/u_bridge/carrier[10:0] bus";
    QCOMPARE(textOf(search.candidates("top/u_pwm/carrier[9:0]", ProbeTypeIn)), carrier);
    search.setMissing(missingFrom("u_pwm/carrier[9:0]"));
    searchAll(&search);
    QCOMPARE(textOf(search.prefixChanges()), QString());
    QCOMPARE(textOf(search.candidates("top/u_pwm/carrier[9:0]", ProbeTypeIn)), carrier);
}

void TestCandidates::bearsAnyName()
{
    const Netlist netlist = netlistFrom("clk x[3:0] u/u/u/clk a_a_a");
    const DesignNames names(netlist.get());
    CandidateSearch search(names);
    Missing missing;
    for (const QString &name : hostileNames()) {
        for (const bool bus : {false, true})
            missing.append({name, bus, bus ? ProbeTypeOut : ProbeTypeIn});
    }
    search.setMissing(missing);
    searchAll(&search);
    const QSet<QString> known{"top/clk",  "top/x[3:0]", "top/u/u/u/clk", "top/a_a_a",
                              "top/x[0]", "top/x[1]",   "top/x[2]",      "top/x[3]"};
    for (const MissingName &each : qAsConst(missing)) {
        for (const Replacement &found : search.candidates(each.name, each.type))
            QVERIFY(found.kind == Replacement::Prefix || known.contains(found.to));
    }
}

void TestCandidates::bearsAnyDesign()
{
    NetlistBuilder builder("");
    Hierachy *node = builder.top();
    for (const QString &name : hostileNames()) {
        builder.addNet(node, name);
        builder.addBus(node, name, 1, 0);
        node = builder.addHierachy(node, name.left(100), "module");
    }
    const Netlist netlist = builder.take();
    const DesignNames names(netlist.get());
    CandidateSearch search(names);
    Missing missing = missingFrom("clk x[3:0] u/u/clk[1] a_a_b");
    for (const NETWEIR::RtlNet *net : netlist->top()->singleNetsIncludeSub())
        missing.append({net->fullPathName() + "_q", false, ProbeTypeIn});
    for (const NETWEIR::RtlNetBus *bus : netlist->top()->netbusesIncludeSub())
        missing.append({"x/" + bus->fullBusName(), true, ProbeTypeIn});
    search.setMissing(missing);
    searchAll(&search);
    for (const MissingName &each : qAsConst(missing)) {
        for (const Replacement &found : search.candidates(each.name, each.type))
            QVERIFY(found.kind == Replacement::Prefix || names.net(found.to) ||
                    names.bus(found.to));
    }
}

void TestCandidates::resultsDoNotDependOnSlicesOrOrder()
{
    const quint32 seed = TarnTest::setting("TARN_CANDIDATES_SEED", 1);
    const quint32 runs = TarnTest::setting("TARN_CANDIDATES_RUNS", 25);
    for (quint32 run = 0; run < runs; ++run) {
        Random random(seed + run);
        RenamedDesign design = renamedDesign(&random);
        // Some that have nothing to do with the renamed instance.
        for (int i = 0; i < 10; ++i)
            design.missing.append(
                {design.to.section('/', 0, 1) + '/' + randomName(&random), false, ProbeTypeIn});
        const DesignNames names(design.netlist.get());
        CandidateSearch atOnce(names);
        atOnce.setMissing(design.missing);
        searchAll(&atOnce);
        const QString expected = allText(atOnce, design.missing);

        CandidateSearch inSlices(names);
        const Missing some = design.missing.mid(0, design.missing.size() / 2);
        inSlices.setMissing(some);
        const int steps = below(&random, 20 + some.size());
        bool complete = some.isEmpty();
        for (int i = 0; i < steps && !complete; ++i)
            complete = inSlices.step(std::chrono::microseconds(0));
        QVERIFY(!complete);
        std::shuffle(design.missing.begin(), design.missing.end(), random);
        inSlices.setMissing(design.missing);
        searchAll(&inSlices, std::chrono::microseconds(0));
        QVERIFY2(allText(inSlices, design.missing) == expected,
                 qPrintable(QString::number(seed + run)));
    }
}

void TestCandidates::findsARenamedInstance()
{
    const quint32 seed = TarnTest::setting("TARN_CANDIDATES_SEED", 1);
    const quint32 runs = TarnTest::setting("TARN_CANDIDATES_RUNS", 200);
    for (quint32 run = 0; run < runs; ++run) {
        Random random(seed + run);
        const RenamedDesign design = renamedDesign(&random);
        const DesignNames names(design.netlist.get());
        CandidateSearch search(names);
        search.setMissing(design.missing);
        searchAll(&search);
        const QString change =
            QString("%1 -> %2 (%3)").arg(design.from, design.to).arg(design.missing.size());
        const QByteArray where = "seed " + QByteArray::number(seed + run);
        QVERIFY2(textOf(search.prefixChanges().value(0)) == change,
                 where + ": " + qPrintable(change) + ", found " +
                     qPrintable(textOf(search.prefixChanges())));
        for (const MissingName &each : design.missing) {
            const QVector<Replacement> found = search.candidates(each.name, each.type);
            QVERIFY2(textOf(found.value(0)) == change,
                     where + ": " + qPrintable(each.name + ": " + textOf(found)));
        }
    }
}

QTEST_GUILESS_MAIN(TestCandidates)
#include "tst_candidates.moc"
