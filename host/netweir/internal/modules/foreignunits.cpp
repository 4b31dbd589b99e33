// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "foreignunits.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/verilog/modulescan.h>

namespace NETWEIR::Internal {

namespace {

const std::vector<DeclaredUnit> NoUnits;

/// The name of a module as VHDL writes it, without the marks of an extended identifier.
QByteArray moduleName(const QString &name)
{
    const bool isExtended = name.startsWith(QLatin1Char('\\'));
    return (isExtended ? name.mid(1, name.size() - 2) : name).toUtf8();
}

/// Calls @p visit for each use of a unit that is none of @p units.
template <typename Visit>
void forEachForeignUse(const std::vector<DeclaredUnit> &units, const UnitNames &names,
                       const Visit &visit)
{
    for (const DeclaredUnit &unit : units) {
        for (const UnitUse &use : unit.uses) {
            if (names.findVhdl(use.unit, use.library, unit.library) < 0)
                visit(use);
        }
    }
}

/// The modules of @p scan by their names in lower case.
QHash<QByteArray, QByteArrayList> modulesInAnyCase(const ModuleScan &scan)
{
    QHash<QByteArray, QByteArrayList> result;
    for (const DesignUnit &unit : scan.units)
        result[unit.name.toLower()].append(unit.name);
    return result;
}

} // namespace

ForeignUnits::ForeignUnits(const std::vector<DeclaredUnit> *units)
    : m_units(units ? units : &NoUnits)
    , m_names(*m_units)
{
}

const DeclaredUnit *ForeignUnits::find(const QByteArray &module) const
{
    UnitUse use;
    use.unit = QString::fromUtf8(module);
    const int unit = m_names.find(use, Language::Verilog);
    return unit < 0 ? nullptr : &itemAt(*m_units, unit);
}

QByteArrayList ForeignUnits::missingModules(const ModuleScan &scan) const
{
    const QHash<QByteArray, QByteArrayList> known = modulesInAnyCase(scan);
    QSet<QByteArray> listed;
    QByteArrayList result;
    forEachForeignUse(*m_units, m_names, [&](const UnitUse &use) {
        const QByteArray name = moduleName(use.unit);
        if (listed.contains(name) || known.contains(name.toLower()))
            return;
        listed.insert(name);
        result.append(name);
        if (name != name.toLower())
            result.append(name.toLower());
    });
    return result;
}

QByteArrayList ForeignUnits::usedModules(const ModuleScan &scan) const
{
    const QHash<QByteArray, QByteArrayList> known = modulesInAnyCase(scan);
    QByteArrayList result;
    forEachForeignUse(*m_units, m_names, [&](const UnitUse &use) {
        result += known.value(moduleName(use.unit).toLower());
    });
    return result;
}

} // namespace NETWEIR::Internal
