// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Tool {

struct Command;

/// "tarn show": a configuration as text.
const Command &showCommand();

} // namespace Tool
