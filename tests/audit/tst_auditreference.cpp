// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configtext.h"
#include "randomdesign.h"

#include <support/setting.h>
#include <support/testcase.h>

#include <audit/signalmarks.h>
#include <model/configcheck.h>

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

#include <map>

using TARN::ConfigAudit;
using TARN::ConfigSnapshot;
using TARN::DesignNames;
using TARN::Finding;
using TARN::Place;
using TARN::ProbeType;
using TARN::Rule;
using TARN::SignalItem;
using TarnTest::KnownDesign;
using TarnTest::RandomDesign;

namespace {

/// The rules in the plainest form, straight from what was put into the design: loops over
/// everything, without an index and without a memory. Shares no code with the audit.
class NaiveAudit
{
public:
    /// @p design is null for no netlist.
    NaiveAudit(const ConfigSnapshot &config, const KnownDesign *design)
        : m_config(config)
        , m_design(design)
    {
        for (int core = 0; core < config.cores.size(); ++core)
            auditCore(core);
        for (const auto &[name, places] : m_driven) {
            if (places.size() > 1)
                add(Rule::SeveralDrivers, places, name);
        }
    }

    const QVector<Finding> &findings() const { return m_findings; }

private:
    struct Bit
    {
        QString name;
        Place place;
    };

    static const KnownDesign::Net *find(const QVector<KnownDesign::Net> &nets, const QString &name)
    {
        for (const KnownDesign::Net &net : nets) {
            if (net.name == name)
                return &net;
        }
        return nullptr;
    }

    void add(Rule rule, QVector<Place> places, const QString &name)
    {
        Finding finding;
        finding.rule = rule;
        finding.place = places.takeFirst();
        finding.others = places;
        finding.name = name;
        m_findings.append(finding);
    }

    void auditCore(int position)
    {
        const TARN::CoreSnapshot &core = *m_config.cores.at(position).content;
        Place place;
        place.core = position;
        bool isEmpty = true;
        for (const auto &ports : {core.probeIns, core.probeOuts}) {
            for (const auto &port : ports)
                isEmpty &= port->signals.isEmpty();
        }
        if (isEmpty)
            add(Rule::EmptyCore, {place}, {});
        if (core.syncUserClock)
            auditClock(place, core.userClock);
        for (const ProbeType type : {TARN::ProbeTypeIn, TARN::ProbeTypeOut}) {
            const auto &ports = type == TARN::ProbeTypeIn ? core.probeIns : core.probeOuts;
            place.type = type;
            for (place.port = 0; place.port < ports.size(); ++place.port)
                auditPort(place, *ports.at(place.port));
        }
    }

    void auditClock(const Place &place, const QString &clock)
    {
        if (clock.isEmpty()) {
            add(Rule::ClockMissing, {place}, clock);
            return;
        }
        if (!m_design)
            return;
        const KnownDesign::Net *net = find(m_design->nets, clock);
        if (!net)
            add(Rule::ClockMissing, {place}, clock);
        else if (net->notIn)
            add(Rule::ClockNotUsable, {place}, clock);
    }

    void auditPort(Place place, const TARN::PortSnapshot &port)
    {
        const QVector<Bit> bits = bitsOf(place, port.signals);
        QString value;
        bool isValue = port.initialValue.startsWith("0x");
        for (const QChar c : port.initialValue.mid(2)) {
            bool ok = false;
            value += QString("%1").arg(QString(c).toInt(&ok, 16), 4, 2, QChar('0'));
            isValue &= ok;
        }
        while (value.startsWith('0'))
            value.remove(0, 1);
        if (place.type == TARN::ProbeTypeOut && isValue && value.size() > bits.size())
            add(Rule::ValueWidth, {place}, {});
        if (port.signals.isEmpty())
            add(Rule::EmptyPort, {place}, {});
        for (place.signal = 0; place.signal < port.signals.size(); ++place.signal) {
            if (m_design)
                auditSignal(place, port.signals.at(place.signal));
            auditRepeats(place.signal, bits);
        }
        if (place.type == TARN::ProbeTypeOut) {
            for (const Bit &bit : bits)
                m_driven[bit.name].append(bit.place);
        }
    }

    static QVector<Bit> bitsOf(Place place, const QList<SignalItem> &items)
    {
        QVector<Bit> bits;
        for (place.signal = 0; place.signal < items.size(); ++place.signal) {
            const QList<SignalItem> &members = items.at(place.signal).members;
            place.bit = -1;
            if (members.isEmpty())
                bits.append({items.at(place.signal).name, place});
            for (place.bit = 0; place.bit < members.size(); ++place.bit)
                bits.append({members.at(place.bit).name, place});
        }
        return bits;
    }

