// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "elaborateddesign.h"

#include "attributes.h"
#include "connectedwidth.h"
#include "definitionreader.h"
#include "parametervalue.h"

#include <netweir/internal/ground/messages.h>
#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/parts/unitnames.h>

#include <algorithm>
#include <functional>

namespace NETWEIR::Internal {

namespace {

/// The arguments of a routine in order: true if the routine writes it.
std::vector<bool> argumentsOf(const pugi::xml_node &routine)
{
    std::vector<bool> arguments;
    bool isReturnValue = is(routine, "func");
    for (const pugi::xml_node &variable : routine.children("var")) {
        ReadGuard::check();
        const std::string_view direction = attribute(variable, "dir");
        if (!direction.empty() && !isReturnValue)
            arguments.push_back(direction != "input");
        isReturnValue = false;
    }
    return arguments;
}

} // namespace

bool ElaboratedDesign::read(const pugi::xml_document &document, const ReadOptions &options,
                            const QString &folder, QString *error)
{
    const pugi::xml_node root = document.child("verilator_xml");
    const pugi::xml_node netlist = root.child("netlist");
    if (!netlist || !netlist.child("typetable")) {
        *error = Text::tr("The elaborated design contains no netlist.");
        return false;
    }
    m_sources.setFiles(root.child("files"), folder);
    m_placeMap = options.placeMap;
    m_types.read(netlist.child("typetable"));
    for (const pugi::xml_node &node : netlist.children()) {
        ReadGuard::check();
        if (is(node, "package"))
            addPackage(node);
        else if (is(node, "module") || is(node, "iface") || is(node, "primitive"))
            addDefinition(node, options);
    }
    readDefinitions(options);
    if (!findRoots(options.rootsAreWrapped)) {
        *error = Text::tr("The elaborated design contains no top module.");
        return false;
    }
    std::vector<State> states(m_definitions.size(), New);
    return std::all_of(m_roots.begin(), m_roots.end(),
                       [&](const Definition *top) { return sortBottomUp(top, &states, error); });
}

/// A name that both a package and the module have means that of the package only after "::".
bool ElaboratedDesign::isToPackage(const Reference &reference) const
{
    return m_packageVariables.count(reference.name()) > 0 &&
           m_sources.textBefore(attribute(reference.node, "loc"), 1).trimmed().endsWith("::");
}

qint64 ElaboratedDesign::connectedWidth(const pugi::xml_node &expression) const
{
    return Internal::connectedWidth(expression, m_types, m_sources);
}

QMap<QString, GenericValue> ElaboratedDesign::setParametersOf(const Definition &definition) const
{
    QMap<QString, GenericValue> result;
    const NamesAcross names(definition.foreignUnit->generics);
    for (const Variable &variable : definition.variables) {
        const int generic = variable.node.attribute("param") ? names.find(variable.name) : -1;
        if (generic < 0)
            continue;
        if (const auto value = parameterValue(variable.node, m_types, m_sources))
            result.insert(definition.foreignUnit->generics.at(generic), *value);
    }
    return result;
}

Place ElaboratedDesign::placeOf(const pugi::xml_node &node) const
{
    const Place place = m_sources.placeOf(attribute(node, "loc"));
    return m_placeMap ? m_placeMap(place) : place;
}

std::vector<bool> ElaboratedDesign::writtenArguments(const Definition &definition,
                                                     const Occurrence &call) const
{
    const std::string_view name = attribute(call.node, "name");
    const Symbol symbol = definition.find(call.scope, name);
    if (symbol.kind == Symbol::Kind::Routine)
        return argumentsOf(itemAt(definition.routines, symbol.index));

    // Of a routine in a package, an interface or another instance only the name is known. If
    // several routines have the name, an argument counts as written when any of them writes it.
    std::vector<bool> written;
    const auto [first, last] = m_routines.equal_range(name);
    for (auto routine = first; routine != last; ++routine) {
        ReadGuard::check();
        const std::vector<bool> arguments = argumentsOf(routine->second);
        written.resize(std::max(written.size(), arguments.size()));
        std::transform(arguments.begin(), arguments.end(), written.begin(), written.begin(),
                       std::logical_or<>());
    }
    return written;
}

void ElaboratedDesign::addDefinition(const pugi::xml_node &node, const ReadOptions &options)
{
    m_definitions.push_back(std::make_unique<Definition>(
        DefinitionReader::readHeading(node, countOf(m_definitions), options, m_sources)));
}

void ElaboratedDesign::addPackage(const pugi::xml_node &node)
{
    for (const pugi::xml_node &member : node.children()) {
        ReadGuard::check();
        if (is(member, "var"))
            m_packageVariables.insert(attribute(member, "name"));
        else if (is(member, "func") || is(member, "task"))
            m_routines.emplace(attribute(member, "name"), member);
    }
}

void ElaboratedDesign::readDefinitions(const ReadOptions &options)
{
    DefinitionNames names;
    for (const auto &definition : m_definitions)
        names.emplace(definition->rawName, definition.get());
    for (const auto &definition : m_definitions) {
        DefinitionReader(m_types, m_sources, names, definition.get()).read(options);
        for (const pugi::xml_node &routine : definition->routines)
            m_routines.emplace(attribute(routine, "name"), routine);
    }
}

/// False when there is none.
bool ElaboratedDesign::findRoots(bool areWrapped)
{
    const auto isTop = [](const auto &definition) {
        return definition->node.attribute("topModule").as_int() == 1;
    };
    const auto top = std::find_if(m_definitions.begin(), m_definitions.end(), isTop);
    if (top == m_definitions.end())
        return false;
    if (!areWrapped) {
        m_roots.push_back(top->get());
        return true;
    }
    for (const InstanceItem &instance : (*top)->instances)
        m_roots.push_back(instance.definition);
    return !m_roots.empty() && std::find(m_roots.begin(), m_roots.end(), nullptr) == m_roots.end();
}

/// Adds @p root and all definitions below it that are new. False when one instantiates itself.
bool ElaboratedDesign::sortBottomUp(const Definition *root, std::vector<State> *states,
                                    QString *error)
{
    struct Visit
    {
        const Definition *definition;
        std::vector<InstanceItem>::const_iterator next;
    };
    std::vector<Visit> path;
    const auto enter = [&](const Definition *definition) {
        itemAt(*states, definition->number) = Open;
        path.push_back({definition, definition->instances.begin()});
    };
    if (itemAt(*states, root->number) == New)
        enter(root);
    while (!path.empty()) {
        ReadGuard::check();
        Visit &visit = path.back();
        if (visit.next == visit.definition->instances.end()) {
            itemAt(*states, visit.definition->number) = Done;
            m_bottomUp.push_back(visit.definition);
            path.pop_back();
            continue;
        }
        const Definition *used = visit.next++->definition;
        const State state = used ? itemAt(*states, used->number) : Done;
        if (state == Open) {
            *error = Text::tr("Module \"%1\" contains itself.").arg(used->sourceName);
            return false;
        }
        if (state == New)
            enter(used);
    }
    return true;
}

} // namespace NETWEIR::Internal
