// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "jobs.h"

#include <probes/signaltree.h>
#include <select/tarnsignalselectdialog.h>
#include <support/benchmark.h>

#include <QApplication>
#include <QItemSelection>
#include <QTreeWidget>

using TARN::SignalItem;
using TarnBench::fail;
using TarnBench::Table;

namespace {

constexpr int RowCount = 100000;
constexpr int Rounds = 5;

QList<SignalItem> chosenSignals()
{
    QList<SignalItem> items;
    for (int i = 0; i < RowCount; ++i) {
        SignalItem item;
        item.name = QStringLiteral("bench_top/state_register_%1").arg(i);
        item.kind = SignalItem::Net;
        items.append(item);
    }
    return items;
}

/// The signals whose rows are in no range of @p removed.
QList<QString> namesBut(const QList<SignalItem> &items, const QVector<QPair<int, int>> &removed)
{
    QList<QString> names;
    int next = 0;
    for (const QPair<int, int> &range : removed) {
        for (; next < range.first; ++next)
            names.append(items.at(next).name);
        next = range.second + 1;
    }
    for (; next < items.size(); ++next)
        names.append(items.at(next).name);
    return names;
}

/// The list of chosen signals of a signal select dialog.
class ChosenList
{
public:
    ChosenList()
        : m_items(chosenSignals())
        , m_dialog(nullptr, TARN::ProbeTypeIn, nullptr)
        , m_list(m_dialog.findChild<QTreeWidget *>(QStringLiteral("treeWidgetAddSignal")))
    {
        m_dialog.show();
    }

    /// Fills the list and selects the rows in @p ranges.
    void prepare(const QVector<QPair<int, int>> &ranges)
    {
        m_list->clear();
        TARN::signals2Tree(m_list, m_items, 0);
        const QAbstractItemModel *model = m_list->model();
        QItemSelection selection;
        for (const QPair<int, int> &range : ranges)
            selection.append(
                QItemSelectionRange(model->index(range.first, 0), model->index(range.second, 0)));
        m_list->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
        QApplication::processEvents();
    }

    void call(const char *slot) { QMetaObject::invokeMethod(&m_dialog, slot); }

    void check(const QList<QString> &expected) const
    {
        QList<QString> names;
        for (int i = 0; i < m_list->topLevelItemCount(); ++i)
            names.append(m_list->topLevelItem(i)->text(0));
        if (names != expected)
            fail("other rows than those selected were removed");
    }

    /// Median time of removing the selected rows in @p ranges, divided by that of clearing the list
    /// in the same state.
    double ratio(const QVector<QPair<int, int>> &ranges)
    {
        const QList<QString> left = namesBut(m_items, ranges);
        const std::vector<double> times = TarnBench::interleavedMedians(
            Rounds,
            {[&] { prepare(ranges); }, [&] { call("onDelSignal"); }, [&] { check(left); },
             [&] { prepare(ranges); }, [&] { call("onDelAllSignal"); }, [&] { check({}); }});
        return times[1] / times[4];
    }

private:
    QList<SignalItem> m_items;
    TARN::TarnSignalSelectDialog m_dialog;
    QTreeWidget *m_list;
};

/// Every other range of @p length rows.
QVector<QPair<int, int>> everyOther(int length)
{
    QVector<QPair<int, int>> ranges;
    for (int row = 0; row < RowCount; row += 2 * length)
        ranges.append({row, row + length - 1});
    return ranges;
}

} // namespace

bool measureRemoving()
{
    ChosenList list;
    Table table("Removing half of 100,000 chosen rows, relative to clearing them");
    table.add("the first half", list.ratio(everyOther(RowCount / 2)), "x", 2);
    table.add("every other hundred", list.ratio(everyOther(100)), "x", 2);
    table.add("every other row", list.ratio(everyOther(1)), "x", 2);
    return table.print();
}
