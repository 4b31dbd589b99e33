// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QTreeWidgetItem>

#include <functional>

class QTreeWidget;

namespace TARN {

/// Calls @p visit for every row of @p tree, each before the rows below it.
void forEachRow(const QTreeWidget *tree, const std::function<void(const QTreeWidgetItem *)> &visit);

/// The same for the selected rows. Does not look at rows below which none is selected.
void forEachSelectedRow(const QTreeWidget *tree,
                        const std::function<void(const QTreeWidgetItem *)> &visit);

/// Appends top-level rows, with their children, to @p tree. When the tree was empty, the parents
/// that come first know their numbers at once: the model searches the whole list for one that does
/// not, when the view first asks for the parent of a row below it.
void addTopLevelRows(QTreeWidget *tree, const QList<QTreeWidgetItem *> &rows);

/// Tells new rows the numbers that they will have in a tree, for the reason that addTopLevelRows()
/// has. It is quicker before they have rows below them; then QTreeWidget::addTopLevelItems() does.
class RowNumbers
{
public:
    /// @p row, which is in no tree, comes next.
    void tell(QTreeWidgetItem *row);
    int count() const { return m_before.childCount(); }

private:
    QTreeWidgetItem m_before; ///< Has a row in place of each one that was told its number.
};

/// Deletes top-level rows of @p tree, with their children, in linear time. @p rows has the order of
/// the tree. The rows that stay keep their expansion, selection and order, and the tree its current
/// row and scroll position.
void removeTopLevelRows(QTreeWidget *tree, const QList<QTreeWidgetItem *> &rows);

/// The same for the selected top-level rows.
void removeSelectedTopLevelRows(QTreeWidget *tree);

/// Puts the top-level rows of @p tree into the order of @p rows, which holds all of them, in linear
/// time. Expansion, selection, current row and scroll position stay.
void arrangeTopLevelRows(QTreeWidget *tree, const QList<QTreeWidgetItem *> &rows);

/// Scrolls as little as it takes to show @p row and, when there is room for both, @p other.
void bringIntoSight(QTreeWidget *tree, const QTreeWidgetItem *row, const QTreeWidgetItem *other);

} // namespace TARN
