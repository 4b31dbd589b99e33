// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// Common parts of the benchmarks: medians of CPU times, rounds that alternate between the
/// candidates so that all meet the same load of the machine, and one form of table.
namespace TarnBench {

/// Ends the program, because it would not measure what it is meant to measure.
[[noreturn]] inline void fail(const std::string &reason)
{
    std::fprintf(stderr, "%s\n", reason.c_str());
    std::exit(2);
}

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

/// Whether there is a round before those that count. Long work that has been done once already does
/// without.
enum class WarmUp { Yes, No };

/// Runs every candidate once per round, in order. Returns the median CPU seconds of each.
inline std::vector<double> interleavedMedians(int rounds,
                                              const std::vector<std::function<void()>> &candidates,
                                              WarmUp warmUp = WarmUp::Yes)
{
    std::vector<std::vector<double>> times(candidates.size());
    for (int round = warmUp == WarmUp::Yes ? 0 : 1; round <= rounds; ++round) {
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

/// Highest resident memory in bytes of this process, or of @p process while it exists, as the
/// kernel counts it: since the start of the program or the last resetPeak(). 0 if it is not known.
inline double peakResidentBytes(const std::string &process = "self")
{
    std::ifstream status("/proc/" + process + "/status");
    std::string key;
    while (status >> key) {
        if (key == "VmHWM:") {
            double kilobytes = 0;
            status >> kilobytes;
            return kilobytes * 1024;
        }
    }
    return 0;
}

/// From now on peakResidentBytes() of this process means the time after this call. What the
/// allocator keeps of freed memory still counts: a first figure is best measured in a process of
/// its own.
inline void resetPeak()
{
    std::ofstream reset("/proc/self/clear_refs");
    if (!(reset << 5 << std::flush))
        fail("the peak of the memory cannot be reset");
}

/// Set from the command line: tables are printed in Markdown instead of columns.
inline bool markdownTables = false;

inline void readArguments(int argc, char *argv[])
{
    for (int i = 1; i < argc; ++i)
        markdownTables |= std::string(argv[i]) == "--markdown";
}

/// The goal of a figure: by default its largest allowed value, 0 for no goal.
class Goal
{
public:
    Goal(double largest = 0)
        : m_bound(largest)
    {
    }

    static Goal atLeast(double smallest)
    {
        Goal goal(smallest);
        goal.m_atLeast = true;
        return goal;
    }

    bool isMet(double figure) const
    {
        if (m_bound == 0)
            return true;
        return m_atLeast ? figure >= m_bound : figure <= m_bound;
    }

    /// Empty without a goal. @p atMost and @p atLeast are the signs of comparison.
    std::string text(const char *atMost, const char *atLeast) const
    {
        if (m_bound == 0)
            return {};
        char number[32];
        std::snprintf(number, sizeof number, " %g", m_bound);
        return (m_atLeast ? atLeast : atMost) + std::string(number);
    }

private:
    double m_bound;
    bool m_atLeast = false;
};

/// Rows of a name, a figure and its goal, printed in columns or in Markdown.
class Table
{
public:
    explicit Table(std::string title)
        : m_title(std::move(title))
    {
    }

    void add(const std::string &name, double figure, const std::string &unit, Goal goal = {})
    {
        m_rows.push_back({name, unit, figure, goal});
    }

    /// Prints the table; false when a goal is missed.
    bool print() const
    {
        if (markdownTables)
            printMarkdown();
        else
            printColumns();
        std::fflush(stdout);
        return std::all_of(m_rows.begin(), m_rows.end(),
                           [](const Row &row) { return row.goal.isMet(row.figure); });
    }

private:
    struct Row
    {
        std::string name;
        std::string unit;
        double figure;
        Goal goal;
    };

    void printColumns() const
    {
        std::printf("\n%s\n", m_title.c_str());
        for (const Row &row : m_rows) {
            std::printf("  %-64s %12.3f %-6s", row.name.c_str(), row.figure, row.unit.c_str());
            const std::string goal = row.goal.text("<=", ">=");
            if (!goal.empty())
                std::printf(" goal %s: %s", goal.c_str(),
                            row.goal.isMet(row.figure) ? "met" : "MISSED");
            std::printf("\n");
        }
    }

    void printMarkdown() const
    {
        std::printf("\n%s\n\n| Job | Figure | Goal | |\n|---|---:|---:|---|\n", m_title.c_str());
        for (const Row &row : m_rows) {
            const std::string goal = row.goal.text("≤", "≥");
            const char *verdict = row.goal.isMet(row.figure) ? "met" : "**missed**";
            std::printf(row.figure < 1000 ? "| %s | %.3g" : "| %s | %.0f", row.name.c_str(),
                        row.figure);
            std::printf(" %s | %s | %s |\n", row.unit.c_str(), goal.c_str(),
                        goal.empty() ? "" : verdict);
        }
    }

    std::string m_title;
    std::vector<Row> m_rows;
};

/// A part of a benchmark: measures, prints its tables and returns false when a goal is missed.
struct Job
{
    const char *name;
    std::function<bool()> measure;
};

/// Runs this program once more, with the options of its command line and one job. Returns its exit
/// code.
inline int runAlone(const std::vector<std::string> &options, const std::string &job)
{
    std::string program = "/proc/self/exe";
    std::vector<std::string> words(options);
    words.push_back(job);
    std::vector<char *> command{program.data()};
    for (std::string &word : words)
        command.push_back(word.data());
    command.push_back(nullptr);
    pid_t process = 0;
    int status = 0;
    std::fflush(stdout);
    if (::posix_spawn(&process, program.c_str(), nullptr, nullptr, command.data(), environ) != 0 ||
        ::waitpid(process, &status, 0) != process || !WIFEXITED(status))
        fail("cannot run the part " + job);
    return WEXITSTATUS(status);
}

/// Reads the command line and runs the jobs that it names, by default all of them, in order. Ends
/// the program when there is no such job. Returns the exit code: 1 when a goal is missed, more when
/// a job failed.
///
/// Of several, each has a process of its own: what a job leaves behind, in the memory or the vector
/// registers, may make the next one slower by a half.
inline int runJobs(int argc, char *argv[], const std::vector<Job> &jobs)
{
    readArguments(argc, argv);
    std::vector<std::string> options;
    std::vector<std::string> wanted;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument.rfind("--", 0) == 0)
            options.push_back(argument);
        else
            wanted.push_back(argument);
    }
    for (const std::string &name : wanted) {
        if (std::none_of(jobs.begin(), jobs.end(),
                         [&](const Job &job) { return job.name == name; }))
            fail("no part of this benchmark: " + name);
    }
    int code = 0;
    for (const Job &job : jobs) {
        if (wanted.size() == 1 && wanted.front() == job.name)
            return job.measure() ? 0 : 1;
        if (wanted.empty() || std::count(wanted.begin(), wanted.end(), job.name) > 0)
            code = std::max(code, runAlone(options, job.name));
    }
    return code;
}

} // namespace TarnBench
