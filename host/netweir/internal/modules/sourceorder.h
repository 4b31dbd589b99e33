// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/verilog/scopescan.h>

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>
#include <QStringList>
#include <QVector>

namespace NETWEIR::Internal {

class PreprocessedText;
struct DesignSources;

/// One file that the elaborator is given.
struct TextPiece
{
    int text = -1;
    /// Indexes in the text's scopes, in the order of the text, of the blocks that alone are in it.
    /// Empty for what is left of the text.
    QVector<int> blocks;
};

/// The order in which the elaborator reads the texts: packages and types come before their uses,
/// and everything else stays in the order of the project.
///
/// Packages of library files or behind a use in their file, and packages, types and imports of
/// files that need each other, come first, as pieces of their own. Time and memory are linear in
/// the texts, unless files need each other by turns: each piece has as many lines as stand in front
/// of it in its file.
class SourceOrder
{
public:
    SourceOrder(const DesignSources &sources, const PreprocessedText &text);

    const QVector<TextPiece> &pieces() const { return m_pieces; }

    /// Types that any text declares.
    const QSet<QByteArray> &types() const { return m_types; }

    /// Content of a piece, made of @p text, which is as long as the text that was scanned. Line and
    /// column of everything in it stay.
    QByteArray contentOf(const TextPiece &piece, const QByteArray &text) const;

    /// What cannot be put into order: packages that import each other in a circle, and imports of
    /// packages that no file declares.
    QStringList errors() const;

    /// Packages that are declared twice.
    QStringList warnings() const;

    /// Names in front of a "::" that are neither packages nor types. A reason when the elaborator
    /// fails.
    QStringList suspicions() const;

    /// The packages and other names that errors() and suspicions() name as undeclared, in the order
    /// of their uses.
    QByteArrayList missingPackages() const;

    /// Whether a text uses what errors() or suspicions() name.
    bool usesMissing(int text) const { return m_usesMissing[text]; }

private:
    /// Where a block is.
    struct BlockPlace
    {
        int text;
        int block; ///< Index in the scopes of the text.
    };

    bool mayUseScopes(int text) const;
    void scan();
    void indexBlocks();
    void findMissing();
    void findTypeUses();
    QHash<QByteArray, QVector<int>> typeOwners() const;
    void noteTypeUse(int text, const NameMention &mention, int user, const QVector<int> &owners);
    void findOrder();
    void hoistPackages();
    void hoist(int id);
    void hoistFor(int user, int text);
    void appendHoisted(int id);
    QVector<int> orderOfTexts();
    QVector<int> neededTexts(int text) const;
    QVector<int> neededBlocks(int id) const;
    QVector<int> neededPackages(int id) const;
    QByteArray textWithoutHoisted(int index, const QByteArray &text) const;
    QByteArray textOfBlocks(const TextPiece &piece, const QByteArray &text) const;
    QString circleError() const;
    QStringList messagesOfMissing(bool imported) const;
    QHash<QByteArray, QString> misreadPackages() const;
    bool isMissing(const PackageUse &use) const;
    QVector<PackageUse> usesOf(int text) const;
    bool usesPackageOf(int text, int id) const;
    QString messageAt(int text, const PackageUse &use, const QString &words) const;
    const ScopeBlock &block(int id) const;

    const DesignSources &m_sources;
    const PreprocessedText &m_text;
    QVector<TextScopes> m_scopes;             ///< By text.
    QVector<BlockPlace> m_blocks;             ///< By their ids. Of packages those that uses mean.
    QHash<QByteArray, int> m_packageOf;       ///< Id of a package; sources win over libraries.
    QVector<QVector<int>> m_blocksOf;         ///< By text: ids.
    QSet<QByteArray> m_types;                 ///< All of the design.
    QVector<bool> m_usesMissing;              ///< By text.
    QVector<QSet<QByteArray>> m_usedPackages; ///< By text.
    QVector<QVector<int>> m_typesOfText;      ///< By text: ids of types of others that it uses.
    QVector<QVector<int>> m_typesOfBlock;     ///< By id: ids of the types that it uses.
    QVector<bool> m_hoisted;                  ///< By id: comes first, in a piece of its own.
    QVector<TextPiece> m_pieces;
};

} // namespace NETWEIR::Internal
