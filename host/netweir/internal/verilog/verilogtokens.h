// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <string_view>

namespace NETWEIR::Internal {

/// The keywords that the module scan acts on. The others only have to be told from identifiers.
enum class Keyword {
    None,
    Other,
    Alias,
    Always,
    Assert,
    Begin,
    Bind,
    Case,
    Checker,
    Class,
    Clocking,
    Config,
    Covergroup,
    Default,
    Defparam,
    Disable,
    Else,
    End,
    Endcase,
    Endchecker,
    Endclass,
    Endclocking,
    Endconfig,
    Endfunction,
    Endgenerate,
    Endgroup,
    Endinterface,
    Endmodule,
    Endpackage,
    Endprimitive,
    Endprogram,
    Endproperty,
    Endsequence,
    Endspecify,
    Endtask,
    Extern,
    For,
    Fork,
    Function,
    Generate,
    If,
    Interface,
    Join,
    Module,
    Package,
    Primitive,
    Program,
    Property,
    Sequence,
    Specify,
    Task,
    Tran,
    Typedef,
    Virtual,
};

/// One token; its text lies in the scanned text.
struct Token
{
    enum Kind { EndOfText, Identifier, Reserved, Number, String, Punctuation };

    Kind kind = EndOfText;
    Keyword keyword = Keyword::None;
    char punctuation = 0;        ///< 'c' stands for the two colons of a scope.
    std::string_view text;       ///< Of an escaped identifier without the backslash.
    const char *place = nullptr; ///< Its first character in the scanned text.
    int line = 0;

    bool is(char character) const { return kind == Punctuation && punctuation == character; }
    bool is(Keyword word) const { return kind == Reserved && keyword == word; }
};

inline QByteArray toBytes(std::string_view text)
{
    return QByteArray(text.data(), int(text.size()));
}

/// At the end keyword of a module or of one of its relatives.
bool endsUnit(const Token &token);
bool opensGroup(const Token &token);
bool closesGroup(const Token &token);
/// True for an identifier or a keyword that reads @p word.
bool isWord(const Token &token, std::string_view word);

/// Whether SystemVerilog reserves @p word and Verilog does not.
bool isSystemVerilogWord(const QByteArray &word);

/// Splits preprocessed Verilog text into tokens. Skips comments, strings' contents and directives.
/// Any text is accepted; each byte is looked at a constant number of times.
///
/// Copying saves the position.
class VerilogTokens
{
public:
    VerilogTokens(const QByteArray &text, bool systemVerilog);

    Token next();

    /// Behind the last token.
    const char *position() const { return m_at; }

private:
    bool skipBlanks();
    bool skipComment();
    void skipDirective();
    void skipDirectiveArguments(std::string_view directive);
    void skipLine();
    void skipBasedNumber();
    std::string_view word();
    std::string_view escapedName();
    void skipString();
    bool atEnd() const { return m_at == m_end; }
    char peek(int ahead = 1) const { return m_end - m_at > ahead ? m_at[ahead] : '\0'; }

    const char *m_at;
    const char *m_end;
    int m_line = 1;
    bool m_systemVerilog;
    bool m_fileIsSystemVerilog;
};

} // namespace NETWEIR::Internal
