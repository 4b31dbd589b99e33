// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "freshprocess.h"

#include "benchmark.h"

#include <sys/mman.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <ctime>

namespace {

using Clock = std::chrono::steady_clock;

/// In the child: becomes the program, traced by its parent, with its output in the file @p output.
[[noreturn]] void become(const std::vector<char *> &arguments, int output)
{
    ::dup2(output, STDOUT_FILENO);
    ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    ::execv(arguments.front(), arguments.data());
    ::_exit(127);
}

pid_t startTraced(const std::vector<std::string> &command, int output)
{
    std::vector<char *> arguments;
    for (const std::string &argument : command)
        arguments.push_back(const_cast<char *>(argument.c_str()));
    arguments.push_back(nullptr);
    const pid_t pid = ::fork();
    if (pid < 0)
        TarnBench::fail("cannot start a process");
    if (pid == 0)
        become(arguments, output);
    return pid;
}

double cpuSecondsOf(pid_t pid)
{
    clockid_t clock{};
    timespec time{};
    if (::clock_getcpuclockid(pid, &clock) != 0 || ::clock_gettime(clock, &time) != 0)
        TarnBench::fail("no processor time of a process");
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

/// Lets the stopped process run to its end, and reads its figures just before. Returns its status.
int followToEnd(pid_t pid, TarnBench::ProcessFigures *figures)
{
    constexpr int AtExit = SIGTRAP | (PTRACE_EVENT_EXIT << 8);
    rusage usage{};
    int status = 0;
    while (::wait4(pid, &status, 0, &usage) == pid && WIFSTOPPED(status)) {
        int passedSignal = 0;
        if (status >> 8 == AtExit) {
            figures->peakBytes = TarnBench::peakResidentBytes(std::to_string(pid));
            figures->cpu = cpuSecondsOf(pid);
        } else if (WSTOPSIG(status) == SIGTRAP) { // At exec().
            ::ptrace(PTRACE_SETOPTIONS, pid, nullptr, PTRACE_O_TRACEEXIT | PTRACE_O_EXITKILL);
        } else {
            passedSignal = WSTOPSIG(status);
        }
        ::ptrace(PTRACE_CONT, pid, nullptr, passedSignal);
    }
    const double all = TarnBench::seconds(usage.ru_utime) + TarnBench::seconds(usage.ru_stime);
    figures->childrenCpu = std::max(0.0, all - figures->cpu);
    return status;
}

std::string contentOf(int file)
{
    std::string content;
    std::array<char, 65536> buffer;
    ::lseek(file, 0, SEEK_SET);
    for (ssize_t size = 0; (size = ::read(file, buffer.data(), buffer.size())) > 0;)
        content.append(buffer.data(), std::size_t(size));
    return content;
}

} // namespace

TarnBench::ProcessFigures TarnBench::measureProcess(const std::vector<std::string> &command)
{
    const int output = ::memfd_create("output", MFD_CLOEXEC);
    if (output < 0)
        fail("no file for the output of a process");
    ProcessFigures figures;
    const Clock::time_point begin = Clock::now();
    const int status = followToEnd(startTraced(command, output), &figures);
    figures.wall = std::chrono::duration<double>(Clock::now() - begin).count();
    figures.output = contentOf(output);
    ::close(output);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        fail(command.front() + " failed");
    if (figures.peakBytes == 0)
        fail("the end of " + command.front() + " could not be watched");
    return figures;
}
