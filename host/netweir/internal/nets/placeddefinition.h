// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bitrange.h"

#include <netweir/processwrites.h>

#include <QString>

#include <vector>

namespace NETWEIR::Internal {

struct Definition;
struct Variable;

/// A design with more bits is refused.
constexpr qint64 MostBits = qint64(1) << 24;

/// A variable of a definition and its bits. No more than MostBits, which fit into an int: there are
/// millions of variables.
struct PlacedVariable
{
    const Variable *variable = nullptr;
    int bit = 0;   ///< Least significant bit, counted in the definition.
    int width = 0; ///< 0 for a variable that is not a net.

    BitRange bits() const { return {bit, bit, 1, width, qint64(bit) + width}; }
};

/// A net or bus of a definition, under its local name.
struct PlacedNet
{
    QString name;
    bool isBus = false;
    bool isExcluded = false; ///< The net is a memory or has no bits.
    ProcessWrites processWrites = ProcessWrites::None;
    int left = 0;
    int right = 0;
    int identifiers = 0; ///< Index in PlacedDefinition::identifiers.
    qint64 bit = 0;      ///< Least significant bit.

    qint64 width() const { return isBus ? qAbs(qint64(left) - right) + 1 : 1; }
};

/// A definition and the bits of its nets, numbered from 0.
///
/// Created by Layout and constant afterwards. Refers to the parsed definition, which must outlive
/// it. Takes memory per variable and net, not per bit.
struct PlacedDefinition
{
    const Definition *definition = nullptr;
    std::vector<PlacedVariable> variables; ///< By the number of the variable.
    std::vector<PlacedNet> nets;           ///< In the order of the source.
    /// Lengths of the identifiers in names, see NetlistBuilder::setIdentifiers(). The first entry
    /// is for the names that need none.
    std::vector<std::vector<int>> identifiers{{}};
    qint64 bits = 0; ///< If larger than MostBits, the lists are incomplete.

    /// The index of a list of lengths, which is added when it is not the last one.
    int numberOf(const std::vector<int> &lengths)
    {
        if (lengths.empty())
            return 0;
        if (identifiers.back() != lengths)
            identifiers.push_back(lengths);
        return int(identifiers.size()) - 1;
    }
};

} // namespace NETWEIR::Internal
