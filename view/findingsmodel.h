// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <audit/finding.h>

#include <QAbstractTableModel>
#include <QIcon>

namespace TARN {

class Findings;

/// The findings of a view as rows of a table, which it makes when they are asked for: hundreds of
/// thousands cost no more than those in sight.
///
/// Owns nothing. A change of the findings resets it, and all indexes become invalid.
class FindingsModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { SeverityColumn, PlaceColumn, TextColumn, ColumnCount };

    FindingsModel(const Findings *findings, QObject *parent);

    /// Announce that the findings have changed.
    void reset();

    /// The finding of @p row, which must exist.
    const Finding &findingOf(int row) const;

    /// The row of @p finding or, when it is gone, of what has followed it; -1 when there is none.
    int rowOf(const Finding &finding) const;

    // QAbstractTableModel
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    bool isError(int row) const;
    QString textOf(int row, int column) const;

    const Findings *m_findings;
    QIcon m_errorSign;
    QIcon m_warningSign;
    int m_rows = 0;
    // A view asks for several roles and columns of a row in turn.
    mutable int m_cachedRow = -1;
    mutable Finding m_cached;
};

} // namespace TARN
