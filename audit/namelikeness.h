// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringView>

#include <array>

namespace TARN {

/// A hash of @p text that is the same in every run.
quint64 textHash(QStringView text);

/// The hash of a sequence of texts from that of its front, @p front, and that of its next text.
inline quint64 joinedHash(quint64 front, quint64 next)
{
    front = (front ^ next) * 0x9e3779b97f4a7c15U;
    return front ^ (front >> 29);
}

/// The words and numbers of a name, as people read it: "rxData_q12" has rx, data, q and 12.
///
/// Words are in lower case, numbers without leading zeros. A word that tells what kind of thing a
/// name stands for, like "q", "reg" or "inst", weighs less than one that tells what it is about. Of
/// names with more than MaximumCount words or MaximumLetters letters, the rest is left out. A value
/// without memory of its own.
class NameTokens
{
public:
    static constexpr int MaximumCount = 16;
    static constexpr int MaximumLetters = 160;

    struct Token
    {
        quint64 hash = 0;
        float weight = 0;
        quint16 affix = 0; ///< The kinds of affix that it can be, as bits; 0 for none.
        quint8 first = 0;  ///< Position of its letters.
        quint8 length = 0;
        bool number = false;
    };

    NameTokens() = default;
    explicit NameTokens(QStringView name) { add(name); }

    /// Appends the tokens of @p name.
    void add(QStringView name);

    int count() const { return m_count; }
    const Token &at(int i) const { return m_tokens[std::size_t(i)]; }
    QStringView textOf(int i) const
    {
        return QStringView(m_letters.data() + at(i).first, at(i).length);
    }
    /// All letters and digits.
    QStringView letters() const { return QStringView(m_letters.data(), m_letterCount); }

    /// The sum of the weights of all words that are no affixes: how much the name says.
    float meaning() const;

private:
    void addToken(QStringView text, bool number);
    void weigh(int firstNew);

    std::array<Token, MaximumCount> m_tokens;
    std::array<QChar, MaximumLetters> m_letters;
    int m_count = 0;
    int m_letterCount = 0;
};

/// How alike two names are, from 0 to 1 for the same words in the same order. Other numbers, or
/// words with another meaning in place of each other, make names unlike, because designs are full
/// of such siblings; a word more or less does not. Takes about 0.3 us.
float likeness(const NameTokens &left, const NameTokens &right);

} // namespace TARN
