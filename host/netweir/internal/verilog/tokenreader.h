// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "verilogtokens.h"

namespace NETWEIR::Internal {

/// Looks one token ahead and knows where the last one ended. Groups are what stands in brackets of
/// any kind; nothing skips the end of a module.
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
    /// Where the token in front of this one ended.
    const char *end() const { return m_end; }

    void advance();
    void skipGroup();
    /// ": NAME" behind a begin or an end.
    void skipLabel();
    /// False when there is none.
    bool skipToSemicolon();
    /// Skips "constraint NAME { ... }" or a prototype. False when it has no end.
    bool skipConstraint();
    /// Skips a procedural statement. False when it has no end.
    bool skipStatement();

private:
    VerilogTokens m_tokens;
    Token m_token;
    const char *m_end = nullptr;
};

} // namespace NETWEIR::Internal
