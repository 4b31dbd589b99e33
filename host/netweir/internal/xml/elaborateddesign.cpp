// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "elaborateddesign.h"

#include "attributes.h"

#include <netweir/internal/ground/readguard.h>

#include <QCoreApplication>

namespace NETWEIR::Internal {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("NETWEIR::NetlistReader", text);
}

/// The name by which instances refer to the definition. The XML has it decoded only, where two
/// different ones may look the same; the part behind the source name is never encoded.
std::string rawNameOf(const pugi::xml_node &node)
{
    const std::string_view encoded = attribute(node, "origName");
    const QByteArray decoded = decodedName(encoded).toUtf8();
    const std::string_view name = attribute(node, "name");
    std::string raw(encoded);
    if (name.size() > std::size_t(decoded.size()))
        raw += name.substr(std::size_t(decoded.size()));
    return raw;
}

/// Arguments of a routine in order, true for those that it writes.
std::vector<bool> argumentsOf(const pugi::xml_node &routine)
{
    std::vector<bool> arguments;
    bool isReturnValue = std::string_view(routine.name()) == "func";
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
        *error = tr("The elaborated design holds no netlist.");
        return false;
    }
    m_sources.setFiles(root.child("files"), folder);
    m_types.read(netlist.child("typetable"));
    for (const pugi::xml_node &node : netlist.children()) {
        ReadGuard::check();
        const std::string_view tag = node.name();
        if (tag == "package")
            addPackage(node);
        else if (tag == "module" || tag == "iface" || tag == "primitive")
            addDefinition(node, options);
    }
    if (!m_top) {
        *error = tr("The elaborated design holds no top module.");
        return false;
    }
    linkInstances();
    if (options.topIsWrapped) {
        if (m_top->instances.size() != 1 || !m_top->instances.front().definition) {
            *error = tr("The elaborated design holds no top module.");
            return false;
        }
        m_top = m_top->instances.front().definition;
    }
    return sortBottomUp(error);
}

bool ElaboratedDesign::isPackageVariable(std::string_view name) const
{
    return m_packageVariables.count(name) > 0;
}

std::vector<bool> ElaboratedDesign::writtenArguments(const Definition &definition,
                                                     const Occurrence &call) const
{
    const std::string_view name = attribute(call.node, "name");
    const Symbol symbol = definition.find(call.scope, name);
    if (symbol.kind == Symbol::Kind::Routine)
        return argumentsOf(definition.routines[std::size_t(symbol.index)]);

    // A routine of a package, an interface or another instance: only its name is known. Where
    // several have it, an argument counts as written when any writes it.
    std::vector<bool> written;
    const auto [first, last] = m_routines.equal_range(name);
    for (auto routine = first; routine != last; ++routine) {
        ReadGuard::check();
        const std::vector<bool> arguments = argumentsOf(routine->second);
        written.resize(std::max(written.size(), arguments.size()));
        for (std::size_t i = 0; i < arguments.size(); ++i)
            written[i] = written[i] || arguments[i];
    }
    return written;
}

void ElaboratedDesign::addDefinition(const pugi::xml_node &node, const ReadOptions &options)
{
    auto definition = std::make_unique<Definition>();
    definition->node = node;
    definition->rawName = rawNameOf(node);
    definition->sourceName = m_sources.nameOf(node);
    if (options.unknownModules.contains(definition->sourceName))
        definition->role = Definition::Role::Stub;
    else if (options.primitiveModules.contains(definition->sourceName) ||
             std::string_view(node.name()) == "primitive")
        definition->role = Definition::Role::Primitive;
    else if (std::string_view(node.name()) == "iface")
        definition->role = Definition::Role::Interface;

    DefinitionReader(definition.get(), m_types, &m_sources).read();
    const QSet<QString> tied = options.tiedNets.value(definition->sourceName);
    for (Variable &variable : definition->variables)
        variable.isTied = tied.contains(variable.name);
    definition->omittedWrites = options.omittedWrites.value(definition->sourceName);
    for (const pugi::xml_node &routine : definition->routines)
        m_routines.emplace(attribute(routine, "name"), routine);
    if (node.attribute("topModule").as_int() == 1 && !m_top)
        m_top = definition.get();
    m_byRawName.emplace(definition->rawName, definition.get());
    m_definitions.push_back(std::move(definition));
}

void ElaboratedDesign::addPackage(const pugi::xml_node &node)
{
    for (const pugi::xml_node &member : node.children()) {
        ReadGuard::check();
        const std::string_view tag = member.name();
        if (tag == "var")
            m_packageVariables.insert(attribute(member, "name"));
        else if (tag == "func" || tag == "task")
            m_routines.emplace(attribute(member, "name"), member);
    }
}

void ElaboratedDesign::linkInstances()
{
    for (const auto &definition : m_definitions) {
        for (InstanceItem &instance : definition->instances) {
            const auto found = m_byRawName.find(attribute(instance.node, "defName"));
            if (found != m_byRawName.end())
                instance.definition = found->second;
        }
    }
}

bool ElaboratedDesign::sortBottomUp(QString *error)
{
    enum State : char { New, Open, Done };
    struct Visit
    {
        Definition *definition;
        std::size_t next;
    };
    std::unordered_map<const Definition *, State> states;
    std::vector<Visit> path{{m_top, 0}};
    states[m_top] = Open;
    while (!path.empty()) {
        ReadGuard::check();
        Visit &visit = path.back();
        if (visit.next == visit.definition->instances.size()) {
            states[visit.definition] = Done;
            m_bottomUp.push_back(visit.definition);
            path.pop_back();
            continue;
        }
        Definition *used = visit.definition->instances[visit.next++].definition;
        if (!used || states[used] == Done)
            continue;
        if (states[used] == Open) {
            *error = tr("Module \"%1\" contains itself.").arg(used->sourceName);
            return false;
        }
        states[used] = Open;
        path.push_back({used, 0});
    }
    return true;
}

} // namespace NETWEIR::Internal
