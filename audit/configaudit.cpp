// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configaudit.h"

#include "auditedports.h"
#include "designnames.h"
#include "findingtext.h"

#include <model/configcheck.h>
#include <model/configsnapshot.h>

#include <algorithm>

namespace TARN {

namespace {

bool holdSignals(const QVector<std::shared_ptr<const PortSnapshot>> &ports)
{
    return std::any_of(ports.cbegin(), ports.cend(),
                       [](const auto &port) { return !port->signals.isEmpty(); });
}

bool isClockMissing(ClockFault fault, bool haveNetlist)
{
    return fault == ClockFault::NotGiven || (fault == ClockFault::Missing && haveNetlist);
}

} // namespace

class ConfigAudit::Private
{
public:
    explicit Private(Notes notes)
        : m_notes(notes)
        , m_ports(notes == Notes::Included)
    {
    }

    void setNames(const DesignNames *names);
    void update(const ConfigSnapshot &config);
    int count() const { return listedCount() + m_ports.severalCount(); }
    Finding at(int i) const;
    Rule ruleAt(int i) const;
    Place placeAt(int i) const;
    QString placeText(const Place &place) const { return TARN::placeText(place, m_config); }
    int markedCount() const;

private:
    /// The findings of a core without its ports, or those of one port.
    struct Section
    {
        int core;
        const AuditedPort *port; ///< Null for the core.
        std::vector<Rule> coreRules;
        int end; ///< Number of findings up to here.
    };

    /// A finding of a section.
    struct Listed
    {
        const Section *section;
        std::size_t offset;

        Rule rule() const { return section->port ? entry().rule : section->coreRules[offset]; }
        /// Only of a port.
        const PortAudit::Entry &entry() const { return section->port->audit.entries()[offset]; }
    };

    int listedCount() const { return m_sections.empty() ? 0 : m_sections.back().end; }
    Listed listedAt(int i) const;
    void list();
    std::vector<Rule> rulesOf(const CoreSnapshot &core) const;
    QString nameOf(const Listed &listed) const;
    QVector<Place> furtherPlaces(const Listed &listed) const;

    Notes m_notes;
    const DesignNames *m_names = nullptr;
    ConfigSnapshot m_config;
    AuditedPorts m_ports;
    std::vector<Section> m_sections;
};

void ConfigAudit::Private::setNames(const DesignNames *names)
{
    m_names = names;
    m_ports.setNames(names);
    list();
}

void ConfigAudit::Private::update(const ConfigSnapshot &config)
{
    m_ports.update(config);
    m_config = config;
    list();
}

/// Looks at the cores themselves, which takes no time, and counts.
void ConfigAudit::Private::list()
{
    m_sections.clear();
    int end = 0;
    auto port = m_ports.ports().cbegin();
    for (int core = 0; core < m_config.cores.size(); ++core) {
        std::vector<Rule> rules = rulesOf(*m_config.cores.at(core).content);
        end += int(rules.size());
        m_sections.push_back({core, nullptr, std::move(rules), end});
        for (; port != m_ports.ports().cend() && (*port)->place.core == core; ++port) {
            end += int((*port)->audit.entries().size());
            m_sections.push_back({core, port->get(), {}, end});
        }
    }
}

std::vector<Rule> ConfigAudit::Private::rulesOf(const CoreSnapshot &core) const
{
    std::vector<Rule> rules;
    if (m_notes == Notes::Included && !holdSignals(core.probeIns) && !holdSignals(core.probeOuts))
        rules.push_back(Rule::EmptyCore);
    const ClockFault fault =
        clockFault(core.syncUserClock, core.userClock, m_names ? m_names->netlist() : nullptr);
    if (isClockMissing(fault, m_names != nullptr))
        rules.push_back(Rule::ClockMissing);
    if (fault == ClockFault::NotUsable)
        rules.push_back(Rule::ClockNotUsable);
    return rules;
}

ConfigAudit::Private::Listed ConfigAudit::Private::listedAt(int i) const
{
    const auto section =
        std::upper_bound(m_sections.cbegin(), m_sections.cend(), i,
                         [](int number, const Section &other) { return number < other.end; });
    const int begin = section == m_sections.cbegin() ? 0 : (section - 1)->end;
    return {&*section, std::size_t(i - begin)};
}

Rule ConfigAudit::Private::ruleAt(int i) const
{
    return i >= listedCount() ? Rule::SeveralDrivers : listedAt(i).rule();
}

Place ConfigAudit::Private::placeAt(int i) const
{
    if (i >= listedCount())
        return m_ports.severalPlaces(i - listedCount()).first();
    const Listed listed = listedAt(i);
    if (listed.section->port)
        return listed.section->port->placeOf(listed.entry().place);
    Place place;
    place.core = listed.section->core;
    return place;
}

Finding ConfigAudit::Private::at(int i) const
{
    Finding finding;
    finding.rule = ruleAt(i);
    if (i >= listedCount()) {
        finding.others = m_ports.severalPlaces(i - listedCount());
        finding.place = finding.others.takeFirst();
        finding.name = m_ports.severalName(i - listedCount());
    } else {
        const Listed listed = listedAt(i);
        finding.others = furtherPlaces(listed);
        finding.place = placeAt(i);
        finding.name = nameOf(listed);
    }
    finding.text = textOf(finding, m_config, m_names);
    return finding;
}

QString ConfigAudit::Private::nameOf(const Listed &listed) const
{
    if (!listed.section->port) {
        const bool isNote = listed.rule() == Rule::EmptyCore;
        return isNote ? QString() : m_config.cores.at(listed.section->core).content->userClock;
    }
    const BitPlace place = listed.entry().place;
    if (place.signal == -1)
        return QString();
    const SignalItem &item = listed.section->port->snapshot->signals.at(place.signal);
    const bool isBit = listed.rule() == Rule::Repeated && place.bit != -1;
    return isBit ? item.members.at(place.bit).name : item.name;
}

QVector<Place> ConfigAudit::Private::furtherPlaces(const Listed &listed) const
{
    QVector<Place> places;
    const AuditedPort *port = listed.section->port;
    for (int i = 0; port && i < listed.entry().furtherCount; ++i)
        places.append(port->placeOf(port->audit.furtherPlace(listed.entry().firstFurther + i)));
    return places;
}

int ConfigAudit::Private::markedCount() const
{
    int count = 0;
    for (const std::unique_ptr<AuditedPort> &port : m_ports.ports()) {
        int last = -1;
        for (const PortAudit::Entry &entry : port->audit.entries()) {
            if (entry.rule > Rule::NotUsable)
                continue;
            count += entry.place.signal != last;
            last = entry.place.signal;
        }
    }
    return count;
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

int ConfigAudit::markedCount() const
{
    return d->markedCount();
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
