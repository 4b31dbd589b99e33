// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "replacement.h"

#include "counterpart.h"
#include "designnames.h"
#include "signalfit.h"

#include <model/bitstring.h>
#include <model/configsnapshot.h>
#include <model/netsignals.h>
#include <model/portbits.h>
#include <model/portlimits.h>
#include <sdk/netweir.h>

#include <QHash>
#include <QSet>

#include <algorithm>
#include <functional>
#include <optional>

namespace TARN {

namespace {

using Port = std::shared_ptr<const PortSnapshot>;

/// "[3]" of "top/data[3]", empty for a name without an index.
QString indexOf(const QString &name)
{
    return name.endsWith(QLatin1Char(']')) ? name.mid(name.lastIndexOf(QLatin1Char('[')))
                                           : QString();
}

QStringList netsOf(const SignalItem &item)
{
    if (item.members.isEmpty())
        return {item.name};
    QStringList nets;
    nets.reserve(item.members.size());
    for (const SignalItem &member : item.members)
        nets.append(member.name);
    return nets;
}

/// The values of the bits of a signal by their names and, where those are new, by their indexes.
class BitValues
{
public:
    void add(const QStringList &nets, const QString &bits)
    {
        for (int i = 0; i < nets.size(); ++i) {
            if (!m_byName.contains(nets.at(i)))
                m_byName.insert(nets.at(i), bits.at(i));
        }
    }

    void addIndexes(const QStringList &nets, const QString &bits)
    {
        for (int i = 0; i < nets.size(); ++i) {
            const QString index = indexOf(nets.at(i));
            if (!index.isEmpty() && !m_byIndex.contains(index))
                m_byIndex.insert(index, bits.at(i));
        }
    }

    QChar of(const QString &net) const
    {
        const auto named = m_byName.constFind(net);
        return named != m_byName.cend() ? *named : m_byIndex.value(indexOf(net), QLatin1Char('0'));
    }

private:
    QHash<QString, QChar> m_byName;
    QHash<QString, QChar> m_byIndex;
};

/// A port while signals of it are replaced. Positions stay those of the snapshot until the end.
class PortEdit
{
public:
    PortEdit(const PortSnapshot &port, ProbeType type);

    void replace(int position, const SignalItem &by);

    /// The port as it is now; null when it has too many bits.
    Port result() const;

private:
    struct Entry
    {
        SignalItem item;
        QStringList nets;
        QString bits;     ///< One for each net.
        int distinct = 0; ///< Number of different nets.
        bool gone = false;
    };
    using Entries = std::vector<int>; ///< Indexes in m_entries.

    Entry &entryAt(int index) { return m_entries[std::size_t(index)]; }
    int addEntry(const SignalItem &item, const QString &bits);
    const Entries &holdersOf(const QString &net);
    bool isHeldBeside(const QString &net, int going, const Entries &covered);
    Entries coveredBy(const QStringList &nets, int going);
    QString newBits(const Entry &former, const SignalItem &by, const Entries &covered);

