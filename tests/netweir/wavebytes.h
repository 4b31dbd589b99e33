// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QByteArrayList>

namespace TarnTest {

/// Writes a wave file piece by piece, so that tests need no simulator.
///
/// Types and strings are numbered from 1 in the order in which they are added. The hierarchy is
/// closed by file().
class WaveBytes
{
public:
    /// A number of any size; seven bits a byte.
    static QByteArray number(qint64 value)
    {
        QByteArray bytes;
        for (; value >= 0x80; value >>= 7)
            bytes += char(0x80 | (value & 0x7F));
        return bytes + char(value);
    }

    /// The same with a sign.
    static QByteArray integer(qint64 value)
    {
        QByteArray bytes;
        for (; value < -0x40 || value > 0x3F; value >>= 7)
            bytes += char(0x80 | (value & 0x7F));
        return bytes + char(value & 0x7F);
    }

    static QByteArray range(qint64 left, qint64 right)
    {
        return char(left > right ? 0x80 | 25 : 25) + integer(left) + integer(right);
    }
    static QByteArray emptyRange(qint64 left, qint64 right)
    {
        return char(left > right ? 25 : 0x80 | 25) + integer(left) + integer(right);
    }
    /// Of letters from 0 to @p last.
    static QByteArray letters(int last) { return QByteArray(1, 23) + '\0' + char(last); }

    int name(const QByteArray &text)
    {
        const int known = m_strings.indexOf(text);
        if (known < 0)
            m_strings.append(text);
        return known < 0 ? m_strings.size() : known + 1;
    }

    int enumeration(const QByteArray &typeName, const QByteArrayList &letterNames)
    {
        QByteArray bytes = number(letterNames.size());
        for (const QByteArray &letter : letterNames)
            bytes += number(name(letter));
        return type(23, typeName, bytes);
    }
    int integers() { return type(25, "integer", {}); }
    int reals() { return type(27, "real", {}); }
    int times()
    {
        return type(29, "time",
                    number(2) + number(name("fs")) + integer(1) + number(name("ps")) +
                        integer(1000));
    }
    int subtype(int base, const QByteArray &rangeBytes)
    {
        return type(34, {}, number(base) + rangeBytes);
    }
    int array(int element, const QVector<int> &indexes)
    {
        QByteArray bytes = number(element) + number(indexes.size());
        for (const int index : indexes)
            bytes += number(index);
        return type(31, "array_t", bytes);
    }
    /// Of an array or, with @p code 38, a record.
    int constrained(int base, const QByteArray &ranges, int code = 35)
    {
        return type(code, {}, number(base) + ranges);
    }
    /// Without ranges.
    int open(int base) { return type(37, "open_t", number(base)); }
    int record(const QVector<QPair<QByteArray, int>> &fields)
    {
        QByteArray bytes = number(fields.size());
        for (const auto &field : fields)
            bytes += number(name(field.first)) + number(field.second);
        return type(32, "record_t", bytes);
    }
    int type(int code, const QByteArray &typeName, const QByteArray &content)
    {
        m_types += char(code) + number(typeName.isEmpty() ? 0 : name(typeName)) + content;
        return ++m_typeCount;
    }
    /// Makes it boolean (1), bit (2) or std_ulogic (3).
    void setWellKnown(int code, int type) { m_wellKnown += char(code) + number(type); }

    void scope(int code, const QByteArray &label, const QByteArray &index = {})
    {
        m_hierarchy += char(code) + number(name(label)) + index;
    }
    void instance(const QByteArray &label) { scope(6, label); }
    void end() { m_hierarchy += char(15); }
    void signal(int code, const QByteArray &label, int type, const QVector<int> &nets)
    {
        m_hierarchy += char(code) + number(name(label)) + number(type);
        for (const int net : nets)
            m_hierarchy += number(net);
    }
    void raw(const QByteArray &bytes) { m_hierarchy += bytes; }

    QByteArray file() const
    {
        return beginning() + strings() + section("TYP", word(m_typeCount) + m_types + '\0') +
               section("WKT", m_wellKnown + '\0') +
               section("HIE", word(0) + word(0) + word(0) + m_hierarchy + '\0') +
               QByteArray("EOH\0", 4);
    }

    static QByteArray beginning() { return QByteArray("GHDLwave\n\x10\0\1\1\4\1\0", 16); }
    static QByteArray word(int value)
    {
        QByteArray bytes;
        for (int shift = 0; shift < 32; shift += 8)
            bytes += char(value >> shift);
        return bytes;
    }
    static QByteArray section(const char *name, const QByteArray &content)
    {
        return QByteArray(name) + '\0' + word(0) + content;
    }

private:
    /// Each string keeps what it shares with the one before.
    QByteArray strings() const
    {
        QByteArray bytes;
        QByteArray before;
        for (const QByteArray &text : m_strings) {
            int shared = 0;
            while (shared < before.size() && shared < text.size() &&
                   before.at(shared) == text.at(shared))
                ++shared;
            if (!before.isNull())
                bytes += sharing(shared);
            bytes += text.mid(shared);
            before = text;
        }
        if (!before.isNull())
            bytes += sharing(0);
        return section("STR", word(m_strings.size()) + word(0) + bytes) + QByteArray("EOS\0", 4);
    }
    static QByteArray sharing(int letters)
    {
        QByteArray bytes;
        for (; letters >= 0x20; letters >>= 5)
            bytes += char(0x80 | (letters & 0x1F));
        return bytes + char(letters);
    }

    QByteArrayList m_strings;
    QByteArray m_types;
    int m_typeCount = 0;
    QByteArray m_wellKnown;
    QByteArray m_hierarchy;
};

} // namespace TarnTest
