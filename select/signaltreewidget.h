// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <widgets/largetreewidget.h>

#include <QPersistentModelIndex>

namespace TARN {

/// List of signals whose top-level rows the user reorders by dragging, or with Alt+Up and Alt+Down.
/// Member rows of a bus stay where they are. What was moved stays selected and expanded.
class signalTreeWidget : public LargeTreeWidget
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
    void startDrag(Qt::DropActions supportedActions) override;
    void keyPressEvent(QKeyEvent *event) override;
    QMimeData *mimeData(const QList<QTreeWidgetItem *> items) const override;

private:
    QList<QTreeWidgetItem *> selectedTopLevelRows() const;
    // These return the copies that they inserted.
    QList<QTreeWidgetItem *> dropBeside(QTreeWidgetItem *target, int y,
                                        const QList<QTreeWidgetItem *> &dragged);
    QList<QTreeWidgetItem *> dropAtEnd(const QList<QTreeWidgetItem *> &dragged);
    QList<QTreeWidgetItem *> insertCopies(int index, const QList<QTreeWidgetItem *> &rows);
    void selectDropped();
    void moveSelectedRows(bool up);

    QPersistentModelIndex m_firstDropped; ///< First of the rows dropped last.
    QPersistentModelIndex m_lastDropped;  ///< Last of them.
};

} // namespace TARN
