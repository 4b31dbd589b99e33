// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>

class QTreeWidget;
class QTreeWidgetItem;

namespace TARN {

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
