// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Tool {

struct Command;

/// "tarn nets": the nets and buses of a design by name.
const Command &netsCommand();

} // namespace Tool
