// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <csignal>

namespace Files {

/// While a guard exists, a write of this thread beyond the limit of file sizes (RLIMIT_FSIZE) fails
/// like a write to a full disk. Without it the signal of the system would end the process. The
/// signal handlers of the process, which may be the host of a plug-in, do not change.
class SizeLimitGuard final
{
public:
    SizeLimitGuard();
    ~SizeLimitGuard();
    SizeLimitGuard(const SizeLimitGuard &) = delete;
    SizeLimitGuard &operator=(const SizeLimitGuard &) = delete;

private:
    sigset_t m_formerMask;
    bool m_wasPending = false;
};

} // namespace Files
