// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTreeWidget>

namespace TARN {

/// The tree of the initial values, fit for a widget in each of thousands of rows.
///
/// QTreeWidget places all widgets at every scroll, resize and expansion, and searches the row of
/// each from the start. This tree places those of the top-level rows, which can have the focus, and
/// those in sight, and hides the others.
class ValueTree final : public QTreeWidget
{
    Q_OBJECT

public:
    using QTreeWidget::QTreeWidget;

    /// Between these calls rows and widgets may come and go at no cost of layout.
    void suspendLayout();
    void resumeLayout();

protected:
    void scrollContentsBy(int dx, int dy) override;

protected Q_SLOTS:
    void updateEditorGeometries() override;

private:
    QWidget *place(const QModelIndex &index);

    bool m_suspended = false;
};

} // namespace TARN
