// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <widgets/largetreewidget.h>

#include <QString>

namespace TARN {

/// The list of what a search has found. A notice that nothing was found is painted; it is no row.
class ResultTreeWidget final : public LargeTreeWidget
{
    Q_OBJECT

public:
    using LargeTreeWidget::LargeTreeWidget;

    /// Whether the user may choose @p row: a net or bus that is not excluded, never a module.
    static bool canBeChosen(const QTreeWidgetItem *row);

    /// The text that is painted below the rows, none when empty.
    const QString &notice() const { return m_notice; }
    void setNotice(const QString &notice);

protected:
    /// A double click on a row that can be chosen neither opens nor closes it: it is there for
    /// itemDoubleClicked().
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_notice;
};

} // namespace TARN
