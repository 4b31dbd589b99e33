// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "verilogpart.h"

#include "definitionmarker.h"
#include "instancemarker.h"
#include "layout.h"
#include "netliststamp.h"
#include "pathresolver.h"

#include <netweir/internal/ground/messages.h>
#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/xml/xmlfile.h>

#include <QFileInfo>
#include <QHash>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

PortDirection portDirection(Direction direction)
{
    switch (direction) {
    case Direction::Input:
        return PortDirection::Input;
    case Direction::Output:
        return PortDirection::Output;
    case Direction::Inout:
    case Direction::Ref:
        return PortDirection::Inout;
    case Direction::None:
        break;
    }
    return PortDirection::Unknown;
}

/// Equal for roots that are the same.
QString keyOf(const PartRoot &root)
{
    const QChar end(0);
    QString key = root.unit + end;
    for (auto generic = root.generics.begin(); generic != root.generics.end(); ++generic)
        key += generic.key() + end + QString::number(generic->kind) + generic->text + end;
    key += end;
    for (const PartPort &port : root.ports)
        key += port.name + end + QString::number(port.width) + end;
    return key;
}

} // namespace

/// The instances below a root with the marks of all their nets. Refers to the part and the root.
struct VerilogPart::MarkedInstances
{
    MarkedInstances(const VerilogPart &part, const Root &root, const DrivenPorts &driven)
        : paths(part.m_design.types(), root.tree, root.bindings)
        , layout(part.m_design.types(), part.m_memories)
        , marker({part.m_design, root.tree, root.bindings, paths, layout, part.m_marked}, &marks)
    {
        marks.fill(root.tree, part.m_marked);
        if (root.isTop)
            marker.mark();
        else
            marker.mark(driven);
    }

    const PathResolver paths;
    const Layout layout;
    InstanceMarks marks;
    InstanceMarker marker;
};

VerilogPart::VerilogPart() = default;
VerilogPart::~VerilogPart() = default;

std::unique_ptr<VerilogPart> VerilogPart::read(const QString &xmlPath,
                                               const std::vector<PartRoot> &roots,
                                               const ReadOptions &options, QString *error)
{
    XmlFile file;
    if (!file.open(xmlPath, ReadGuard::currentMemoryLimit(), error))
        return nullptr;
    const QString folder = QFileInfo(xmlPath).absolutePath();
    std::unique_ptr<VerilogPart> part(new VerilogPart);
    if (part->read(&file, folder, roots, options, error))
        return part;
    // Only the whole file tells where an error is, or that there is none.
    if (file.isSound() || !file.loadWhole(error))
        return nullptr;
    part.reset(new VerilogPart);
    return part->read(&file, folder, roots, options, error) ? std::move(part) : nullptr;
}

bool VerilogPart::read(XmlFile *file, const QString &folder, const std::vector<PartRoot> &roots,
                       const ReadOptions &options, QString *error)
{
    const auto visit = [this](const Definition &definition, const auto &eachRun) {
        return markIfPossible(definition, eachRun);
    };
    if (!m_design.read(file, options, folder, visit, error))
        return false;
    if (m_design.roots().size() != roots.size()) {
        *error = Text::tr("The elaborated design is not complete.");
        return false;
    }
    if (readRoots(roots) && markRest(file) && fits()) {
        findForeignRoots();
        m_design.forgetTexts();
        return true;
    }
    *error = Text::tr("The design is too large to be read.");
    return false;
}

/// Places and marks @p definition while its elements are in memory, unless it instantiates
/// something that is not marked. False when they are not the same any more.
bool VerilogPart::markIfPossible(const Definition &definition,
                                 const ElaboratedDesign::EachRun &eachRun)
{
    if (m_placed.empty()) {
        m_placed = m_design.listByDefinition<PlacedDefinition>();
        m_marked = m_design.listByDefinition<MarkedDefinition>();
    }
    if (!eachRun(ElaboratedDesign::Use::ComputedIndexes, [&] { m_memories.addOf(definition); }))
        return false;
    const bool isPossible = std::all_of(definition.instances.begin(), definition.instances.end(),
                                        [this](const InstanceItem &item) {
                                            return !item.definition || isMarked(*item.definition);
                                        });
    return !isPossible || !place(definition) || mark(definition, eachRun);
}

