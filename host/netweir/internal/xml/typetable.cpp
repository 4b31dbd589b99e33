// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "typetable.h"

#include "attributes.h"

#include <netweir/internal/ground/readguard.h>

#include <algorithm>
#include <tuple>

namespace NETWEIR::Internal {

namespace {

using Kind = DataType::Kind;

constexpr int DeepestType = 100;
constexpr qint64 WidestType = qint64(1) << 40;

bool isOneOf(std::string_view name, std::initializer_list<std::string_view> names)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

void readBasicType(const pugi::xml_node &node, DataType *type)
{
    const std::string_view name = attribute(node, "name");
    if (!isOneOf(name, {"logic", "bit", "byte", "shortint", "int", "longint", "integer", "time"}))
        return;
    type->kind = Kind::Vector;
    type->isIntegerKeyword = name == "integer";
    type->ranged = bool(node.attribute("left"));
    type->left = node.attribute("left").as_int();
    type->right = node.attribute("right").as_int();
}

std::vector<int> partsOf(const DataType &type)
{
    std::vector<int> parts;
    if (type.element >= 0)
        parts.push_back(type.element);
    for (const DataType::Member &member : type.members)
        parts.push_back(member.type);
    return parts;
}

} // namespace

void TypeTable::read(const pugi::xml_node &typeTable)
{
    // Types refer to later ones, so all have their numbers first.
    m_types.emplace_back(); // Unknown types are opaque.
    for (const pugi::xml_node &node : typeTable.children()) {
        numberType(node);
        for (const pugi::xml_node &member : node.children("memberdtype"))
            numberType(member);
    }
    for (const pugi::xml_node &node : typeTable.children()) {
        ReadGuard::check();
        readType(node, &itemAt(m_types, typeOf(node, "id")));
        for (const pugi::xml_node &member : node.children("memberdtype"))
            readType(member, &itemAt(m_types, typeOf(member, "id")));
    }
    m_types.front() = DataType();
    resolveAliases();
    auto state = itemsOf<std::vector<char>>(countOf(m_types));
    for (int i = 0; i < countOf(m_types); ++i)
        measure(i, &state);
}

int TypeTable::typeOf(const pugi::xml_node &node, const char *attributeName) const
{
    const auto found = m_indexes.find(attribute(node, attributeName));
    return found == m_indexes.end() ? 0 : found->second;
}

const DataType *TypeTable::interfaceType(int type) const
{
    const DataType *candidate = &at(type);
    if (candidate->kind == Kind::UnpackedArray)
        candidate = &at(candidate->element);
    return candidate->kind == Kind::Interface ? candidate : nullptr;
}

void TypeTable::numberType(const pugi::xml_node &node)
{
    const std::string_view id = attribute(node, "id");
    if (id.empty())
        return;
    m_indexes.emplace(m_names.keep(id), countOf(m_types));
    m_types.emplace_back();
}

void TypeTable::readType(const pugi::xml_node &node, DataType *type)
{
    const std::string_view tag = node.name();
    type->isSigned = node.attribute("signed").as_bool();
    if (tag == "basicdtype") {
        readBasicType(node, type);
    } else if (isOneOf(tag, {"refdtype", "enumdtype", "constdtype", "memberdtype"})) {
        type->kind = Kind::Alias;
        type->element = typeOf(node, "sub_dtype_id");
    } else if (isOneOf(tag, {"packarraydtype", "unpackarraydtype"})) {
        const auto range = declaredRange(node);
        if (!range)
            return;
        type->kind = tag == "packarraydtype" ? Kind::PackedArray : Kind::UnpackedArray;
        std::tie(type->left, type->right) = *range;
        type->element = typeOf(node, "sub_dtype_id");
    } else if (isOneOf(tag, {"structdtype", "uniondtype"})) {
        type->kind = tag == "structdtype" ? Kind::Struct : Kind::Union;
        for (const pugi::xml_node &member : node.children("memberdtype"))
            type->members.push_back(
                {m_names.keep(attribute(member, "name")), typeOf(member, "sub_dtype_id")});
    } else if (tag == "ifacerefdtype") {
        type->kind = Kind::Interface;
        type->modport = m_names.keep(attribute(node, "modportname"));
    }
}

void TypeTable::resolveAliases()
{
    for (DataType &type : m_types) {
        if (type.element >= 0)
            type.element = resolved(type.element);
        for (DataType::Member &member : type.members)
            member.type = resolved(member.type);
    }
    for (auto &index : m_indexes)
        index.second = resolved(index.second);
}

int TypeTable::resolved(int type) const
{
    for (int i = 0; i < DeepestType && at(type).kind == Kind::Alias; ++i)
        type = at(type).element;
    return at(type).kind == Kind::Alias ? 0 : type;
}

/// Sets width, depth and holdsUnpackedArray of the type and its nested types. A type that contains
/// itself, or that is nested too deeply, becomes opaque.
void TypeTable::measure(int index, std::vector<char> *state)
{
    enum State : char { New, Open, Done };
    std::vector<int> path{index};
    while (!path.empty()) {
        ReadGuard::check();
        const int current = path.back();
        DataType &type = itemAt(m_types, current);
        char &mark = itemAt(*state, current);
        const auto before = path.size();
        if (mark == New) {
            mark = Open;
            for (const int part : partsOf(type)) {
                if (itemAt(*state, part) == Open)
                    type = DataType();
                else if (itemAt(*state, part) == New)
                    path.push_back(part);
            }
        }
        if (path.size() != before)
            continue;
        if (mark == Open)
            measureByParts(&type);
        mark = Done;
        path.pop_back();
    }
}

void TypeTable::measureByParts(DataType *type) const
{
    qint64 sum = 0;
    qint64 widest = 1;
    for (const int part : partsOf(*type)) {
        sum += at(part).width;
        widest = std::max(widest, at(part).width);
        type->depth = std::max(type->depth, at(part).depth + 1);
        type->holdsUnpackedArray |= at(part).holdsUnpackedArray;
    }
    if (type->depth > DeepestType) {
        *type = DataType();
        return;
    }
    const qint64 elements = type->elements();
    if (type->kind == Kind::Vector)
        type->width = elements;
    else if (type->kind == Kind::PackedArray || type->kind == Kind::UnpackedArray)
        type->width = elements > WidestType / widest ? WidestType : elements * widest;
    else if (type->kind == Kind::Struct)
        type->width = std::max<qint64>(sum, 1);
    else if (type->kind == Kind::Union)
        type->width = widest;
    type->width = std::min(type->width, WidestType);
    type->holdsUnpackedArray |= type->kind == Kind::UnpackedArray;
}

} // namespace NETWEIR::Internal
