// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "portmap.h"

#include <model/portbits.h>
#include <model/portlimits.h>
#include <model/signalbits.h>

#include <algorithm>

namespace Tool {

using TARN::ProbeIn;
using TARN::ProbeOut;
using TARN::TarnCore;

namespace {

/// @p bits are the initial values of the port, or empty.
void visitPort(const ProbeIn &port, const QString &bits, MappedBit *mapped,
               const std::function<void(const MappedBit &)> &visit)
{
    mapped->port = port.index;
    const int width = TARN::widthOf(port.signals);
    int position = 0;
    TARN::forEachBit(port.signals, [&](const QString &net, int signal, int member) {
        mapped->bit = width - 1 - position;
        mapped->net = net;
        mapped->bus = member < 0 ? QString() : port.signals.at(signal).name;
        mapped->initialValue = position < bits.size() ? bits.at(position) : QChar();
        visit(*mapped);
        ++position;
    });
}

QString initialBits(const ProbeOut &port)
{
    return port.initialValue.isEmpty()
               ? QString()
               : TARN::storedBits(port.initialValue, TARN::widthOf(port.signals));
}

/// A field with a comma, a quote or a line break stands in quotes.
QByteArray csvField(QByteArray field)
{
    const bool isPlain = std::none_of(field.cbegin(), field.cend(), [](char c) {
        return c == ',' || c == '"' || c == '\r' || c == '\n';
    });
    return isPlain ? field : '"' + field.replace("\"", "\"\"") + '"';
}

} // namespace

void forEachMappedBit(const QList<TarnCore *> &cores,
                      const std::function<void(const MappedBit &)> &visit)
{
    MappedBit mapped;
    for (const TarnCore *core : cores) {
        mapped.core = core->index;
        mapped.type = TARN::ProbeTypeIn;
        for (const ProbeIn *port : core->probeIns)
            visitPort(*port, QString(), &mapped, visit);
        mapped.type = TARN::ProbeTypeOut;
        for (const ProbeOut *port : core->probeOuts)
            visitPort(*port, initialBits(*port), &mapped, visit);
    }
}

QByteArray csvLine(const QList<QByteArray> &fields)
{
    QByteArray line;
    for (const QByteArray &field : fields)
        line += csvField(field) + ',';
    line.chop(1);
    return line + "\r\n";
}

} // namespace Tool