/// False when @p definition has too many bits.
bool VerilogPart::place(const Definition &definition)
{
    PlacedDefinition &placed = itemAt(m_placed, definition.number);
    placed = Layout(m_design.types(), m_memories).place(definition);
    return placed.bits <= MostBits;
}

/// False when the elements are not the same any more.
bool VerilogPart::mark(const Definition &definition, const ElaboratedDesign::EachRun &eachRun)
{
    const Layout layout(m_design.types(), m_memories);
    const PlacedDefinition &placed = itemAt(m_placed, definition.number);
    DefinitionMarker marker(m_design, layout, m_marked, placed);
    if (!eachRun(ElaboratedDesign::Use::All, [&] { marker.markElements(); }))
        return false;
    itemAt(m_marked, definition.number) = marker.take();
    return true;
}

bool VerilogPart::isMarked(const Definition &definition) const
{
    return itemAt(m_marked, definition.number).placed != nullptr;
}

/// False when a root has too many instances.
bool VerilogPart::readRoots(const std::vector<PartRoot> &roots)
{
    for (int i = 0; i < countOf(roots); ++i) {
        Root root;
        root.isTop = itemAt(roots, i).isTop;
        if (!root.tree.build(*itemAt(m_design.roots(), i)))
            return false;
        root.bindings = bindInterfaces(m_design, root.tree);
        const PathResolver paths(m_design.types(), root.tree, root.bindings);
        if (m_memories.addElsewhere(root.tree, paths))
            m_hasAllMemories = false;
        m_roots.push_back(std::move(root));
    }
    return true;
}

/// Places and marks the definitions that could not be marked when they were read. If memories or
/// routines became known later, these are all. False when there are too many bits, or when the file
/// is not as it was.
bool VerilogPart::markRest(XmlFile *file)
{
    const bool isOutdated = !m_hasAllMemories || m_design.isOutdated();
    if (isOutdated)
        m_marked = m_design.listByDefinition<MarkedDefinition>();
    const auto visit = [this](const Definition &definition, const auto &eachRun) {
        return mark(definition, eachRun);
    };
    const std::vector<const Definition *> &definitions = m_design.bottomUp();
    return std::all_of(definitions.begin(), definitions.end(), [&](const Definition *definition) {
        return isMarked(*definition) ||
               (place(*definition) && m_design.readAgain(file, *definition, visit));
    });
}

/// False when the instances have too many bits.
bool VerilogPart::fits() const
{
    return std::all_of(m_roots.begin(), m_roots.end(), [this](const Root &root) {
        return InstanceMarks::fits(root.tree, m_marked);
    });
}

void VerilogPart::findForeignRoots()
{
    QHash<QString, int> known;
    m_borderRoots = m_design.listByDefinition<std::vector<int>>();
    for (const Definition *definition : m_design.bottomUp()) {
        for (const Border &border : itemAt(m_marked, definition->number).borders) {
            ReadGuard::check();
            PartRoot root = foreignRootAt(*definition, border);
            const QString key = keyOf(root);
            if (!known.contains(key)) {
                known.insert(key, countOf(m_foreignRoots));
                m_foreignRoots.push_back(std::move(root));
            }
            itemAt(m_borderRoots, definition->number).push_back(known.value(key));
        }
    }
}

