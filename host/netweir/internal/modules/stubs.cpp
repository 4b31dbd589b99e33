// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "stubs.h"

#include "deviceprimitives.h"

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

/// @p names, followed by as many generated names as there are more positions.
QByteArrayList filledUp(const QByteArrayList &names, int positional, const char *prefix)
{
    QByteArrayList result = names;
    while (result.size() < positional)
        result.append(prefix + QByteArray::number(result.size() + 1));
    return result;
}

} // namespace

QByteArray escapedName(const QByteArray &name)
{
    return '\\' + name + ' ';
}

void Stubs::NameList::add(const QByteArray &name)
{
    if (known.contains(name))
        return;
    known.insert(name);
    names.append(name);
}

Stubs::Stubs(const QVector<Instantiation> &instantiations, const ModuleScan &scan)
{
    for (const Instantiation &instantiation : instantiations)
        add(instantiation);
    addDefparams(scan);
}

void Stubs::add(const Instantiation &instantiation)
{
    const QString name = QString::fromUtf8(instantiation.module);
    if (isDevicePrimitive(name)) {
        m_primitives.insert(name);
        return;
    }
    if (!m_stubs.contains(instantiation.module))
        m_unknown.append(instantiation.module);
    Stub &stub = m_stubs[instantiation.module];
    for (const QByteArray &parameter : instantiation.parameters)
        stub.parameters.add(parameter);
    for (const QByteArray &pin : instantiation.pins)
        stub.pins.add(pin);
    stub.parameters.positional =
        qMax(stub.parameters.positional, instantiation.positionalParameters);
    stub.pins.positional = qMax(stub.pins.positional, instantiation.positionalPins);
    for (int line = instantiation.first.line; line <= instantiation.last.line; ++line)
        m_modulesAt[{instantiation.first.text, line}].insert(instantiation.module);
    for (const QByteArray &instance : instantiation.instances)
        m_modulesOf[instance].insert(instantiation.module);
    for (const InstanceArray &array : instantiation.arrays)
        m_ranges[instantiation.first.text].append(array.range);
}

/// A defparam names an instance anywhere in the design, so every unknown module with an instance of
/// that name gets the parameter.
void Stubs::addDefparams(const ModuleScan &scan)
{
    for (const DesignUnit &unit : scan.units) {
        for (const Defparam &defparam : unit.defparams) {
            for (const QByteArray &module : m_modulesOf.value(defparam.instance))
                m_stubs[module].parameters.add(defparam.parameter);
        }
    }
}

QSet<QString> Stubs::unknownModules() const
{
    QSet<QString> result;
    for (const QByteArray &name : m_unknown)
        result.insert(QString::fromUtf8(name));
    return result;
}

QByteArrayList Stubs::parameterDeclarations(const Stub &stub) const
{
    QByteArrayList result;
    for (const QByteArray &name :
         filledUp(stub.parameters.names, stub.parameters.positional, "parameter_")) {
        const QByteArray position = "__paramNumber" + QByteArray::number(result.size() + 1);
        const bool isType = stub.types.contains(name) || stub.types.contains(position);
        result.append(isType ? "parameter type " + escapedName(name) + "= logic"
                             : "parameter " + escapedName(name) + "= 0");
    }
    return result;
}

QByteArray Stubs::text() const
{
    QByteArray result("`resetall\n");
    QStringList primitives = m_primitives.values();
    primitives.sort();
    for (const QString &primitive : qAsConst(primitives))
        result += devicePrimitiveSource(primitive);
    for (const QByteArray &name : m_unknown) {
        const Stub &stub = m_stubs[name];
        const QByteArrayList parameters = parameterDeclarations(stub);
        QByteArrayList pins;
        for (const QByteArray &pin : filledUp(stub.pins.names, stub.pins.positional, "pin_"))
            pins.append(QByteArray("input ") + PinRange + ' ' + escapedName(pin));
        result += "module " + escapedName(name);
        if (!parameters.isEmpty())
            result += "#(" + parameters.join(", ") + ") ";
        result += '(' + pins.join(", ") + ");\nendmodule\n";
    }
    return result;
}

QByteArray Stubs::withoutArrays(int index, const QByteArray &text) const
{
    QByteArray result = text;
    const QVector<TextRange> ranges = m_ranges.value(index);
    for (const TextRange &range : ranges)
        blank(&result, range);
    return result;
}

bool Stubs::addMissing(const TextLine &line, const QByteArray &name, bool isParameter)
{
    bool added = false;
    for (const QByteArray &module : modulesAt(line)) {
        Stub &stub = m_stubs[module];
        NameList &names = isParameter ? stub.parameters : stub.pins;
        added = added || !names.known.contains(name);
        names.add(name);
    }
    return added;
}

bool Stubs::addType(const TextLine &line, const QByteArray &name)
{
    bool added = false;
    for (const QByteArray &module : modulesAt(line)) {
        QSet<QByteArray> &types = m_stubs[module].types;
        added = added || !types.contains(name);
        types.insert(name);
    }
    return added;
}

bool Stubs::isUnknownAt(const TextLine &line) const
{
    return !modulesAt(line).isEmpty();
}

QSet<QByteArray> Stubs::modulesAt(const TextLine &line) const
{
    return m_modulesAt.value({line.text, line.line});
}

} // namespace NETWEIR::Internal
