// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "signalitem.h"
#include "signalmerge.h"
#include "value2tree.h"

#include <widgets/treerows.h>

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

class QTreeWidget;
class QTreeWidgetItem;

namespace TARN {

// Rows that show signals, and merging lists of signals with them. The functions for the rows of
// initial values are in value2tree.h, which is included here because callers expect all tree
// functions in this header; they belong to the library of the page.

/// The item under Qt::UserRole of @p row, nothing when there is none.
std::optional<SignalItem> storedSignal(const QTreeWidgetItem *row);
/// The item of @p row, a default one when there is none.
SignalItem signalOfRow(const QTreeWidgetItem *row);

/// Reconciles the top-level row @p row, which holds a bus or a signal of unknown kind, with the
/// incoming @p buses: drops what is already shown, and deletes the row, decrementing @p row (to -1
/// for the first), when an incoming bus covers it.
void CheckRepeatBus(QTreeWidget *tree, int &row, QList<SignalItem> &buses);

/// Reconciles all top-level rows of @p tree with the incoming lists. Linear in the rows and the
/// incoming signals, bus members included.
void CheckRepeat(QTreeWidget *tree, QList<SignalItem> &buses, QList<SignalItem> &singles);

/// Appends what @p chosen adds to the top-level rows of @p tree, buses before the rest, and scrolls
/// to it.
void mergeSignals(QTreeWidget *tree, const QList<SignalItem> &chosen);

/// The same for signals that come one by one. Nothing can be merged with an empty tree, so that
/// each becomes a row at once: a million signals need no list of their own.
class TreeMerge
{
public:
    /// @p tree must stay as it is until finish().
    explicit TreeMerge(QTreeWidget *tree);
    ~TreeMerge();
    Q_DISABLE_COPY(TreeMerge)

    void add(const SignalItem &item);
    void add(SignalItem &&item);
    void finish();

private:
    QTreeWidget *m_tree;
    bool m_treeIsEmpty;
    // What was added so far, buses and the rest. The rows are owned until they go into the tree.
    QList<SignalItem> m_buses;
    QList<SignalItem> m_singles;
    RowNumbers m_numbers; ///< Of the first rows of buses, as long as all have members.
    QList<QTreeWidgetItem *> m_busRows;
    QList<QTreeWidgetItem *> m_singleRows;
};

/// A row for @p item, with a child row for each member, that is in no tree yet.
QTreeWidgetItem *newSignalRow(const SignalItem &item, int type);
/// Appends a top-level row for @p item, with a child row for each member, to @p tree.
void signal2TreeItem(QTreeWidget *tree, SignalItem item, int type);
/// The same as a child row of @p parent.
void signal2TreeItem(QTreeWidgetItem *parent, SignalItem item, int type);
/// The same as the top-level row at @p index.
void signal2TreeItemWithIndex(QTreeWidget *tree, SignalItem item, int type, int index);
/// Appends rows for all of @p items at once, which is how long lists are shown.
void signals2Tree(QTreeWidget *tree, const QList<SignalItem> &items, int type);
void signals2Tree(QTreeWidgetItem *parent, const QList<SignalItem> &items, int type);

/// Appends a child row of @p parent that shows texts[0], with child rows that show texts[1] and so
/// on for the members; every row stores its item. Does nothing when the number of texts is not the
/// number of members plus one.
void signal2TreeItemForHierarchy(QTreeWidgetItem *parent, SignalItem item, QStringList texts,
                                 int type);

/// Appends a child row without member rows: one row per signal keeps the Probe Out tree aligned
/// with the tree of initial values.
void signal2ProbeOutTreeItem(QTreeWidgetItem *parent, SignalItem item, int type);
/// The same for all of @p items at once.
void signals2ProbeOutTree(QTreeWidgetItem *parent, const QList<SignalItem> &items, int type);

} // namespace TARN
