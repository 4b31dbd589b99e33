// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "designindex.h"
#include "missingpath.h"

#include <deque>
#include <unordered_map>
#include <vector>

namespace TARN {

/// The paths of missing names as a tree, and for each of its instances where it may be in the
/// design now. Instances that many names have in common are looked for once. Grows with the names.
class MissingTree
{
public:
    /// An instance of the design that may be the one of a path.
    struct Guess
    {
        int instance;
        float likeness; ///< 1 when it is the very path.
    };

    explicit MissingTree(const DesignIndex &index)
        : m_index(index)
    {
    }

    /// The number of the path, -1 for no levels. Its parts are added, without guesses.
    int add(const MissingPath &path);

    /// Makes guesses for the path and all above, as far as there are none yet. Returns the instance
    /// that has to be prepared first, or -1 when all is done.
    int guess(int path);

    /// The best first, at most MaximumGuesses.
    const std::vector<Guess> &guessesOf(int path) const { return nodeAt(path).guesses; }
    /// The instance with that very path, -1 when there is none.
    int instanceOf(int path) const;

    int parentOf(int path) const { return nodeAt(path).parent; }
    QStringView nameOf(int path) const;
    QString pathOf(int path) const { return nodeAt(path).sample.left(nodeAt(path).length); }

private:
    static constexpr std::size_t MaximumGuesses = 4;

    struct Node
    {
        int parent = -1;
        QString sample; ///< A name that begins with the path.
        int start = 0;  ///< Of the last level in it.
        int length = 0; ///< Of the path.
        int same = -1;  ///< Another node with the same hash.
        bool guessed = false;
        std::vector<Guess> guesses;
    };

    int addChild(int parent, QStringView level, const QString &sample);
    Node &nodeAt(int path) { return m_nodes[std::size_t(path)]; }
    const Node &nodeAt(int path) const { return m_nodes[std::size_t(path)]; }
    void guessTop(Node *node) const;
    int guessBelow(Node *node) const;
    void guessFrom(const Guess &above, QStringView name, std::vector<Guess> *guesses) const;

    const DesignIndex &m_index;
    std::deque<Node> m_nodes;
    std::unordered_map<quint64, int> m_children; ///< The first by a hash of parent and name.
};

} // namespace TARN
