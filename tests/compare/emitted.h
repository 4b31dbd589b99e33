// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMap>
#include <QString>
#include <QTreeWidget>

namespace TarnCompare {

/// How often signals were emitted since the last text().
class Emitted
{
public:
    template <typename Sender, typename Signal>
    void count(const QString &name, Sender *sender, Signal signal)
    {
        QObject::connect(sender, signal, sender, [this, name] { ++m_counts[name]; });
    }

    void countAll(QTreeWidget *tree)
    {
        const QString name = tree->objectName();
        count(name + ".selection", tree, &QTreeWidget::itemSelectionChanged);
        count(name + ".current", tree, &QTreeWidget::currentItemChanged);
        count(name + ".expanded", tree, &QTreeWidget::itemExpanded);
        count(name + ".collapsed", tree, &QTreeWidget::itemCollapsed);
        count(name + ".changed", tree, &QTreeWidget::itemChanged);
    }

    QString text()
    {
        QString text = QStringLiteral("EMITTED");
        for (auto i = m_counts.cbegin(); i != m_counts.cend(); ++i)
            text += QStringLiteral(" %1:%2").arg(i.key()).arg(i.value());
        m_counts.clear();
        return text;
    }

private:
    QMap<QString, int> m_counts;
};

} // namespace TarnCompare
