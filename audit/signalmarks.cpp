// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "signalmarks.h"

#include "designnames.h"
#include "signalfit.h"

namespace TARN {

SignalMarks::Mark SignalMarks::of(const SignalItem &item, ProbeType type) const
{
    if (!m_names)
        return {};
    const SignalFit fit = fitOf(item, type, *m_names);
    if (fit.missing)
        return {Rule::NetMissing, missingText(item)};
    if (fit.changed)
        return {Rule::BusChanged, changedText(item, *m_names)};
    if (fit.unusable > 0)
        return {Rule::NotUsable, unusableText(item, type, fit)};
    return {};
}

SignalMarks::Mark SignalMarks::ofBit(const SignalItem &item, int bit, ProbeType type) const
{
    if (bit < 0 || bit >= item.members.size())
        return {};
    SignalItem net;
    net.name = item.members.at(bit).name;
    return of(net, type);
}

SignalMarks::Mark SignalMarks::ofPort(const QList<SignalItem> &items, ProbeType type) const
{
    Mark worst;
    for (const SignalItem &item : items) {
        Mark mark = of(item, type);
        // The rules are in the order of their weight.
        if (mark.rule && (!worst.rule || *mark.rule < *worst.rule))
            worst = mark;
        if (worst.rule == Rule::NetMissing)
            break;
    }
    return worst;
}

} // namespace TARN
