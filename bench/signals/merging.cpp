// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "jobs.h"

#include <probes/signaltree.h>
#include <support/benchmark.h>

#include <QTreeWidget>

#include <random>

using TARN::SignalItem;
using TarnBench::fail;
using TarnBench::Goal;
using TarnBench::Table;

namespace {

constexpr int BusWidth = 4;
constexpr int Rounds = 5;

using Signals = QList<SignalItem>;

SignalItem signal(int number, const QString &suffix, SignalItem::Kind kind)
{
    SignalItem item;
    item.name = QStringLiteral("bench_top/group_inst_%1/block_inst_%2/state_register%3")
                    .arg(number / 1000)
                    .arg(number % 1000)
                    .arg(suffix);
    item.kind = kind;
    return item;
}

SignalItem single(int number)
{
    return signal(number, QString(), SignalItem::Net);
}

SignalItem bit(int number, int index)
{
    return signal(number, QStringLiteral("[%1]").arg(index), SignalItem::Bus);
}

SignalItem bus(int number)
{
    SignalItem item = signal(number, QStringLiteral("[%1:0]").arg(BusWidth - 1), SignalItem::Bus);
    for (int index = BusWidth - 1; index >= 0; --index)
        item.members.append(bit(number, index));
    return item;
}

void shuffle(Signals &items)
{
    std::mt19937 random(1);
    std::shuffle(items.begin(), items.end(), random);
}

/// The signals that a tree shows and those that are added to it.
struct Merge
{
    Signals shown;
    Signals buses;
    Signals singles;
};

/// Every tenth signal is a bus.
SignalItem mixedSignal(int number)
{
    return number % 10 == 0 ? bus(number) : single(number);
}

/// @p count shown signals and as many new ones, unordered. The numbers of the new ones start at
/// @p firstNew: the smaller it is, the more of them are shown already.
Merge mixedMerge(int count, int firstNew)
{
    Merge merge;
    for (int i = 0; i < count; ++i) {
        merge.shown.append(mixedSignal(i));
        const SignalItem item = mixedSignal(firstNew + i);
        (item.kind == SignalItem::Bus ? merge.buses : merge.singles).append(item);
    }
    shuffle(merge.shown);
    shuffle(merge.buses);
    shuffle(merge.singles);
    return merge;
}

Merge disjointMerge(int count)
{
    return mixedMerge(count, count);
}

/// @p count shown bits and new buses that replace all of them.
Merge coveringMerge(int count)
{
    Merge merge;
    for (int i = 0; i < count / BusWidth; ++i) {
        merge.buses.append(bus(i));
        for (int index = 0; index < BusWidth; ++index)
            merge.shown.append(bit(i, index));
    }
    shuffle(merge.shown);
    shuffle(merge.buses);
    return merge;
}

bool coveredBy(const SignalItem &bus, const SignalItem &item)
{
    for (const SignalItem &member : bus.members) {
        if (member.name == item.name)
            return true;
    }
    return false;
}

/// Reconciles one shown bus, or signal without a kind, with the new buses. True when one of them
/// covers it.
bool nestedReconcile(const SignalItem &shown, Signals &buses)
{
    for (int i = 0; i < buses.size(); ++i) {
        if (buses.at(i).name == shown.name) {
            buses.removeAt(i);
            return false;
        }
        if (shown.members.isEmpty() && coveredBy(buses.at(i), shown))
            return true;
        if (coveredBy(shown, buses.at(i)))
            buses.removeAt(i--);
    }
    return false;
}

/// TARN::CheckRepeat as nested loops.
void nestedCheckRepeat(QTreeWidget *tree, Signals &buses, Signals &singles)
{
    for (int row = 0; row < tree->topLevelItemCount(); ++row) {
        SignalItem shown = TARN::signalOfRow(tree->topLevelItem(row));
        if (shown.kind == SignalItem::Net)
            TARN::CheckRepeatSignal(shown, singles);
        else if (nestedReconcile(shown, buses))
            delete tree->topLevelItem(row--);
    }
}

/// A tree that receives the same signals again in each round.
class MergeBench
{
public:
    using Reconcile = void (*)(QTreeWidget *, Signals &, Signals &);

    MergeBench(Merge merge, Reconcile reconcile)
        : m_merge(std::move(merge))
        , m_reconcile(reconcile)
    {
    }

    void prepare()
    {
        m_tree.clear();
        TARN::signals2Tree(&m_tree, m_merge.shown, 0);
    }

    void run()
    {
        Signals buses = m_merge.buses;
        Signals singles = m_merge.singles;
        m_reconcile(&m_tree, buses, singles);
        TARN::signals2Tree(&m_tree, buses + singles, 0);
    }

    /// The names of all rows.
    QStringList result() const
    {
        QStringList names;
        for (QTreeWidgetItemIterator row(const_cast<QTreeWidget *>(&m_tree)); *row; ++row)
            names.append((*row)->text(0));
        return names;
    }

private:
    Merge m_merge;
    Reconcile m_reconcile;
    QTreeWidget m_tree;
};

/// Median times of merging in @p first and in @p second.
std::pair<double, double> mergeTimes(MergeBench &first, MergeBench &second)
{
    const std::vector<double> times =
        TarnBench::interleavedMedians(Rounds, {[&] { first.prepare(); }, [&] { first.run(); },
                                               [&] { second.prepare(); }, [&] { second.run(); }});
    return {times[1], times[3]};
}

void addGrowth(Table &table, const std::string &what, Merge (*make)(int))
{
    MergeBench small(make(100000), TARN::CheckRepeat);
    MergeBench large(make(200000), TARN::CheckRepeat);
    const auto [smallTime, largeTime] = mergeTimes(small, large);
    table.add(what + ", 100,000", smallTime, "s");
    table.add(what + ", 200,000 / 100,000", largeTime / smallTime, "x", 3);
}

void checkResult(const MergeBench &nested, const MergeBench &real)
{
    if (nested.result() != real.result())
        fail("merging gives another result than nested loops");
}

void addComparison(Table &table, int count)
{
    MergeBench nested(disjointMerge(count), nestedCheckRepeat);
    MergeBench real(disjointMerge(count), TARN::CheckRepeat);
    const auto [nestedTime, realTime] = mergeTimes(nested, real);
    checkResult(nested, real);
    table.add("nested loops / merge, " + std::to_string(count), nestedTime / realTime, "x",
              Goal::atLeast(50));
}

/// Both implementations give the same result for signals that are already shown.
void checkMeeting(const Merge &merge)
{
    MergeBench nested(merge, nestedCheckRepeat);
    MergeBench real(merge, TARN::CheckRepeat);
    for (MergeBench *bench : {&nested, &real}) {
        bench->prepare();
        bench->run();
    }
    checkResult(nested, real);
}

} // namespace

bool measureMerging()
{
    checkMeeting(mixedMerge(5000, 2500));
    checkMeeting(coveringMerge(5000));

    Table table("Merging n new signals, a tenth of them buses, into n shown ones, in no order");
    addGrowth(table, "none of them shown", disjointMerge);
    addGrowth(table, "buses that cover all that is shown", coveringMerge);
    addComparison(table, 20000);
    return table.print();
}
