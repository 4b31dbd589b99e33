// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "primitiveinstances.h"

#include <QSet>

#include <algorithm>

namespace NETWEIR::Internal {

PrimitiveInstances::PrimitiveInstances(const ModuleScan &scan)
{
    QSet<QByteArray> primitives;
    QSet<QByteArray> others;
    for (const DesignUnit &unit : scan.units)
        (unit.kind == DesignUnit::Primitive ? primitives : others).insert(unit.name);
    for (const DesignUnit &unit : scan.units) {
        for (const Instantiation &instantiation : unit.instantiations) {
            if (!primitives.contains(instantiation.module) || others.contains(instantiation.module))
                continue;
            Edits &edits = m_edits[instantiation.first.text];
            edits.blanked += instantiation.values;
            edits.unnamed += instantiation.unnamed;
        }
    }
    for (Edits &edits : m_edits)
        std::sort(edits.unnamed.begin(), edits.unnamed.end()); // Nested modules come later.
}

QByteArray PrimitiveInstances::named(int index, const QByteArray &text,
                                     QMap<int, QByteArray> insertions) const
{
    const Edits edits = m_edits.value(index);
    QByteArray blanked = text;
    for (const TextRange &range : edits.blanked)
        blank(&blanked, range);
    for (const int begin : edits.unnamed) {
        if (blanked.at(begin) != ' ') // Otherwise left out together with the item around it.
            insertions.insert(begin, " netweir_primitive_" + QByteArray::number(begin) + ' ');
    }
    QByteArray result;
    int done = 0;
    for (auto insertion = insertions.begin(); insertion != insertions.end(); ++insertion) {
        result.append(blanked.constData() + done, insertion.key() - done);
        result += *insertion;
        done = insertion.key();
    }
    return result.append(blanked.constData() + done, blanked.size() - done);
}

} // namespace NETWEIR::Internal
