// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bitrange.h"

#include <QString>

#include <vector>

namespace NETWEIR::Internal {

struct Definition;
struct Variable;

/// A design of more bits than that is refused.
constexpr qint64 MostBits = qint64(1) << 24;

/// A variable of a definition and the bits that it takes there.
struct PlacedVariable
{
    const Variable *variable = nullptr;
    qint64 bit = 0;   ///< The least significant one, counted within the definition.
    qint64 width = 0; ///< 0 for what is no net.

    BitRange bits() const { return {bit, bit, 1, width, bit + width}; }
};

/// A net or bus of a definition, under its local name.
struct PlacedNet
{
    QString name;
    bool isBus = false;
    bool isExcluded = false; ///< Stands for a memory or something without bits.
    int left = 0;
    int right = 0;
    qint64 bit = 0; ///< The least significant one.

    qint64 width() const { return isBus ? qAbs(qint64(left) - right) + 1 : 1; }
};

/// A definition whose nets have got their bits, which are numbered from 0.
///
/// Made by Layout and constant from then on. Refers to the parsed definition, which has to outlive
/// it; takes memory for each variable and net, not for each bit.
struct PlacedDefinition
{
    const Definition *definition = nullptr;
    std::vector<PlacedVariable> variables; ///< One for each of the definition, in the same order.
    std::vector<PlacedNet> nets;           ///< In the order of the source.
    qint64 bits = 0;                       ///< Above MostBits, the lists above end early.
};

} // namespace NETWEIR::Internal