PartRoot VerilogPart::foreignRootAt(const Definition &definition, const Border &border) const
{
    const InstanceItem &item = itemAt(definition.instances, border.item);
    PartRoot root;
    root.unit = item.definition->sourceName;
    root.generics = item.definition->setGenerics;
    root.place = border.place;
    for (const BorderPin &pin : border.pins) {
        // The elements of an array may share a connection of any width that is a multiple of
        // theirs.
        const bool isClear = item.count() == 1 || pin.width % item.count() != 0;
        root.ports.push_back({itemAt(item.definition->foreignUnit->ports, pin.port).name,
                              PortDirection::Unknown, isClear ? pin.width : 0});
    }
    return root;
}

QString VerilogPart::unitName(int root) const
{
    return definitionOf(root).sourceName;
}

std::vector<PartPort> VerilogPart::ports(int root) const
{
    const Definition &definition = definitionOf(root);
    const PlacedDefinition &placed = itemAt(m_placed, definition.number);
    std::vector<PartPort> result;
    for (const int port : definition.ports) {
        if (port < 0)
            continue;
        const Variable &variable = itemAt(definition.variables, port);
        result.push_back({variable.name, portDirection(variable.direction),
                          itemAt(placed.variables, port).width});
    }
    return result;
}

void VerilogPart::build(int root, const DrivenPorts &driven, Hierachy *node,
                        NetlistBuilder *builder, const BorderHandler &border) const
{
    const Root &instances = itemAt(m_roots, root);
    const MarkedInstances marked(*this, instances, driven);
    stampNetlist(instances.tree, m_placed, marked.marks, node, builder,
                 [&](int instance, Hierachy *parent) {
                     BorderInstance found = borderAt(instances.tree, instance, marked.marker);
                     found.parent = parent;
                     border(found);
                 });
}

void VerilogPart::buildLast(int root, const DrivenPorts &driven, Hierachy *node,
                            NetlistBuilder *builder, const BorderHandler &border)
{
    if (!m_foreignRoots.empty()) // Their pins are evaluated on the way.
        return build(root, driven, node, builder, border);
    const Root &instances = itemAt(m_roots, root);
    const InstanceMarks marks = std::move(MarkedInstances(*this, instances, driven).marks);
    forgetAllButNames();
    stampNetlist(instances.tree, m_placed, marks, node, builder);
}

/// Keeps the instances and the names of the nets, which a netlist is made of.
void VerilogPart::forgetAllButNames()
{
    m_marked = std::vector<MarkedDefinition>();
    m_memories = Memories();
    for (PlacedDefinition &placed : m_placed)
        placed.variables = std::vector<PlacedVariable>();
    m_design.forgetDeclarations();
}

BorderInstance VerilogPart::borderAt(const InstanceTree &tree, int instance,
                                     const InstanceMarker &marker) const
{
    const Instance &node = tree.at(instance);
    const int parent = tree.definitionOf(node.parent).number;
    const std::vector<Border> &borders = itemAt(m_marked, parent).borders;
    const auto border =
        std::lower_bound(borders.begin(), borders.end(), node.item,
                         [](const Border &candidate, int item) { return candidate.item < item; });
    BorderInstance result;
    result.root = itemAt(itemAt(m_borderRoots, parent), border - borders.begin());
    result.name = tree.nameOf(instance);
    result.identifiers = tree.identifiersOf(instance);
    result.position = node.position;
    result.count = tree.itemOf(instance).count();
    for (const BorderPin &pin : border->pins) {
        const QString &port = itemAt(node.definition->foreignUnit->ports, pin.port).name;
        if (pin.isInput)
            result.driven.insert(port, marker.drivenBits(node.parent, pin));
    }
    return result;
}

bool VerilogPart::usesJtagPrimitive() const
{
    for (const Definition *definition : m_design.bottomUp()) {
        for (const InstanceItem &instance : definition->instances) {
            if (instance.definition &&
                instance.definition->sourceName == QLatin1String(JtagPrimitive))
                return true;
        }
    }
    return false;
}

const Definition &VerilogPart::definitionOf(int root) const
{
    return itemAt(m_roots, root).tree.definitionOf(0);
}

} // namespace NETWEIR::Internal
