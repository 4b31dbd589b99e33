// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "samplenetlist.h"

#include <support/modeltext.h>
#include <support/testcase.h>

#include <probes/signaltree.h>
#include <select/netsearch.h>
#include <select/resultrows.h>
#include <widgets/treerows.h>

#include <QApplication>
#include <QTest>
#include <QTreeWidget>

#include <functional>

using namespace TARN;

namespace {

/// Name and kind, with a minus when the signal cannot be chosen, and the members in brackets.
QString textOf(const SignalItem &item)
{
    QString text = QString(item.enabled ? "%1:%2" : "-%1:%2").arg(item.name).arg(item.kind);
    for (const SignalItem &member : item.members)
        text += " (" + textOf(member) + ")";
    return text;
}

/// All that a row and the rows below it answer, a line for each.
QString answersOf(const QTreeWidgetItem *row)
{
    QString text = QString("type %1 flags %2").arg(row->type()).arg(int(row->flags()));
    for (int role = 0; role <= Qt::UserRole + 1; ++role) {
        const QVariant value = row->data(0, role);
        if (value.userType() == qMetaTypeId<SignalItem>())
            text += " item " + textOf(value.value<SignalItem>());
        else
            QDebug(&text) << value;
    }
    text += "\n";
    for (int i = 0; i < row->childCount(); ++i)
        text += answersOf(row->child(i));
    return text;
}

using Change = std::function<void(QTreeWidgetItem *top)>;

} // namespace

Q_DECLARE_METATYPE(Change)

class TestResultRows : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void netsAndBusesBecomeSignals_data();
    void netsAndBusesBecomeSignals();
    void busesComeFirstUnderFullNames();
    void moduleRowHoldsShortNames();
    void rowsAnswerLikeThoseOfTheirSignals_data();
    void rowsAnswerLikeThoseOfTheirSignals();
    void clonesOutliveTheNetlist();
    void signalOfAResult_data();
    void signalOfAResult();
    void membersShareTheNamesOfTheirBus_data();
    void membersShareTheNamesOfTheirBus();
    void changedRowsAreAsked_data();
    void changedRowsAreAsked();

private:
    const std::unique_ptr<NETWEIR::RtlNetlist> m_netlist = TarnTest::sampleNetlist();
};

void TestResultRows::netsAndBusesBecomeSignals_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QStringList>("nets");
    QTest::addColumn<QString>("bus");
    QTest::newRow("Probe In") << int(ProbeTypeIn) << QStringList{"top/clk:0", "top/rst:0"}
                              << "-top/data[1:0]:1 (-top/data[1]:1) (top/data[0]:1)";
    QTest::newRow("Probe Out") << int(ProbeTypeOut) << QStringList{"top/clk:0", "-top/rst:0"}
                               << "top/data[1:0]:1 (top/data[1]:1) (top/data[0]:1)";
}

void TestResultRows::netsAndBusesBecomeSignals()
{
    QFETCH(int, type);
    QFETCH(QStringList, nets);
    QFETCH(QString, bus);
    QStringList texts;
    for (NETWEIR::RtlNet *net : m_netlist->top()->nets())
        texts.append(textOf(signalOf(net, ProbeType(type))));
    QCOMPARE(texts, nets);
    QCOMPARE(textOf(signalOf(m_netlist->top()->buses().first(), ProbeType(type))), bus);
}

void TestResultRows::busesComeFirstUnderFullNames()
{
    NETWEIR::Hierachy *u0 = m_netlist->top()->children().first();
    QTreeWidget tree;
    tree.addTopLevelItems(newResultRows(u0->nets(), u0->buses(), ProbeTypeIn));
    QCOMPARE(TarnTest::modelText(tree.model()),
             QString("top/u0/cnt[1:0]\n    top/u0/cnt[1]\n    top/u0/cnt[0]\n"
                     "top/u0/clk\ntop/u0/gated\n"));
}

