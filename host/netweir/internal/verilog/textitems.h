// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "itemstarts.h"
#include "textitem.h"
#include "writtennames.h"

#include <QByteArray>
#include <QVector>

namespace NETWEIR::Internal {

class TokenReader;

/// The items of a preprocessed text that can be left out individually. Accepts any text. Searches
/// the end of an item only when it is needed.
class TextItems
{
public:
    TextItems(const QByteArray &text, bool systemVerilog);

    /// The items around a position, in the order in which they are left out.
    QVector<TextItem> around(int line, int column) const;
    int offsetOf(int line, int column) const;

    /// The items that use any of @p declared, names that are left out, and can be left out
    /// themselves. One pass over the text.
    QVector<TextItem> usersOf(const QVector<TextItem> &declared) const;

    /// The names that the process @p item, or the statements of an assertion, may write: the left
    /// sides of assignments and the arguments of tasks, except local variables.
    QVector<WrittenName> writtenBy(const TextItem &item) const;

    /// True when @p item contains a keyword that the grammar of the elaborator lacks, which it
    /// reports as a syntax error.
    bool isBeyondGrammar(const TextItem &item) const;

private:
    QVector<TextItem> around(int offset) const;
    TextItem userAt(const TokenReader &reader, const Token &previous,
                    const TextItem &declared) const;
    TextItem statementAt(TokenReader reader, const Token &previous) const;
    TextItem completed(const ItemStart &start) const;
    VerilogTokens tokensOf(const TextItem &item) const;

    QByteArray m_text;
    bool m_systemVerilog;
    QVector<ItemStart> m_starts;
    QVector<int> m_lines; ///< Offsets of the lines.
};

} // namespace NETWEIR::Internal
