// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "pathprefix.h"

#include "textpool.h"

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

/// The letters up to which a prefix is in one piece. Hardly any path of a real design is longer.
constexpr qsizetype LongestPiece = 512;

QChar *append(QStringView text, QChar *end)
{
    return std::copy(text.begin(), text.end(), end);
}

} // namespace

quint32 textHash(QStringView text, quint32 before)
{
    // hash * 31 + letter for each letter, but four letters at a time: a multiplication has to wait
    // for the one before.
    constexpr quint32 P = 31;
    quint32 hash = before;
    const QChar *at = text.begin();
    for (; text.end() - at >= 4; at += 4)
        hash = hash * (P * P * P * P) + at[0].unicode() * (P * P * P) + at[1].unicode() * (P * P) +
               at[2].unicode() * P + at[3].unicode();
    for (; at != text.end(); ++at)
        hash = hash * P + at->unicode();
    return hash;
}

PathPrefix::PathPrefix(const PathPrefix *parent, QStringView instName, TextPool *texts)
    : m_before(parent)
{
    QStringView above;
    if (parent && parent->m_text.size() + instName.size() < LongestPiece) {
        above = parent->m_text;
        m_before = parent->m_before;
    }
    const int size = int(above.size() + instName.size()) + 1;
    QChar *text = texts->allocate(size);
    *append(instName, append(above, text)) = QLatin1Char('/');
    m_text = {text, size};
    m_size = (m_before ? m_before->m_size : 0) + size;
    m_hash = textHash(m_text, m_before ? m_before->m_hash : 0);
}

void PathPrefix::copyBefore(QChar *end) const
{
    for (const PathPrefix *piece = this; piece; piece = piece->m_before)
        end = std::copy_backward(piece->m_text.begin(), piece->m_text.end(), end);
}

bool PathPrefix::equals(QStringView text) const
{
    for (const PathPrefix *piece = this; piece; piece = piece->m_before) {
        if (!text.endsWith(piece->m_text))
            return false;
        text.chop(piece->m_text.size());
    }
    return true;
}

} // namespace NETWEIR::Internal
