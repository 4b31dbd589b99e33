// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QTreeWidget;
class QTreeWidgetItem;
class QWidget;

namespace TarnCompare {

class LongText;

/// All that a row shows and does: data of all roles, flags, type, and the widget in it.
QString rowText(const QTreeWidgetItem *row);

/// The rows of @p tree with everything below them.
void writeRows(LongText *text, const QTreeWidget *tree);

/// @p widget and all widgets in it: names, texts, states, and the rows of trees.
void writeWidget(LongText *text, const QWidget *widget, int level = 0);

} // namespace TarnCompare
