// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "designmodules.h"
#include "designscopes.h"
#include "foreignunits.h"
#include "packagecheck.h"
#include "sourceorder.h"

#include <netweir/internal/verilog/modulescan.h>

#include <QByteArrayList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVector>

namespace NETWEIR::Internal {

class PreprocessedText;
struct DesignSources;

/// What the texts of a design say before any tool elaborates them: which modules there are and in
/// which order the texts are to be read.
class DesignScan
{
public:
    /// Both arguments must outlive this object.
    DesignScan(const DesignSources &sources, const PreprocessedText &text);
    DesignScan(const DesignScan &) = delete;
    DesignScan &operator=(const DesignScan &) = delete;

    const ModuleScan &moduleScan() const { return m_scan; }
    const DesignModules &modules() const { return m_modules; }
    const PackageCheck &packages() const { return m_packages; }
    const SourceOrder &order() const { return m_order; }

    /// A module of texts that the scan does not understand, for an elaborator that says what is
    /// wrong with them. Null when the scan understands them.
    QString anyModule() const;

    /// Names of units and types.
    QSet<QByteArray> knownNames() const;

    /// Modules and packages that a library folder may have a file for.
    QByteArrayList missingNames(const ForeignUnits &foreign = ForeignUnits()) const;

    /// Instantiations of modules that no file defines when @p modules are taken away.
    QVector<Instantiation> unknownWithout(const QSet<QByteArray> &modules) const;

private:
    const DesignSources &m_sources;
    const PreprocessedText &m_text;
    ModuleScan m_scan;
    DesignModules m_modules;
    DesignScopes m_scopes;
    PackageCheck m_packages;
    SourceOrder m_order;
};

} // namespace NETWEIR::Internal
