// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "namelikeness.h"

#include <QString>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>
#include <vector>

namespace TARN {

namespace {

/// What the short words at the ends of names stand for.
enum Affix : quint16 {
    Register = 1,
    Next = 2,
    Input = 4,
    Output = 8,
    Low = 16,
    Wire = 32,
    Instance = 64,
    Delayed = 128,
    Interface = 256,
};

struct KnownAffix
{
    const char *word;
    quint16 kinds;
};

constexpr KnownAffix Affixes[] = {
    {"q", Register},     {"r", Register},
    {"reg", Register},   {"ff", Register},
    {"dff", Register},   {"d", Next | Delayed},
    {"nxt", Next},       {"next", Next},
    {"in", Input},       {"i", Input | Instance},
    {"o", Output},       {"out", Output},
    {"n", Low | Next},   {"b", Low},
    {"l", Low},          {"s", Wire},
    {"w", Wire},         {"sig", Wire},
    {"wire", Wire},      {"u", Instance},
    {"x", Instance},     {"g", Instance},
    {"m", Instance},     {"inst", Instance},
    {"gen", Instance},   {"genblk", Instance},
    {"blk", Instance},   {"mod", Instance},
    {"dly", Delayed},    {"z", Delayed},
    {"if", Interface},   {"intf", Interface},
    {"itf", Interface},  {"bus", Interface},
    {"port", Interface},
};

/// Up to seven ASCII letters as a number that no other letters have; 0 for other words.
constexpr int LongestAffix = 7;

template <typename Word>
quint64 packed(const Word &word, int size)
{
    quint64 number = 0;
    for (int i = 0; i < size; ++i) {
        const auto code = ushort(QChar(word[i]).unicode());
        if (code == 0 || code > 0x7f)
            return 0;
        number = number << 8 | code;
    }
    return number;
}

/// The kinds of affix that @p word can be, as bits.
quint16 affixOf(QStringView word)
{
    struct Entry
    {
        quint64 letters;
        quint16 kinds;
    };
    static const std::vector<Entry> table = [] {
        std::vector<Entry> entries;
        for (const KnownAffix &affix : Affixes)
            entries.push_back({packed(affix.word, int(std::strlen(affix.word))), affix.kinds});
        return entries;
    }();
    if (word.size() > LongestAffix)
        return 0;
    const quint64 letters = packed(word, int(word.size()));
    const auto known = std::find_if(table.cbegin(), table.cend(), [letters](const Entry &entry) {
        return entry.letters == letters;
    });
    return known == table.cend() ? 0 : known->kinds;
}

enum class Letters { None, Lower, Upper, Digit };

Letters lettersOf(QChar c)
{
    const ushort code = c.unicode();
    if (code < 0x80) {
        if (code >= 'a' && code <= 'z')
            return Letters::Lower;
        if (code >= 'A' && code <= 'Z')
            return Letters::Upper;
        return code >= '0' && code <= '9' ? Letters::Digit : Letters::None;
    }
    if (c.isUpper())
        return Letters::Upper;
    return c.isLetter() || c.isSurrogate() ? Letters::Lower : Letters::None;
}

/// The position behind the token that begins at @p begin.
int endOfToken(QStringView name, int begin)
{
    const Letters first = lettersOf(name[begin]);
    int end = begin + 1;
    Letters last = first;
    for (; end < name.size(); ++end) {
        const Letters next = lettersOf(name[end]);
        if (next == Letters::None || (next == Letters::Digit) != (first == Letters::Digit))
            break;
        if (last == Letters::Lower && next == Letters::Upper)
            break;
        // The last capital of several belongs to the word that it begins: HTTP, Server.
        const bool wordBegins = last == Letters::Upper && next == Letters::Lower && end - begin > 1;
        if (wordBegins)
            return end - 1;
        last = next;
    }
    return end;
}

/// Whether the letters of @p small are in @p large, in order and from the first one on.
bool isWithin(QStringView small, QStringView large)
{
    qsizetype at = 0;
    for (const QChar c : large) {
        if (at < small.size() && small[at] == c)
            ++at;
    }
    return at == small.size() && small[0] == large[0];
}

/// Abbreviations of the field that are more than letters left out.
bool isUsualFor(QStringView small, QStringView large)
{
    return (small == QLatin1String("tx") && large.startsWith(QLatin1String("transmi"))) ||
           (small == QLatin1String("rx") && large.startsWith(QLatin1String("receive")));
}

/// How likely @p small stands for the longer @p large. People leave out the end of a word, or some
/// letters, mostly vowels; but one letter less makes another word.
float abbreviationLikeness(QStringView small, QStringView large)
{
    const qsizetype left = large.size() - small.size();
    if (left < 1 || small[0] != large[0])
        return 0;
    if (isUsualFor(small, large))
        return 0.85F;
    if (small.size() == 1)
        return 0.5F;
    if (left == 1 && large.endsWith(QLatin1Char('s')) && large.startsWith(small))
        return 0.9F; // The plural.
    if (large.startsWith(small))
        return small.size() == 2 || left == 1 ? 0.74F : 0.88F;
    if (left > 1 && isWithin(small, large))
        return small.size() == 2 ? 0.6F : 0.8F;
    return 0;
}

/// The number of letters to insert, remove, change, or exchange with their neighbours. Both texts
/// have at most MaximumWord letters.
constexpr int MaximumWord = 24;

int editDistance(QStringView left, QStringView right)
{
    std::array<std::array<int, MaximumWord + 1>, 3> rows{};
    for (int j = 0; j <= right.size(); ++j)
        rows[0][std::size_t(j)] = j;
    for (int i = 1; i <= left.size(); ++i) {
        auto &row = rows[std::size_t(i % 3)];
        const auto &above = rows[std::size_t((i + 2) % 3)];
        const auto &twoAbove = rows[std::size_t((i + 1) % 3)];
        row[0] = i;
        for (int j = 1; j <= right.size(); ++j) {
            const auto at = std::size_t(j);
            const int change = left[i - 1] == right[j - 1] ? 0 : 1;
            row[at] = std::min({above[at] + 1, row[at - 1] + 1, above[at - 1] + change});
            if (i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1])
                row[at] = std::min(row[at], twoAbove[at - 2] + 1);
        }
    }
    return rows[std::size_t(left.size() % 3)][std::size_t(right.size())];
}

/// How alike two different words are.
float wordLikeness(QStringView left, QStringView right)
{
    constexpr int ShortestTypo = 4;
    const QStringView small = left.size() < right.size() ? left : right;
    const QStringView large = left.size() < right.size() ? right : left;
    const float abbreviation = abbreviationLikeness(small, large);
    if (abbreviation > 0)
        return abbreviation;
    if (small.size() < ShortestTypo || large.size() > MaximumWord)
        return 0;
    if (large.size() - small.size() > 2)
        return 0;
    const float alike = 1 - float(editDistance(small, large)) / float(large.size());
    return alike >= 0.7F ? alike * 0.85F : 0;
}

/// The pairing of the tokens of two names.
class Pairing
{
public:
    Pairing(const NameTokens &left, const NameTokens &right)
        : m_left(left)
        , m_right(right)
    {
        m_partner.fill(-1);
    }

