// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/ground/messages.h>

#include <QByteArrayList>
#include <QHash>
#include <QString>

#include <vector>

namespace NETWEIR::Internal {

class VhdlFacts;

/// The name of an entity or component that stands for a unit of the other language.
struct ForeignUnit
{
    QString library; ///< If the instances name one.
    QString unit;    ///< As written at the instances.
    Place place;     ///< Of the first instance.
};

/// One elaboration by GHDL.
struct VhdlPartInput
{
    QString outputPath; ///< What "-r" printed with --disp-tree=port and the two tables of signals.
    QString wavePath;   ///< The file of --wave; what follows its header is not read.
    const VhdlFacts *facts = nullptr; ///< What the sources tell. Only needed while reading.

    /// A unit from which the part can be built.
    struct Root
    {
        /// The labels that lead to its instance from the top that GHDL has elaborated, in lower
        /// case; empty for this top.
        QByteArrayList path;
        bool isTop = false; ///< Its inputs are driven from outside.
    };
    std::vector<Root> roots;

    /// Units of the other language by the name of the entity in place of it, as GHDL shows it. A
    /// missing one has the name of that entity.
    QHash<QByteArray, ForeignUnit> foreignUnits;
};

/// The architecture of an entity in place of a unit of the other language. Only its ports count.
constexpr char BorderArchitecture[] = "netweir_border";
/// The architecture of an entity in place of a unit that nobody knows: an instance of it drives its
/// outputs, but is no node.
constexpr char StubArchitecture[] = "netweir_stub";

} // namespace NETWEIR::Internal