    qint32 m_index;
    ProbeType m_type;
    std::vector<Entry> m_entries; ///< Also those that were replaced.
    Entries m_order;              ///< By position; what is gone keeps its position.
    /// What holds a net, or held it until it went.
    QHash<QString, Entries> m_holders;
};

PortEdit::PortEdit(const PortSnapshot &port, ProbeType type)
    : m_index(port.index)
    , m_type(type)
{
    // The digits of a value of another width stay where they are; storedBits(), by which the page
    // shows it, cuts them first.
    const int width = widthOf(port.signals);
    const QString bits = fittedBits(stringHextoBinfor0x(port.initialValue), 0, width);
    int taken = 0;
    m_entries.reserve(std::size_t(port.signals.size()));
    m_order.reserve(std::size_t(port.signals.size()));
    for (const SignalItem &item : port.signals) {
        m_order.push_back(addEntry(item, bits.mid(taken, item.width())));
        taken += item.width();
    }
}

int PortEdit::addEntry(const SignalItem &item, const QString &bits)
{
    const int index = int(m_entries.size());
    m_entries.push_back({item, netsOf(item), bits});
    Entry &entry = m_entries.back();
    for (const QString &net : qAsConst(entry.nets)) {
        Entries &holders = m_holders[net];
        if (!holders.empty() && holders.back() == index)
            continue;
        holders.push_back(index);
        ++entry.distinct;
    }
    return index;
}

/// Forgets those that are gone, so that each is passed once.
const PortEdit::Entries &PortEdit::holdersOf(const QString &net)
{
    Entries &holders = m_holders[net];
    holders.erase(std::remove_if(holders.begin(), holders.end(),
                                 [this](int entry) { return entryAt(entry).gone; }),
                  holders.end());
    return holders;
}

/// Whether entries that stay hold the net beside the one that goes.
bool PortEdit::isHeldBeside(const QString &net, int going, const Entries &covered)
{
    const Entries &holders = holdersOf(net);
    return std::any_of(holders.cbegin(), holders.cend(), [going, &covered](int holder) {
        return holder != going && !std::binary_search(covered.cbegin(), covered.cend(), holder);
    });
}

/// The other entries that have some of the @p nets, but not all, and nothing else.
PortEdit::Entries PortEdit::coveredBy(const QStringList &nets, int going)
{
    QHash<int, int> common;
    const QSet<QString> distinct(nets.cbegin(), nets.cend());
    for (const QString &net : distinct) {
        for (const int holder : holdersOf(net))
            ++common[holder];
    }
    Entries covered;
    for (auto it = common.cbegin(); it != common.cend(); ++it) {
        const int all = entryAt(it.key()).distinct;
        if (it.key() != going && it.value() == all && all < distinct.size())
            covered.push_back(it.key());
    }
    std::sort(covered.begin(), covered.end());
    return covered;
}

QString PortEdit::newBits(const Entry &former, const SignalItem &by, const Entries &covered)
{
    if (former.item.width() == 1 && by.width() == 1)
        return former.bits;
    BitValues values;
    values.add(former.nets, former.bits);
    for (const int entry : covered)
        values.add(entryAt(entry).nets, entryAt(entry).bits);
    values.addIndexes(former.nets, former.bits);
    QString bits;
    const QStringList nets = netsOf(by);
    for (const QString &net : nets)
        bits.append(values.of(net));
    return bits;
}

void PortEdit::replace(int position, const SignalItem &by)
{
    const int former = m_order[std::size_t(position)];
    if (entryAt(former).gone)
        return;
    const QStringList nets = netsOf(by);
    const Entries covered = coveredBy(nets, former);
    const bool held = std::all_of(nets.cbegin(), nets.cend(), [&](const QString &net) {
        return isHeldBeside(net, former, covered);
    });
    if (!held) {
        const QString bits = newBits(entryAt(former), by, covered);
        for (const int entry : covered)
            entryAt(entry).gone = true;
        m_order[std::size_t(position)] = addEntry(by, bits);
    }
    entryAt(former).gone = true;
}

Port PortEdit::result() const
{
    PortSnapshot port;
    port.index = m_index;
    QString bits;
    for (const int index : m_order) {
        const Entry &entry = m_entries[std::size_t(index)];
        if (entry.gone)
            continue;
        port.signals.append(entry.item);
        bits += entry.bits;
    }
    if (bits.size() > MaxPortSignals)
        return nullptr;
    if (m_type == ProbeTypeOut)
        port.initialValue = valueText(bits);
    return std::make_shared<const PortSnapshot>(port);
}

/// Puts other signals, and other user clocks in use, in the place of those of a configuration.
class ConfigEdit
{
public:
    /// What takes the place of a signal; nothing when it stays.
    using SignalFor = std::function<std::optional<SignalItem>(const SignalItem &, ProbeType)>;
    /// What takes the place of a user clock; empty when it stays.
    using ClockFor = std::function<QString(const QString &)>;

    explicit ConfigEdit(SignalFor signalFor, ClockFor clockFor = {})
        : m_signalFor(std::move(signalFor))
        , m_clockFor(std::move(clockFor))
    {
    }

    /// Returns the number of signals and clocks replaced; -1, and nothing changes, when a port
    /// would exceed its limit.
    int apply(ConfigSnapshot *snapshot);

private:
    std::shared_ptr<const CoreSnapshot> applied(const std::shared_ptr<const CoreSnapshot> &core);
    void applyToClock(CoreSnapshot *core);
    bool applyToPorts(QVector<Port> *ports, ProbeType type);
    Port applied(const Port &port, ProbeType type);

