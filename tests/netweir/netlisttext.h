// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/hierachy.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>

#include <QString>

namespace TarnTest {

/// '.' for a net without marks, 'O' for one excluded for Probe Out, 'I' for Probe In, 'X' for both.
inline QChar markText(const NETWEIR::RtlNet *net)
{
    if (net->excludedForProbeIn())
        return QLatin1Char(net->excludedForProbeOut() ? 'X' : 'I');
    return QLatin1Char(net->excludedForProbeOut() ? 'O' : '.');
}

/// The node and all nodes below it as text. Each has a line "instance : module"; its single nets,
/// its buses with one mark for each bit from the left, and its children follow, four blanks deeper.
inline QString netlistText(const NETWEIR::Hierachy *node, int level = 0)
{
    const QString indent(level * 4, QLatin1Char(' '));
    QString text = indent + node->instName() + QStringLiteral(" : ") + node->moduleName() + '\n';
    for (const NETWEIR::RtlNet *net : node->nets())
        text += indent + QStringLiteral("    ") + net->name() + ' ' + markText(net) + '\n';
    for (const NETWEIR::RtlNetBus *bus : node->buses()) {
        text += indent + QStringLiteral("    ") + bus->BusName() + ' ';
        for (const NETWEIR::RtlNet *net : bus->nets())
            text += markText(net);
        text += '\n';
    }
    for (const NETWEIR::Hierachy *child : node->children())
        text += netlistText(child, level + 1);
    return text;
}

} // namespace TarnTest
