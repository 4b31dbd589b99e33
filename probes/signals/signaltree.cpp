// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "signaltree.h"

#include "signalrow.h"

#include <widgets/treerows.h>

#include <QHash>
#include <QSet>
#include <QTreeWidget>

#include <algorithm>
#include <numeric>
#include <vector>

namespace TARN {

namespace {

/// Positions of list entries under a name, in ascending order. Entries leave in any order; asking
/// for the first that is left costs amortised constant time.
class PositionsByName
{
public:
    /// @p count is the number of entries to come.
    explicit PositionsByName(int count)
    {
        m_chains.reserve(count);
        m_links.reserve(static_cast<std::size_t>(count));
    }

    void add(const QString &name, int position)
    {
        const int link = static_cast<int>(m_links.size());
        m_links.push_back({position, End});
        Chain &chain = m_chains[name];
        (chain.first == End ? chain.first : linkAt(chain.last).next) = link;
        chain.last = link;
    }

    /// The first position under @p name for which @p alive holds, -1 when there is none.
    template <typename Alive>
    int first(const QString &name, const Alive &alive)
    {
        const auto it = m_chains.find(name);
        if (it == m_chains.end())
            return -1;
        int &first = it.value().first;
        while (first != End && !alive(linkAt(first).position))
            first = linkAt(first).next;
        return first == End ? -1 : linkAt(first).position;
    }

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

int memberCount(const QList<SignalItem> &list)
{
    return std::accumulate(list.cbegin(), list.cend(), 0, [](int sum, const SignalItem &item) {
        return sum + item.members.size();
    });
}

/// Signals that are about to be added, from which shown rows strike what is there already.
class Incoming
{
public:
    explicit Incoming(QList<SignalItem> &list)
        : m_list(list)
        , m_alive(static_cast<std::size_t>(list.size()), true)
        , m_byName(list.size())
        , m_byMember(memberCount(list))
    {
        for (int i = 0; i < list.size(); ++i) {
            const SignalItem &item = list.at(i);
            m_byName.add(item.name, i);
            for (const SignalItem &member : item.members)
                m_byMember.add(member.name, i);
        }
    }

    /// Writes what is left back into the list.
    void store()
    {
        if (!m_struck)
            return;
        QList<SignalItem> left;
        for (int i = 0; i < m_list.size(); ++i) {
            if (alive(i))
                left.append(m_list.at(i));
        }
        m_list = left;
    }

    void strikeFirst(const QString &name) { strike(firstNamed(name)); }

    /// Strikes what @p shown makes superfluous. True when, instead, an incoming bus covers @p
    /// shown.
    bool reconcile(const SignalItem &shown)
    {
        return shown.members.isEmpty() ? reconcileSingle(shown) : reconcileBus(shown);
    }

private:
    bool reconcileSingle(const SignalItem &shown)
    {
        const int same = firstNamed(shown.name);
        const int covering = m_byMember.first(shown.name, [this](int i) { return alive(i); });
        // Whichever comes first in the list decides.
        if (covering != -1 && (same == -1 || covering < same))
            return true;
        strike(same);
        return false;
    }

    bool reconcileBus(const SignalItem &shown)
    {
        const int same = firstNamed(shown.name);
        for (const SignalItem &member : shown.members) {
            int covered = firstNamed(member.name);
            // What comes behind the bus itself is no longer looked at.
            while (covered != -1 && (same == -1 || covered < same)) {
                strike(covered);
                covered = firstNamed(member.name);
            }
        }
        strike(same);
        return false;
    }

    bool alive(int position) const { return m_alive[static_cast<std::size_t>(position)]; }

    int firstNamed(const QString &name)
    {
        return m_byName.first(name, [this](int i) { return alive(i); });
    }

    void strike(int position)
    {
        if (position == -1)
            return;
        m_alive[static_cast<std::size_t>(position)] = false;
        m_struck = true;
    }

