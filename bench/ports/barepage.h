// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class QTreeWidget;
class QTreeWidgetItem;

namespace TARN {
class TarnCore;
}

namespace TarnBench {

/// The rows, lines and labels of the ports of a core, made with plain Qt widgets: three trees in
/// the style of the page, rows with their texts, a line edit with the right mask per Probe Out
/// port, a label of the row's height with its bit per signal. Nothing is synchronised, coloured,
/// checked or connected.
class BarePage final : public QWidget
{
public:
    explicit BarePage(const TARN::TarnCore *core);

private:
    QTreeWidget *newTree(const char *name);
    void addValues(QTreeWidget *tree, const QString &initialValue, int width);
};

} // namespace TarnBench
