// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "vhdltokens.h"

#include <QByteArrayList>

#include <algorithm>
#include <array>

namespace NETWEIR::Internal {

/// Reads VHDL tokens with some look-ahead. A group is text in parentheses; where one has no end, it
/// ends in front of a word that no group can contain.
class VhdlReader
{
public:
    explicit VhdlReader(const VhdlTokens &tokens);

    /// The current token, or one of the tokens behind it. @p ahead is at most LookAhead.
    const VhdlToken &token(int ahead = 0) const { return m_window[std::size_t(ahead)]; }
    bool atEnd() const { return token().kind == VhdlToken::EndOfText; }
    /// The end offset of the token before.
    int end() const { return m_end; }
    /// From @p begin to the end of the token before; empty behind that if @p begin is further.
    TextRange rangeFrom(int begin) const { return {std::min(begin, m_end), m_end}; }

    /// At the beginning of an entity, architecture or configuration, which no unit can contain.
    bool atUnitStart() const;
    /// At the end of the text, or where a new unit begins although the last one has no end.
    bool atUnitEnd() const { return atEnd() || atUnitStart(); }
    /// At a word that begins or ends a region of code, which no group and no declaration contains.
    bool atRegionWord() const;

    void advance();
    /// Skips @p sign or @p word if it is here.
    bool skip(char sign);
    bool skip(VhdlKeyword word);
    /// At an opening parenthesis: skips the group. Elsewhere does nothing.
    void skipGroup();
    /// Skips all up to a semicolon, and it. Stops at a region word.
    void skipToSemicolon();
    /// Skips the rest of a statement up to its semicolon, whatever is in between.
    void skipStatement();
    /// Skips "process ... end process label;", at "process".
    void skipProcess();
    /// Skips the declaration, instance or body of a subprogram, at "function" or "procedure".
    void skipSubprogram();
    /// Skips what "end" closes, behind the word that opens it, up to the semicolon: the rest of a
    /// body, a protected type or a list of units.
    void skipBody();

    /// "a.b.all" as its components; empty where no name is.
    QByteArrayList takeSelectedName();

    static constexpr int LookAhead = 4;

private:
    void skipHeader(int *depth);

    VhdlTokens m_tokens;
    std::array<VhdlToken, LookAhead + 1> m_window;
    int m_end = 0;
};

/// A name, or a word in place of one.
bool isVhdlNameOrString(const VhdlToken &token);

} // namespace NETWEIR::Internal
