// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "vhdltokens.h"

#include <netweir/internal/ground/readguard.h>

#include <algorithm>
#include <cstring>

namespace NETWEIR::Internal {

namespace {

const char ByteOrderMark[] = "\xef\xbb\xbf";

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Letters beyond ASCII are those of any character set.
bool isWordStart(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool isWordPart(char c)
{
    return isWordStart(c) || isDigit(c);
}

bool isNumberPart(char c)
{
    return isDigit(c) || c == '_';
}

bool isBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Also ends a line comment and whatever has no end of its own.
bool endsLine(char c)
{
    return c >= '\n' && c <= '\r';
}

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
}

bool isOneOf(char c, const char *characters)
{
    return c != '\0' && strchr(characters, c);
}

/// Whether @p word is the base of a bit string: "x", "ub".
bool isBitBase(std::string_view word)
{
    if (word.size() == 2 && isOneOf(lower(word.front()), "us"))
        word.remove_prefix(1);
    return word.size() == 1 && isOneOf(lower(word.front()), "bodx");
}

/// A sign of several characters. The longest one that fits comes first.
struct LongSign
{
    std::string_view text;
    char sign;
};

constexpr LongSign LongSigns[] = {
    {"?/=", VhdlToken::Comparison},   {"?<=", VhdlToken::Comparison},
    {"?>=", VhdlToken::Comparison},   {"=>", VhdlToken::Arrow},
    {":=", VhdlToken::Becomes},       {"<=", VhdlToken::LessOrEqual},
    {"/=", VhdlToken::Comparison},    {">=", VhdlToken::Comparison},
    {"<>", VhdlToken::Box},           {"**", VhdlToken::Power},
    {"??", VhdlToken::Condition},     {"<<", VhdlToken::OpenExternal},
    {">>", VhdlToken::CloseExternal}, {"?=", VhdlToken::Comparison},
    {"?<", VhdlToken::Comparison},    {"?>", VhdlToken::Comparison},
};

} // namespace

bool VhdlToken::isWord(std::string_view word) const
{
    return kind == Identifier && text.size() == word.size() &&
           std::equal(text.begin(), text.end(), word.begin(),
                      [](char a, char b) { return lower(a) == b; });
}

VhdlTokens::VhdlTokens(const QByteArray &text, Comments comments)
    : VhdlTokens(text, {0, text.size()})
{
    m_keepsComments = comments == KeepComments;
    if (text.startsWith(ByteOrderMark))
        m_at += strlen(ByteOrderMark);
}

VhdlTokens::VhdlTokens(const QByteArray &text, const TextRange &range, int line, int column)
    : m_text(text.constData())
    , m_at(m_text + range.begin)
    , m_end(m_text + range.end)
    , m_lineStart(m_at - (column - 1))
    , m_line(line)
{
}

VhdlToken VhdlTokens::next()
{
    ReadGuard::check();
    for (skipBlanks(); isAtComment() && !m_keepsComments; skipBlanks())
        skipComment();

    VhdlToken token;
    token.offset = int(m_at - m_text);
    token.line = m_line;
    token.column = int(m_at - m_lineStart) + 1;
    if (m_at == m_end)
        return token;

    const char *const begin = m_at;
    const char c = *m_at;
    if (isAtComment()) {
        skipComment();
        token.kind = VhdlToken::Comment;
        token.text = {begin, std::size_t(m_at - begin)};
        return token;
    }
    if (isWordStart(c)) {
        takeWord(&token);
    } else if (isDigit(c)) {
        takeNumber(&token);
    } else if (c == '"') {
        token.kind = VhdlToken::String;
        takeQuoted(c);
    } else if (c == '\\') {
        token.kind = VhdlToken::Identifier;
        token.extended = true;
        takeQuoted(c);
    } else if (c == '\'' && !m_afterName && characterLength() > 0) {
        token.kind = VhdlToken::Character;
        m_at += characterLength();
    } else {
        takeSign(&token);
    }
    token.text = {begin, std::size_t(m_at - begin)};
    m_afterName = token.kind == VhdlToken::Identifier || token.kind == VhdlToken::String ||
                  token.is(')') || token.is(']') || token.is(VhdlKeyword::All);
    return token;
}

void VhdlTokens::skipBlanks()
{
    for (; m_at != m_end && isBlank(*m_at); ++m_at)
        countLine();
}

/// A carriage return alone ends a line too, as for GHDL.
void VhdlTokens::countLine()
{
    if (*m_at == '\n' || (*m_at == '\r' && at(1) != '\n')) {
        ++m_line;
        m_lineStart = m_at + 1;
    }
}

bool VhdlTokens::isAtComment() const
{
    return (at(0) == '-' && at(1) == '-') || (at(0) == '/' && at(1) == '*');
}

void VhdlTokens::skipComment()
{
    if (at(0) == '-') {
        m_at = std::find_if(m_at, m_end, endsLine);
        return;
    }
    for (m_at += 2; m_at != m_end; ++m_at) {
        if (at(0) == '*' && at(1) == '/') {
            m_at += 2;
            return;
        }
        countLine();
    }
}

void VhdlTokens::takeWord(VhdlToken *token)
{
    const char *const begin = m_at;
    m_at = std::find_if_not(m_at, m_end, isWordPart);
    const std::string_view word(begin, std::size_t(m_at - begin));
    if (at(0) == '"' && isBitBase(word)) {
        takeQuoted('"');
        token->kind = VhdlToken::BitString;
        return;
    }
    token->keyword = vhdlKeywordOf(word);
    token->kind = token->keyword == VhdlKeyword::None ? VhdlToken::Identifier : VhdlToken::Reserved;
}

/// 1_000, 1.5e-3, 16#ff.8#e2, 12ux"f"
void VhdlTokens::takeNumber(VhdlToken *token)
{
    token->kind = VhdlToken::Number;
    m_at = std::find_if_not(m_at, m_end, isNumberPart);
    if (at(0) == '#') {
        m_at = std::find_if_not(m_at + 1, m_end, [](char c) { return isWordPart(c) || c == '.'; });
        m_at += at(0) == '#' ? 1 : 0;
    } else if (at(0) == '.' && isDigit(at(1))) {
        m_at = std::find_if_not(m_at + 1, m_end, isNumberPart);
    }
    if (lower(at(0)) == 'e' && (isDigit(at(1)) || (isOneOf(at(1), "+-") && isDigit(at(2))))) {
        m_at = std::find_if_not(m_at + 2, m_end, isNumberPart);
        return;
    }
    const char *const base = m_at;
    const char *const quote = std::find_if_not(m_at, std::min(m_end, m_at + 3), isWordStart);
    if (quote != m_end && *quote == '"' && isBitBase({base, std::size_t(quote - base)})) {
        m_at = quote;
        takeQuoted('"');
        token->kind = VhdlToken::BitString;
    }
}

/// A doubled quote stands for one.
void VhdlTokens::takeQuoted(char quote)
{
    for (++m_at; m_at != m_end && !endsLine(*m_at); ++m_at) {
        if (*m_at != quote)
            continue;
        if (at(1) != quote) {
            ++m_at;
            return;
        }
        ++m_at;
    }
}

void VhdlTokens::takeSign(VhdlToken *token)
{
    token->kind = VhdlToken::Punctuation;
    const std::string_view rest(m_at, std::size_t(std::min<qint64>(m_end - m_at, 3)));
    for (const LongSign &sign : LongSigns) {
        if (rest.substr(0, sign.text.size()) == sign.text) {
            token->punctuation = sign.sign;
            m_at += sign.text.size();
            return;
        }
    }
    token->punctuation = *m_at++;
}

/// The length of the character literal at a tick with its ticks, 0 when there is none. A character
/// of UTF-8 has up to four bytes.
int VhdlTokens::characterLength() const
{
    const bool isUtf8 = static_cast<unsigned char>(at(1)) >= 0xc0;
    const int longest = isUtf8 ? 4 : 1;
    for (int length = 1; length <= longest; ++length) {
        if (endsLine(at(length)))
            return 0;
        if (at(length + 1) == '\'')
            return length + 2;
    }
    return 0;
}

} // namespace NETWEIR::Internal
