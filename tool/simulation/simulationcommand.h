// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Tool {

struct Command;

/// "tarn export simulation": the cores of a configuration as a module beside a test bench.
const Command &simulationCommand();

} // namespace Tool
