// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Workbench {

/// Runs the application and returns its exit code: 0 success, 1 failure, 2 wrong usage.
int run(int argc, char *argv[]);

} // namespace Workbench
