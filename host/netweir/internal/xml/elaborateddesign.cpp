// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "elaborateddesign.h"

#include "attributes.h"
#include "connectedwidth.h"
#include "definitionreader.h"
#include "parametervalue.h"
#include "xmlfile.h"

#include <netweir/internal/ground/messages.h>
#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/parts/unitnames.h>

#include <algorithm>
#include <functional>
#include <utility>

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

bool ElaboratedDesign::read(XmlFile *file, const ReadOptions &options, const QString &folder,
                            const Visit &visit, QString *error)
{
    const auto visitOnce = [&visit](Definition *definition) {
        visit(*definition);
        definition->forgetElements();
    };
    return readFrame(file, options, folder, error) && readDefinitions(file, options, visitOnce) &&
           findDefinitions(options, error);
}

bool ElaboratedDesign::read(const pugi::xml_document &document, const ReadOptions &options,
                            const QString &folder, QString *error)
{
    XmlFile file;
    file.use(document);
    return readFrame(&file, options, folder, error) &&
           readDefinitions(&file, options, [](Definition *) {}) && findDefinitions(options, error);
}

bool ElaboratedDesign::readAgain(XmlFile *file, const Definition &definition,
                                 const ReadOptions &options, const Visit &visit)
{
    const pugi::xml_node node = file->load(elementOf(definition, *file));
    Definition again;
    again.sourceName = definition.sourceName;
    again.role = definition.role;
    if (node)
        DefinitionReader(m_types, m_sources, m_definitionNames, &m_names, &again)
            .read(node, options);
    Definition &own = *itemAt(m_definitions, definition.number);
    if (!node || !own.takeElements(std::move(again)))
        return false;
    visit(own);
    own.forgetElements();
    return true;
}

/// Reads everything but the content of the definitions. Parses all other elements once, because any
/// of them may be damaged.
bool ElaboratedDesign::readFrame(XmlFile *file, const ReadOptions &options, const QString &folder,
                                 QString *error)
{
    m_placeMap = options.placeMap;
    bool hasTypes = false;
    for (const XmlElement &element : file->elements()) {
        ReadGuard::check();
        if (element.kind == XmlElement::Kind::Definition)
            continue;
        const pugi::xml_node node = file->load(element);
        if (!node)
            return false;
        if (element.kind == XmlElement::Kind::Files) {
            m_sources.setFiles(node, folder);
        } else if (element.kind == XmlElement::Kind::Package) {
            addPackage(node);
        } else if (element.kind == XmlElement::Kind::TypeTable) {
            m_types.read(node);
            hasTypes = true;
        }
    }
    if (hasTypes)
        return addDefinitions(file, options);
    if (isSound(file))
        *error = Text::tr("The elaborated design contains no netlist.");
    return false;
}

/// False when a definition cannot be parsed.
bool ElaboratedDesign::isSound(XmlFile *file) const
{
    const std::vector<XmlElement> &elements = file->elements();
    return std::all_of(elements.begin(), elements.end(), [file](const XmlElement &element) {
        return element.kind != XmlElement::Kind::Definition || file->load(element);
    });
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

/// The parameters of the stub of a foreign unit.
QMap<QString, GenericValue> ElaboratedDesign::genericsOf(const Definition &definition) const
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
    m_askedRoutines.emplace(name);
    std::vector<bool> written;
    const auto [first, last] = m_routines.equal_range(name);
    for (auto routine = first; routine != last; ++routine) {
        ReadGuard::check();
        const std::vector<bool> &arguments = routine->second;
        written.resize(std::max(written.size(), arguments.size()));
        std::transform(arguments.begin(), arguments.end(), written.begin(), written.begin(),
                       std::logical_or<>());
    }
    return written;
}

/// Adds the headings of all definitions. False when one cannot be parsed.
bool ElaboratedDesign::addDefinitions(XmlFile *file, const ReadOptions &options)
{
    for (int i = 0; i < countOf(file->elements()); ++i) {
        const XmlElement &element = itemAt(file->elements(), i);
        if (element.kind != XmlElement::Kind::Definition)
            continue;
        const pugi::xml_node node = file->loadStart(element);
        if (!node)
            return false;
        m_definitions.push_back(std::make_unique<Definition>(
            DefinitionReader::readHeading(node, countOf(m_definitions), options, m_sources)));
        m_elements.push_back(i);
    }
    for (const auto &definition : m_definitions)
        m_definitionNames.emplace(definition->rawName, definition.get());
    return true;
}

/// False when one cannot be parsed.
bool ElaboratedDesign::readDefinitions(XmlFile *file, const ReadOptions &options,
                                       const std::function<void(Definition *definition)> &visit)
{
    return std::all_of(m_definitions.rbegin(), m_definitions.rend(), [&](const auto &definition) {
        const pugi::xml_node node = file->load(elementOf(*definition, *file));
        if (!node)
            return false;
        readDefinition(node, options, definition.get());
        visit(definition.get());
        return true;
    });
}

void ElaboratedDesign::readDefinition(const pugi::xml_node &node, const ReadOptions &options,
                                      Definition *definition)
{
    DefinitionReader(m_types, m_sources, m_definitionNames, &m_names, definition)
        .read(node, options);
    for (const pugi::xml_node &routine : definition->routines)
        addRoutine(routine);
    if (definition->isForeign())
        definition->setGenerics = genericsOf(*definition);
}

const XmlElement &ElaboratedDesign::elementOf(const Definition &definition,
                                              const XmlFile &file) const
{
    return itemAt(file.elements(), itemAt(m_elements, definition.number));
}

void ElaboratedDesign::addPackage(const pugi::xml_node &node)
{
    for (const pugi::xml_node &member : node.children()) {
        ReadGuard::check();
        if (is(member, "var"))
            m_packageVariables.insert(m_names.keep(attribute(member, "name")));
        else if (is(member, "func") || is(member, "task"))
            addRoutine(member);
    }
}

void ElaboratedDesign::addRoutine(const pugi::xml_node &routine)
{
    const std::string_view name = m_names.keep(attribute(routine, "name"));
    m_routines.emplace(name, argumentsOf(routine));
    m_isOutdated = m_isOutdated || m_askedRoutines.count(std::string(name)) > 0;
}

/// The roots, and all definitions below them. False when they are not as they should be.
bool ElaboratedDesign::findDefinitions(const ReadOptions &options, QString *error)
{
    if (!findRoots(options.rootsAreWrapped)) {
        *error = Text::tr("The elaborated design contains no top module.");
        return false;
    }
    std::vector<State> states(m_definitions.size(), New);
    return std::all_of(m_roots.begin(), m_roots.end(),
                       [&](const Definition *top) { return sortBottomUp(top, &states, error); });
}

/// False when there is none.
bool ElaboratedDesign::findRoots(bool areWrapped)
{
    const auto top = std::find_if(m_definitions.begin(), m_definitions.end(),
                                  [](const auto &definition) { return definition->isTop; });
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
    struct Step
    {
        const Definition *definition;
        std::vector<InstanceItem>::const_iterator next;
    };
    std::vector<Step> path;
    const auto enter = [&](const Definition *definition) {
        itemAt(*states, definition->number) = Open;
        path.push_back({definition, definition->instances.begin()});
    };
    if (itemAt(*states, root->number) == New)
        enter(root);
    while (!path.empty()) {
        ReadGuard::check();
        Step &step = path.back();
        if (step.next == step.definition->instances.end()) {
            itemAt(*states, step.definition->number) = Done;
            m_bottomUp.push_back(step.definition);
            path.pop_back();
            continue;
        }
        const Definition *used = step.next++->definition;
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
