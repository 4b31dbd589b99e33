// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "treerows.h"

#include <QScrollBar>
#include <QSet>
#include <QTreeWidget>

namespace TARN {

namespace {

/// Up to this many rows are deleted one by one, which disturbs the view least.
constexpr int FewRows = 16;

} // namespace

void removeTopLevelRows(QTreeWidget *tree, const QList<QTreeWidgetItem *> &rows)
{
    if (rows.size() <= FewRows) {
        qDeleteAll(rows);
        return;
    }
    const QSet<QTreeWidgetItem *> doomed(rows.cbegin(), rows.cend());
    QTreeWidgetItem *current = tree->currentItem();
    const int scrolled = tree->verticalScrollBar()->value();
    QList<QTreeWidgetItem *> kept;
    QList<QTreeWidgetItem *> expanded;
    const QList<QTreeWidgetItem *> selected = tree->selectedItems();
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        QTreeWidgetItem *row = tree->topLevelItem(i);
        if (doomed.contains(row))
            continue;
        kept.append(row);
        if (row->isExpanded())
            expanded.append(row);
    }
    const bool keepsCurrent = current && !doomed.contains(current) &&
                              !(current->parent() && doomed.contains(current->parent()));

    tree->invisibleRootItem()->takeChildren();
    qDeleteAll(doomed);
    tree->addTopLevelItems(kept);
    for (QTreeWidgetItem *row : qAsConst(expanded))
        row->setExpanded(true);
    if (keepsCurrent)
        tree->setCurrentItem(current, 0, QItemSelectionModel::NoUpdate);
    for (QTreeWidgetItem *row : selected) {
        if (!doomed.contains(row) && !(row->parent() && doomed.contains(row->parent())))
            row->setSelected(true);
    }
    tree->verticalScrollBar()->setValue(scrolled);
}

} // namespace TARN
