// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "filestream.h"

#include <files/regularfile.h>
#include <netweir/internal/ground/messages.h>
#include <netweir/internal/ground/readguard.h>

#include <cstring>

namespace NETWEIR::Internal {

namespace {

constexpr std::size_t BufferSize = std::size_t(1) << 20;
constexpr qint64 BytesOfWork = 64;

} // namespace

bool FileStream::open(const QString &path, QString *error)
{
    m_file.close();
    m_buffer.resize(BufferSize);
    m_begin = m_end = 0;
    m_offset = 0;
    QString reason;
    const Files::Access access = Files::openRegularFile(path, &m_file, &reason);
    if (access == Files::Access::Granted)
        return true;
    if (access != Files::Access::Failed)
        reason = Text::tr("it is not a regular file");
    *error = Text::tr("The elaborated design \"%1\" cannot be read: %2.").arg(path, reason);
    return false;
}

bool FileStream::line(std::string_view *line)
{
    std::size_t searched = 0;
    for (;;) {
        const char *begin = m_buffer.data() + m_begin;
        const std::size_t size = m_end - m_begin;
        const void *end = std::memchr(begin + searched, '\n', size - searched);
        if (end) {
            *line = {begin, std::size_t(static_cast<const char *>(end) - begin)};
            m_begin += line->size() + 1;
            return true;
        }
        searched = size;
        if (size < BufferSize && refill())
            continue;
        *line = {m_buffer.data() + m_begin, m_end - m_begin};
        m_begin = m_end;
        return !line->empty();
    }
}

/// Keeps what is not read yet and reads as much as there is room for.
bool FileStream::refill()
{
    const std::size_t kept = m_end - m_begin;
    std::memmove(m_buffer.data(), m_buffer.data() + m_begin, kept);
    m_offset += qint64(m_begin);
    m_begin = 0;
    m_end = kept;
    const qint64 count =
        m_file.isOpen() ? m_file.read(m_buffer.data() + kept, qint64(BufferSize - kept)) : 0;
    if (count <= 0)
        return false;
    m_end += std::size_t(count);
    ReadGuard::check(count / BytesOfWork);
    return true;
}

} // namespace NETWEIR::Internal
