// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "treerows.h"

#include <QItemSelection>
#include <QScrollBar>
#include <QSet>
#include <QTreeWidget>

namespace TARN {

namespace {

/// Up to this many rows are deleted one by one, which disturbs the view least.
constexpr int FewRows = 16;

using Rows = QList<QTreeWidgetItem *>;
using RowSet = QSet<QTreeWidgetItem *>;

void collectExpanded(QTreeWidgetItem *row, Rows *expanded)
{
    if (row->childCount() == 0)
        return;
    if (row->isExpanded())
        expanded->append(row);
    for (int i = 0; i < row->childCount(); ++i)
        collectExpanded(row->child(i), expanded);
}

/// Adds the children of @p parent that are in @p rows to @p selection, neighbours in one range.
void collectSelection(const QAbstractItemModel *model, const QTreeWidgetItem *parent,
                      const QModelIndex &parentIndex, const RowSet &rows, QItemSelection *selection)
{
    int first = -1;
    for (int i = 0; i <= parent->childCount(); ++i) {
        const bool inside = i < parent->childCount() && rows.contains(parent->child(i));
        if (inside && first == -1)
            first = i;
        if (!inside && first != -1) {
            selection->append(QItemSelectionRange(model->index(first, 0, parentIndex),
                                                  model->index(i - 1, 0, parentIndex)));
            first = -1;
        }
    }
    for (int i = 0; i < parent->childCount(); ++i) {
        if (parent->child(i)->childCount() > 0)
            collectSelection(model, parent->child(i), model->index(i, 0, parentIndex), rows,
                             selection);
    }
}

QTreeWidgetItem *topLevelOf(QTreeWidgetItem *row)
{
    while (row->parent())
        row = row->parent();
    return row;
}

/// The children of @p root that are not in @p doomed.
Rows rowsBut(const RowSet &doomed, const QTreeWidgetItem *root)
{
    Rows kept;
    for (int i = 0; i < root->childCount(); ++i) {
        if (!doomed.contains(root->child(i)))
            kept.append(root->child(i));
    }
    return kept;
}

/// Replaces the rows of @p tree at one stroke. Those that go are deleted.
void reduceTo(QTreeWidget *tree, const Rows &kept, const RowSet &doomed)
{
    Rows expanded;
    for (QTreeWidgetItem *row : kept)
        collectExpanded(row, &expanded);
    tree->invisibleRootItem()->takeChildren();
    qDeleteAll(doomed);
    tree->addTopLevelItems(kept);
    for (QTreeWidgetItem *row : qAsConst(expanded))
        row->setExpanded(true);
}

} // namespace

void removeTopLevelRows(QTreeWidget *tree, const QList<QTreeWidgetItem *> &rows)
{
    if (rows.size() <= FewRows) {
        qDeleteAll(rows);
        return;
    }
    const RowSet doomed(rows.cbegin(), rows.cend());
    const Rows selected = tree->selectedItems();
    QTreeWidgetItem *current = tree->currentItem();
    if (current && doomed.contains(topLevelOf(current)))
        current = nullptr;
    const int scrolled = tree->verticalScrollBar()->value();

    const QTreeWidgetItem *root = tree->invisibleRootItem();
    reduceTo(tree, rowsBut(doomed, root), doomed);

    // Rows that are gone are looked up by address only.
    QItemSelection selection;
    collectSelection(tree->model(), root, QModelIndex(), RowSet(selected.cbegin(), selected.cend()),
                     &selection);
    if (current)
        tree->setCurrentItem(current, 0, QItemSelectionModel::NoUpdate);
    tree->selectionModel()->select(selection, QItemSelectionModel::Select);
    tree->verticalScrollBar()->setValue(scrolled);
}

} // namespace TARN
