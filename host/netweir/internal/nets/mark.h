// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <vector>

namespace NETWEIR::Internal {

/// The facts about a bit, as flags: the two exclusion marks and the reasons for them.
enum Mark : quint8 {
    MarkIn = 1,
    MarkOut = 2,
    MarkBoth = MarkIn | MarkOut,
    MarkWritten = 4, ///< Known to be driven, even from inside through an input.
    MarkDriver = MarkOut | MarkWritten,
};

/// A combination of marks per bit.
using Marks = std::vector<quint8>;

} // namespace NETWEIR::Internal
