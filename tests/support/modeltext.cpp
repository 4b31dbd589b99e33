// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "modeltext.h"

#include <QAbstractItemModel>
#include <QStringList>

namespace TarnTest {

static void appendLevel(const QAbstractItemModel *model, const QModelIndex &parent, int level,
                        int role, QString *text)
{
    for (int row = 0; row < model->rowCount(parent); ++row) {
        QStringList columns;
        for (int column = 0; column < model->columnCount(parent); ++column)
            columns.append(model->index(row, column, parent).data(role).toString());
        *text += QString(level * 4, QLatin1Char(' ')) + columns.join(QStringLiteral(" | ")) +
                 QLatin1Char('\n');
        appendLevel(model, model->index(row, 0, parent), level + 1, role, text);
    }
}

QString modelText(const QAbstractItemModel *model, int role)
{
    QString text;
    appendLevel(model, QModelIndex(), 0, role, &text);
    return text;
}

} // namespace TarnTest
