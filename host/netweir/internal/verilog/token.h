// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "keywords.h"

#include <QByteArray>

#include <string_view>

namespace NETWEIR::Internal {

/// One token; its text lies in the scanned text.
struct Token
{
    enum Kind { EndOfText, Identifier, Reserved, Number, String, Punctuation };

    /// The value of punctuation for the two colons of a scope.
    static constexpr char Scope = 'c';

    Kind kind = EndOfText;
    Keyword keyword = Keyword::None;
    char punctuation = 0;
    bool escaped = false;  ///< An identifier with a backslash in front.
    std::string_view text; ///< The text; for an escaped identifier without the backslash.
    int offset = 0;        ///< Offset of its first character, which may be a backslash.
    int line = 0;

    bool is(char character) const { return kind == Punctuation && punctuation == character; }
    bool is(Keyword word) const { return kind == Reserved && keyword == word; }
};

inline QByteArray toBytes(std::string_view text)
{
    return QByteArray(text.data(), int(text.size()));
}

/// At the end keyword of a module or a similar unit.
inline bool endsUnit(const Token &token)
{
    return token.is(Keyword::Endmodule) || token.is(Keyword::Endinterface) ||
           token.is(Keyword::Endprogram);
}

inline bool opensGroup(const Token &token)
{
    return token.is('(') || token.is('[') || token.is('{');
}

inline bool closesGroup(const Token &token)
{
    return token.is(')') || token.is(']') || token.is('}');
}

/// 1 for a word that opens a block of statements, -1 for a word that closes one, otherwise 0. @p
/// previous is the token before: in "disable fork" the word opens nothing.
int blockStep(const Token &token, const Token &previous);
/// True for an identifier or a keyword that reads @p word.
bool isWord(const Token &token, std::string_view word);
/// A name such as $display.
bool isSystemName(const Token &token);

} // namespace NETWEIR::Internal
