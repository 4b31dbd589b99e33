// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "tokenreader.h"

namespace NETWEIR::Internal {

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

void TokenReader::skipGroup()
{
    int depth = 0;
    do {
        depth += opensGroup(m_token) ? 1 : closesGroup(m_token) ? -1 : 0;
        advance();
    } while (depth > 0 && !atEnd() && !endsUnit(m_token));
}

void TokenReader::skipLabel()
{
    if (!m_token.is(':'))
        return;
    advance();
    if (m_token.kind == Token::Identifier)
        advance();
}

bool TokenReader::skipToSemicolon()
{
    while (!atEnd() && !endsUnit(m_token)) {
        const bool found = m_token.is(';');
        if (opensGroup(m_token))
            skipGroup();
        else
            advance();
        if (found)
            return true;
    }
    return false;
}

bool TokenReader::skipConstraint()
{
    while (!atEnd() && !endsUnit(m_token) && !m_token.is('{') && !m_token.is(';'))
        advance();
    const bool isPrototype = m_token.is(';');
    if (isPrototype)
        advance();
    else if (m_token.is('{'))
        skipGroup();
    return isPrototype || (m_end && m_end[-1] == '}');
}

/// It ends with the semicolon or the end keyword that leaves nothing open, unless an else of its
/// own follows.
bool TokenReader::skipStatement()
{
    int depth = 0;
    int ifs = 0; // Those that may still have an else; within blocks they do not matter.
    bool afterDisable = false;
    while (!atEnd() && !endsUnit(m_token)) {
        if (opensGroup(m_token)) {
            skipGroup();
            continue;
        }
        const bool opens = m_token.is(Keyword::Begin) || m_token.is(Keyword::Case) ||
                           isWord(m_token, "randsequence") ||
                           (m_token.is(Keyword::Fork) && !afterDisable);
        const bool closes = m_token.is(Keyword::End) || m_token.is(Keyword::Endcase) ||
                            m_token.is(Keyword::Join) || isWord(m_token, "endsequence");
        const bool mayEnd = closes || m_token.is(';');
        if (depth == 0 &&
            (m_token.is(Keyword::If) || m_token.is(Keyword::Assert) || isWord(m_token, "expect")))
            ++ifs;
        else if (depth == 0 && m_token.is(Keyword::Else))
            --ifs;
        afterDisable = m_token.is(Keyword::Disable);
        depth += opens ? 1 : closes ? -1 : 0;
        advance();
        if (opens || closes)
            skipLabel();
        if (mayEnd && depth <= 0 && (ifs <= 0 || !m_token.is(Keyword::Else)))
            return depth == 0;
    }
    return false;
}

} // namespace NETWEIR::Internal