void TestResultRows::moduleRowHoldsShortNames()
{
    NETWEIR::Hierachy *u0 = m_netlist->top()->children().first();
    const ModuleForWidget module{"core:u0", u0->nets(), u0->buses(), {ModuleForWidget()}};
    QTreeWidget tree;
    tree.addTopLevelItem(newModuleRow(module, ProbeTypeOut));
    QCOMPARE(
        TarnTest::modelText(tree.model()),
        QString("core:u0\n    cnt[1:0]\n        cnt[1]\n        cnt[0]\n    clk\n    gated\n"));
    const QTreeWidgetItem *row = tree.topLevelItem(0);
    QVERIFY(!(row->flags() & Qt::ItemIsSelectable));
    QCOMPARE(textOf(signalOfRow(row->child(0))),
             QString("-top/u0/cnt[1:0]:1 (-top/u0/cnt[1]:1) (-top/u0/cnt[0]:1)"));
    QCOMPARE(textOf(signalOfRow(row->child(0)->child(1))), QString("-top/u0/cnt[0]:1"));
    QCOMPARE(textOf(signalOfRow(row->child(2))), QString("top/u0/gated:0"));
}

void TestResultRows::rowsAnswerLikeThoseOfTheirSignals_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("Probe In") << int(ProbeTypeIn);
    QTest::newRow("Probe Out") << int(ProbeTypeOut);
}

void TestResultRows::rowsAnswerLikeThoseOfTheirSignals()
{
    QFETCH(int, type);
    const auto kind = ProbeType(type);
    NETWEIR::Hierachy *top = m_netlist->top();
    const QList<NETWEIR::RtlNet *> nets = top->singleNetsIncludeSub();
    const QList<NETWEIR::RtlNetBus *> buses = top->netbusesIncludeSub();
    QTreeWidgetItem flat;
    flat.addChildren(newResultRows(nets, buses, kind));
    const std::unique_ptr<QTreeWidgetItem> module(newModuleRow({"m", nets, buses, {}}, kind));

    QTreeWidgetItem flatSignals;
    QTreeWidgetItem moduleSignals;
    for (NETWEIR::RtlNetBus *bus : buses) {
        QStringList names{bus->BusName()};
        for (NETWEIR::RtlNet *net : bus->nets())
            names.append(net->name());
        signal2TreeItem(&flatSignals, signalOf(bus, kind), 0);
        signal2TreeItemForHierarchy(&moduleSignals, signalOf(bus, kind), names, 0);
    }
    for (NETWEIR::RtlNet *net : nets) {
        signal2TreeItem(&flatSignals, signalOf(net, kind), 0);
        signal2TreeItemForHierarchy(&moduleSignals, signalOf(net, kind), {net->name()}, 0);
    }
    QCOMPARE(answersOf(&flat), answersOf(&flatSignals));
    QCOMPARE(module->childCount(), moduleSignals.childCount());
    for (int i = 0; i < moduleSignals.childCount(); ++i)
        QCOMPARE(answersOf(module->child(i)), answersOf(moduleSignals.child(i)));
}

void TestResultRows::clonesOutliveTheNetlist()
{
    auto netlist = TarnTest::sampleNetlist();
    QTreeWidget tree;
    tree.addTopLevelItems(
        newResultRows(netlist->top()->nets(), netlist->top()->buses(), ProbeTypeIn));
    std::unique_ptr<QTreeWidgetItem> copy(tree.topLevelItem(0)->clone());
    const QString answers = answersOf(copy.get());
    QCOMPARE(answers, answersOf(tree.topLevelItem(0)));
    tree.topLevelItem(1)->setText(0, "own text"); // Stores all that the row shows.
    netlist.reset();
    QCOMPARE(answersOf(copy.get()), answers);
    QCOMPARE(textOf(signalOfRow(tree.topLevelItem(1))), QString("top/clk:0"));
    tree.clear();
}

void TestResultRows::signalOfAResult_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QString>("signal");
    SignalItem item;
    item.name = "top/clk";
    item.kind = SignalItem::Net;
    QTest::newRow("signal") << QVariant::fromValue(item) << "top/clk:0";
    QTest::newRow("nothing") << QVariant() << "shown:1";
    QTest::newRow("something else") << QVariant("top/clk") << "shown:1";
}

void TestResultRows::signalOfAResult()
{
    QFETCH(QVariant, stored);
    QFETCH(QString, signal);
    QTreeWidgetItem row({"shown"});
    row.setData(0, Qt::UserRole, stored);
    QCOMPARE(textOf(signalOfResult(&row)), signal);
}

void TestResultRows::membersShareTheNamesOfTheirBus_data()
{
    QTest::addColumn<int>("first");
    QTest::newRow("all") << 0;
    QTest::newRow("without the first") << 1;
}

