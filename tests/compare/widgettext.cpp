// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "widgettext.h"

#include "dump.h"

#include <probes/signalitem.h>

#include <QAbstractItemView>
#include <QBrush>
#include <QFont>
#include <QHeaderView>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTreeWidget>

namespace TarnCompare {

namespace {

/// Versions may differ in the classes of their own that they derive from it.
const char *toolkitClassOf(const QWidget *widget)
{
    const QMetaObject *type = widget->metaObject();
    while (qstrncmp(type->className(), "TARN::", 6) == 0)
        type = type->superClass();
    return type->className();
}

QString signalText(const TARN::SignalItem &item)
{
    QString text = QStringLiteral("{%1 %2 kind%3 enabled%4 usable%5")
                       .arg(quoted(item.name), quoted(item.displayName))
                       .arg(item.kind)
                       .arg(int(item.enabled))
                       .arg(int(item.usable));
    for (const TARN::SignalItem &member : item.members)
        text += signalText(member); // Members have none.
    return text + QLatin1Char('}');
}

QString valueText(const QVariant &value)
{
    if (!value.isValid())
        return QStringLiteral("-");
    if (value.canConvert<TARN::SignalItem>())
        return signalText(value.value<TARN::SignalItem>());
    switch (value.userType()) {
    case QMetaType::QBrush:
        return value.value<QBrush>().color().name(QColor::HexArgb);
    case QMetaType::QColor:
        return value.value<QColor>().name(QColor::HexArgb);
    case QMetaType::QFont:
        return value.value<QFont>().toString();
    case QMetaType::QIcon:
        return QStringLiteral("icon %1").arg(value.value<QIcon>().name());
    case QMetaType::QSize:
        return QStringLiteral("%1x%2").arg(value.toSize().width()).arg(value.toSize().height());
    default:
        return quoted(value.toString());
    }
}

QString itemWidgetText(const QWidget *widget)
{
    if (!widget)
        return {};
    QString text = QStringLiteral(" widget %1 %2 enabled%3 height %4..%5")
                       .arg(toolkitClassOf(widget), widget->objectName())
                       .arg(int(widget->isEnabled()))
                       .arg(widget->minimumHeight())
                       .arg(widget->maximumHeight());
    for (const char *property :
         {"text", "displayText", "inputMask", "maxLength", "readOnly", "toolTip", "alignment",
          "styleSheet", "focusPolicy", "indent", "margin", "cursorPosition", "undoAvailable"})
        text += QLatin1Char(' ') + valueText(widget->property(property));
    return text;
}

int depthOf(const QTreeWidgetItem *row)
{
    int depth = 0;
    while ((row = row->parent()))
        ++depth;
    return depth;
}

void writeIndexes(LongText *text, const QAbstractItemModel *model)
{
    for (int row = 0; row < model->rowCount(); ++row) {
        QString line;
        for (int column = 0; column < model->columnCount(); ++column) {
            const QModelIndex index = model->index(row, column);
            for (const int role : {int(Qt::DisplayRole), int(Qt::ToolTipRole)})
                line += QLatin1Char(' ') + valueText(index.data(role));
            line += QStringLiteral(" flags %1").arg(int(index.flags()));
        }
        text->line(line);
    }
}

/// The widgets that come with an area that scrolls are Qt's own matter. When a banner tells of a
/// changed file is a matter of time.
bool isLeftOut(const QWidget *widget)
{
    return qobject_cast<const QScrollBar *>(widget) || qobject_cast<const QHeaderView *>(widget) ||
           widget->objectName().startsWith(QLatin1String("qt_scrollarea")) || widget->isWindow() ||
           widget->objectName() == QLatin1String("widget_3");
}

QString widgetText(const QWidget *widget)
{
    QString text = QStringLiteral("%1 %2 enabled%3 shown%4 focus%5")
                       .arg(toolkitClassOf(widget), widget->objectName())
                       .arg(int(widget->isEnabled()))
                       .arg(int(!widget->isHidden()))
                       .arg(int(widget->focusPolicy()));
    for (const char *property : {"text", "displayText", "title", "windowTitle", "toolTip",
                                 "placeholderText", "checked", "currentText", "currentIndex",
                                 "notice", "readOnly", "inputMask", "windowModified", "default"}) {
        const QVariant value = widget->property(property);
        if (value.isValid() && !value.toString().isEmpty())
            text += QStringLiteral(" %1=%2").arg(QLatin1String(property), valueText(value));
    }
    return text;
}

} // namespace

QString rowText(const QTreeWidgetItem *row)
{
    QString text(depthOf(row) * 2, QLatin1Char(' '));
    text += QStringLiteral("type%1 flags%2 open%3 chosen%4 hidden%5 policy%6 columns%7")
                .arg(row->type())
                .arg(int(row->flags()))
                .arg(int(row->isExpanded()))
                .arg(int(row->isSelected()))
                .arg(int(row->isHidden()))
                .arg(int(row->childIndicatorPolicy()))
                .arg(row->columnCount());
    for (const int role :
         {int(Qt::DisplayRole), int(Qt::EditRole), int(Qt::ToolTipRole), int(Qt::StatusTipRole),
          int(Qt::DecorationRole), int(Qt::FontRole), int(Qt::TextAlignmentRole),
          int(Qt::BackgroundRole), int(Qt::ForegroundRole), int(Qt::CheckStateRole),
          int(Qt::AccessibleTextRole), int(Qt::SizeHintRole), int(Qt::UserRole),
          int(Qt::UserRole) + 1, int(Qt::UserRole) + 2})
        text += QLatin1Char(' ') + valueText(row->data(0, role));
    if (const QTreeWidget *tree = row->treeWidget())
        text += itemWidgetText(tree->itemWidget(const_cast<QTreeWidgetItem *>(row), 0));
    return text;
}

void writeRows(LongText *text, const QTreeWidget *tree)
{
    for (QTreeWidgetItemIterator row(const_cast<QTreeWidget *>(tree)); *row; ++row)
        text->line(rowText(*row));
    if (const QTreeWidgetItem *current = tree->currentItem())
        text->line(QStringLiteral("current ") + rowText(current));
}

void writeWidget(LongText *text, const QWidget *widget, int level)
{
    text->line(QString(level * 2, QLatin1Char(' ')) + widgetText(widget));
    if (const auto *tree = qobject_cast<const QTreeWidget *>(widget)) {
        writeRows(text, tree);
        return;
    }
    if (const auto *view = qobject_cast<const QAbstractItemView *>(widget)) {
        if (view->model())
            writeIndexes(text, view->model());
        return;
    }
    for (const QObject *child : widget->children()) {
        const auto *inner = qobject_cast<const QWidget *>(child);
        if (inner && !isLeftOut(inner))
            writeWidget(text, inner, level + 1);
    }
}

} // namespace TarnCompare
