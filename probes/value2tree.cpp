// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "value2tree.h"

#include "initialvalueline.h"

#include <QLabel>
#include <QTreeWidget>

namespace TARN {

namespace {

constexpr int RowHeight = 20; // A label by itself would make its row a pixel higher.

/// The bits that fall on a signal of that width, which are removed from @p bits.
QString takeBits(QString &bits, int width)
{
    const QString taken = width > bits.size() ? QString(width, QLatin1Char('0')) : bits.left(width);
    bits.remove(0, width);
    return taken;
}

void addLabel(QTreeWidget *tree, QTreeWidgetItem *row, const QString &bits, InitialValueLine *line)
{
    auto *label = new QLabel(tree);
    InitialValueLine::showBits(label, bits);
    label->setFixedHeight(RowHeight);
    line->addBitLabel(label);
    tree->setItemWidget(row, 0, label);
}

} // namespace

// NOLINTNEXTLINE(performance-unnecessary-value-param): by value in the interface
void value2Tree(QTreeWidget *tree, QTreeWidgetItem *parent, SignalItem item, QString &bits,
                InitialValueLine *line, int type)
{
    if (!parent)
        return;
    auto *row = new QTreeWidgetItem(parent, type);
    addLabel(tree, row, takeBits(bits, item.width()), line);
}

void values2Tree(QTreeWidget *tree, QTreeWidgetItem *parent, const QList<SignalItem> &items,
                 QString &bits, InitialValueLine *line)
{
    for (int i = 0; i < items.size(); ++i)
        addLabel(tree, parent->child(i), takeBits(bits, items.at(i).width()), line);
}

} // namespace TARN
