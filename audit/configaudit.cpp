// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configaudit.h"

#include "designnames.h"
#include "portaudit.h"
#include "signalfit.h"

#include <model/configcheck.h>
#include <model/configsnapshot.h>
#include <model/drivenbits.h>

#include <QCoreApplication>
#include <QMultiHash>
#include <QSet>

#include <algorithm>
#include <tuple>

namespace TARN {

namespace {

bool isBefore(const Place &a, const Place &b)
{
    return std::tie(a.core, a.type, a.port, a.signal, a.bit) <
           std::tie(b.core, b.type, b.port, b.signal, b.bit);
}

bool holdsSignals(const QVector<std::shared_ptr<const PortSnapshot>> &ports)
{
    return std::any_of(ports.cbegin(), ports.cend(),
                       [](const auto &port) { return !port->signals.isEmpty(); });
}

/// A text of the file in a message, which should not be longer than a line.
QString shortened(const QString &text)
{
    constexpr int Longest = 60;
    return text.size() > Longest ? text.left(Longest) + QStringLiteral("...") : text;
}

} // namespace

class ConfigAudit::Private
{
    Q_DECLARE_TR_FUNCTIONS(TARN::ConfigAudit)

public:
    explicit Private(Notes wanted)
        : m_notes(wanted)
    {
    }

    void setNames(const DesignNames *newNames);
    void update(const ConfigSnapshot &next);
    int count() const { return portCount() + m_driven.severalCount(); }
    Finding at(int i) const;
    Rule ruleAt(int i) const;
    Place placeAt(int i) const;
    QString placeText(const Place &place) const;
    Summary summary() const;

private:
    using Snapshot = std::shared_ptr<const PortSnapshot>;

    /// What is known of one port, wherever it is.
    struct Port
    {
        Snapshot snapshot;
        Place place; ///< Of the whole port.
        PortAudit audit;
        int driver = -1; ///< Its number in m_driven; -1 for a Probe In port.
    };
    using Ports = std::vector<std::unique_ptr<Port>>;

    /// The ports of the configuration so far, to be used again. Equal objects may occur repeatedly.
    struct Spares
    {
        explicit Spares(Ports former);
        std::unique_ptr<Port> take(const PortSnapshot *snapshot, ProbeType type);

        Ports ports; ///< Null where taken.
        QMultiHash<const PortSnapshot *, int> positions[2];
    };

    /// The findings of a core without its ports, or those of one port.
    struct Section
    {
        int core;
        const Port *port; ///< Null for the core.
        std::vector<Rule> coreRules;
    };

    /// A finding that is not of several drivers.
    struct Position
    {
        const Section *section;
        std::size_t offset;

        Rule rule() const { return section->port ? entry().rule : section->coreRules[offset]; }
        /// Only in a port.
        const PortAudit::Entry &entry() const { return section->port->audit.entries()[offset]; }
    };

    Position positionOf(int i) const;
    int portCount() const { return m_ends.empty() ? 0 : m_ends.back(); }
    void layOut(const ConfigSnapshot &next, Spares *spares);
    void addPorts(int core, ProbeType type, const QVector<Snapshot> &snapshots, Spares *spares);
    std::unique_ptr<Port> newPort(const Snapshot &snapshot, ProbeType type);
    void drop(const Ports &unused);
    void look(Port *port) const;
    void number();
    std::vector<Rule> rulesOf(const CoreSnapshot &core) const;

    Finding coreFinding(int core, Rule rule) const;
    Finding portFinding(const Port &port, const PortAudit::Entry &entry) const;
    Finding driverFinding(int i) const;
    QVector<Place> driverPlaces(int i) const;
    QString textOf(const Port &port, const PortAudit::Entry &entry, const QString &name) const;
    QString driversText(const QString &name, const QVector<Place> &places) const;
    static Place placeIn(const Port &port, BitPlace bit);

