// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "printable.h"

#include <algorithm>

namespace Tool {

namespace {

bool isControl(char c)
{
    return uchar(c) < 0x20 || c == 0x7F;
}

} // namespace

QByteArray printable(const QString &text)
{
    const QByteArray bytes = text.toLocal8Bit();
    if (std::none_of(bytes.begin(), bytes.end(), isControl))
        return bytes;
    QByteArray result;
    for (const char c : bytes) {
        if (isControl(c))
            result += "\\x" + QByteArray(1, c).toHex();
        else
            result += c;
    }
    return result;
}

} // namespace Tool
