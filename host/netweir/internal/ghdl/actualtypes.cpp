// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "actualtypes.h"

#include "vhdldesign.h"
#include "vhdlliteral.h"

#include <netweir/internal/vhdl/vhdlname.h>
#include <netweir/internal/vhdl/vhdltokens.h>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

/// Functions whose name tells the type of their result.
QByteArray typeOfFunction(const QByteArray &name)
{
    static const QHash<QByteArray, QByteArray> types{{"std_logic_vector", "std_logic_vector"},
                                                     {"std_ulogic_vector", "std_ulogic_vector"},
                                                     {"to_stdlogicvector", "std_logic_vector"},
                                                     {"to_slv", "std_logic_vector"},
                                                     {"conv_std_logic_vector", "std_logic_vector"},
                                                     {"unsigned", "unsigned"},
                                                     {"to_unsigned", "unsigned"},
                                                     {"signed", "signed"},
                                                     {"to_signed", "signed"},
                                                     {"to_bitvector", "bit_vector"},
                                                     {"to_bit", "bit"},
                                                     {"to_x01", "std_logic"},
                                                     {"std_logic", "std_logic"},
                                                     {"to_integer", "integer"},
                                                     {"integer", "integer"},
                                                     {"real", "real"}};
    return types.value(name);
}

bool isResolved(const QByteArray &baseType)
{
    return baseType == "std_logic" || baseType == "std_logic_vector" || baseType == "unsigned" ||
           baseType == "signed";
}

bool isBitString(const QByteArray &literal)
{
    const QByteArray content = literal.mid(1, literal.size() - 2).toLower();
    return !content.isEmpty() && std::all_of(content.begin(), content.end(), [](char c) {
        return c == '0' || c == '1' || c == 'x' || c == 'z' || c == '_';
    });
}

/// Skips indexes or a range behind the opening bracket. Whether it is a range.
bool skipBrackets(VhdlTokens *tokens)
{
    bool isRange = false;
    int depth = 1;
    while (depth > 0) {
        const VhdlToken token = tokens->next();
        if (token.kind == VhdlToken::EndOfText)
            break;
        depth += token.is('(') ? 1 : token.is(')') ? -1 : 0;
        isRange = isRange || token.is(VhdlKeyword::Downto) || token.is(VhdlKeyword::To) ||
                  token.is(VhdlKeyword::Range);
    }
    return isRange;
}

QByteArray typeOfLiteral(const VhdlToken &token)
{
    switch (token.kind) {
    case VhdlToken::Character:
        return "std_logic";
    case VhdlToken::BitString:
        return "std_logic_vector";
    case VhdlToken::String:
        return isBitString(token.bytes()) ? "std_logic_vector" : "string";
    case VhdlToken::Number:
        return token.text.find('.') == std::string_view::npos ? "integer" : "real";
    default:
        break;
    }
    if (token.isWord("true") || token.isWord("false"))
        return "boolean";
    return {};
}

} // namespace

ActualTypes::ActualTypes(const VhdlDesign &design, const UnitIndex &index,
                         const UnitAt &architecture)
    : m_index(index)
{
    const VhdlSource &source = design.source(architecture.file);
    const UnitAt entity = index.entity(source.library, primaryNameOf(*architecture.unit));
    if (entity.unit)
        addInterface(design.source(entity.file).text, entity.unit->interface);
    for (const VhdlDeclaration &declaration : architecture.unit->declarations) {
        const bool isSignal = declaration.kind == VhdlDeclaration::Signal;
        if (isSignal || declaration.kind == VhdlDeclaration::Constant)
            m_objects.insert(foldedVhdlName(declaration.name),
                             {textIn(source.text, declaration.type), isSignal ? "inout" : "in"});
    }
    noteAssigned(textIn(source.text, architecture.unit->range));
}

