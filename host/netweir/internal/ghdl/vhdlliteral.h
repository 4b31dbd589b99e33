// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/parts/partroot.h>

#include <QByteArray>

namespace NETWEIR::Internal {

/// Whether the elements of the type, of which only the folded name behind all subtypes counts, are
/// bits: a vector that can be connected to a unit of the other language.
bool isBitVector(const QByteArray &baseType);

/// Whether it is a single bit, a vector of bits or an integer.
bool isConnectable(const QByteArray &baseType);

/// A VHDL expression for @p value as a value of the type. Null when there is none. For a vector it
/// is a bit string in quotes that has the width of the value.
QByteArray vhdlLiteral(const GenericValue &value, const QByteArray &baseType);

} // namespace NETWEIR::Internal
