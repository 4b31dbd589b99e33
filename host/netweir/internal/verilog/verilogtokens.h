// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "token.h"

#include <netweir/internal/ground/textrange.h>

#include <QByteArray>

#include <string_view>

namespace NETWEIR::Internal {

/// Splits preprocessed Verilog text into tokens. Skips comments, the contents of strings, and
/// directives. Accepts any text and reads each byte a constant number of times.
///
/// Copying saves the position.
class VerilogTokens
{
public:
    VerilogTokens(const QByteArray &text, bool systemVerilog);
    /// The tokens of a range. Offsets count from the beginning of @p text, lines from the beginning
    /// of the range.
    VerilogTokens(const QByteArray &text, bool systemVerilog, const TextRange &range);

    Token next();

    /// The end offset of the last token.
    int position() const { return int(m_at - m_text); }

private:
    bool skipBlanks();
    bool skipComment();
    void skipDirective();
    bool skipTime();
    std::string_view takeLine();
    void skipBasedNumber();
    void takeName(Token *token);
    void takeSign(Token *token);
    std::string_view takeWord();
    std::string_view takeEscapedName();
    void skipString();
    bool atEnd() const { return m_at == m_end; }
    bool isAt(char c) const { return m_at != m_end && *m_at == c; }
    char peek() const { return m_end - m_at > 1 ? m_at[1] : '\0'; }

    const char *m_text;
    const char *m_at;
    const char *m_end;
    int m_line = 1;
    bool m_systemVerilog;
    bool m_fileIsSystemVerilog;
};

} // namespace NETWEIR::Internal
