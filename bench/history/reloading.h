// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace TarnBench {

/// Measures the reload of a file with more and more cores, and its undo. False when a goal is
/// missed.
bool measureReload();

} // namespace TarnBench
