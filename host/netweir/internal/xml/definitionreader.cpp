// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "definitionreader.h"

#include "attributes.h"
#include "declarationtext.h"
#include "elementkind.h"
#include "namepool.h"
#include "sourcetexts.h"
#include "typetable.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/ground/readguard.h>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

/// The suffix that the elaborator appends to the name of an interface instance for a reference to
/// it.
constexpr std::string_view InterfaceReference = "__Viftop";
constexpr std::string_view ToolMadeName = "__V";
/// Prefix for registers with values of former cycles: $past(), $rose() and the like.
constexpr std::string_view FormerValue = "_Vpast_";

bool endsWith(std::string_view text, std::string_view ending)
{
    return text.size() >= ending.size() && text.substr(text.size() - ending.size()) == ending;
}

bool contains(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

Direction directionOf(std::string_view text)
{
    if (text == "input")
        return Direction::Input;
    if (text == "output")
        return Direction::Output;
    if (text == "inout")
        return Direction::Inout;
    return text == "ref" || text == "const ref" ? Direction::Ref : Direction::None;
}

bool isOfInterface(const pugi::xml_node &variable)
{
    return attribute(variable, "vartype") == "ifaceref";
}

/// The XML has a continuous assignment of a constant as an "initial" at the end of the module, even
/// if its target is in a generate scope; the variable then also has the constant. All parts of this
/// element have the same location, unlike an "initial" of the user.
bool isMovedAssignment(const pugi::xml_node &initial)
{
    const pugi::xml_node assignment = initial.first_child();
    return !assignment.next_sibling() && is(assignment, "assign") &&
           is(assignment.first_child(), "const") && initial.attribute("loc") &&
           attribute(initial, "loc") == attribute(assignment, "loc");
}

/// The XML has a "supply0" or "supply1" net as an assignment whose parts all have the location of
/// the declaration.
bool isSupplyAssignment(const pugi::xml_node &assignment)
{
    const pugi::xml_node value = assignment.first_child();
    const std::string_view location = attribute(assignment, "loc");
    return assignment.child("strengthspec") && !location.empty() &&
           attribute(value, "loc") == location &&
           attribute(value.next_sibling(), "loc") == location;
}

/// The name by which instances refer to the definition. The XML has it only in decoded form, in
/// which different names may look the same. The part after the source name is never encoded.
std::string rawNameOf(const pugi::xml_node &node)
{
    const std::string_view encoded = attribute(node, "origName");
    const std::string decoded = decodedName(encoded).toStdString();
    const std::string_view name = attribute(node, "name");
    std::string raw(encoded);
    if (name.size() > decoded.size())
        raw += name.substr(decoded.size());
    return raw;
}

Definition::Role roleOf(const pugi::xml_node &node, const QString &sourceName,
                        const ReadOptions &options)
{
    if (options.foreignUnits.contains(sourceName))
        return Definition::Role::Foreign;
    if (options.unknownModules.contains(sourceName))
        return Definition::Role::Stub;
    if (options.primitiveModules.contains(sourceName) || is(node, "primitive"))
        return Definition::Role::Primitive;
    return is(node, "iface") ? Definition::Role::Interface : Definition::Role::Module;
}

} // namespace

Definition DefinitionReader::readHeading(const pugi::xml_node &node, int number,
                                         const ReadOptions &options, const SourceTexts &sources)
{
    Definition definition;
    definition.number = number;
    definition.isTop = node.attribute("topModule").as_int() == 1;
    definition.rawName = rawNameOf(node);
    definition.sourceName = sources.nameOf(node);
    definition.role = roleOf(node, definition.sourceName, options);
    definition.foreignUnit = options.foreignUnits.value(definition.sourceName);
    return definition;
}

DefinitionReader::DefinitionReader(const TypeTable &types, const SourceTexts &sources,
                                   const DefinitionNames &definitions, NamePool *names,
                                   Definition *definition)
    : m_types(types)
    , m_sources(sources)
    , m_definitions(definitions)
    , m_names(names)
    , m_definition(definition)
{
}

std::vector<bool> DefinitionReader::argumentsOf(const pugi::xml_node &routine)
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

void DefinitionReader::read(const pugi::xml_node &element, const ReadOptions &options)
{
    walk(element);
    noteProcessWrites();
    finish(options);
}

