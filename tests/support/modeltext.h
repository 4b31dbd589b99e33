// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <Qt>

class QAbstractItemModel;

namespace TarnTest {

/// The whole model as text for comparison: one line per item (columns joined with " | "), indented
/// by four blanks per level, each line ended with a line feed.
QString modelText(const QAbstractItemModel *model, int role = Qt::DisplayRole);

} // namespace TarnTest
