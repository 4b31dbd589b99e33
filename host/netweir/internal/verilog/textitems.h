// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "modulescan.h"
#include "verilogtokens.h"
#include "writtennames.h"

#include <QByteArray>
#include <QVector>

namespace NETWEIR::Internal {

class TokenReader;

/// A part of a text without which the rest can be read.
struct TextItem
{
    /// In the order in which items are given up: what is no hardware comes first.
    enum Kind {
        Assertion,
        Property,
        Sequence,
        Covergroup,
        Clocking, ///< "default disable iff" too.
        Let,
        Checker,
        Constraint, ///< Of a class.
        Config,
        Class,
        Statement, ///< Uses one of those above.
        Process,
        Module,     ///< Or a program.
        Assignment, ///< A continuous one, where the module around it has to stay.
        OtherUnit   ///< An interface, which nothing can stand in for.
    };

    bool isVerification() const { return kind <= Statement; }

    Kind kind = OtherUnit;
    TextRange range;
    int line = 0;
    int keyword = 0; ///< Offset of the word that it begins with, labels and attributes apart.
    QByteArray name; ///< What it declares, if anything.
    QByteArray unit; ///< The module it stands in or is; empty outside of modules.
};

/// The items of a preprocessed text that can be left out on their own. Any text is accepted; the
/// ends of items are looked for when they are asked for.
class TextItems
{
public:
    TextItems(const QByteArray &text, bool systemVerilog);

    /// The items around a place, in the order in which they are given up.
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
    /// The beginning of an item.
    struct Start
    {
        TextItem item;
        int unit = -1;       ///< Index of the start of the unit around it.
        int region = -1;     ///< The same of what has an end keyword of its own.
        int process = -1;    ///< Of the last process that began up to here.
        int assignment = -1; ///< Likewise.
        VerilogTokens after; ///< Stands behind @p word.
        Token word;          ///< Its keyword.
    };

    class Scanner;

    QVector<TextItem> around(int offset) const;
    TextItem userAt(const TokenReader &reader, const Token &previous,
                    const TextItem &declared) const;
    TextItem statementAt(TokenReader reader, const Token &previous) const;
    TextItem completed(const Start &start) const;
    VerilogTokens tokensOf(const TextItem &item) const;

    QByteArray m_text;
    bool m_systemVerilog;
    QVector<Start> m_starts; ///< In the order of the text.
    QVector<int> m_lines;    ///< Where each line begins.
};

} // namespace NETWEIR::Internal
