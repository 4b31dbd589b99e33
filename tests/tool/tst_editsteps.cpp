// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "handeditor.h"

#include <support/files.h>
#include <support/processortime.h>
#include <support/setting.h>
#include <support/testcase.h>

#include <fakeextraction.h>
#include <model/configwriter.h>
#include <model/netsignals.h>
#include <model/portbits.h>
#include <model/portlimits.h>
#include <model/tarnconfig.h>
#include <netweir/hierachy.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>
#include <probes/initialvalueline.h>
#include <probes/signalsamples.h>
#include <select/netsearch.h>
#include <te/designmanager.h>
#include <te/taskengine.h>
#include <tool/config/configtext.h>
#include <tool/edit/configchanges.h>
#include <tool/edit/editedconfig.h>
#include <tool/edit/editstep.h>
#include <tool/edit/signalchoice.h>
#include <tool/edit/stepexecution.h>

#include <QApplication>
#include <QLabel>
#include <QRandomGenerator>
#include <QRegExp>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <vector>

using namespace Tool;
using NETWEIR::NetMarks;
using TARN::ProbeType;
using TARN::ProbeTypeIn;
using TARN::ProbeTypeOut;
using TARN::TarnCore;
using TarnTest::bus;
using TarnTest::HandEditor;
using TarnTest::net;
using TarnTest::setting;

namespace {

constexpr NetMarks NotIn{true, false};
constexpr NetMarks NotOut{false, true};

/// The nets and buses of an instance of the design.
void fill(NETWEIR::NetlistBuilder *builder, NETWEIR::Hierachy *node)
{
    builder->addNet(node, QStringLiteral("clk"), NotOut);
    builder->addNet(node, QStringLiteral("force"));
    builder->addNet(node, QStringLiteral("Enable"));
    builder->addNet(node, QStringLiteral("dead"), NotIn);
    builder->addNet(node, QStringLiteral("st.valid"));
    for (int i = 0; i < 8; ++i)
        builder->addNet(node, QStringLiteral("flag_%1").arg(i), i % 3 ? NetMarks() : NotOut);
    builder->addBus(node, QStringLiteral("data"), 7, 0);
    builder->addBus(node, QStringLiteral("mode"), 0, 4);
    builder->addBus(node, QStringLiteral("part"), 3, 0, {{}, NotOut, {}, NotOut});
    builder->addBus(node, QStringLiteral("gone"), 1, 0, {NotIn, NotIn});
    builder->addBus(node, QStringLiteral("most"), 2, 0, {NotIn, {}, {}});
    builder->addBus(node, QStringLiteral("wide"), 99, 0);
    builder->addBus(node, QStringLiteral("m[0]"), 2, 0);
    builder->addBus(node, QStringLiteral("m[1]"), 2, 0);
}

std::unique_ptr<NETWEIR::RtlNetlist> makeDesign()
{
    NETWEIR::NetlistBuilder builder(QStringLiteral("top"));
    fill(&builder, builder.top());
    for (const char *name : {"u0", "u1", "g[0].u"})
        fill(&builder,
             builder.addHierachy(builder.top(), QLatin1String(name), QStringLiteral("unit")));
    return builder.take();
}

/// Runs steps as the command does.
class Session
{
public:
    explicit Session(OwnedCores cores, std::unique_ptr<NETWEIR::RtlNetlist> netlist = makeDesign())
        : m_netlist(std::move(netlist))
        , m_choice(m_netlist.get())
        , m_config(std::move(cores))
        , m_execution(&m_config, [this] {
            ++m_reads;
            return &m_choice;
        })
    {
    }

    /// Returns the error of the first step that was refused.
    QString run(const QString &steps)
    {
        QVector<EditStep> parsed;
        QString error;
        if (!parseSteps(steps.split(QLatin1Char(' ')), &parsed, &error))
            return error;
        for (const EditStep &step : qAsConst(parsed)) {
            if (!m_execution.execute(step))
                return stepText(step) + QLatin1String(": ") + m_execution.error();
        }
        return {};
    }

    bool execute(const EditStep &step) { return m_execution.execute(step); }
    QString error() const { return m_execution.error(); }
    QStringList warnings() const { return m_execution.warnings(); }
    int designReads() const { return m_reads; }
    EditedConfig &config() { return m_config; }
    NETWEIR::RtlNetlist *netlist() const { return m_netlist.get(); }

    QByteArray content()
    {
        m_config.storeValues();
        m_config.setModules(m_netlist->top()->instName());
        return TARN::ConfigWriter(m_config.cores()).content();
    }
    QString text() const { return QString::fromUtf8(configText(m_config.cores())); }

private:
    std::unique_ptr<NETWEIR::RtlNetlist> m_netlist;
    SignalChoice m_choice;
    EditedConfig m_config;
    StepExecution m_execution;
    int m_reads = 0;
};

OwnedCores coresWithPorts(int cores, int ins, int outs)
{
    OwnedCores made;
    for (int i = 0; i < cores; ++i) {
        auto *core = new TarnCore(i);
        for (int k = 0; k < ins; ++k)
            core->addProbeIn(k);
        for (int k = 0; k < outs; ++k)
            core->addProbeOut(k);
        made.append(core);
    }
    return made;
}

/// The bus "name[left:right]" with its bits.
TARN::SignalItem range(const QString &name, int left, int right)
{
    QStringList bits;
    for (int i = left; left < right ? i <= right : i >= right; i += left < right ? 1 : -1)
        bits.append(QStringLiteral("%1[%2]").arg(name).arg(i));
    return bus(QStringLiteral("%1[%2:%3]").arg(name).arg(left).arg(right), bits);
}

/// Steps by chance, in words, of which most are possible.
class RandomSteps
{
public:
    RandomSteps(quint32 seed, NETWEIR::RtlNetlist *netlist);

    OwnedCores cores();
    QStringList step(const EditedConfig &config);

    int below(int limit) { return m_random.bounded(limit); }
    bool chance(int percent) { return below(100) < percent; }

private:
    template <typename List>
    auto anyOf(const List &list)
    {
        return list.at(below(list.size()));
    }
    QString number(const EditedConfig &config, int core);
    QString port(const EditedConfig &config, int core, ProbeType type, int *position);
    QStringList signalsStep(const EditedConfig &config, int core);
    QStringList valueStep(const EditedConfig &config, int core);
    QStringList removeStep(const EditedConfig &config, int core);
    QStringList replaceStep(const EditedConfig &config);
    QString name(ProbeType type, bool isFirst);
    QString pattern(ProbeType type);
    TARN::SignalItem item(ProbeType type);
    QString storedValue(int width);
    void fillPort(TARN::ProbeIn *port, ProbeType type);

