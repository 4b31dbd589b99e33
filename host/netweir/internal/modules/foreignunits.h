// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/parts/unitnames.h>

#include <QByteArray>
#include <QByteArrayList>
#include <QSet>

#include <vector>

namespace NETWEIR::Internal {

struct ModuleScan;

/// The units of the other language that Verilog may instantiate. Refers to their declarations.
class ForeignUnits
{
public:
    /// Null stands for none.
    explicit ForeignUnits(const std::vector<DeclaredUnit> *units = nullptr);

    bool isEmpty() const { return m_units->empty(); }

    /// The unit that an instance of @p module means if no source in Verilog defines that module.
    /// Null when there is none.
    const DeclaredUnit *find(const QByteArray &module) const;

    /// Names by which library folders may have the modules that these units instantiate and neither
    /// language declares: as written and in lower case.
    QByteArrayList missingModules(const ModuleScan &scan) const;

    /// The modules of @p scan that these units instantiate.
    QByteArrayList usedModules(const ModuleScan &scan) const;

private:
    const std::vector<DeclaredUnit> *m_units;
    UnitNames m_names;
};

} // namespace NETWEIR::Internal
