// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "rootwrapper.h"

#include "vhdldesign.h"
#include "vhdlliteral.h"

#include <netweir/internal/signals/vhdltext.h>
#include <netweir/internal/vhdl/vhdlname.h>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

/// Fits a bit string to the length of a type: the right bits count, and a number keeps its sign.
const char ResizeFunction[] =
    "function netweir_resize(v : ieee.std_logic_1164.std_logic_vector; n : natural;\n"
    "fill : ieee.std_logic_1164.std_logic) return ieee.std_logic_1164.std_logic_vector is\n"
    "alias a : ieee.std_logic_1164.std_logic_vector(v'length - 1 downto 0) is v;\n"
    "variable r : ieee.std_logic_1164.std_logic_vector(n - 1 downto 0) := (others => fill);\n"
    "begin\n"
    "for i in 0 to n - 1 loop\n"
    "if i < v'length then\n"
    "r(i) := a(i);\n"
    "end if;\n"
    "end loop;\n"
    "return r;\n"
    "end;\n";

bool isSame(const QString &name, const QByteArray &declared)
{
    return sameVhdlName(name.toUtf8(), declared);
}

QByteArray vectorExpression(const QByteArray &bits, const QByteArray &baseType)
{
    if (baseType == "std_logic_vector")
        return bits;
    if (baseType == "bit_vector")
        return "ieee.std_logic_1164.to_bitvector(" + bits + ')';
    if (baseType == "std_ulogic_vector")
        return "ieee.std_logic_1164.std_ulogic_vector(" + bits + ')';
    return baseType + '(' + bits + ')';
}

} // namespace

RootWrapper::RootWrapper(const VhdlDesign &design, const UnitIndex &index, const DeclaredUnit &unit,
                         const PartRoot &root)
    : m_design(design)
    , m_index(index)
    , m_unit(unit)
    , m_root(root)
    , m_entity(index.entityOf(unit.library.toLatin1(), foldedVhdlName(unit.name.toUtf8())))
{
}

void RootWrapper::addError(const QString &text)
{
    m_errors.append(errorMessage(m_root.place, text));
}

void RootWrapper::checkNames()
{
    const VhdlInterface &interface = m_entity.unit->interface;
    const auto has = [](const QVector<VhdlInterfaceItem> &items, const QString &name) {
        return std::any_of(items.begin(), items.end(), [&name](const VhdlInterfaceItem &item) {
            return isSame(name, item.name);
        });
    };
    for (auto i = m_root.generics.begin(); i != m_root.generics.end(); ++i) {
        if (!has(interface.generics, i.key()))
            addError(
                Text::tr("The entity \"%1\" has no generic \"%2\".").arg(m_unit.name, i.key()));
    }
    for (const PartPort &port : m_root.ports) {
        if (!has(interface.ports, port.name))
            addError(Text::tr("The entity \"%1\" has no port \"%2\".").arg(m_unit.name, port.name));
    }
}

QByteArray RootWrapper::constantOf(const VhdlInterfaceItem &generic)
{
    const QByteArray &text = m_design.source(m_entity.file).text;
    const QByteArray type = textIn(text, generic.type);
    const QByteArray declaration = "constant " + generic.name + " : " + type + " := ";
    const auto given =
        std::find_if(m_root.generics.keyBegin(), m_root.generics.keyEnd(),
                     [&](const QString &name) { return isSame(name, generic.name); });
    if (given == m_root.generics.keyEnd()) {
        const QByteArray value = textIn(text, generic.value);
        if (value.isEmpty() || generic.kind != VhdlInterfaceItem::Object)
            addError(Text::tr("The entity \"%1\" needs a value for its generic \"%2\", which has "
                              "no default.")
                         .arg(m_unit.name, vhdlText(generic.name)));
        return declaration + value + ";\n";
    }
    const GenericValue value = m_root.generics.value(*given);
    const QByteArray baseType = m_index.baseType(type);
    const QByteArray literal =
        generic.kind == VhdlInterfaceItem::Object ? vhdlLiteral(value, baseType) : QByteArray();
    if (literal.isEmpty())
        addError(Text::tr("The value \"%1\" cannot be given to the generic \"%2\" of the entity "
                          "\"%3\", which has the type \"%4\".")
                     .arg(value.text, vhdlText(generic.name), m_unit.name, vhdlText(type)));
    if (!isBitVector(baseType) || literal.isEmpty())
        return declaration + literal + ";\n";
    if (!m_index.isConstrained(type))
        return declaration + vectorExpression(literal, baseType) + ";\n";
    const bool isNegative = value.kind == GenericValue::Integer && value.text.startsWith('-');
    const QByteArray subtype = "netweir_type_" + QByteArray::number(generic.type.begin);
    return "subtype " + subtype + " is " + type + ";\n" + declaration +
           vectorExpression("netweir_resize(" + literal + ", " + subtype + "'length, '" +
                                (isNegative ? '1' : '0') + "')",
                            baseType) +
           ";\n";
}

