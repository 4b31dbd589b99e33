// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "layout.h"

#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/xml/attributes.h>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

using Kind = DataType::Kind;

constexpr int LettersOfWork = 64;     ///< As many of a name count as one round.
constexpr qint64 LargestArray = 4096; ///< Bits of an unpacked array that is shown as buses.

bool isSelection(std::string_view tag)
{
    return tag == "sel" || tag == "arraysel" || tag == "structsel" || tag == "slicesel";
}

bool isReference(std::string_view tag)
{
    return tag == "varref" || tag == "varxref";
}

std::string extended(const std::string &path, std::string_view member)
{
    return path.empty() ? std::string(member) : path + '.' + std::string(member);
}

QString indexed(const QString &name, int index)
{
    return name + QLatin1Char('[') + QString::number(index) + QLatin1Char(']');
}

} // namespace

void forEachReference(const Occurrence &target, const std::function<void(const Reference &)> &visit)
{
    std::vector<pugi::xml_node> pending{target.node};
    Reference reference;
    while (!pending.empty()) {
        const pugi::xml_node expression = pending.back();
        pending.pop_back();

        reference.steps.clear();
        pugi::xml_node base = expression;
        while (isSelection(base.name())) {
            ReadGuard::check();
            reference.steps.push_back(base);
            base = base.first_child();
        }
        if (isReference(base.name())) {
            std::reverse(reference.steps.begin(), reference.steps.end());
            reference.node = base;
            reference.scope = target.scope;
            visit(reference);
            continue;
        }
        for (pugi::xml_node part = base.last_child(); part; part = part.previous_sibling()) {
            ReadGuard::check();
            pending.push_back(part);
        }
    }
}

void Layout::addMemory(Variable *variable, const Reference &selected) const
{
    std::string path;
    for (const pugi::xml_node &step : selected.steps) {
        if (std::string_view(step.name()) == "structsel")
            path = extended(path, attribute(step, "name"));
    }
    if (std::find(variable->memories.begin(), variable->memories.end(), path) ==
        variable->memories.end())
        variable->memories.push_back(path);
}

void Layout::placeVariables(Definition *definition) const
{
    for (Variable &variable : definition->variables) {
        if (!variable.isNet)
            continue;
        variable.bit = definition->bits;
        definition->bits += widthOf(variable);
        if (definition->bits > MostBits)
            return;
        definition->marks.resize(std::size_t(definition->bits));
        addLeafs(variable, variable.type, definition->prefixOf(variable.scope) + variable.name,
                 std::string(), variable.bit, definition);
    }
}

qint64 Layout::widthOf(const Variable &variable) const
{
    return storedWidth(variable, variable.type, std::string());
}

BitRange Layout::locate(const Variable &variable, const Reference &reference,
                        const IndexEvaluator &indexes) const
{
    const qint64 whole = widthOf(variable);
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
    range.low += variable.bit;
    range.high += variable.bit;
    range.end = variable.bit + whole;
    return range;
}

bool Layout::isMemory(const Variable &variable, int type, const std::string &path) const
{
    if (type < 0 || m_types.at(type).kind != Kind::UnpackedArray)
        return false;
    return m_types.at(type).width > LargestArray ||
           std::find(variable.memories.begin(), variable.memories.end(), path) !=
               variable.memories.end();
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
        const qint64 width = storedWidth(variable, member.type, extended(path, member.name));
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
        const std::string path = extended(part->path, member->name);
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
void Layout::addLeafs(const Variable &variable, int typeIndex, const QString &name,
                      const std::string &path, qint64 bit, Definition *definition) const
{
    ReadGuard::check(1 + name.size() / LettersOfWork);
    const DataType &type = m_types.at(typeIndex);
    if (type.kind == Kind::Vector)
        return addVector(name, type.ranged, type.left, type.right, bit, definition);
    if (type.kind == Kind::Union && !type.holdsUnpackedArray)
        return addVector(name, type.width > 1, int(type.width - 1), 0, bit, definition);
    if (type.kind == Kind::Struct || type.kind == Kind::Union) {
        qint64 below = storedWidth(variable, typeIndex, path);
        for (const DataType::Member &member : type.members) {
            const std::string memberPath = extended(path, member.name);
            below -= storedWidth(variable, member.type, memberPath);
            addLeafs(variable, member.type, name + QLatin1Char('.') + toQString(member.name),
                     memberPath, type.kind == Kind::Struct ? bit + below : bit, definition);
        }
        return;
    }
    const bool isArray = type.kind == Kind::PackedArray || type.kind == Kind::UnpackedArray;
    if (!isArray || isMemory(variable, typeIndex, path))
        return addExcluded(name, bit, definition);

    const DataType &element = m_types.at(type.element);
    if (type.kind == Kind::PackedArray && element.kind == Kind::Vector && !element.ranged)
        return addVector(name, true, type.left, type.right, bit, definition);
    const qint64 width = storedWidth(variable, type.element, path);
    const int step = type.left > type.right ? -1 : 1;
    for (qint64 i = 0, left = type.elements() - 1; left >= 0; ++i, --left) {
        addLeafs(variable, type.element, indexed(name, int(type.left + i * step)), path,
                 bit + left * width, definition);
    }
}

void Layout::addVector(const QString &name, bool ranged, int left, int right, qint64 bit,
                       Definition *definition) const
{
    Leaf leaf;
    leaf.name = name;
    leaf.isBus = ranged;
    leaf.left = left;
    leaf.right = right;
    leaf.bit = bit;
    definition->leafs.push_back(leaf);
}

void Layout::addExcluded(const QString &name, qint64 bit, Definition *definition) const
{
    addVector(name, false, 0, 0, bit, definition);
    definition->marks[std::size_t(bit)] = MarkBoth;
}

} // namespace NETWEIR::Internal