    QRandomGenerator m_random;
    NETWEIR::RtlNetlist *m_netlist;
    QList<NETWEIR::RtlNet *> m_nets;
    QList<NETWEIR::RtlNetBus *> m_buses;
};

RandomSteps::RandomSteps(quint32 seed, NETWEIR::RtlNetlist *netlist)
    : m_random(seed)
    , m_netlist(netlist)
    , m_nets(netlist->top()->singleNetsIncludeSub())
    , m_buses(netlist->top()->netbusesIncludeSub())
{
}

/// What older programs and editors by hand may have left.
QString RandomSteps::storedValue(int width)
{
    static const QStringList odd = {QString(),
                                    QStringLiteral("0x"),
                                    QStringLiteral("0x1"),
                                    QStringLiteral("0xfedcba9876543210"),
                                    QStringLiteral("1F"),
                                    QStringLiteral("0xzz9"),
                                    QStringLiteral("17 !")};
    if (chance(40))
        return anyOf(odd);
    QString value = QStringLiteral("0x");
    for (int i = 0; i < qMax(1, (width + 3) / 4); ++i)
        value += QString::number(below(16), 16).toUpper();
    return value;
}

TARN::SignalItem RandomSteps::item(ProbeType type)
{
    if (chance(10))
        return range(QStringLiteral("top/u9/data"), 7, 0);
    if (chance(10))
        return net(QStringLiteral("top/u9/force"));
    if (chance(60))
        return TARN::signalOf(anyOf(m_nets), type);
    TARN::SignalItem item = TARN::signalOf(anyOf(m_buses), type);
    TARN::removeDisabledMembers(&item);
    return item;
}

void RandomSteps::fillPort(TARN::ProbeIn *port, ProbeType type)
{
    for (int i = below(5); i > 0; --i)
        port->signals.append(item(type));
    if (chance(3))
        port->index = below(5); // Numbered by hand.
}

OwnedCores RandomSteps::cores()
{
    const int count = chance(10) ? TARN::MaxCores - below(2) : below(4);
    OwnedCores made = coresWithPorts(count, 0, 0);
    for (TarnCore *core : made.list()) {
        if (chance(5))
            core->index = below(20);
        const int ins = chance(5) ? TARN::MaxPorts - below(2) : below(4);
        for (int i = 0; i < ins; ++i) {
            core->addProbeIn(i);
            fillPort(core->probeIns.last(), ProbeTypeIn);
        }
        const int outs = chance(5) ? TARN::MaxPorts - below(2) : below(5);
        for (int i = 0; i < outs; ++i) {
            core->addProbeOut(i);
            fillPort(core->probeOuts.last(), ProbeTypeOut);
            core->probeOuts.last()->initialValue =
                storedValue(TARN::widthOf(core->probeOuts.last()->signals));
        }
        core->userClock = chance(50) ? anyOf(m_nets)->fullPathName() : QString();
        core->syncUserClock = chance(50);
    }
    return made;
}

QString RandomSteps::number(const EditedConfig &config, int core)
{
    return QString::number(config.cores().at(core)->index);
}

QString RandomSteps::port(const EditedConfig &config, int core, ProbeType type, int *position)
{
    const int count = config.portCount(core, type);
    *position = count ? below(count) : 0;
    return number(config, core) + QLatin1Char('.') + portText(type, *position);
}

/// A part of a bus is only chosen first: by hand this adds more, which is then removed.
QString RandomSteps::name(ProbeType type, bool isFirst)
{
    for (;;) {
        if (chance(60)) {
            NETWEIR::RtlNet *net = anyOf(m_nets);
            if (!TARN::isExcluded(net, type))
                return net->fullPathName();
            continue;
        }
        NETWEIR::RtlNetBus *bus = anyOf(m_buses);
        const bool whole = !TARN::isExcluded(bus, type);
        if (whole && chance(25))
            return anyOf(bus->nets())->fullPathName();
        if (whole || (isFirst && chance(50)))
            return bus->fullBusName();
    }
}

/// A pattern without buses of which only parts can be used: by hand they can not be chosen with the
/// others. Empty when chance finds none.
QString RandomSteps::pattern(ProbeType type)
{
    static const QStringList patterns = {
        QStringLiteral("*/u0/*"),     QStringLiteral("*flag_?"),
        QStringLiteral("top/enable"), QStringLiteral("*data\\[*"),
        QStringLiteral("*[dm]o*"),    QStringLiteral("*"),
        QStringLiteral("*u?/*lag*"),  QStringLiteral("*m\\[0\\]\\[*"),
        QStringLiteral("*wide*"),     QStringLiteral("*/g\\[0\\].u/fo*")};
    TARN::SearchOptions options;
    options.pattern = anyOf(patterns);
    options.usePattern = true;
    options.patternSyntax = QRegExp::WildcardUnix;
    options.useSearchIn = options.includeSubentries = true;
    options.searchIn = m_netlist->top();
    QList<NETWEIR::RtlNet *> nets;
    QList<NETWEIR::RtlNetBus *> buses;
    TARN::searchNets(m_netlist, options, nets, buses);
    for (NETWEIR::RtlNetBus *bus : qAsConst(buses)) {
        if (TARN::isExcluded(bus, type))
            return QString();
    }
    return options.pattern;
}

QStringList RandomSteps::signalsStep(const EditedConfig &config, int core)
{
    const ProbeType type = chance(50) ? ProbeTypeOut : ProbeTypeIn;
    int position = 0;
    QStringList words = {QStringLiteral("signals"), port(config, core, type, &position)};
    if (chance(25)) {
        const QString found = pattern(type);
        if (!found.isEmpty())
            return words + QStringList{QStringLiteral("--wildcard"), found};
    }
    for (int i = 0; i <= below(4); ++i)
        words.append(name(type, i == 0));
    return words;
}

QStringList RandomSteps::valueStep(const EditedConfig &config, int core)
{
    int position = 0;
    const QString out = port(config, core, ProbeTypeOut, &position);
    const int width = config.portCount(core, ProbeTypeOut)
                          ? TARN::widthOf(config.port(core, ProbeTypeOut, position).signals)
                          : 0;
    QString value = QStringLiteral("0x");
    for (int i = 0; i < qMax(1, (width + 3) / 4); ++i) {
        const QString digit = QString::number(below(16), 16);
        value += chance(50) ? digit.toUpper() : digit;
    }
    return {QStringLiteral("value"), out, value};
}

QStringList RandomSteps::removeStep(const EditedConfig &config, int core)
{
    QStringList words = {QStringLiteral("remove")};
    if (chance(15))
        return words << number(config, core);
    const ProbeType type = chance(60) ? ProbeTypeOut : ProbeTypeIn;
    int position = 0;
    words.append(port(config, core, type, &position));
    if (config.portCount(core, type) == 0 || chance(30))
        return words;
    for (const TARN::SignalItem &item : config.port(core, type, position).signals) {
        if (item.enabled && chance(50)) // Other rows cannot be selected by hand.
            words.append(item.name);
    }
    return words;
}

QStringList RandomSteps::replaceStep(const EditedConfig &config)
{
    if (chance(50))
        return {QStringLiteral("replace-prefix"), QStringLiteral("top/u9"),
                chance(50) ? QStringLiteral("top/u0") : QStringLiteral("top/u1")};
    const TARN::ConfigSnapshot snapshot = config.snapshot();
    QStringList used;
    for (const TARN::ConfigSnapshot::Core &core : snapshot.cores) {
        for (const auto &ports : {core.content->probeIns, core.content->probeOuts}) {
            for (const auto &port : ports)
                used += TarnTest::namesOf(port->signals);
        }
    }
    if (used.isEmpty())
        return {QStringLiteral("add-core")};
    return {QStringLiteral("replace"), anyOf(used), name(ProbeTypeOut, true)};
}

QStringList RandomSteps::step(const EditedConfig &config)
{
    const int core = below(config.cores().size());
    switch (below(12)) {
    case 0:
        return {QStringLiteral("add-core")};
    case 1:
        return {QStringLiteral("add-in"), number(config, core)};
    case 2:
        return {QStringLiteral("add-out"), number(config, core)};
    case 3:
    case 4:
        return valueStep(config, core);
    case 5:
        return {QStringLiteral("clock"), number(config, core),
                chance(30) ? QStringLiteral("none") : name(ProbeTypeIn, false)};
    case 6:
    case 7:
        return removeStep(config, core);
    case 8:
        return replaceStep(config);
    default:
        return signalsStep(config, core);
    }
}

} // namespace

