// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "interruption.h"

#include <cerrno>
#include <csignal>
#include <initializer_list>

#include <poll.h>

namespace Tool {

namespace {

constexpr int Watched[] = {SIGINT, SIGTERM, SIGHUP};

volatile std::sig_atomic_t s_caught = 0; ///< The first signal caught, 0 for none.

extern "C" void remember(int signal)
{
    if (s_caught == 0)
        s_caught = signal;
}

void endBy(int signal)
{
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    ::sigaction(signal, &action, nullptr);
    sigset_t blocked;
    sigemptyset(&blocked);
    sigaddset(&blocked, signal);
    ::sigprocmask(SIG_UNBLOCK, &blocked, nullptr);
    ::raise(signal);
}

bool waitFor(int stream, short events)
{
    // A signal between the look at s_caught and the waiting would be lost, were it not blocked.
    sigset_t watched;
    sigemptyset(&watched);
    for (const int signal : Watched)
        sigaddset(&watched, signal);
    sigset_t former;
    ::sigprocmask(SIG_BLOCK, &watched, &former);
    pollfd awaited = {stream, events, 0};
    while (s_caught == 0 && ::ppoll(&awaited, 1, nullptr, &former) < 0 && errno == EINTR) {
    }
    ::sigprocmask(SIG_SETMASK, &former, nullptr);
    return s_caught == 0;
}

} // namespace

void Interruption::watch()
{
    for (const int signal : Watched) {
        struct sigaction former = {};
        ::sigaction(signal, nullptr, &former);
        if (former.sa_handler == SIG_IGN)
            continue;
        struct sigaction action = {};
        action.sa_handler = remember;
        // No SA_RESTART: waiting for input ends too.
        ::sigaction(signal, &action, nullptr);
    }
    // Writing to a closed pipe or beyond the limit of file sizes fails like any other write.
    for (const int signal : {SIGPIPE, SIGXFSZ})
        std::signal(signal, SIG_IGN);
}

bool Interruption::isRequested()
{
    return s_caught != 0;
}

bool Interruption::waitToRead(int stream)
{
    return waitFor(stream, POLLIN);
}

bool Interruption::waitToWrite(int stream)
{
    return waitFor(stream, POLLOUT);
}

void Interruption::endIfRequested()
{
    if (s_caught != 0)
        endBy(s_caught);
}

void Interruption::endByClosedPipe()
{
    endBy(SIGPIPE);
}

} // namespace Tool