bool DefinitionReader::readRun(const pugi::xml_node &node)
{
    m_mode = Mode::Run;
    walk(node);
    return !m_needsWhole;
}

bool DefinitionReader::readAgain(const pugi::xml_node &node, const Counts &first, const Counts &end)
{
    m_mode = Mode::Again;
    m_counts = first;
    walk(node);
    const bool isPart = m_definition->variableElements.size() < m_definition->variables.size();
    if (!(m_counts == end) || (isPart && !m_definition->supplies.empty()))
        return false;
    noteProcessWrites();
    return true;
}

void DefinitionReader::walk(const pugi::xml_node &element)
{
    m_definition->node = element;
    m_processWrites.clear();
    if (m_definition->scopes.empty())
        m_definition->scopes.emplace_back();
    m_levels.assign(1, {element, 0, false});
    pugi::xml_node node = element.first_child();
    while (node) {
        ReadGuard::check();
        const bool goesIn = enter(node) && node.first_child();
        node = goesIn ? node.first_child() : leave(node);
    }
}

/// When all names are known.
void DefinitionReader::finish(const ReadOptions &options)
{
    numberPorts();
    const QSet<QString> tied = options.tiedNets.value(m_definition->sourceName);
    for (Variable &variable : m_definition->variables)
        variable.isTied = tied.contains(variable.name);
    m_definition->omittedWrites = options.omittedWrites.value(m_definition->sourceName);
    m_definition->variables.shrink_to_fit();
    m_definition->instances.shrink_to_fit();
    m_definition->scopes.shrink_to_fit();
    for (NameScope &nameScope : m_definition->scopes)
        nameScope.symbols.shrink();
}

/// Records @p node. True when its children have to be visited.
bool DefinitionReader::enter(const pugi::xml_node &node)
{
    const ElementKind kind = elementKindOf(node.name());
    if (kind == ElementKind::Initial && isMovedAssignment(node)) {
        addConstantInput(node.first_child());
        return false;
    }
    declare(kind, node);
    use(kind, node);
    return kind != ElementKind::Modport && kind != ElementKind::Pull &&
           kind != ElementKind::Skipped && kind != ElementKind::Variable;
}

/// The next element after @p node and its contents, in document order; null at the end. Closes
/// levels on the way up.
pugi::xml_node DefinitionReader::leave(pugi::xml_node node)
{
    for (; node != m_definition->node; node = node.parent()) {
        if (m_levels.size() > 1 && level().node == node)
            m_levels.pop_back();
        if (node.next_sibling())
            return node.next_sibling();
    }
    return {};
}

/// Handles elements that open a level or declare a name.
void DefinitionReader::declare(ElementKind kind, const pugi::xml_node &node)
{
    switch (kind) {
    case ElementKind::Block:
        return enterBlock(node);
    case ElementKind::Initial:
    case ElementKind::Process:
        m_levels.push_back({node, level().scope, true});
        return;
    case ElementKind::Instance:
        return addInstance(node);
    case ElementKind::Modport:
        return addModport(node);
    case ElementKind::Routine:
        return addRoutine(node);
    case ElementKind::Variable:
        return addVariable(node);
    default:
        return;
    }
}

/// Handles elements that write, or that access an array with a computed index.
void DefinitionReader::use(ElementKind kind, const pugi::xml_node &node)
{
    switch (kind) {
    case ElementKind::Array:
        if (!is(node.first_child().next_sibling(), "const"))
            m_definition->computedIndexes.push_back({node, level().scope});
        return;
    case ElementKind::Assignment:
        return addAssignment(node);
    case ElementKind::Call:
        m_definition->calls.push_back({node, level().scope});
        return;
    case ElementKind::MemoryFile:
        m_definition->computedIndexes.push_back({node.first_child().next_sibling(), level().scope});
        return;
    case ElementKind::WritesAll:
        for (const pugi::xml_node &target : node.children())
            addWrite(target);
        return;
    case ElementKind::Pull:
    case ElementKind::WritesFirst:
        return addWrite(node.first_child());
    case ElementKind::WritesSecond:
        return addWrite(node.first_child().next_sibling());
    default:
        return;
    }
}

