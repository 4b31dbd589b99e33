// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Tool {

struct Command;

/// "edit": changes a configuration step by step, as the editor would.
const Command &editCommand();

} // namespace Tool
