// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <core/projectmanager.h>

#include <QStringList>
#include <QTest>
#include <QTranslator>
#include <QTreeWidget>

namespace TarnTest {

/// Puts the context before every text.
class ContextTranslator final : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        return QString("%1|%2").arg(context, text);
    }
};

/// Makes the icons of the host known: the linker drops a library of which nothing is used.
inline void loadHostIcons()
{
    QVERIFY(!Core::ProjectManager::currentProject());
}

/// The first row at any depth that shows @p text, which must be there.
inline QTreeWidgetItem *rowOf(const QTreeWidget *tree, const QString &text)
{
    const QList<QTreeWidgetItem *> rows =
        tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
    if (rows.isEmpty())
        qFatal("no row %s", qPrintable(text));
    return rows.first();
}

/// Selects the rows that show @p texts and nothing else.
inline void select(QTreeWidget *tree, const QStringList &texts)
{
    tree->clearSelection();
    for (const QString &text : texts)
        rowOf(tree, text)->setSelected(true);
}

} // namespace TarnTest
