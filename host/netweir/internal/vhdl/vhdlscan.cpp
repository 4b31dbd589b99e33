// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "vhdlscan.h"

#include "vhdlinterfaces.h"
#include "vhdlname.h"
#include "vhdlreader.h"

#include <netweir/internal/ground/itemat.h>

#include <algorithm>
#include <vector>

namespace NETWEIR::Internal {

namespace {

/// What an "end" can close within a unit.
struct Region
{
    enum Kind { Unit, Block, Generate, NestedPackage };

    Kind kind = Unit;
    int scope = 0;      ///< The current one; changes with the alternatives of a generate.
    int outerScope = 0; ///< Around the statement.
    VhdlScope::Kind generate = VhdlScope::Root;
    QByteArray label;
    TextRange selector; ///< See VhdlScope.
    TextRange opening;
    int line = 0;
    int column = 0;
};

/// Reads the declarations and statements of a unit behind its header, up to its end.
class UnitScan
{
public:
    UnitScan(VhdlReader *reader, VhdlUnit *unit)
        : m_reader(*reader)
        , m_unit(*unit)
    {
    }

    void run();

private:
    const VhdlToken &token(int ahead = 0) const { return m_reader.token(ahead); }
    int scope() const { return m_regions.back().scope; }
    void scanItem();
    bool scanDeclaration();
    void scanObjects(VhdlDeclaration::Kind kind);
    void scanAlias();
    void scanType();
    void scanRecord(const QByteArray &record);
    void scanField(const QByteArray &record);
    void scanSubtype();
    void scanComponent();
    void scanAttribute();
    void scanSubprogram();
    void scanNestedPackage();
    void scanUse();
    void scanBinding();
    bool atAlternative() const;
    void scanStatement();
    void scanLabelled();
    void scanBlock(const VhdlToken &label);
    void scanGenerate(const VhdlToken &label, VhdlScope::Kind kind);
    void scanAlternative();
    void scanInstance(const VhdlToken &label);
    void scanEnd();
    void endRegion(Region::Kind kind);
    void leaveRegions(std::size_t remaining);
    void enter(Region::Kind kind, VhdlScope::Kind scopeKind, const VhdlToken &label);
    void addScope(VhdlScope::Kind kind);
    void closeScope();
    TextRange takeHead();
    TextRange takeRange(bool stopsAtValue);
    VhdlDeclaration declarationHere(VhdlDeclaration::Kind kind) const;

