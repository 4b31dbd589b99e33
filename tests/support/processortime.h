// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

namespace TarnTest {

/// CPU time of this process in nanoseconds, which does not depend on the load of the machine.
qint64 processorNanoseconds();

} // namespace TarnTest
