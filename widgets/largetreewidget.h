// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTreeWidget>

namespace TARN {

/// A tree of one column in which selections that span a million rows in tens of thousands of open
/// ones stay quick. Otherwise it behaves like every QTreeWidget. Rows are never hidden.
class LargeTreeWidget : public QTreeWidget
{
    Q_OBJECT

public:
    explicit LargeTreeWidget(QWidget *parent = nullptr);

    void selectAll() override;

protected:
    QRegion visualRegionForSelection(const QItemSelection &selection) const override;

private:
    QModelIndex openRow(const QTreeWidgetItem *parent, const QModelIndex &parentIndex,
                        int row) const;
    QItemSelection shownRows() const;
};

} // namespace TARN
