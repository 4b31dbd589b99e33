// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/verilog/modulescan.h>

#include <QByteArrayList>
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

namespace NETWEIR::Internal {

class ForeignUnits;
class PreprocessedText;

/// The modules of a design and the instantiations between them. Each question costs time linear in
/// the scan.
class DesignModules
{
public:
    /// Both arguments must outlive this object.
    DesignModules(const ModuleScan &scan, const PreprocessedText &text);

    /// One message for each statement below @p roots that makes an array of instances with several
    /// ranges. The elaborator would read it as one-dimensional.
    QStringList dimensionErrors(const QStringList &roots, const ForeignUnits &foreign) const;

    /// Nets that switches and aliases connect, by module.
    QHash<QString, QSet<QString>> tiedNets() const;

    bool instantiatesItself(const QString &module) const;

    /// Instantiations of modules that neither sources nor libraries define.
    QVector<Instantiation> unknownInstantiations() const;

    /// Names of undefined modules that the sources, including those of @p foreign, need directly or
    /// through library modules. Some may be types of variables. Each name once, in the order of
    /// first use.
    QByteArrayList missingModules(const ForeignUnits &foreign) const;

private:
    QVector<int> reachableFrom(const QVector<int> &starts) const;
    QVector<int> unitsOf(const QStringList &modules) const;
    QVector<const Instantiation *> instantiationsIn(const QVector<int> &units) const;

    const ModuleScan &m_scan;
    const PreprocessedText &m_text;
    QHash<QByteArray, int> m_units; ///< Index of the unit of a name; sources win over libraries.
};

} // namespace NETWEIR::Internal
