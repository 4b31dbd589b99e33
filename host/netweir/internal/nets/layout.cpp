// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "layout.h"

#include "memories.h"

#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/xml/attributes.h>
#include <netweir/internal/xml/elaborateddesign.h>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

using Kind = DataType::Kind;

constexpr int LettersOfWork = 64;     ///< As many of a name count as one round.
constexpr qint64 LargestArray = 4096; ///< Bits of an unpacked array that is shown as buses.

QString indexed(const QString &name, int index)
{
    return name + QLatin1Char('[') + QString::number(index) + QLatin1Char(']');
}

} // namespace

PlacedDefinition Layout::place(const Definition &definition) const
{
    PlacedDefinition placed;
    placed.definition = &definition;
    placed.variables.reserve(definition.variables.size());
    for (const Variable &variable : definition.variables) {
        placed.variables.push_back({&variable, placed.bits, 0});
        if (!variable.isNet)
            continue;
        const qint64 width = storedWidth(variable, variable.type, std::string());
        placed.variables.back().width = width;
        placed.bits += width;
        if (placed.bits > MostBits)
            break;
        addNets(variable, variable.type, definition.prefixOf(variable.scope) + variable.name,
                std::string(), placed.variables.back().bit, &placed.nets);
    }
    return placed;
}

BitRange Layout::locate(const PlacedVariable &placed, const Reference &reference,
                        const IndexEvaluator &indexes) const
{
    const Variable &variable = *placed.variable;
    const qint64 whole = placed.width;
    Part part;
    part.type = variable.type;
    part.width = whole;
    part.isMemory = isMemory(variable, part.type, part.path);
    for (const pugi::xml_node &step : reference.steps) {
        if (part.isMemory)
            break;
        const std::string_view tag = step.name();
        const pugi::xml_node index = step.first_child().next_sibling();
        if (tag == "arraysel") {
            selectElement(variable, indexes.valuesOf(index, reference.scope), &part);
        } else if (tag == "structsel") {
            selectMember(variable, attribute(step, "name"), &part);
        } else if (tag == "sel") {
            part.start = part.start + indexes.valuesOf(index, reference.scope);
            part.width = constantValue(index.next_sibling()).value_or(part.width);
            part.type = -1;
        } else {
            selectSlice(variable, constantValue(index).value_or(-1),
                        constantValue(index.next_sibling()).value_or(0), &part);
        }
    }

    // Only what lies within the variable is ever written.
    BitRange range;
    range.low = part.start.low;
    range.high = std::min(part.start.high, whole - 1);
    range.step = std::max<qint64>(part.start.step, 1);
    range.width = part.width;
    if (range.low < 0 && part.start.isSingle()) {
        range.width += range.low;
        range.low = range.high = 0;
    } else if (range.low < 0) {
        range.low += (range.step - 1 - range.low) / range.step * range.step;
    }
    if (range.low > range.high || range.width <= 0)
        return {};
    range.low += placed.bit;
    range.high += placed.bit;
    range.end = placed.bit + whole;
    return range;
}

bool Layout::isMemory(const Variable &variable, int type, const std::string &path) const
{
    if (type < 0 || m_types.at(type).kind != Kind::UnpackedArray)
        return false;
    return m_types.at(type).width > LargestArray || m_memories.contains(variable, path);
}

qint64 Layout::storedWidth(const Variable &variable, int typeIndex, const std::string &path) const
{
    ReadGuard::check();
    const DataType &type = m_types.at(typeIndex);
    if (!type.holdsUnpackedArray)
        return type.width;
    if (isMemory(variable, typeIndex, path))
        return 1;
    if (type.kind == Kind::UnpackedArray)
        return type.elements() * storedWidth(variable, type.element, path);
    qint64 sum = 0;
    qint64 widest = 1;
    for (const DataType::Member &member : type.members) {
        const qint64 width = storedWidth(variable, member.type, memberPath(path, member.name));
        sum += width;
        widest = std::max(widest, width);
    }
    return type.kind == Kind::Struct ? std::max<qint64>(sum, 1) : widest;
}

