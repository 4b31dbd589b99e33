// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "signalsamples.h"

#include <probes/signaltree.h>
#include <support/testcase.h>

#include <QApplication>
#include <QRandomGenerator>
#include <QTest>
#include <QTreeWidget>

using namespace TARN;
using TarnTest::bus;
using TarnTest::namesOf;
using TarnTest::net;

namespace {

/// The merge as nested loops, one step at a time: the reference for the real one.
namespace Plain {

bool inBus(const SignalItem &bus, const SignalItem &signal)
{
    if (bus.members.isEmpty() || !signal.members.isEmpty())
        return false;
    for (const SignalItem &member : bus.members) {
        if (member.name == signal.name)
            return true;
    }
    return false;
}

void checkRepeatSignal(const SignalItem &signal, QList<SignalItem> &list)
{
    for (int i = 0; i < list.size(); ++i) {
        if (list.at(i).name == signal.name) {
            list.removeAt(i);
            return;
        }
    }
}

void checkBus(QList<SignalItem> &list, const SignalItem &item)
{
    if (item.members.isEmpty()) {
        for (const SignalItem &entry : qAsConst(list)) {
            if (!entry.members.isEmpty() && inBus(entry, item))
                return;
        }
    } else {
        for (int i = 0; i < list.size();) {
            if (list.at(i).members.isEmpty() && inBus(item, list.at(i)))
                list.removeAt(i);
            else
                ++i;
        }
    }
    list.append(item);
}

bool hasMember(const SignalItem &signal, const QString &name)
{
    for (const SignalItem &member : signal.members) {
        if (member.name == name)
            return true;
    }
    return false;
}

void checkRepeatBus(QList<SignalItem> &shown, int &row, QList<SignalItem> &buses)
{
    const SignalItem s = shown.at(row);
    if (s.members.isEmpty()) {
        for (int i = 0; i < buses.size(); ++i) {
            if (buses.at(i).name == s.name) {
                buses.removeAt(i);
                return;
            }
            if (inBus(buses.at(i), s)) {
                shown.removeAt(row--);
                return;
            }
        }
        return;
    }
    for (int i = 0; i < buses.size();) {
        if (buses.at(i).name == s.name) {
            buses.removeAt(i);
            return;
        }
        if (hasMember(s, buses.at(i).name))
            buses.removeAt(i);
        else
            ++i;
    }
}

void checkRepeat(QList<SignalItem> &shown, QList<SignalItem> &buses, QList<SignalItem> &singles)
{
    for (int row = 0; row < shown.size(); ++row) {
        if (shown.at(row).kind == SignalItem::Net)
            checkRepeatSignal(shown.at(row), singles);
        else
            checkRepeatBus(shown, row, buses);
    }
}

} // namespace Plain

/// Everything in which two lists can differ.
QString text(const QList<SignalItem> &items)
{
    QString result;
    for (const SignalItem &item : items) {
        result += QStringLiteral("%1:%2:%3%4(%5) ")
                      .arg(item.name, item.displayName)
                      .arg(item.kind)
                      .arg(item.enabled)
                      .arg(text(item.members));
    }
    return result;
}

QList<SignalItem> rowsOf(const QTreeWidget &tree)
{
    QList<SignalItem> items;
    for (int i = 0; i < tree.topLevelItemCount(); ++i)
        items.append(signalOfRow(tree.topLevelItem(i)));
    return items;
}

/// Random signals that are often the same: few names, singles and buses, kinds that do not fit,
/// repeats.
class Dice
{
public:
    explicit Dice(quint32 seed)
        : m_random(seed)
    {
    }

    int below(int limit) { return m_random.bounded(limit); }

    QList<SignalItem> list(int names)
    {
        QList<SignalItem> items;
        for (int i = below(9); i > 0; --i)
            items.append(item(names));
        return items;
    }

    SignalItem item(int names)
    {
        SignalItem item;
        item.name = name(names);
        item.displayName = QString::number(m_count++); // Tells equal names apart.
        for (int i = below(2) * below(5); i > 0; --i)
            item.members.append(net(name(names)));
        for (SignalItem &member : item.members)
            member.enabled = below(4) != 0;
        item.kind = below(4) == 0 ? below(3) - 1 : !item.members.isEmpty();
        return item;
    }

private:
    QString name(int names) { return QString(QLatin1Char(char('a' + below(names)))); }

    QRandomGenerator m_random;
    int m_count = 0;
};

constexpr int Cases = 3000;

} // namespace

