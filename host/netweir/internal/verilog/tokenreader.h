// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "verilogtokens.h"

namespace NETWEIR::Internal {

/// Reads tokens with one token of look-ahead and knows the end of the last one. A group is text in
/// brackets of any kind. Only advance() skips the end of a module.
class TokenReader
{
public:
    explicit TokenReader(const VerilogTokens &tokens);
    /// @p token is the last one of @p tokens.
    TokenReader(const VerilogTokens &tokens, const Token &token);

    const Token &token() const { return m_token; }
    const VerilogTokens &tokens() const { return m_tokens; }
    Token following() const { return VerilogTokens(m_tokens).next(); }
    bool atEnd() const { return m_token.kind == Token::EndOfText; }
    /// At the end of the text or of a unit.
    bool atUnitEnd() const { return atEnd() || endsUnit(m_token); }
    bool atAttribute() const { return m_token.is('(') && following().is('*'); }
    /// End offset of the previous token.
    int end() const { return m_end; }

    void advance();
    /// Skips the token, or the whole group that begins with it.
    void advanceOverGroup();
    /// At an opening bracket: skips the group. Elsewhere does nothing. False when no group ends.
    bool skipGroup();
    /// (* ... *)
    void skipAttribute();
    /// ": NAME" behind a begin or an end.
    void skipLabel();
    /// Skips up to @p keyword, and it with its label.
    void skipPast(Keyword keyword);
    /// False when there is none.
    bool skipToSemicolon();
    /// Skips "constraint NAME { ... }" or a prototype. False when it has no end.
    bool skipConstraint();
    /// Skips a procedural statement. False when it has no end.
    bool skipStatement();

private:
    VerilogTokens m_tokens;
    Token m_token;
    int m_end = 0;
};

} // namespace NETWEIR::Internal