class TestEditSteps : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void stepsChangeTheConfiguration_data();
    void stepsChangeTheConfiguration();
    void impossibleStepsAreRefused_data();
    void impossibleStepsAreRefused();
    void limitsHold_data();
    void limitsHold();
    void unclearStepsAreRefused_data();
    void unclearStepsAreRefused();
    void designIsReadWhenAStepNeedsIt_data();
    void designIsReadWhenAStepNeedsIt();
    void bitsLeftOutAreToldAbout();
    void valuesAreThoseThatCanBeTyped_data();
    void valuesAreThoseThatCanBeTyped();
    void differenceIsShownByCoreAndPort_data();
    void differenceIsShownByCoreAndPort();
    void tooManyMatchesAreRefusedQuickly();
    void oddValuesBecomeThoseOfTheEditor_data();
    void oddValuesBecomeThoseOfTheEditor();
    void randomStepsGiveTheBytesOfTheEditor();
    void cleanupTestCase();

private:
    static OwnedCores sample();
    QString path(const QString &name) const { return m_folder.filePath(name); }
    void compareWithEditor(quint32 seed, const QString &path, int *executed);

    QTemporaryDir m_folder;
};

void TestEditSteps::initTestCase()
{
    TarnTest::FakeExtraction::instance().reset();
    TE::Project project;
    project.workingDir = m_folder.path();
    TarnTest::writeFile(path(QStringLiteral("top.v")), "module top; endmodule\n");
    project.sources.append({path(QStringLiteral("top.v")), TE::fileTypeOf("top.v"), true});
    TE::TaskEngine::instance()->designManager()->setProject(project);
}

void TestEditSteps::cleanupTestCase()
{
    TE::TaskEngine::instance()->designManager()->closeProject();
}

/// Core 0 has ports with signals, one of which the design does not have; core 1 has none.
OwnedCores TestEditSteps::sample()
{
    OwnedCores cores = coresWithPorts(2, 0, 0);
    TarnCore *core = cores.list().first();
    for (int i = 0; i < 3; ++i) {
        core->addProbeIn(i);
        core->addProbeOut(i);
    }
    core->probeIns.at(0)->signals = {net(QStringLiteral("top/clk")),
                                     range(QStringLiteral("top/u9/data"), 7, 0)};
    core->probeIns.at(1)->signals = {range(QStringLiteral("top/wide"), 99, 0)};
    core->probeOuts.at(0)->signals = {net(QStringLiteral("top/u9/force")),
                                      range(QStringLiteral("top/mode"), 0, 4)};
    core->probeOuts.at(0)->initialValue = QStringLiteral("0x2A");
    core->probeOuts.at(1)->signals = {net(QStringLiteral("top/force"))};
    core->probeOuts.at(1)->initialValue = QStringLiteral("0x1");
    core->userClock = QStringLiteral("top/u9/clk");
    core->syncUserClock = true;
    return cores;
}

