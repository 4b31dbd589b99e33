// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <functional>

namespace TarnTest {

/// CPU time of this process in nanoseconds, which does not depend on the load of the machine.
qint64 processorNanoseconds();

/// The least CPU time in nanoseconds of three runs of @p work.
qint64 leastNanoseconds(const std::function<void()> &work);

} // namespace TarnTest
