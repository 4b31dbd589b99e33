// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "definition.h"

#include "attributes.h"
#include "sourcetexts.h"

#include <netweir/internal/ground/readguard.h>

#include <QStringList>

#include <algorithm>
#include <charconv>

namespace NETWEIR::Internal {

namespace {

/// What the elaborator appends to the name of an interface instance to name a reference to it.
constexpr std::string_view InterfaceReference = "__Viftop";
constexpr std::string_view ToolMadeName = "__V";
/// Begins the names of registers for values of former cycles: $past(), $rose() and the like.
constexpr std::string_view FormerValue = "_Vpast_";
/// Begins the names of positional pins, and of ports whose place in the list is empty.
constexpr std::string_view PinNumber = "__pinNumber";

enum class Tag {
    Other,
    Array,
    Assignment,
    Block,
    Call,
    Initial,
    Instance,
    Modport,
    Process,
    Pull,
    Routine,
    Skipped,
    Variable,
    MemoryFile,
    WritesAll,
    WritesFirst,
    WritesSecond,
};

Tag tagOf(std::string_view name)
{
    static const std::unordered_map<std::string_view, Tag> tags = {
        {"alias", Tag::WritesAll},
        {"always", Tag::Process},
        {"arraysel", Tag::Array},
        {"assign", Tag::Assignment},
        {"assigndly", Tag::Assignment},
        {"assignforce", Tag::Assignment},
        {"begin", Tag::Block},
        {"class", Tag::Skipped},
        {"clocking", Tag::Skipped},
        {"contassign", Tag::Assignment},
        {"fgets", Tag::WritesAll},
        {"final", Tag::Process},
        {"fopen", Tag::WritesFirst},
        {"fopenmcd", Tag::WritesFirst},
        {"fread", Tag::WritesAll},
        {"fscanf", Tag::WritesAll},
        {"func", Tag::Routine},
        {"funcref", Tag::Call},
        {"initial", Tag::Initial},
        {"initialautomatic", Tag::Process},
        {"initialstatic", Tag::Process},
        {"instance", Tag::Instance},
        {"modport", Tag::Modport},
        {"property", Tag::Skipped},
        {"pull", Tag::Pull},
        {"rand", Tag::WritesFirst}, // The seed.
        {"readmem", Tag::MemoryFile},
        {"sequence", Tag::Skipped},
        {"sformat", Tag::WritesSecond},
        {"sscanf", Tag::WritesAll},
        {"task", Tag::Routine},
        {"taskref", Tag::Call},
        {"typedef", Tag::Skipped},
        {"valueplusargs", Tag::WritesSecond},
        {"var", Tag::Variable},
    };
    const auto found = tags.find(name);
    return found == tags.end() ? Tag::Other : found->second;
}

bool endsWith(std::string_view text, std::string_view ending)
{
    return text.size() >= ending.size() && text.substr(text.size() - ending.size()) == ending;
}

bool startsWith(std::string_view text, std::string_view beginning)
{
    return text.substr(0, beginning.size()) == beginning;
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

/// A continuous assignment of a constant is written as an "initial" at the end of the module, even
/// when its target is in a generate scope; the variable then holds the constant as well. All parts
/// of such an element stand at one place of the source, which those of a user's never do.
bool isMovedAssignment(const pugi::xml_node &initial)
{
    const pugi::xml_node assignment = initial.first_child();
    return !assignment.next_sibling() && std::string_view(assignment.name()) == "assign" &&
           std::string_view(assignment.first_child().name()) == "const" &&
           initial.attribute("loc") && attribute(initial, "loc") == attribute(assignment, "loc");
}

/// A net declared as "supply0" or "supply1" is written as an assignment whose parts all stand where
/// the net is declared.
bool isSupplyAssignment(const pugi::xml_node &assignment)
{
    const pugi::xml_node value = assignment.first_child();
    const std::string_view place = attribute(assignment, "loc");
    return assignment.child("strengthspec") && !place.empty() && attribute(value, "loc") == place &&
           attribute(value.next_sibling(), "loc") == place;
}

} // namespace

qint64 InstanceItem::positionOf(int index) const
{
    if (!isArray || index < qMin(left, right) || index > qMax(left, right))
        return -1;
    return qAbs(qint64(index) - left);
}

int InstanceItem::indexAt(qint64 position) const
{
    return int(left > right ? left - position : left + position);
}

bool Reference::isHierarchical() const
{
    return std::string_view(node.name()) == "varxref";
}

bool Reference::isConstant() const
{
    return std::all_of(steps.begin(), steps.end(), [](const pugi::xml_node &step) {
        const std::string_view tag = step.name();
        return (tag != "sel" && tag != "arraysel") ||
               std::string_view(step.first_child().next_sibling().name()) == "const";
    });
}

Symbol Definition::find(int scope, std::string_view name) const
{
    while (scope >= 0) {
        ReadGuard::check();
        const NameScope &level = scopes[std::size_t(scope)];
        const auto found = level.symbols.find(name);
        if (found != level.symbols.end())
            return found->second;
        scope = level.parent;
    }
    return {};
}

/// Put together only where a name is needed: the names of all scopes of a deep nest would take
/// memory by the square of its depth.
QString Definition::prefixOf(int scope) const
{
    QStringList names;
    for (; scope > 0; scope = scopes[std::size_t(scope)].parent) {
        ReadGuard::check();
        names.prepend(scopes[std::size_t(scope)].name);
    }
    return names.join(QString());
}

int Definition::portOfPin(std::string_view pinName) const
{
    if (startsWith(pinName, PinNumber)) {
        int number = 0;
        pinName.remove_prefix(PinNumber.size());
        std::from_chars(pinName.data(), pinName.data() + pinName.size(), number);
        const bool exists = number > 0 && std::size_t(number) <= ports.size();
        return exists ? ports[std::size_t(number) - 1] : -1;
    }
    const auto found = scopes[0].symbols.find(pinName);
    const bool isVariable =
        found != scopes[0].symbols.end() && found->second.kind == Symbol::Kind::Variable;
    return isVariable ? found->second.index : -1;
}

DefinitionReader::DefinitionReader(Definition *definition, const TypeTable &types,
                                   SourceTexts *sources)
    : m_definition(definition)
    , m_types(types)
    , m_sources(sources)
{
}

void DefinitionReader::read()
{
    const pugi::xml_node root = m_definition->node;
    m_definition->scopes.emplace_back();
    m_levels.push_back({root, 0, false});

    pugi::xml_node node = root.first_child();
    while (node) {
        ReadGuard::check();
        if (enter(node) && node.first_child()) {
            node = node.first_child();
            continue;
        }
        // The next element in the order of the document, leaving levels on the way up.
        while (true) {
            if (m_levels.size() > 1 && level().node == node)
                m_levels.pop_back();
            if (node.next_sibling()) {
                node = node.next_sibling();
                break;
            }
            node = node.parent();
            if (node == root) {
                numberPorts();
                return;
            }
        }
    }
    numberPorts();
}

/// Takes note of @p node; true when its children are to be looked at too.
bool DefinitionReader::enter(const pugi::xml_node &node)
{
    switch (tagOf(node.name())) {
    case Tag::Array:
        if (std::string_view(node.first_child().next_sibling().name()) != "const")
            m_definition->computedIndexes.push_back({node, level().scope});
        return true;
    case Tag::Assignment:
        addAssignment(node);
        return true;
    case Tag::Block:
        enterBlock(node);
        return true;
    case Tag::Call:
        m_definition->calls.push_back({node, level().scope});
        return true;
    case Tag::Initial:
        if (isMovedAssignment(node)) {
            addConstantInput(node.first_child());
            return false;
        }
        m_levels.push_back({node, level().scope, true});
        return true;
    case Tag::Instance:
        addInstance(node);
        return true;
    case Tag::Modport:
        addModport(node);
        return false;
    case Tag::Process:
        m_levels.push_back({node, level().scope, true});
        return true;
    case Tag::Pull:
        addWrite(node.first_child());
        return false;
    case Tag::Routine:
        addRoutine(node);
        return true;
    case Tag::Skipped:
        return false;
    case Tag::Variable:
        addVariable(node);
        return false;
    case Tag::WritesAll:
        for (const pugi::xml_node &target : node.children())
            addWrite(target);
        return true;
    case Tag::MemoryFile:
        m_definition->computedIndexes.push_back({node.first_child().next_sibling(), level().scope});
        return true;
    case Tag::WritesFirst:
        addWrite(node.first_child());
        return true;
    case Tag::WritesSecond:
        addWrite(node.first_child().next_sibling());
        return true;
    case Tag::Other:
        break;
    }
    return true;
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
    // A loop leaves an empty block of its own name beside those of its rounds.
    scope().symbols.emplace(name, Symbol{Symbol::Kind::Scope, int(m_definition->scopes.size())});
    openScope(node, m_sources->nameOf(node) + QLatin1Char('.'), false);
}

void DefinitionReader::openScope(const pugi::xml_node &node, const QString &name, bool isLocal)
{
    NameScope opened;
    opened.parent = level().scope;
    opened.name = name;
    m_levels.push_back({node, int(m_definition->scopes.size()), isLocal});
    m_definition->scopes.push_back(std::move(opened));
}

void DefinitionReader::addVariable(const pugi::xml_node &node)
{
    const std::string_view name = attribute(node, "name");
    const std::string_view encoded = attribute(node, "origName");
    const bool isInterface = attribute(node, "vartype") == "ifaceref";
    if (isInterface && endsWith(encoded, InterfaceReference)) {
        const auto instance =
            scope().symbols.find(name.substr(0, name.size() - InterfaceReference.size()));
        if (instance != scope().symbols.end())
            scope().symbols.emplace(name, instance->second);
        return;
    }

    Variable variable;
    variable.name = m_sources->nameOf(node);
    variable.node = node;
    variable.scope = level().scope;
    variable.type = m_types.typeOf(node);
    variable.direction = directionOf(attribute(node, "dir"));
    variable.pinNumber = node.attribute("pinIndex").as_int();
    variable.isInterfacePort = isInterface && !level().isLocal;

    const bool isParameter = node.attribute("param") || node.attribute("localparam");
    const bool isEmptyPort = variable.pinNumber > 0 && startsWith(encoded, PinNumber);
    const bool isToolMade = isEmptyPort || startsWith(encoded, FormerValue) ||
                            (contains(encoded, ToolMadeName) && !contains(encoded, HashedName));
    const bool mayBeGenvar = m_types.at(variable.type).isIntegerKeyword &&
                             variable.direction == Direction::None && !level().isLocal;
    variable.isNet = !level().isLocal && !isInterface && !isParameter && !isToolMade &&
                     !(mayBeGenvar && isGenvar(node));
    variable.isDrivenByConstant = node.child("const") && variable.direction != Direction::Input;

    scope().symbols.emplace(name,
                            Symbol{Symbol::Kind::Variable, int(m_definition->variables.size())});
    m_definition->variables.push_back(std::move(variable));
}

void DefinitionReader::addInstance(const pugi::xml_node &node)
{
    InstanceItem instance;
    instance.name = m_sources->nameOf(node);
    instance.node = node;
    instance.scope = level().scope;
    if (const auto range = declaredRange(node)) {
        instance.isArray = true;
        instance.left = range->first;
        instance.right = range->second;
    }
    scope().symbols.emplace(attribute(node, "name"),
                            Symbol{Symbol::Kind::Instance, int(m_definition->instances.size())});
    m_definition->instances.push_back(std::move(instance));
}

void DefinitionReader::addRoutine(const pugi::xml_node &node)
{
    scope().symbols.emplace(attribute(node, "name"),
                            Symbol{Symbol::Kind::Routine, int(m_definition->routines.size())});
    m_definition->routines.push_back(node);
    openScope(node, QString(), true);
}

void DefinitionReader::addModport(const pugi::xml_node &node)
{
    std::vector<std::string_view> &outputs = m_definition->modportOutputs[attribute(node, "name")];
    for (const pugi::xml_node &member : node.children("modportvarref")) {
        if (attribute(member, "direction") == "out")
            outputs.push_back(attribute(member, "name"));
    }
}

/// The right side comes first.
void DefinitionReader::addAssignment(const pugi::xml_node &node)
{
    const pugi::xml_node value = node.first_child();
    // What a clocking block samples is no driver.
    if (std::string_view(value.name()) == "sampled")
        return;
    const pugi::xml_node target = value.next_sibling();
    addWrite(target);
    if (isSupplyAssignment(node))
        m_definition->supplies.push_back({target, level().scope});
}

/// The constant of an input may be a default as well; the assignment tells them apart.
void DefinitionReader::addConstantInput(const pugi::xml_node &assignment)
{
    const Symbol symbol = m_definition->find(0, attribute(assignment.last_child(), "name"));
    if (symbol.kind != Symbol::Kind::Variable)
        return;
    Variable &variable = m_definition->variables[std::size_t(symbol.index)];
    if (variable.direction == Direction::Input && variable.node.child("const"))
        variable.isDrivenByConstant = true;
}

void DefinitionReader::addWrite(const pugi::xml_node &lvalue)
{
    if (lvalue)
        m_definition->writes.push_back({lvalue, level().scope});
}

/// Interface ports carry no number of their own: they take the ones that the others leave free.
void DefinitionReader::numberPorts()
{
    std::vector<int> &ports = m_definition->ports;
    const int most = int(m_definition->variables.size());
    const auto put = [&ports](int number, int variable) {
        if (ports.size() < std::size_t(number))
            ports.resize(std::size_t(number), -1);
        ports[std::size_t(number) - 1] = variable;
    };
    for (int i = 0; i < most; ++i) {
        const int number = m_definition->variables[std::size_t(i)].pinNumber;
        if (number > 0 && number <= most)
            put(number, i);
    }
    int next = 1;
    for (int i = 0; i < most; ++i) {
        if (!m_definition->variables[std::size_t(i)].isInterfacePort)
            continue;
        while (std::size_t(next) <= ports.size() && ports[std::size_t(next) - 1] >= 0)
            ++next;
        put(next, i);
    }
}

/// A genvar is written like a variable of type "integer". The source tells them apart; where it
/// cannot be read, one that nothing refers to is taken for a genvar, since nothing would be lost.
bool DefinitionReader::isGenvar(const pugi::xml_node &node) const
{
    constexpr int LinesBack = 50;
    QByteArray before = m_sources->textBefore(attribute(node, "loc"), LinesBack);
    const int genvar = before.lastIndexOf("genvar");
    const int integer = before.lastIndexOf("integer");
    if (genvar >= 0 || integer >= 0)
        return genvar > integer;

    const std::string_view name = attribute(node, "name");
    const pugi::xml_node reference = m_definition->node.find_node([name](const pugi::xml_node &n) {
        ReadGuard::check();
        const std::string_view tag = n.name();
        return (tag == "varref" || tag == "varxref") && attribute(n, "name") == name;
    });
    return !reference;
}

} // namespace NETWEIR::Internal
