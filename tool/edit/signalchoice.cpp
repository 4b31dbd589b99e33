// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "signalchoice.h"

#include <audit/counterpart.h>
#include <audit/signalfit.h>
#include <model/configcheck.h>
#include <model/netsignals.h>
#include <netweir/hierachy.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>
#include <select/netsearch.h>
#include <tool/wording.h>

#include <QRegExp>
#include <QSet>

#include <algorithm>
#include <chrono>

namespace Tool {

namespace {

using TARN::ProbeType;
using TARN::SignalItem;
using Items = QList<SignalItem>;

/// A sentence of the findings as a part of a message.
QString asReason(QString sentence)
{
    sentence[0] = sentence.at(0).toLower();
    if (sentence.endsWith(QLatin1Char('.')))
        sentence.chop(1);
    return sentence;
}

/// What to do when something cannot be on ports of the type.
QString adviceFor(ProbeType type)
{
    return QStringLiteral("; \"tarn nets --for %1\" lists what can")
        .arg(type == TARN::ProbeTypeOut ? QLatin1String("out") : QLatin1String("in"));
}

bool hasUsableBit(const SignalItem &item)
{
    if (item.members.isEmpty())
        return item.enabled;
    return std::any_of(item.members.cbegin(), item.members.cend(),
                       [](const SignalItem &member) { return member.enabled; });
}

/// Signals that ports of one type can hold, as far as there is room for their bits.
struct UsableSignals
{
    ProbeType type;
    QSet<QString> present; ///< Names of signals that need no room.
    int room;              ///< Less than 0 when there is none for the last one.
    Items items;