    float likeness();

private:
    void pairEqual();
    void pairJoined(const NameTokens &whole, const NameTokens &parts, bool wholeIsLeft);
    void pairSimilar();
    float similarity(int l, int r) const;
    void pair(int l, int r, float alike);
    float unpairedPenalty() const;
    bool isInOrder() const;

    bool isTaken(bool left, int i) const
    {
        return ((left ? m_takenLeft : m_takenRight) & (1U << unsigned(i))) != 0;
    }

    const NameTokens &m_left;
    const NameTokens &m_right;
    std::array<int, NameTokens::MaximumCount> m_partner; ///< By the position on the left.
    unsigned m_takenLeft = 0;
    unsigned m_takenRight = 0;
    float m_common = 0; ///< Twice the weight of what is paired, by its likeness.
};

void Pairing::pair(int l, int r, float alike)
{
    m_partner[std::size_t(l)] = r;
    m_takenLeft |= 1U << unsigned(l);
    m_takenRight |= 1U << unsigned(r);
    m_common += alike * (m_left.at(l).weight + m_right.at(r).weight);
}

void Pairing::pairEqual()
{
    for (int l = 0; l < m_left.count(); ++l) {
        int best = -1;
        for (int r = 0; r < m_right.count(); ++r) {
            if (isTaken(false, r) || m_left.at(l).hash != m_right.at(r).hash)
                continue;
            if (best == -1 || std::abs(r - l) < std::abs(best - l))
                best = r;
        }
        if (best != -1)
            pair(l, best, 1);
    }
}

/// How well @p whole is made up of two words: rdaddr of rd and addr, bram of block and ram.
float joinedWords(QStringView whole, QStringView front, QStringView back)
{
    constexpr float Abbreviated = 0.85F;
    if (whole.size() == front.size() + back.size())
        return whole.startsWith(front) && whole.endsWith(back) ? 0.95F : 0;
    if (whole.size() <= back.size() || !whole.endsWith(back))
        return 0;
    return front.startsWith(whole.chopped(back.size())) ? Abbreviated : 0;
}

/// Pairs words of @p whole with two words of @p parts that make them up.
void Pairing::pairJoined(const NameTokens &whole, const NameTokens &parts, bool wholeIsLeft)
{
    for (int w = 0; w < whole.count(); ++w) {
        for (int p = 0; p + 1 < parts.count(); ++p) {
            if (isTaken(wholeIsLeft, w) || isTaken(!wholeIsLeft, p) ||
                isTaken(!wholeIsLeft, p + 1) || whole.at(w).number)
                continue;
            const float alike = joinedWords(whole.textOf(w), parts.textOf(p), parts.textOf(p + 1));
            if (alike == 0)
                continue;
            pair(wholeIsLeft ? w : p, wholeIsLeft ? p : w, alike);
            (wholeIsLeft ? m_takenRight : m_takenLeft) |= 1U << unsigned(p + 1);
            m_common += alike * parts.at(p + 1).weight;
        }
    }
}

float Pairing::similarity(int l, int r) const
{
    const NameTokens::Token &left = m_left.at(l);
    const NameTokens::Token &right = m_right.at(r);
    if (left.number || right.number)
        return 0;
    if ((left.affix & right.affix) != 0)
        return 0.8F;
    return wordLikeness(m_left.textOf(l), m_right.textOf(r));
}

void Pairing::pairSimilar()
{
    for (int l = 0; l < m_left.count(); ++l) {
        if (isTaken(true, l))
            continue;
        int best = -1;
        float bestAlike = 0;
        for (int r = 0; r < m_right.count(); ++r) {
            const float alike = isTaken(false, r) ? 0 : similarity(l, r);
            if (alike > bestAlike) {
                best = r;
                bestAlike = alike;
            }
        }
        if (best != -1)
            pair(l, best, bestAlike);
    }
}

/// What is left over on one side of a pairing.
struct Rest
{
    float word = 0; ///< Weight of the heaviest word that is no affix.
    quint16 affixes = 0;
    bool role = false; ///< An affix that is no mere ornament of an instance.
    bool number = false;
    bool letter = false;      ///< A word of one letter.
    bool plainLetter = false; ///< One that is no affix, as that of a channel.
    float weight = 0;         ///< Of all words.
};

Rest restOf(const NameTokens &tokens, unsigned taken)
{
    Rest rest;
    for (int i = 0; i < tokens.count(); ++i) {
        if ((taken & (1U << unsigned(i))) != 0)
            continue;
        const NameTokens::Token &token = tokens.at(i);
        rest.number |= token.number;
        rest.weight += token.number ? 0 : token.weight;
        rest.letter |= !token.number && token.length == 1;
        rest.plainLetter |= !token.number && token.length == 1 && token.affix == 0;
        rest.affixes |= token.affix;
        rest.role |= token.affix != 0 && (token.affix & Instance) == 0;
        if (!token.number && token.affix == 0)
            rest.word = std::max(rest.word, token.weight);
    }
    return rest;
}

float Pairing::unpairedPenalty() const
{
    const Rest left = restOf(m_left, m_takenLeft);
    const Rest right = restOf(m_right, m_takenRight);
    // An affix in place of a word makes another name as well.
    constexpr float AffixForWord = 0.6F;
    float factor = 1;
    if (left.word > 0 || right.word > 0)
        factor -= 0.35F * std::min(std::max(left.word, left.role ? AffixForWord : 0),
                                   std::max(right.word, right.role ? AffixForWord : 0));
    if (left.number && right.number)
        factor *= 0.3F;
    if (left.letter && right.letter && (left.plainLetter || right.plainLetter))
        factor *= 0.5F;
    constexpr quint16 Roles = Register | Next | Input | Output | Low | Delayed;
    if ((left.affixes & Roles) != 0 && (right.affixes & Roles) != 0)
        factor *= 0.85F;
    return factor;
}

bool Pairing::isInOrder() const
{
    int last = -1;
    for (int l = 0; l < m_left.count(); ++l) {
        const int r = m_partner[std::size_t(l)];
        if (r == -1)
            continue;
        if (r < last)
            return false;
        last = r;
    }
    return true;
}

float sumOfWeights(const NameTokens &tokens)
{
    float weight = 0;
    for (int i = 0; i < tokens.count(); ++i)
        weight += tokens.at(i).weight;
    return weight;
}

float Pairing::likeness()
{
    pairEqual();
    pairJoined(m_left, m_right, true);
    pairJoined(m_right, m_left, false);
    pairSimilar();
    // Words that one name has in addition weigh less than words that differ.
    constexpr float InAddition = 0.3F;
    const float addition =
        std::abs(restOf(m_left, m_takenLeft).weight - restOf(m_right, m_takenRight).weight);
    const float all = sumOfWeights(m_left) + sumOfWeights(m_right) - InAddition * addition;
    if (all <= 0)
        return 0;
    const float alike = m_common / all * unpairedPenalty();
    return isInOrder() ? alike : alike * 0.95F;
}

/// Short words say less.
float weightOf(bool number, bool affix, int length)
{
    constexpr float Number = 0.6F;
    constexpr float ByLength[] = {0, 0.6F, 0.8F, 1};
    constexpr float AffixByLength[] = {0, 0.2F, 0.35F, 0.35F};
    if (number)
        return Number;
    const int known = length < 3 ? length : 3;
    return affix ? AffixByLength[known] : ByLength[known];
}

} // namespace