void TestEditSteps::stepsChangeTheConfiguration_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QStringList>("lines"); // Of the resulting text, with port and all its signals.
    const auto row = [](const char *name, const char *steps, const QStringList &lines) {
        QTest::newRow(name) << QString::fromLatin1(steps) << lines;
    };
    row("core", "add-core", {"tarn_2", "  module      top", "  user clock  none"});
    row("ports", "add-in 1 add-out 1 add-in tarn_1",
        {"  in0         0 bits", "  in1         0 bits",
         "  out0        0 bits, initial value 0x0"});
    row("net", "signals 0.in2 top/force", {"  in2         1 bit", "  0  top/force"});
    row("bus with its bits", "signals 0.in2 top/data[7:0]",
        {"  in2         8 bits", "  7:0  top/data[7:0]"});
    row("bus without excluded bits", "signals 0.out2 top/part[3:0]",
        {"  out2        2 bits, initial value 0x0", "  1:0  top/part[3:0]"});
    row("bit of a bus", "signals 0.in2 top/m[1][2]", {"  in2         1 bit", "  0  top/m[1][2]"});
    row("escaped names are names", "signals 0.in2 top/g[0].u/st.valid",
        {"  in2         1 bit", "  0  top/g[0].u/st.valid"});
    row("buses before nets, then as named", "signals 0.in2 top/force top/m[0][2:0] top/Enable",
        {"  in2         5 bits", "  4:2  top/m[0][2:0]", "    1  top/force", "    0  top/Enable"});
    row("behind what is there", "signals 0.out1 top/data[7:0]",
        {"  out1        9 bits, initial value 0x100", "    8  top/force", "  7:0  top/data[7:0]"});
    row("what is there is not repeated", "signals 0.in0 top/clk top/u0/force top/u0/force",
        {"  in0         10 bits", "    9  top/clk", "  8:1  top/u9/data[7:0]",
         "    0  top/u0/force"});
    row("matches", "signals 0.in2 --wildcard top/*u0/FLAG_[0-2] *u1/m\\[*",
        {"  in2         9 bits", "  8:6  top/u1/m[0][2:0]", "  5:3  top/u1/m[1][2:0]",
         "    2  top/u0/flag_0", "    1  top/u0/flag_1", "    0  top/u0/flag_2"});
    row("matches that can be driven", "signals --wildcard 0.out2 top/flag_?",
        {"  out2        5 bits, initial value 0x00", "  4  top/flag_1", "  3  top/flag_2",
         "  2  top/flag_4", "  1  top/flag_5", "  0  top/flag_7"});
    row("value", "value 0.out0 0x3f", {"  out0        6 bits, initial value 0x3F"});
    row("value of new bits", "signals 0.out2 top/mode[0:4] value 0.out2 0x1f",
        {"  out2        5 bits, initial value 0x1F"});
    row("value when bits go", "remove 0.out0 top/u9/force",
        {"  out0        5 bits, initial value 0x15", "  4:0  top/mode[0:4]"});
    row("clock", "clock 1 top/clk", {"  user clock  top/clk (output probes synchronise with it)"});
    row("bit as clock", "clock 1 top/mode[3]",
        {"  user clock  top/mode[3] (output probes synchronise with it)"});
    row("no clock", "clock 0 none", {"  user clock  none"});
    row("core goes", "remove 0", {"tarn_0", "  module      top", "  user clock  none"});
    row("port goes", "remove 0.out0",
        {"  out0        1 bit, initial value 0x1", "  0  top/force",
         "  out1        0 bits, initial value 0x0"});
    row("Probe In goes", "remove 0.in0", {"  in0         100 bits", "  99:0  top/wide[99:0]"});
    row("signals go", "remove 0.in0 top/clk top/u9/data[7:0]", {"  in0         0 bits"});
    row("replace", "replace top/u9/data[7:0] top/u0/data[7:0]",
        {"  in0         9 bits", "    8  top/clk", "  7:0  top/u0/data[7:0]"});
    row("replace with a value", "replace top/u9/force top/data[7:0]",
        {"  out0        13 bits, initial value 0x000A", "  12:5  top/data[7:0]",
         "   4:0  top/mode[0:4]"});
    row("replace a clock", "replace top/u9/clk top/u1/clk",
        {"  user clock  top/u1/clk (output probes synchronise with it)"});
    row("replace below an instance", "replace-prefix top/u9 top/u1",
        {"  user clock  top/u1/clk (output probes synchronise with it)", "  in0         9 bits",
         "    8  top/clk", "  7:0  top/u1/data[7:0]"});
    row("later steps see earlier ones",
        "add-core add-out 2 signals 2.out0 top/force value 2.out0 0x1",
        {"tarn_2", "  module      top", "  user clock  none",
         "  out0        1 bit, initial value 0x1", "  0  top/force"});
}

void TestEditSteps::stepsChangeTheConfiguration()
{
    QFETCH(QString, steps);
    QFETCH(QStringList, lines);
    Session session(sample());
    QCOMPARE(session.run(steps), QString());
    session.content();
    // Columns depend on the widest line, which is no concern here.
    const QString text = session.text().replace(QRegExp(QStringLiteral("\n +([0-9])")), "\n  \\1");
    const QString wanted =
        lines.join('\n').replace(QRegExp(QStringLiteral("\n +([0-9])")), "\n  \\1");
    QVERIFY2(text.contains(wanted + '\n'), text.toUtf8());
}