void DefinitionReader::enterBlock(const pugi::xml_node &node)
{
    if (level().isLocal) {
        if (node.child("var"))
            openScope(node, QString(), true);
        return;
    }
    const std::string_view name = attribute(node, "name");
    if (name.empty())
        return;
    if (m_mode == Mode::Again)
        return openScope(node, QString(), false);
    // A loop leaves an empty block with its name beside the blocks of its rounds.
    declareName(node, Symbol::Kind::Scope, countOf(m_definition->scopes));
    const QString prefix = m_sources.nameOf(node) + QLatin1Char('.');
    const int identifier = identifierOf(name, prefix);
    openScope(node, prefix, false);
    scope().identifier = identifier;
}

/// The length of the label of a block with that @p name and @p prefix. The block of a round of a
/// loop comes after the one of the loop and has an index; any other bracket belongs to the label.
int DefinitionReader::identifierOf(std::string_view name, const QString &prefix)
{
    const std::size_t bracket = name.rfind('[');
    const bool isRound = bracket != std::string_view::npos &&
                         scope().find(name.substr(0, bracket)).kind == Symbol::Kind::Scope;
    return isRound ? prefix.lastIndexOf(QLatin1Char('[')) : prefix.size() - 1;
}

void DefinitionReader::openScope(const pugi::xml_node &node, const QString &name, bool isLocal)
{
    NameScope opened;
    opened.parent = level().scope;
    opened.name = name;
    m_levels.push_back({node, m_counts.scopes++, isLocal});
    if (m_mode != Mode::Again)
        m_definition->scopes.push_back(std::move(opened));
}

void DefinitionReader::addVariable(const pugi::xml_node &node)
{
    if (isInterfaceReference(node))
        return declareInterface(node);
    m_definition->variableElements.push_back(node);
    ++m_counts.variables;
    if (m_mode == Mode::Again)
        return;
    Variable variable;
    variable.name = m_names->keep(m_sources.nameOf(node));
    variable.scope = level().scope;
    variable.type = m_types.typeOf(node);
    variable.direction = directionOf(attribute(node, "dir"));
    variable.pinNumber = node.attribute("pinIndex").as_int();
    variable.isInterfacePort = isOfInterface(node) && !level().isLocal;
    variable.isNet = isNet(variable, node);
    if (variable.isNet && isVerilogVariable(node))
        variable.processWrites = ProcessWrites::Possible;
    variable.hasConstant = bool(node.child("const"));
    variable.isDrivenByConstant = variable.hasConstant && variable.direction != Direction::Input;

    declareName(node, Symbol::Kind::Variable, countOf(m_definition->variables));
    m_definition->variables.push_back(std::move(variable));
}

/// The elaborator declares a reference to each interface instance, which is another name for it.
bool DefinitionReader::isInterfaceReference(const pugi::xml_node &node)
{
    return isOfInterface(node) && endsWith(attribute(node, "origName"), InterfaceReference);
}

void DefinitionReader::declareInterface(const pugi::xml_node &node)
{
    if (m_mode == Mode::Again)
        return;
    const std::string_view name = attribute(node, "name");
    const Symbol instance = scope().find(name.substr(0, name.size() - InterfaceReference.size()));
    if (instance.kind != Symbol::Kind::None)
        declareName(node, instance.kind, instance.index);
}

bool DefinitionReader::isNet(const Variable &variable, const pugi::xml_node &node)
{
    const bool isParameter = node.attribute("param") || node.attribute("localparam");
    if (level().isLocal || isOfInterface(node) || isParameter || m_definition->isForeign())
        return false;
    const std::string_view encoded = attribute(node, "origName");
    const bool isEmptyPort = variable.pinNumber > 0 && startsWith(encoded, PinNumber);
    const bool isToolMade = contains(encoded, ToolMadeName) && !contains(encoded, HashedName);
    if (isEmptyPort || isToolMade || startsWith(encoded, FormerValue))
        return false;
    const bool mayBeGenvar =
        m_types.at(variable.type).isIntegerKeyword && variable.direction == Direction::None;
    return !mayBeGenvar || !isGenvar(node);
}

