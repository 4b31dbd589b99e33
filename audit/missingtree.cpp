// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "missingtree.h"

#include <algorithm>

namespace TARN {

namespace {

// How likely it is that a level of the path went or came. Less than that a name changed a bit.
constexpr float LevelRemoved = 0.5F;
constexpr float LevelInserted = 0.6F;
constexpr float LeastLikeness = 0.25F;
constexpr int MostChildren = 32; ///< That are looked into for an inserted level.

} // namespace

int MissingTree::add(const MissingPath &path)
{
    int node = -1;
    for (const QStringView level : path.levels)
        node = addChild(node, level, path.name);
    return node;
}

/// The child of that name, which is added when there is none. @p level points into @p sample.
int MissingTree::addChild(int parent, QStringView level, const QString &sample)
{
    const quint64 key = joinedHash(quint64(parent), textHash(level));
    const auto [first, added] = m_children.try_emplace(key, int(m_nodes.size()));
    for (int child = added ? -1 : first->second; child != -1; child = nodeAt(child).same) {
        if (nodeAt(child).parent == parent && nameOf(child) == level)
            return child;
    }
    Node node;
    node.parent = parent;
    node.sample = sample;
    node.start = int(level.data() - sample.constData());
    node.length = node.start + int(level.size());
    node.same = added ? -1 : first->second;
    first->second = int(m_nodes.size());
    m_nodes.push_back(node);
    return first->second;
}

QStringView MissingTree::nameOf(int path) const
{
    const Node &node = nodeAt(path);
    return QStringView(node.sample).mid(node.start, node.length - node.start);
}

int MissingTree::instanceOf(int path) const
{
    const std::vector<Guess> &guesses = guessesOf(path);
    return guesses.empty() || guesses.front().likeness < 1 ? -1 : guesses.front().instance;
}

int MissingTree::guess(int path)
{
    std::vector<int> open;
    for (int node = path; node != -1 && !nodeAt(node).guessed; node = parentOf(node))
        open.push_back(node);
    for (auto node = open.crbegin(); node != open.crend(); ++node) {
        if (nodeAt(*node).parent == -1) {
            guessTop(&nodeAt(*node));
            continue;
        }
        const int unprepared = guessBelow(&nodeAt(*node));
        if (unprepared != -1)
            return unprepared;
    }
    return -1;
}

void MissingTree::guessTop(Node *node) const
{
    node->guessed = true;
    const QStringView name = QStringView(node->sample).left(node->length);
    if (name == m_index.nameOf(0)) {
        node->guesses = {{0, 1}};
        return;
    }
    // There is one top, so a design with another one is probably the same under another name. But a
    // name below it may be as good.
    constexpr float OtherTop = 0.8F;
    node->guesses = {{0, OtherTop}};
    const int child = m_index.childOf(0, name);
    if (child != -1)
        node->guesses.insert(node->guesses.begin(), {child, 0.9F});
}

/// Returns an instance to prepare, or -1.
int MissingTree::guessBelow(Node *node) const
{
    const std::vector<Guess> &above = nodeAt(node->parent).guesses;
    const QStringView name = QStringView(node->sample).mid(node->start, node->length - node->start);
    std::vector<Guess> guesses;
    const int exact = above.empty() || above.front().likeness < 1
                          ? -1
                          : m_index.childOf(above.front().instance, name);
    if (exact != -1) {
        guesses.push_back({exact, 1});
    } else {
        for (const Guess &guess : above) {
            if (!m_index.isPrepared(guess.instance))
                return guess.instance;
        }
        for (const Guess &guess : above)
            guessFrom(guess, name, &guesses);
    }
    std::sort(guesses.begin(), guesses.end(), [](const Guess &a, const Guess &b) {
        return a.likeness != b.likeness ? a.likeness > b.likeness : a.instance < b.instance;
    });
    for (const Guess &guess : guesses) {
        const bool known =
            std::any_of(node->guesses.cbegin(), node->guesses.cend(),
                        [&guess](const Guess &other) { return other.instance == guess.instance; });
        if (!known && node->guesses.size() < MaximumGuesses && guess.likeness >= LeastLikeness)
            node->guesses.push_back(guess);
    }
    node->guessed = true;
    return -1;
}

void MissingTree::guessFrom(const Guess &above, QStringView name, std::vector<Guess> *guesses) const
{
    constexpr float Nearly = 0.99F; // Only the very path has 1.
    const float likely = std::min(above.likeness, Nearly);
    guesses->push_back({above.instance, likely * LevelRemoved});
    const int exact = m_index.childOf(above.instance, name);
    if (exact != -1) {
        guesses->push_back({exact, likely});
        return;
    }
    const NameTokens tokens(name);
    std::vector<int> children;
    m_index.findSimilarChildren(above.instance, tokens, &children);
    for (const int child : children) {
        const float alike = likeness(tokens, NameTokens(m_index.nameOf(child)));
        guesses->push_back({child, likely * std::min(alike, Nearly)});
    }
    const int first = m_index.firstChildOf(above.instance);
    const int count = std::min(m_index.childCountOf(above.instance), MostChildren);
    for (int child = first; child < first + count; ++child) {
        const int grandchild = m_index.childOf(child, name);
        if (grandchild != -1)
            guesses->push_back({grandchild, likely * LevelInserted});
    }
}

} // namespace TARN