    template <typename Net>
    void append(const QList<Net *> &nets)
    {
        for (Net *net : nets) {
            if (room < 0)
                return;
            SignalItem item = TARN::signalOf(net, type);
            if (!hasUsableBit(item))
                continue;
            TARN::removeDisabledMembers(&item);
            room -= present.contains(item.name) ? 0 : item.width();
            items.append(item);
        }
    }
};

} // namespace

SignalChoice::SignalChoice(NETWEIR::RtlNetlist *netlist)
    : m_netlist(netlist)
    , m_names(netlist)
{
}

std::optional<SignalItem> SignalChoice::findName(const QString &name, ProbeType type,
                                                 QString *warning, QString *error)
{
    std::optional<SignalItem> item;
    if (NETWEIR::RtlNetBus *bus = m_names.bus(name))
        item = TARN::signalOf(bus, type);
    else if (NETWEIR::RtlNet *net = m_names.net(name))
        item = itemOf(net, type);
    if (!item || !hasUsableBit(*item)) {
        *error = reasonAgainst(name, type) + (item ? adviceFor(type) : QString());
        return std::nullopt;
    }
    const TARN::SignalFit fit = TARN::fitOf(*item, type, m_names);
    if (fit.unusable > 0) {
        *warning = asReason(TARN::unusableText(*item, type, fit)) +
                   (fit.unusable == 1 ? QStringLiteral(", so ports get the bus without it")
                                      : QStringLiteral(", so ports get the bus without them"));
    }
    return item;
}

/// A bit of a bus is what its row in the list of results stands for.
SignalItem SignalChoice::itemOf(NETWEIR::RtlNet *net, ProbeType type) const
{
    SignalItem item = TARN::signalOf(net, type);
    const int bracket = item.name.lastIndexOf(QLatin1Char('['));
    if (bracket < 0)
        return item;
    const QVector<NETWEIR::RtlNetBus *> buses =
        m_names.busesOfBase(QStringView(item.name).left(bracket));
    const bool isBit = std::any_of(buses.cbegin(), buses.cend(), [net](NETWEIR::RtlNetBus *bus) {
        const auto &nets = bus->nets();
        return std::find(nets.cbegin(), nets.cend(), net) != nets.cend();
    });
    if (isBit)
        item.kind = SignalItem::Bus;
    return item;
}

std::optional<Items> SignalChoice::findMatches(const QString &pattern, ProbeType type,
                                               const Items &present, int most, QString *error)
{
    TARN::SearchOptions options;
    options.pattern = pattern;
    options.caseSensitivity = Qt::CaseInsensitive;
    options.usePattern = true;
    options.patternSyntax = QRegExp::WildcardUnix;
    options.useSearchIn = true;
    options.searchIn = m_netlist->top();
    options.includeSubentries = true;
    const QString fault = TARN::patternFault(options);
    if (!fault.isEmpty()) {
        *error = QStringLiteral("the wildcard %1 is invalid: %2").arg(quoted(pattern), fault);
        return std::nullopt;
    }
    QList<NETWEIR::RtlNet *> nets;
    QList<NETWEIR::RtlNetBus *> buses;
    TARN::searchNets(m_netlist, options, nets, buses);

    UsableSignals usable{type, {}, most, {}};
    for (const SignalItem &item : present)
        usable.present.insert(item.name);
    usable.append(buses);
    usable.append(nets);
    if (!usable.items.isEmpty())
        return usable.items;
    if (nets.isEmpty() && buses.isEmpty())
        *error =
            QStringLiteral("nothing in the design matches %1; a pattern covers full names from "
                           "end to end")
                .arg(quoted(pattern));
    else
        *error =
            (type == TARN::ProbeTypeOut ? QStringLiteral("nothing that matches %1 can be driven")
                                        : QStringLiteral("nothing that matches %1 can be read"))
                .arg(quoted(pattern)) +
            adviceFor(type);
    return std::nullopt;
}

QString SignalChoice::reasonAgainst(const QString &name, ProbeType type)
{
    SignalItem item;
    if (NETWEIR::RtlNetBus *bus = m_names.bus(name))
        item = TARN::signalOf(bus, type);
    else if (NETWEIR::RtlNet *net = m_names.net(name))
        item = TARN::signalOf(net, type);
    else
        return missingText(name, type, false);
    const TARN::SignalFit fit = TARN::fitOf(item, type, m_names);
    return asReason(TARN::unusableText(item, type, fit));
}

bool SignalChoice::checkClock(const QString &name, QString *error)
{
    switch (TARN::clockFault(true, name, m_netlist)) {
    case TARN::ClockFault::None:
        return true;
    case TARN::ClockFault::NotUsable:
        *error = reasonAgainst(name, TARN::ProbeTypeIn) + QStringLiteral("; choose another net");
        return false;
    case TARN::ClockFault::NotGiven:
    case TARN::ClockFault::Missing:
        break;
    }
    *error = m_names.bus(name)
                 ? QStringLiteral("%1 is a bus; a user clock is a single net").arg(quoted(name))
                 : missingText(name, TARN::ProbeTypeIn, true);
    return false;
}

QString SignalChoice::missingText(const QString &name, ProbeType type, bool netsOnly)
{
    const QString text = (netsOnly ? QStringLiteral("the design has no net %1")
                                   : QStringLiteral("the design has no net or bus %1"))
                             .arg(quoted(name));
    const QStringList similar = similarNames(name, type, netsOnly);
    return similar.isEmpty()
               ? text + QStringLiteral("; \"tarn nets\" lists what it has")
               : text + QStringLiteral("; similar: %1").arg(similar.join(QLatin1String(", ")));
}

/// The best few.
QStringList SignalChoice::similarNames(const QString &name, ProbeType type, bool netsOnly)
{
    constexpr int Most = 3;
    const bool bus = TARN::baseOfBusName(name).size() < name.size();
    if (!m_search)
        m_search = std::make_unique<TARN::CandidateSearch>(m_names);
    QStringList names;
    // A range shows that a bus is meant; without one it may have been forgotten.
    for (const bool asBus : {bus, true}) {
        m_search->setMissing({{name, asBus, type}});
        while (!m_search->step(std::chrono::milliseconds(100))) {
        }
        for (const TARN::Replacement &by : m_search->candidates(name, type)) {
            const QString to = by.kind == TARN::Replacement::Signal
                                   ? by.to
                                   : TARN::movedName(name, by.from, by.to);
            if (names.size() < Most && !names.contains(to) && !(netsOnly && by.bus))
                names.append(to);
        }
        if (netsOnly || bus)
            break;
    }
    return names;
}

} // namespace Tool