void DefinitionReader::addInstance(const pugi::xml_node &node)
{
    InstanceItem instance = instanceAt(node);
    if (isRange(instance)) {
        if (m_mode != Mode::Again)
            takeRange(instance);
        return;
    }
    m_definition->instanceElements.push_back({m_counts.instances++, node});
    if (m_mode == Mode::Again)
        return;
    instance.name = m_names->keep(instance.name);
    if (instance.definition && instance.definition->isNode()) {
        instance.firstChild = m_definition->childCount;
        m_definition->childCount += instance.count();
    }
    declareName(node, Symbol::Kind::Instance, countOf(m_definition->instances));
    m_definition->instances.push_back(std::move(instance));
    if (m_definition->instances.back().firstChild < 0)
        return;
    for (const pugi::xml_node &pin : node.children("port")) {
        ReadGuard::check();
        addInterfacePin(countOf(m_definition->instances) - 1, pin);
    }
}

InstanceItem DefinitionReader::instanceAt(const pugi::xml_node &node) const
{
    InstanceItem instance;
    instance.name = m_sources.nameOf(node);
    instance.scope = level().scope;
    if (const auto range = declaredRange(node)) {
        instance.isArray = true;
        instance.left = range->first;
        instance.right = range->second;
    }
    const auto definition = m_definitions.find(attribute(node, "defName"));
    if (definition != m_definitions.end())
        instance.definition = definition->second;
    return instance;
}

/// True when @p instance stands for the range of the array of foreign instances before it.
bool DefinitionReader::isRange(const InstanceItem &instance) const
{
    const bool isForeign = instance.definition && instance.definition->isForeign();
    const bool isAfterOther =
        m_counts.instances > 0 && m_counts.instances <= countOf(m_definition->instances);
    if (!isForeign || !isAfterOther || !instance.isArray)
        return false;
    const InstanceItem &array = itemAt(m_definition->instances, m_counts.instances - 1);
    return instance.scope == array.scope &&
           instance.name == array.name + QLatin1String(RangeInstance);
}

void DefinitionReader::takeRange(const InstanceItem &instance)
{
    InstanceItem &array = m_definition->instances.back();
    array.isArray = true;
    array.left = instance.left;
    array.right = instance.right;
    m_definition->childCount = array.firstChild + array.count();
}

void DefinitionReader::addRoutine(const pugi::xml_node &node)
{
    if (m_mode != Mode::Again) {
        declareName(node, Symbol::Kind::Routine, countOf(m_definition->routines));
        m_definition->routines.push_back(
            {m_names->keep(attribute(node, "name")), argumentsOf(node)});
    }
    openScope(node, QString(), true);
}

void DefinitionReader::addModport(const pugi::xml_node &node)
{
    if (m_mode == Mode::Again)
        return;
    const std::string_view name = m_names->keep(attribute(node, "name"));
    std::vector<std::string_view> &outputs = m_definition->modportOutputs[name];
    for (const pugi::xml_node &member : node.children("modportvarref")) {
        if (attribute(member, "direction") == "out")
            outputs.push_back(m_names->keep(attribute(member, "name")));
    }
}

/// The right side comes first in the XML.
void DefinitionReader::addAssignment(const pugi::xml_node &node)
{
    const pugi::xml_node value = node.first_child();
    // A clocking block only samples and does not drive.
    if (is(value, "sampled"))
        return;
    const pugi::xml_node target = value.next_sibling();
    addWrite(target);
    if (!isSupplyAssignment(node))
        return;
    m_definition->supplies.push_back({target, level().scope});
    m_needsWhole = true; // For the element of the net.
}

/// The constant of an input may be its default value instead; the assignment tells which.
void DefinitionReader::addConstantInput(const pugi::xml_node &assignment)
{
    if (m_mode == Mode::Again)
        return;
    const Symbol symbol = m_definition->find(0, attribute(assignment.last_child(), "name"));
    if (symbol.kind != Symbol::Kind::Variable)
        return;
    Variable &variable = itemAt(m_definition->variables, symbol.index);
    if (variable.direction == Direction::Input && variable.hasConstant)
        variable.isDrivenByConstant = true;
}

void DefinitionReader::addWrite(const pugi::xml_node &lvalue)
{
    if (!lvalue)
        return;
    if (level().isLocal)
        m_processWrites.push_back(countOf(m_definition->writes));
    m_definition->writes.push_back({lvalue, level().scope});
}

