// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "processortime.h"

#include <ctime>

namespace TarnTest {

qint64 processorNanoseconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return time.tv_sec * Q_INT64_C(1000000000) + time.tv_nsec;
}

} // namespace TarnTest
