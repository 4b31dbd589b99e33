// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "verilogtokens.h"

#include <cstring>

namespace NETWEIR::Internal {

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isWordStart(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '$' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool isWordPart(char c)
{
    return isWordStart(c) || isDigit(c);
}

bool isBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool isBlankInLine(char c)
{
    return c == ' ' || c == '\t';
}

} // namespace

VerilogTokens::VerilogTokens(const QByteArray &text, bool systemVerilog)
    : VerilogTokens(text, systemVerilog, {0, text.size()})
{
}

VerilogTokens::VerilogTokens(const QByteArray &text, bool systemVerilog, const TextRange &range)
    : m_text(text.constData())
    , m_at(m_text + range.begin)
    , m_end(m_text + range.end)
    , m_systemVerilog(systemVerilog)
    , m_fileIsSystemVerilog(systemVerilog)
{
}

Token VerilogTokens::next()
{
    while (skipBlanks() || skipComment() || isAt('`')) {
        if (isAt('`'))
            skipDirective();
    }
    Token token;
    token.offset = position();
    token.line = m_line;
    if (atEnd())
        return token;

    const char c = *m_at;
    if (isWordStart(c) || c == '\\') {
        takeName(&token);
    } else if (isDigit(c)) {
        token.text = takeWord();
        token.kind = Token::Number;
    } else if (c == '"') {
        skipString();
        token.kind = Token::String;
    } else if (c == '\'') {
        skipBasedNumber();
        token.kind = Token::Number;
    } else {
        takeSign(&token);
    }
    return token;
}

void VerilogTokens::takeName(Token *token)
{
    token->escaped = *m_at == '\\';
    token->text = token->escaped ? takeEscapedName() : takeWord();
    if (!token->escaped)
        token->keyword = keywordOf(token->text, m_systemVerilog);
    token->kind = token->keyword == Keyword::None ? Token::Identifier : Token::Reserved;
}

void VerilogTokens::takeSign(Token *token)
{
    const bool isScope = *m_at == ':' && peek() == ':';
    token->kind = Token::Punctuation;
    token->punctuation = isScope ? Token::Scope : *m_at;
    m_at += isScope ? 2 : 1;
}

bool VerilogTokens::skipBlanks()
{
    const char *const start = m_at;
    for (; !atEnd() && isBlank(*m_at); ++m_at) {
        if (*m_at == '\n')
            ++m_line;
    }
    return m_at != start;
}

bool VerilogTokens::skipComment()
{
    if (!isAt('/'))
        return false;
    if (peek() == '/') {
        takeLine();
        return true;
    }
    if (peek() != '*')
        return false;
    for (m_at += 2; !atEnd(); ++m_at) {
        if (*m_at == '\n')
            ++m_line;
        if (*m_at == '*' && peek() == '/') {
            m_at += 2;
            break;
        }
    }
    return true;
}

/// The rest of the line, without its end.
std::string_view VerilogTokens::takeLine()
{
    const char *const begin = m_at;
    const void *end = memchr(m_at, '\n', size_t(m_end - m_at));
    m_at = end ? static_cast<const char *>(end) : m_end;
    return {begin, size_t(m_at - begin)};
}

/// A word after a backtick. Arguments of directives are skipped too, because they do not belong to
/// the design.
void VerilogTokens::skipDirective()
{
    ++m_at;
    if (atEnd() || !isWordStart(*m_at))
        return;
    const std::string_view directive = takeWord();
    if (directive == "timescale") { // Other text may follow on the same line.
        if (skipTime())
            skipTime();
    } else if (directive == "begin_keywords") {
        m_systemVerilog = takeLine().find("1800") != std::string_view::npos;
    } else if (directive == "end_keywords") {
        m_systemVerilog = m_fileIsSystemVerilog;
    } else if (directive == "default_nettype" || directive == "pragma" ||
               directive == "unconnected_drive") {
        takeLine();
    }
}

/// "1ns" or "1 ns", also after the slash between unit and precision. False for anything else.
bool VerilogTokens::skipTime()
{
    while (!atEnd() && (isBlankInLine(*m_at) || *m_at == '/'))
        ++m_at;
    if (atEnd() || !isDigit(*m_at))
        return false;
    if (!isDigit(takeWord().back()))
        return true;
    while (!atEnd() && isBlankInLine(*m_at))
        ++m_at;
    if (!atEnd() && isWordStart(*m_at))
        takeWord();
    return true;
}

std::string_view VerilogTokens::takeWord()
{
    const char *const begin = m_at;
    while (!atEnd() && isWordPart(*m_at))
        ++m_at;
    return {begin, size_t(m_at - begin)};
}

std::string_view VerilogTokens::takeEscapedName()
{
    const char *const begin = ++m_at;
    while (!atEnd() && !isBlank(*m_at))
        ++m_at;
    return {begin, size_t(m_at - begin)};
}

void VerilogTokens::skipString()
{
    for (++m_at; !atEnd() && *m_at != '"' && *m_at != '\n'; ++m_at) {
        if (*m_at == '\\' && peek() != '\0') {
            ++m_at;
            if (*m_at == '\n')
                ++m_line;
        }
    }
    if (isAt('"'))
        ++m_at;
}

/// 'hFF, 'sd12, '0; also "' h FF", because blanks may separate base and digits.
void VerilogTokens::skipBasedNumber()
{
    ++m_at;
    if ((isAt('s') || isAt('S')) && isWordStart(peek()))
        ++m_at;
    if (atEnd() || !isWordPart(*m_at))
        return; // A cast or an assignment pattern.
    if (strchr("bBoOdDhH", *m_at)) {
        ++m_at;
        while (!atEnd() && isBlankInLine(*m_at))
            ++m_at;
    }
    while (!atEnd() && (isWordPart(*m_at) || *m_at == '?'))
        ++m_at;
}

} // namespace NETWEIR::Internal
