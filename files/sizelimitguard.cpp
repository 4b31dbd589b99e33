// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "sizelimitguard.h"

#include <ctime>

namespace Files {

namespace {

sigset_t sizeSignal()
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGXFSZ);
    return set;
}

bool isPending()
{
    sigset_t pending;
    return sigpending(&pending) == 0 && sigismember(&pending, SIGXFSZ) == 1;
}

} // namespace

SizeLimitGuard::SizeLimitGuard()
{
    const sigset_t signal = sizeSignal();
    m_wasPending = isPending();
    pthread_sigmask(SIG_BLOCK, &signal, &m_formerMask);
}

/// Removes a signal that arrived in the meantime. It was for this thread, which wrote too much.
SizeLimitGuard::~SizeLimitGuard()
{
    const sigset_t signal = sizeSignal();
    const timespec atOnce = {0, 0};
    if (!m_wasPending && isPending())
        sigtimedwait(&signal, nullptr, &atOnce);
    pthread_sigmask(SIG_SETMASK, &m_formerMask, nullptr);
}

} // namespace Files
