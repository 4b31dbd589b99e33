// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "widgetreport.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHeaderView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalSocket>
#include <QMenu>
#include <QTabBar>
#include <QTreeView>
#include <QWindow>

#include <algorithm>

namespace TarnTest {

namespace {

QJsonArray toJson(const QRect &rect)
{
    return {rect.x(), rect.y(), rect.width(), rect.height()};
}

QRect onScreen(const QWidget *widget, const QRect &rect)
{
    return {widget->mapToGlobal(rect.topLeft()), rect.size()};
}

/// The part of the widget that none of its parents clips.
QRect shownPart(const QWidget *widget)
{
    QRect part = onScreen(widget, widget->rect());
    while (!widget->isWindow()) {
        widget = widget->parentWidget();
        part &= onScreen(widget, widget->rect());
    }
    return part;
}

/// The text that a user reads on the widget.
QString textOf(const QWidget *widget)
{
    for (const char *name :
         {"displayText", "plainText", "currentText", "text", "title", "windowTitle"}) {
        const QVariant text = widget->property(name);
        if (text.isValid())
            return text.toString();
    }
    return {};
}

/// The row that the view shows below @p row.
QModelIndex nextRow(const QAbstractItemView *view, const QModelIndex &row)
{
    if (const auto *tree = qobject_cast<const QTreeView *>(view))
        return tree->indexBelow(row);
    return row.sibling(row.row() + 1, row.column());
}

/// The texts of all columns.
QJsonArray cellsOf(const QModelIndex &row)
{
    QJsonArray cells;
    for (int column = 0; column < row.model()->columnCount(row.parent()); ++column)
        cells.append(row.sibling(row.row(), column).data().toString());
    return cells;
}

QJsonObject rowToJson(const QAbstractItemView *view, const QModelIndex &row)
{
    const auto *tree = qobject_cast<const QTreeView *>(view);
    int depth = 0;
    for (QModelIndex above = row.parent(); above.isValid(); above = above.parent())
        ++depth;
    const QRect shown = view->visualRect(row) & view->viewport()->rect();
    return {{"text", row.data().toString()},
            {"cells", cellsOf(row)},
            {"depth", depth},
            {"rect", toJson(onScreen(view->viewport(), shown))},
            {"expanded", tree && tree->isExpanded(row)},
            {"selected", view->selectionModel()->isSelected(row)},
            {"enabled", row.flags().testFlag(Qt::ItemIsEnabled)}};
}

QJsonArray rowsOf(const QAbstractItemView *view)
{
    QJsonArray rows;
    if (!view->model() || qobject_cast<const QHeaderView *>(view))
        return rows;
    for (QModelIndex row = view->model()->index(0, 0, view->rootIndex()); row.isValid();
         row = nextRow(view, row))
        rows.append(rowToJson(view, row));
    return rows;
}

QJsonArray entriesOf(const QMenu *menu)
{
    QJsonArray entries;
    for (QAction *action : menu->actions()) {
        entries.append(QJsonObject{{"text", action->text().remove(QLatin1Char('&'))},
                                   {"rect", toJson(onScreen(menu, menu->actionGeometry(action)))},
                                   {"enabled", action->isEnabled()}});
    }
    return entries;
}

QJsonArray tabsOf(const QTabBar *bar)
{
    QJsonArray tabs;
    for (int i = 0; i < bar->count(); ++i) {
        tabs.append(QJsonObject{{"text", bar->tabText(i)},
                                {"rect", toJson(onScreen(bar, bar->tabRect(i)))},
                                {"selected", i == bar->currentIndex()}});
    }
    return tabs;
}

QJsonObject toJson(const QWidget *widget)
{
    QJsonObject json{{"name", widget->objectName()},
                     {"type", widget->metaObject()->className()},
                     {"text", textOf(widget)},
                     {"rect", toJson(shownPart(widget))},
                     {"window", widget->window()->windowTitle()},
                     {"active", widget->isActiveWindow()},
                     {"focus", widget->hasFocus()},
                     {"enabled", widget->isEnabled()},
                     {"checked", widget->property("checked").toBool()}};
    if (const auto *view = qobject_cast<const QAbstractItemView *>(widget))
        json.insert("rows", rowsOf(view));
    else if (const auto *menu = qobject_cast<const QMenu *>(widget))
        json.insert("rows", entriesOf(menu));
    else if (const auto *bar = qobject_cast<const QTabBar *>(widget))
        json.insert("rows", tabsOf(bar));
    return json;
}

bool isDragging()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    return std::any_of(windows.cbegin(), windows.cend(), [](const QWindow *window) {
        return window->isVisible() && window->inherits("QShapedPixmapWindow");
    });
}

} // namespace

WidgetReport::WidgetReport(const QString &path)
{
    connect(&m_server, &QLocalServer::newConnection, this, &WidgetReport::answer);
    if (!m_server.listen(path))
        qFatal("Cannot listen on %s: %s", qPrintable(path), qPrintable(m_server.errorString()));
}

void WidgetReport::answer()
{
    QJsonArray widgets;
    const QWidgetList all = QApplication::allWidgets();
    for (const QWidget *widget : all) {
        if (widget->isVisible() && !shownPart(widget).isEmpty())
            widgets.append(toJson(widget));
    }
    const QJsonObject report{{"dragging", isDragging()}, {"widgets", widgets}};
    QLocalSocket *client = m_server.nextPendingConnection();
    connect(client, &QLocalSocket::disconnected, client, &QObject::deleteLater);
    client->write(QJsonDocument(report).toJson(QJsonDocument::Compact));
    client->disconnectFromServer();
}

QObject *WidgetReportPlugin::create(const QString &name, const QString &socket)
{
    Q_UNUSED(name)
    return new WidgetReport(socket);
}

} // namespace TarnTest
