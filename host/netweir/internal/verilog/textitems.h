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

/// The items of a preprocessed text that can be left out on their own. Any text is accepted; the
/// ends of items are looked for when they are asked for.
class TextItems
{
public:
    TextItems(const QByteArray &text, bool systemVerilog);

    /// The items around a position, in the order in which they are given up.
    QVector<TextItem> around(int line, int column) const;
    int offsetOf(int line, int column) const;

    /// The items that use any of @p declared, which are left out, as far as they can be left out as
    /// well. One pass over the text.
    QVector<TextItem> usersOf(const QVector<TextItem> &declared) const;

    /// What the process @p item may write, or the statements behind an assertion: the left sides of
    /// assignments and the arguments of tasks, but for variables of its own.
    QVector<WrittenName> writtenBy(const TextItem &item) const;

    /// True when @p item has a word for what the elaborator's grammar does not know at all, so that
    /// it takes it for a fault of the source.
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
    QVector<int> m_lines; ///< Where each line begins.
};

} // namespace NETWEIR::Internal