void TestEditSteps::impossibleStepsAreRefused_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QString>("error");
    const auto row = [](const char *steps, const char *error) {
        QTest::newRow(steps) << QString::fromLatin1(steps) << QString::fromLatin1(error);
    };
    row("add-in 2", "step 1 (add-in 2): there is no core 2; the file has tarn_0, tarn_1");
    row("add-core add-out tarn_7",
        "step 2 (add-out tarn_7): there is no core 7; the file has tarn_0, tarn_1, tarn_2");
    row("value 0.out3 0x0",
        "step 1 (value 0.out3 0x0): tarn_0 has no port out3; it has 3 Probe Out "
        "ports");
    row("remove 1.in0", "step 1 (remove 1.in0): tarn_1 has no port in0; it has 0 Probe In ports");
    row("signals 0.in2 top/forc",
        "step 1 (signals 0.in2 top/forc): the design has no net or bus \"top/forc\"; similar: "
        "top/force");
    row("signals 0.in2 top/data",
        "step 1 (signals 0.in2 top/data): the design has no net or bus \"top/data\"; similar: "
        "top/data[7:0], top/g[0].u/data[7:0], top/u0/data[7:0]");
    row("signals 0.in2 top/data[3:0]",
        "step 1 (signals 0.in2 top/data[3:0]): the design has no net or bus \"top/data[3:0]\"; "
        "similar: top/data[7:0], top/g[0].u/data[7:0], top/u0/data[7:0]");
    row("signals 0.in2 xyz", "step 1 (signals 0.in2 xyz): the design has no net or bus \"xyz\"; "
                             "\"tarn nets\" lists what it has");
    row("signals 0.in2 TOP/FORCE",
        "step 1 (signals 0.in2 TOP/FORCE): the design has no net or bus \"TOP/FORCE\"; "
        "similar: top/force");
    row("signals 0.in2 top/dead",
        "step 1 (signals 0.in2 top/dead): the net top/dead cannot be "
        "read: it has no value in the hardware; \"tarn nets --for in\" lists what can");
    row("signals 0.out2 top/clk",
        "step 1 (signals 0.out2 top/clk): the net top/clk cannot be driven: the design drives it, "
        "or it is no wire; \"tarn nets --for out\" lists what can");
    row("signals 0.in2 top/gone[1:0]",
        "step 1 (signals 0.in2 top/gone[1:0]): 2 bits of the bus top/gone[1:0] cannot be read: "
        "they have no value in the hardware; \"tarn nets --for in\" lists what can");
    row("signals 0.out2 top/part[2]",
        "step 1 (signals 0.out2 top/part[2]): the net top/part[2] cannot be driven: the design "
        "drives it, or it is no wire; \"tarn nets --for out\" lists what can");
    row("signals 0.in2 --wildcard *nothing*",
        "step 1 (signals 0.in2 --wildcard *nothing*): nothing in the design matches \"*nothing*\"; "
        "a pattern covers full names from end to end");
    row("signals 0.in2 --wildcard clk",
        "step 1 (signals 0.in2 --wildcard clk): nothing in the design matches \"clk\"; a pattern "
        "covers full names from end to end");
    row("signals 0.out2 --wildcard *clk",
        "step 1 (signals 0.out2 --wildcard *clk): nothing that matches \"*clk\" can be driven; "
        "\"tarn nets --for out\" lists what can");
    row("signals 0.in2 --wildcard *dead",
        "step 1 (signals 0.in2 --wildcard *dead): nothing that matches \"*dead\" can be read; "
        "\"tarn nets --for in\" lists what can");
    row("signals 0.in2 --wildcard top/[a-",
        "step 1 (signals 0.in2 --wildcard top/[a-): the wildcard \"top/[a-\" is invalid: "
        "unexpected end");
    row("value 0.in0 0x0", "step 1 (value 0.in0 0x0): only Probe Out ports have initial values");
    row("value 0.out2 0x0", "step 1 (value 0.out2 0x0): the port has no signals; add some first");
    row("value 0.out0 2A", "step 1 (value 0.out0 2A): \"2A\" is no value; write \"0x\" and "
                           "hexadecimal digits");
    row("value 0.out0 0X2A", "step 1 (value 0.out0 0X2A): \"0X2A\" is no value; write \"0x\" and "
                             "hexadecimal digits");
    row("value 0.out0 0x", "step 1 (value 0.out0 0x): \"0x\" is no value; write \"0x\" and "
                           "hexadecimal digits");
    row("value 0.out1 0x1\n", "step 1 (value 0.out1 0x1\n): \"0x1\n\" is no value; write \"0x\" "
                              "and hexadecimal digits");
    row("value 0.out0 0x1g", "step 1 (value 0.out0 0x1g): \"0x1g\" is no value; write \"0x\" and "
                             "hexadecimal digits");
    row("value 0.out0 0x1", "step 1 (value 0.out0 0x1): the value has 1 digit; a port with 6 bits "
                            "takes 2");
    row("value 0.out1 0x01",
        "step 1 (value 0.out1 0x01): the value has 2 digits; a port with 1 bit "
        "takes 1");
    row("clock 0 top/clock",
        "step 1 (clock 0 top/clock): the design has no net \"top/clock\"; similar: "
        "top/clk");
    row("clock 0 top/data[7:0]", "step 1 (clock 0 top/data[7:0]): \"top/data[7:0]\" is a bus; a "
                                 "user clock is a single net");
    row("clock 0 top/dead", "step 1 (clock 0 top/dead): the net top/dead cannot be read: it has no "
                            "value in the hardware; choose another net");
    row("remove 0.in0 top/force", "step 1 (remove 0.in0 top/force): the port has no signal "
                                  "\"top/force\"; \"tarn show\" lists those it has");
    row("remove 0.out0 top/mode[2]",
        "step 1 (remove 0.out0 top/mode[2]): \"top/mode[2]\" is a bit of \"top/mode[0:4]\"; only "
        "the whole bus can be removed");
    row("replace top/u9/x top/clk",
        "step 1 (replace top/u9/x top/clk): no port has a signal \"top/u9/x\", and no core "
        "synchronises with it; \"tarn show\" lists the signals");
    row("replace top/u9/force top/clk",
        "step 1 (replace top/u9/force top/clk): the net top/clk cannot be driven: the design "
        "drives it, or it is no wire; \"tarn nets --for out\" lists what can");
    row("replace top/u9/force top/u0/forces",
        "step 1 (replace top/u9/force top/u0/forces): the design has no net or bus "
        "\"top/u0/forces\"; similar: top/u0/force");
    row("replace top/u9/clk top/data[7:0]",
        "step 1 (replace top/u9/clk top/data[7:0]): \"top/data[7:0]\" is a bus; a user clock is a "
        "single net");
    row("replace-prefix top/u9 top/u7",
        "step 1 (replace-prefix top/u9 top/u7): nothing is replaced: no signal below \"top/u9\" is "
        "missing in the design and has a usable counterpart below \"top/u7\"");
    row("replace-prefix top/u0 top/u1",
        "step 1 (replace-prefix top/u0 top/u1): nothing is replaced: no signal below \"top/u0\" is "
        "missing in the design and has a usable counterpart below \"top/u1\"");
}

void TestEditSteps::impossibleStepsAreRefused()
{
    QFETCH(QString, steps);
    Session session(sample());
    QTEST(session.run(steps), "error");
}

