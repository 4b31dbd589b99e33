// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "signaltree.h"

#include "incomingsignals.h"
#include "signalmerge.h"
#include "signalrow.h"

#include <widgets/treerows.h>

#include <QTreeWidget>

#include <utility>

namespace TARN {

namespace {

using Holds = ComputedSignalRow::Holds;

QTreeWidgetItem *withMembers(QTreeWidgetItem *row, const QList<SignalItem> &members, int type)
{
    for (const SignalItem &member : members)
        row->addChild(newRowOf(member, Holds::Nothing, type));
    return row;
}

void appendRows(QList<QTreeWidgetItem *> *rows, const QList<SignalItem> &items, int type)
{
    rows->reserve(rows->size() + items.size());
    for (const SignalItem &item : items)
        rows->append(newSignalRow(item, type));
}

QList<QTreeWidgetItem *> newRows(const QList<SignalItem> &items, int type)
{
    QList<QTreeWidgetItem *> rows;
    appendRows(&rows, items, type);
    return rows;
}

} // namespace

std::optional<SignalItem> storedSignal(const QTreeWidgetItem *row)
{
    // Without a QVariant, which takes longer than all the rest.
    if (const auto *computed = dynamic_cast<const ComputedSignalRow *>(row)) {
        if (std::optional<SignalItem> item = computed->item())
            return item;
    }
    const QVariant stored = row->data(0, Qt::UserRole);
    if (stored.isValid() && stored.canConvert<SignalItem>())
        return stored.value<SignalItem>();
    return std::nullopt;
}

SignalItem signalOfRow(const QTreeWidgetItem *row)
{
    return storedSignal(row).value_or(SignalItem());
}

// NOLINTBEGIN(performance-unnecessary-value-param): by value in the interface
void CheckRepeatBus(QTreeWidget *tree, int &row, QList<SignalItem> &buses)
{
    IncomingSignals incoming(buses);
    QTreeWidgetItem *item = tree->topLevelItem(row);
    if (incoming.reconcile(signalOfRow(item))) {
        // The caller goes on with the row that moves up into the place of the deleted one.
        --row;
        delete item;
    }
    buses = incoming.left();
}

void CheckRepeat(QTreeWidget *tree, QList<SignalItem> &buses, QList<SignalItem> &singles)
{
    if (tree->topLevelItemCount() == 0)
        return;
    SignalMerge merge(buses, singles);
    QList<QTreeWidgetItem *> covered;
    for (int row = 0; row < tree->topLevelItemCount(); ++row) {
        QTreeWidgetItem *item = tree->topLevelItem(row);
        if (merge.covers(signalOfRow(item)))
            covered.append(item);
    }
    removeTopLevelRows(tree, covered);
    buses = merge.buses();
    singles = merge.singles();
}

void mergeSignals(QTreeWidget *tree, const QList<SignalItem> &chosen)
{
    TreeMerge merge(tree);
    for (const SignalItem &item : chosen)
        merge.add(item);
    merge.finish();
}

TreeMerge::TreeMerge(QTreeWidget *tree)
    : m_tree(tree)
    , m_treeIsEmpty(tree->topLevelItemCount() == 0)
{
}

TreeMerge::~TreeMerge()
{
    qDeleteAll(m_busRows);
    qDeleteAll(m_singleRows);
}

void TreeMerge::add(const SignalItem &item)
{
    add(SignalItem(item));
}

void TreeMerge::add(SignalItem &&item)
{
    const bool isBus = item.kind == SignalItem::Bus;
    removeDisabledMembers(&item);
    if (!m_treeIsEmpty) {
        (isBus ? m_buses : m_singles).append(item);
        return;
    }
    const QList<SignalItem> members = item.members;
    QTreeWidgetItem *row = newRowOf(std::move(item), Holds::Item, 0);
    if (isBus && !members.isEmpty() && m_numbers.count() == m_busRows.size())
        m_numbers.tell(row);
    (isBus ? m_busRows : m_singleRows).append(withMembers(row, members, 0));
}

void TreeMerge::finish()
{
    CheckRepeat(m_tree, m_buses, m_singles);
    QList<QTreeWidgetItem *> rows;
    rows.swap(m_busRows);
    rows += m_singleRows;
    m_singleRows.clear();
    appendRows(&rows, m_buses, 0);
    appendRows(&rows, m_singles, 0);
    if (rows.isEmpty())
        return;
    if (m_treeIsEmpty)
        m_tree->addTopLevelItems(rows); // They know their numbers.
    else
        addTopLevelRows(m_tree, rows);
    bringIntoSight(m_tree, rows.first(), rows.last());
}

QTreeWidgetItem *newSignalRow(const SignalItem &item, int type)
{
    return withMembers(newRowOf(item, Holds::Item, type), item.members, type);
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
    addTopLevelRows(tree, newRows(items, type));
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
    auto *row = new SignalRow(item, Holds::Item, type, texts.first());
    for (int i = 0; i < item.members.size(); ++i)
        row->addChild(new SignalRow(item.members.at(i), Holds::Item, type, texts.at(i + 1)));
    parent->addChild(row);
}

void signal2ProbeOutTreeItem(QTreeWidgetItem *parent, SignalItem item, int type)
{
    parent->addChild(newRowOf(item, Holds::Item, type));
}

void signals2ProbeOutTree(QTreeWidgetItem *parent, const QList<SignalItem> &items, int type)
{
    QList<QTreeWidgetItem *> rows;
    rows.reserve(items.size());
    for (const SignalItem &item : items)
        rows.append(newRowOf(item, Holds::Item, type));
    parent->addChildren(rows);
}
// NOLINTEND(performance-unnecessary-value-param)

} // namespace TARN