    /// The bits that occur in the signal for the first time, and again there or behind it.
    void auditRepeats(int signal, const QVector<Bit> &bits)
    {
        for (int first = 0; first < bits.size(); ++first) {
            QVector<Place> places;
            bool known = false;
            for (int i = 0; i < bits.size(); ++i) {
                if (bits.at(i).name != bits.at(first).name)
                    continue;
                known |= i < first;
                places.append(bits.at(i).place);
            }
            if (bits.at(first).place.signal == signal && !known && places.size() > 1)
                add(Rule::Repeated, places, bits.at(first).name);
        }
    }

    void auditSignal(const Place &place, const SignalItem &item)
    {
        if (item.members.isEmpty()) {
            const KnownDesign::Net *net = find(m_design->nets, item.name);
            if (!net)
                add(Rule::NetMissing, {place}, item.name);
            else if (isExcluded(*net, place.type))
                add(Rule::NotUsable, {place}, item.name);
            return;
        }
        auditBus(place, item);
    }

    void auditBus(Place place, const SignalItem &item)
    {
        QStringList stored;
        for (const SignalItem &member : item.members)
            stored += member.name;
        const QRegularExpression range("\\[-?\\d+:-?\\d+\\]$");
        const QString base = QString(item.name).remove(range);
        const KnownDesign::Bus *same = nullptr;
        bool known = false;
        for (const KnownDesign::Bus &bus : m_design->buses) {
            known |= bus.base == base;
            if (!same && bus.name == item.name)
                same = &bus;
        }
        if (!known) {
            add(Rule::NetMissing, {place}, item.name);
            return;
        }
        const bool unchanged = same && namesIn(*same, stored) == stored;
        if (!unchanged)
            add(Rule::BusChanged, {place}, item.name);
        for (place.bit = 0; place.bit < stored.size(); ++place.bit) {
            const QVector<KnownDesign::Net> &nets = unchanged ? same->bits : m_design->nets;
            const KnownDesign::Net *net = find(nets, stored.at(place.bit));
            if (net && isExcluded(*net, place.type)) {
                add(Rule::NotUsable, {place}, item.name);
                return;
            }
        }
    }

    static QStringList namesIn(const KnownDesign::Bus &bus, const QStringList &wanted)
    {
        QStringList names;
        for (const KnownDesign::Net &bit : bus.bits) {
            if (wanted.contains(bit.name))
                names += bit.name;
        }
        return names;
    }

    static bool isExcluded(const KnownDesign::Net &net, ProbeType type)
    {
        return type == TARN::ProbeTypeOut ? net.notOut : net.notIn;
    }

    const ConfigSnapshot &m_config;
    const KnownDesign *m_design;
    QVector<Finding> m_findings;
    std::map<QString, QVector<Place>> m_driven;
};

QStringList linesOf(const QVector<Finding> &findings)
{
    QStringList lines;
    for (const Finding &finding : findings)
        lines += TarnTest::textOf(finding);
    return lines;
}

/// The lines of all findings, after a look at what else the audit says of them.
QStringList linesOf(const ConfigAudit &audit)
{
    QStringList lines;
    for (int i = 0; i < audit.count(); ++i) {
        const Finding finding = audit.at(i);
        const bool agrees = audit.ruleAt(i) == finding.rule && audit.placeAt(i) == finding.place;
        const bool isReadable = finding.text.endsWith('.') &&
                                (finding.name.isEmpty() || finding.text.contains(finding.name) ||
                                 finding.rule == Rule::NotUsable);
        lines += TarnTest::textOf(finding) + (agrees && isReadable ? "" : " ?? " + finding.text);
    }
    return lines;
}

/// The marks of all signals. Fails when that of a port is not the worst of them.
QStringList markedLines(const ConfigSnapshot &config, const TARN::SignalMarks &marks)
{
    QStringList lines;
    const auto addPort = [&](Place place, const QList<SignalItem> &items) {
        Rule worst = Rule::ClockMissing;
        for (place.signal = 0; place.signal < items.size(); ++place.signal) {
            const TARN::SignalMarks::Mark mark = marks.of(items.at(place.signal), place.type);
            if (mark.rule)
                lines += TarnTest::textOf(place) + ' ' + TARN::ruleId(*mark.rule) + ' ' + mark.text;
            worst = qMin(worst, mark.rule.value_or(Rule::ClockMissing));
        }
        QVERIFY(marks.ofPort(items, place.type).rule.value_or(Rule::ClockMissing) == worst);
    };
    for (int core = 0; core < config.cores.size(); ++core) {
        const TARN::CoreSnapshot &content = *config.cores.at(core).content;
        for (int port = 0; port < content.probeIns.size(); ++port)
            addPort({core, TARN::ProbeTypeIn, port}, content.probeIns.at(port)->signals);
        for (int port = 0; port < content.probeOuts.size(); ++port)
            addPort({core, TARN::ProbeTypeOut, port}, content.probeOuts.at(port)->signals);
    }
    return lines;
}

} // namespace

/// The audit against a naive one, on configurations and designs by chance. TARN_AUDIT_SEED and
/// TARN_AUDIT_COUNT choose others.
class TestAuditReference : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void wholeConfigurations();
    void editsAndDesigns();
    void marksAreTheWorstFindings();

