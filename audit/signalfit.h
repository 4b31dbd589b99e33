// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "finding.h"

namespace TARN {

class DesignNames;

/// How a signal of a port fits the design. A signal with members is a bus, any other a single net.
struct SignalFit
{
    bool missing = false;   ///< Then nothing else is said.
    bool changed = false;   ///< A bus with another range, or with bits that it did not have.
    int unusable = 0;       ///< Number of bits that are excluded from ports of that kind.
    int firstUnusable = -1; ///< Position of the first of them; -1 for a single net.
};

/// Takes two look-ups and one comparison of names per bit; for a bus that has changed, one look-up
/// per bit.
///
/// A bus that was chosen got no members for bits that were excluded then. So an ordered part of the
/// bits of the design's bus of that name is no change.
SignalFit fitOf(const SignalItem &item, ProbeType type, const DesignNames &names);

// The sentences of the three rules. The fit must be that of the signal in the design.

QString missingText(const SignalItem &item);
QString changedText(const SignalItem &item, const DesignNames &names);
QString unusableText(const SignalItem &item, ProbeType type, const SignalFit &fit);

} // namespace TARN
