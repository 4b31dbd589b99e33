// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "largetreewidget.h"

#include "treeselectionmodel.h"

#include <algorithm>
#include <vector>

namespace TARN {

/// Up to this many ranges, only their places are painted again.
static constexpr int FewRanges = 16;

LargeTreeWidget::LargeTreeWidget(QWidget *parent)
    : QTreeWidget(parent)
{
    // The tree goes on listening to the model that it was built with.
    QItemSelectionModel *original = selectionModel();
    auto *quick = new TreeSelectionModel(model(), this);
    setSelectionModel(quick);
    connect(quick, &QItemSelectionModel::currentChanged, original,
            &QItemSelectionModel::currentChanged);
    connect(quick, &QItemSelectionModel::selectionChanged, original,
            &QItemSelectionModel::selectionChanged);
}

void LargeTreeWidget::selectAll()
{
    executeDelayedItemsLayout();
    if (selectionMode() == SingleSelection || selectionMode() == NoSelection ||
        topLevelItemCount() == 0)
        return;
    selectionModel()->select(shownRows(), QItemSelectionModel::ClearAndSelect);
}

/// The index of a child row, an invalid one when no rows are shown below it.
QModelIndex LargeTreeWidget::openRow(const QTreeWidgetItem *parent, const QModelIndex &parentIndex,
                                     int row) const
{
    if (parent->child(row)->childCount() == 0)
        return {};
    const QModelIndex index = model()->index(row, 0, parentIndex);
    // This is quicker than asking whether the row is expanded.
    return indexBelow(index).parent() == index ? index : QModelIndex();
}

/// All rows but those below closed ones, in the order in which QTreeView selects them: the rows
/// below an open one follow when their last one has been passed.
QItemSelection LargeTreeWidget::shownRows() const
{
    struct Level
    {
        const QTreeWidgetItem *parent;
        QModelIndex index; ///< Of the parent.
        int next;
    };
    std::vector<Level> levels{{invisibleRootItem(), QModelIndex(), 0}};
    QItemSelection rows;
    int ending = 0; ///< Levels that end with the row passed last.
    while (!levels.empty()) {
        Level &level = levels.back();
        const int count = level.parent->childCount();
        QModelIndex open;
        while (level.next < count && !open.isValid()) {
            open = openRow(level.parent, level.index, level.next++);
            ending = 0;
        }
        if (open.isValid()) {
            levels.push_back({level.parent->child(open.row()), open, 0});
            continue;
        }
        rows.append(QItemSelectionRange(model()->index(0, 0, level.index),
                                        model()->index(count - 1, 0, level.index)));
        levels.pop_back();
        ++ending;
    }
    // Of the levels that end together, the view takes the innermost and then the others from the
    // outside.
    std::reverse(rows.end() - (ending - 1), rows.end());
    return rows;
}

QRegion LargeTreeWidget::visualRegionForSelection(const QItemSelection &selection) const
{
    if (selection.size() <= FewRanges)
        return QTreeWidget::visualRegionForSelection(selection);
    // The place of a row that is below a closed one is looked for everywhere.
    const_cast<LargeTreeWidget *>(this)->executeDelayedItemsLayout();
    return viewport()->rect();
}

} // namespace TARN
