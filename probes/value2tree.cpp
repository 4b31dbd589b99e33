// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "value2tree.h"

#include "initialvalueline.h"
#include "portbits.h"
#include "valuetree.h"

#include <QLabel>
#include <QTreeWidget>

namespace TARN {

namespace {

void addLabel(QTreeWidget *tree, QTreeWidgetItem *row, const QString &bits, InitialValueLine *line)
{
    auto *label = new QLabel(tree);
    InitialValueLine::showBits(label, bits);
    label->setFixedHeight(ValueTree::RowHeight); // By itself it would make its row a pixel higher.
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
