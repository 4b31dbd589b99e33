// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QItemSelection>

#include <vector>

namespace TARN {

// What QItemSelection and QItemSelectionModel do with two lists of ranges, with the same results in
// the same order. They compare each range with each other one, and ask the model for the parents
// each time, which takes minutes for the ranges of 25,000 open rows. Here a range meets only those
// below the same row.

/// A list of ranges in which those below one row are found quickly.
class SelectionRanges
{
public:
    explicit SelectionRanges(const QItemSelection &ranges = {});

    /// Appends @p range in the place of all that it has in common with the others.
    void add(const QItemSelectionRange &range);
    /// Takes @p part out of the ranges that it meets. What is left of them goes to the end.
    void cut(const QItemSelectionRange &part);
    /// Removes the first range that equals @p range. False when there is none.
    bool removeEqual(const QItemSelectionRange &range);
    /// Appends to @p parts what each of the ranges has in common with @p range, in their order.
    void addIntersections(const QItemSelectionRange &range, QItemSelection *parts) const;

    /// The ranges that are left.
    QItemSelection left() const;

private:
    using Positions = std::vector<std::size_t>;

    void append(const QItemSelectionRange &range, Positions *positions);

    std::vector<QItemSelectionRange> m_ranges; ///< Empty ranges take the places of those removed.
    QHash<QModelIndex, Positions> m_byParent;  ///< Of the ranges that are left, in their order.
};

/// As QItemSelection::merge().
void mergeSelection(QItemSelection *selection, const QItemSelection &other,
                    QItemSelectionModel::SelectionFlags command);

struct SelectionChange
{
    QItemSelection selected;
    QItemSelection deselected;

    bool isEmpty() const { return selected.isEmpty() && deselected.isEmpty(); }
};

/// What QItemSelectionModel::selectionChanged() tells when @p before becomes @p after.
SelectionChange selectionChange(const QItemSelection &before, const QItemSelection &after);

} // namespace TARN
