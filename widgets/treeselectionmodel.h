// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QItemSelectionModel>

namespace TARN {

/// A selection model that stays quick when rows of tens of thousands of parents are selected: each
/// change takes time in proportion to the ranges. What is selected, in which order, and what the
/// signals tell is the same as with QItemSelectionModel.
///
/// The base holds the whole selection as the last one made, so that it has nothing to merge when it
/// is asked. What the next one replaces is remembered here.
class TreeSelectionModel final : public QItemSelectionModel
{
    Q_OBJECT

public:
    TreeSelectionModel(QAbstractItemModel *model, QObject *parent);

    using QItemSelectionModel::select;
    void select(const QItemSelection &selection, SelectionFlags command) override;

private:
    void rowsChange();
    void takeOver();
    void hold(const QItemSelection &selection);
    QItemSelection wholeRows(const QItemSelection &selection) const;

    QItemSelection m_ranges;  ///< Stays when the last selection is replaced (Current).
    QItemSelection m_current; ///< The last selection.
    SelectionFlags m_command = NoUpdate;
    bool m_baseIsAhead = false; ///< The base has followed rows that came or went.
};

} // namespace TARN
