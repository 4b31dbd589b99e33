// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configtext.h"

#include <model/tarncore.h>
#include <tool/printable.h>
#include <tool/wording.h>

namespace Tool {

namespace {

constexpr int LabelWidth = 12;

QByteArray line(const QByteArray &label, const QByteArray &text)
{
    return "  " + label.leftJustified(LabelWidth) + text + '\n';
}

QByteArray clockText(const TARN::TarnCore &core)
{
    const QByteArray clock = core.userClock.isEmpty() ? "none" : printable(core.userClock);
    return core.syncUserClock ? clock + " (output probes synchronise with it)" : clock;
}

/// The positions that a signal takes in its port: "7:4" or "3".
QByteArray positions(int highest, int width)
{
    const QByteArray first = QByteArray::number(highest);
    return width == 1 ? first : first + ':' + QByteArray::number(highest - width + 1);
}

QByteArray nameText(const TARN::SignalItem &signal)
{
    const QByteArray name = printable(signal.name);
    return signal.displayName.isEmpty()
               ? name
               : name + " (shown as " + printable(signal.displayName) + ')';
}

QByteArray signalLines(const TARN::ProbeIn &port, int width)
{
    const int column = 5 + 2 * QByteArray::number(width - 1).size();
    QByteArray text;
    int next = width - 1;
    for (const TARN::SignalItem &signal : port.signals) {
        text +=
            positions(next, signal.width()).rightJustified(column) + "  " + nameText(signal) + '\n';
        next -= signal.width();
    }
    return text;
}

QByteArray portText(const QByteArray &kind, const TARN::ProbeIn &port, const QString &value)
{
    int width = 0;
    for (const TARN::SignalItem &signal : port.signals)
        width += signal.width();
    QByteArray text = counted(width, QStringLiteral("bit")).toLatin1();
    if (!value.isEmpty())
        text += ", initial value " + printable(value);
    return line(kind + QByteArray::number(port.index), text) + signalLines(port, width);
}

QByteArray coreText(const TARN::TarnCore &core)
{
    QByteArray text = "tarn_" + QByteArray::number(core.index) + '\n';
    text += line("module", core.module.isEmpty() ? "none yet" : printable(core.module));
    text += line("user clock", clockText(core));
    for (const TARN::ProbeIn *port : core.probeIns)
        text += portText("in", *port, QString());
    for (const TARN::ProbeOut *port : core.probeOuts)
        text += portText("out", *port, port->initialValue);
    return text;
}

} // namespace

QByteArray configText(const QList<TARN::TarnCore *> &cores)
{
    QByteArray text;
    for (const TARN::TarnCore *core : cores)
        text += (text.isEmpty() ? "" : "\n") + coreText(*core);
    return cores.isEmpty() ? "no cores\n" : text;
}

} // namespace Tool
