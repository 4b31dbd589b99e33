// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configtext.h"

#include <model/tarncore.h>

#include <algorithm>

namespace Tool {

namespace {

constexpr int LabelWidth = 12;

QString line(const QString &label, const QString &text)
{
    return QLatin1String("  ") + label.leftJustified(LabelWidth) + text + QLatin1Char('\n');
}

QString clockText(const TARN::TarnCore &core)
{
    const QString clock = core.userClock.isEmpty() ? QStringLiteral("none") : core.userClock;
    return core.syncUserClock ? clock + QLatin1String(" (output probes synchronise with it)")
                              : clock;
}

/// The positions that a signal takes in its port: "7:4" or "3".
QString positions(int highest, int width)
{
    const QString first = QString::number(highest);
    return width == 1 ? first : first + QLatin1Char(':') + QString::number(highest - width + 1);
}

QString nameText(const TARN::SignalItem &signal)
{
    return signal.displayName.isEmpty()
               ? signal.name
               : QStringLiteral("%1 (shown as %2)").arg(signal.name, signal.displayName);
}

QString signalLines(const TARN::ProbeIn &port, int width)
{
    const int column = 4 + 2 * positions(width - 1, 1).size() + 1;
    QString text;
    int next = width - 1;
    for (const TARN::SignalItem &signal : port.signals) {
        text += positions(next, signal.width()).rightJustified(column) + QLatin1String("  ") +
                nameText(signal) + QLatin1Char('\n');
        next -= signal.width();
    }
    return text;
}

QString portText(const QString &kind, const TARN::ProbeIn &port, const QString &value)
{
    int width = 0;
    for (const TARN::SignalItem &signal : port.signals)
        width += signal.width();
    QString text = width == 1 ? QStringLiteral("1 bit") : QStringLiteral("%1 bits").arg(width);
    if (!value.isEmpty())
        text += QLatin1String(", initial value ") + value;
    return line(kind + QString::number(port.index), text) + signalLines(port, width);
}

QString coreText(const TARN::TarnCore &core)
{
    QString text = QStringLiteral("tarn_%1\n").arg(core.index);
    text += line(QStringLiteral("module"),
                 core.module.isEmpty() ? QStringLiteral("none yet") : core.module);
    text += line(QStringLiteral("user clock"), clockText(core));
    for (const TARN::ProbeIn *port : core.probeIns)
        text += portText(QStringLiteral("in"), *port, QString());
    for (const TARN::ProbeOut *port : core.probeOuts)
        text += portText(QStringLiteral("out"), *port, port->initialValue);
    return text;
}

} // namespace

QByteArray configText(const QList<TARN::TarnCore *> &cores)
{
    QStringList blocks;
    for (const TARN::TarnCore *core : cores)
        blocks.append(coreText(*core));
    return blocks.isEmpty() ? QByteArray("no cores\n") : blocks.join(QLatin1Char('\n')).toUtf8();
}

} // namespace Tool
