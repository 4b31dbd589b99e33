// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "vhdlkeywords.h"

#include <netweir/internal/ground/textrange.h>

#include <QByteArray>

#include <string_view>

namespace NETWEIR::Internal {

/// One token of VHDL text; its text lies in the scanned text.
struct VhdlToken
{
    enum Kind {
        EndOfText,
        Identifier,
        Reserved,
        Number,
        Character,
        String,
        BitString,
        Punctuation,
        Comment ///< Only where they are asked for.
    };

    /// The values of punctuation for signs of two characters. All other signs stand for themselves.
    enum Sign : char {
        Arrow = 'a',        ///< =>
        Becomes = 'b',      ///< :=
        LessOrEqual = 'l',  ///< <= as comparison and as assignment
        Comparison = 'c',   ///< /= >= ?= ?/= ?< ?<= ?> ?>=
        Box = 'x',          ///< <>
        Power = 'p',        ///< **
        Condition = 'q',    ///< ??
        OpenExternal = 'o', ///< <<
        CloseExternal = 'e' ///< >>
    };

    Kind kind = EndOfText;
    VhdlKeyword keyword = VhdlKeyword::None;
    char punctuation = 0;
    bool extended = false; ///< An identifier between backslashes, which belong to its text.
    std::string_view text; ///< As written, with all delimiters.
    int offset = 0;
    int line = 0;   ///< Counted from 1.
    int column = 0; ///< In bytes, counted from 1.

    bool is(char sign) const { return kind == Punctuation && punctuation == sign; }
    bool is(VhdlKeyword word) const { return kind == Reserved && keyword == word; }
    /// An identifier that reads @p word, which is in lower case: one of the words that only some
    /// editions reserve.
    bool isWord(std::string_view word) const;
    bool isName() const { return kind == Identifier; }
    int end() const { return offset + int(text.size()); }
    QByteArray bytes() const { return QByteArray(text.data(), int(text.size())); }
};

/// Splits VHDL text into tokens. Accepts any bytes, NUL too, and reads each of
/// them a constant number of times. A string, an extended identifier or a bit string without an end
/// extends to the end of its line, a block comment to the end of the text.
///
/// Refers to the text; copying saves the position.
class VhdlTokens
{
public:
    enum Comments { SkipComments, KeepComments };

    explicit VhdlTokens(const QByteArray &text, Comments comments = SkipComments);
    /// The tokens of a range that begins between two tokens. Offsets count from the beginning of
    /// @p text; @p line and @p column belong to the beginning of the range.
    VhdlTokens(const QByteArray &text, const TextRange &range, int line = 1, int column = 1);

    /// Throws ReadingEnded if a ReadGuard says so.
    VhdlToken next();

private:
    void skipBlanks();
    bool isAtComment() const;
    void skipComment();
    void countLine();
    void takeWord(VhdlToken *token);
    void takeNumber(VhdlToken *token);
    void takeQuoted(char quote);
    void takeSign(VhdlToken *token);
    int characterLength() const;
    char at(int ahead) const { return m_end - m_at > ahead ? m_at[ahead] : '\0'; }

    const char *m_text;
    const char *m_at;
    const char *m_end;
    const char *m_lineStart;
    int m_line = 1;
    /// A tick after a name or a closing bracket is an attribute and begins no character.
    bool m_afterName = false;
    bool m_keepsComments = false;
};

} // namespace NETWEIR::Internal
