// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "jobs.h"

#include <netweir/hierachy.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>
#include <probes/signalitem.h>
#include <select/tarnsignalselectdialog.h>
#include <support/benchmark.h>

#include <QApplication>
#include <QTreeWidget>

using TARN::SignalItem;
using TarnBench::fail;
using TarnBench::Goal;
using TarnBench::Table;

namespace {

constexpr int Rounds = 3;

/// The numbers of top-level rows and of all rows.
struct Shape
{
    int top = 0;
    int all = 0;
};

Shape shapeOf(QTreeWidget *tree)
{
    Shape shape;
    shape.top = tree->topLevelItemCount();
    for (int i = 0; i < shape.top; ++i)
        shape.all += 1 + tree->topLevelItem(i)->childCount();
    return shape;
}

SignalItem itemOf(const NETWEIR::RtlNet *net, SignalItem::Kind kind)
{
    SignalItem item;
    item.name = net->fullPathName();
    item.enabled = !net->excludedForProbeIn();
    item.kind = kind;
    return item;
}

SignalItem itemOf(const NETWEIR::RtlNetBus *bus)
{
    SignalItem item;
    item.name = bus->fullBusName();
    item.enabled = !bus->excludedForProbeIn();
    item.kind = SignalItem::Bus;
    for (const NETWEIR::RtlNet *net : bus->nets())
        item.members.append(itemOf(net, SignalItem::Bus));
    return item;
}

/// The visible dialog after a search for everything.
class Dialog
{
public:
    explicit Dialog(NETWEIR::RtlNetlist *netlist)
        : m_dialog(netlist, TARN::ProbeTypeIn, nullptr)
        , m_results(m_dialog.findChild<QTreeWidget *>(QStringLiteral("treeWidget")))
    {
        m_dialog.show();
        QApplication::processEvents();
    }

    void clear() { m_results->clear(); }
    void search() { QMetaObject::invokeMethod(&m_dialog, "on_pushButtonSearch_clicked"); }
    QTreeWidget *results() const { return m_results; }

private:
    TARN::TarnSignalSelectDialog m_dialog;
    QTreeWidget *m_results;
};

/// A list set up like that of the dialog.
class List : public QTreeWidget
{
public:
    List()
    {
        setUniformRowHeights(true);
        setHeaderHidden(true);
        show();
        QApplication::processEvents();
    }

    /// Rows without any content, all at once.
    void fillBare(NETWEIR::RtlNetlist *netlist)
    {
        QList<QTreeWidgetItem *> rows;
        for (const NETWEIR::RtlNetBus *bus : netlist->top()->netbusesIncludeSub()) {
            auto *row = new QTreeWidgetItem;
            QList<QTreeWidgetItem *> members;
            for (int i = 0; i < bus->nets().size(); ++i)
                members.append(new QTreeWidgetItem);
            row->addChildren(members);
            rows.append(row);
        }
        const int nets = netlist->top()->singleNetsIncludeSub().size();
        for (int i = 0; i < nets; ++i)
            rows.append(new QTreeWidgetItem);
        addTopLevelItems(rows);
    }

    /// Row by row in a plain loop: each row is inserted and then gets its roles.
    void fillRowByRow(NETWEIR::RtlNetlist *netlist)
    {
        for (const NETWEIR::RtlNetBus *bus : netlist->top()->netbusesIncludeSub())
            addRow(itemOf(bus));
        for (const NETWEIR::RtlNet *net : netlist->top()->singleNetsIncludeSub())
            addRow(itemOf(net, SignalItem::Net));
    }

private:
    void addRow(const SignalItem &item)
    {
        auto *row = new QTreeWidgetItem;
        addTopLevelItem(row);
        row->setData(0, Qt::UserRole, QVariant::fromValue(item));
        storeRoles(row, item);
        for (const SignalItem &member : item.members) {
            auto *memberRow = new QTreeWidgetItem;
            row->addChild(memberRow);
            storeRoles(memberRow, member);
        }
    }

