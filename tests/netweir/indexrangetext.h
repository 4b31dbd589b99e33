// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/nets/indexrange.h>

#include <QString>

namespace TarnTest {

/// "5" for a single value, "0..12/4" for the values 0, 4, 8 and 12, "all" for everything.
inline QString rangeText(const NETWEIR::Internal::IndexRange &range)
{
    using NETWEIR::Internal::IndexLimit;
    if (range.isSingle() && range.step == 0)
        return QString::number(range.low);
    if (range.low == -IndexLimit && range.high == IndexLimit && range.step == 1)
        return QStringLiteral("all");
    return QStringLiteral("%1..%2/%3").arg(range.low).arg(range.high).arg(range.step);
}

} // namespace TarnTest
