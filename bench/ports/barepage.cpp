// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "barepage.h"

#include <model/bitstring.h>
#include <model/tarncore.h>

#include <QLabel>
#include <QLineEdit>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace TarnBench {

namespace {

constexpr int RowHeight = 20;

void addPort(QTreeWidget *tree, const QString &name, const QList<TARN::SignalItem> &items)
{
    QList<QTreeWidgetItem *> rows;
    for (const TARN::SignalItem &item : items) {
        auto *row = new QTreeWidgetItem;
        row->setText(0, item.name);
        rows.append(row);
    }
    auto *port = new QTreeWidgetItem(tree);
    port->setText(0, name);
    port->addChildren(rows);
}

} // namespace

BarePage::BarePage(const TARN::TarnCore *core)
{
    auto *layout = new QVBoxLayout(this);
    QTreeWidget *ins = newTree("treeProbeIn");
    QTreeWidget *outs = newTree("treeProbeOut");
    QTreeWidget *values = newTree("treeValue");
    for (QTreeWidget *tree : {ins, outs, values})
        layout->addWidget(tree);
    for (const TARN::ProbeIn *port : core->probeIns)
        addPort(ins, QStringLiteral("Probe In%1").arg(port->index), port->signals);
    for (const TARN::ProbeOut *port : core->probeOuts) {
        addPort(outs, QStringLiteral("Probe Out%1").arg(port->index), port->signals);
        addValues(values, port->initialValue, port->signals.size());
    }
}

QTreeWidget *BarePage::newTree(const char *name)
{
    auto *tree = new QTreeWidget(this);
    tree->setObjectName(QLatin1String(name));
    tree->setHeaderHidden(true);
    tree->setUniformRowHeights(true);
    tree->setStyleSheet(
        QStringLiteral("QTreeWidget::item { height: 20px;}QTreeWidget{ icon-size: 17px; }"));
    return tree;
}

void BarePage::addValues(QTreeWidget *tree, const QString &initialValue, int width)
{
    QList<QTreeWidgetItem *> rows;
    for (int i = 0; i < width; ++i)
        rows.append(new QTreeWidgetItem);
    auto *port = new QTreeWidgetItem(tree);
    port->addChildren(rows);

    auto *line = new QLineEdit;
    line->setFixedHeight(RowHeight);
    line->setInputMask(QStringLiteral("NN>%1;0").arg(QString(width / 4, QLatin1Char('H'))));
    line->setText(initialValue);
    tree->setItemWidget(port, 0, line);

    const QString bits = TARN::stringHextoBinfor0x(initialValue);
    for (int i = 0; i < width; ++i) {
        auto *label = new QLabel(bits.mid(i, 1));
        label->setFixedHeight(RowHeight);
        tree->setItemWidget(rows.at(i), 0, label);
    }
}

} // namespace TarnBench
