// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Tool {

struct Command;

/// "tarn check": whether configurations fit the design.
const Command &checkCommand();

} // namespace Tool
