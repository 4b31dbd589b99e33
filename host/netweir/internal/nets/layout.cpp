// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "layout.h"

#include "memories.h"

#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/xml/attributes.h>

#include <QStringBuilder> // Names of the exact size.

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

using Kind = DataType::Kind;

constexpr int LettersOfWork = 64;     ///< As many of a name count as one round.
constexpr qint64 LargestArray = 4096; ///< Bits of an unpacked array that is shown as buses.

bool isSingleNet(const DataType &type)
{
    return type.kind == Kind::Vector && !type.ranged;
}

QString indexed(const QString &name, int index)
{
    return name % QLatin1Char('[') % QString::number(index) % QLatin1Char(']');
}

} // namespace

PlacedDefinition Layout::place(const Definition &definition) const
{
    PlacedDefinition placed;
    placed.definition = &definition;
    placed.variables.reserve(definition.variables.size());
    placed.nets.reserve(definition.variables.size()); // Most variables are one net or bus.
    for (const Variable &variable : definition.variables) {
        placed.variables.push_back({&variable, int(placed.bits), 0});
        if (!variable.isNet)
            continue;
        const qint64 width = storedWidth(variable, variable.type, std::string());
        placed.bits += width;
        if (placed.bits > MostBits)
            break;
        placed.variables.back().width = int(width);
        const QString prefix = definition.prefixOf(variable.scope);
        const QString name = prefix.isEmpty() ? variable.name : QString(prefix % variable.name);
        addNets(variable,
                {variable.type,
                 name,
                 {},
                 placed.variables.back().bit,
                 identifiersOf(definition, variable)},
                &placed);
    }
    placed.nets.shrink_to_fit();
    return placed;
}

BitRange Layout::locate(const PlacedVariable &placed, const Reference &reference,
                        const IndexEvaluator &indexes) const
{
    Part part = wholeOf(placed);
    for (const pugi::xml_node &step : reference.steps) {
        if (part.isMemory || part.width <= 0)
            break;
        select(*placed.variable, selectionOf(step, reference.scope, indexes), &part);
    }
    return bitsOf(placed, part);
}

BitRange Layout::locate(const PlacedVariable &placed,
                        const std::vector<Selection> &selections) const
{
    Part part = wholeOf(placed);
    for (const Selection &selection : selections) {
        if (part.isMemory || part.width <= 0)
            break;
        select(*placed.variable, selection, &part);
    }
    return bitsOf(placed, part);
}

Layout::Part Layout::wholeOf(const PlacedVariable &placed) const
{
    Part part;
    part.type = placed.variable->type;
    part.width = placed.width;
    part.isMemory = isMemory(*placed.variable, part.type, part.path);
    return part;
}

void Layout::select(const Variable &variable, const Selection &selection, Part *part) const
{
    switch (selection.kind) {
    case Selection::Kind::Element:
        return selectElement(variable, selection.index, part);
    case Selection::Kind::Slice:
        return selectSlice(variable, selection.index.low, selection.count.value_or(0), part);
    case Selection::Kind::Member:
        return selectMember(variable, selection.member, part);
    case Selection::Kind::Bits:
        part->start = part->start + selection.index;
        part->width = selection.count.value_or(part->width);
        part->type = -1;
        break;
    }
}

/// Only what lies within the variable is ever written.
BitRange Layout::bitsOf(const PlacedVariable &placed, const Part &part)
{
    BitRange range;
    range.low = part.start.low;
    range.high = std::min<qint64>(part.start.high, placed.width - 1);
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
    range.end = placed.bit + placed.width;
    return range;
}

/// The unpacked array that @p part is; null for other parts.
const DataType *Layout::arrayOf(const Part &part) const
{
    const DataType *type = part.type < 0 ? nullptr : &m_types.at(part.type);
    return type && type->kind == Kind::UnpackedArray ? type : nullptr;
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
    qint64 widest = 0;
    for (const DataType::Member &member : type.members) {
        const qint64 width = storedWidth(variable, member.type, memberPath(path, member.name));
        sum += width;
        widest = std::max(widest, width);
    }
    return type.kind == Kind::Struct ? sum : widest;
}