void ActualTypes::addInterface(const QByteArray &text, const VhdlInterface &interface)
{
    for (const VhdlInterfaceItem &generic : interface.generics)
        m_objects.insert(foldedVhdlName(generic.name), {textIn(text, generic.type), "in"});
    for (const VhdlInterfaceItem &port : interface.ports) {
        const bool isOut =
            port.mode == VhdlInterfaceItem::Out || port.mode == VhdlInterfaceItem::Buffer;
        const char *mode = port.mode == VhdlInterfaceItem::Inout ? "inout" : isOut ? "out" : "in";
        m_objects.insert(foldedVhdlName(port.name), {textIn(text, port.type), mode});
    }
}

/// The first name of each statement with "<=" behind it.
void ActualTypes::noteAssigned(const QByteArray &text)
{
    VhdlTokens tokens(text);
    QByteArray first;
    bool isAtBegin = true;
    int depth = 0;
    for (VhdlToken token = tokens.next(); token.kind != VhdlToken::EndOfText;
         token = tokens.next()) {
        if (token.is('('))
            ++depth;
        else if (token.is(')'))
            --depth;
        else if (token.is(VhdlToken::LessOrEqual) && depth == 0 && !first.isEmpty())
            m_assigned.insert(first);
        else if (token.isName() && isAtBegin)
            first = foldedVhdlName(token.text);
        isAtBegin = depth == 0 && (token.is(';') || token.is(':') || token.is(VhdlToken::Arrow) ||
                                   (token.kind == VhdlToken::Reserved));
        if (isAtBegin)
            first.clear();
    }
}

/// The text of the element type of an array type.
QByteArray ActualTypes::elementOf(const QByteArray &type) const
{
    const QByteArray base = m_index.baseType(type);
    if (base == "std_logic_vector" || base == "unsigned" || base == "signed")
        return "std_logic";
    if (base == "std_ulogic_vector")
        return "std_ulogic";
    if (base == "bit_vector")
        return "bit";
    return m_index.elementType(base);
}

/// Whether a range depends on constants or generics, which a stub does not see.
bool ActualTypes::usesObjects(const QByteArray &type) const
{
    VhdlTokens tokens(type);
    for (VhdlToken token = tokens.next(); token.kind != VhdlToken::EndOfText;
         token = tokens.next()) {
        if (token.isName() && m_objects.contains(foldedVhdlName(token.text)))
            return true;
    }
    return false;
}

ActualType ActualTypes::typeOfName(const QByteArray &expression) const
{
    VhdlTokens tokens(expression);
    VhdlToken token = tokens.next();
    const QByteArray name = foldedVhdlName(token.text);
    const auto object = m_objects.constFind(name);
    if (object == m_objects.constEnd())
        return {typeOfFunction(name), "in"};
    QByteArray type = object->type;
    QByteArray mode = object->mode;
    token = tokens.next();
    while (token.is('(') || token.is('.')) {
        if (token.is('.'))
            type = m_index.fieldType(m_index.baseType(type), foldedVhdlName(tokens.next().text));
        else if (!skipBrackets(&tokens))
            type = elementOf(type);
        token = tokens.next();
    }
    if (token.kind != VhdlToken::EndOfText)
        mode = "in"; // An operator follows.
    const QByteArray base = m_index.baseType(type);
    if (mode == "inout" && !isResolved(base) && m_assigned.contains(name))
        mode = "in";
    // The ranges on both sides of an output must be the same.
    const bool isInteger = base == "integer" || base == "natural" || base == "positive";
    if (isInteger && mode != "in")
        return usesObjects(type) ? ActualType{base, "in"} : ActualType{type, mode};
    return {isConnectable(base) || base == "real" || base == "string" ? base : typeMark(type),
            mode};
}

ActualType ActualTypes::typeOf(const QByteArray &expression) const
{
    VhdlTokens tokens(expression);
    VhdlToken token = tokens.next();
    bool isExpression = false;
    int begin = 0;
    while (token.is(VhdlKeyword::Operator) || token.is('-') || token.is('+') || token.is('(')) {
        isExpression = true;
        begin = token.end();
        token = tokens.next();
    }
    const QByteArray literal = typeOfLiteral(token);
    if (!literal.isEmpty())
        return {literal, "in"};
    if (!token.isName())
        return {{}, "in"};
    ActualType result = typeOfName(expression.mid(begin));
    if (isExpression)
        result.mode = "in";
    return result;
}

} // namespace NETWEIR::Internal