class TestMerging : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void busCoversItsMembersOnly()
    {
        const SignalItem d = bus("d", 2);
        QVERIFY(isBussignalInBus(d, net("d[1]")));
        QVERIFY(!isBussignalInBus(d, net("d")));
        QVERIFY(!isBussignalInBus(d, net("D[1]")));
        QVERIFY(!isBussignalInBus(net("d[1]"), net("d[1]")));
        QVERIFY(!isBussignalInBus(d, bus("d[1]", 1)));
    }

    void removesTheFirstOfThatName()
    {
        QList<SignalItem> list{net("a"), net("b"), net("a")};
        SignalItem a = net("a");
        CheckRepeatSignal(a, list);
        QCOMPARE(namesOf(list), QStringList({"b", "a"}));
        SignalItem none = net("c");
        CheckRepeatSignal(none, list);
        QCOMPARE(namesOf(list), QStringList({"b", "a"}));
    }

    void addsToAnEmptyList()
    {
        QList<SignalItem> list;
        CheckBus(list, net("a"));
        QCOMPARE(namesOf(list), QStringList({"a"}));
        list.clear();
        CheckBus(list, bus("d", 2));
        QCOMPARE(namesOf(list), QStringList({"d"}));
    }

    void busSwallowsSingles()
    {
        QList<SignalItem> list{net("d[1]"), net("x"), net("d[0]")};
        CheckBus(list, bus("d", 2));
        QCOMPARE(namesOf(list), QStringList({"x", "d"}));
    }

    void singleInABusIsNotAdded()
    {
        QList<SignalItem> list{bus("d", 2)};
        CheckBus(list, net("d[1]"));
        QCOMPARE(namesOf(list), QStringList({"d"}));
    }

    void sameNameIsNoReasonToLeaveOut()
    {
        QList<SignalItem> list{net("a"), bus("d", 2)};
        CheckBus(list, net("a"));
        CheckBus(list, bus("d", 2));
        QCOMPARE(namesOf(list), QStringList({"a", "d", "a", "d"}));
    }

    void groupsByKindAndDropsDisabledMembers()
    {
        SignalItem d = bus("d", 3);
        d.members[1].enabled = false;
        SignalItem odd = bus("odd", 2); // Members, but not of the kind of a bus.
        odd.kind = SignalItem::Unset;
        SignalItem grey = net("grey");
        grey.enabled = false;
        QList<SignalItem> buses{bus("before", 1)};
        QList<SignalItem> singles{net("first")};
        Grouped({net("a"), d, odd, grey, bus("e", 1)}, buses, singles);
        QCOMPARE(namesOf(buses), QStringList({"before", "d", "e"}));
        QCOMPARE(namesOf(singles), QStringList({"first", "a", "odd", "grey"}));
        QCOMPARE(namesOf(buses.at(1).members), QStringList({"d[2]", "d[0]"}));
    }

    void groupingLeavesTheCallersItemsAlone()
    {
        QList<SignalItem> all{bus("d", 2)};
        all[0].members[0].enabled = false;
        QList<SignalItem> buses, singles;
        Grouped(all, buses, singles);
        QCOMPARE(all.first().members.size(), 2);
        QCOMPARE(buses.first().members.size(), 1);
    }

    void shownSingleStaysBesideItsBus()
    {
        // A single net is compared with the incoming singles only.
        QTreeWidget tree;
        signal2TreeItem(&tree, net("d[1]"), 1002);
        QList<SignalItem> buses{bus("d", 2)}, singles{net("d[1]"), net("x")};
        CheckRepeat(&tree, buses, singles);
        QCOMPARE(namesOf(rowsOf(tree)), QStringList({"d[1]"}));
        QCOMPARE(namesOf(buses), QStringList({"d"}));
        QCOMPARE(namesOf(singles), QStringList({"x"}));
    }

    void shownBusKeepsItsSinglesIncoming()
    {
        // An incoming single that a shown bus covers is dropped only when it comes as a bus.
        QTreeWidget tree;
        signal2TreeItem(&tree, bus("d", 2), 1002);
        QList<SignalItem> buses{net("d[0]"), bus("e", 1)}, singles{net("d[1]")};
        CheckRepeat(&tree, buses, singles);
        QCOMPARE(namesOf(buses), QStringList({"e"}));
        QCOMPARE(namesOf(singles), QStringList({"d[1]"}));
    }

    void coveredRowGoesAndTheCounterTurnsBack()
    {
        QTreeWidget tree;
        SignalItem shown = net("d[1]");
        shown.kind = SignalItem::Unset;
        signal2TreeItem(&tree, shown, 1002);
        signal2TreeItem(&tree, net("x"), 1002);
        QList<SignalItem> buses{bus("d", 2)};
        int row = 0;
        CheckRepeatBus(&tree, row, buses);
        QCOMPARE(row, -1);
        QCOMPARE(namesOf(rowsOf(tree)), QStringList({"x"}));
        QCOMPARE(namesOf(buses), QStringList({"d"}));
    }

    void rowWithoutAnItemIsOfUnknownKind()
    {
        QTreeWidget tree;
        new QTreeWidgetItem(&tree, {"foreign"});
        SignalItem nameless = bus("", 1);
        QList<SignalItem> buses{bus("d", 1), nameless}, singles{net("")};
        CheckRepeat(&tree, buses, singles);
        QCOMPARE(tree.topLevelItemCount(), 1);
        QCOMPARE(namesOf(buses), QStringList({"d"}));
        QCOMPARE(singles.size(), 1);
    }

    void agreesWithNestedLoops()
    {
        Dice dice(20);
        for (int round = 0; round < Cases; ++round) {
            const int names = 2 + dice.below(12);
            QList<SignalItem> shown = dice.list(names);
            QList<SignalItem> buses = dice.list(names), singles = dice.list(names);
            QTreeWidget tree;
            signals2Tree(&tree, shown, 1002);
            QList<SignalItem> realBuses = buses, realSingles = singles;

            Plain::checkRepeat(shown, buses, singles);
            CheckRepeat(&tree, realBuses, realSingles);
            QCOMPARE(text(rowsOf(tree)), text(shown));
            QCOMPARE(text(realBuses), text(buses));
            QCOMPARE(text(realSingles), text(singles));
        }
    }

    void agreesWithNestedLoopsOnOneRow()
    {
        Dice dice(21);
        for (int round = 0; round < Cases; ++round) {
            const int names = 2 + dice.below(12);
            QList<SignalItem> shown{dice.item(names), dice.item(names), dice.item(names)};
            QList<SignalItem> buses = dice.list(names);
            QTreeWidget tree;
            signals2Tree(&tree, shown, 1002);
            QList<SignalItem> realBuses = buses;
            int row = dice.below(3);
            int realRow = row;

            Plain::checkRepeatBus(shown, row, buses);
            CheckRepeatBus(&tree, realRow, realBuses);
            QCOMPARE(realRow, row);
            QCOMPARE(text(rowsOf(tree)), text(shown));
            QCOMPARE(text(realBuses), text(buses));
        }
    }

    void listFunctionsAgreeWithNestedLoops()
    {
        Dice dice(22);
        for (int round = 0; round < Cases; ++round) {
            const int names = 2 + dice.below(12);
            QList<SignalItem> list = dice.list(names);
            SignalItem item = dice.item(names);
            QCOMPARE(isBussignalInBus(item, list.value(0)), Plain::inBus(item, list.value(0)));

            QList<SignalItem> real = list, plain = list;
            CheckBus(real, item);
            Plain::checkBus(plain, item);
            QCOMPARE(text(real), text(plain));

            real = plain = list;
            CheckRepeatSignal(item, real);
            Plain::checkRepeatSignal(item, plain);
            QCOMPARE(text(real), text(plain));
        }
    }

    void mergedListIsThatOfTheRows()
    {
        Dice dice(24);
        int covered = 0;
        int added = 0;
        for (int round = 0; round < Cases; ++round) {
            const int names = 2 + dice.below(12);
            const QList<SignalItem> shown = dice.list(names);
            const QList<SignalItem> chosen = dice.list(names);
            QTreeWidget tree;
            signals2Tree(&tree, shown, 1002);

            mergeSignals(&tree, chosen);
            const QList<SignalItem> merged = mergedSignals(shown, chosen);
            QCOMPARE(text(merged), text(rowsOf(tree)));
            covered += !text(merged).startsWith(text(shown));
            added += merged.size() > shown.size();
        }
        QVERIFY2(covered > Cases / 100, qPrintable(QString::number(covered)));
        QVERIFY(added > Cases / 10);
    }

    void mergedListHasBusesBeforeTheRest()
    {
        const QList<SignalItem> shown{net("n"), bus("old", 1)};
        const QList<SignalItem> merged =
            mergedSignals(shown, {net("z"), bus("b", 2), net("n"), net("a"), bus("old", 1)});
        QCOMPARE(namesOf(merged), QStringList({"n", "old", "b", "z", "a"}));
        QCOMPARE(namesOf(mergedSignals(shown, {})), QStringList({"n", "old"}));
        QCOMPARE(namesOf(mergedSignals({}, shown)), QStringList({"old", "n"}));
    }

    void manyCoveredRowsGoAtOnce()
    {
        // Enough rows to leave the path that deletes them one by one.
        Dice dice(23);
        for (int round = 0; round < 50; ++round) {
            QList<SignalItem> shown, buses, singles;
            for (int i = 0; i < 300; ++i) {
                SignalItem item = net(QStringLiteral("n%1").arg(dice.below(200)));
                item.kind = dice.below(4) == 0 ? SignalItem::Net : SignalItem::Unset;
                shown.append(item);
            }
            for (int i = 0; i < 8; ++i)
                buses.append(bus(QStringLiteral("b%1").arg(i), {}));
            for (int i = 0; i < 150; ++i)
                buses[dice.below(8)].members.append(
                    net(QStringLiteral("n%1").arg(dice.below(200))));
            QTreeWidget tree;
            signals2Tree(&tree, shown, 1002);
            CheckRepeat(&tree, buses, singles);
            QList<SignalItem> plainBuses = buses;
            Plain::checkRepeat(shown, plainBuses, singles);
            QCOMPARE(text(rowsOf(tree)), text(shown));
            QVERIFY(shown.size() < 280);
        }
    }
};

TARN_TEST_MAIN(TestMerging)
#include "tst_merging.moc"
