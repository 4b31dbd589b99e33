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

/// The rows, lines and labels of a core's ports made with the toolkit alone: three plain trees with
/// the style of the page's, rows with their texts, a line edit with the mask of the width a Probe
/// Out port, a label of the row's height with its bit a signal. Nothing is kept in step, coloured,
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
