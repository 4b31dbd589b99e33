// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

namespace TarnTest {

/// The number in the environment variable @p name, which a longer campaign sets; @p usual without
/// it.
quint32 setting(const char *name, quint32 usual);

} // namespace TarnTest