    Notes m_notes;
    const DesignNames *m_names = nullptr;
    ConfigSnapshot m_snapshot;
    Ports m_ports;
    DrivenBits m_driven;
    std::vector<const Port *> m_drivers; ///< By their numbers in m_driven.
    std::vector<Section> m_sections;
    std::vector<int> m_ends; ///< By section, the number of findings up to its end.
};

ConfigAudit::Private::Spares::Spares(Ports former)
    : ports(std::move(former))
{
    for (std::size_t i = 0; i < ports.size(); ++i)
        positions[ports[i]->place.type].insert(ports[i]->snapshot.get(), int(i));
}

std::unique_ptr<ConfigAudit::Private::Port>
ConfigAudit::Private::Spares::take(const PortSnapshot *snapshot, ProbeType type)
{
    const auto known = positions[type].find(snapshot);
    if (known == positions[type].end())
        return nullptr;
    std::unique_ptr<Port> port = std::move(ports[std::size_t(*known)]);
    positions[type].erase(known);
    return port;
}

void ConfigAudit::Private::setNames(const DesignNames *newNames)
{
    m_names = newNames;
    for (const std::unique_ptr<Port> &port : m_ports)
        look(port.get());
    number();
}

void ConfigAudit::Private::update(const ConfigSnapshot &next)
{
    Spares spares(std::move(m_ports));
    layOut(next, &spares);
    m_snapshot = next;
    drop(spares.ports);
    m_driven.settle();
    number();
}

/// Puts the ports of @p next in order.
void ConfigAudit::Private::layOut(const ConfigSnapshot &next, Spares *spares)
{
    m_ports.clear();
    m_sections.clear();
    for (int core = 0; core < next.cores.size(); ++core) {
        const CoreSnapshot &content = *next.cores.at(core).content;
        m_sections.push_back({core, nullptr, {}});
        addPorts(core, ProbeTypeIn, content.probeIns, spares);
        addPorts(core, ProbeTypeOut, content.probeOuts, spares);
    }
}

void ConfigAudit::Private::addPorts(int core, ProbeType type, const QVector<Snapshot> &snapshots,
                                    Spares *spares)
{
    for (int position = 0; position < snapshots.size(); ++position) {
        const Snapshot &snapshot = snapshots.at(position);
        std::unique_ptr<Port> port = spares->take(snapshot.get(), type);
        if (!port)
            port = newPort(snapshot, type);
        port->place.core = core;
        port->place.port = position;
        m_sections.push_back({core, port.get(), {}});
        m_ports.push_back(std::move(port));
    }
}

std::unique_ptr<ConfigAudit::Private::Port> ConfigAudit::Private::newPort(const Snapshot &snapshot,
                                                                          ProbeType type)
{
    auto port = std::make_unique<Port>();
    port->snapshot = snapshot;
    port->place.type = type;
    look(port.get());
    if (type == ProbeTypeOut) {
        port->driver = m_driven.add(snapshot->signals);
        if (std::size_t(port->driver) == m_drivers.size())
            m_drivers.push_back(nullptr);
        m_drivers[std::size_t(port->driver)] = port.get();
    }
    return port;
}

/// The last ports go first, which suits the table of driven bits.
void ConfigAudit::Private::drop(const Ports &unused)
{
    for (auto port = unused.rbegin(); port != unused.rend(); ++port) {
        if (*port && (*port)->driver != -1)
            m_driven.remove((*port)->driver);
    }
}

void ConfigAudit::Private::look(Port *port) const
{
    port->audit.run(*port->snapshot, port->place.type, m_names);
    if (m_notes == Notes::LeftOut)
        port->audit.leaveNotesOut();
}

/// Looks at the cores themselves, which takes no time, and counts.
void ConfigAudit::Private::number()
{
    m_ends.clear();
    int end = 0;
    for (Section &section : m_sections) {
        if (!section.port)
            section.coreRules = rulesOf(*m_snapshot.cores.at(section.core).content);
        end += int(section.port ? section.port->audit.entries().size() : section.coreRules.size());
        m_ends.push_back(end);
    }
}

std::vector<Rule> ConfigAudit::Private::rulesOf(const CoreSnapshot &core) const
{
    std::vector<Rule> rules;
    if (m_notes == Notes::Included && !holdsSignals(core.probeIns) && !holdsSignals(core.probeOuts))
        rules.push_back(Rule::EmptyCore);
    switch (
        clockFault(core.syncUserClock, core.userClock, m_names ? m_names->netlist() : nullptr)) {
    case ClockFault::None:
        break;
    case ClockFault::NotGiven:
        rules.push_back(Rule::ClockMissing);
        break;
    case ClockFault::Missing:
        if (m_names)
            rules.push_back(Rule::ClockMissing);
        break;
    case ClockFault::NotUsable:
        rules.push_back(Rule::ClockNotUsable);
        break;
    }
    return rules;
}

ConfigAudit::Private::Position ConfigAudit::Private::positionOf(int i) const
{
    const auto end = std::upper_bound(m_ends.cbegin(), m_ends.cend(), i);
    const int offset = end == m_ends.cbegin() ? i : i - *(end - 1);
    return {&m_sections[std::size_t(end - m_ends.cbegin())], std::size_t(offset)};
}

Finding ConfigAudit::Private::at(int i) const
{
    if (i >= portCount())
        return driverFinding(i - portCount());
    const Position position = positionOf(i);
    if (!position.section->port)
        return coreFinding(position.section->core, position.rule());
    return portFinding(*position.section->port, position.entry());
}

Rule ConfigAudit::Private::ruleAt(int i) const
{
    return i >= portCount() ? Rule::SeveralDrivers : positionOf(i).rule();
}

Place ConfigAudit::Private::placeAt(int i) const
{
    if (i >= portCount())
        return driverPlaces(i - portCount()).first();
    const Position position = positionOf(i);
    if (const Port *port = position.section->port)
        return placeIn(*port, position.entry().place);
    Place place;
    place.core = position.section->core;
    return place;
}

Finding ConfigAudit::Private::coreFinding(int core, Rule rule) const
{
    Finding finding;
    finding.rule = rule;
    finding.place.core = core;
    if (rule == Rule::EmptyCore) {
        finding.text = tr("The core has no port that holds a signal.");
        return finding;
    }
    finding.name = m_snapshot.cores.at(core).content->userClock;
    if (finding.name.isEmpty())
        finding.text = clockFaultText(ClockFault::NotGiven) + QLatin1Char('.');
    else if (rule == Rule::ClockMissing)
        finding.text = tr("The design has no net %1, the user clock.").arg(finding.name);
    else
        finding.text = tr("The net %1 cannot be the user clock: it has no value in the hardware.")
                           .arg(finding.name);
    return finding;
}

Finding ConfigAudit::Private::portFinding(const Port &port, const PortAudit::Entry &entry) const
{
    Finding finding;
    finding.rule = entry.rule;
    finding.place = placeIn(port, entry.place);
    for (int i = 0; i < entry.furtherCount; ++i)
        finding.others.append(placeIn(port, port.audit.furtherPlace(entry.firstFurther + i)));
    if (entry.place.signal != -1) {
        const SignalItem &item = port.snapshot->signals.at(entry.place.signal);
        const bool ofBit = entry.rule == Rule::Repeated && entry.place.bit != -1;
        finding.name = ofBit ? item.members.at(entry.place.bit).name : item.name;
    }
    finding.text = textOf(port, entry, finding.name);
    return finding;
}

QString ConfigAudit::Private::textOf(const Port &port, const PortAudit::Entry &entry,
                                     const QString &name) const
{
    const PortSnapshot &content = *port.snapshot;
    const auto item = [&] { return content.signals.at(entry.place.signal); };
    switch (entry.rule) {
    case Rule::NetMissing:
        return missingText(item());
    case Rule::BusChanged:
        return changedText(item(), *m_names);
    case Rule::NotUsable:
        return unusableText(item(), port.place.type, fitOf(item(), port.place.type, *m_names));
    case Rule::Repeated:
        if (entry.furtherCount == 1)
            return tr("The port holds %1 twice.").arg(name);
        return tr("The port holds %1 %2 times.").arg(name, QString::number(entry.furtherCount + 1));
    case Rule::ValueWidth:
        return tr("The initial value %1 does not fit: its width is %2, that of the port is %3.")
            .arg(shortened(content.initialValue),
                 QString::number(significantBits(content.initialValue)),
                 QString::number(widthOf(content.signals)));
    case Rule::EmptyPort:
        return tr("The port holds no signal.");
    default:
        return QString();
    }
}

/// Every place of a bit with several drivers, in order.
QVector<Place> ConfigAudit::Private::driverPlaces(int i) const
{
    QVector<Place> places;
    for (const DrivenBits::Driver &driver : m_driven.drivers(i))
        places.append(placeIn(*m_drivers[std::size_t(driver.port)], {driver.signal, driver.bit}));
    std::sort(places.begin(), places.end(), isBefore);
    return places;
}

Finding ConfigAudit::Private::driverFinding(int i) const
{
    QVector<Place> places = driverPlaces(i);
    Finding finding;
    finding.rule = Rule::SeveralDrivers;
    finding.name = m_driven.name(i);
    finding.text = driversText(finding.name, places);
    finding.place = places.takeFirst();
    finding.others = places;
    return finding;
}

/// Names the first ports, as many as fit on a line.
QString ConfigAudit::Private::driversText(const QString &name, const QVector<Place> &places) const
{
    constexpr int Most = 4;
    QStringList ports;
    for (const Place &place : places.mid(0, Most))
        ports.append(placeText(place));
    QString text = ports.join(QStringLiteral("; "));
    if (places.size() > Most)
        text = tr("%1; and %2 more").arg(text, QString::number(places.size() - Most));
    return tr("The net %1 has several drivers: %2.").arg(name, text);
}

Place ConfigAudit::Private::placeIn(const Port &port, BitPlace bit)
{
    Place place = port.place;
    place.signal = bit.signal;
    place.bit = bit.bit;
    return place;
}

QString ConfigAudit::Private::placeText(const Place &place) const
{
    if (place.core < 0 || place.core >= m_snapshot.cores.size())
        return QString();
    const ConfigSnapshot::Core &core = m_snapshot.cores.at(place.core);
    if (place.port == -1)
        return tr("tarn_%1").arg(core.index);
    const bool out = place.type == ProbeTypeOut;
    const Snapshot port =
        (out ? core.content->probeOuts : core.content->probeIns).value(place.port);
    if (!port)
        return QString();
    return (out ? tr("tarn_%1, Probe Out%2") : tr("tarn_%1, Probe In%2"))
        .arg(core.index)
        .arg(port->index);
}

ConfigAudit::Summary ConfigAudit::Private::summary() const
{
    Summary summary;
    QSet<QString> missing;
    QSet<QString> changed;
    for (const Section &section : m_sections) {
        if (!section.port) {
            if (!section.coreRules.empty() && section.coreRules.back() == Rule::ClockMissing)
                missing.insert(m_snapshot.cores.at(section.core).content->userClock);
            continue;
        }
        int marked = -1;
        for (const PortAudit::Entry &entry : section.port->audit.entries()) {
            if (entry.rule > Rule::NotUsable)
                continue;
            const QString name = section.port->snapshot->signals.at(entry.place.signal).name;
            if (entry.rule == Rule::NetMissing)
                missing.insert(name);
            if (entry.rule == Rule::BusChanged)
                changed.insert(name);
            summary.marked += marked != entry.place.signal;
            marked = entry.place.signal;
        }
    }
    // A clock that is not given is no net that went.
    missing.remove(QString());
    summary.missing = missing.size();
    summary.changed = changed.size();
    return summary;
}

ConfigAudit::ConfigAudit(Notes notes)
    : d(std::make_unique<Private>(notes))
{
}

ConfigAudit::~ConfigAudit() = default;

void ConfigAudit::setNames(const DesignNames *names)
{
    d->setNames(names);
}

void ConfigAudit::update(const ConfigSnapshot &snapshot)
{
    d->update(snapshot);
}

int ConfigAudit::count() const
{
    return d->count();
}

Finding ConfigAudit::at(int i) const
{
    return d->at(i);
}

Rule ConfigAudit::ruleAt(int i) const
{
    return d->ruleAt(i);
}

Place ConfigAudit::placeAt(int i) const
{
    return d->placeAt(i);
}

QString ConfigAudit::placeText(const Place &place) const
{
    return d->placeText(place);
}

ConfigAudit::Summary ConfigAudit::summary() const
{
    return d->summary();
}

QVector<Finding> auditConfig(const QList<TarnCore *> &cores, NETWEIR::RtlNetlist *netlist)
{
    const DesignNames names(netlist);
    ConfigAudit audit;
    audit.setNames(netlist ? &names : nullptr);
    audit.update(snapshotOf(cores));
    QVector<Finding> findings;
    findings.reserve(audit.count());
    for (int i = 0; i < audit.count(); ++i)
        findings.append(audit.at(i));
    return findings;
}

} // namespace TARN
