// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configchanges.h"

#include "editedconfig.h"
#include "editstep.h"

#include <model/portlimits.h>
#include <tool/printable.h>
#include <tool/wording.h>

#include <QHash>

namespace Tool {

namespace {

using TARN::ConfigSnapshot;
using TARN::CoreSnapshot;
using TARN::PortSnapshot;
using TARN::ProbeType;
using TARN::ProbeTypeOut;
using TARN::SignalItem;
using Items = QList<SignalItem>;
using Ports = QVector<std::shared_ptr<const PortSnapshot>>;

constexpr int LabelWidth = 14;

QByteArray coreName(int index)
{
    return "tarn_" + QByteArray::number(index);
}

QByteArray orNone(const QString &text)
{
    return text.isEmpty() ? QByteArray("none") : printable(text);
}

/// "from -> to", or just "to" without a change.
QByteArray change(const QByteArray &from, const QByteArray &to)
{
    return from == to ? to : from + " -> " + to;
}

/// A line of a core: @p mark is '+', '-' or a blank.
QByteArray line(char mark, const QByteArray &label, const QByteArray &text)
{
    return QByteArray(1, mark) + ' ' + (text.isEmpty() ? label : label.leftJustified(LabelWidth)) +
           text + '\n';
}

QByteArray signalLine(char mark, const SignalItem &item)
{
    const QByteArray width =
        item.members.isEmpty()
            ? QByteArray()
            : " (" + counted(item.width(), QStringLiteral("bit")).toLatin1() + ')';
    return QByteArray(1, mark) + "     " + printable(item.name) + width + '\n';
}

QByteArray widthText(const PortSnapshot &port)
{
    return counted(TARN::widthOf(port.signals), QStringLiteral("bit")).toLatin1();
}

QByteArray valueText(const PortSnapshot &port)
{
    return orNone(port.initialValue);
}

QByteArray clockText(const CoreSnapshot &core)
{
    return core.syncUserClock ? orNone(core.userClock) : orNone(core.userClock) + " (off)";
}

bool sameItem(const SignalItem &a, const SignalItem &b)
{
    return TARN::sameSignals({a}, {b});
}

/// The signals that only one of the lists has, those that go first. What has only moved is told in
/// one line.
QByteArray signalChanges(const Items &before, const Items &after)
{
    if (TARN::sameSignals(before, after))
        return {};
    QHash<QString, QVector<int>> left; // Positions in the former list, by name.
    for (int i = before.size() - 1; i >= 0; --i)
        left[before.at(i).name].append(i);
    QVector<bool> stays(before.size(), false);
    QByteArray added;
    for (const SignalItem &item : after) {
        QVector<int> &same = left[item.name];
        if (!same.isEmpty() && sameItem(before.at(same.last()), item))
            stays[same.takeLast()] = true;
        else
            added += signalLine('+', item);
    }
    QByteArray text;
    for (int i = 0; i < before.size(); ++i) {
        if (!stays.at(i))
            text += signalLine('-', before.at(i));
    }
    text += added;
    return text.isEmpty() ? QByteArray("      the same signals in another order\n") : text;
}

/// A port that comes or goes.
QByteArray wholePort(char mark, const QByteArray &name, const PortSnapshot &port, ProbeType type)
{
    QByteArray text = widthText(port);
    if (type == ProbeTypeOut)
        text += ", initial value " + valueText(port);
    QByteArray lines = line(mark, "  " + name, text);
    for (const SignalItem &item : port.signals)
        lines += signalLine(mark, item);
    return lines;
}

QByteArray portChanges(const QByteArray &name, const PortSnapshot &before,
                       const PortSnapshot &after)
{
    const QByteArray items = signalChanges(before.signals, after.signals);
    QByteArrayList changes;
    if (!items.isEmpty())
        changes.append(change(widthText(before), widthText(after)));
    if (before.initialValue != after.initialValue)
        changes.append("initial value " + change(valueText(before), valueText(after)));
    if (changes.isEmpty() && !name.contains(' '))
        return {};
    return line(' ', "  " + name, changes.join(", ")) + items;
}

QByteArray portName(ProbeType type, int port)
{
    return portText(type, port).toLatin1();
}

/// @p origins has the former position of each port, -1 for a new one.
QByteArray portsChanges(const Ports &before, const Ports &after, const QVector<int> &origins,
                        ProbeType type)
{
    QByteArray text;
    for (int i = 0; i < before.size(); ++i) {
        if (!origins.contains(i))
            text += wholePort('-', portName(type, i), *before.at(i), type);
    }
    for (int i = 0; i < after.size(); ++i) {
        const int origin = origins.at(i);
        if (origin < 0)
            text += wholePort('+', portName(type, i), *after.at(i), type);
        else
            text += portChanges(change(portName(type, origin), portName(type, i)),
                                *before.at(origin), *after.at(i));
    }
    return text;
}

QByteArray coreLines(const CoreSnapshot &before, const CoreSnapshot &after,
                     const EditedConfig::Origin &origin)
{
    const auto changed = [&origin](const QByteArray &label, const QByteArray &from,
                                   const QByteArray &to) {
        if (from == to)
            return QByteArray();
        return origin.core < 0 ? line('+', label, to) : line(' ', label, change(from, to));
    };
    QByteArray text = changed("  module", orNone(before.module), orNone(after.module));
    text += changed("  user clock", clockText(before), clockText(after));
    text += portsChanges(before.probeIns, after.probeIns, origin.ins, TARN::ProbeTypeIn);
    text += portsChanges(before.probeOuts, after.probeOuts, origin.outs, ProbeTypeOut);
    return text;
}

/// All of a core that goes.
QByteArray removedCore(const ConfigSnapshot::Core &core)
{
    return line('-', coreName(core.index), {}) +
           portsChanges(core.content->probeIns, {}, {}, TARN::ProbeTypeIn) +
           portsChanges(core.content->probeOuts, {}, {}, ProbeTypeOut);
}

QByteArray coreChanges(const ConfigSnapshot &before, const ConfigSnapshot::Core &after,
                       const EditedConfig::Origin &origin)
{
    if (origin.core < 0)
        return line('+', coreName(after.index), {}) +
               coreLines(CoreSnapshot(), *after.content, origin);
    const ConfigSnapshot::Core &former = before.cores.at(origin.core);
    const QByteArray name = change(coreName(former.index), coreName(after.index));
    const QByteArray lines = coreLines(*former.content, *after.content, origin);
    return lines.isEmpty() && former.index == after.index ? QByteArray()
                                                          : line(' ', name, {}) + lines;
}

} // namespace

QByteArray changesText(const ConfigSnapshot &before, const EditedConfig &after)
{
    const ConfigSnapshot now = TARN::snapshotOf(after.cores());
    QByteArray text;
    QVector<bool> stays(before.cores.size(), false);
    for (int i = 0; i < now.cores.size(); ++i) {
        if (after.origin(i).core >= 0)
            stays[after.origin(i).core] = true;
    }
    for (int i = 0; i < before.cores.size(); ++i) {
        if (!stays.at(i))
            text += removedCore(before.cores.at(i));
    }
    for (int i = 0; i < now.cores.size(); ++i)
        text += coreChanges(before, now.cores.at(i), after.origin(i));
    return text;
}

} // namespace Tool
