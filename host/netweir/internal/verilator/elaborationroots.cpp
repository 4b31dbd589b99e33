// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "elaborationroots.h"

#include "verilogvalue.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/modules/designscan.h>
#include <netweir/internal/modules/stubs.h>

#include <QByteArrayList>

namespace NETWEIR::Internal {

namespace {

const char WrapperModule[] = "netweir_top";

/// The line of the wrapper with its first root.
constexpr int FirstLine = 2;

QByteArray instanceOf(const PartRoot &root, int number)
{
    QByteArrayList values;
    for (auto value = root.generics.begin(); value != root.generics.end(); ++value)
        values.append('.' + escapedName(value.key().toUtf8()) + '(' + verilogLiteral(*value) + ')');
    QByteArray result = escapedName(root.unit.toUtf8());
    if (!values.isEmpty())
        result += "#(" + values.join(", ") + ") ";
    return result + 'r' + QByteArray::number(number) + " ();\n";
}

} // namespace

ElaborationRoots::ElaborationRoots(const std::vector<PartRoot> &roots, const DesignScan &scan,
                                   bool isMixed)
    : m_roots(roots)
{
    if (roots.empty()) {
        m_top = scan.anyModule();
        m_areWrapped = m_top.isEmpty() && isMixed;
    } else {
        m_areWrapped =
            !roots.front().isTop || scan.modules().instantiatesItself(roots.front().unit);
        m_top = roots.front().unit;
    }
    if (m_areWrapped)
        m_top = QLatin1String(WrapperModule);
}

QByteArray ElaborationRoots::wrapper() const
{
    QByteArray result = QByteArray("module ") + WrapperModule + ";\n";
    for (int i = 0; i < countOf(m_roots); ++i)
        result += instanceOf(itemAt(m_roots, i), i);
    return result + "endmodule\n";
}

Place ElaborationRoots::placeAt(int wrapperLine) const
{
    const int root = wrapperLine - FirstLine;
    return root >= 0 && root < countOf(m_roots) ? itemAt(m_roots, root).place : Place();
}

QSet<QByteArray> ElaborationRoots::modules() const
{
    QSet<QByteArray> result;
    for (const PartRoot &root : m_roots)
        result.insert(root.unit.toUtf8());
    return result;
}

} // namespace NETWEIR::Internal
