// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "vhdlindexes.h"

#include "vhdlinterfaces.h"
#include "vhdlname.h"
#include "vhdlreader.h"

#include <QHash>

#include <algorithm>
#include <array>
#include <vector>

namespace NETWEIR::Internal {

namespace {

/// What a name stands for.
struct Meaning
{
    enum Kind { Constant, Variable, Signal };

    Kind kind = Constant;
    int scope = 0;   ///< Of a signal.
    QByteArray name; ///< Of a signal, with fields. An alias stands for its object.
    int depth = 0;   ///< Indexes behind the name.
};

/// The names that are visible at a place. Inner declarations hide outer ones.
class NameTable
{
public:
    void enter() { m_levels.emplace_back(); }
    void leave();
    void declare(const QByteArray &foldedName, const Meaning &meaning);
    /// Null for a name that nothing declares.
    const Meaning *find(const QByteArray &foldedName) const;

private:
    QHash<QByteArray, std::vector<Meaning>> m_meanings; ///< The innermost one last.
    std::vector<QByteArrayList> m_levels;
};

void NameTable::leave()
{
    for (const QByteArray &name : m_levels.back())
        m_meanings[name].pop_back();
    m_levels.pop_back();
}

void NameTable::declare(const QByteArray &foldedName, const Meaning &meaning)
{
    m_meanings[foldedName].push_back(meaning);
    m_levels.back().append(foldedName);
}

const Meaning *NameTable::find(const QByteArray &foldedName) const
{
    const auto found = m_meanings.constFind(foldedName);
    return found == m_meanings.constEnd() || found->empty() ? nullptr : &found->back();
}

/// Attributes whose value does not depend on the value of the signal.
bool isStaticAttribute(const VhdlToken &attribute)
{
    static constexpr std::array<std::string_view, 11> names = {
        "length",        "left",    "right",   "high",          "low",        "ascending",
        "reverse_range", "element", "subtype", "instance_name", "simple_name"};
    if (attribute.is(VhdlKeyword::Range))
        return true;
    return std::any_of(names.begin(), names.end(),
                       [&attribute](std::string_view name) { return attribute.isWord(name); });
}

/// Reads an architecture once, from its first to its last token.
class IndexScan
{
public:
    IndexScan(const QByteArray &text, const VhdlUnit &architecture, const VhdlUnit *entity);

    QVector<VhdlComputedIndex> run();

private:
    /// An open parenthesis.
    struct Group
    {
        bool isIndex = false; ///< Of the signal.
        Meaning signal;
        bool isComputed = false;
        bool isRange = false;
    };

    /// A part of the text with names of its own, within a scope.
    enum class Region { Process, Subprogram, Loop };

    const VhdlToken &token(int ahead = 0) const { return m_reader.token(ahead); }
    void declareInterface(const VhdlInterface &interface, int scope);
    void declareAll(const VhdlUnit &unit, const QVector<int> &declarations, int scope);
    void declareAlias(const QByteArray &name, const TextRange &object);
    void readAlias();
    void enterScopes();
    void leaveScopes();
    void readToken();
    void readKeyword();
    void readSign();
    void readName();
    void readEnd();
    void readSubprogram();
    void beginDeclaration(Meaning::Kind kind);
    void endDeclaration();
    void beginLoop();
    void enterRegion(Region region);
    void leaveRegion(Region region);
    void leaveInnermostRegion();
    void leaveAllRegions();
    void openGroup();
    void closeGroup();
    void meetComputed();

