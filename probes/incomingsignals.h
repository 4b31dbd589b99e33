// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "signalitem.h"

#include <QHash>
#include <QList>
#include <QString>

#include <vector>

namespace TARN {

/// Signals that are about to be added to a list. What the list shows already is struck from them.
///
/// Striking for a whole list takes time in proportion to the signals on both sides, members
/// included.
class IncomingSignals
{
public:
    explicit IncomingSignals(const QList<SignalItem> &items);

    /// Strikes the first signal with that name.
    void strikeFirst(const QString &name);

    /// Strikes what @p shown makes superfluous. True when, instead, an incoming bus covers @p
    /// shown.
    bool reconcile(const SignalItem &shown);

    /// The signals that are not struck, in their order.
    QList<SignalItem> left() const;

private:
    /// Positions in the list under a name, in ascending order. Positions that were struck are
    /// passed once, so that asking for the first one costs amortised constant time.
    class Positions
    {
    public:
        /// @p count is the number of positions to come.
        explicit Positions(int count);

        void add(const QString &name, int position);
        /// The first position under @p name that is not struck, -1 when there is none.
        int first(const QString &name, const std::vector<bool> &struck);

    private:
        static constexpr int End = -1;

        struct Link
        {
            int position;
            int next;
        };
        struct Chain
        {
            int first = End;
            int last = End;
        };

        Link &linkAt(int index) { return m_links[static_cast<std::size_t>(index)]; }

        QHash<QString, Chain> m_chains;
        std::vector<Link> m_links;
    };

    bool reconcileSingle(const SignalItem &shown);
    void reconcileBus(const SignalItem &shown);
    int firstNamed(const QString &name) { return m_byName.first(name, m_struck); }
    void strike(int position);

    const QList<SignalItem> m_items;
    std::vector<bool> m_struck;
    Positions m_byName;
    Positions m_byMember;
};

/// Buses and singles, as Grouped() leaves them, that are about to be added to a list. Ask covers()
/// for each signal of the list, in their order; what remains of both is then to be appended.
///
/// Takes time in proportion to the signals on both sides, members included.
class SignalMerge
{
public:
    SignalMerge(const QList<SignalItem> &buses, const QList<SignalItem> &singles);

    /// Drops what @p shown makes superfluous. True when, instead, @p shown has to go because an
    /// incoming bus covers it.
    bool covers(const SignalItem &shown);

    QList<SignalItem> buses() const { return m_buses.left(); }
    QList<SignalItem> singles() const { return m_singles.left(); }

private:
    IncomingSignals m_buses;
    IncomingSignals m_singles;
};

} // namespace TARN
