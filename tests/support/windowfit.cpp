// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "windowfit.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QDockWidget>
#include <QGroupBox>
#include <QLabel>
#include <QTest>
#include <QToolButton>

namespace TarnTest {

namespace {

constexpr QSize Screen(1280, 720);

QString textOf(const QSize &size)
{
    return QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
}

/// Item views choose the heights of their rows themselves.
bool isInView(const QWidget *widget)
{
    for (; widget; widget = widget->parentWidget()) {
        if (qobject_cast<const QAbstractItemView *>(widget))
            return true;
    }
    return false;
}

/// The size that @p widget needs for its text, invalid without a text.
QSize neededSize(const QWidget *widget)
{
    const QFontMetrics metrics = widget->fontMetrics();
    const auto *tool = qobject_cast<const QToolButton *>(widget);
    if (tool && tool->toolButtonStyle() == Qt::ToolButtonIconOnly)
        return tool->sizeHint();
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget)) {
        // With a limited width the margins may shrink, but not the text.
        const QSize text = metrics.tightBoundingRect(button->text()).size();
        return text.expandedTo(button->sizeHint().boundedTo(button->maximumSize()));
    }
    if (const auto *label = qobject_cast<const QLabel *>(widget)) {
        if (label->wordWrap())
            return QSize(0, label->heightForWidth(label->width()));
        return label->sizeHint();
    }
    if (const auto *group = qobject_cast<const QGroupBox *>(widget))
        return metrics.size(0, group->title());
    if (const auto *dock = qobject_cast<const QDockWidget *>(widget))
        return metrics.size(0, dock->windowTitle());
    return QSize();
}

} // namespace

QString layoutFaults(const QWidget *window)
{
    QString faults;
    const QSize smallest = window->minimumSizeHint();
    if (smallest.expandedTo(Screen) != Screen)
        faults += QStringLiteral("smallest size %1\n").arg(textOf(smallest));
    const auto widgets = window->findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        if (!widget->isVisible() || isInView(widget))
            continue;
        const QSize needed = neededSize(widget);
        if (needed.expandedTo(widget->size()) != widget->size()) {
            faults += QStringLiteral("%1 has %2, needs %3\n")
                          .arg(widget->objectName(), textOf(widget->size()), textOf(needed));
        }
    }
    return faults;
}

FontSize::FontSize(double points)
    : m_usual(QApplication::font())
{
    QFont font = m_usual;
    font.setPointSizeF(points);
    QApplication::setFont(font);
}

FontSize::~FontSize()
{
    QApplication::setFont(m_usual);
}

void FontSize::addSizes()
{
    QTest::addColumn<double>("points");
    QTest::newRow("usual") << 9.0;
    QTest::newRow("half as large again") << 13.5;
    QTest::newRow("twice as large") << 18.0;
}

} // namespace TarnTest
