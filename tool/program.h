// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Tool {

/// Runs the tool with the arguments of main(). Returns its exit code, or ends the program by a
/// signal that asked for it.
int run(int argc, char *argv[]);

} // namespace Tool
