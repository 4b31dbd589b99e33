// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>

namespace TARN {

// The bits of an initial value, most significant first, and the signals of its port.

/// @p bits for a port that is @p width bits wide now: the bits on the left stay when it shrinks,
/// zeros follow when it grows. Only the last @p previous bits, the width so far, count; when that
/// is 0, not known, as many as fit.
QString fittedBits(const QString &bits, int previous, int width);

/// Removes the bits of a signal of @p width from the front of @p bits and returns them; zeros when
/// there are too few.
QString takeBits(QString &bits, int width);

// The same value as text: "0x" and upper-case hexadecimal digits.

/// How many digits a value of @p width bits has, at least one.
int valueDigits(int width);

/// The value of @p bits; "0x0" when there are none.
QString valueText(const QString &bits);

/// What the input mask of a port of @p width bits makes of a text: two letters or digits, then
/// hexadecimal digits in upper case. Other characters are left out, what is too long is cut off,
/// and zeros follow what is too short.
QString maskedValue(const QString &text, int width);

/// The bits that a port of @p width shows for the value that is stored, whatever that is.
QString storedBits(const QString &stored, int width);

/// The bits of a value that was entered for a port of @p width, nothing when it needs more.
std::optional<QString> enteredBits(const QString &value, int width);

} // namespace TARN