void TestEditSteps::limitsHold_data()
{
    QTest::addColumn<int>("cores");
    QTest::addColumn<int>("ports");
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QString>("error");
    const QString none;
    QTest::newRow("16 cores") << 15 << 1 << "add-core" << none;
    QTest::newRow("17 cores") << 15 << 1 << "add-core add-core"
                              << "step 2 (add-core): Support 16 TARNs at most.";
    QTest::newRow("only core") << 2 << 1 << "remove 1 remove 0"
                               << "step 2 (remove 0): The only TARN can not be removed.";
    QTest::newRow("64 ins") << 1 << 63 << "add-in 0" << none;
    QTest::newRow("65 ins") << 1 << 64 << "add-in 0"
                            << "step 1 (add-in 0): Support 64 Probe Ins at most.";
    QTest::newRow("64 outs") << 1 << 63 << "add-out 0" << none;
    QTest::newRow("65 outs") << 1 << 64 << "add-out 0"
                             << "step 1 (add-out 0): Support 64 Probe Outs at most.";
    QTest::newRow("only in") << 1 << 2 << "remove 0.in1 remove 0.in0"
                             << "step 2 (remove 0.in0): Support 1 Probe In at least.";
    QTest::newRow("only out") << 1 << 2 << "remove 0.out1 remove 0.out0"
                              << "step 2 (remove 0.out0): Support 1 Probe Out at least.";
    QTest::newRow("256 bits") << 1 << 1
                              << "signals 0.out0 top/wide[99:0] top/u0/wide[99:0] top/u1/wide[47] "
                                 "top/data[7:0] top/u0/data[7:0] top/u1/data[7:0] "
                                 "top/g[0].u/data[7:0] top/mode[0:4] top/u0/mode[0:4] "
                                 "top/u1/mode[0:4] top/m[0][2:0] top/m[1][2:0] top/force top/Enable"
                              << none;
    QTest::newRow("257 bits") << 1 << 1
                              << "signals 0.in0 top/wide[99:0] top/u0/wide[99:0] signals 0.in0 "
                                 "top/u1/wide[99:0]"
                              << "step 2 (signals 0.in0 top/u1/wide[99:0]): Support 256 signals at "
                                 "most.";
    QTest::newRow("257 bits by a pattern")
        << 1 << 1 << "signals 0.out0 --wildcard *"
        << "step 1 (signals 0.out0 --wildcard *): Support 256 signals at most.";
    QTest::newRow("257 bits by replacing")
        << 1 << 1
        << "signals 0.in0 top/wide[99:0] top/u0/wide[99:0] top/force replace top/force "
           "top/u1/wide[99:0]"
        << "step 2 (replace top/force top/u1/wide[99:0]): Support 256 signals at most.";
    QTest::newRow("value too wide")
        << 1 << 1 << "signals 0.out0 top/mode[0:4] value 0.out0 0x2a"
        << "step 2 (value 0.out0 0x2a): Value '2A' for Probe Out0 Initial Value exceeds the "
           "effective width.";
}

void TestEditSteps::limitsHold()
{
    QFETCH(int, cores);
    QFETCH(int, ports);
    QFETCH(QString, steps);
    Session session(coresWithPorts(cores, ports, ports));
    QTEST(session.run(steps), "error");
}

void TestEditSteps::unclearStepsAreRefused_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QString>("error");
    const auto row = [](const char *steps, const char *error) {
        QTest::newRow(steps) << QString::fromLatin1(steps) << QString::fromLatin1(error);
    };
    row("add-in", "step 1 (add-in): a word is missing; write add-in CORE");
    row("add-core 3", "step 2 (3): there is no such step; the steps are add-core, add-in, add-out, "
                      "signals, value, clock, remove, replace, replace-prefix");
    row("add-in 0\n", "step 1 (add-in 0\n): \"0\n\" is no core, such as 0, and no port, such as "
                      "0.in3 or 0.out3; write add-in CORE");
    row("add-in 0.in0", "step 1 (add-in 0.in0): a port is given in place of a core; write add-in "
                        "CORE");
    row("add-in zero", "step 1 (add-in zero): \"zero\" is no core, such as 0, and no port, such as "
                       "0.in3 or 0.out3; write add-in CORE");
    row("signals 0 top/clk",
        "step 1 (signals 0 top/clk): a core is given in place of a port; write "
        "signals CORE.PORT [--wildcard] NAME...");
    row("signals 0.in0", "step 1 (signals 0.in0): a word is missing; write signals CORE.PORT "
                         "[--wildcard] NAME...");
    row("signals 0.in0 --wildcard", "step 1 (signals 0.in0 --wildcard): a word is missing; write "
                                    "signals CORE.PORT [--wildcard] NAME...");
    row("signals 0.port3 x",
        "step 1 (signals 0.port3 x): \"0.port3\" is no core, such as 0, and no "
        "port, such as 0.in3 or 0.out3; write signals CORE.PORT [--wildcard] "
        "NAME...");
    row("value 0.out99999999999 0x0",
        "step 1 (value 0.out99999999999 0x0): \"0.out99999999999\" is "
        "no core, such as 0, and no port, such as 0.in3 or 0.out3; "
        "write value CORE.PORT VALUE");
    row("value 0.out0", "step 1 (value 0.out0): a word is missing; write value CORE.PORT VALUE");
    row("clock 0", "step 1 (clock 0): a word is missing; write clock CORE NAME|none");
    row("remove", "step 1 (remove): a word is missing; write remove CORE|CORE.PORT [NAME...]");
    row("remove 0 top/clk", "step 1 (remove 0 top/clk): a core is given in place of a port; write "
                            "remove CORE|CORE.PORT [NAME...]");
    row("replace a", "step 1 (replace a): a word is missing; write replace OLD NEW");
    row("replace a ", "step 1 (replace a ): a word is empty");
}

void TestEditSteps::unclearStepsAreRefused()
{
    QFETCH(QString, steps);
    Session session(sample());
    const QByteArray before = TARN::ConfigWriter(session.config().cores()).content();
    QTEST(session.run(steps), "error");
    QCOMPARE(TARN::ConfigWriter(session.config().cores()).content(), before);
}

void TestEditSteps::designIsReadWhenAStepNeedsIt_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<bool>("read");
    for (const char *steps :
         {"add-core", "add-in 0", "add-out 0", "value 0.out1 0x0", "clock 0 none", "remove 1",
          "remove 0.in1", "remove 0.in0 top/clk", "replace top/nix top/clk", "signals 7.in0 x"})
        QTest::newRow(steps) << QString::fromLatin1(steps) << false;
    for (const char *steps :
         {"signals 0.in2 top/clk", "signals 0.in2 --wildcard *clk", "clock 0 top/clk",
          "replace top/clk top/u0/clk", "replace-prefix a b"})
        QTest::newRow(steps) << QString::fromLatin1(steps) << true;
}

