// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QVector>

namespace NETWEIR::Internal {

class DesignScopes;
struct TypeUses;

/// One file that the elaborator is given.
struct TextPiece
{
    int text = -1;
    /// The blocks of which it consists, as indexes in the text's scopes, in the order of the text.
    /// Empty for the rest of the text.
    QVector<int> blocks;
};

/// The order in which the elaborator reads the texts: packages and types come before their uses,
/// and everything else stays in the order of the project.
///
/// Some blocks are hoisted: they come first, as separate pieces. These are packages of library
/// files, packages that their own file uses before it declares them, and packages, types and
/// imports of files that need each other. Time and memory are linear in the texts, unless files
/// need each other by turns: each piece has as many lines as there are before it in its file.
class SourceOrder
{
public:
    /// @p scopes must outlive this object.
    SourceOrder(const DesignScopes &scopes, const TypeUses &types);

    const QVector<TextPiece> &pieces() const { return m_pieces; }

    /// The content of a piece, made of @p text, which is as long as the scanned text. Lines and
    /// columns do not change.
    QByteArray contentOf(const TextPiece &piece, const QByteArray &text) const;

private:
    QByteArray textWithoutHoisted(int index, const QByteArray &text) const;
    QByteArray textOfBlocks(const TextPiece &piece, const QByteArray &text) const;

    const DesignScopes &m_scopes;
    QVector<bool> m_hoisted; ///< By id of a block.
    QVector<TextPiece> m_pieces;
};

} // namespace NETWEIR::Internal
