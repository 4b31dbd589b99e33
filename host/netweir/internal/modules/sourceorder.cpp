// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "sourceorder.h"

#include <netweir/internal/ground/messages.h>
#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/sources/preprocessedtext.h>

#include <algorithm>
#include <utility>

namespace NETWEIR::Internal {

namespace {

/// A walk over a graph that leaves what a node needs before the node itself, without recursion.
class DepthFirstWalk
{
public:
    explicit DepthFirstWalk(int nodes)
        : m_states(nodes, New)
    {
    }

    /// Visits @p start if that has not been done. @p needed gives the nodes that one needs; @p
    /// leave is called for each node behind all that it needs. An edge that closes a circle is not
    /// followed; @p close is called with its ends.
    template <typename Needed, typename Leave, typename Close>
    void visit(int start, const Needed &needed, const Leave &leave, const Close &close)
    {
        enter(start, needed);
        while (!m_path.isEmpty()) {
            Step &step = m_path.last();
            if (step.next == step.needed.size()) {
                const int node = step.node;
                m_states[node] = Done;
                m_path.removeLast();
                leave(node);
                continue;
            }
            const int node = step.needed[step.next++];
            if (m_states[node] == Open)
                close(step.node, node);
            else
                enter(node, needed);
        }
    }

    /// The open nodes from @p node to the last one.
    QVector<int> pathFrom(int node) const
    {
        QVector<int> path;
        for (const Step &step : m_path) {
            if (!path.isEmpty() || step.node == node)
                path.append(step.node);
        }
        return path;
    }

private:
    enum State : char { New, Open, Done };

    struct Step
    {
        int node;
        QVector<int> needed;
        int next;
    };

    template <typename Needed>
    void enter(int node, const Needed &needed)
    {
        if (m_states[node] != New)
            return;
        m_states[node] = Open;
        m_path.append(Step{node, needed(node), 0});
    }

