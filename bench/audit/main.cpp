// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "jobs.h"

#include <support/benchmark.h>

/// Measures what happens when a configuration meets its design again. Exits with 1 when a goal is
/// missed. Arguments that are not options name the jobs to measure.
int main(int argc, char *argv[])
{
    return TarnBench::runJobs(argc, argv,
                              {{"auditing", measureAuditing}, {"replacing", measureReplacing}});
}
