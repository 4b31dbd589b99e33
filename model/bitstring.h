// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace TARN {

/// Upper-case hexadecimal digits, without "0x", for a string of '0' and '1', most significant bit
/// first. A width that is no multiple of 4 gives a leading partial digit: "11110" is "1E".
/// An empty string gives an empty string.
QString stringBintoHex(QString bits);

/// The bits, four per digit and most significant first, of a value written as "0x" and hexadecimal
/// digits of either case; without the prefix the whole text is taken as digits. Empty when a
/// character is no digit.
QString stringHextoBinfor0x(QString text);

} // namespace TARN
