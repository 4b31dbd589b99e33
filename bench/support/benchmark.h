// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// What all benchmarks share: rounds that alternate between the candidates, so that a slower or
/// faster minute of the machine meets them all, medians, CPU time, and one form of table.
namespace TarnBench {

inline double seconds(const timeval &time)
{
    return double(time.tv_sec) + double(time.tv_usec) / 1e6;
}

inline double cpuSeconds(int who)
{
    rusage usage;
    getrusage(who, &usage);
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// CPU time of this process and of the child processes that have ended, user and system.
inline double cpuTime()
{
    return cpuSeconds(RUSAGE_SELF) + cpuSeconds(RUSAGE_CHILDREN);
}

inline double median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// CPU seconds that @p work takes.
inline double timeOf(const std::function<void()> &work)
{
    const double before = cpuTime();
    work();
    return cpuTime() - before;
}

/// Runs every candidate once a round, in order, and returns the median CPU seconds of each. The
/// first round warms up and does not count.
inline std::vector<double> interleavedMedians(int rounds,
                                              const std::vector<std::function<void()>> &candidates)
{
    std::vector<std::vector<double>> times(candidates.size());
    for (int round = 0; round <= rounds; ++round) {
        for (std::size_t i = 0; i < candidates.size(); ++i) {
            const double time = timeOf(candidates[i]);
            if (round > 0)
                times[i].push_back(time);
        }
    }
    std::vector<double> medians;
    for (const std::vector<double> &values : times)
        medians.push_back(median(values));
    return medians;
}

/// Resident memory of this process in bytes.
inline double residentBytes()
{
    std::ifstream status("/proc/self/statm");
    double pages = 0;
    double resident = 0;
    status >> pages >> resident;
    return resident * 4096;
}

/// Rows of a name, a figure and the goal it is held against, printed in columns.
class Table
{
public:
    explicit Table(std::string title)
        : m_title(std::move(title))
    {
    }

    /// @p goal is the largest figure that is good enough; 0 for a row without a goal.
    void add(const std::string &name, double figure, const std::string &unit, double goal = 0)
    {
        m_rows.push_back({name, unit, figure, goal});
    }

    /// Prints the table; false when a goal is missed.
    bool print() const
    {
        bool good = true;
        std::printf("\n%s\n", m_title.c_str());
        for (const Row &row : m_rows) {
            std::printf("  %-64s %12.3f %-6s", row.name.c_str(), row.figure, row.unit.c_str());
            if (row.goal > 0) {
                const bool met = row.figure <= row.goal;
                std::printf(" goal <= %g: %s", row.goal, met ? "met" : "MISSED");
                good = good && met;
            }
            std::printf("\n");
        }
        std::fflush(stdout);
        return good;
    }

private:
    struct Row
    {
        std::string name;
        std::string unit;
        double figure;
        double goal;
    };

    std::string m_title;
    std::vector<Row> m_rows;
};

} // namespace TarnBench
