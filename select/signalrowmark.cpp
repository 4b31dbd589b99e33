// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "signalrowmark.h"

#include <QModelIndex>
#include <QVariant>

namespace TARN {

RowMark rowMarkOf(const SignalMarks::Mark &mark)
{
    if (!mark.rule)
        return {};
    return {severityOf(*mark.rule) == Severity::Error ? RowMark::Error : RowMark::Warning,
            mark.text};
}

RowMark signalRowMark(const SignalMarks *marks, ProbeType type, const QModelIndex &row)
{
    if (!marks)
        return {};
    const QVariant item = row.data(Qt::UserRole);
    if (item.canConvert<SignalItem>())
        return rowMarkOf(marks->of(item.value<SignalItem>(), type));
    // The rows of members hold no item.
    const QVariant bus = row.parent().data(Qt::UserRole);
    if (bus.canConvert<SignalItem>())
        return rowMarkOf(marks->ofBit(bus.value<SignalItem>(), row.row(), type));
    return {};
}

} // namespace TARN
