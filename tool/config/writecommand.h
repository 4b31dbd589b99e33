// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Tool {

struct Command;

/// Writes a configuration file from its JSON form.
const Command &writeCommand();

} // namespace Tool
