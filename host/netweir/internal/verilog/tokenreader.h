// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "verilogtokens.h"

namespace NETWEIR::Internal {

/// Looks one token ahead and knows where the last one ended. Groups are what stands in brackets of
/// any kind. Nothing skips the end of a module, but for advance().
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
    /// Offset behind the token in front of this one.
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
