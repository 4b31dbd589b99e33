// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Tool {

struct Command;

/// Lists every bit of every port, for the programs that talk to the cores.
const Command &mapCommand();

} // namespace Tool
