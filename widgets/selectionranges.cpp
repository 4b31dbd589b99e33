// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "selectionranges.h"

#include <algorithm>

namespace TARN {

SelectionRanges::SelectionRanges(const QItemSelection &ranges)
{
    m_ranges.reserve(std::size_t(ranges.size()));
    m_byParent.reserve(ranges.size());
    for (const QItemSelectionRange &range : ranges)
        append(range, &m_byParent[range.parent()]);
}

void SelectionRanges::append(const QItemSelectionRange &range, Positions *positions)
{
    positions->push_back(m_ranges.size());
    m_ranges.push_back(range);
}

void SelectionRanges::add(const QItemSelectionRange &range)
{
    QItemSelection parts;
    addIntersections(range, &parts);
    for (const QItemSelectionRange &part : qAsConst(parts))
        cut(part);
    append(range, &m_byParent[range.parent()]);
}

void SelectionRanges::cut(const QItemSelectionRange &part)
{
    const auto found = m_byParent.find(part.parent());
    if (found == m_byParent.end())
        return;
    QItemSelection pieces;
    Positions &positions = *found;
    const auto isCut = [&](std::size_t position) {
        QItemSelectionRange &range = m_ranges[position];
        if (!range.intersects(part))
            return false;
        QItemSelection::split(range, part, &pieces);
        range = QItemSelectionRange();
        return true;
    };
    positions.erase(std::remove_if(positions.begin(), positions.end(), isCut), positions.end());
    for (const QItemSelectionRange &piece : qAsConst(pieces))
        append(piece, &positions);
}

bool SelectionRanges::removeEqual(const QItemSelectionRange &range)
{
    const auto found = m_byParent.find(range.parent());
    if (found == m_byParent.end())
        return false;
    const auto equal = std::find_if(found->begin(), found->end(), [&](std::size_t position) {
        return m_ranges[position] == range;
    });
    if (equal == found->end())
        return false;
    m_ranges[*equal] = QItemSelectionRange();
    found->erase(equal);
    return true;
}

void SelectionRanges::addIntersections(const QItemSelectionRange &range,
                                       QItemSelection *parts) const
{
    const auto found = m_byParent.constFind(range.parent());
    if (found == m_byParent.constEnd())
        return;
    for (const std::size_t position : *found) {
        if (m_ranges[position].intersects(range))
            parts->append(m_ranges[position].intersected(range));
    }
}

QItemSelection SelectionRanges::left() const
{
    QItemSelection ranges;
    std::copy_if(m_ranges.cbegin(), m_ranges.cend(), std::back_inserter(ranges),
                 [](const QItemSelectionRange &range) { return range.model(); });
    return ranges;
}

void mergeSelection(QItemSelection *selection, const QItemSelection &other,
                    QItemSelectionModel::SelectionFlags command)
{
    // With one list empty, or as good as, nothing is gained.
    if (selection->isEmpty() || other.size() <= 1) {
        selection->merge(other, command);
        return;
    }
    const bool toggle = command & QItemSelectionModel::Toggle;
    if (!toggle && !(command & (QItemSelectionModel::Select | QItemSelectionModel::Deselect)))
        return;
    SelectionRanges old(*selection);
    QItemSelection added;
    QItemSelection intersections;
    for (const QItemSelectionRange &range : other) {
        if (!range.isValid())
            continue;
        added.append(range);
        old.addIntersections(range, &intersections);
    }
    for (const QItemSelectionRange &part : qAsConst(intersections))
        old.cut(part);
    if (toggle) {
        SelectionRanges toggled(added);
        for (const QItemSelectionRange &part : qAsConst(intersections))
            toggled.cut(part);
        added = toggled.left();
    }
    *selection = old.left();
    if (!(command & QItemSelectionModel::Deselect))
        *selection += added;
}

SelectionChange selectionChange(const QItemSelection &before, const QItemSelection &after)
{
    if (before.isEmpty() || after.isEmpty())
        return {after, before};
    SelectionRanges selected(after);
    QItemSelection gone;
    for (const QItemSelectionRange &range : before) {
        if (!selected.removeEqual(range))
            gone.append(range);
    }
    SelectionRanges deselected(gone);
    QItemSelection intersections;
    for (const QItemSelectionRange &range : qAsConst(gone))
        selected.addIntersections(range, &intersections);
    for (const QItemSelectionRange &part : qAsConst(intersections)) {
        deselected.cut(part);
        selected.cut(part);
    }
    return {selected.left(), deselected.left()};
}

} // namespace TARN
