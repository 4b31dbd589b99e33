// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTreeWidget>
#include <QTreeWidgetItem>

namespace NETWEIR {
class Hierachy;
class RtlNet;
class RtlNetBus;
class RtlNetlist;
} // namespace NETWEIR

namespace TARN {

/// Row of the netlist tree. Remembers the netlist object that it stands for, which must outlive it.
class RtlTreeItem final : public QTreeWidgetItem
{
public:
    enum ItemType {
        NetItem = 1001,      ///< object() is an RtlNet.
        NetBusItem = 1002,   ///< object() is null.
        HierachyItem = 1003, ///< object() is a Hierachy.
    };

    explicit RtlTreeItem(int type)
        : QTreeWidgetItem(type)
    {
    }

    /// To be cast according to the row's type.
    void *object() const { return m_object; }
    void setObject(void *object) { m_object = object; }

    /// The node of a HierachyItem; null for other rows.
    NETWEIR::Hierachy *hierachy() const;

private:
    void *m_object = nullptr; ///< Not owned.
};

/// The module instances of a netlist as a tree. Set another netlist, or null, before the netlist is
/// deleted.
class RtlNetlistTreeView final : public QTreeWidget
{
    Q_OBJECT

public:
    explicit RtlNetlistTreeView(QWidget *parent = nullptr);

    /// Shows @p netlist, which may be null.
    void setNetlistData(NETWEIR::RtlNetlist *netlist);
    NETWEIR::RtlNetlist *netlistData() const { return m_netlist; }

    /// The instance names from the top to the node of @p row, as paths of nets have them. Empty for
    /// null and rows of other kinds.
    static QString pathOf(const QTreeWidgetItem *row);

    /// Rebuilds the tree: the top row open, the rest closed.
    void updateTree();

    // New rows, owned by the caller until they are put into a tree.

    /// The row of @p node with the rows of all nodes below it.
    QTreeWidgetItem *buildHierachyItem(NETWEIR::Hierachy *node);
    QTreeWidgetItem *buildNetItem(NETWEIR::RtlNet *net);
    /// The row of @p bus with a row for each member net.
    QTreeWidgetItem *buildNetBusItem(NETWEIR::RtlNetBus *bus);

private:
    NETWEIR::RtlNetlist *m_netlist = nullptr;
};

} // namespace TARN
