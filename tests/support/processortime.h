// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

namespace TarnTest {

/// Time that this process computed, in nanoseconds, whatever else the machine does.
qint64 processorNanoseconds();

} // namespace TarnTest
