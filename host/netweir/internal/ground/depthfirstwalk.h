// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QVector>

namespace NETWEIR::Internal {

/// A depth-first walk over a graph, without recursion.
class DepthFirstWalk
{
public:
    explicit DepthFirstWalk(int nodes)
        : m_states(nodes, New)
    {
    }

    /// Visits @p start and all that it needs, unless they have been visited. @p needed returns the
    /// nodes that a node needs. @p leave is called for each node, after the nodes that it needs.
    /// @p close is called with both ends of an edge that closes a circle; the walk does not follow
    /// that edge.
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

    /// The nodes of the first circle that is found from @p starts, in the order of the edges. Empty
    /// when there is none.
    template <typename Needed>
    static QVector<int> firstCircle(int nodes, const QVector<int> &starts, const Needed &needed)
    {
        DepthFirstWalk walk(nodes);
        QVector<int> circle;
        for (const int start : starts) {
            walk.visit(
                start, needed, [](int) {},
                [&walk, &circle](int, int node) {
                    if (circle.isEmpty())
                        circle = walk.pathFrom(node);
                });
            if (!circle.isEmpty())
                break;
        }
        return circle;
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

    QVector<char> m_states;
    QVector<Step> m_path;
};

} // namespace NETWEIR::Internal