    VhdlReader &m_reader;
    VhdlUnit &m_unit;
    std::vector<Region> m_regions;
    bool m_ended = false;
};

void UnitScan::run()
{
    m_unit.scopes.append(VhdlScope());
    m_regions.emplace_back();
    while (!m_ended && !m_reader.atUnitEnd())
        scanItem();
    m_unit.complete = m_ended;
    leaveRegions(0);
}

void UnitScan::scanItem()
{
    if (token().is(VhdlKeyword::End))
        scanEnd();
    else if (!scanDeclaration())
        scanStatement();
}

VhdlDeclaration UnitScan::declarationHere(VhdlDeclaration::Kind kind) const
{
    VhdlDeclaration declaration;
    declaration.kind = kind;
    declaration.name = token().bytes();
    declaration.scope = scope();
    declaration.line = token().line;
    declaration.column = token().column;
    return declaration;
}

/// False when no declaration begins here.
bool UnitScan::scanDeclaration()
{
    switch (token().keyword) {
    case VhdlKeyword::Signal:
        scanObjects(VhdlDeclaration::Signal);
        return true;
    case VhdlKeyword::Constant:
        scanObjects(VhdlDeclaration::Constant);
        return true;
    case VhdlKeyword::Shared:
    case VhdlKeyword::Variable:
        scanObjects(VhdlDeclaration::Variable);
        return true;
    case VhdlKeyword::File:
        scanObjects(VhdlDeclaration::File);
        return true;
    case VhdlKeyword::Alias:
        scanAlias();
        return true;
    case VhdlKeyword::Type:
        scanType();
        return true;
    case VhdlKeyword::Subtype:
        scanSubtype();
        return true;
    case VhdlKeyword::Component:
        scanComponent();
        return true;
    case VhdlKeyword::Attribute:
        scanAttribute();
        return true;
    case VhdlKeyword::Pure:
    case VhdlKeyword::Impure:
    case VhdlKeyword::Function:
    case VhdlKeyword::Procedure:
        scanSubprogram();
        return true;
    case VhdlKeyword::Package:
        scanNestedPackage();
        return true;
    case VhdlKeyword::Use:
        scanUse();
        return true;
    case VhdlKeyword::For:
        scanBinding();
        return true;
    default:
        return false;
    }
}

/// The rest of a declaration up to its semicolon or, if @p stopsAtValue, up to ":=".
TextRange UnitScan::takeRange(bool stopsAtValue)
{
    const int begin = token().offset;
    while (!m_reader.atRegionWord() && !token().is(';') &&
           !(stopsAtValue && token().is(VhdlToken::Becomes)))
        m_reader.advance();
    return m_reader.rangeFrom(begin);
}

/// "signal a, b : type := value;"
void UnitScan::scanObjects(VhdlDeclaration::Kind kind)
{
    m_reader.skip(VhdlKeyword::Shared);
    m_reader.advance();
    const int first = m_unit.declarations.size();
    while (token().isName()) {
        m_unit.declarations.append(declarationHere(kind));
        m_reader.advance();
        if (!m_reader.skip(','))
            break;
    }
    TextRange type;
    TextRange value;
    if (m_reader.skip(':'))
        type = takeRange(true);
    if (m_reader.skip(VhdlToken::Becomes))
        value = takeRange(false);
    for (int i = first; i < m_unit.declarations.size(); ++i) {
        m_unit.declarations[i].type = type;
        m_unit.declarations[i].value = value;
    }
    m_reader.skipToSemicolon();
}

/// "alias name : type is object;"
void UnitScan::scanAlias()
{
    m_reader.advance();
    VhdlDeclaration alias = declarationHere(VhdlDeclaration::Alias);
    while (!m_reader.atRegionWord() && !token().is(';') && !token().is(VhdlKeyword::Is))
        m_reader.advance();
    if (m_reader.skip(VhdlKeyword::Is))
        alias.type = takeRange(false);
    m_unit.declarations.append(alias);
    m_reader.skipToSemicolon();
}

void UnitScan::scanType()
{
    m_reader.advance();
    VhdlDeclaration type = declarationHere(VhdlDeclaration::Type);
    if (token().isName())
        m_reader.advance();
    if (!m_reader.skip(VhdlKeyword::Is)) {
        m_reader.skipToSemicolon();
        return;
    }
    const int begin = token().offset;
    if (m_reader.skip(VhdlKeyword::Record)) {
        scanRecord(type.name);
    } else if (token().isWord("protected")) {
        m_reader.advance();
        m_reader.skipBody();
    } else {
        while (!m_reader.atRegionWord() && !token().is(';') && !token().is(VhdlKeyword::Units))
            m_reader.advance();
        if (m_reader.skip(VhdlKeyword::Units))
            m_reader.skipBody();
    }
    type.type = m_reader.rangeFrom(begin);
    m_unit.declarations.append(type);
    m_reader.skip(';');
}

/// The fields of a record, and its end up to the semicolon.
void UnitScan::scanRecord(const QByteArray &record)
{
    while (!m_reader.atRegionWord())
        scanField(record);
    if (token().is(VhdlKeyword::End) && token(1).is(VhdlKeyword::Record)) {
        m_reader.advance();
        m_reader.advance();
        if (token().isName())
            m_reader.advance();
    }
}

/// "a, b : type;"
void UnitScan::scanField(const QByteArray &record)
{
    const int first = m_unit.fields.size();
    while (token().isName()) {
        m_unit.fields.append({record, token().bytes(), {}, scope()});
        m_reader.advance();
        if (!m_reader.skip(','))
            break;
    }
    m_reader.skip(':');
    const TextRange type = takeRange(false);
    for (int i = first; i < m_unit.fields.size(); ++i)
        m_unit.fields[i].type = type;
    m_reader.skipToSemicolon();
}

void UnitScan::scanSubtype()
{
    m_reader.advance();
    VhdlDeclaration subtype = declarationHere(VhdlDeclaration::Subtype);
    if (token().isName())
        m_reader.advance();
    if (m_reader.skip(VhdlKeyword::Is))
        subtype.type = takeRange(false);
    m_unit.declarations.append(subtype);
    m_reader.skipToSemicolon();
}

/// "component name is generic (...); port (...); end component;"
void UnitScan::scanComponent()
{
    VhdlComponent component;
    const int begin = token().offset;
    m_reader.advance();
    component.name = token().bytes();
    component.scope = scope();
    component.line = token().line;
    component.column = token().column;
    if (!token().isName())
        return;
    m_reader.advance();
    m_reader.skip(VhdlKeyword::Is);
    readVhdlInterface(&m_reader, &component.interface);
    if (token().is(VhdlKeyword::End) &&
        (token(1).is(VhdlKeyword::Component) || token(1).is(';') || token(1).isName()))
        m_reader.skipStatement();
    component.range = m_reader.rangeFrom(begin);
    m_unit.components.append(component);
}

/// "attribute name : type;" or "attribute name of ... is ...;"
void UnitScan::scanAttribute()
{
    m_reader.advance();
    if (token(1).is(':'))
        m_unit.declarations.append(declarationHere(VhdlDeclaration::Attribute));
    m_reader.skipToSemicolon();
}

void UnitScan::scanSubprogram()
{
    m_reader.skip(VhdlKeyword::Pure);
    m_reader.skip(VhdlKeyword::Impure);
    if (isVhdlNameOrString(token(1))) {
        VhdlDeclaration subprogram = declarationHere(VhdlDeclaration::Subprogram);
        subprogram.name = token(1).bytes();
        m_unit.declarations.append(subprogram);
    }
    m_reader.skipSubprogram();
}

/// A package within a declarative part: its components and types count as declared around it.
void UnitScan::scanNestedPackage()
{
    m_reader.advance();
    m_reader.skip(VhdlKeyword::Body);
    m_unit.declarations.append(declarationHere(VhdlDeclaration::Package));
    if (token().isName())
        m_reader.advance();
    if (!m_reader.skip(VhdlKeyword::Is) || token().is(VhdlKeyword::New)) {
        m_reader.skipToSemicolon();
        return;
    }
    Region region = m_regions.back();
    region.kind = Region::NestedPackage;
    m_regions.push_back(region);
}

void UnitScan::scanUse()
{
    m_reader.advance();
    do {
        const QByteArrayList name = m_reader.takeSelectedName();
        if (!name.isEmpty())
            m_unit.context.uses.append(name);
    } while (m_reader.skip(','));
    m_reader.skipToSemicolon();
}

void UnitScan::scanBinding()
{
    VhdlBinding binding = readVhdlBinding(&m_reader);
    binding.scope = scope();
    m_unit.bindings.append(binding);
}

/// At the next alternative of the innermost generate.
bool UnitScan::atAlternative() const
{
    const Region &region = m_regions.back();
    if (region.kind != Region::Generate)
        return false;
    if (region.generate == VhdlScope::CaseGenerate)
        return token().is(VhdlKeyword::When);
    return region.generate == VhdlScope::IfGenerate &&
           (token().is(VhdlKeyword::Elsif) || token().is(VhdlKeyword::Else));
}

void UnitScan::scanStatement()
{
    if (token().isName() && token(1).is(':')) {
        scanLabelled();
    } else if (token().is(VhdlKeyword::Process)) {
        m_reader.skipProcess();
    } else if (atAlternative()) {
        closeScope();
        scanAlternative();
    } else if (token().is(VhdlKeyword::Begin) || token().is(VhdlKeyword::Postponed) ||
               token().is(VhdlKeyword::Generate)) {
        m_reader.advance();
    } else {
        m_reader.skipToSemicolon();
    }
}

void UnitScan::scanLabelled()
{
    const VhdlToken label = token();
    m_reader.advance();
    m_reader.advance();
    switch (token().keyword) {
    case VhdlKeyword::Process:
        return m_reader.skipProcess();
    case VhdlKeyword::Block:
        return scanBlock(label);
    case VhdlKeyword::For:
        return scanGenerate(label, VhdlScope::ForGenerate);
    case VhdlKeyword::If:
        return scanGenerate(label, VhdlScope::IfGenerate);
    case VhdlKeyword::Case:
        return scanGenerate(label, VhdlScope::CaseGenerate);
    default:
        return scanInstance(label);
    }
}

void UnitScan::enter(Region::Kind kind, VhdlScope::Kind scopeKind, const VhdlToken &label)
{
    Region region;
    region.kind = kind;
    region.outerScope = scope();
    region.scope = region.outerScope;
    region.generate = scopeKind;
    region.label = label.bytes();
    region.line = label.line;
    region.column = label.column;
    m_regions.push_back(region);
}

/// A new scope for the innermost region, within the one around its statement.
void UnitScan::addScope(VhdlScope::Kind kind)
{
    Region &region = m_regions.back();
    VhdlScope scope;
    scope.kind = kind;
    scope.parent = region.outerScope;
    scope.conditional = kind != VhdlScope::Block || m_unit.scopes.at(scope.parent).conditional;
    scope.label = region.label;
    scope.range.begin = token().offset;
    scope.selector = region.selector;
    scope.opening = region.opening;
    scope.line = region.line;
    scope.column = region.column;
    region.scope = m_unit.scopes.size();
    m_unit.scopes.append(scope);
}

/// Ends the range of the innermost scope in front of the current token.
void UnitScan::closeScope()
{
    const Region &region = m_regions.back();
    if (region.scope != region.outerScope)
        m_unit.scopes[region.scope].range.end = m_reader.end();
}

/// "block (guard) is generic (...); port (...);"
void UnitScan::scanBlock(const VhdlToken &label)
{
    enter(Region::Block, VhdlScope::Block, label);
    addScope(VhdlScope::Block);
    m_reader.advance();
    m_reader.skipGroup();
    m_reader.skip(VhdlKeyword::Is);
    VhdlScope &block = m_unit.scopes.last();
    readVhdlInterface(&m_reader, &block.interface, &block.ports);
}

void UnitScan::scanGenerate(const VhdlToken &label, VhdlScope::Kind kind)
{
    enter(Region::Generate, kind, label);
    if (kind != VhdlScope::CaseGenerate) {
        scanAlternative();
        return;
    }
    Region &region = m_regions.back();
    const int begin = token().offset;
    m_reader.advance();
    region.selector = takeHead();
    m_reader.skip(VhdlKeyword::Generate);
    region.opening = m_reader.rangeFrom(begin);
}

/// At "for", "if", "elsif", "else" or "when": its condition up to the body.
void UnitScan::scanAlternative()
{
    addScope(m_regions.back().generate);
    VhdlScope &scope = m_unit.scopes.last();
    m_reader.advance();
    if (token().isName() && token(1).is(':')) {
        scope.alternative = token().bytes();
        m_reader.advance();
        m_reader.advance();
    }
    scope.head = takeHead();
    if (!m_reader.skip(VhdlToken::Arrow))
        m_reader.skip(VhdlKeyword::Generate);
}

/// The text up to "generate" or, outside of parentheses, up to "=>".
TextRange UnitScan::takeHead()
{
    const int begin = token().offset;
    int depth = 0;
    while (!m_reader.atRegionWord() && !token().is(';') &&
           !(depth == 0 && token().is(VhdlToken::Arrow))) {
        depth += token().is('(') ? 1 : token().is(')') ? -1 : 0;
        m_reader.advance();
    }
    return m_reader.rangeFrom(begin);
}

void UnitScan::scanInstance(const VhdlToken &label)
{
    VhdlInstance instance;
    if (!readVhdlInstance(&m_reader, &instance)) {
        m_reader.skipToSemicolon();
        return;
    }
    instance.label = label.bytes();
    instance.scope = scope();
    instance.conditional = m_unit.scopes.at(instance.scope).conditional;
    instance.range = m_reader.rangeFrom(label.offset);
    instance.line = label.line;
    instance.column = label.column;
    m_unit.instances.append(instance);
}

/// Words that nothing here opens, as in "end process", belong to what was not understood.
void UnitScan::scanEnd()
{
    const Region::Kind innermost = m_regions.back().kind;
    switch (token(1).keyword) {
    case VhdlKeyword::Generate:
        return endRegion(Region::Generate);
    case VhdlKeyword::Block:
        return endRegion(Region::Block);
    case VhdlKeyword::Package:
        return endRegion(innermost == Region::NestedPackage ? innermost : Region::Unit);
    case VhdlKeyword::Architecture:
    case VhdlKeyword::Entity:
        return endRegion(Region::Unit);
    case VhdlKeyword::None:
        // "end;" and "end name;" end a package or unit, or the body of an alternative.
        if (innermost == Region::NestedPackage || innermost == Region::Unit)
            return endRegion(innermost);
        [[fallthrough]];
    default:
        m_reader.skipStatement();
    }
}

/// Ends the innermost region of this kind, with all within.
void UnitScan::endRegion(Region::Kind kind)
{
    m_reader.skipStatement();
    const auto found = std::find_if(m_regions.rbegin(), m_regions.rend(),
                                    [kind](const Region &region) { return region.kind == kind; });
    if (found == m_regions.rend())
        return;
    leaveRegions(std::size_t(m_regions.rend() - found) - 1);
    m_ended = m_regions.empty();
}

/// Ends the innermost regions, so that @p remaining ones are left.
void UnitScan::leaveRegions(std::size_t remaining)
{
    while (m_regions.size() > remaining) {
        if (m_regions.back().kind != Region::NestedPackage)
            closeScope();
        m_regions.pop_back();
    }
}

/// Reads the units of a text.
class FileScan
{
public:
    explicit FileScan(const QByteArray &text)
        : m_reader(VhdlTokens(text))
    {
    }

