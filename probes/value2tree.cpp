// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "initialvalueline.h"
#include "signaltree.h"

#include <QLabel>
#include <QTreeWidget>

namespace TARN {

void value2Tree(QTreeWidget *tree, QTreeWidgetItem *parent, SignalItem item, QString &bits,
                InitialValueLine *line, int type)
{
    if (!parent)
        return;
    auto *row = new QTreeWidgetItem(parent, type);
    auto *label = new QLabel(tree);
    const int width = item.width();
    label->setText(width > bits.size() ? QString(width, QLatin1Char('0')) : bits.left(width));
    bits.remove(0, width);
    line->addBitLabel(label);
    tree->setItemWidget(row, 0, label);
}

} // namespace TARN
