// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "instancemarks.h"

#include "instancetree.h"
#include "markeddefinition.h"
#include "placeddefinition.h"

#include <netweir/internal/xml/definition.h>

namespace NETWEIR::Internal {

bool InstanceMarks::fits(const InstanceTree &tree, const std::vector<MarkedDefinition> &marked)
{
    qint64 bits = 0;
    for (int instance = 0; instance < tree.size() && bits <= MostBits; ++instance)
        bits += itemAt(marked, tree.definitionOf(instance).number).placed->bits;
    return bits <= MostBits;
}

void InstanceMarks::fill(const InstanceTree &tree, const std::vector<MarkedDefinition> &marked)
{
    const auto definitionOf = [&](int instance) -> const MarkedDefinition & {
        return itemAt(marked, tree.definitionOf(instance).number);
    };
    m_first = itemsOf<std::vector<qint64>>(tree.size());
    qint64 bits = 0;
    for (int instance = 0; instance < tree.size(); ++instance) {
        itemAt(m_first, instance) = bits;
        bits += definitionOf(instance).placed->bits;
    }
    m_marks = itemsOf<Marks>(bits);
    for (int instance = 0; instance < tree.size(); ++instance) {
        const Marks &marks = definitionOf(instance).marks;
        std::copy(marks.begin(), marks.end(), at(instance));
    }
}

quint8 *InstanceMarks::at(int instance, qint64 bit)
{
    return m_marks.data() + itemAt(m_first, instance) + bit;
}

const quint8 *InstanceMarks::at(int instance, qint64 bit) const
{
    return m_marks.data() + itemAt(m_first, instance) + bit;
}

} // namespace NETWEIR::Internal
