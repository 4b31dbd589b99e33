// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designmodules.h"

#include "foreignunits.h"

#include <netweir/internal/ground/messages.h>
#include <netweir/internal/sources/preprocessedtext.h>

#include <algorithm>
#include <numeric>

namespace NETWEIR::Internal {

DesignModules::DesignModules(const ModuleScan &scan, const PreprocessedText &text)
    : m_scan(scan)
    , m_text(text)
{
    for (int i = 0; i < scan.units.size(); ++i) {
        const auto known = m_units.constFind(scan.units[i].name);
        if (known == m_units.constEnd() || (m_scan.units[*known].library && !scan.units[i].library))
            m_units.insert(scan.units[i].name, i);
    }
}

/// Indexes of the units with these names, as far as there are some.
QVector<int> DesignModules::unitsOf(const QStringList &modules) const
{
    QVector<int> result;
    for (const QString &module : modules) {
        const int unit = m_units.value(module.toUtf8(), -1);
        if (unit >= 0)
            result.append(unit);
    }
    return result;
}

QStringList DesignModules::dimensionErrors(const QStringList &roots,
                                           const ForeignUnits &foreign) const
{
    QStringList result;
    for (const Instantiation *instantiation : instantiationsIn(reachableFrom(unitsOf(roots)))) {
        if (instantiation->multidimensional.line > 0 &&
            (m_units.contains(instantiation->module) || foreign.find(instantiation->module))) {
            result.append(errorMessage(
                m_text.place(instantiation->multidimensional),
                Text::tr("Arrays of instances of \"%1\" with several dimensions are not "
                         "supported. Use one dimension, or generate loops.")
                    .arg(QString::fromUtf8(instantiation->module))));
        }
    }
    return result;
}

/// The instantiations in @p units, and those of all bind statements.
QVector<const Instantiation *> DesignModules::instantiationsIn(const QVector<int> &units) const
{
    QVector<const Instantiation *> result;
    for (const int unit : units) {
        for (const Instantiation &instantiation : m_scan.units[unit].instantiations)
            result.append(&instantiation);
    }
    for (const Instantiation &binding : m_scan.bindings)
        result.append(&binding);
    return result;
}

/// @p starts, the bound units, and all units that these instantiate directly or indirectly.
QVector<int> DesignModules::reachableFrom(const QVector<int> &starts) const
{
    QVector<int> result;
    QSet<int> known;
    const auto add = [&result, &known](int unit) {
        if (unit >= 0 && !known.contains(unit)) {
            known.insert(unit);
            result.append(unit);
        }
    };
    for (const int start : starts)
        add(start);
    for (const Instantiation &binding : m_scan.bindings)
        add(m_units.value(binding.module, -1));
    for (int i = 0; i < result.size(); ++i) {
        for (const Instantiation &instantiation : m_scan.units[result[i]].instantiations)
            add(m_units.value(instantiation.module, -1));
    }
    return result;
}

QHash<QString, QSet<QString>> DesignModules::tiedNets() const
{
    QHash<QString, QSet<QString>> result;
    for (const DesignUnit &unit : m_scan.units) {
        for (const QByteArray &net : unit.tiedNets)
            result[QString::fromUtf8(unit.name)].insert(QString::fromUtf8(net));
    }
    return result;
}

bool DesignModules::instantiatesItself(const QString &module) const
{
    const int index = m_units.value(module.toUtf8(), -1);
    if (index < 0)
        return false;
    const DesignUnit &unit = m_scan.units[index];
    return std::any_of(
        unit.instantiations.begin(), unit.instantiations.end(),
        [&unit](const Instantiation &instantiation) { return instantiation.module == unit.name; });
}

QVector<Instantiation> DesignModules::unknownInstantiations() const
{
    QVector<int> all(m_scan.units.size());
    std::iota(all.begin(), all.end(), 0);
    QVector<Instantiation> result;
    for (const Instantiation *instantiation : instantiationsIn(all)) {
        if (!instantiation->bare && !m_units.contains(instantiation->module))
            result.append(*instantiation);
    }
    return result;
}

QByteArrayList DesignModules::missingModules(const ForeignUnits &foreign) const
{
    QVector<int> sources;
    for (int i = 0; i < m_scan.units.size(); ++i) {
        if (!m_scan.units[i].library)
            sources.append(i);
    }
    for (const QByteArray &module : foreign.usedModules(m_scan))
        sources.append(m_units.value(module));
    QByteArrayList result = foreign.missingModules(m_scan);
    QSet<QByteArray> listed(result.begin(), result.end());
    for (const Instantiation *instantiation : instantiationsIn(reachableFrom(sources))) {
        const QByteArray &name = instantiation->module;
        if (!m_units.contains(name) && !listed.contains(name) && !foreign.find(name)) {
            listed.insert(name);
            result.append(name);
        }
    }
    return result;
}

} // namespace NETWEIR::Internal
