// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace TARN {

// The bits of an initial value, most significant first, and the signals of its port.

/// @p bits for a port that is @p width bits wide now: the bits on the left stay when it shrinks,
/// zeros follow when it grows. Only the last @p previous bits, the width so far, count; when that
/// is 0, not known, as many as fit.
QString fittedBits(const QString &bits, int previous, int width);

/// Removes the bits of a signal of @p width from the front of @p bits and returns them; zeros when
/// there are too few.
QString takeBits(QString &bits, int width);

} // namespace TARN
