// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "sourceorder.h"

#include "designscopes.h"
#include "typeuses.h"

#include <netweir/internal/ground/depthfirstwalk.h>
#include <netweir/internal/ground/textrange.h>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

/// Finds the blocks to be hoisted and the order of the pieces.
class OrderFinder
{
public:
    OrderFinder(const DesignScopes &scopes, const TypeUses &types)
        : m_scopes(scopes)
        , m_types(types)
        , m_hoisted(scopes.blocks(), false)
    {
    }

    void run();

    const QVector<bool> &hoisted() const { return m_hoisted; }
    const QVector<TextPiece> &pieces() const { return m_pieces; }

private:
    void hoistPackages();
    void hoist(int id);
    void hoistFor(int user, int text);
    QVector<int> orderOfTexts();
    QVector<int> neededTexts(int text) const;
    QVector<int> neededBlocks(int id) const;
    void appendBlock(int id);

    const DesignScopes &m_scopes;
    const TypeUses &m_types;
    QVector<bool> m_hoisted;
    QVector<TextPiece> m_pieces;
};

void OrderFinder::run()
{
    hoistPackages();
    const QVector<int> texts = orderOfTexts();
    DepthFirstWalk walk(m_scopes.blocks());
    for (int id = 0; id < m_scopes.blocks(); ++id) {
        if (m_hoisted[id])
            walk.visit(
                id, [this](int block) { return neededBlocks(block); },
                [this](int block) { appendBlock(block); }, [](int, int) {});
    }
    for (const int text : texts)
        m_pieces.append(TextPiece{text, {}});
}

/// Successive blocks in the order of their text share a piece.
void OrderFinder::appendBlock(int id)
{
    const int text = m_scopes.textOf(id);
    const int index = m_scopes.indexOf(id);
    if (m_pieces.isEmpty() || m_pieces.last().text != text || m_pieces.last().blocks.last() > index)
        m_pieces.append(TextPiece{text, {}});
    m_pieces.last().blocks.append(index);
}

/// Packages of library files, which the elaborator reads last, and packages that their own file
/// uses before it declares them.
void OrderFinder::hoistPackages()
{
    for (int text = 0; text < m_scopes.texts(); ++text) {
        for (const PackageUse &use : m_scopes.usesOf(text)) {
            const int package = m_scopes.package(use.package);
            if (package < 0)
                continue;
            const int owner = m_scopes.textOf(package);
            const bool isBehind = use.offset < m_scopes.block(package).range.begin;
            if (owner == text ? isBehind : m_scopes.isLibrary(owner))
                hoist(package);
        }
    }
}

/// Also hoists the blocks that it needs.
void OrderFinder::hoist(int id)
{
    QVector<int> pending = {id};
    while (!pending.isEmpty()) {
        const int next = pending.takeLast();
        if (m_hoisted[next])
            continue;
        m_hoisted[next] = true;
        pending += neededBlocks(next);
    }
}

/// Hoists the blocks of @p text that @p user needs.
void OrderFinder::hoistFor(int user, int text)
{
    for (const PackageUse &use : m_scopes.usesOf(user)) {
        const int package = m_scopes.package(use.package);
        if (package >= 0 && m_scopes.textOf(package) == text)
            hoist(package);
    }
    for (const int type : m_types.ofText[user]) {
        if (m_scopes.textOf(type) == text)
            hoist(type);
    }
}

/// If texts need each other, the blocks that they need are hoisted.
QVector<int> OrderFinder::orderOfTexts()
{
    QVector<int> result;
    DepthFirstWalk walk(m_scopes.texts());
    for (int i = 0; i < m_scopes.texts(); ++i) {
        walk.visit(
            i, [this](int text) { return neededTexts(text); },
            [&result](int text) { result.append(text); },
            [this](int user, int text) { hoistFor(user, text); });
    }
    return result;
}

/// Other texts that a text needs: first for packages, in the order of their uses, then for types.
QVector<int> OrderFinder::neededTexts(int text) const
{
    QVector<int> result;
    for (const PackageUse &use : m_scopes.usesOf(text)) {
        const int package = m_scopes.package(use.package);
        if (package >= 0 && !m_hoisted[package] && m_scopes.textOf(package) != text)
            result.append(m_scopes.textOf(package));
    }
    for (const int type : m_types.ofText[text]) {
        if (!m_hoisted[type])
            result.append(m_scopes.textOf(type));
    }
    return result;
}

/// The blocks that must come before a hoisted block.
QVector<int> OrderFinder::neededBlocks(int id) const
{
    return m_types.ofBlock[id] + m_scopes.packagesNeededBy(id);
}

/// Appends the line ends of a range, and blanks in place of the part of its last line.
void appendBlank(QByteArray *result, const QByteArray &text, const TextRange &range)
{
    const auto lines = std::count(text.begin() + range.begin, text.begin() + range.end, '\n');
    result->append(int(lines), '\n');
    result->append(range.end - qMax(range.begin, lineStart(text, range.end)), ' ');
}

} // namespace

SourceOrder::SourceOrder(const DesignScopes &scopes, const TypeUses &types)
    : m_scopes(scopes)
{
    OrderFinder finder(scopes, types);
    finder.run();
    m_hoisted = finder.hoisted();
    m_pieces = finder.pieces();
}

QByteArray SourceOrder::contentOf(const TextPiece &piece, const QByteArray &text) const
{
    return piece.blocks.isEmpty() ? textWithoutHoisted(piece.text, text)
                                  : textOfBlocks(piece, text);
}

QByteArray SourceOrder::textWithoutHoisted(int index, const QByteArray &text) const
{
    QByteArray result = text;
    for (const int id : m_scopes.blocksOf(index)) {
        if (m_hoisted[id])
            blank(&result, m_scopes.block(id).range);
    }
    return result;
}

QByteArray SourceOrder::textOfBlocks(const TextPiece &piece, const QByteArray &text) const
{
    QByteArray result;
    int end = 0;
    for (const int index : piece.blocks) {
        const TextRange &range = m_scopes.scopes(piece.text).blocks[index].range;
        appendBlank(&result, text, {end, range.begin});
        result += text.mid(range.begin, range.end - range.begin);
        end = range.end;
    }
    return result + '\n';
}

} // namespace NETWEIR::Internal