void TestEditSteps::designIsReadWhenAStepNeedsIt()
{
    QFETCH(QString, steps);
    Session session(sample());
    session.run(steps);
    QTEST(session.designReads() > 0, "read");
}

void TestEditSteps::bitsLeftOutAreToldAbout()
{
    Session session(sample());
    QCOMPARE(session.run(QStringLiteral("signals 0.out2 top/part[3:0] top/force")), QString());
    QCOMPARE(session.warnings(),
             QStringList(QStringLiteral("2 bits of the bus top/part[3:0] cannot be driven: the "
                                        "design drives them, or they are no wires, so ports get "
                                        "the bus without them")));
    QCOMPARE(session.run(QStringLiteral("signals 0.in2 top/most[2:0]")), QString());
    QCOMPARE(session.warnings(), QStringList(QStringLiteral(
                                     "the bit top/most[2] cannot be read: it has no value in the "
                                     "hardware, so ports get the bus without it")));
    QCOMPARE(session.run(QStringLiteral("signals 0.out2 top/Enable")), QString());
    QCOMPARE(session.warnings(), QStringList());
    QCOMPARE(session.run(QStringLiteral("replace top/Enable top/u0/part[3:0]")), QString());
    QCOMPARE(session.warnings().size(), 1);
}

void TestEditSteps::valuesAreThoseThatCanBeTyped_data()
{
    QTest::addColumn<QString>("digits");
    for (const char *digits : {"0", "00", "3f", "3F", "aB", "1", "001", "40", "3f3f", ""})
        QTest::newRow(digits) << QString::fromLatin1(digits);
}

/// A value is taken if and only if the line shows it after it was typed into empty digits.
void TestEditSteps::valuesAreThoseThatCanBeTyped()
{
    QFETCH(QString, digits);
    Session session(sample());
    const bool taken = session.run(QStringLiteral("value 0.out0 0x") + digits).isEmpty(); // 6 bits
    QLabel label;
    label.setText(QString(6, QLatin1Char('0')));
    TARN::InitialValueLine line(0, nullptr);
    line.addBitLabel(&label);
    line.updateValidator();
    line.setSelection(2, 2);
    QTest::keyClick(&line, Qt::Key_Delete);
    line.setCursorPosition(2);
    QTest::keyClicks(&line, digits);
    const bool fits = TARN::enteredBits(line.displayText(), 6).has_value();
    const bool shown = fits && line.displayText() == QLatin1String("0x") + digits.toUpper();
    QCOMPARE(taken, shown);
}

void TestEditSteps::differenceIsShownByCoreAndPort_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QString>("difference");
    const auto row = [](const char *steps, const char *difference) {
        QTest::newRow(steps) << QString::fromLatin1(steps) << QString::fromLatin1(difference);
    };
    row("clock 0 top/clk", "  tarn_0\n"
                           "    user clock  top/u9/clk -> top/clk\n");
    row("clock 0 none", "  tarn_0\n"
                        "    user clock  top/u9/clk -> none (off)\n");
    row("add-core", "+ tarn_2\n");
    row("add-core add-in 2 add-out 2 signals 2.out0 top/force",
        "+ tarn_2\n"
        "+   in0         0 bits\n"
        "+   out0        1 bit, initial value 0x0\n"
        "+     top/force\n");
    row("add-core clock 2 top/clk", "+ tarn_2\n"
                                    "+   user clock  top/clk\n");
    row("signals 0.in0 top/data[7:0] top/force", "  tarn_0\n"
                                                 "    in0         9 bits -> 18 bits\n"
                                                 "+     top/data[7:0] (8 bits)\n"
                                                 "+     top/force\n");
    row("remove 0.out0 top/u9/force",
        "  tarn_0\n"
        "    out0        6 bits -> 5 bits, initial value 0x2A -> 0x15\n"
        "-     top/u9/force\n");
    row("value 0.out1 0x0", "  tarn_0\n"
                            "    out1        initial value 0x1 -> 0x0\n");
    row("remove 0.out0", "  tarn_0\n"
                         "-   out0        6 bits, initial value 0x2A\n"
                         "-     top/u9/force\n"
                         "-     top/mode[0:4] (5 bits)\n"
                         "    out1 -> out0\n"
                         "    out2 -> out1\n");
    row("remove 0", "- tarn_0\n"
                    "-   in0         9 bits\n"
                    "-     top/clk\n"
                    "-     top/u9/data[7:0] (8 bits)\n"
                    "-   in1         100 bits\n"
                    "-     top/wide[99:0] (100 bits)\n"
                    "-   in2         0 bits\n"
                    "-   out0        6 bits, initial value 0x2A\n"
                    "-     top/u9/force\n"
                    "-     top/mode[0:4] (5 bits)\n"
                    "-   out1        1 bit, initial value 0x1\n"
                    "-     top/force\n"
                    "-   out2        0 bits, initial value 0x0\n"
                    "  tarn_1 -> tarn_0\n");
    row("add-in 0 remove 0.in3", "");
    row("remove 0.in0 top/clk signals 0.in0 top/clk", "  tarn_0\n"
                                                      "    in0         9 bits\n"
                                                      "      the same signals in another order\n");
}

void TestEditSteps::differenceIsShownByCoreAndPort()
{
    QFETCH(QString, steps);
    OwnedCores cores = sample();
    cores.list().first()->probeOuts.last()->initialValue = QStringLiteral("0x0");
    const TARN::ConfigSnapshot before = TARN::snapshotOf(cores.list());
    Session session(std::move(cores));
    QCOMPARE(session.run(steps), QString());
    session.config().storeValues();
    QTEST(QString::fromUtf8(changesText(before, session.config())), "difference");
}

