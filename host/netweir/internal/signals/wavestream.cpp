// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "wavestream.h"

#include <netweir/internal/ground/messages.h>

namespace NETWEIR::Internal {

bool WaveStream::open(const QString &path)
{
    m_path = path;
    m_error.clear();
    return m_stream.open(path, &m_error);
}

void WaveStream::fail(const QString &fault)
{
    if (isGood())
        m_error = Text::tr("The elaborated design \"%1\" cannot be read: %2 (byte %3).")
                      .arg(m_path, fault, QString::number(m_stream.position()));
}

quint8 WaveStream::byte()
{
    if (!isGood())
        return 0;
    const int next = m_stream.byte();
    if (next < 0)
        fail(Text::tr("the file ends too early"));
    return next < 0 ? 0 : quint8(next);
}

qint64 WaveStream::word()
{
    quint32 value = 0;
    for (unsigned shift = 0; shift < 32; shift += 8)
        value |= quint32(byte()) << shift;
    return qint32(value);
}

quint64 WaveStream::count()
{
    unsigned width = 0;
    quint8 last = 0;
    return bits(&width, &last);
}

qint64 WaveStream::integer()
{
    constexpr quint8 Sign = 0x40;
    unsigned width = 0;
    quint8 last = 0;
    quint64 value = bits(&width, &last);
    if ((last & Sign) && width < 64)
        value |= ~quint64(0) << width;
    return qint64(value);
}

void WaveStream::skip(int bytes)
{
    for (int i = 0; i < bytes; ++i)
        byte();
}

quint64 WaveStream::bits(unsigned *width, quint8 *last)
{
    constexpr quint8 More = 0x80;
    constexpr unsigned Largest = 63; ///< Of the shift of the last byte.
    quint64 value = 0;
    for (*width = 0; *width <= Largest; *width += 7) {
        *last = byte();
        value |= quint64(*last & ~More) << *width;
        if (!(*last & More)) {
            *width += 7;
            return value;
        }
    }
    fail(Text::tr("a number is too large"));
    return 0;
}

} // namespace NETWEIR::Internal
