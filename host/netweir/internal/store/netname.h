// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pathprefix.h"

#include <QString>

#include <algorithm>

namespace NETWEIR::Internal {

/// The text "[3]" of the index of a bit or "[7:0]" of the range of a bus, without a heap
/// allocation. Empty for a single net.
class RangeText
{
public:
    RangeText() {} // Not "= default": most nets have none, and the letters need not be cleared.
    explicit RangeText(int index);
    RangeText(int left, int right);

    QStringView view() const { return {m_text + m_begin, Capacity - m_begin}; }

private:
    void prepend(char letter) { m_text[--m_begin] = uchar(letter); }
    void prepend(int number);

    static constexpr int Capacity = 32;
    ushort m_text[Capacity];
    int m_begin = Capacity;
};

/// The name of a net or bus in the parts that the netlist stores: the path of the node, the name in
/// the source, and an index or a range. Refers to the first two and joins or compares them.
class NetName
{
public:
    NetName(const PathPrefix *prefix, const QString &name, const RangeText &range)
        : m_prefix(*prefix)
        , m_name(name)
        , m_range(range)
    {
    }

    /// Name within the node. No copy for a single net.
    QString local() const;

    /// Name within the design, in one allocation of the exact size.
    QString full() const;

    /// Sets @p text to the full name. Allocates only if it has to. If @p text already begins with
    /// the path @p present, which may be null, it keeps that. Returns the number of letters kept.
    int copyFull(QString *text, const PathPrefix *present) const;

    bool isFull(QStringView text) const;

    /// The textHash() of the full name.
    quint32 hash() const;

private:
    int fullSize() const;
    void writeFull(QChar *begin) const;
    void writeLocal(QChar *begin) const;

    const PathPrefix &m_prefix;
    const QString &m_name;
    RangeText m_range;
};

inline RangeText::RangeText(int index)
{
    prepend(']');
    prepend(index);
    prepend('[');
}

inline RangeText::RangeText(int left, int right)
{
    prepend(']');
    prepend(right);
    prepend(':');
    prepend(left);
    prepend('[');
}

inline void RangeText::prepend(int number)
{
    unsigned rest = number < 0 ? 0U - unsigned(number) : unsigned(number);
    do {
        prepend(char('0' + rest % 10));
        rest /= 10;
    } while (rest != 0);
    if (number < 0)
        prepend('-');
}

inline QString NetName::local() const
{
    if (m_range.view().isEmpty())
        return m_name;
    QString text(m_name.size() + int(m_range.view().size()), Qt::Uninitialized);
    writeLocal(text.data());
    return text;
}

inline QString NetName::full() const
{
    QString text(fullSize(), Qt::Uninitialized);
    writeFull(text.data());
    return text;
}

inline int NetName::copyFull(QString *text, const PathPrefix *present) const
{
    text->resize(fullSize());
    if (present != &m_prefix) {
        writeFull(text->data());
        return 0;
    }
    writeLocal(text->data() + m_prefix.size());
    return m_prefix.size();
}

inline bool NetName::isFull(QStringView text) const
{
    const int prefixSize = m_prefix.size();
    return text.size() == fullSize() && text.mid(prefixSize, m_name.size()) == m_name &&
           text.endsWith(m_range.view()) && m_prefix.equals(text.left(prefixSize));
}

inline quint32 NetName::hash() const
{
    return textHash(m_range.view(), textHash(m_name, m_prefix.hash()));
}

inline int NetName::fullSize() const
{
    return m_prefix.size() + m_name.size() + int(m_range.view().size());
}

inline void NetName::writeFull(QChar *begin) const
{
    QChar *name = begin + m_prefix.size();
    m_prefix.copyBefore(name);
    writeLocal(name);
}

inline void NetName::writeLocal(QChar *begin) const
{
    const QStringView range = m_range.view();
    std::copy(range.begin(), range.end(), std::copy(m_name.begin(), m_name.end(), begin));
}

} // namespace NETWEIR::Internal
