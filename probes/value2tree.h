// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "signalitem.h"

#include <QList>
#include <QString>

class QTreeWidget;
class QTreeWidgetItem;

namespace TARN {

class InitialValueLine;

/// Appends a child row of @p parent in the tree of initial values whose label shows the bits that
/// fall on @p item: the leftmost of @p bits, which are removed from it, or zeros when too few are
/// left. @p line takes note of the label. Does nothing without @p parent.
void value2Tree(QTreeWidget *tree, QTreeWidgetItem *parent, SignalItem item, QString &bits,
                InitialValueLine *line, int type);
/// The same for all of @p items, in the rows that the top-level row @p parent has already: if rows
/// and widgets were added in turn, the tree would lay itself out again for each of them.
void values2Tree(QTreeWidget *tree, QTreeWidgetItem *parent, const QList<SignalItem> &items,
                 QString &bits, InitialValueLine *line);

} // namespace TARN