void TestResultRows::membersShareTheNamesOfTheirBus()
{
    QFETCH(int, first);
    const NETWEIR::Hierachy *top = m_netlist->top();
    QTreeWidgetItem flat;
    flat.addChildren(newResultRows(top->nets(), top->buses(), ProbeTypeOut));
    const std::unique_ptr<QTreeWidgetItem> module(
        newModuleRow({"m", top->nets(), top->buses(), {}}, ProbeTypeOut));
    for (const QTreeWidgetItem *rows : {&flat, module.get()}) {
        ResultSignals results;
        const QTreeWidgetItem *busRow = rows->child(0);
        const SignalItem bus = results.of(busRow);
        QCOMPARE(textOf(bus), textOf(signalOfResult(busRow)));
        QCOMPARE(bus.members.size(), busRow->childCount());
        for (int i = first; i < busRow->childCount(); ++i) {
            const SignalItem member = results.of(busRow->child(i));
            QCOMPARE(textOf(member), textOf(signalOfResult(busRow->child(i))));
            QVERIFY(member.name.isSharedWith(bus.members.at(i).name));
        }
        for (int i = 1; i < rows->childCount(); ++i)
            QCOMPARE(textOf(results.of(rows->child(i))), textOf(signalOfResult(rows->child(i))));
    }
}

void TestResultRows::changedRowsAreAsked_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("no row") << Change([](QTreeWidgetItem *) {});
    QTest::newRow("text of a member")
        << Change([](QTreeWidgetItem *top) { top->child(0)->child(1)->setText(0, "other"); });
    QTest::newRow("item of a member") << Change([](QTreeWidgetItem *top) {
        SignalItem item;
        item.name = "own";
        top->child(0)->child(0)->setData(0, Qt::UserRole, QVariant::fromValue(item));
    });
    QTest::newRow("text of a bus")
        << Change([](QTreeWidgetItem *top) { top->child(0)->setText(0, "other"); });
    QTest::newRow("item of a bus") << Change(
        [](QTreeWidgetItem *top) { top->child(0)->setData(0, Qt::UserRole, QVariant("other")); });
    QTest::newRow("members in another order") << Change(
        [](QTreeWidgetItem *top) { top->child(0)->insertChild(0, top->child(0)->takeChild(1)); });
    QTest::newRow("a member less")
        << Change([](QTreeWidgetItem *top) { delete top->child(0)->takeChild(0); });
    QTest::newRow("a member below another bus") << Change(
        [](QTreeWidgetItem *top) { top->child(1)->insertChild(1, top->child(0)->takeChild(0)); });
    QTest::newRow("a member of its own")
        << Change([](QTreeWidgetItem *top) { top->insertChild(1, top->child(0)->takeChild(0)); });
    QTest::newRow("a net below a bus")
        << Change([](QTreeWidgetItem *top) { top->child(0)->addChild(top->takeChild(3)); });
    QTest::newRow("a bus below a bus")
        << Change([](QTreeWidgetItem *top) { top->child(0)->insertChild(1, top->takeChild(1)); });
    QTest::newRow("an ordinary row below a bus") << Change(
        [](QTreeWidgetItem *top) { top->child(0)->addChild(new QTreeWidgetItem({"plain"})); });
}

void TestResultRows::changedRowsAreAsked()
{
    QFETCH(Change, change);
    const NETWEIR::Hierachy *top = m_netlist->top();
    const QList<NETWEIR::RtlNet *> nets = top->singleNetsIncludeSub();
    const QList<NETWEIR::RtlNetBus *> buses = top->netbusesIncludeSub();
    for (const bool byModule : {false, true}) {
        QTreeWidget tree;
        if (byModule)
            tree.addTopLevelItem(newModuleRow({"m", nets, buses, {}}, ProbeTypeIn));
        else
            tree.addTopLevelItems(newResultRows(nets, buses, ProbeTypeIn));
        change(byModule ? tree.topLevelItem(0) : tree.invisibleRootItem());
        ResultSignals results;
        QStringList expected;
        QStringList found;
        forEachRow(&tree, [&](const QTreeWidgetItem *row) {
            expected.append(textOf(signalOfResult(row)));
            found.append(textOf(results.of(row)));
        });
        QVERIFY(expected.size() >= 8);
        QCOMPARE(found, expected);
    }
}

TARN_TEST_MAIN(TestResultRows)

#include "tst_resultrows.moc"
