// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <string_view>

namespace NETWEIR::Internal {

/// A line of the map of signals, "--disp-signals-map": one per scalar, in the order of the source.
/// ".top(rtl).g(0).u1@leaf(rtl).d(3): 000055FFD6CF6800 net: 0"
struct MapLine
{
    std::string_view path; ///< Within the line.
    quint64 pointer = 0;   ///< The same for all names of one net.
};

/// A line of the table of signals, "--disp-signals-table": one per net, in the order of
/// elaboration. "87: 000055FFD6C09540 net: 16 smode: in #prt: 0 #drv: 0   eff: 000055FFD6C14220"
struct TableLine
{
    quint64 pointer = 0;
    bool isConversion = false; ///< The net is the result of a conversion at an input.
    int drivers = 0;           ///< Processes and ports that drive the net.
    quint64 source = 0; ///< The net from which an input gets its value; 0 for the net itself.
};

/// Where an implicit signal is declared nowhere: "guard" of a block, 'stable, 'quiet, 'transaction.
bool isImplicitSignal(std::string_view path);

/// False when @p line is no line of the map.
bool parseMapLine(std::string_view line, MapLine *result);

/// False when @p line is no line of the table. The table also has lines with nothing but a pointer,
/// the driving ports of the line above.
bool parseTableLine(std::string_view line, TableLine *result);

} // namespace NETWEIR::Internal
