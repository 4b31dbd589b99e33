// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "signalitem.h"

#include <QList>
#include <QString>

#include <optional>
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
    /// passed once, so that asking for the first one costs amortised constant time. A table without
    /// gaps in memory: a million names take a tenth of a second.
    class Positions
    {
    public:
        /// @p count is the number of positions to come.
        explicit Positions(int count);

        /// @p name, which must stay where it is, comes before the positions that it has so far.
        void addBefore(const QString &name, int position);
        /// The first position under @p name that is not struck, -1 when there is none.
        int first(const QString &name, const std::vector<bool> &struck);

    private:
        static constexpr int End = -1;

        struct Link
        {
            const QString *name;
            uint hash;
            int position;
            int next; ///< Of the same name.
        };

        Link &linkAt(int index) { return m_links[static_cast<std::size_t>(index)]; }
        int &headOf(const QString &name, uint hash);

        std::vector<Link> m_links;
        std::vector<int> m_heads; ///< First link of each name, where its hash or the next gap is.
    };

    bool reconcileSingle(const SignalItem &shown);
    void reconcileBus(const SignalItem &shown);
    int firstNamed(const QString &name);
    int firstWithMember(const QString &name);
    void strike(int position);

    const QList<SignalItem> m_items;
    std::vector<bool> m_struck;
    std::optional<Positions> m_byName;   ///< Made when it is first needed.
    std::optional<Positions> m_byMember; ///< The same.
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
