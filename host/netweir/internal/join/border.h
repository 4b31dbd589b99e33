// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/parts/part.h>
#include <netweir/internal/parts/partroot.h>
#include <netweir/internal/parts/unitnames.h>

#include <QString>
#include <QStringList>

#include <vector>

namespace NETWEIR::Internal {

/// What happens between an instance in one language and its unit in the other.

/// @p root in the words of the unit that it names: its unit, library, generics and ports are
/// spelled as @p declared has them. A configuration keeps its own name, and so does a top. Adds to
/// @p messages an error for each name that the unit does not have. A unit that declares no names at
/// all says nothing about them.
PartRoot inWordsOf(const DeclaredUnit &declared, const PartRoot &root, QStringList *messages);

/// The ports of an elaborated unit, for the instances in the other language.
class BorderPorts
{
public:
    /// @p unit is the name for messages.
    BorderPorts(const QString &unit, const std::vector<PartPort> &ports);

    /// Compares the ports that the instance of a root in a source of language @p from connects with
    /// those of the unit. VHDL is strict: other widths and directions than those of the component
    /// are errors. An instance in Verilog pads or cuts, as it does with modules; that is a warning.
    QStringList messages(const PartRoot &root, Language from) const;

    /// The driven bits of an instance, by the names and with the widths of the ports of the unit.
    /// Bits that only padding connects are driven, and so is a connected inout, because the
    /// instance itself drives what is connected.
    DrivenPorts driven(const BorderInstance &instance) const;

private:
    QString m_unit;
    std::vector<PartPort> m_ports;
    NamesAcross m_names;
};

} // namespace NETWEIR::Internal
