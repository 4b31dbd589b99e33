// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "value2tree.h"

#include "bitlabel.h"
#include "initialvalueline.h"
#include "portbits.h"

#include <QTreeWidget>

namespace TARN {

namespace {

/// Labels of single nets share their texts.
QString sharedText(const QString &bits)
{
    for (const QString &text : {QStringLiteral("0"), QStringLiteral("1")}) {
        if (bits == text)
            return text;
    }
    return bits;
}

/// A label that belongs to no widget yet.
BitLabel *newLabel(const QString &bits, InitialValueLine *line)
{
    auto *label = new BitLabel(sharedText(bits));
    InitialValueLine::showBits(label, bits);
    line->addBitLabel(label);
    return label;
}

} // namespace

// NOLINTNEXTLINE(performance-unnecessary-value-param): by value in the interface
void value2Tree(QTreeWidget *tree, QTreeWidgetItem *parent, SignalItem item, QString &bits,
                InitialValueLine *line, int type)
{
    if (!parent)
        return;
    auto *row = new QTreeWidgetItem(parent, type);
    tree->setItemWidget(row, 0, newLabel(takeBits(bits, item.width()), line));
}

void values2Tree(QTreeWidget *tree, QTreeWidgetItem *parent, const QList<SignalItem> &items,
                 QString &bits, InitialValueLine *line)
{
    // By index: the tree would search each new row among those of its port.
    const QAbstractItemModel *model = tree->model();
    const QModelIndex port = model->index(tree->indexOfTopLevelItem(parent), 0);
    line->reserveBitLabels(items.size());
    for (int i = 0; i < items.size(); ++i) {
        BitLabel *label = newLabel(takeBits(bits, items.at(i).width()), line);
        label->hold(); // The tree shows it when it lays out its rows, if it is in sight.
        tree->setIndexWidget(model->index(i, 0, port), label);
        label->release();
    }
}

} // namespace TARN
