// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "processortime.h"

#include <ctime>
#include <limits>

namespace TarnTest {

qint64 processorNanoseconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return time.tv_sec * Q_INT64_C(1000000000) + time.tv_nsec;
}

qint64 leastNanoseconds(const std::function<void()> &work)
{
    qint64 least = std::numeric_limits<qint64>::max();
    for (int run = 0; run < 3; ++run) {
        const qint64 begun = processorNanoseconds();
        work();
        least = qMin(least, processorNanoseconds() - begun);
    }
    return least;
}

} // namespace TarnTest
