// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "dialogsupport.h"

#include <support/modeltext.h>
#include <support/testcase.h>

#include <netweir/hierachy.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>
#include <select/rtlnetlisttreeview.h>

#include <QApplication>
#include <QHeaderView>
#include <QTest>

using namespace TARN;
using TarnTest::modelText;

class TestRtlNetlistTreeView : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void viewWithoutNetlistIsEmpty();
    void rowsShowInstancesWithTheirModules();
    void onlyTheTopRowIsExpanded();
    void rowsKnowTheirNodes();
    void pathsHaveInstanceNamesAlone();
    void newNetlistReplacesTheRows();
    void netRow();
    void busRowHoldsMemberRows();

private:
    std::unique_ptr<NETWEIR::RtlNetlist> m_netlist;
};

void TestRtlNetlistTreeView::initTestCase()
{
    TarnTest::loadHostIcons();

    NETWEIR::NetlistBuilder builder("top");
    builder.addNet(builder.top(), "clk");
    builder.addBus(builder.top(), "data", 1, 0);
    NETWEIR::Hierachy *core = builder.addHierachy(builder.top(), "u_core", "core");
    builder.addHierachy(core, "u_b", "leaf");
    builder.addHierachy(core, "u_a", "leaf");
    builder.addHierachy(builder.top(), "u_io", "io");
    m_netlist = builder.take();
}

void TestRtlNetlistTreeView::viewWithoutNetlistIsEmpty()
{
    RtlNetlistTreeView view;
    QVERIFY(view.header()->isHidden());
    QVERIFY(!view.netlistData());
    QCOMPARE(view.topLevelItemCount(), 0);
    view.setNetlistData(nullptr);
    QCOMPARE(view.topLevelItemCount(), 0);
}

void TestRtlNetlistTreeView::rowsShowInstancesWithTheirModules()
{
    RtlNetlistTreeView view;
    view.setNetlistData(m_netlist.get());
    QCOMPARE(view.netlistData(), m_netlist.get());
    QCOMPARE(modelText(view.model()), QString("top\n"
                                              "    u_core[core]\n"
                                              "        u_b[leaf]\n"
                                              "        u_a[leaf]\n"
                                              "    u_io[io]\n"));
}

void TestRtlNetlistTreeView::onlyTheTopRowIsExpanded()
{
    RtlNetlistTreeView view;
    view.setNetlistData(m_netlist.get());
    QVERIFY(view.topLevelItem(0)->isExpanded());
    QVERIFY(!view.topLevelItem(0)->child(0)->isExpanded());
    view.expandAll();
    view.updateTree();
    QVERIFY(!view.topLevelItem(0)->child(0)->isExpanded());
}

void TestRtlNetlistTreeView::rowsKnowTheirNodes()
{
    RtlNetlistTreeView view;
    view.setNetlistData(m_netlist.get());
    const QSize size(16, 16);
    const QImage icon = QIcon(":/netlist/image/module.png").pixmap(size).toImage();
    QVERIFY(!icon.isNull());
    int rows = 0;
    for (QTreeWidgetItemIterator it(&view); *it; ++it, ++rows) {
        auto *row = dynamic_cast<RtlTreeItem *>(*it);
        QVERIFY(row);
        QCOMPARE(row->type(), 1003);
        QCOMPARE(row->icon(0).pixmap(size).toImage(), icon);
        NETWEIR::Hierachy *node = row->hierachy();
        QVERIFY(node);
        QCOMPARE(row->object(), static_cast<void *>(node));
        QCOMPARE(row->text(0).section('[', 0, 0), node->instName());
    }
    QCOMPARE(rows, 5);
}

void TestRtlNetlistTreeView::pathsHaveInstanceNamesAlone()
{
    RtlNetlistTreeView view;
    view.setNetlistData(m_netlist.get());
    QStringList paths;
    for (QTreeWidgetItemIterator it(&view); *it; ++it)
        paths.append(RtlNetlistTreeView::pathOf(*it));
    QCOMPARE(paths,
             QStringList({"top", "top/u_core", "top/u_core/u_b", "top/u_core/u_a", "top/u_io"}));
    const QTreeWidgetItem foreign({"top"}, RtlTreeItem::HierachyItem);
    QCOMPARE(RtlNetlistTreeView::pathOf(&foreign), QString());
    const std::unique_ptr<QTreeWidgetItem> net(view.buildNetItem(m_netlist->top()->nets().first()));
    QCOMPARE(RtlNetlistTreeView::pathOf(net.get()), QString());
    QCOMPARE(RtlNetlistTreeView::pathOf(nullptr), QString());
}

void TestRtlNetlistTreeView::newNetlistReplacesTheRows()
{
    RtlNetlistTreeView view;
    view.setNetlistData(m_netlist.get());
    const auto other = NETWEIR::NetlistBuilder("alone").take();
    view.setNetlistData(other.get());
    QCOMPARE(modelText(view.model()), QString("alone\n"));
    view.setNetlistData(nullptr);
    QCOMPARE(view.topLevelItemCount(), 0);
    QVERIFY(!view.netlistData());
}

void TestRtlNetlistTreeView::netRow()
{
    RtlNetlistTreeView view;
    NETWEIR::RtlNet *net = m_netlist->top()->nets().first();
    const std::unique_ptr<QTreeWidgetItem> row(view.buildNetItem(net));
    QCOMPARE(row->type(), 1001);
    QCOMPARE(row->text(0), QString("top/clk"));
    QVERIFY(row->icon(0).isNull());
    const auto *netRow = static_cast<RtlTreeItem *>(row.get());
    QCOMPARE(netRow->object(), static_cast<void *>(net));
    QVERIFY(!netRow->hierachy());
}

void TestRtlNetlistTreeView::busRowHoldsMemberRows()
{
    RtlNetlistTreeView view;
    NETWEIR::RtlNetBus *bus = m_netlist->top()->buses().first();
    const std::unique_ptr<QTreeWidgetItem> row(view.buildNetBusItem(bus));
    QCOMPARE(row->type(), 1002);
    QCOMPARE(row->text(0), QString("top/data[1:0]"));
    QVERIFY(row->icon(0).isNull());
    QVERIFY(!static_cast<RtlTreeItem *>(row.get())->object());
    QCOMPARE(row->childCount(), 2);
    for (int i = 0; i < 2; ++i) {
        auto *member = static_cast<RtlTreeItem *>(row->child(i));
        QCOMPARE(member->type(), 1001);
        QCOMPARE(member->text(0), bus->nets().at(i)->fullPathName());
        QCOMPARE(member->object(), static_cast<void *>(bus->nets().at(i)));
    }
}

TARN_TEST_MAIN(TestRtlNetlistTreeView)

#include "tst_rtlnetlisttreeview.moc"
