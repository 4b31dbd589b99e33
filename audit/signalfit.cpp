// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "signalfit.h"

#include "designnames.h"

#include <model/netsignals.h>
#include <sdk/netweir.h>

#include <QCoreApplication>

#include <algorithm>

namespace TARN {

namespace {

class SignalTexts
{
    Q_DECLARE_TR_FUNCTIONS(TARN::SignalFit)

public:
    static QString missing(const SignalItem &item);
    static QString changed(const SignalItem &item, const DesignNames &names);
    static QString unusable(const SignalItem &item, ProbeType type, const SignalFit &fit);

private:
    static QString difference(const SignalItem &item, NETWEIR::RtlNetBus &bus);
    static QString sameName(const SignalItem &item, NETWEIR::RtlNetBus &bus);
};

void countBit(NETWEIR::RtlNet *net, ProbeType type, int bit, SignalFit *fit)
{
    if (!isExcluded(net, type))
        return;
    if (fit->unusable == 0)
        fit->firstUnusable = bit;
    ++fit->unusable;
}

/// The nets of @p bus for the @p members, in order; empty when these are no ordered part of it.
std::vector<NETWEIR::RtlNet *> netsOfMembers(const QList<SignalItem> &members,
                                             NETWEIR::RtlNetBus &bus)
{
    std::vector<NETWEIR::RtlNet *> nets;
    nets.reserve(std::size_t(members.size()));
    const auto &all = bus.nets();
    auto next = all.cbegin();
    const auto end = all.cend();
    for (const SignalItem &member : members) {
        next = std::find_if(next, end, [&member](NETWEIR::RtlNet *net) {
            return net->fullPathName() == member.name;
        });
        if (next == end)
            return {};
        nets.push_back(*next++);
    }
    return nets;
}

/// Width of the bus when it was chosen, with the bits that were excluded then, by its range.
qint64 formerWidth(const SignalItem &item)
{
    const QString range = item.name.mid(int(baseOfBusName(item.name).size()));
    if (range.isEmpty())
        return item.members.size();
    const qint64 left = range.section(QLatin1Char(':'), 0, 0).mid(1).toInt();
    const qint64 right = range.section(QLatin1Char(':'), 1).chopped(1).toInt();
    return qAbs(left - right) + 1;
}

/// The bits of a bus that has changed, as far as the design still has them.
void countKnownBits(const QList<SignalItem> &members, ProbeType type, const DesignNames &names,
                    SignalFit *fit)
{
    for (int bit = 0; bit < members.size(); ++bit) {
        if (NETWEIR::RtlNet *net = names.net(members.at(bit).name))
            countBit(net, type, bit, fit);
    }
}

SignalFit fitOfNet(const SignalItem &item, ProbeType type, const DesignNames &names)
{
    SignalFit fit;
    NETWEIR::RtlNet *net = names.net(item.name);
    if (net)
        countBit(net, type, -1, &fit);
    fit.missing = !net;
    return fit;
}

SignalFit fitOfBus(const SignalItem &item, ProbeType type, const DesignNames &names)
{
    SignalFit fit;
    NETWEIR::RtlNetBus *bus = names.bus(item.name);
    if (!bus && names.busesOfBase(baseOfBusName(item.name)).isEmpty()) {
        fit.missing = true;
        return fit;
    }
    std::vector<NETWEIR::RtlNet *> nets;
    if (bus)
        nets = netsOfMembers(item.members, *bus);
    fit.changed = nets.empty();
    if (fit.changed)
        countKnownBits(item.members, type, names, &fit);
    for (std::size_t bit = 0; bit < nets.size(); ++bit)
        countBit(nets[bit], type, int(bit), &fit);
    return fit;
}

QString SignalTexts::missing(const SignalItem &item)
{
    return (item.members.isEmpty() ? tr("The design has no net %1.")
                                   : tr("The design has no bus %1."))
        .arg(item.name);
}

QString SignalTexts::changed(const SignalItem &item, const DesignNames &names)
{
    if (NETWEIR::RtlNetBus *bus = names.bus(item.name))
        return sameName(item, *bus);
    const QVector<NETWEIR::RtlNetBus *> buses = names.busesOfBase(baseOfBusName(item.name));
    if (buses.isEmpty())
        return missing(item);
    NETWEIR::RtlNetBus &bus = *buses.first();
    return tr("The bus %1 is %2 in the design now: %3.")
        .arg(item.name, bus.fullBusName(), difference(item, bus));
}

/// The difference to a bus with another range, by the number of bits.
QString SignalTexts::difference(const SignalItem &item, NETWEIR::RtlNetBus &bus)
{
    const qint64 more = bus.nets().size() - formerWidth(item);
    if (more == 1)
        return tr("1 bit more");
    if (more > 1)
        return tr("%1 bits more").arg(more);
    if (more == -1)
        return tr("1 bit fewer");
    if (more < -1)
        return tr("%1 bits fewer").arg(-more);
    const QList<SignalItem> reversed(item.members.crbegin(), item.members.crend());
    return netsOfMembers(reversed, bus).empty() ? tr("other bits")
                                                : tr("the same bits in reverse order");
}

/// The difference to a bus of the same name.
QString SignalTexts::sameName(const SignalItem &item, NETWEIR::RtlNetBus &bus)
{
    QStringList now;
    for (NETWEIR::RtlNet *net : bus.nets())
        now.append(net->fullPathName());
    std::sort(now.begin(), now.end());
    for (const SignalItem &member : item.members) {
        if (!std::binary_search(now.cbegin(), now.cend(), member.name))
            return tr("The bus %1 has no bit %2 in the design now.").arg(item.name, member.name);
    }
    return tr("The bus %1 has its bits in another order in the design now.").arg(item.name);
}

QString SignalTexts::unusable(const SignalItem &item, ProbeType type, const SignalFit &fit)
{
    const bool out = type == ProbeTypeOut;
    if (item.members.isEmpty())
        return (out ? tr("The net %1 cannot be driven: the design drives it, or it is no wire.")
                    : tr("The net %1 cannot be read: it has no value in the hardware."))
            .arg(item.name);
    const QString first = item.members.at(fit.firstUnusable).name;
    if (fit.unusable == 1)
        return (out ? tr("The bit %1 cannot be driven: the design drives it, or it is no wire.")
                    : tr("The bit %1 cannot be read: it has no value in the hardware."))
            .arg(first);
    return (out ? tr("%1 bits of the bus %2 cannot be driven: the design drives them, or they are "
                     "no wires.")
                : tr("%1 bits of the bus %2 cannot be read: they have no value in the hardware."))
        .arg(QString::number(fit.unusable), item.name);
}

} // namespace

SignalFit fitOf(const SignalItem &item, ProbeType type, const DesignNames &names)
{
    return item.members.isEmpty() ? fitOfNet(item, type, names) : fitOfBus(item, type, names);
}

QString missingText(const SignalItem &item)
{
    return SignalTexts::missing(item);
}

QString changedText(const SignalItem &item, const DesignNames &names)
{
    return SignalTexts::changed(item, names);
}

QString unusableText(const SignalItem &item, ProbeType type, const SignalFit &fit)
{
    return SignalTexts::unusable(item, type, fit);
}

} // namespace TARN