    QList<SignalItem> &m_list;
    std::vector<bool> m_alive;
    PositionsByName m_byName;
    PositionsByName m_byMember;
    bool m_struck = false;
};

QList<QTreeWidgetItem *> newRows(const QList<SignalItem> &items, int type)
{
    QList<QTreeWidgetItem *> rows;
    rows.reserve(items.size());
    for (const SignalItem &item : items)
        rows.append(newSignalRow(item, type));
    return rows;
}

bool coversSingle(const SignalItem &bus, const SignalItem &signal)
{
    if (!signal.members.isEmpty())
        return false;
    return std::any_of(bus.members.cbegin(), bus.members.cend(),
                       [&signal](const SignalItem &member) { return member.name == signal.name; });
}

} // namespace

SignalItem signalOfRow(const QTreeWidgetItem *row)
{
    return row->data(0, Qt::UserRole).value<SignalItem>();
}

// NOLINTBEGIN(performance-unnecessary-value-param): by value in the interface
bool isBussignalInBus(SignalItem bus, SignalItem signal)
{
    return coversSingle(bus, signal);
}

void CheckRepeatSignal(SignalItem &signal, QList<SignalItem> &list)
{
    const auto same = std::find_if(list.begin(), list.end(), [&signal](const SignalItem &entry) {
        return entry.name == signal.name;
    });
    if (same != list.end())
        list.erase(same);
}

void CheckBus(QList<SignalItem> &list, SignalItem item)
{
    if (item.members.isEmpty()) {
        const bool covered =
            std::any_of(list.cbegin(), list.cend(),
                        [&item](const SignalItem &entry) { return coversSingle(entry, item); });
        if (covered)
            return;
    } else {
        QSet<QString> members;
        for (const SignalItem &member : qAsConst(item.members))
            members.insert(member.name);
        const auto swallowed = [&members](const SignalItem &entry) {
            return entry.members.isEmpty() && members.contains(entry.name);
        };
        list.erase(std::remove_if(list.begin(), list.end(), swallowed), list.end());
    }
    list.append(item);
}

void Grouped(QList<SignalItem> all, QList<SignalItem> &buses, QList<SignalItem> &singles)
{
    for (SignalItem &item : all) {
        const auto disabled = [](const SignalItem &member) { return !member.enabled; };
        if (std::any_of(item.members.cbegin(), item.members.cend(), disabled)) {
            item.members.erase(std::remove_if(item.members.begin(), item.members.end(), disabled),
                               item.members.end());
        }
        (item.kind == SignalItem::Bus ? buses : singles).append(item);
    }
}

void CheckRepeatBus(QTreeWidget *tree, int &row, QList<SignalItem> &buses)
{
    Incoming incoming(buses);
    QTreeWidgetItem *item = tree->topLevelItem(row);
    if (incoming.reconcile(signalOfRow(item))) {
        // The caller goes on with the row that moves up into the place of the deleted one.
        --row;
        delete item;
    }
    incoming.store();
}

void CheckRepeat(QTreeWidget *tree, QList<SignalItem> &buses, QList<SignalItem> &singles)
{
    Incoming incomingBuses(buses);
    Incoming incomingSingles(singles);
    QList<QTreeWidgetItem *> covered;
    for (int row = 0; row < tree->topLevelItemCount(); ++row) {
        QTreeWidgetItem *item = tree->topLevelItem(row);
        const SignalItem shown = signalOfRow(item);
        // A single net that is already shown is only looked for among the singles: it stays even
        // when an incoming bus covers it, which users have in their files.
        if (shown.kind == SignalItem::Net)
            incomingSingles.strikeFirst(shown.name);
        else if (incomingBuses.reconcile(shown))
            covered.append(item);
    }
    removeTopLevelRows(tree, covered);
    incomingBuses.store();
    incomingSingles.store();
}

void mergeSignals(QTreeWidget *tree, const QList<SignalItem> &chosen)
{
    QList<SignalItem> buses;
    QList<SignalItem> singles;
    Grouped(chosen, buses, singles);
    CheckRepeat(tree, buses, singles);
    const int shown = tree->topLevelItemCount();
    signals2Tree(tree, buses + singles, 0);
    const int last = tree->topLevelItemCount() - 1;
    if (last >= shown)
        bringIntoSight(tree, tree->topLevelItem(shown), tree->topLevelItem(last));
}

QTreeWidgetItem *newSignalRow(const SignalItem &item, int type)
{
    auto *row = new SignalRow(item, SignalRow::Holds::Item, type);
    QList<QTreeWidgetItem *> members;
    members.reserve(item.members.size());
    for (const SignalItem &member : item.members)
        members.append(new SignalRow(member, SignalRow::Holds::Nothing, type));
    row->addChildren(members);
    return row;
}

void signal2TreeItem(QTreeWidget *tree, SignalItem item, int type)
{
    tree->addTopLevelItem(newSignalRow(item, type));
}

void signal2TreeItem(QTreeWidgetItem *parent, SignalItem item, int type)
{
    parent->addChild(newSignalRow(item, type));
}

void signal2TreeItemWithIndex(QTreeWidget *tree, SignalItem item, int type, int index)
{
    tree->insertTopLevelItem(index, newSignalRow(item, type));
}

void signals2Tree(QTreeWidget *tree, const QList<SignalItem> &items, int type)
{
    tree->addTopLevelItems(newRows(items, type));
}

void signals2Tree(QTreeWidgetItem *parent, const QList<SignalItem> &items, int type)
{
    parent->addChildren(newRows(items, type));
}

void signal2TreeItemForHierarchy(QTreeWidgetItem *parent, SignalItem item, QStringList texts,
                                 int type)
{
    if (texts.size() != item.members.size() + 1)
        return;
    auto *row = new SignalRow(item, SignalRow::Holds::Item, type, texts.first());
    QList<QTreeWidgetItem *> members;
    members.reserve(item.members.size());
    for (int i = 0; i < item.members.size(); ++i)
        members.append(
            new SignalRow(item.members.at(i), SignalRow::Holds::Item, type, texts.at(i + 1)));
    row->addChildren(members);
    parent->addChild(row);
}

void signal2ProbeOutTreeItem(QTreeWidgetItem *parent, SignalItem item, int type)
{
    parent->addChild(new SignalRow(item, SignalRow::Holds::Item, type));
}

void signals2ProbeOutTree(QTreeWidgetItem *parent, const QList<SignalItem> &items, int type)
{
    QList<QTreeWidgetItem *> rows;
    rows.reserve(items.size());
    for (const SignalItem &item : items)
        rows.append(new SignalRow(item, SignalRow::Holds::Item, type));
    parent->addChildren(rows);
}
// NOLINTEND(performance-unnecessary-value-param)

} // namespace TARN