/// The elaborator counts elements from the lowest index on.
void Layout::selectElement(const Variable &variable, const IndexRange &index, Part *part) const
{
    if (part->type < 0 || m_types.at(part->type).kind != Kind::UnpackedArray)
        return;
    const DataType &array = m_types.at(part->type);
    const qint64 count = array.elements();
    part->type = array.element;
    part->width = storedWidth(variable, array.element, part->path);
    if (!index.isSingle()) {
        part->start = part->start + IndexRange{0, (count - 1) * part->width, part->width};
    } else if (index.low < 0 || index.low >= count) {
        part->width = 0;
    } else {
        const qint64 place = array.left > array.right ? index.low : count - 1 - index.low;
        part->start = part->start + IndexRange{place * part->width, place * part->width, 0};
    }
    part->isMemory = isMemory(variable, part->type, part->path);
}

/// @p count elements of an array, the lowest index being @p lowest.
void Layout::selectSlice(const Variable &variable, qint64 lowest, qint64 count, Part *part) const
{
    if (part->type < 0 || m_types.at(part->type).kind != Kind::UnpackedArray)
        return;
    const DataType &array = m_types.at(part->type);
    const qint64 width = storedWidth(variable, array.element, part->path);
    if (lowest < 0 || count < 1 || count > array.elements() - lowest) {
        part->width = 0;
        return;
    }
    const qint64 place =
        (array.left > array.right ? lowest : array.elements() - lowest - count) * width;
    part->start = part->start + IndexRange{place, place, 0};
    part->width = count * width;
    part->type = -1;
}

void Layout::selectMember(const Variable &variable, std::string_view name, Part *part) const
{
    if (part->type < 0)
        return;
    const DataType &type = m_types.at(part->type);
    qint64 below = 0;
    for (auto member = type.members.rbegin(); member != type.members.rend(); ++member) {
        const std::string path = memberPath(part->path, member->name);
        const qint64 width = storedWidth(variable, member->type, path);
        if (member->name == name) {
            if (type.kind == Kind::Struct)
                part->start = part->start + IndexRange{below, below, 0};
            part->width = width;
            part->type = member->type;
            part->path = path;
            part->isMemory = isMemory(variable, part->type, part->path);
            return;
        }
        below += width;
    }
}

/// Lists @p name as it is declared: one entry a single net, vector or innermost dimension.
void Layout::addNets(const Variable &variable, int typeIndex, const QString &name,
                     const std::string &path, qint64 bit, std::vector<PlacedNet> *nets) const
{
    ReadGuard::check(1 + name.size() / LettersOfWork);
    const DataType &type = m_types.at(typeIndex);
    const auto add = [&](bool isBus, int left, int right) {
        nets->push_back({name, isBus, false, left, right, bit});
    };
    if (type.kind == Kind::Vector)
        return add(type.ranged, type.left, type.right);
    if (type.kind == Kind::Union && !type.holdsUnpackedArray)
        return add(type.width > 1, int(type.width - 1), 0);
    if (type.kind == Kind::Struct || type.kind == Kind::Union) {
        qint64 below = storedWidth(variable, typeIndex, path);
        for (const DataType::Member &member : type.members) {
            const std::string inner = memberPath(path, member.name);
            below -= storedWidth(variable, member.type, inner);
            addNets(variable, member.type, name + QLatin1Char('.') + toQString(member.name), inner,
                    type.kind == Kind::Struct ? bit + below : bit, nets);
        }
        return;
    }
    const bool isArray = type.kind == Kind::PackedArray || type.kind == Kind::UnpackedArray;
    if (!isArray || isMemory(variable, typeIndex, path)) {
        nets->push_back({name, false, true, 0, 0, bit});
        return;
    }
    const DataType &element = m_types.at(type.element);
    if (type.kind == Kind::PackedArray && element.kind == Kind::Vector && !element.ranged)
        return add(true, type.left, type.right);
    const qint64 width = storedWidth(variable, type.element, path);
    const int step = type.left > type.right ? -1 : 1;
    for (qint64 i = 0, left = type.elements() - 1; left >= 0; ++i, --left) {
        addNets(variable, type.element, indexed(name, int(type.left + i * step)), path,
                bit + left * width, nets);
    }
}

std::vector<PlacedDefinition> placeDefinitions(const ElaboratedDesign &design, const Layout &layout)
{
    auto placed = design.listByDefinition<PlacedDefinition>();
    for (const Definition *definition : design.bottomUp()) {
        PlacedDefinition &result = itemAt(placed, definition->number);
        result = layout.place(*definition);
        if (result.bits > MostBits)
            return {};
    }
    return placed;
}

} // namespace NETWEIR::Internal
