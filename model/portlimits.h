// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <probes/signalitem.h>

#include <QList>

#include <numeric>

namespace TARN {

/// How many cores fit in one file, and ports of each kind on one core.
constexpr int MaxCores = 16;
constexpr int MaxPorts = 64;

/// How many single signals fit on one port.
constexpr int MaxPortSignals = 256;

/// Single signals, that is bits, of @p items.
inline int widthOf(const QList<SignalItem> &items)
{
    return std::accumulate(items.cbegin(), items.cend(), 0,
                           [](int sum, const SignalItem &item) { return sum + item.width(); });
}

} // namespace TARN