QByteArray RootWrapper::signalOf(const VhdlInterfaceItem &port)
{
    QByteArray type = textIn(m_design.source(m_entity.file).text, port.type);
    const QByteArray baseType = m_index.baseType(type);
    const auto connected =
        std::find_if(m_root.ports.begin(), m_root.ports.end(),
                     [&port](const PartPort &other) { return isSame(other.name, port.name); });
    const bool isConnected = connected != m_root.ports.end();
    if (isConnected && !isConnectable(baseType))
        addError(Text::tr("The port \"%1\" of the entity \"%2\" has the type \"%3\" and cannot be "
                          "connected in Verilog. Use a bit, a vector of bits or an integer.")
                     .arg(vhdlText(port.name), m_unit.name, vhdlText(type)));
    if (isBitVector(baseType) && !m_index.isConstrained(type)) {
        if (!isConnected || connected->width == 0)
            addError(Text::tr("The port \"%1\" of the entity \"%2\" has no range of its own, and "
                              "the instance does not tell its width. Connect a signal.")
                         .arg(vhdlText(port.name), m_unit.name));
        else
            type += '(' + QByteArray::number(connected->width - 1) + " downto 0)";
    }
    return "signal " + port.name + " : " + type + ";\n";
}

QByteArray RootWrapper::map(const QVector<VhdlInterfaceItem> &items) const
{
    QByteArrayList lines;
    for (const VhdlInterfaceItem &item : items)
        lines.append(item.name + " => " + item.name);
    return '(' + lines.join(",\n") + ')';
}

QByteArray RootWrapper::text(const QByteArray &name)
{
    m_errors.clear();
    if (!m_entity.unit) {
        addError(Text::tr("The entity of \"%1\" is missing.").arg(m_unit.name));
        return {};
    }
    checkNames();
    const VhdlInterface &interface = m_entity.unit->interface;
    QByteArray declarations = ResizeFunction;
    for (const VhdlInterfaceItem &generic : interface.generics)
        declarations += constantOf(generic);
    for (const VhdlInterfaceItem &port : interface.ports)
        declarations += signalOf(port);
    const bool isConfiguration = m_unit.kind == DeclaredUnit::Configuration;
    QByteArray instance = QByteArray(WrappedLabel) + " : " +
                          (isConfiguration ? "configuration" : "entity") + " work." +
                          m_unit.name.toUtf8();
    if (!interface.generics.isEmpty())
        instance += "\ngeneric map " + map(interface.generics);
    if (!interface.ports.isEmpty())
        instance += "\nport map " + map(interface.ports);
    return "library ieee;\nuse ieee.std_logic_1164.all;\nuse ieee.numeric_std.all;\n" +
           m_index.contextOf(m_entity) + "\nentity " + name + " is\nend;\n" +
           "architecture netweir_wrapper of " + name + " is\n" + declarations + "begin\n" +
           instance + ";\nend;\n";
}

} // namespace NETWEIR::Internal
