// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <cstdlib>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

/// A file in memory.
class MemoryFile
{
public:
    explicit MemoryFile(std::string_view content)
        : m_file(::memfd_create("input", MFD_CLOEXEC))
    {
        if (m_file < 0 ||
            ::write(m_file, content.data(), content.size()) != ssize_t(content.size()))
            std::abort();
    }
    ~MemoryFile() { ::close(m_file); }
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;

    QString path() const { return QStringLiteral("/proc/self/fd/%1").arg(m_file); }

private:
    const int m_file;
};