private:
    const quint32 m_seed = TarnTest::setting("TARN_AUDIT_SEED", 1);
    const int m_count = int(TarnTest::setting("TARN_AUDIT_COUNT", 2000));
};

/// Also, the audit has an error for each error of the save check.
void TestAuditReference::wholeConfigurations()
{
    QVector<int> seen(int(Rule::EmptyPort) + 1);
    for (int i = 0; i < m_count; ++i) {
        RandomDesign random(m_seed + quint32(i));
        const KnownDesign design = random.design();
        const ConfigSnapshot config = random.config(design);
        const Cores cores(TARN::newCores(config));
        const QVector<Finding> found = TARN::auditConfig(cores.list, design.netlist.get());
        const QStringList expected = linesOf(NaiveAudit(config, &design).findings());
        QVERIFY2(linesOf(found) == expected,
                 qPrintable(QString("seed %1\n%2\nexpected\n%3")
                                .arg(m_seed + quint32(i))
                                .arg(linesOf(found).join('\n'), expected.join('\n'))));
        QStringList drivers;
        int errors = 0;
        for (const Finding &finding : found) {
            ++seen[int(finding.rule)];
            errors += finding.rule == Rule::EmptyCore || finding.rule == Rule::ClockMissing ||
                      finding.rule == Rule::ClockNotUsable || finding.rule == Rule::SeveralDrivers;
            if (finding.rule == Rule::SeveralDrivers)
                drivers += finding.name;
        }
        const QStringList checked = TARN::checkConfig(cores.list, design.netlist.get());
        QCOMPARE(checked.size(), errors);
        const QStringList driverErrors = checked.mid(checked.size() - drivers.size());
        for (int driver = 0; driver < drivers.size(); ++driver)
            QVERIFY(
                driverErrors.at(driver).startsWith("ERROR:Signal \"" + drivers.at(driver) + '"'));
    }
    for (const int count : seen)
        QVERIFY2(count > m_count / 50, "a rule is hardly ever broken");
}

/// After each step, the audit that follows edits, ways back and other designs says the same as one
/// that sees the configuration for the first time.
void TestAuditReference::editsAndDesigns()
{
    constexpr int Steps = 20;
    for (int i = 0; i < m_count / Steps * 4; ++i) {
        RandomDesign random(m_seed + quint32(i));
        std::vector<KnownDesign> designs;
        std::vector<std::unique_ptr<DesignNames>> names;
        for (int design = 0; design < 2; ++design) {
            designs.push_back(random.design());
            names.push_back(std::make_unique<DesignNames>(designs.back().netlist.get()));
        }
        int current = 0;
        ConfigAudit audit;
        QVector<ConfigSnapshot> history{random.config(designs[0])};
        for (int step = 0; step < Steps; ++step) {
            if (step == 0 || random.chance(15)) {
                current = random.below(3); // 2 for no netlist.
                audit.setNames(current == 2 ? nullptr : names[std::size_t(current)].get());
            }
            if (random.chance(15))
                history.append(history.at(random.below(history.size())));
            else
                history.append(random.edited(history.last(), designs[std::size_t(current % 2)]));
            audit.update(history.last());
            const KnownDesign *design = current == 2 ? nullptr : &designs[std::size_t(current)];
            const QStringList expected = linesOf(NaiveAudit(history.last(), design).findings());
            QVERIFY2(linesOf(audit) == expected,
                     qPrintable(QString("seed %1, step %2\n%3\nexpected\n%4")
                                    .arg(m_seed + quint32(i))
                                    .arg(step)
                                    .arg(linesOf(audit).join('\n'), expected.join('\n'))));
        }
    }
}

/// The mark of each signal is its first finding of those that marks show, in rule and text; the
/// mark of a port is the worst of its signals.
void TestAuditReference::marksAreTheWorstFindings()
{
    for (int i = 0; i < m_count / 3; ++i) {
        RandomDesign random(m_seed + quint32(i));
        const KnownDesign design = random.design();
        const DesignNames names(design.netlist.get());
        const ConfigSnapshot config = random.config(design);
        const Cores cores(TARN::newCores(config));
        TARN::SignalMarks marks;
        marks.setNames(&names);
        QStringList expected;
        for (const Finding &finding : TARN::auditConfig(cores.list, design.netlist.get())) {
            const QString place = TarnTest::textOf(Place{finding.place.core, finding.place.type,
                                                         finding.place.port, finding.place.signal});
            const bool known = !expected.isEmpty() && expected.last().startsWith(place + ' ');
            if (finding.rule <= Rule::NotUsable && !known)
                expected += place + ' ' + TARN::ruleId(finding.rule) + ' ' + finding.text;
        }
        QCOMPARE(markedLines(config, marks), expected);
    }
}

TARN_TEST_MAIN(TestAuditReference)
#include "tst_auditreference.moc"
