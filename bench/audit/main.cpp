// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "jobs.h"

#include <support/benchmark.h>

#include <cstring>

namespace {

struct Job
{
    const char *name;
    bool (*measure)();
};

constexpr Job jobs[] = {
    {"auditing", measureAuditing},
    {"replacing", measureReplacing},
};

/// Arguments that are not options name the jobs to measure; the default is all jobs.
bool isWanted(const Job &job, int argc, char *argv[])
{
    bool all = true;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], job.name) == 0)
            return true;
        all &= argv[i][0] == '-';
    }
    return all;
}

} // namespace

/// Measures what happens when a configuration meets its design again. Exits with 1 when a goal is
/// missed.
int main(int argc, char *argv[])
{
    TarnBench::readArguments(argc, argv);
    bool good = true;
    for (const Job &job : jobs) {
        if (isWanted(job, argc, argv))
            good &= job.measure();
    }
    return good ? 0 : 1;
}