/// The elaborator counts elements from the lowest index on.
void Layout::selectElement(const Variable &variable, const IndexRange &index, Part *part) const
{
    const DataType *array = arrayOf(*part);
    if (!array)
        return;
    const qint64 count = array->elements();
    part->type = array->element;
    part->width = storedWidth(variable, array->element, part->path);
    if (!index.isSingle()) {
        part->start = part->start + IndexRange{0, (count - 1) * part->width, part->width};
    } else if (index.low < 0 || index.low >= count) {
        part->width = 0;
    } else {
        const qint64 below = array->left > array->right ? index.low : count - 1 - index.low;
        part->start = part->start + IndexRange::single(below * part->width);
    }
    part->isMemory = isMemory(variable, part->type, part->path);
}

/// @p count elements of an array, the lowest index being @p lowest.
void Layout::selectSlice(const Variable &variable, qint64 lowest, qint64 count, Part *part) const
{
    const DataType *array = arrayOf(*part);
    if (!array)
        return;
    part->type = -1;
    if (lowest < 0 || count < 1 || count > array->elements() - lowest) {
        part->width = 0;
        return;
    }
    const qint64 width = storedWidth(variable, array->element, part->path);
    const qint64 below = array->left > array->right ? lowest : array->elements() - lowest - count;
    part->start = part->start + IndexRange::single(below * width);
    part->width = count * width;
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
                part->start = part->start + IndexRange::single(below);
            part->width = width;
            part->type = member->type;
            part->path = path;
            part->isMemory = isMemory(variable, part->type, part->path);
            return;
        }
        below += width;
    }
}

std::vector<int> Layout::identifiersOf(const Definition &definition, const Variable &variable)
{
    if (!hidesSteps(variable.name) && !definition.isEscaped(variable.scope))
        return {};
    std::vector<int> lengths = definition.identifiersOf(variable.scope);
    lengths.push_back(variable.name.size());
    return lengths;
}

/// Lists a part as it is declared: one entry a single net, vector or innermost dimension.
void Layout::addNets(const Variable &variable, const NamedPart &part,
                     PlacedDefinition *placed) const
{
    ReadGuard::check(1 + part.name.size() / LettersOfWork);
    const DataType &type = m_types.at(part.type);
    const int identifiers = placed->numberOf(part.identifiers);
    const auto add = [&](bool isBus, int left, int right) {
        placed->nets.push_back(
            {part.name, isBus, false, variable.processWrites, left, right, identifiers, part.bit});
    };
    switch (type.kind) {
    case Kind::Vector:
        return add(type.ranged, type.left, type.right);
    case Kind::PackedArray:
        return isSingleNet(m_types.at(type.element)) ? add(true, type.left, type.right)
                                                     : addElements(variable, part, placed);
    case Kind::Struct:
        return addMembers(variable, part, placed);
    case Kind::Union:
        return type.holdsUnpackedArray ? addMembers(variable, part, placed)
                                       : add(type.width > 1, int(type.width - 1), 0);
    case Kind::UnpackedArray:
        if (!isMemory(variable, part.type, part.path))
            return addElements(variable, part, placed);
        break;
    default:
        break;
    }
    placed->nets.push_back(
        {part.name, false, true, variable.processWrites, 0, 0, identifiers, part.bit});
}

void Layout::addMembers(const Variable &variable, const NamedPart &part,
                        PlacedDefinition *placed) const
{
    const DataType &type = m_types.at(part.type);
    qint64 below = storedWidth(variable, part.type, part.path);
    for (const DataType::Member &member : type.members) {
        const std::string path = memberPath(part.path, member.name);
        below -= storedWidth(variable, member.type, path);
        const qint64 bit = type.kind == Kind::Struct ? part.bit + below : part.bit;
        const QString name = part.name % QLatin1Char('.') % toQString(member.name);
        std::vector<int> identifiers = part.identifiers;
        if (identifiers.empty() && hidesSteps(toQString(member.name)))
            identifiers = plainIdentifiers(part.name);
        if (!identifiers.empty())
            identifiers.push_back(name.size() - part.name.size() - 1);
        addNets(variable, {member.type, name, path, bit, identifiers}, placed);
    }
}

void Layout::addElements(const Variable &variable, const NamedPart &part,
                         PlacedDefinition *placed) const
{
    const DataType &type = m_types.at(part.type);
    const qint64 width = storedWidth(variable, type.element, part.path);
    const int step = type.left > type.right ? -1 : 1;
    qint64 bit = part.bit + type.elements() * width;
    for (qint64 i = 0; i < type.elements(); ++i) {
        bit -= width;
        const QString name = indexed(part.name, int(type.left + i * step));
        addNets(variable, {type.element, name, part.path, bit, part.identifiers}, placed);
    }
}

} // namespace NETWEIR::Internal
