// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <cstddef>

namespace NETWEIR::Internal {

/// The element of the standard container @p items with this number. Numbers are signed everywhere;
/// a negative number stands for "none".
template <typename Items>
auto &itemAt(Items &items, qint64 number)
{
    const auto index = std::size_t(number);
    Q_ASSERT(number >= 0 && index < items.size());
    return items[index];
}

/// A container of @p count default elements.
template <typename Items>
Items itemsOf(qint64 count)
{
    return Items(std::size_t(count));
}

/// The number of elements in @p items as a signed number.
template <typename Items>
int countOf(const Items &items)
{
    return int(items.size());
}

} // namespace NETWEIR::Internal
