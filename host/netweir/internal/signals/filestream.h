// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFile>

#include <string_view>
#include <vector>

namespace NETWEIR::Internal {

/// Reads a file of any size from start to end with bounded memory. Checks the guard of the reading
/// after each piece.
class FileStream
{
public:
    /// False with a message when the file cannot be opened.
    bool open(const QString &path, QString *error);

    /// The next byte; negative at the end of the file.
    int byte()
    {
        if (m_begin == m_end && !refill())
            return -1;
        return quint8(m_buffer[m_begin++]);
    }

    /// The next line without its end. False at the end of the file. A line that is longer than a
    /// megabyte comes in pieces. The line is valid until the next call.
    bool line(std::string_view *line);

    /// The number of bytes that were read.
    qint64 position() const { return m_offset + qint64(m_begin); }

private:
    bool refill();

    QFile m_file;
    std::vector<char> m_buffer;
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    qint64 m_offset = 0; ///< Of the first byte in the buffer.
};

} // namespace NETWEIR::Internal
