// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "modulescan.h"

#include "tiednets.h"
#include "tokenreader.h"

namespace NETWEIR::Internal {

namespace {

/// An end without a begin, or the end of something that was skipped.
bool isStrayEnd(const Token &token)
{
    switch (token.keyword) {
    case Keyword::Endchecker:
    case Keyword::Endclass:
    case Keyword::Endclocking:
    case Keyword::Endconfig:
    case Keyword::Endfunction:
    case Keyword::Endgroup:
    case Keyword::Endpackage:
    case Keyword::Endprimitive:
    case Keyword::Endproperty:
    case Keyword::Endsequence:
    case Keyword::Endspecify:
    case Keyword::Endtask:
    case Keyword::Join:
        return true;
    default:
        return false;
    }
}

DesignUnit::Kind unitKind(Keyword keyword)
{
    switch (keyword) {
    case Keyword::Interface:
        return DesignUnit::Interface;
    case Keyword::Program:
        return DesignUnit::Program;
    case Keyword::Primitive:
        return DesignUnit::Primitive;
    case Keyword::Checker:
        return DesignUnit::Checker;
    default:
        return DesignUnit::Module;
    }
}

/// Walks over the items of units. Nested units and generate blocks are kept on explicit stacks, so
/// no text can exhaust the stack of the program.
class Scanner
{
public:
    Scanner(const QByteArray &text, int index, bool systemVerilog, ModuleScan *result)
        : m_reader(VerilogTokens(text, systemVerilog))
        , m_index(index)
        , m_result(result)
    {
    }

    void run();

private:
    enum Block { Plain, Conditional };

    struct OpenUnit
    {
        int index;             ///< In the result's units.
        QVector<Block> blocks; ///< Open generate blocks and cases.
    };

    const Token &token() const { return m_reader.token(); }
    bool inUnit() const { return !m_open.isEmpty(); }
    DesignUnit &unit() { return m_result->units[m_open.last().index]; }

    void scanItem();
    bool scanRegion();
    bool scanGenerate();
    void scanStatement();
    void scanOtherItem();
    void openUnit();
    void closeUnit();
    void openBlock(bool conditional);
    void closeBlock();
    bool isConditional() const;

    void scanInstantiation();
    void scanBind();
    bool scanBinding();
    void scanDefparams();
    Defparam readDefparam();

    void skipDefault();
    void skipVirtual();
    void skipToSemicolonOrLabel();
    void skipClass();
    void skipClocking();

