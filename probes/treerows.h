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

} // namespace TARN
