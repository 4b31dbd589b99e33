// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <csignal>

namespace Files {

/// While one lives, a write of this thread beyond the size that files may have (RLIMIT_FSIZE) fails
/// like one on a full disk. Otherwise the signal that the system sends as well would end the
/// process, which may be the host of a plug-in: its handlers stay as they are.
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
