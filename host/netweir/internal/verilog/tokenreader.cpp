// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "tokenreader.h"

namespace NETWEIR::Internal {

namespace {

/// A word that an else may follow.
bool mayHaveElse(const Token &token)
{
    return token.is(Keyword::If) || token.is(Keyword::Assert) || token.is(Keyword::Expect);
}

} // namespace

TokenReader::TokenReader(const VerilogTokens &tokens)
    : m_tokens(tokens)
{
    advance();
}

TokenReader::TokenReader(const VerilogTokens &tokens, const Token &token)
    : m_tokens(tokens)
    , m_token(token)
{
}

void TokenReader::advance()
{
    m_end = m_tokens.position();
    m_token = m_tokens.next();
}

void TokenReader::advanceOverGroup()
{
    if (opensGroup(m_token))
        skipGroup();
    else
        advance();
}

bool TokenReader::skipGroup()
{
    if (!opensGroup(m_token))
        return false;
    int depth = 0;
    do {
        depth += opensGroup(m_token) ? 1 : closesGroup(m_token) ? -1 : 0;
        advance();
    } while (depth > 0 && !atUnitEnd());
    return depth == 0;
}

void TokenReader::skipAttribute()
{
    advance();
    advance();
    bool afterStar = false;
    while (!atUnitEnd()) {
        const bool ends = afterStar && m_token.is(')');
        afterStar = m_token.is('*');
        advance();
        if (ends)
            return;
    }
}

void TokenReader::skipLabel()
{
    if (!m_token.is(':'))
        return;
    advance();
    if (m_token.kind == Token::Identifier)
        advance();
}

void TokenReader::skipPast(Keyword keyword)
{
    while (!m_token.is(keyword) && !atUnitEnd())
        advance();
    if (m_token.is(keyword)) {
        advance();
        skipLabel();
    }
}

bool TokenReader::skipToSemicolon()
{
    while (!atUnitEnd()) {
        const bool found = m_token.is(';');
        advanceOverGroup();
        if (found)
            return true;
    }
    return false;
}

bool TokenReader::skipConstraint()
{
    while (!atUnitEnd() && !m_token.is('{') && !m_token.is(';'))
        advance();
    if (!m_token.is(';'))
        return skipGroup();
    advance();
    return true;
}

/// The statement ends with the semicolon or end keyword that leaves nothing open, unless its else
/// follows.
bool TokenReader::skipStatement()
{
    int depth = 0;
    int ifs = 0; // Number of ifs that may still have an else; those in blocks do not matter.
    Token previous;
    while (!atUnitEnd()) {
        if (opensGroup(m_token)) {
            skipGroup();
            continue;
        }
        const Token word = m_token;
        const int step = blockStep(word, previous);
        if (depth == 0)
            ifs += mayHaveElse(word) ? 1 : word.is(Keyword::Else) ? -1 : 0;
        depth += step;
        advance();
        if (step != 0)
            skipLabel();
        const bool mayEnd = depth <= 0 && (step < 0 || word.is(';'));
        if (mayEnd && (ifs <= 0 || !m_token.is(Keyword::Else)))
            return depth == 0;
        previous = word;
    }
    return false;
}

} // namespace NETWEIR::Internal
