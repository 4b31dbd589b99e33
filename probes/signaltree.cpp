// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "signaltree.h"

#include "incomingsignals.h"
#include "signalmerge.h"
#include "signalrow.h"

#include <widgets/treerows.h>

#include <QTreeWidget>

namespace TARN {

namespace {

QList<QTreeWidgetItem *> newRows(const QList<SignalItem> &items, int type)
{
    QList<QTreeWidgetItem *> rows;
    rows.reserve(items.size());
    for (const SignalItem &item : items)
        rows.append(newSignalRow(item, type));
    return rows;
}

} // namespace

SignalItem signalOfRow(const QTreeWidgetItem *row)
{
    return row->data(0, Qt::UserRole).value<SignalItem>();
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
