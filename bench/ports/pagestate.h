// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace TarnBench {

/// Measures reading the state of a page at its limits and restoring it. False when a goal is
/// missed.
bool measurePageState();

} // namespace TarnBench
