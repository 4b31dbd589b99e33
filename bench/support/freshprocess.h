// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace TarnBench {

/// What a process took, without the child processes that it started.
struct ProcessFigures
{
    double peakBytes = 0;   ///< Highest resident memory, as the kernel counts it.
    double cpu = 0;         ///< Seconds of all its threads, user and system.
    double childrenCpu = 0; ///< Seconds of the child processes that it waited for, and of theirs.
    double wall = 0;        ///< Seconds from its start to its end, by the clock.
    std::string output;     ///< Its standard output.
};

/// Runs @p command, the path of a program and its arguments, to its end. Ends the benchmark when
/// the command cannot be started or its exit code is not 0.
///
/// The process is stopped at its end and asked for its figures there: what the kernel hands to the
/// parent afterwards includes the children, and the memory of the parent itself before exec().
ProcessFigures measureProcess(const std::vector<std::string> &command);

} // namespace TarnBench
