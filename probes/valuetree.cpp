// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "valuetree.h"

#include "initialvalueline.h"

#include <QAbstractItemDelegate>
#include <QApplication>
#include <QSet>

namespace TARN {

InitialValueLine *ValueTree::lineAt(int row) const
{
    QTreeWidgetItem *portRow = topLevelItem(row);
    return portRow ? lineOf(portRow) : nullptr;
}

InitialValueLine *ValueTree::lineOf(QTreeWidgetItem *portRow) const
{
    return qobject_cast<InitialValueLine *>(itemWidget(portRow, 0));
}

void ValueTree::deleteLabels(QTreeWidgetItem *portRow)
{
    InitialValueLine *line = lineOf(portRow);
    line->setInert(true);
    line->clearBitLabels();
    // By index: the tree would search a row among those of its port.
    const QModelIndex port = indexFromItem(portRow);
    for (int i = 0; i < portRow->childCount(); ++i)
        deleteWidget(model()->index(i, 0, port));
}

void ValueTree::deletePort(int row)
{
    QTreeWidgetItem *portRow = topLevelItem(row);
    if (lineAt(row)) {
        deleteLabels(portRow);
        deleteWidget(indexFromItem(portRow));
    }
    delete portRow;
}

void ValueTree::deleteWidget(const QModelIndex &row)
{
    QWidget *widget = indexWidget(row);
    // The tree does not notice by itself that one of its widgets has gone. removeItemWidget() would
    // post an event to the widget, for which its destructor would search all posted events.
    editorDestroyed(widget);
    delete widget;
}

void ValueTree::suspendLayout(bool many)
{
    m_suspended = true;
    // Widgets that appear on the screen are slow, but a line being edited must keep the focus.
    if (many && !viewport()->isAncestorOf(QApplication::focusWidget()))
        viewport()->hide();
}

void ValueTree::resumeLayout()
{
    m_suspended = false;
    doItemsLayout();
    viewport()->show();
}

void ValueTree::scrollContentsBy(int dx, int dy)
{
    QTreeWidget::scrollContentsBy(dx, dy);
    updateEditorGeometries();
}

void ValueTree::updateEditorGeometries()
{
    if (m_suspended)
        return;
    QSet<QObject *> placed;
    for (int i = 0; i < topLevelItemCount(); ++i)
        placed.insert(place(model()->index(i, 0)));
    const int bottom = viewport()->height();
    for (QModelIndex index = indexAt(QPoint()); index.isValid(); index = indexBelow(index)) {
        if (visualRect(index).top() >= bottom)
            break;
        placed.insert(place(index));
    }
    for (QObject *child : viewport()->children()) {
        auto *widget = qobject_cast<QWidget *>(child);
        if (widget && !widget->isHidden() && !placed.contains(widget))
            widget->hide();
    }
}

QWidget *ValueTree::place(const QModelIndex &index)
{
    QWidget *widget = indexWidget(index);
    if (widget) {
        QStyleOptionViewItem option = viewOptions();
        option.rect = visualRect(index);
        widget->show();
        itemDelegate(index)->updateEditorGeometry(widget, option, index);
    }
    return widget;
}

} // namespace TARN
