// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "resulttreewidget.h"

#include <QMouseEvent>
#include <QPainter>

namespace TARN {

/// Pixels between the notice and what is around it.
static constexpr int NoticeMargin = 8;

bool ResultTreeWidget::canBeChosen(const QTreeWidgetItem *row)
{
    static constexpr Qt::ItemFlags choosable = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    return (row->flags() & choosable) == choosable;
}

void ResultTreeWidget::setNotice(const QString &notice)
{
    m_notice = notice;
    viewport()->update();
}

void ResultTreeWidget::mouseDoubleClickEvent(QMouseEvent *event)
{
    // QTreeWidget treats every button like the left one.
    if (event->button() != Qt::LeftButton) {
        mousePressEvent(event);
        return;
    }
    const QTreeWidgetItem *row = itemAt(event->pos());
    setExpandsOnDoubleClick(!row || !canBeChosen(row));
    LargeTreeWidget::mouseDoubleClickEvent(event);
}

void ResultTreeWidget::paintEvent(QPaintEvent *event)
{
    LargeTreeWidget::paintEvent(event);
    if (m_notice.isEmpty())
        return;
    QRect place = viewport()->rect();
    // A result by module shows the top module even when nothing was found.
    if (topLevelItemCount() > 0)
        place.setTop(visualItemRect(topLevelItem(topLevelItemCount() - 1)).bottom());
    place.adjust(NoticeMargin, NoticeMargin, -NoticeMargin, -NoticeMargin);
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(place, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, m_notice);
}

} // namespace TARN