    VhdlFile run();

private:
    const VhdlToken &token(int ahead = 0) const { return m_reader.token(ahead); }
    bool scanContextClause();
    void scanUnit();
    VhdlUnit unitHere(VhdlUnit::Kind kind) const;
    void scanEntity();
    void scanArchitecture();
    void scanPackage();
    void scanConfiguration();
    void scanBindings(VhdlUnit *unit);
    void scanContextDeclaration();
    void takeNames(QVector<QByteArrayList> *names);
    void add(const VhdlUnit &unit);

    VhdlReader m_reader;
    VhdlFile m_file;
    VhdlContext m_context;
    int m_begin = 0; ///< Of the unit.
};

VhdlFile FileScan::run()
{
    while (!m_reader.atEnd()) {
        if (!scanContextClause())
            scanUnit();
    }
    return m_file;
}

/// "library a, b;", "use a.b.all;" or "context a.b;". False when none is here.
bool FileScan::scanContextClause()
{
    const bool isReference = token().isWord("context") && !token(2).is(VhdlKeyword::Is);
    const bool isLibrary = token().is(VhdlKeyword::Library);
    if (!isReference && !isLibrary && !token().is(VhdlKeyword::Use))
        return false;
    if (m_context.range.end == 0)
        m_context.range.begin = token().offset;
    const bool isUse = token().is(VhdlKeyword::Use);
    m_reader.advance();
    QVector<QByteArrayList> names;
    takeNames(&names);
    for (const QByteArrayList &name : names) {
        if (isLibrary)
            m_context.libraries.append(name.first());
        else
            (isUse ? m_context.uses : m_context.contexts).append(name);
    }
    m_context.range.end = m_reader.end();
    return true;
}

/// Names with commas up to a semicolon.
void FileScan::takeNames(QVector<QByteArrayList> *names)
{
    do {
        const QByteArrayList name = m_reader.takeSelectedName();
        if (!name.isEmpty())
            names->append(name);
    } while (m_reader.skip(','));
    if (!m_reader.skip(';') && !m_reader.atUnitEnd())
        m_reader.skipToSemicolon();
}

void FileScan::scanUnit()
{
    m_begin = token().offset;
    const bool isDeclaration = token(2).is(VhdlKeyword::Is) && token(1).isName();
    if (m_reader.atUnitStart() && token().is(VhdlKeyword::Entity))
        scanEntity();
    else if (m_reader.atUnitStart() && token().is(VhdlKeyword::Architecture))
        scanArchitecture();
    else if (m_reader.atUnitStart())
        scanConfiguration();
    else if (token().is(VhdlKeyword::Package) && (isDeclaration || token(1).is(VhdlKeyword::Body)))
        scanPackage();
    else if (token().isWord("context") && isDeclaration)
        scanContextDeclaration();
    else
        m_reader.advance();
}

/// A unit whose name is the current token.
VhdlUnit FileScan::unitHere(VhdlUnit::Kind kind) const
{
    VhdlUnit unit;
    unit.kind = kind;
    unit.name = token().bytes();
    unit.line = token().line;
    unit.column = token().column;
    unit.context = m_context;
    return unit;
}

void FileScan::add(const VhdlUnit &unit)
{
    m_file.units.append(unit);
    VhdlUnit &added = m_file.units.last();
    added.range = m_reader.rangeFrom(m_begin);
    if (!added.scopes.isEmpty())
        added.scopes.first().range = added.range;
    m_context = {};
}

/// "entity name is generic (...); port (...); ... end;"
void FileScan::scanEntity()
{
    m_reader.advance();
    VhdlUnit unit = unitHere(VhdlUnit::Entity);
    m_reader.advance();
    m_reader.skip(VhdlKeyword::Is);
    readVhdlInterface(&m_reader, &unit.interface);
    UnitScan(&m_reader, &unit).run();
    add(unit);
}

/// "architecture name of entity is ... begin ... end;"
void FileScan::scanArchitecture()
{
    m_reader.advance();
    VhdlUnit unit = unitHere(VhdlUnit::Architecture);
    m_reader.advance();
    m_reader.skip(VhdlKeyword::Of);
    unit.of = m_reader.takeSelectedName();
    m_reader.skip(VhdlKeyword::Is);
    UnitScan(&m_reader, &unit).run();
    add(unit);
}

/// "package name is ... end;", "package body name is ... end;", "package name is new ...;"
void FileScan::scanPackage()
{
    m_reader.advance();
    const bool isBody = m_reader.skip(VhdlKeyword::Body);
    VhdlUnit unit = unitHere(isBody ? VhdlUnit::PackageBody : VhdlUnit::Package);
    if (token().isName())
        m_reader.advance();
    m_reader.skip(VhdlKeyword::Is);
    if (m_reader.skip(VhdlKeyword::New)) {
        unit.kind = VhdlUnit::PackageInstance;
        unit.of = m_reader.takeSelectedName();
        m_reader.skipToSemicolon();
        unit.complete = true;
    } else {
        readVhdlInterface(&m_reader, &unit.interface);
        UnitScan(&m_reader, &unit).run();
    }
    add(unit);
}

/// "configuration name of entity is ... end;"
void FileScan::scanConfiguration()
{
    m_reader.advance();
    VhdlUnit unit = unitHere(VhdlUnit::Configuration);
    m_reader.advance();
    m_reader.skip(VhdlKeyword::Of);
    unit.of = m_reader.takeSelectedName();
    m_reader.skip(VhdlKeyword::Is);
    scanBindings(&unit);
    add(unit);
}

/// Each "for" up to its "end for;" is a level: an architecture, a block or generate, or instances.
void FileScan::scanBindings(VhdlUnit *unit)
{
    QByteArrayList path;
    while (!m_reader.atUnitEnd() && !unit->complete) {
        if (token().is(VhdlKeyword::End)) {
            unit->complete = !token(1).is(VhdlKeyword::For);
            if (!path.isEmpty())
                path.removeLast();
            m_reader.skipStatement();
        } else if (!token().is(VhdlKeyword::For)) {
            m_reader.skipStatement();
        } else if (token(2).is(':') || token(2).is(',')) {
            VhdlBinding binding = readVhdlBinding(&m_reader);
            binding.path = path;
            unit->bindings.append(binding);
            path.append(binding.labels.join(','));
        } else {
            m_reader.advance();
            path.append(token().bytes());
            m_reader.advance();
            m_reader.skipGroup();
        }
    }
}

/// "context name is ... end;"
void FileScan::scanContextDeclaration()
{
    m_reader.advance();
    VhdlUnit unit = unitHere(VhdlUnit::Context);
    m_context = {};
    m_reader.advance();
    m_reader.advance();
    while (scanContextClause()) {
    }
    unit.context = m_context;
    if (token().is(VhdlKeyword::End)) {
        m_reader.skipStatement();
        unit.complete = true;
    }
    add(unit);
}

} // namespace

VhdlFile scanVhdl(const QByteArray &text)
{
    return FileScan(text).run();
}

} // namespace NETWEIR::Internal