    static void storeRoles(QTreeWidgetItem *row, const SignalItem &item)
    {
        constexpr Qt::ItemFlags usable = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
        row->setData(0, Qt::DisplayRole, item.name);
        row->setData(0, Qt::ToolTipRole, item.name);
        row->setData(0, Qt::ForegroundRole,
                     item.enabled ? QApplication::palette().windowText() : QBrush(Qt::gray));
        row->setFlags(item.enabled ? row->flags() | usable : row->flags() & ~usable);
    }
};

bool equal(const SignalItem &a, const SignalItem &b)
{
    return a.name == b.name && a.displayName == b.displayName && a.enabled == b.enabled &&
           a.usable == b.usable && a.kind == b.kind &&
           std::equal(a.members.begin(), a.members.end(), b.members.begin(), b.members.end(),
                      equal);
}

/// Whether two rows and the rows below them have the same data.
bool equal(const QTreeWidgetItem *a, const QTreeWidgetItem *b)
{
    for (const int role : {Qt::DisplayRole, Qt::EditRole, Qt::ToolTipRole, Qt::FontRole,
                           Qt::ForegroundRole, Qt::DecorationRole}) {
        if (a->data(0, role) != b->data(0, role))
            return false;
    }
    const QVariant itemOfA = a->data(0, Qt::UserRole);
    const QVariant itemOfB = b->data(0, Qt::UserRole);
    if (itemOfA.userType() != itemOfB.userType() ||
        !equal(itemOfA.value<SignalItem>(), itemOfB.value<SignalItem>()))
        return false;
    if (a->flags() != b->flags() || a->type() != b->type() || a->childCount() != b->childCount())
        return false;
    for (int i = 0; i < a->childCount(); ++i) {
        if (!equal(a->child(i), b->child(i)))
            return false;
    }
    return true;
}

/// Resident bytes per row of the first search in the process.
double bytesPerRow(Dialog &dialog)
{
    const double before = TarnBench::residentBytes();
    dialog.search();
    return (TarnBench::residentBytes() - before) / shapeOf(dialog.results()).all;
}

void addTimes(Table &table, Dialog &dialog, NETWEIR::RtlNetlist *netlist)
{
    List bare;
    List rowByRow;
    const std::vector<double> times = TarnBench::interleavedMedians(
        Rounds, {[&] { dialog.search(); }, [&] { dialog.clear(); }, [&] { bare.fillBare(netlist); },
                 [&] { bare.clear(); }, [&] { rowByRow.fillRowByRow(netlist); },
                 [&] { rowByRow.clear(); }});
    dialog.search();
    bare.fillBare(netlist);
    rowByRow.fillRowByRow(netlist);
    const Shape shape = shapeOf(dialog.results());
    const Shape bareShape = shapeOf(&bare);
    if (shape.top != bareShape.top || shape.all != bareShape.all)
        fail("the bare list has another number of rows");
    if (!equal(dialog.results()->invisibleRootItem(), rowByRow.invisibleRootItem()))
        fail("the results show something else than rows that store their roles");
    table.add("search for everything until the rows are there", times[0], "s");
    table.add("the same / as many bare rows", times[0] / times[2], "x", 2.2);
    table.add("row by row with stored roles / the same", times[4] / times[0], "x",
              Goal::atLeast(4));
}

/// CPU time of selecting all results, painting included.
double selectingTime(QTreeWidget *results)
{
    results->clearSelection();
    results->doItemsLayout(); // Discards the known heights.
    QApplication::processEvents();
    return TarnBench::timeOf([results] {
        results->selectAll();
        QApplication::processEvents();
    });
}

void addSelecting(Table &table, QTreeWidget *results)
{
    if (!results->uniformRowHeights())
        fail("the rows of the result list are not known to be of one height");
    std::vector<double> times;
    std::vector<double> otherTimes;
    for (int round = 0; round < Rounds; ++round) {
        times.push_back(selectingTime(results));
        results->setUniformRowHeights(false);
        otherTimes.push_back(selectingTime(results));
        results->setUniformRowHeights(true);
    }
    table.add("selecting all results", TarnBench::median(times), "s");
    table.add("the same with rows of unknown heights", TarnBench::median(otherTimes), "s");
}

} // namespace

bool measureShowing(NETWEIR::RtlNetlist *netlist)
{
    Dialog dialog(netlist);
    TarnBench::resetPeak();
    const double before = TarnBench::peakResidentBytes();
    const double bytes = bytesPerRow(dialog);
    const double peak = TarnBench::peakResidentBytes() - before;
    const int rows = shapeOf(dialog.results()).all;
    dialog.clear();
    Table table("Showing all results, " + std::to_string(rows) + " rows");
    addTimes(table, dialog, netlist);
    table.add("memory of a row, names included", bytes, "bytes", 250);
    table.add("highest memory for the first search and its rows", peak / 1e6, "MB");
    addSelecting(table, dialog.results());
    return table.print();
}
