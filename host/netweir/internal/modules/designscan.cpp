// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designscan.h"

#include "typeuses.h"

#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/sources/preprocessedtext.h>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

ModuleScan scanTexts(const DesignSources &sources, const PreprocessedText &text)
{
    ModuleScan result;
    for (int i = 0; i < sources.files.size(); ++i) {
        const int before = result.units.size();
        scanModules(text.texts()[i], i, isSystemVerilog(sources, i), &result);
        for (int unit = before; unit < result.units.size(); ++unit)
            result.units[unit].library = sources.files[i].library;
    }
    return result;
}

} // namespace

DesignScan::DesignScan(const DesignSources &sources, const PreprocessedText &text)
    : m_sources(sources)
    , m_text(text)
    , m_scan(scanTexts(sources, text))
    , m_modules(m_scan, text)
    , m_scopes(sources, text)
    , m_packages(sources, text, m_scopes)
    , m_order(m_scopes, findTypeUses(sources, text, m_scopes))
{
}

QString DesignScan::anyModule() const
{
    if (m_scan.balanced)
        return {};
    const auto module =
        std::find_if(m_scan.units.begin(), m_scan.units.end(), [](const DesignUnit &unit) {
            return unit.kind == DesignUnit::Module && !unit.library;
        });
    return module == m_scan.units.end() ? QStringLiteral("top") : QString::fromUtf8(module->name);
}

QSet<QByteArray> DesignScan::knownNames() const
{
    QSet<QByteArray> result = m_scopes.types();
    for (const DesignUnit &unit : m_scan.units)
        result.insert(unit.name);
    return result;
}

QByteArrayList DesignScan::missingNames(const ForeignUnits &foreign) const
{
    return m_modules.missingModules(foreign) + m_packages.missingPackages();
}

QVector<Instantiation> DesignScan::unknownWithout(const QSet<QByteArray> &modules) const
{
    ModuleScan scan = m_scan;
    const auto gone =
        std::remove_if(scan.units.begin(), scan.units.end(),
                       [&](const DesignUnit &unit) { return modules.contains(unit.name); });
    scan.units.erase(gone, scan.units.end());
    return DesignModules(scan, m_text).unknownInstantiations();
}

} // namespace NETWEIR::Internal
