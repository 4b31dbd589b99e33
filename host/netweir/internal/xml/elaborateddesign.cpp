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

bool ElaboratedDesign::read(XmlFile *file, const ReadOptions &options, const QString &folder,
                            const Visit &visit, QString *error)
{
    const Visit visitOnce = [&](const Definition &definition, const EachRun &eachRun) {
        const bool goesOn = visit(definition, eachRun);
        itemAt(m_definitions, definition.number)->forgetElements();
        return goesOn;
    };
    return readFrame(file, options, folder, error) && readDefinitions(file, options, visitOnce) &&
           findDefinitions(options, error);
}

bool ElaboratedDesign::read(const pugi::xml_document &document, const ReadOptions &options,
                            const QString &folder, QString *error)
{
    XmlFile file;
    file.use(document);
    const Visit goOn = [](const Definition &, const EachRun &) { return true; };
    return readFrame(&file, options, folder, error) && readDefinitions(&file, options, goOn) &&
           findDefinitions(options, error);
}

bool ElaboratedDesign::readAgain(XmlFile *file, const Definition &definition, const Visit &visit)
{
    Definition *own = itemAt(m_definitions, definition.number).get();
    const bool isInRuns = m_runs.count(own->number) > 0;
    if (!isInRuns && !loadAgain(file, own))
        return false;
    const bool goesOn = visit(*own, eachRunOf(file, own));
    own->forgetElements();
    return goesOn;
}

void ElaboratedDesign::forgetDeclarations()
{
    for (const auto &definition : m_definitions)
        definition->forgetDeclarations();
    m_definitionNames = {};
    m_packageVariables = {};
    m_routines = {};
    m_names.forgetNames();
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
    for (int i = 0; i < countOf(definition.variables); ++i) {
        const pugi::xml_node node = itemAt(definition.variableElements, i);
        const QString &name = itemAt(definition.variables, i).name;
        const int generic = node.attribute("param") ? names.find(name) : -1;
        if (generic < 0)
            continue;
        if (const auto value = parameterValue(node, m_types, m_sources))
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
        return itemAt(definition.routines, symbol.index).arguments;

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
        m_definitionNames.emplace(m_names.keep(definition->rawName), definition.get());
    return true;
}

/// False when one cannot be parsed.
bool ElaboratedDesign::readDefinitions(XmlFile *file, const ReadOptions &options,
                                       const Visit &visit)
{
    return std::all_of(m_definitions.rbegin(), m_definitions.rend(), [&](const auto &definition) {
        return readDefinition(file, options, definition.get()) &&
               visit(*definition, eachRunOf(file, definition.get()));
    });
}

bool ElaboratedDesign::readDefinition(XmlFile *file, const ReadOptions &options,
                                      Definition *definition)
{
    if (!readRuns(file, options, definition)) {
        definition->forgetContent();
        const pugi::xml_node node = file->load(elementOf(*definition, *file));
        if (!node)
            return false;
        readerOf(definition).read(node, options);
    }
    for (const Definition::Routine &routine : definition->routines)
        addRoutine(routine.name, routine.arguments);
    if (definition->isForeign())
        definition->setGenerics = genericsOf(*definition);
    return true;
}

/// Reads a large definition run by run. False when it has to be read as a whole.
bool ElaboratedDesign::readRuns(XmlFile *file, const ReadOptions &options, Definition *definition)
{
    if (definition->isForeign())
        return false;
    const XmlElement &element = elementOf(*definition, *file);
    const std::vector<XmlRun> found = file->runsOf(element, options.runSize);
    if (found.size() < 2)
        return false;
    DefinitionReader reader = readerOf(definition);
    std::vector<Run> runs;
    for (const XmlRun &bytes : found) {
        Run run{bytes, reader.counts(), {}, false, false, false};
        const pugi::xml_node node = file->load(element, bytes);
        if (!node || !reader.readRun(node))
            return false;
        run.end = reader.counts();
        run.hasProcessWrites = reader.hasProcessWrites();
        run.hasComputedIndexes = !definition->computedIndexes.empty();
        run.hasUses = !definition->instanceElements.empty() || !definition->writes.empty() ||
                      !definition->calls.empty();
        runs.push_back(run);
        definition->forgetElements();
    }
    // Reading them once more takes less than reading the definition did.
    if (m_sources.textSize() < element.end - element.begin)
        m_sources.forgetTexts();
    reader.finish(options);
    const bool isNoted = std::all_of(runs.begin(), runs.end(), [&](const Run &run) {
        return !run.hasProcessWrites || loadRun(file, definition, run);
    });
    if (isNoted)
        m_runs.emplace(definition->number, std::move(runs));
    return isNoted;
}

/// Brings the elements of a run into memory once more, and those of no other.
bool ElaboratedDesign::loadRun(XmlFile *file, Definition *definition, const Run &run)
{
    definition->forgetElements();
    const pugi::xml_node node = file->load(elementOf(*definition, *file), run.bytes);
    if (node && readerOf(definition).readAgain(node, run.first, run.end))
        return true;
    file->reject();
    return false;
}

/// The same for all elements of a definition that is not large.
bool ElaboratedDesign::loadAgain(XmlFile *file, Definition *definition)
{
    const XmlElement &element = elementOf(*definition, *file);
    Run whole;
    whole.bytes = {element.startEnd, element.end};
    whole.first = DefinitionReader::Counts::atBegin();
    whole.end = {countOf(definition->scopes), countOf(definition->instances),
                 countOf(definition->variables)};
    return loadRun(file, definition, whole);
}

ElaboratedDesign::EachRun ElaboratedDesign::eachRunOf(XmlFile *file, Definition *definition)
{
    return [this, file, definition](Use use, const std::function<void()> &visit) {
        const auto runs = m_runs.find(definition->number);
        if (runs == m_runs.end()) {
            visit();
            return true;
        }
        for (const Run &run : runs->second) {
            const bool isOfUse = use == Use::All ? run.hasUses : run.hasComputedIndexes;
            if (isOfUse && !loadRun(file, definition, run))
                return false;
            if (isOfUse)
                visit();
        }
        return true;
    };
}

DefinitionReader ElaboratedDesign::readerOf(Definition *definition)
{
    return {m_types, m_sources, m_definitionNames, &m_names, definition};
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
            addRoutine(m_names.keep(attribute(member, "name")),
                       DefinitionReader::argumentsOf(member));
    }
}

void ElaboratedDesign::addRoutine(std::string_view name, const std::vector<bool> &arguments)
{
    m_routines.emplace(name, arguments);
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