    const SignalFor m_signalFor;
    const ClockFor m_clockFor;
    int m_count = 0;
};

/// The same object when nothing is replaced, null when the port would exceed its limit.
Port ConfigEdit::applied(const Port &port, ProbeType type)
{
    std::optional<PortEdit> edit;
    for (int i = 0; i < port->signals.size(); ++i) {
        const std::optional<SignalItem> by = m_signalFor(port->signals.at(i), type);
        if (!by)
            continue;
        if (!edit)
            edit.emplace(*port, type);
        edit->replace(i, *by);
        ++m_count;
    }
    return edit ? edit->result() : port;
}

bool ConfigEdit::applyToPorts(QVector<Port> *ports, ProbeType type)
{
    for (int i = 0; i < ports->size(); ++i) {
        const Port port = applied(ports->at(i), type);
        if (!port)
            return false;
        if (port != ports->at(i))
            (*ports)[i] = port;
    }
    return true;
}

void ConfigEdit::applyToClock(CoreSnapshot *core)
{
    const QString name =
        core->syncUserClock && m_clockFor ? m_clockFor(core->userClock) : QString();
    if (name.isEmpty())
        return;
    core->userClock = name;
    ++m_count;
}

/// Null when a port would exceed its limit.
std::shared_ptr<const CoreSnapshot>
ConfigEdit::applied(const std::shared_ptr<const CoreSnapshot> &core)
{
    CoreSnapshot content = *core;
    applyToClock(&content);
    if (!applyToPorts(&content.probeIns, ProbeTypeIn) ||
        !applyToPorts(&content.probeOuts, ProbeTypeOut))
        return nullptr;
    return shared(std::move(content), core);
}

int ConfigEdit::apply(ConfigSnapshot *snapshot)
{
    ConfigSnapshot result = *snapshot;
    for (ConfigSnapshot::Core &core : result.cores) {
        core.content = applied(core.content);
        if (!core.content)
            return -1;
    }
    *snapshot = result;
    return m_count;
}

/// Nothing when there are none.
std::optional<SignalItem> usableBits(NETWEIR::RtlNetBus *bus, ProbeType type)
{
    SignalItem item = signalOf(bus, type);
    removeDisabledMembers(&item);
    return item.members.isEmpty() ? std::nullopt : std::optional<SignalItem>(item);
}

QVector<Port> *portsOf(CoreSnapshot *core, ProbeType type)
{
    return type == ProbeTypeOut ? &core->probeOuts : &core->probeIns;
}

bool replaceInPort(QVector<Port> *ports, const Place &place, SignalItem by)
{
    if (place.port >= ports->size() || place.signal < 0 ||
        place.signal >= ports->at(place.port)->signals.size())
        return false;
    removeDisabledMembers(&by);
    if (by.kind == SignalItem::Bus && by.members.isEmpty())
        return false;
    PortEdit edit(*ports->at(place.port), place.type);
    edit.replace(place.signal, by);
    const Port port = edit.result();
    if (port)
        (*ports)[place.port] = port;
    return port != nullptr;
}

} // namespace

bool replaceSignal(ConfigSnapshot *snapshot, const Place &place, const SignalItem &by)
{
    if (place.core < 0 || place.core >= snapshot->cores.size())
        return false;
    CoreSnapshot core = *snapshot->cores.at(place.core).content;
    if (place.port < 0)
        core.userClock = by.name;
    else if (!replaceInPort(portsOf(&core, place.type), place, by))
        return false;
    snapshot->cores[place.core].content = std::make_shared<const CoreSnapshot>(std::move(core));
    return true;
}

int replacePrefix(ConfigSnapshot *snapshot, const QString &from, const QString &to,
                  const DesignNames &names)
{
    const auto signalFor = [&](const SignalItem &item,
                               ProbeType type) -> std::optional<SignalItem> {
        const QString name = movedName(item.name, from, to);
        if (name.isEmpty() || !fitOf(item, type, names).missing)
            return std::nullopt;
        if (item.members.isEmpty()) {
            if (NETWEIR::RtlNet *net = usableNet(name, type, names))
                return signalOf(net, type);
        } else if (NETWEIR::RtlNetBus *bus = usableBus(name, type, names)) {
            return signalOf(bus, type);
        }
        return std::nullopt;
    };
    const auto clockFor = [&](const QString &clock) {
        const QString name = names.net(clock) ? QString() : movedName(clock, from, to);
        return usableNet(name, ProbeTypeIn, names) ? name : QString();
    };
    return ConfigEdit(signalFor, clockFor).apply(snapshot);
}

int replaceName(ConfigSnapshot *snapshot, const QString &from, const QString &to,
                const DesignNames &names)
{
    const auto signalFor = [&](const SignalItem &item,
                               ProbeType type) -> std::optional<SignalItem> {
        return item.name == from ? usableSignal(to, type, names) : std::nullopt;
    };
    const auto clockFor = [&](const QString &clock) {
        return clock == from && usableNet(to, ProbeTypeIn, names) ? to : QString();
    };
    return ConfigEdit(signalFor, clockFor).apply(snapshot);
}

std::optional<SignalItem> usableSignal(const QString &name, ProbeType type,
                                       const DesignNames &names)
{
    if (NETWEIR::RtlNetBus *bus = names.bus(name))
        return usableBits(bus, type);
    if (NETWEIR::RtlNet *net = usableNet(name, type, names))
        return signalOf(net, type);
    return std::nullopt;
}

std::optional<SignalItem> busInPlaceOf(const QString &name, ProbeType type,
                                       const DesignNames &names)
{
    NETWEIR::RtlNetBus *bus = names.bus(name);
    if (!bus)
        bus = names.busesOfBase(baseOfBusName(name)).value(0);
    return bus ? usableBits(bus, type) : std::nullopt;
}

int takeOverBuses(ConfigSnapshot *snapshot, const DesignNames &names)
{
    const auto signalFor = [&names](const SignalItem &item,
                                    ProbeType type) -> std::optional<SignalItem> {
        if (!fitOf(item, type, names).changed)
            return std::nullopt;
        return busInPlaceOf(item.name, type, names);
    };
    return ConfigEdit(signalFor).apply(snapshot);
}

} // namespace TARN