void DefinitionReader::noteProcessWrites()
{
    for (const int write : m_processWrites) {
        const Occurrence &target = itemAt(m_definition->writes, write);
        const bool isLater = is(target.node.parent(), "assigndly");
        forEachReference(target, [this, isLater](const Reference &reference) {
            const Symbol symbol = reference.isHierarchical()
                                      ? Symbol()
                                      : m_definition->find(reference.scope, reference.name());
            if (symbol.kind != Symbol::Kind::Variable)
                return;
            ProcessWrites &writes = itemAt(m_definition->variables, symbol.index).processWrites;
            writes =
                std::max(writes, isLater ? ProcessWrites::Nonblocking : ProcessWrites::Blocking);
        });
    }
}

/// Interface ports have no numbers in the XML. They get the numbers that the other ports leave
/// free.
void DefinitionReader::numberPorts()
{
    std::vector<int> &ports = m_definition->ports;
    const int most = countOf(m_definition->variables);
    const auto isFree = [&ports](int number) {
        return number > countOf(ports) || itemAt(ports, number - 1) < 0;
    };
    const auto put = [&ports](int number, int variable) {
        while (countOf(ports) < number)
            ports.push_back(-1);
        itemAt(ports, number - 1) = variable;
    };
    for (int i = 0; i < most; ++i) {
        const int number = itemAt(m_definition->variables, i).pinNumber;
        if (number > 0 && number <= most)
            put(number, i);
    }
    int next = 1;
    for (int i = 0; i < most; ++i) {
        if (!itemAt(m_definition->variables, i).isInterfacePort)
            continue;
        while (!isFree(next))
            ++next;
        put(next, i);
    }
}

/// Lists the pin of an instance whose definition is not read yet in any case.
void DefinitionReader::addInterfacePin(int item, const pugi::xml_node &pin)
{
    const Definition &inner = *itemAt(m_definition->instances, item).definition;
    const bool isRead = !inner.scopes.empty() && &inner != m_definition;
    const int port = isRead ? inner.portOfPin(attribute(pin, "name")) : -1;
    if (isRead && (port < 0 || !itemAt(inner.variables, port).isInterfacePort))
        return;
    pugi::xml_node connected = pin.first_child();
    InterfacePin result;
    if (is(connected, "arraysel")) {
        result.element = constantValue(connected.last_child());
        connected = connected.first_child();
    }
    result.item = item;
    result.port = attribute(pin, "name");
    result.name = attribute(connected, "name");
    result.path = attribute(connected, "dotted");
    result.isHierarchical = is(connected, "varxref");
    m_definition->interfacePins.push_back(std::move(result));
}

/// The first meaning of a name in a scope counts.
void DefinitionReader::declareName(const pugi::xml_node &node, Symbol::Kind kind, int index)
{
    const std::string_view name = m_names->keep(attribute(node, "name"));
    scope().symbols.add(name, {kind, index});
}

/// In the XML a genvar looks like a variable of type "integer"; the source tells which it is. If
/// the source cannot be read, an unused one counts as a genvar, so nothing is lost.
bool DefinitionReader::isGenvar(const pugi::xml_node &node)
{
    constexpr int LinesBack = 50;
    const QByteArray before = m_sources.textBefore(attribute(node, "loc"), LinesBack);
    const int genvar = before.lastIndexOf("genvar");
    const int integer = before.lastIndexOf("integer");
    if (genvar >= 0 || integer >= 0)
        return genvar > integer;

    m_needsWhole = true;
    const std::string_view name = attribute(node, "name");
    const pugi::xml_node reference = m_definition->node.find_node([name](const pugi::xml_node &n) {
        ReadGuard::check();
        return (is(n, "varref") || is(n, "varxref")) && attribute(n, "name") == name;
    });
    return !reference;
}

/// The XML has no difference between nets and variables. If the source cannot be read, it is a net.
bool DefinitionReader::isVerilogVariable(const pugi::xml_node &node) const
{
    // Most names are in one line with their keyword.
    for (const int linesBack : {1, 20}) {
        const QByteArray before = m_sources.textBefore(attribute(node, "loc"), linesBack);
        if (const auto isVariable =
                declaresVariable({before.constData(), std::size_t(before.size())}))
            return *isVariable;
    }
    return false;
}

NameScope &DefinitionReader::scope()
{
    return itemAt(m_definition->scopes, level().scope);
}

} // namespace NETWEIR::Internal