    QVector<char> m_states;
    QVector<Step> m_path;
};

int lineStart(const QByteArray &text, int offset)
{
    return offset == 0 ? 0 : text.lastIndexOf('\n', offset - 1) + 1;
}

/// Appends the line ends of a range, and blanks for the line that it ends in.
void appendBlank(QByteArray *result, const QByteArray &text, const TextRange &range)
{
    const auto lines = std::count(text.begin() + range.begin, text.begin() + range.end, '\n');
    result->append(int(lines), '\n');
    result->append(range.end - qMax(range.begin, lineStart(text, range.end)), ' ');
}

} // namespace

SourceOrder::SourceOrder(const DesignSources &sources, const PreprocessedText &text)
    : m_sources(sources)
    , m_text(text)
    , m_scopes(sources.files.size())
    , m_blocksOf(sources.files.size())
    , m_usedPackages(sources.files.size())
    , m_typesOfText(sources.files.size())
{
    scan();
    indexBlocks();
    findMissing();
    findTypeUses();
    findOrder();
}

/// Verilog has neither packages nor types.
bool SourceOrder::mayUseScopes(int text) const
{
    return isSystemVerilog(m_sources, text) || m_text.texts()[text].contains("`begin_keywords");
}

void SourceOrder::scan()
{
    for (int i = 0; i < m_scopes.size(); ++i) {
        if (mayUseScopes(i))
            m_scopes[i] = scanScopes(m_text.texts()[i], isSystemVerilog(m_sources, i));
        m_types.unite(m_scopes[i].types);
    }
}

void SourceOrder::indexBlocks()
{
    for (const bool library : {false, true}) {
        for (int i = 0; i < m_scopes.size(); ++i) {
            for (int k = 0; k < m_scopes[i].blocks.size(); ++k) {
                const QByteArray &name = m_scopes[i].blocks[k].package;
                if (m_sources.files[i].library != library || m_packageOf.contains(name))
                    continue;
                if (!name.isNull())
                    m_packageOf.insert(name, m_blocks.size());
                m_blocksOf[i].append(m_blocks.size());
                m_blocks.append({i, k});
            }
        }
    }
    m_hoisted.fill(false, m_blocks.size());
    m_typesOfBlock.resize(m_blocks.size());
}

void SourceOrder::findMissing()
{
    for (int i = 0; i < m_scopes.size(); ++i) {
        const QVector<PackageUse> uses = usesOf(i);
        m_usesMissing.append(std::any_of(uses.begin(), uses.end(),
                                         [this](const PackageUse &use) { return isMissing(use); }));
        for (const PackageUse &use : uses)
            m_usedPackages[i].insert(use.package);
    }
}

const ScopeBlock &SourceOrder::block(int id) const
{
    return m_scopes[m_blocks[id].text].blocks[m_blocks[id].block];
}

/// Ids of the types and imports that make a name known to all texts behind.
QHash<QByteArray, QVector<int>> SourceOrder::typeOwners() const
{
    QHash<QByteArray, QVector<int>> owners;
    for (int id = 0; id < m_blocks.size(); ++id) {
        if (!block(id).package.isNull())
            continue;
        for (const QByteArray &type : block(id).types)
            owners[type].append(id);
        for (const auto &import : block(id).imports) {
            const int package = m_packageOf.value(import.first, -1);
            const QSet<QByteArray> types = package < 0 ? QSet<QByteArray>() : block(package).types;
            for (const QByteArray &type : types) {
                if (import.second.isNull() || import.second == type)
                    owners[type].append(id);
            }
        }
    }
    return owners;
}

void SourceOrder::findTypeUses()
{
    const QHash<QByteArray, QVector<int>> owners = typeOwners();
    if (owners.isEmpty())
        return;
    const QList<QByteArray> keys = owners.keys();
    const QSet<QByteArray> names(keys.begin(), keys.end());
    for (int i = 0; i < m_scopes.size(); ++i) {
        if (!mayUseScopes(i))
            continue;
        int next = 0; // Of the blocks that end behind the mention.
        QSet<QPair<int, QByteArray>> seen;
        for (const NameMention &mention : mentionsOf(names, m_text.texts()[i])) {
            const QVector<int> &ids = m_blocksOf[i];
            while (next < ids.size() && block(ids[next]).range.end <= mention.offset)
                ++next;
            const bool inBlock =
                next < ids.size() && block(ids[next]).range.begin <= mention.offset;
            const int user = inBlock ? ids[next] : -1;
            if (seen.contains({user, mention.name}))
                continue;
            seen.insert({user, mention.name});
            noteTypeUse(i, mention, user, owners[mention.name]);
        }
    }
}

/// A mention in block @p user, or outside of all blocks. A type of the same text counts first.
void SourceOrder::noteTypeUse(int text, const NameMention &mention, int user,
                              const QVector<int> &owners)
{
    const auto own = std::find_if(owners.begin(), owners.end(),
                                  [this, text](int id) { return m_blocks[id].text == text; });
    if (own == owners.end() && m_scopes[text].types.contains(mention.name))
        return;
    const int owner = own == owners.end() ? owners.first() : *own;
    if (user >= 0 && owner != user && !block(user).types.contains(mention.name))
        m_typesOfBlock[user].append(owner);
    if (own == owners.end() && !usesPackageOf(text, owner))
        m_typesOfText[text].append(owner);
}

/// Whether a text says itself that it uses the package that an import brings.
bool SourceOrder::usesPackageOf(int text, int id) const
{
    const auto &imports = block(id).imports;
    return std::any_of(imports.begin(), imports.end(), [this, text](const auto &import) {
        return m_usedPackages[text].contains(import.first);
    });
}

/// In the order of the text.
QVector<PackageUse> SourceOrder::usesOf(int text) const
{
    QVector<PackageUse> result = m_scopes[text].uses;
    for (const ScopeBlock &block : m_scopes[text].blocks)
        result += block.uses;
    std::sort(result.begin(), result.end(),
              [](const PackageUse &a, const PackageUse &b) { return a.offset < b.offset; });
    return result;
}

void SourceOrder::findOrder()
{
    hoistPackages();
    const QVector<int> texts = orderOfTexts();
    DepthFirstWalk walk(m_blocks.size());
    for (int i = 0; i < m_blocks.size(); ++i) {
        if (m_hoisted[i])
            walk.visit(
                i, [this](int id) { return neededBlocks(id); },
                [this](int id) { appendHoisted(id); }, [](int, int) {});
    }
    for (const int text : texts)
        m_pieces.append(TextPiece{text, {}});
}

/// Blocks that follow each other in the order of their text share a piece.
void SourceOrder::appendHoisted(int id)
{
    const BlockPlace &place = m_blocks[id];
    if (m_pieces.isEmpty() || m_pieces.last().text != place.text ||
        m_pieces.last().blocks.last() > place.block)
        m_pieces.append(TextPiece{place.text, {}});
    m_pieces.last().blocks.append(place.block);
}

/// Packages of library files, which the elaborator reads last, and those behind a use in their own
/// file.
void SourceOrder::hoistPackages()
{
    for (int i = 0; i < m_scopes.size(); ++i) {
        for (const PackageUse &use : usesOf(i)) {
            const int package = m_packageOf.value(use.package, -1);
            if (package < 0)
                continue;
            const bool isOwn = m_blocks[package].text == i;
            const bool isLibrary = m_sources.files[m_blocks[package].text].library;
            if (isOwn ? use.offset < block(package).range.begin : isLibrary)
                hoist(package);
        }
    }
}

/// With the blocks that it needs.
void SourceOrder::hoist(int id)
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

/// What @p user needs of @p text.
void SourceOrder::hoistFor(int user, int text)
{
    for (const PackageUse &use : usesOf(user)) {
        const int package = m_packageOf.value(use.package, -1);
        if (package >= 0 && m_blocks[package].text == text)
            hoist(package);
    }
    for (const int type : m_typesOfText[user]) {
        if (m_blocks[type].text == text)
            hoist(type);
    }
}

/// Texts that need something of each other have it hoisted.
QVector<int> SourceOrder::orderOfTexts()
{
    QVector<int> result;
    DepthFirstWalk walk(m_scopes.size());
    for (int i = 0; i < m_scopes.size(); ++i) {
        walk.visit(
            i, [this](int text) { return neededTexts(text); },
            [&result](int text) { result.append(text); },
            [this](int user, int text) { hoistFor(user, text); });
    }
    return result;
}

/// Other texts, in the order of the uses; those of types last.
QVector<int> SourceOrder::neededTexts(int text) const
{
    QVector<int> result;
    for (const PackageUse &use : usesOf(text)) {
        const int package = m_packageOf.value(use.package, -1);
        if (package >= 0 && !m_hoisted[package] && m_blocks[package].text != text)
            result.append(m_blocks[package].text);
    }
    for (const int type : m_typesOfText[text]) {
        if (!m_hoisted[type])
            result.append(m_blocks[type].text);
    }
    return result;
}

/// What has to stand in front of a block that is hoisted.
QVector<int> SourceOrder::neededBlocks(int id) const
{
    return m_typesOfBlock[id] + neededPackages(id);
}

QVector<int> SourceOrder::neededPackages(int id) const
{
    QVector<int> result;
    for (const PackageUse &use : block(id).uses) {
        const int needed = m_packageOf.value(use.package, -1);
        if (needed >= 0 && needed != id)
            result.append(needed);
    }
    return result;
}

QByteArray SourceOrder::contentOf(const TextPiece &piece, const QByteArray &text) const
{
    return piece.blocks.isEmpty() ? textWithoutHoisted(piece.text, text)
                                  : textOfBlocks(piece, text);
}

QByteArray SourceOrder::textWithoutHoisted(int index, const QByteArray &text) const
{
    QByteArray result = text;
    for (const int id : m_blocksOf[index]) {
        if (m_hoisted[id])
            blank(&result, block(id).range);
    }
    return result;
}

QByteArray SourceOrder::textOfBlocks(const TextPiece &piece, const QByteArray &text) const
{
    QByteArray result;
    int end = 0;
    for (const int index : piece.blocks) {
        const TextRange &range = m_scopes[piece.text].blocks[index].range;
        appendBlank(&result, text, {end, range.begin});
        result += text.mid(range.begin, range.end - range.begin);
        end = range.end;
    }
    return result + '\n';
}

QStringList SourceOrder::errors() const
{
    QStringList result = messagesOfMissing(true);
    const QString circle = circleError();
    if (!circle.isEmpty())
        result.append(circle);
    return result;
}

/// The elaborator takes the first one without a word.
QStringList SourceOrder::warnings() const
{
    QStringList result;
    for (int i = 0; i < m_scopes.size(); ++i) {
        for (const ScopeBlock &block : m_scopes[i].blocks) {
            const BlockPlace known = m_blocks.value(m_packageOf.value(block.package, -1));
            const bool isSecond = !block.package.isNull() && !m_sources.files[i].library &&
                                  &block != &m_scopes[known.text].blocks[known.block];
            if (!isSecond)
                continue;
            const Place first =
                m_text.place({known.text, m_scopes[known.text].blocks[known.block].line});
            result.append(warningMessage(
                m_text.place({i, block.line}),
                Text::tr("The package \"%1\" is declared a second time; the first declaration, in "
                         "%2, is read.")
                    .arg(QString::fromUtf8(block.package), fileAndLine(first))));
        }
    }
    return result;
}

QStringList SourceOrder::suspicions() const
{
    return messagesOfMissing(false);
}

QByteArrayList SourceOrder::missingPackages() const
{
    QByteArrayList result;
    QSet<QByteArray> listed;
    for (int i = 0; i < m_scopes.size(); ++i) {
        for (const PackageUse &use : usesOf(i)) {
            if (isMissing(use) && !listed.contains(use.package)) {
                listed.insert(use.package);
                result.append(use.package);
            }
        }
    }
    return result;
}

/// A name in front of a "::" may be that of a class as well; that of an import may not.
bool SourceOrder::isMissing(const PackageUse &use) const
{
    return !m_packageOf.contains(use.package) && (use.imported || !m_types.contains(use.package));
}

QStringList SourceOrder::messagesOfMissing(bool imported) const
{
    struct First
    {
        int text;
        PackageUse use;
    };
    QVector<First> missing;
    QHash<QByteArray, int> indexes;
    for (int i = 0; i < m_scopes.size(); ++i) {
        for (const PackageUse &use : usesOf(i)) {
            if (!isMissing(use))
                continue;
            if (!indexes.contains(use.package)) {
                indexes.insert(use.package, missing.size());
                missing.append({i, use});
            }
            missing[indexes[use.package]].use.imported |= use.imported;
        }
    }
    const QHash<QByteArray, QString> misread =
        missing.isEmpty() ? QHash<QByteArray, QString>() : misreadPackages();
    QStringList result;
    for (const First &first : qAsConst(missing)) {
        if (first.use.imported != imported)
            continue;
        const QString name = QString::fromUtf8(first.use.package);
        const QString file = misread.value(first.use.package);
        const QString words =
            file.isEmpty()
                ? Text::tr("No file declares the package \"%1\". Add the file that declares it.")
                      .arg(name)
                : Text::tr("The package \"%1\" is declared in %2, which is read as Verilog.")
                          .arg(name, file) +
                      QLatin1Char(' ') + typeAdvice();
        result.append(messageAt(first.text, first.use, words));
    }
    return result;
}

/// Packages in texts that are read by the rules of Verilog, which has none, and their places.
QHash<QByteArray, QString> SourceOrder::misreadPackages() const
{
    QHash<QByteArray, QString> result;
    for (int i = 0; i < m_scopes.size(); ++i) {
        if (isSystemVerilog(m_sources, i))
            continue;
        for (const ScopeBlock &block : scanScopes(m_text.texts()[i], true).blocks) {
            const Place place = m_text.place({i, block.line});
            result.insert(block.package, fileAndLine(place));
        }
    }
    return result;
}

QString SourceOrder::circleError() const
{
    QVector<int> circle;
    DepthFirstWalk walk(m_blocks.size());
    for (int i = 0; i < m_blocks.size() && circle.isEmpty(); ++i) {
        walk.visit(
            i, [this](int package) { return neededPackages(package); }, [](int) {},
            [&walk, &circle](int, int package) {
                if (circle.isEmpty())
                    circle = walk.pathFrom(package);
            });
    }
    if (circle.isEmpty())
        return {};
    QStringList names;
    for (const int package : qAsConst(circle))
        names.append(QString::fromUtf8(block(package).package));
    names.append(names.first());
    const ScopeBlock &first = block(circle.first());
    const QByteArray &second = block(circle.size() > 1 ? circle[1] : circle[0]).package;
    const auto use =
        std::find_if(first.uses.begin(), first.uses.end(), [&second](const PackageUse &candidate) {
            return candidate.package == second;
        });
    return messageAt(m_blocks[circle.first()].text, *use,
                     Text::tr("Packages need each other in a circle (%1). Move what they share "
                              "into a package of its own.")
                         .arg(names.join(QLatin1String(" -> "))));
}

QString SourceOrder::messageAt(int text, const PackageUse &use, const QString &words) const
{
    Place place = m_text.place({text, use.line});
    const QByteArray &content = m_text.texts()[text];
    place.column = use.offset - lineStart(content, use.offset) + 1;
    return errorMessage(place, words);
}

} // namespace NETWEIR::Internal
