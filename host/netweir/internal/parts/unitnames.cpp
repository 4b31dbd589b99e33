// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "unitnames.h"

#include <netweir/internal/ground/itemat.h>

namespace NETWEIR::Internal {

namespace {

bool isExtended(const QString &name)
{
    return name.startsWith(QLatin1Char('\\'));
}

/// The characters of an extended identifier, or the name itself.
QString bareName(const QString &name)
{
    return isExtended(name) ? name.mid(1, name.size() - 2) : name;
}

bool mayBeInstantiated(const DeclaredUnit &unit)
{
    return unit.kind != DeclaredUnit::Outside;
}

} // namespace

QString foldedName(const QString &name)
{
    return isExtended(name) ? name : name.toLower();
}

NamesAcross::NamesAcross(const QStringList &declared)
{
    // Backwards, so that the first of several equal names remains.
    for (int i = declared.size() - 1; i >= 0; --i) {
        m_exact.insert(declared[i], i);
        m_inAnyCase.insert(bareName(declared[i]).toLower(), i);
    }
}

int NamesAcross::find(const QString &written) const
{
    const int exact = m_exact.value(written, -1);
    return exact >= 0 ? exact : m_inAnyCase.value(bareName(written).toLower(), -1);
}

UnitNames::UnitNames(const std::vector<DeclaredUnit> &units)
{
    // Library files last, because the first unit of a name counts.
    for (const bool backup : {false, true}) {
        for (int i = 0; i < countOf(units); ++i) {
            const DeclaredUnit &unit = itemAt(units, i);
            if (unit.backup != backup || !mayBeInstantiated(unit))
                continue;
            if (unit.language == Language::Vhdl) {
                QVector<VhdlUnit> &named = m_vhdl[foldedName(unit.name)];
                named.append({unit.library, i});
                continue;
            }
            if (!m_verilog.contains(unit.name))
                m_verilog.insert(unit.name, i);
            const QString inAnyCase = unit.name.toLower();
            if (!m_verilogInAnyCase.contains(inAnyCase))
                m_verilogInAnyCase.insert(inAnyCase, i);
        }
    }
}

int UnitNames::find(const UnitUse &use, Language from, const QString &ownLibrary) const
{
    if (from == Language::Verilog) {
        const int module = findVerilog(use.unit);
        return module >= 0 ? module : findVhdlFromVerilog(use.unit);
    }
    const int entity = findVhdl(use.unit, use.library, ownLibrary);
    return entity >= 0 ? entity : findVerilogFromVhdl(use.unit);
}

int UnitNames::findVhdl(const QString &name, const QString &library,
                        const QString &ownLibrary) const
{
    const auto named = m_vhdl.constFind(foldedName(name));
    if (named == m_vhdl.constEnd())
        return -1;
    const QString wanted = library.isEmpty() ? ownLibrary : library;
    for (const VhdlUnit &unit : *named) {
        if (unit.library == wanted)
            return unit.number;
    }
    return library.isEmpty() ? named->first().number : -1;
}

/// Verilog writes the name of an extended identifier bare.
int UnitNames::findVhdlFromVerilog(const QString &name) const
{
    const int entity = findVhdl(name);
    const QChar mark = QLatin1Char('\\');
    return entity >= 0 ? entity : findVhdl(mark + name + mark);
}

int UnitNames::findVerilogFromVhdl(const QString &name) const
{
    const QString bare = bareName(name);
    const int exact = findVerilog(bare);
    if (exact >= 0 || isExtended(name))
        return exact;
    return m_verilogInAnyCase.value(bare.toLower(), -1);
}

} // namespace NETWEIR::Internal
