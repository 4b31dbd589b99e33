// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "rowmarks.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QTextDocument>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <utility>

namespace TARN {

namespace {

/// Side of the sign where the row is high enough, and its distance from the text, in pixels.
constexpr int SignSize = 13;
constexpr int SignGap = 5;

/// Brightness of @p color as the eye sees it, from 0 to 1.
double luminanceOf(const QColor &color)
{
    const auto linear = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

/// From 1 for equal brightness to 21 for black on white.
double contrastOf(const QColor &one, const QColor &other)
{
    const double first = luminanceOf(one);
    const double second = luminanceOf(other);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

void paintError(QPainter *painter, const QRectF &place)
{
    const double inset = place.width() * 0.3;
    const QRectF cross = place.adjusted(inset, inset, -inset, -inset);
    painter->setBrush(QColor(204, 0, 0));
    painter->drawEllipse(place);
    painter->setPen(QPen(Qt::white, place.width() / 7, Qt::SolidLine, Qt::RoundCap));
    painter->drawLine(cross.topLeft(), cross.bottomRight());
    painter->drawLine(cross.topRight(), cross.bottomLeft());
}

void paintWarning(QPainter *painter, const QRectF &place)
{
    QPainterPath triangle(QPointF(place.center().x(), place.top()));
    triangle.lineTo(place.bottomRight());
    triangle.lineTo(place.bottomLeft());
    triangle.closeSubpath();
    painter->setBrush(QColor(255, 176, 0));
    painter->drawPath(triangle);
    const double x = place.center().x();
    const auto y = [&place](double part) { return place.top() + part * place.height(); };
    painter->setPen(QPen(Qt::black, place.width() / 8, Qt::SolidLine, Qt::RoundCap));
    painter->drawLine(QPointF(x, y(0.42)), QPointF(x, y(0.65)));
    painter->drawPoint(QPointF(x, y(0.85)));
}

/// Where the text of @p row is, without the margins that the style leaves beside it.
QRect textPlaceOf(const QStyleOptionViewItem &row, const QStyle *style)
{
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &row, row.widget) + 1;
    const QRect place = style->subElementRect(QStyle::SE_ItemViewItemText, &row, row.widget);
    return place.adjusted(margin, 0, -margin, 0);
}

/// Shortens the text of @p row where it would reach under the sign. Returns the sign's place.
QRect makeRoom(QStyleOptionViewItem *row, const QStyle *style)
{
    const QRect place = textPlaceOf(*row, style);
    const int size = std::min(SignSize, row->rect.height());
    const int room = std::max(place.width() - size - SignGap, 0);
    if (row->fontMetrics.horizontalAdvance(row->text) > room)
        row->text = row->fontMetrics.elidedText(row->text, row->textElideMode, room);
    const int width = std::min(row->fontMetrics.horizontalAdvance(row->text), room);
    const QRect sign(place.left() + width + SignGap, place.center().y() - size / 2, size, size);
    return QStyle::visualRect(row->direction, place, sign);
}

QString tipOf(const QString &own, const QString &added)
{
    if (own.isEmpty() || added.isEmpty())
        return own + added;
    return own + QLatin1Char('\n') + added;
}

} // namespace

void paintSign(QPainter *painter, const QRect &place, RowMark::Level level)
{
    if (level == RowMark::None)
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    const QRectF inside = QRectF(place).adjusted(0.5, 0.5, -0.5, -0.5);
    (level == RowMark::Error ? paintError : paintWarning)(painter, inside);
    painter->restore();
}

QColor markColor(RowMark::Level level, const QColor &background)
{
    if (level == RowMark::None)
        return {};
    const bool error = level == RowMark::Error;
    const QColor dark = error ? QColor(192, 0, 0) : QColor(138, 84, 0);
    const QColor light = error ? QColor(255, 128, 128) : QColor(255, 190, 60);
    return contrastOf(dark, background) >= contrastOf(light, background) ? dark : light;
}

RowMarks::RowMarks(MarkOf markOf, QAbstractItemView *view)
    : QStyledItemDelegate(view)
    , m_markOf(std::move(markOf))
{
}

void RowMarks::paint(QPainter *painter, const QStyleOptionViewItem &option,
                     const QModelIndex &index) const
{
    const RowMark mark = m_markOf(index);
    if (mark.level == RowMark::None) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem row = option;
    initStyleOption(&row, index);
    // A selected row keeps the text colour that is made for its background; the sign marks it.
    row.palette.setColor(QPalette::Text, markColor(mark.level, row.palette.color(QPalette::Base)));
    const QStyle *style = row.widget ? row.widget->style() : QApplication::style();
    const QRect sign = makeRoom(&row, style);
    style->drawControl(QStyle::CE_ItemViewItem, &row, painter, row.widget);
    paintSign(painter, sign, mark.level);
}

bool RowMarks::helpEvent(QHelpEvent *event, QAbstractItemView *view,
                         const QStyleOptionViewItem &option, const QModelIndex &index)
{
    if (!event || !view || event->type() != QEvent::ToolTip)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const RowMark mark = m_markOf(index);
    if (mark.level == RowMark::None)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    QString tip = tipOf(index.data(Qt::ToolTipRole).toString(), mark.text);
    if (Qt::mightBeRichText(tip)) // A name with angle brackets.
        tip = Qt::convertFromPlainText(tip, Qt::WhiteSpaceNormal);
    QToolTip::showText(event->globalPos(), tip, view);
    return !tip.isEmpty();
}

} // namespace TARN
