// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/verilog/modulescan.h>
#include <netweir/internal/xml/readoptions.h>

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>
#include <QMap>
#include <QVector>

namespace NETWEIR::Internal {

class ForeignUnits;

/// Modules in place of the units of the other language that instances name, one for each spelling.
///
/// A stub has the ports and parameters that the unit declares, in that order, and further ones
/// where instances write a name in another case. As with unknown modules, all ports are inputs that
/// are wide enough for the elaborator to keep the whole connection; the reader of the result knows
/// their directions. The default of each parameter tells that an instance does not set it.
///
/// The widths of an array's connections would have to match those of the ports. So a single
/// instance with the same connections replaces the array, and another one without connections has
/// its range.
class ForeignStubs
{
public:
    /// Takes the instantiations of units in @p foreign out of @p instantiations.
    ForeignStubs(const ForeignUnits &foreign, QVector<Instantiation> *instantiations);

    bool isEmpty() const { return m_modules.isEmpty(); }

    /// The Verilog text of all stubs, in the order of their first use.
    QByteArray text() const;

    /// The units by the names of their stubs.
    const QHash<QString, const DeclaredUnit *> &units() const { return m_units; }

    /// The text @p index of the design without the ranges of arrays of foreign units. Everything
    /// else keeps its position.
    QByteArray withoutArrays(int index, const QByteArray &text) const;

    /// The instances with these ranges, by the offsets at which they belong into the @p text. Each
    /// takes no line end.
    QMap<int, QByteArray> rangeInstances(int index, const QByteArray &text) const;

private:
    void add(const Instantiation &instantiation, const DeclaredUnit &unit);

    QByteArrayList m_modules; ///< In the order of their first use.
    QHash<QString, const DeclaredUnit *> m_units;
    QHash<QByteArray, QByteArrayList> m_writtenPins;       ///< By module.
    QHash<QByteArray, QByteArrayList> m_writtenParameters; ///< By module.
    QHash<int, QVector<InstanceArray>> m_arrays;           ///< By text.
};

} // namespace NETWEIR::Internal
