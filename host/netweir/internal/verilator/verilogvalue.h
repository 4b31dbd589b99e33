// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

namespace NETWEIR::Internal {

struct GenericValue;

/// The value as a constant expression of Verilog: integers with 32 bits and a sign, bits with their
/// number.
QByteArray verilogLiteral(const GenericValue &value);

} // namespace NETWEIR::Internal
