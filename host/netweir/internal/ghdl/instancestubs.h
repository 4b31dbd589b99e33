// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "componentstubs.h"

#include <QHash>

namespace NETWEIR::Internal {

/// Stubs for the units of which only instances are known: entities that an instance names directly
/// and no source declares, and components of a missing library.
struct InstanceStubs
{
    StubUnits units;
    /// Libraries that the sources name and that have neither files nor come with GHDL.
    QStringList libraries;
    /// By number of the file: its text, in which each such instance names its stub. All other text
    /// keeps its line.
    QHash<int, QByteArray> texts;
    /// What may be the reason if the elaboration fails, as errors for users.
    QStringList suspicions;
};

/// Each instance gets an entity of its own, with what it connects: the types are those of the
/// connected expressions. An input is what is connected to an expression or an input; everything
/// else counts as driven, as at the pins of unknown modules of other languages. The packages of a
/// missing library are empty. An instance whose types cannot be told stays as it is.
InstanceStubs instanceStubs(const VhdlDesign &design, const UnitIndex &index,
                            const std::vector<DeclaredUnit> &foreign);

} // namespace NETWEIR::Internal
