// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QVector>

#include <functional>

namespace TARN {

/// Which of the @p former ports becomes each of the @p now ports, in ascending order; -1 for a port
/// that comes. A former port that becomes none of them goes.
///
/// Equal ports at both ends are matched, then those between them in order as far as they are found,
/// and what is left in pairs. @p same(i, k) tells whether the former port i is equal to the port k.
QVector<int> matchPorts(int former, int now, const std::function<bool(int, int)> &same);

} // namespace TARN
