// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "processrun.h"

#include <support/benchmark.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>

extern char **environ;

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// A running process and the end of the pipe that its output comes from.
struct Child
{
    pid_t pid = 0;
    int output = -1;
};

Child start(const std::vector<std::string> &command, const std::string &input)
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        TarnBench::fail("no pipe");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO,
                                     input.empty() ? "/dev/null" : input.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    // Summaries. Of a run that fails, the exit code is reported.
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);

    std::vector<char *> arguments;
    for (const std::string &argument : command)
        arguments.push_back(const_cast<char *>(argument.c_str()));
    arguments.push_back(nullptr);
    Child child;
    if (::posix_spawn(&child.pid, command.at(0).c_str(), &actions, nullptr, arguments.data(),
                      environ) != 0)
        TarnBench::fail("cannot start " + command.at(0));
    posix_spawn_file_actions_destroy(&actions);
    ::close(ends[1]);
    child.output = ends[0];
    return child;
}

/// The number of bytes that were there to read; 0 at the end.
ssize_t readSome(int descriptor)
{
    std::array<char, 65536> buffer;
    return ::read(descriptor, buffer.data(), buffer.size());
}

} // namespace

TarnBench::ProcessTimes TarnBench::runProcess(const std::vector<std::string> &command,
                                              const std::string &input, int exitCode)
{
    ProcessTimes times;
    const double cpuBefore = cpuSeconds(RUSAGE_CHILDREN);
    const Clock::time_point begin = Clock::now();
    const Child child = start(command, input);
    const bool printed = readSome(child.output) > 0;
    times.firstOutput = secondsSince(begin);
    while (readSome(child.output) > 0) {
    }
    int status = 0;
    ::waitpid(child.pid, &status, 0);
    times.all = secondsSince(begin);
    times.cpu = cpuSeconds(RUSAGE_CHILDREN) - cpuBefore;
    ::close(child.output);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != exitCode)
        fail(command.at(0) + " " + command.at(1) + " failed");
    if (!printed && input.empty())
        fail(command.at(0) + " printed nothing");
    return times;
}

std::vector<TarnBench::ProcessTimes>
TarnBench::interleavedRuns(int rounds, const std::vector<std::vector<std::string>> &commands)
{
    std::vector<std::array<std::vector<double>, 3>> times(commands.size());
    for (int round = 0; round <= rounds; ++round) {
        for (std::size_t i = 0; i < commands.size(); ++i) {
            const ProcessTimes run = runProcess(commands[i]);
            if (round == 0)
                continue;
            times[i][0].push_back(run.firstOutput);
            times[i][1].push_back(run.all);
            times[i][2].push_back(run.cpu);
        }
    }
    std::vector<ProcessTimes> medians;
    for (const auto &of : times)
        medians.push_back({median(of[0]), median(of[1]), median(of[2])});
    return medians;
}