void TestEditSteps::tooManyMatchesAreRefusedQuickly()
{
    NETWEIR::NetlistBuilder builder(QStringLiteral("top"));
    const quint32 nets = setting("TARN_TEST_NETS", 200000);
    for (quint32 i = 0; i < nets; ++i)
        builder.addNet(builder.top(), QStringLiteral("net_%1").arg(i));
    for (quint32 i = 0; i < nets / 4000; ++i)
        builder.addBus(builder.top(), QStringLiteral("mem_%1").arg(i), 9999, 0);
    Session session(coresWithPorts(1, 1, 1), builder.take());
    const QString tooMany = QStringLiteral("Support 256 signals at most.");
    QString names = QStringLiteral("signals 0.in0");
    for (int i = 0; i < 20000; ++i)
        names += QStringLiteral(" top/net_%1").arg(i);

    QString error;
    const auto millisecondsOf = [&session, &error](const QString &steps) {
        const qint64 start = TarnTest::processorNanoseconds();
        error = session.run(steps);
        return (TarnTest::processorNanoseconds() - start) / 1000000;
    };
    // A pattern without a text that all matches contain: each name is compared.
    const qint64 nothing = millisecondsOf(QStringLiteral("signals 0.in0 --wildcard *[x-z]"));
    QVERIFY2(error.contains(QLatin1String("nothing in the design matches")), error.toUtf8());
    const qint64 all = millisecondsOf(QStringLiteral("signals 0.in0 --wildcard *"));
    QVERIFY2(error.endsWith(tooMany), error.toUtf8());
    const qint64 named = millisecondsOf(names);
    QVERIFY2(error.endsWith(tooMany), error.toUtf8());
    const qint64 similar = millisecondsOf(QStringLiteral("signals 0.in0 top/nets_1"));
    QVERIFY2(error.contains(QLatin1String("similar: ")), error.toUtf8());
    qDebug("%u nets: search %lld ms, all %lld ms, by names %lld ms, similar names %lld ms", nets,
           nothing, all, named, similar);
    QVERIFY(all < 5 * nothing + 100);
    QVERIFY(named < 5 * nothing + 3000);
    QVERIFY(similar < 100 * nothing + 1000);
}

void TestEditSteps::compareWithEditor(quint32 seed, const QString &path, int *executed)
{
    const std::unique_ptr<NETWEIR::RtlNetlist> netlist = makeDesign();
    RandomSteps random(seed, netlist.get());
    QVERIFY(TARN::writeTARNConfigToXml(random.cores().list(), path));
    bool ok = false;
    Session session(OwnedCores(TARN::readTARNConfigFromXml(path, &ok, nullptr)));
    QVERIFY(ok);
    HandEditor editor(path, makeDesign);
    QStringList done;
    for (int i = 0; i < 12; ++i) {
        const QStringList words = random.step(session.config());
        done.append(words.join(QLatin1Char(' ')));
        const QByteArray what =
            QStringLiteral("seed %1: %2").arg(seed).arg(done.join(QLatin1String("; "))).toUtf8();
        QVector<EditStep> steps;
        QString error;
        QVERIFY2(parseSteps(words, &steps, &error), what + '\n' + error.toUtf8());
        const bool accepted = session.execute(steps.first());
        const bool byLimit = session.error().startsWith(QLatin1String("Support ")) ||
                             session.error().startsWith(QLatin1String("Value ")) ||
                             session.error().startsWith(QLatin1String("The only "));
        if (!accepted && !byLimit)
            continue; // The editor does not offer it.
        ++*executed;
        const QStringList boxes = editor.execute(steps.first());
        QVERIFY2(boxes == (accepted ? QStringList() : QStringList(session.error())),
                 what + "\nboxes: " + boxes.join('|').toUtf8() +
                     "\nerror: " + session.error().toUtf8());
    }
    const QByteArray expected = editor.storedContent();
    const QByteArray content = session.content();
    const QByteArray what =
        QStringLiteral("seed %1: %2").arg(seed).arg(done.join(QLatin1String("; "))).toUtf8();
    QVERIFY2(content == expected, what);
    if (editor.save())
        QVERIFY2(TarnTest::readFile(path) == content, what);
}

void TestEditSteps::oddValuesBecomeThoseOfTheEditor_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QStringList>("steps");
    const QString nothingNew = QStringLiteral("signals 0.out0 top/force");
    const QString newBus = QStringLiteral("replace top/u9/data[7:0] top/data[7:0]");
    for (const char *value : {"", "0x1", "0xFEDCBA", "fedcba", "0xg"}) {
        const auto row = [value](const char *name, const QStringList &steps) {
            QTest::addRow("%s, '%s'", name, value) << QString::fromLatin1(value) << steps;
        };
        row("left alone", {QStringLiteral("add-in 0")});
        row("replaced", {newBus});
        row("replaced after nothing new", {nothingNew, newBus});
        row("replaced after a new signal", {QStringLiteral("signals 0.out0 top/Enable"), newBus});
        row("replaced after the signals of another port",
            {QStringLiteral("signals 0.out1 top/Enable"), newBus});
    }
}

/// Values that do not fit their port count in full until an edit changes them.
void TestEditSteps::oddValuesBecomeThoseOfTheEditor()
{
    QFETCH(QString, value);
    QFETCH(QStringList, steps);
    const QString file = path(QStringLiteral("odd.tarn"));
    OwnedCores cores = coresWithPorts(1, 0, 2);
    cores.list().first()->probeOuts.first()->signals = {net(QStringLiteral("top/force")),
                                                        range(QStringLiteral("top/u9/data"), 7, 0)};
    cores.list().first()->probeOuts.first()->initialValue = value;
    QVERIFY(TARN::writeTARNConfigToXml(cores.list(), file));
    Session session(std::move(cores));
    HandEditor editor(file, makeDesign);
    for (const QString &text : qAsConst(steps)) {
        QVector<EditStep> step;
        QString error;
        QVERIFY(parseSteps(text.split(QLatin1Char(' ')), &step, &error));
        QVERIFY2(session.execute(step.first()), session.error().toUtf8());
        QCOMPARE(editor.execute(step.first()), QStringList());
    }
    QCOMPARE(session.content(), editor.storedContent());
}

void TestEditSteps::randomStepsGiveTheBytesOfTheEditor()
{
    const quint32 seed = setting("TARN_TEST_SEED", 1);
    const quint32 rounds = setting("TARN_TEST_ROUNDS", 30);
    int executed = 0;
    for (quint32 i = seed; i < seed + rounds && !QTest::currentTestFailed(); ++i)
        compareWithEditor(i, path(QStringLiteral("%1.tarn").arg(i)), &executed);
    qDebug("%d steps executed by both", executed);
    QVERIFY(executed >= int(rounds) * 6);
}

TARN_TEST_MAIN(TestEditSteps)

#include "tst_editsteps.moc"