    const QByteArray &m_text;
    const VhdlUnit &m_architecture;
    VhdlReader m_reader;
    NameTable m_names;
    QVector<QVector<int>> m_declarations; ///< Numbers of the declarations of each scope.
    int m_nextScope = 1;
    std::vector<int> m_scopes; ///< Those around the current token.
    std::vector<Region> m_regions;
    std::array<int, 3> m_open{}; ///< The number of open regions of each kind.
    std::vector<Group> m_groups;
    Meaning m_object; ///< The signal whose name ends in front of the current token.
    bool m_hasObject = false;
    bool m_isUsed = false; ///< What was read last is a name that is not constant, or its field.
    /// The names whose declaration is being read. They become visible at its end.
    QByteArrayList m_declared;
    Meaning::Kind m_declaredKind = Meaning::Constant;
    QVector<VhdlComputedIndex> m_found;
};

IndexScan::IndexScan(const QByteArray &text, const VhdlUnit &architecture, const VhdlUnit *entity)
    : m_text(text)
    , m_architecture(architecture)
    , m_reader(VhdlTokens(text, architecture.range))
    , m_declarations(architecture.scopes.size())
{
    for (int i = 0; i < architecture.declarations.size(); ++i)
        m_declarations[architecture.declarations.at(i).scope].append(i);
    m_names.enter();
    if (entity) {
        QVector<int> all;
        for (int i = 0; i < entity->declarations.size(); ++i)
            all.append(i);
        declareInterface(entity->interface, 0);
        declareAll(*entity, all, 0);
    }
    m_names.enter();
    m_scopes.push_back(0);
    declareAll(architecture, m_declarations.value(0), 0);
}

void IndexScan::declareInterface(const VhdlInterface &interface, int scope)
{
    for (const VhdlInterfaceItem &generic : interface.generics)
        m_names.declare(foldedVhdlName(generic.name), Meaning());
    for (const VhdlInterfaceItem &port : interface.ports) {
        const QByteArray name = foldedVhdlName(port.name);
        m_names.declare(name, {Meaning::Signal, scope, name, 0});
    }
}

void IndexScan::declareAll(const VhdlUnit &unit, const QVector<int> &declarations, int scope)
{
    for (const int number : declarations) {
        const VhdlDeclaration &declaration = unit.declarations.at(number);
        const QByteArray name = foldedVhdlName(declaration.name);
        if (declaration.kind == VhdlDeclaration::Signal)
            m_names.declare(name, {Meaning::Signal, scope, name, 0});
        else if (declaration.kind == VhdlDeclaration::Variable)
            m_names.declare(name, {Meaning::Variable, scope, {}, 0});
        else if (declaration.kind == VhdlDeclaration::Alias && &unit == &m_architecture)
            declareAlias(name, declaration.type);
        else
            m_names.declare(name, Meaning());
    }
}

/// At a parenthesis: skips the group and tells whether it is a range.
bool skipRange(VhdlReader *reader)
{
    bool isRange = false;
    int depth = 0;
    do {
        const VhdlToken &token = reader->token();
        depth += token.is('(') ? 1 : token.is(')') ? -1 : 0;
        isRange =
            isRange || (depth == 1 && (token.is(VhdlKeyword::To) || token.is(VhdlKeyword::Downto) ||
                                       token.is(VhdlKeyword::Range)));
        reader->advance();
    } while (depth > 0 && !reader->atRegionWord());
    return isRange;
}

/// An alias stands for a variable, or for a signal or a field of one. The depth in an alias for an
/// element is that behind the name of the signal.
void IndexScan::declareAlias(const QByteArray &name, const TextRange &object)
{
    VhdlReader reader(VhdlTokens(m_text, object));
    const Meaning *known = m_names.find(foldedVhdlName(reader.token().text));
    Meaning meaning = known ? *known : Meaning();
    reader.advance();
    while (meaning.kind == Meaning::Signal && (reader.token().is('.') || reader.token().is('('))) {
        if (reader.skip('.')) {
            meaning.name += '.' + foldedVhdlName(reader.token().text);
            meaning.depth = 0;
            reader.advance();
        } else if (!skipRange(&reader)) {
            ++meaning.depth;
        }
    }
    m_names.declare(name, meaning);
}

QVector<VhdlComputedIndex> IndexScan::run()
{
    while (!m_reader.atEnd()) {
        leaveScopes();
        enterScopes();
        readToken();
    }
    return m_found;
}

void IndexScan::enterScopes()
{
    const QVector<VhdlScope> &scopes = m_architecture.scopes;
    while (m_nextScope < scopes.size() && scopes.at(m_nextScope).range.begin <= token().offset) {
        const VhdlScope &scope = scopes.at(m_nextScope);
        leaveAllRegions();
        m_names.enter();
        m_scopes.push_back(m_nextScope);
        declareInterface(scope.interface, m_nextScope);
        if (scope.kind == VhdlScope::ForGenerate)
            m_names.declare(foldedVhdlName(token(1).text), Meaning());
        declareAll(m_architecture, m_declarations.at(m_nextScope), m_nextScope);
        ++m_nextScope;
    }
}

void IndexScan::leaveScopes()
{
    while (m_scopes.size() > 1 &&
           m_architecture.scopes.at(m_scopes.back()).range.end <= token().offset) {
        leaveAllRegions();
        m_scopes.pop_back();
        m_names.leave();
    }
}

void IndexScan::readToken()
{
    if (m_isUsed && !token().is('.')) {
        m_isUsed = false;
        if (!token().is('\'') || !isStaticAttribute(token(1)))
            meetComputed();
    }
    switch (token().kind) {
    case VhdlToken::Identifier:
        return readName();
    case VhdlToken::Reserved:
        m_hasObject = false;
        return readKeyword();
    case VhdlToken::Punctuation:
        return readSign();
    default:
        m_hasObject = false;
        m_reader.advance();
    }
}

void IndexScan::readKeyword()
{
    const bool isLocal = !m_regions.empty();
    switch (token().keyword) {
    case VhdlKeyword::End:
        return readEnd();
    case VhdlKeyword::Process:
        enterRegion(Region::Process);
        break;
    case VhdlKeyword::Function:
    case VhdlKeyword::Procedure:
        return readSubprogram();
    case VhdlKeyword::Variable:
        return isLocal ? beginDeclaration(Meaning::Variable) : m_reader.advance();
    case VhdlKeyword::Constant:
        return isLocal ? beginDeclaration(Meaning::Constant) : m_reader.advance();
    case VhdlKeyword::Alias:
        return isLocal ? readAlias() : m_reader.advance();
    case VhdlKeyword::For:
        return isLocal && token(2).is(VhdlKeyword::In) ? beginDeclaration(Meaning::Constant)
                                                       : m_reader.advance();
    case VhdlKeyword::Loop:
        enterRegion(Region::Loop);
        endDeclaration();
        break;
    case VhdlKeyword::Range:
    case VhdlKeyword::To:
    case VhdlKeyword::Downto:
        if (!m_groups.empty())
            m_groups.back().isRange = true;
        break;
    default:
        break;
    }
    m_reader.advance();
}

/// "variable a, b", "constant a" or "for i", whose names become visible later.
void IndexScan::beginDeclaration(Meaning::Kind kind)
{
    m_reader.advance();
    m_declared.clear();
    m_declaredKind = kind;
    while (token().isName()) {
        m_declared.append(foldedVhdlName(token().text));
        m_reader.advance();
        if (!m_reader.skip(','))
            break;
    }
}

void IndexScan::endDeclaration()
{
    for (const QByteArray &name : m_declared)
        m_names.declare(name, {m_declaredKind, 0, {}, 0});
    m_declared.clear();
}

void IndexScan::enterRegion(Region region)
{
    ++m_open[std::size_t(region)];
    m_regions.push_back(region);
    m_names.enter();
}

/// Leaves the innermost region of this kind, with all within.
void IndexScan::leaveRegion(Region region)
{
    if (m_open[std::size_t(region)] == 0)
        return;
    bool found = false;
    while (!found) {
        found = m_regions.back() == region;
        leaveInnermostRegion();
    }
}

void IndexScan::leaveInnermostRegion()
{
    --m_open[std::size_t(m_regions.back())];
    m_regions.pop_back();
    m_names.leave();
}

/// Before a scope begins or ends, in a text with errors.
void IndexScan::leaveAllRegions()
{
    while (!m_regions.empty())
        leaveInnermostRegion();
}

void IndexScan::readEnd()
{
    m_groups.clear();
    m_declared.clear();
    m_reader.advance();
    m_reader.skip(VhdlKeyword::Postponed);
    switch (token().keyword) {
    case VhdlKeyword::Process:
        leaveRegion(Region::Process);
        break;
    case VhdlKeyword::Loop:
        leaveRegion(Region::Loop);
        break;
    case VhdlKeyword::None:
    case VhdlKeyword::Function:
    case VhdlKeyword::Procedure:
        if (!token().isWord("protected"))
            leaveRegion(Region::Subprogram);
        break;
    default:
        break;
    }
    while (!m_reader.atEnd() && !token().is(';'))
        m_reader.advance();
}

/// "alias name : type is object;" up to the object.
void IndexScan::readAlias()
{
    m_reader.advance();
    const QByteArray name = foldedVhdlName(token().text);
    while (!m_reader.atRegionWord() && !token().is(';') && !token().is(VhdlKeyword::Is))
        m_reader.advance();
    if (m_reader.skip(VhdlKeyword::Is))
        declareAlias(name, {token().offset, m_architecture.range.end});
}

/// The header of a subprogram. If a body follows, its parameters are variables there.
void IndexScan::readSubprogram()
{
    m_reader.advance();
    if (!isVhdlNameOrString(token())) // As in "attribute a of f : function is".
        return;
    m_reader.advance();
    QVector<VhdlInterfaceItem> parameters;
    while (!m_reader.atRegionWord() && !token().is(';') && !token().is(VhdlKeyword::Is)) {
        if (token().is('('))
            parameters = readVhdlItems(&m_reader);
        else
            m_reader.advance();
    }
    if (!token().is(VhdlKeyword::Is) || token(1).is(VhdlKeyword::New))
        return;
    enterRegion(Region::Subprogram);
    for (const VhdlInterfaceItem &parameter : parameters)
        m_names.declare(foldedVhdlName(parameter.name), {Meaning::Variable, 0, {}, 0});
}

void IndexScan::readSign()
{
    if (token().is('(')) {
        openGroup();
    } else if (token().is(')')) {
        closeGroup();
    } else if (m_hasObject && token().is('.') && token(1).isName()) {
        m_object.name += '.' + foldedVhdlName(token(1).text);
        m_object.depth = 0;
        m_reader.advance();
    } else {
        m_hasObject = false;
        if (token().is('.') || token().is('\'')) { // A component of a name or an attribute.
            if (token(1).is(VhdlKeyword::Range) && !m_groups.empty())
                m_groups.back().isRange = true;
            if (!token(1).is('('))
                m_reader.advance();
        } else if (token().is(';')) {
            m_groups.clear();
            endDeclaration();
        }
    }
    m_reader.advance();
}

void IndexScan::openGroup()
{
    m_groups.push_back({m_hasObject, m_hasObject ? m_object : Meaning(), false, false});
    m_hasObject = false;
}

void IndexScan::closeGroup()
{
    m_hasObject = false;
    if (m_groups.empty())
        return;
    const Group group = m_groups.back();
    m_groups.pop_back();
    if (group.isComputed && !m_groups.empty())
        m_groups.back().isComputed = true;
    if (!group.isIndex)
        return;
    if (group.isComputed)
        m_found.append({group.signal.scope, group.signal.name, group.signal.depth});
    m_hasObject = true;
    m_object = group.signal;
    m_object.depth += group.isRange ? 0 : 1;
}

/// Something that is not constant makes the group around it computed, and the constant or the range
/// of a loop that is being declared.
void IndexScan::meetComputed()
{
    if (!m_groups.empty())
        m_groups.back().isComputed = true;
    if (!m_declared.isEmpty())
        m_declaredKind = Meaning::Variable;
}

void IndexScan::readName()
{
    m_hasObject = false;
    const bool isFormal = token(1).is(VhdlToken::Arrow) && !m_groups.empty();
    const Meaning *meaning = isFormal ? nullptr : m_names.find(foldedVhdlName(token().text));
    if (meaning && meaning->kind != Meaning::Constant) {
        m_isUsed = true;
        m_hasObject = meaning->kind == Meaning::Signal;
        m_object = *meaning;
    }
    m_reader.advance();
}

} // namespace

QVector<VhdlComputedIndex> computedIndexes(const QByteArray &text, const VhdlUnit &architecture,
                                           const VhdlUnit *entity)
{
    return IndexScan(text, architecture, entity).run();
}

} // namespace NETWEIR::Internal
