// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QTreeWidget>

namespace TARN {

/// The list of what a search has found. It says that nothing was found by painting
/// alone.
class ResultTreeWidget final : public QTreeWidget
{
    Q_OBJECT

public:
    using QTreeWidget::QTreeWidget;

    /// Whether the user may choose @p row: a net or bus that is not excluded, never a module.
    static bool canBeChosen(const QTreeWidgetItem *row);

    /// What is painted below the rows, which is to say that there are none. Nothing when empty.
    const QString &notice() const { return m_notice; }
    void setNotice(const QString &notice);

protected:
    /// Rows that can be chosen neither open nor close: who watches itemDoubleClicked() takes them.
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_notice;
};

} // namespace TARN
