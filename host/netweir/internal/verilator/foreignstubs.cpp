// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "foreignstubs.h"

#include <netweir/internal/modules/foreignunits.h>
#include <netweir/internal/modules/stubs.h>

#include <QSet>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

/// A name of VHDL as an escaped name of Verilog. Blanks would end it.
QByteArray verilogName(QString name)
{
    if (name.startsWith(QLatin1Char('\\')))
        name = name.mid(1, name.size() - 2);
    name.replace(QLatin1Char(' '), QLatin1Char('_'));
    return escapedName(name.toUtf8());
}

/// The @p declared names, and behind them those of @p written that mean one of them in another
/// spelling.
QByteArrayList namesOf(const QStringList &declared, const QByteArrayList &written)
{
    QByteArrayList result;
    for (const QString &name : declared)
        result.append(verilogName(name));
    QSet<QByteArray> known(result.begin(), result.end());
    const NamesAcross names(declared);
    for (const QByteArray &name : written) {
        const QByteArray escaped = escapedName(name);
        if (known.contains(escaped) || names.find(QString::fromUtf8(name)) < 0)
            continue;
        known.insert(escaped);
        result.append(escaped);
    }
    return result;
}

QStringList portNames(const DeclaredUnit &unit)
{
    QStringList result;
    for (const DeclaredPort &port : unit.ports)
        result.append(port.name);
    return result;
}

} // namespace

ForeignStubs::ForeignStubs(const ForeignUnits &foreign, QVector<Instantiation> *instantiations)
{
    const auto isForeign = [this, &foreign](const Instantiation &instantiation) {
        const DeclaredUnit *unit = foreign.find(instantiation.module);
        if (unit)
            add(instantiation, *unit);
        return unit != nullptr;
    };
    instantiations->erase(std::remove_if(instantiations->begin(), instantiations->end(), isForeign),
                          instantiations->end());
}

void ForeignStubs::add(const Instantiation &instantiation, const DeclaredUnit &unit)
{
    const QString name = QString::fromUtf8(instantiation.module);
    if (!m_units.contains(name))
        m_modules.append(instantiation.module);
    m_units.insert(name, &unit);
    m_writtenPins[instantiation.module] += instantiation.pins;
    m_writtenParameters[instantiation.module] += instantiation.parameters;
    m_arrays[instantiation.first.text] += instantiation.arrays;
}

QByteArray ForeignStubs::text() const
{
    QByteArray result("`resetall\n");
    for (const QByteArray &module : m_modules) {
        const DeclaredUnit &unit = *m_units.value(QString::fromUtf8(module));
        QByteArrayList parameters;
        for (const QByteArray &name : namesOf(unit.generics, m_writtenParameters.value(module)))
            parameters.append("parameter " + name + "= \"" + UnsetParameter + '"');
        QByteArrayList pins;
        for (const QByteArray &name : namesOf(portNames(unit), m_writtenPins.value(module)))
            pins.append(QByteArray("input ") + PinRange + ' ' + name);
        result += "module " + escapedName(module);
        if (!parameters.isEmpty())
            result += "#(" + parameters.join(", ") + ") ";
        result += '(' + pins.join(", ") + ");\nendmodule\n";
    }
    return result;
}

QByteArray ForeignStubs::withoutArrays(int index, const QByteArray &text) const
{
    QByteArray result = text;
    const QVector<InstanceArray> arrays = m_arrays.value(index);
    for (const InstanceArray &array : arrays)
        blank(&result, array.range);
    return result;
}

QMap<int, QByteArray> ForeignStubs::rangeInstances(int index, const QByteArray &text) const
{
    QMap<int, QByteArray> result;
    const QVector<InstanceArray> arrays = m_arrays.value(index);
    for (const InstanceArray &array : arrays) {
        const QByteArray range =
            text.mid(array.range.begin, array.range.end - array.range.begin).simplified();
        if (range.isEmpty()) // Left out together with the item around it.
            continue;
        result.insert(array.end, ", " + escapedName(array.name + RangeInstance) + range + " ()");
    }
    return result;
}

} // namespace NETWEIR::Internal
