// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <audit/configaudit.h>
#include <audit/designnames.h>
#include <model/configsamples.h>

#include <QStringList>

namespace TarnTest {

/// A signal from a text: "top/a" is a net, "top/d[3:0]=3,2,1,0" a bus with the members "top/d[3]"
/// to "top/d[0]". A member that is no number stands as it is: "top/d[1:0]=top/p,top/q".
inline TARN::SignalItem signalFrom(const QString &text)
{
    TARN::SignalItem item;
    item.name = text.section('=', 0, 0);
    item.kind = text.contains('=') ? TARN::SignalItem::Bus : TARN::SignalItem::Net;
    const QString base = TARN::baseOfBusName(item.name).toString();
    const QStringList members = text.section('=', 1, 1).split(',', Qt::SkipEmptyParts);
    for (const QString &member : members) {
        bool isNumber = false;
        member.toInt(&isNumber);
        TARN::SignalItem bit;
        bit.name = isNumber ? base + '[' + member + ']' : member;
        bit.kind = TARN::SignalItem::Bus;
        item.members.append(bit);
    }
    return item;
}

inline QList<TARN::SignalItem> signalsFrom(const QString &text)
{
    QList<TARN::SignalItem> items;
    const QStringList words = text.split(' ', Qt::SkipEmptyParts);
    for (const QString &word : words)
        items.append(signalFrom(word));
    return items;
}

/// Cores from a line of each: "core", "core CLOCK" or "core none" for one that waits for its clock,
/// "in: SIGNALS", "out: SIGNALS" and "out VALUE: SIGNALS".
inline Cores coresFrom(const QStringList &lines)
{
    Cores cores;
    for (const QString &line : lines) {
        const QString head = line.section(':', 0, 0);
        const QString argument = head.section(' ', 1, 1);
        const QList<TARN::SignalItem> items = signalsFrom(line.mid(head.size() + 1));
        TARN::TarnCore *core =
            head.startsWith("core") ? cores.add(cores.list.size()) : cores.list.last();
        if (head.startsWith("core")) {
            core->syncUserClock = !argument.isEmpty();
            core->userClock = argument == "none" ? QString() : argument;
        } else if (head == "in") {
            core->addProbeIn(core->probeIns.size());
            core->probeIns.last()->signals = items;
        } else {
            core->addProbeOut(core->probeOuts.size());
            core->probeOuts.last()->signals = items;
            core->probeOuts.last()->initialValue = argument;
        }
    }
    return cores;
}

/// "0.In1.2.3": core, port, signal and bit, as far as the place has them.
inline QString textOf(const TARN::Place &place)
{
    QString text = QString::number(place.core);
    if (place.port != -1)
        text += (place.type == TARN::ProbeTypeOut ? ".Out" : ".In") + QString::number(place.port);
    if (place.signal != -1)
        text += '.' + QString::number(place.signal);
    if (place.bit != -1)
        text += '.' + QString::number(place.bit);
    return text;
}

/// "repeated 0.In1.2.3 0.In1.4 top/d[0]": rule, all places and name.
inline QString textOf(const TARN::Finding &finding)
{
    QStringList words{TARN::ruleId(finding.rule), textOf(finding.place)};
    for (const TARN::Place &place : finding.others)
        words += textOf(place);
    words += finding.name;
    return words.join(' ').trimmed();
}

} // namespace TarnTest
