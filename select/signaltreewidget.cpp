// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "signaltreewidget.h"

#include <probes/signalrow.h>
#include <probes/treerows.h>

#include <QDataStream>
#include <QDropEvent>
#include <QMouseEvent>
#include <QSet>

namespace TARN {

// What is dragged is written to a stream role by role, the signals among them.

static QDataStream &operator<<(QDataStream &stream, const SignalItem &item)
{
    return stream << item.name << item.displayName << item.members << item.enabled << item.usable
                  << qint32(item.kind);
}

static QDataStream &operator>>(QDataStream &stream, SignalItem &item)
{
    qint32 kind = -1;
    stream >> item.name >> item.displayName >> item.members >> item.enabled >> item.usable >> kind;
    item.kind = kind;
    return stream;
}

static QList<QTreeWidgetItem *> copiesOf(const QList<QTreeWidgetItem *> &rows)
{
    QList<QTreeWidgetItem *> copies;
    copies.reserve(rows.size());
    for (const QTreeWidgetItem *row : rows)
        copies.append(row->clone());
    return copies;
}

signalTreeWidget::signalTreeWidget(QWidget *parent)
    : QTreeWidget(parent)
{
    qRegisterMetaTypeStreamOperators<SignalItem>("TARN::SignalItem");
}

void signalTreeWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        QTreeWidget::mousePressEvent(event);
    else
        event->ignore();
}

void signalTreeWidget::mouseMoveEvent(QMouseEvent *event)
{
    const QTreeWidgetItem *current = currentItem();
    if (current && !current->parent())
        QTreeWidget::mouseMoveEvent(event);
    else
        event->ignore();
}

void signalTreeWidget::dragMoveEvent(QDragMoveEvent *event)
{
    QTreeWidget::dragMoveEvent(event);
}

void signalTreeWidget::dropEvent(QDropEvent *event)
{
    const QPoint position = event->posF().toPoint();
    QTreeWidgetItem *target = itemAt(position);
    if (target && (target->parent() || target->isSelected())) {
        event->setDropAction(Qt::IgnoreAction);
        viewport()->update(); // The mark of the drop place goes.
        return;
    }
    const QList<QTreeWidgetItem *> dragged = draggedRows();
    if (target) {
        dropBeside(target, position.y(), dragged);
        // Not accepted: after an accepted move the view would remove what is selected by then.
        event->setDropAction(Qt::CopyAction);
        removeTopLevelRows(this, dragged);
    } else {
        dropAtEnd(dragged);
        // The view removes the dragged rows after a move.
        event->setDropAction(Qt::MoveAction);
        event->accept();
    }
    Q_EMIT itemDragged();
}

QMimeData *signalTreeWidget::mimeData(const QList<QTreeWidgetItem *> items) const
{
    for (QTreeWidgetItem *item : items) {
        if (auto *row = dynamic_cast<SignalRow *>(item))
            row->storeRoles();
    }
    return QTreeWidget::mimeData(items);
}

QList<QTreeWidgetItem *> signalTreeWidget::draggedRows() const
{
    const QList<QTreeWidgetItem *> selection = selectedItems();
    const QSet<QTreeWidgetItem *> selected(selection.cbegin(), selection.cend());
    QList<QTreeWidgetItem *> rows;
    for (int i = 0; i < topLevelItemCount(); ++i) {
        if (selected.contains(topLevelItem(i)))
            rows.append(topLevelItem(i));
    }
    return rows;
}

void signalTreeWidget::dropBeside(QTreeWidgetItem *target, int y,
                                  const QList<QTreeWidgetItem *> &dragged)
{
    const QRect rect = visualItemRect(target);
    const bool below = y - rect.top() >= (rect.bottom() - rect.top() + 1) / 2;
    insertTopLevelItems(indexOfTopLevelItem(target) + (below ? 1 : 0), copiesOf(dragged));
}

void signalTreeWidget::dropAtEnd(const QList<QTreeWidgetItem *> &dragged)
{
    // The view removes all that is selected, but member rows are never dragged.
    const QList<QTreeWidgetItem *> selection = selectedItems();
    for (QTreeWidgetItem *row : selection) {
        if (row->parent())
            row->setSelected(false);
    }
    addTopLevelItems(copiesOf(dragged));
}

} // namespace TARN
