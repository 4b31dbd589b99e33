// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "treerows.h"

#include <QHash>
#include <QItemSelection>
#include <QScrollBar>
#include <QSet>
#include <QTreeWidget>

#include <algorithm>
#include <vector>

namespace TARN {

namespace {

/// Up to this many rows are deleted one by one, which disturbs the view least.
constexpr int FewRows = 16;

using Rows = QList<QTreeWidgetItem *>;
using RowSet = QSet<QTreeWidgetItem *>;

// The view knows rows by their index. Making it from a row's number is quick, finding it for the
// row alone takes a search.

/// Adds @p row, which has @p index, and the rows below it to @p expanded when they are.
void collectExpanded(const QTreeWidget *tree, QTreeWidgetItem *row, const QModelIndex &index,
                     RowSet *expanded)
{
    if (tree->isExpanded(index))
        expanded->insert(row);
    for (int i = 0; i < row->childCount(); ++i) {
        if (row->child(i)->childCount() > 0)
            collectExpanded(tree, row->child(i), tree->model()->index(i, 0, index), expanded);
    }
}

/// Expands those below @p parent that are in @p rows.
void expand(QTreeWidget *tree, const QTreeWidgetItem *parent, const QModelIndex &parentIndex,
            const RowSet &rows)
{
    for (int i = 0; i < parent->childCount(); ++i) {
        QTreeWidgetItem *row = parent->child(i);
        if (row->childCount() == 0)
            continue;
        const QModelIndex index = tree->model()->index(i, 0, parentIndex);
        if (rows.contains(row))
            tree->expand(index);
        expand(tree, row, index, rows);
    }
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

/// Row of the top-level row that @p index is in.
int topRowOf(const QModelIndex &index)
{
    return index.parent().isValid() ? topRowOf(index.parent()) : index.row();
}

/// Every tree knows the rows of its indexes, but tells only derived classes.
class RowAccess : public QTreeWidget
{
public:
    using QTreeWidget::itemFromIndex;
};

const QTreeWidgetItem *rowAt(const QTreeWidget *tree, const QModelIndex &index)
{
    return index.isValid() ? (tree->*&RowAccess::itemFromIndex)(index) : tree->invisibleRootItem();
}

/// The top-level rows of a tree, divided into those that go and those that stay.
class TopLevel
{
public:
    /// @p isDoomed is asked for each row with its number, in order. There is one pass for
    /// everything: looking at 100,000 rows costs as much as deleting a good part of them.
    template <typename IsDoomed>
    TopLevel(QTreeWidget *tree, const IsDoomed &isDoomed)
        : m_tree(tree)
        , m_isDoomed(std::size_t(tree->topLevelItemCount()))
    {
        const int count = tree->topLevelItemCount();
        for (int i = 0; i < count; ++i) {
            QTreeWidgetItem *row = tree->topLevelItem(i);
            const bool goes = isDoomed(i, row);
            m_isDoomed[std::size_t(i)] = goes;
            (goes ? m_doomed : m_kept).append(row);
            if (!goes && row->childCount() > 0)
                collectExpanded(tree, row, tree->model()->index(i, 0), &m_expanded);
        }
    }

    /// Deletes those that go.
    void reduce();
    /// Puts the rows into the order of @p rows, which holds those that stay, all of them.
    void arrange(const Rows &rows);

private:
    bool isDoomed(int row) const { return m_isDoomed[std::size_t(row)]; }
    RowSet keptSelected() const;
    void rebuild();
    void replaceRows();
    void select(const RowSet &rows);

    QTreeWidget *m_tree;
    std::vector<bool> m_isDoomed;
    Rows m_doomed;
    Rows m_kept;
    RowSet m_expanded; ///< Those below the kept ones, too.
};

void TopLevel::reduce()
{
    if (m_doomed.size() <= FewRows)
        qDeleteAll(m_doomed);
    else
        rebuild();
}

void TopLevel::arrange(const Rows &rows)
{
    m_kept = rows;
    rebuild();
}

/// Takes all rows out and puts those that stay back in.
void TopLevel::rebuild()
{
    const RowSet selected = keptSelected();
    QTreeWidgetItem *current = m_tree->currentItem();
    if (current && isDoomed(topRowOf(m_tree->currentIndex())))
        current = nullptr;
    const int scrolled = m_tree->verticalScrollBar()->value();

    // With a selection of thousands of ranges the view would follow each while rows leave, and look
    // up its place on the screen to clear it.
    m_tree->setUpdatesEnabled(false);
    m_tree->selectionModel()->clearSelection();
    replaceRows();
    if (current)
        m_tree->setCurrentItem(current, 0, QItemSelectionModel::NoUpdate);
    select(selected);
    m_tree->verticalScrollBar()->setValue(scrolled);
    m_tree->setUpdatesEnabled(true);
}

/// The selected rows at all levels that stay.
RowSet TopLevel::keptSelected() const
{
    RowSet rows;
    const QItemSelection selection = m_tree->selectionModel()->selection();
    for (const QItemSelectionRange &range : selection) {
        const QTreeWidgetItem *parent = rowAt(m_tree, range.parent());
        for (int i = range.top(); i <= range.bottom(); ++i) {
            if (!isDoomed(range.parent().isValid() ? topRowOf(range.parent()) : i))
                rows.insert(parent->child(i));
        }
    }
    return rows;
}

void TopLevel::replaceRows()
{
    m_tree->invisibleRootItem()->takeChildren();
    qDeleteAll(m_doomed);
    addTopLevelRows(m_tree, m_kept);
    if (!m_expanded.isEmpty())
        expand(m_tree, m_tree->invisibleRootItem(), QModelIndex(), m_expanded);
}

void TopLevel::select(const RowSet &rows)
{
    if (rows.isEmpty())
        return;
    QItemSelection selection;
    collectSelection(m_tree->model(), m_tree->invisibleRootItem(), QModelIndex(), rows, &selection);
    m_tree->selectionModel()->select(selection, QItemSelectionModel::Select);
}

/// A row can only be selected with both.
constexpr Qt::ItemFlags Selectable = Qt::ItemIsSelectable | Qt::ItemIsEnabled;

/// For the rows that have selected rows below them, at any level, which of their children the
/// selection spans.
class Spans
{
public:
    explicit Spans(const QTreeWidget *tree)
    {
        m_children[tree->invisibleRootItem()];
        const QItemSelection selection = tree->selectionModel()->selection();
        for (const QItemSelectionRange &range : selection)
            add(range, rowAt(tree, range.parent()));
    }

    bool hasBelow(const QTreeWidgetItem *row) const { return m_children.contains(row); }
    /// Empty when no child is spanned.
    std::vector<bool> children(const QTreeWidgetItem *row) const { return m_children.value(row); }

private:
    void add(const QItemSelectionRange &range, const QTreeWidgetItem *parent)
    {
        // Those above a row that is already here are here too.
        for (const QTreeWidgetItem *row = parent; row && !m_children.contains(row);
             row = row->parent())
            m_children[row];
        std::vector<bool> &children = m_children[parent];
        children.resize(std::size_t(parent->childCount()));
        std::fill(children.begin() + range.top(), children.begin() + range.bottom() + 1, true);
    }

    QHash<const QTreeWidgetItem *, std::vector<bool>> m_children;
};

/// For each top-level row whether a selected range spans it.
std::vector<bool> inSelection(const QTreeWidget *tree)
{
    std::vector<bool> inside(std::size_t(tree->topLevelItemCount()));
    const QItemSelection selection = tree->selectionModel()->selection();
    for (const QItemSelectionRange &range : selection) {
        if (!range.parent().isValid())
            std::fill(inside.begin() + range.top(), inside.begin() + range.bottom() + 1, true);
    }
    return inside;
}

} // namespace

void forEachRow(const QTreeWidget *tree, const std::function<void(const QTreeWidgetItem *)> &visit)
{
    struct Level
    {
        const QTreeWidgetItem *parent;
        int next;
    };
    std::vector<Level> levels{{tree->invisibleRootItem(), 0}};
    while (!levels.empty()) {
        Level &level = levels.back();
        if (level.next == level.parent->childCount()) {
            levels.pop_back();
            continue;
        }
        const QTreeWidgetItem *row = level.parent->child(level.next++);
        visit(row);
        if (row->childCount() > 0)
            levels.push_back({row, 0});
    }
}

void forEachSelectedRow(const QTreeWidget *tree,
                        const std::function<void(const QTreeWidgetItem *)> &visit)
{
    struct Level
    {
        const QTreeWidgetItem *parent;
        std::vector<bool> spanned;
        int next;
    };
    const Spans spans(tree);
    std::vector<Level> levels{
        {tree->invisibleRootItem(), spans.children(tree->invisibleRootItem()), 0}};
    while (!levels.empty()) {
        Level &level = levels.back();
        if (level.next == level.parent->childCount()) {
            levels.pop_back();
            continue;
        }
        const auto number = std::size_t(level.next);
        const QTreeWidgetItem *row = level.parent->child(level.next++);
        // A range that spans a disabled row does not select it.
        if (!level.spanned.empty() && level.spanned[number] &&
            (row->flags() & Selectable) == Selectable)
            visit(row);
        if (row->childCount() > 0 && spans.hasBelow(row))
            levels.push_back({row, spans.children(row), 0});
    }
}

void addTopLevelRows(QTreeWidget *tree, const QList<QTreeWidgetItem *> &rows)
{
    if (tree->topLevelItemCount() == 0) {
        const auto isParent = [](const QTreeWidgetItem *row) { return row->childCount() > 0; };
        const auto last = std::find_if_not(rows.cbegin(), rows.cend(), isParent);
        QTreeWidgetItem numbered; // Adding rows one by one tells them their numbers.
        std::for_each(rows.cbegin(), last,
                      [&numbered](QTreeWidgetItem *row) { numbered.addChild(row); });
        numbered.takeChildren();
    }
    tree->addTopLevelItems(rows);
}

void RowNumbers::tell(QTreeWidgetItem *row)
{
    m_before.addChild(row);
    m_before.takeChild(count() - 1);
    m_before.addChild(new QTreeWidgetItem);
}

void removeTopLevelRows(QTreeWidget *tree, const QList<QTreeWidgetItem *> &rows)
{
    if (rows.isEmpty())
        return;
    auto next = rows.cbegin();
    const auto isNext = [&](int, const QTreeWidgetItem *row) {
        if (next == rows.cend() || row != *next)
            return false;
        ++next;
        return true;
    };
    TopLevel(tree, isNext).reduce();
}

void removeSelectedTopLevelRows(QTreeWidget *tree)
{
    const std::vector<bool> inside = inSelection(tree);
    // A range that spans a disabled row does not select it.
    const auto isSelected = [&inside](int i, const QTreeWidgetItem *row) {
        return inside[std::size_t(i)] && (row->flags() & Selectable) == Selectable;
    };
    TopLevel(tree, isSelected).reduce();
}

void arrangeTopLevelRows(QTreeWidget *tree, const QList<QTreeWidgetItem *> &rows)
{
    const auto goes = [](int, const QTreeWidgetItem *) { return false; };
    TopLevel(tree, goes).arrange(rows);
}

void bringIntoSight(QTreeWidget *tree, const QTreeWidgetItem *row, const QTreeWidgetItem *other)
{
    tree->scrollToItem(other);
    tree->scrollToItem(row);
}

} // namespace TARN
