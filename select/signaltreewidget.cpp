// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "signaltreewidget.h"

#include <probes/signalrow.h>
#include <widgets/treerows.h>

#include <QDataStream>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QSet>

#include <algorithm>

namespace TARN {

// Dragged rows are written to a stream role by role, their signals included.

static QDataStream &operator<<(QDataStream &stream, const SignalItem &item)
{
    return stream << item.name << item.displayName << item.members << item.enabled << item.usable
                  << qint32(item.kind);
}

static QDataStream &operator>>(QDataStream &stream, SignalItem &item)
{
    qint32 kind = SignalItem::Unset;
    stream >> item.name >> item.displayName >> item.members >> item.enabled >> item.usable >> kind;
    item.kind = kind;
    return stream;
}

/// Moves each row of @p selected one place towards the front of @p rows. Those that are at the
/// front stay, and so do those right behind them.
static void moveTowardsFront(QList<QTreeWidgetItem *> *rows,
                             const QSet<QTreeWidgetItem *> &selected)
{
    for (int i = 1; i < rows->size(); ++i) {
        if (selected.contains(rows->at(i)) && !selected.contains(rows->at(i - 1)))
            rows->swapItemsAt(i, i - 1);
    }
}

signalTreeWidget::signalTreeWidget(QWidget *parent)
    : LargeTreeWidget(parent)
{
    qRegisterMetaTypeStreamOperators<SignalItem>("TARN::SignalItem");
}

void signalTreeWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        LargeTreeWidget::mousePressEvent(event);
    else
        event->ignore();
}

void signalTreeWidget::mouseMoveEvent(QMouseEvent *event)
{
    const bool otherButton = event->buttons() && !(event->buttons() & Qt::LeftButton);
    const QTreeWidgetItem *current = currentItem();
    if (!otherButton && current && !current->parent())
        LargeTreeWidget::mouseMoveEvent(event);
    else
        event->ignore();
}

void signalTreeWidget::dragMoveEvent(QDragMoveEvent *event)
{
    LargeTreeWidget::dragMoveEvent(event);
}

void signalTreeWidget::dropEvent(QDropEvent *event)
{
    const QPoint position = event->posF().toPoint();
    QTreeWidgetItem *target = itemAt(position);
    if (target && (target->parent() || target->isSelected())) {
        event->setDropAction(Qt::IgnoreAction);
        viewport()->update(); // Removes the drop indicator.
        return;
    }
    const QList<QTreeWidgetItem *> dragged = selectedTopLevelRows();
    QList<QTreeWidgetItem *> copies;
    if (target) {
        copies = dropBeside(target, position.y(), dragged);
        // Not accepted: after an accepted move the view would remove what is selected by then.
        event->setDropAction(Qt::CopyAction);
        removeTopLevelRows(this, dragged);
    } else {
        copies = dropAtEnd(dragged);
        // The view removes the dragged rows after a move.
        event->setDropAction(Qt::MoveAction);
        event->accept();
    }
    if (!copies.isEmpty()) {
        m_firstDropped = indexFromItem(copies.first());
        m_lastDropped = indexFromItem(copies.last());
    }
    Q_EMIT itemDragged();
}

void signalTreeWidget::startDrag(Qt::DropActions supportedActions)
{
    m_firstDropped = m_lastDropped = QModelIndex();
    const QPointer<signalTreeWidget> guard(this);
    LargeTreeWidget::startDrag(supportedActions);
    // Only now: after a move the view removes what is selected.
    if (guard)
        selectDropped();
}

void signalTreeWidget::selectDropped()
{
    if (!m_firstDropped.isValid() || !m_lastDropped.isValid())
        return;
    selectionModel()->select(QItemSelection(m_firstDropped, m_lastDropped),
                             QItemSelectionModel::ClearAndSelect);
    selectionModel()->setCurrentIndex(m_firstDropped, QItemSelectionModel::NoUpdate);
    bringIntoSight(this, itemFromIndex(m_firstDropped), itemFromIndex(m_lastDropped));
}

void signalTreeWidget::keyPressEvent(QKeyEvent *event)
{
    const bool isArrow = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down;
    if (isArrow && (event->modifiers() & ~Qt::KeypadModifier) == Qt::AltModifier)
        moveSelectedRows(event->key() == Qt::Key_Up);
    else
        LargeTreeWidget::keyPressEvent(event);
}

void signalTreeWidget::moveSelectedRows(bool up)
{
    const QList<QTreeWidgetItem *> moved = selectedTopLevelRows();
    if (moved.isEmpty())
        return;
    QList<QTreeWidgetItem *> rows;
    rows.reserve(topLevelItemCount());
    for (int i = 0; i < topLevelItemCount(); ++i)
        rows.append(topLevelItem(i));
    if (!up)
        std::reverse(rows.begin(), rows.end());
    moveTowardsFront(&rows, QSet<QTreeWidgetItem *>(moved.cbegin(), moved.cend()));
    if (!up)
        std::reverse(rows.begin(), rows.end());
    arrangeTopLevelRows(this, rows);
    if (up)
        bringIntoSight(this, moved.first(), moved.last());
    else
        bringIntoSight(this, moved.last(), moved.first());
}

QMimeData *signalTreeWidget::mimeData(const QList<QTreeWidgetItem *> items) const
{
    for (QTreeWidgetItem *item : items) {
        if (auto *row = dynamic_cast<ComputedSignalRow *>(item))
            row->storeRoles();
    }
    return LargeTreeWidget::mimeData(items);
}

QList<QTreeWidgetItem *> signalTreeWidget::selectedTopLevelRows() const
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

QList<QTreeWidgetItem *> signalTreeWidget::dropBeside(QTreeWidgetItem *target, int y,
                                                      const QList<QTreeWidgetItem *> &dragged)
{
    const QRect rect = visualItemRect(target);
    const bool below = y - rect.top() >= (rect.bottom() - rect.top() + 1) / 2;
    return insertCopies(indexOfTopLevelItem(target) + (below ? 1 : 0), dragged);
}

QList<QTreeWidgetItem *> signalTreeWidget::dropAtEnd(const QList<QTreeWidgetItem *> &dragged)
{
    // The view removes all that is selected, but member rows are never dragged.
    const QList<QTreeWidgetItem *> selection = selectedItems();
    for (QTreeWidgetItem *row : selection) {
        if (row->parent())
            row->setSelected(false);
    }
    return insertCopies(topLevelItemCount(), dragged);
}

QList<QTreeWidgetItem *> signalTreeWidget::insertCopies(int index,
                                                        const QList<QTreeWidgetItem *> &rows)
{
    QList<QTreeWidgetItem *> copies;
    copies.reserve(rows.size());
    for (const QTreeWidgetItem *row : rows)
        copies.append(row->clone());
    insertTopLevelItems(index, copies);
    for (int i = 0; i < rows.size(); ++i) {
        if (rows.at(i)->isExpanded())
            copies.at(i)->setExpanded(true);
    }
    return copies;
}

} // namespace TARN
