// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "rtlnetlisttreeview.h"

#include <sdk/netweir.h>

#include <QHeaderView>
#include <QIcon>

namespace TARN {

namespace {

/// The top node is shown by its instance name alone.
QString nodeText(NETWEIR::Hierachy *node)
{
    if (!node->parent())
        return node->instName();
    return node->instName() + QLatin1Char('[') + node->moduleName() + QLatin1Char(']');
}

} // namespace

NETWEIR::Hierachy *RtlTreeItem::hierachy() const
{
    return type() == HierachyItem ? static_cast<NETWEIR::Hierachy *>(m_object) : nullptr;
}

/// How many rows around those in sight are measured for the width of the column, within 0.1 s.
static constexpr int MeasuredRows = 20000;

RtlNetlistTreeView::RtlNetlistTreeView(QWidget *parent)
    : QTreeWidget(parent)
{
    setHeaderHidden(true);
    setTextElideMode(Qt::ElideMiddle);
    setIndentation(12);
    header()->setResizeContentsPrecision(MeasuredRows);
}

void RtlNetlistTreeView::setNetlistData(NETWEIR::RtlNetlist *netlist)
{
    m_netlist = netlist;
    updateTree();
}

QString RtlNetlistTreeView::pathOf(const QTreeWidgetItem *row)
{
    const auto *item = dynamic_cast<const RtlTreeItem *>(row);
    QStringList names;
    for (auto *node = item ? item->hierachy() : nullptr; node; node = node->parent())
        names.prepend(node->instName());
    return names.join(QLatin1Char('/'));
}

void RtlNetlistTreeView::updateTree()
{
    clear();
    if (!m_netlist)
        return;
    addTopLevelItem(buildHierachyItem(m_netlist->top()));
    expandToDepth(0);
}

QTreeWidgetItem *RtlNetlistTreeView::buildHierachyItem(NETWEIR::Hierachy *node)
{
    auto *row = new RtlTreeItem(RtlTreeItem::HierachyItem);
    const QString text = nodeText(node);
    row->setText(0, text);
    row->setToolTip(0, text);
    row->setIcon(0, QIcon(QStringLiteral(":/netlist/image/module.png")));
    row->setObject(node);
    const auto &children = node->children();
    for (NETWEIR::Hierachy *child : children)
        row->addChild(buildHierachyItem(child));
    return row;
}

QTreeWidgetItem *RtlNetlistTreeView::buildNetItem(NETWEIR::RtlNet *net)
{
    auto *row = new RtlTreeItem(RtlTreeItem::NetItem);
    row->setText(0, net->fullPathName());
    row->setObject(net);
    return row;
}

QTreeWidgetItem *RtlNetlistTreeView::buildNetBusItem(NETWEIR::RtlNetBus *bus)
{
    auto *row = new RtlTreeItem(RtlTreeItem::NetBusItem);
    row->setText(0, bus->fullBusName());
    const auto &nets = bus->nets();
    for (NETWEIR::RtlNet *net : nets)
        row->addChild(buildNetItem(net));
    return row;
}

} // namespace TARN
