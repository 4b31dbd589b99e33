// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTreeWidget>

namespace TARN {

class InitialValueLine;

/// The tree of initial values: a top-level row for each port, with its line, and below it a row for
/// each signal, with a label. Owns these widgets, of which there may be thousands.
///
/// QTreeWidget places all widgets at every scroll, resize and expansion, and searches the row of
/// each from the start. This tree places the lines, which can have the focus, and what is in sight,
/// and hides the other labels.
class ValueTree final : public QTreeWidget
{
    Q_OBJECT

public:
    using QTreeWidget::QTreeWidget;

    /// The height of every row in pixels. The style sheet of the page sets it.
    static constexpr int RowHeight = 20;

    /// The line in top-level row @p row, null when there is none.
    InitialValueLine *lineAt(int row) const;

    /// Deletes the labels below @p portRow. Its line forgets them and becomes inert.
    void deleteLabels(QTreeWidgetItem *portRow);

    /// Deletes top-level row @p row with its line and labels.
    void deletePort(int row);

    /// Between these calls rows and widgets may come and go at no cost of layout. @p many tells
    /// that it is worth while to paint the whole tree anew.
    void suspendLayout(bool many = true);
    void resumeLayout();

protected:
    void scrollContentsBy(int dx, int dy) override;

protected Q_SLOTS:
    void updateEditorGeometries() override;

private:
    InitialValueLine *lineOf(QTreeWidgetItem *portRow) const;
    void deleteWidget(const QModelIndex &row);
    QWidget *place(const QModelIndex &index);

    bool m_suspended = false;
};

} // namespace TARN
