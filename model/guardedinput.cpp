// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "guardedinput.h"

#include <algorithm>

namespace TARN {

GuardedInput::GuardedInput(QIODevice *source)
    : m_source(source)
{
    if (source->isReadable())
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

qint64 GuardedInput::readData(char *data, qint64 maximum)
{
    if (m_verdict != Harmless)
        return -1;
    const bool atStart = m_source->pos() == 0;
    const qint64 size = m_source->read(data, maximum);
    if (size > 0 && atStart && isOtherEncoding(data, size)) {
        m_verdict = OtherEncoding;
        return -1;
    }
    const qint64 harmless = harmlessSize(data, size);
    if (harmless < size)
        m_verdict = TooManyAttributes;
    return harmless > 0 ? harmless : -1;
}

qint64 GuardedInput::writeData(const char *, qint64)
{
    return -1;
}

/// Every other encoding that an XML document can begin with has a null byte or a byte order mark
/// of bytes that never occur in UTF-8 among its first four.
bool GuardedInput::isOtherEncoding(const char *data, qint64 size) const
{
    return std::any_of(data, data + std::min<qint64>(size, 4),
                       [](char c) { return c == '\0' || c == '\xfe' || c == '\xff'; });
}

/// The number of bytes that may pass: all, or those before the first attribute that is too many.
/// Every '<' begins markup, because it is not allowed inside quotes.
qint64 GuardedInput::harmlessSize(const char *data, qint64 size)
{
    for (qint64 i = 0; i < size; ++i) {
        const char c = data[i];
        if (c == '<') {
            m_quote = '\0';
            m_quoted = 0;
        } else if (m_quote != '\0') {
            if (c == m_quote)
                m_quote = '\0';
        } else if (c == '"' || c == '\'') {
            m_quote = c;
            if (++m_quoted > MaximumAttributes)
                return i;
        }
    }
    return size;
}

} // namespace TARN
