// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTreeWidget>

namespace TARN {

/// List of signals whose top-level rows the user reorders by dragging. Member rows of a bus stay
/// where they are.
class signalTreeWidget : public QTreeWidget
{
    Q_OBJECT

public:
    explicit signalTreeWidget(QWidget *parent = nullptr);

Q_SIGNALS:
    /// Rows were dropped in a new place.
    void itemDragged();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    QMimeData *mimeData(const QList<QTreeWidgetItem *> items) const override;

private:
    QList<QTreeWidgetItem *> draggedRows() const;
    void dropBeside(QTreeWidgetItem *target, int y, const QList<QTreeWidgetItem *> &dragged);
    void dropAtEnd(const QList<QTreeWidgetItem *> &dragged);
};

} // namespace TARN
