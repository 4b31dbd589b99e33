// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace TarnBench {

/// What a process took. Seconds.
struct ProcessTimes
{
    double firstOutput = 0; ///< From its start to its first byte, by the clock.
    double all = 0;         ///< From its start to its end, by the clock.
    double cpu = 0;         ///< Of the process and its own child processes.
};

/// Runs @p command, the path of a program and its arguments, and reads all that it prints. The
/// input is the file @p input, empty for none. Ends the benchmark when the command prints nothing
/// or its exit code is not @p exitCode.
ProcessTimes runProcess(const std::vector<std::string> &command, const std::string &input = {},
                        int exitCode = 0);

/// Runs each command once per round, in order. Returns the median times of each. The first round is
/// a warm-up and does not count.
std::vector<ProcessTimes> interleavedRuns(int rounds,
                                          const std::vector<std::vector<std::string>> &commands);

} // namespace TarnBench
