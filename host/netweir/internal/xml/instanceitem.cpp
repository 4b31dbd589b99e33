// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "instanceitem.h"

namespace NETWEIR::Internal {

qint64 InstanceItem::positionOf(int index) const
{
    if (!isArray || index < qMin(left, right) || index > qMax(left, right))
        return -1;
    return qAbs(qint64(index) - left);
}

int InstanceItem::indexAt(qint64 position) const
{
    return int(left > right ? left - position : left + position);
}

} // namespace NETWEIR::Internal
