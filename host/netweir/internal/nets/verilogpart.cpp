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

#include <QFileInfo>

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

} // namespace

VerilogPart::VerilogPart() = default;
VerilogPart::~VerilogPart() = default;

std::unique_ptr<VerilogPart> VerilogPart::read(const QString &xmlPath,
                                               const std::vector<PartRoot> &roots,
                                               const ReadOptions &options, QString *error)
{
    std::unique_ptr<VerilogPart> part(new VerilogPart);
    if (!part->m_file.read(xmlPath, ReadGuard::currentMemoryLimit(), error))
        return nullptr;
    const QString folder = QFileInfo(xmlPath).absolutePath();
    if (!part->m_design.read(part->m_file.document(), options, folder, error))
        return nullptr;
    if (part->m_design.roots().size() != roots.size()) {
        *error = Text::tr("The elaborated design is not complete.");
        return nullptr;
    }
    if (part->readRoots(roots) && part->placeAndMark())
        return part;
    *error = Text::tr("The design is too large to be read.");
    return nullptr;
}

/// False when a root has too many instances.
bool VerilogPart::readRoots(const std::vector<PartRoot> &roots)
{
    m_memories = findMemories(m_design);
    for (int i = 0; i < countOf(roots); ++i) {
        Root root;
        root.isTop = itemAt(roots, i).isTop;
        if (!root.tree.build(*itemAt(m_design.roots(), i)))
            return false;
        root.bindings = bindInterfaces(m_design, root.tree);
        const PathResolver paths(m_design.types(), root.tree, root.bindings);
        addMemoriesElsewhere(root.tree, paths, &m_memories);
        m_roots.push_back(std::move(root));
    }
    return true;
}

/// False when there are too many bits.
bool VerilogPart::placeAndMark()
{
    const Layout layout(m_design.types(), m_memories);
    m_placed = placeDefinitions(m_design, layout);
    if (m_placed.empty())
        return false;
    m_marked = markDefinitions(m_design, layout, m_placed);
    return std::all_of(m_roots.begin(), m_roots.end(), [this](const Root &root) {
        return InstanceMarks::fits(root.tree, m_marked);
    });
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
                        NetlistBuilder *builder, const BorderHandler & /*border*/) const
{
    const Root &instances = itemAt(m_roots, root);
    const PathResolver paths(m_design.types(), instances.tree, instances.bindings);
    const Layout layout(m_design.types(), m_memories);
    InstanceMarks marks;
    marks.fill(instances.tree, m_marked);
    InstanceMarker marker({m_design, instances.tree, instances.bindings, paths, layout, m_marked},
                          &marks);
    if (instances.isTop)
        marker.mark();
    else
        marker.mark(driven);
    stampNetlist(instances.tree, m_placed, marks, node, builder);
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