    TokenReader m_reader;
    int m_index;
    ModuleScan *m_result;
    QVector<OpenUnit> m_open;
    bool m_branch = false; ///< The next item belongs to an if, else, for or case.
};

void Scanner::run()
{
    while (!m_reader.atEnd())
        scanItem();
    if (inUnit())
        m_result->balanced = false;
}

void Scanner::scanItem()
{
    if (m_reader.atAttribute()) {
        m_reader.skipAttribute();
    } else if (token().is('(')) {
        m_reader.advance();
    } else if (endsUnit(token())) {
        closeUnit();
    } else if (scanRegion()) {
        m_branch = false;
    } else if (!inUnit()) {
        m_reader.advance();
    } else if (token().kind != Token::Reserved) {
        scanOtherItem();
    } else if (!scanGenerate()) {
        scanStatement();
        m_branch = false;
    }
}

/// Handles items that have an end keyword or may be outside of modules.
bool Scanner::scanRegion()
{
    const Keyword keyword = token().keyword;
    switch (keyword) {
    case Keyword::Module:
    case Keyword::Interface:
    case Keyword::Program:
        openUnit();
        break;
    case Keyword::Primitive:
    case Keyword::Checker:
        openUnit();
        m_reader.skipPast(endOf(keyword));
        break;
    case Keyword::Config:
    case Keyword::Covergroup:
    case Keyword::Function:
    case Keyword::Package:
    case Keyword::Property:
    case Keyword::Sequence:
    case Keyword::Specify:
    case Keyword::Task:
        m_reader.skipPast(endOf(keyword));
        break;
    case Keyword::Class:
        skipClass();
        break;
    case Keyword::Clocking:
        skipClocking();
        break;
    case Keyword::Extern:
    case Keyword::Typedef:
        m_reader.skipToSemicolon();
        break;
    case Keyword::Virtual:
        skipVirtual();
        break;
    case Keyword::Bind:
        scanBind();
        break;
    default:
        return false;
    }
    return true;
}

/// Handles keywords that decide which items are generated, and how often. False for another
/// keyword.
bool Scanner::scanGenerate()
{
    switch (token().keyword) {
    case Keyword::If:
    case Keyword::For:
        m_reader.advance();
        m_reader.skipGroup();
        m_branch = true;
        break;
    case Keyword::Case:
        m_reader.advance();
        m_reader.skipGroup();
        openBlock(true);
        break;
    case Keyword::Else:
        m_reader.advance();
        m_branch = true;
        break;
    case Keyword::Begin:
        m_reader.advance();
        m_reader.skipLabel();
        openBlock(m_branch);
        break;
    case Keyword::End:
    case Keyword::Endcase:
        closeBlock();
        m_reader.advance();
        m_reader.skipLabel();
        break;
    case Keyword::Generate:
    case Keyword::Endgenerate:
        m_reader.advance();
        break;
    case Keyword::Default:
        skipDefault();
        break;
    default:
        return false;
    }
    return true;
}

/// An item that begins with any other keyword.
void Scanner::scanStatement()
{
    switch (token().keyword) {
    case Keyword::Always:
    case Keyword::Assert:
        m_reader.skipStatement();
        break;
    case Keyword::Tran:
        readSwitches(&m_reader, &unit().tiedNets);
        break;
    case Keyword::Alias:
        readAlias(&m_reader, &unit().tiedNets);
        break;
    case Keyword::Defparam:
        scanDefparams();
        break;
    default:
        if (isStrayEnd(token())) {
            m_reader.advance();
            m_reader.skipLabel();
        } else {
            TokenReader ahead = m_reader;
            readHeaderItem(&ahead, &unit().header);
            m_reader.skipToSemicolon();
        }
    }
}

void Scanner::scanOtherItem()
{
    if (token().is(';')) {
        m_reader.advance();
        m_branch = false;
    } else if (token().kind == Token::Identifier) {
        scanInstantiation();
    } else {
        skipToSemicolonOrLabel();
    }
}

void Scanner::openUnit()
{
    const DesignUnit::Kind kind = unitKind(token().keyword);
    m_reader.advance();
    if (token().is(Keyword::Class)) { // interface class
        skipClass();
        return;
    }
    while (token().is(Keyword::Other)) // automatic, static
        m_reader.advance();
    if (token().kind != Token::Identifier) {
        m_result->balanced = false;
        return;
    }
    DesignUnit unit;
    unit.name = toBytes(token().text);
    unit.kind = kind;
    unit.line = {m_index, token().line};
    unit.nested = inUnit();
    m_result->units.append(unit);
    if (kind == DesignUnit::Primitive || kind == DesignUnit::Checker)
        return;
    m_open.append(OpenUnit{m_result->units.size() - 1, {}});
    m_reader.advance();
    while (token().is(Keyword::Extern)) // import of packages
        m_reader.skipToSemicolon();
    TokenReader ahead = m_reader;
    readModuleHeader(&ahead, &m_result->units.last().header);
    m_reader.skipToSemicolon();
}

void Scanner::closeUnit()
{
    m_reader.advance();
    m_reader.skipLabel();
    m_branch = false;
    if (inUnit())
        m_open.removeLast();
    else
        m_result->balanced = false;
}

void Scanner::openBlock(bool conditional)
{
    m_open.last().blocks.append(conditional || isConditional() ? Conditional : Plain);
    m_branch = false;
}

void Scanner::closeBlock()
{
    m_branch = false;
    if (!m_open.last().blocks.isEmpty())
        m_open.last().blocks.removeLast();
}

bool Scanner::isConditional() const
{
    const QVector<Block> &blocks = m_open.last().blocks;
    return m_branch || (!blocks.isEmpty() && blocks.last() == Conditional);
}

/// An identifier at the beginning of an item: an instantiation, or another item that begins with an
/// identifier.
void Scanner::scanInstantiation()
{
    if (m_reader.following().is(':')) { // A label; the labelled item follows.
        m_reader.advance();
        m_reader.advance();
        return;
    }
    Instantiation instantiation;
    instantiation.conditional = isConditional();
    if (readInstantiation(&m_reader, m_index, &instantiation)) {
        unit().instantiations.append(instantiation);
        m_reader.skipToSemicolon();
        m_branch = false;
    } else {
        skipToSemicolonOrLabel();
    }
}

/// bind TARGET [: INSTANCE, ...] MODULE ... ; of these only the module matters.
void Scanner::scanBind()
{
    m_reader.advance();
    while (token().kind == Token::Identifier && !scanBinding()) {
        m_reader.advance();
        while (token().is('['))
            m_reader.skipGroup();
        while (token().is('.') || token().is(':') || token().is(','))
            m_reader.advance();
    }
    m_reader.skipToSemicolon();
}

/// False, without moving on, when the identifier names no module that is bound.
bool Scanner::scanBinding()
{
    const Token following = m_reader.following();
    if (!following.is('#') && following.kind != Token::Identifier)
        return false;
    TokenReader ahead = m_reader;
    Instantiation instantiation;
    if (!readInstantiation(&ahead, m_index, &instantiation) || instantiation.bare)
        return false;
    m_reader = ahead;
    instantiation.conditional = true;
    m_result->bindings.append(instantiation);
    return true;
}

/// defparam PATH.PARAMETER = VALUE, ... ;
void Scanner::scanDefparams()
{
    do {
        m_reader.advance();
        const Defparam defparam = readDefparam();
        if (!defparam.instance.isEmpty())
            unit().defparams.append(defparam);
        while (!m_reader.atUnitEnd() && !token().is(',') && !token().is(';'))
            m_reader.advanceOverGroup();
    } while (token().is(','));
    m_reader.skipToSemicolon();
}

/// The last two names of a path.
Defparam Scanner::readDefparam()
{
    Defparam defparam;
    while (token().kind == Token::Identifier) {
        defparam.instance = defparam.parameter;
        defparam.parameter = toBytes(token().text);
        m_reader.advance();
        while (token().is('['))
            m_reader.skipGroup();
        if (!token().is('.'))
            break;
        m_reader.advance();
    }
    return defparam;
}

/// "default :" of a case, a clocking block, or the first word of another item.
void Scanner::skipDefault()
{
    m_reader.advance();
    if (token().is(':'))
        m_reader.advance();
    else if (token().is(Keyword::Clocking))
        skipClocking();
}

/// The first word of a class, or the declaration of an interface variable.
void Scanner::skipVirtual()
{
    m_reader.advance();
    if (!token().is(Keyword::Class))
        m_reader.skipToSemicolon();
}

/// The end of an item of unknown kind, or of the label of a generate case: a colon that does not
/// belong to a conditional expression.
void Scanner::skipToSemicolonOrLabel()
{
    bool mayBeLabel = true;
    while (!m_reader.atUnitEnd() && !token().is(';') && !(mayBeLabel && token().is(':'))) {
        if (token().is('=') || token().is('?'))
            mayBeLabel = false;
        m_reader.advanceOverGroup();
    }
    if (m_reader.atUnitEnd())
        return;
    if (token().is(';'))
        m_branch = false;
    m_reader.advance();
}

/// Classes nest, and their methods may be declared without a body.
void Scanner::skipClass()
{
    int depth = 0;
    bool isForward = false; // typedef class NAME;
    while (!m_reader.atUnitEnd()) {
        if (token().is(Keyword::Class) && !isForward)
            ++depth;
        isForward = token().is(Keyword::Typedef);
        const bool closes = token().is(Keyword::Endclass);
        m_reader.advance();
        if (closes && --depth <= 0) {
            m_reader.skipLabel();
            return;
        }
    }
}

/// "default clocking NAME;" refers to a block; any other text that begins this way is a block.
void Scanner::skipClocking()
{
    bool hasEvent = false;
    while (!m_reader.atUnitEnd() && !token().is(';')) {
        hasEvent = hasEvent || token().is('@');
        m_reader.advance();
    }
    if (hasEvent)
        m_reader.skipPast(Keyword::Endclocking);
}

} // namespace

void scanModules(const QByteArray &text, int index, bool systemVerilog, ModuleScan *result)
{
    Scanner(text, index, systemVerilog, result).run();
}

} // namespace NETWEIR::Internal
