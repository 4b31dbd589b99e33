// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "portbits.h"

namespace TARN {

QString fittedBits(const QString &bits, int previous, int width)
{
    if (previous == 0)
        previous = qMin(bits.size(), width);
    const QString counting = bits.right(previous);
    if (previous >= width)
        return counting.left(width);
    return counting + QString(width - previous, QLatin1Char('0'));
}

QString takeBits(QString &bits, int width)
{
    const QString taken = width > bits.size() ? QString(width, QLatin1Char('0')) : bits.left(width);
    bits.remove(0, width);
    return taken;
}

} // namespace TARN