quint64 textHash(QStringView text)
{
    quint64 hash = 0xcbf29ce484222325U;
    for (const QChar c : text)
        hash = (hash ^ c.unicode()) * 0x100000001b3U;
    return hash ^ (hash >> 32);
}

void NameTokens::add(QStringView name)
{
    const int firstNew = m_count;
    int at = 0;
    while (at < name.size() && m_count < MaximumCount) {
        const Letters letters = lettersOf(name[at]);
        if (letters == Letters::None) {
            ++at;
            continue;
        }
        const int end = endOfToken(name, at);
        addToken(name.mid(at, end - at), letters == Letters::Digit);
        at = end;
    }
    weigh(firstNew);
}

void NameTokens::addToken(QStringView text, bool number)
{
    while (number && text.size() > 1 && text[0] == QLatin1Char('0'))
        text = text.mid(1);
    text = text.left(MaximumLetters - m_letterCount);
    if (text.isEmpty())
        return;
    Token &token = m_tokens[std::size_t(m_count++)];
    token.first = quint8(m_letterCount);
    token.length = quint8(text.size());
    token.number = number;
    for (const QChar c : text)
        m_letters[std::size_t(m_letterCount++)] = c.toLower();
    const QStringView lower = textOf(m_count - 1);
    token.hash = textHash(lower);
    token.affix = number ? 0 : affixOf(lower);
}

/// Only words at the ends of a name are affixes; numbers and other affixes may be further out.
void NameTokens::weigh(int firstNew)
{
    const auto begin = m_tokens.begin() + firstNew;
    const auto end = m_tokens.begin() + m_count;
    const auto isInner = [](const Token &token) { return !token.number && token.affix == 0; };
    const auto front = std::find_if(begin, end, isInner);
    const auto back =
        std::find_if(std::make_reverse_iterator(end), std::make_reverse_iterator(front), isInner)
            .base();
    std::for_each(front, back, [](Token &token) { token.affix = 0; });
    const bool meaningful = front != back;
    std::for_each(begin, end, [meaningful](Token &token) {
        token.weight = weightOf(token.number, token.affix != 0 && meaningful, token.length);
    });
}

float NameTokens::meaning() const
{
    float sum = 0;
    for (int i = 0; i < m_count; ++i) {
        if (!at(i).number && at(i).affix == 0)
            sum += at(i).weight;
    }
    return sum;
}

float likeness(const NameTokens &left, const NameTokens &right)
{
    return Pairing(left, right).likeness();
}

} // namespace TARN
