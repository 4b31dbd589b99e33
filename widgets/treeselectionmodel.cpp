// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "treeselectionmodel.h"

#include "selectionranges.h"

#include <QSignalBlocker>

#include <algorithm>

namespace TARN {

namespace {

/// The ranges whose rows are still there.
QItemSelection validRanges(const QItemSelection &selection)
{
    const auto isValid = [](const QItemSelectionRange &range) { return range.isValid(); };
    if (std::all_of(selection.cbegin(), selection.cend(), isValid))
        return selection;
    QItemSelection valid;
    std::copy_if(selection.cbegin(), selection.cend(), std::back_inserter(valid), isValid);
    return valid;
}

} // namespace

TreeSelectionModel::TreeSelectionModel(QAbstractItemModel *model, QObject *parent)
    : QItemSelectionModel(nullptr, parent)
{
    // Before the base, which may tell of rows that go: who listens may then select others.
    connect(model, &QAbstractItemModel::rowsAboutToBeInserted, this,
            &TreeSelectionModel::rowsChange);
    connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, this,
            &TreeSelectionModel::rowsChange);
    connect(model, &QAbstractItemModel::rowsAboutToBeMoved, this, &TreeSelectionModel::rowsChange);
    connect(model, &QAbstractItemModel::layoutAboutToBeChanged, this,
            &TreeSelectionModel::rowsChange);
    setModel(model);
}

void TreeSelectionModel::rowsChange()
{
    m_baseIsAhead = true;
}

void TreeSelectionModel::takeOver()
{
    if (!m_baseIsAhead)
        return;
    m_ranges = selection();
    m_current.clear();
    m_baseIsAhead = false;
}

void TreeSelectionModel::select(const QItemSelection &selection, SelectionFlags command)
{
    if (command == NoUpdate)
        return;
    takeOver();
    const QItemSelection before = this->selection();
    if (command & Clear) {
        m_ranges.clear();
        m_current.clear();
    }
    if (!(command & Current)) {
        mergeSelection(&m_ranges, m_current, m_command);
        m_current.clear();
    }
    if (command & (Toggle | Select | Deselect)) {
        m_command = command;
        m_current = command & Rows ? wholeRows(selection) : selection;
    }
    QItemSelection after = m_ranges = validRanges(m_ranges);
    mergeSelection(&after, m_current, m_command);
    hold(after);
    const SelectionChange change = selectionChange(before, after);
    if (!change.isEmpty())
        Q_EMIT selectionChanged(change.selected, change.deselected);
}

void TreeSelectionModel::hold(const QItemSelection &selection)
{
    const QSignalBlocker blocker(this);
    QItemSelectionModel::select(QItemSelection(), Clear);
    if (!selection.isEmpty() || m_ranges.isEmpty()) {
        QItemSelectionModel::select(selection, Select);
        return;
    }
    // Clearing passes a base by that is empty. Here it has to get rid of the ranges.
    QItemSelectionModel::select(m_ranges, Select);
    QItemSelectionModel::select(m_current, m_command & (Toggle | Deselect));
}

/// The rows of @p selection, each of them once.
QItemSelection TreeSelectionModel::wholeRows(const QItemSelection &selection) const
{
    SelectionRanges whole;
    for (const QItemSelectionRange &range : selection) {
        const QModelIndex parent = range.parent();
        const int last = model()->columnCount(parent) - 1;
        if (!range.isValid())
            continue;
        if (range.left() == 0 && range.right() == last)
            whole.add(range);
        else
            whole.add(QItemSelectionRange(model()->index(range.top(), 0, parent),
                                          model()->index(range.bottom(), last, parent)));
    }
    return whole.left();
}

} // namespace TARN
