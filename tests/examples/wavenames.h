// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

namespace NETWEIR {
class Hierachy;
}

namespace TarnTest {

/// What a simulator shows of the nets below one instance, in the form of the netlist: "name",
/// "bus[3:0]", "instance/label[0].name". Names of VHDL are in lower case,
/// except for extended identifiers.
struct WaveNames
{
    QSet<QString> nets;
    /// Buses of which the simulator does not show the range: the name without it, and the width.
    QMap<QString, int> widths;
    bool foldsCase = false;
};

/// Simulates @p top for no time with GHDL and reads the names in the wave file with the program
/// ghwdump, which shares no code with the extractor. The files of each library may have any order.
/// Returns empty names and sets @p error when that fails, or when two types have one name. GHDL
/// shows nothing of a case generate statement.
WaveNames vhdlWaveNames(const QMap<QString, QStringList> &filesOfLibraries, const QString &top,
                        const QStringList &generics, QString *error);

/// Simulates @p top for no time with Icarus. @p arguments are its files and options. Icarus shows
/// neither arrays nor nets that nothing drives or reads.
WaveNames verilogWaveNames(const QStringList &arguments, const QString &top, QString *error);

/// The nets and buses below @p node that @p wave does not show, and those that only @p wave shows,
/// one line each. Instances of the modules @p foreign are left out with everything below them. A
/// net that is excluded for both kinds of ports stands for all nets of the wave below its name.
QString waveDifferences(const NETWEIR::Hierachy *node, const WaveNames &wave,
                        const QStringList &foreign);

} // namespace TarnTest
