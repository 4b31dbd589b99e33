// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <vector>

namespace NETWEIR::Internal {

/// What is known of a bit: the two exclusion marks and what leads to them, as bits of one number.
enum Mark : quint8 {
    MarkIn = 1,
    MarkOut = 2,
    MarkBoth = MarkIn | MarkOut,
    MarkWritten = 4, ///< Something is known to drive it: through an input that drives outwards too.
    MarkDriver = MarkOut | MarkWritten,
};

/// A combination of marks for each of a row of bits.
using Marks = std::vector<quint8>;

} // namespace NETWEIR::Internal
