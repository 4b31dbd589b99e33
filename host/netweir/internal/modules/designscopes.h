// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/verilog/scopescan.h>

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QVector>

namespace NETWEIR::Internal {

class PreprocessedText;
struct DesignSources;

/// The scopes of all texts of a design. Each block has an id; blocks of the sources come before
/// blocks of libraries. If several packages share a name, only the first has an id. Time and memory
/// are linear in the texts.
class DesignScopes
{
public:
    DesignScopes(const DesignSources &sources, const PreprocessedText &text);

    int texts() const { return m_scopes.size(); }
    const TextScopes &scopes(int text) const { return m_scopes[text]; }
    bool isLibrary(int text) const { return m_isLibrary[text]; }
    /// The packages that a text uses, in the order of the text.
    const QVector<PackageUse> &usesOf(int text) const { return m_uses[text]; }
    bool uses(int text, const QByteArray &package) const
    {
        return m_usedPackages[text].contains(package);
    }
    const QVector<int> &blocksOf(int text) const { return m_blocksOf[text]; }

    int blocks() const { return m_blocks.size(); }
    const ScopeBlock &block(int id) const;
    int textOf(int id) const { return m_blocks[id].text; }
    /// The index of a block in the scopes of its text.
    int indexOf(int id) const { return m_blocks[id].index; }
    /// The id of a package, -1 when no file declares it.
    int package(const QByteArray &name) const { return m_packages.value(name, -1); }
    /// Ids of the other packages that a block uses.
    QVector<int> packagesNeededBy(int id) const;

    /// Types that any text declares.
    const QSet<QByteArray> &types() const { return m_types; }

private:
    struct BlockIndex
    {
        int text;
        int index;
    };

    void numberBlocks();

    QVector<TextScopes> m_scopes;             ///< By text.
    QVector<bool> m_isLibrary;                ///< By text.
    QVector<QVector<PackageUse>> m_uses;      ///< By text.
    QVector<QSet<QByteArray>> m_usedPackages; ///< By text, for a quick search.
    QVector<BlockIndex> m_blocks;             ///< By id.
    QVector<QVector<int>> m_blocksOf;         ///< By text: ids.
    QHash<QByteArray, int> m_packages;        ///< Ids by name.
    QSet<QByteArray> m_types;
};

/// Whether a text may have scopes: Verilog has neither packages nor types.
bool mayUseScopes(const DesignSources &sources, const PreprocessedText &text, int index);

} // namespace NETWEIR::Internal
