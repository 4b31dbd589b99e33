// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "modulescan.h"

#include "verilogtokens.h"

namespace NETWEIR::Internal {

namespace {

/// The end of something that was skipped already or never began.
bool endsRegion(const Token &token)
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

/// A list in parentheses, of parameters or of pins.
struct Connections
{
    QByteArrayList named;
    int positional = 0;
};

/// Walks over the items of units. m_token is the token to be looked at next. Nested units and
/// generate blocks are kept on stacks of its own, so that no text can exhaust the program's.
class Scanner
{
public:
    Scanner(const QByteArray &text, int index, bool systemVerilog, ModuleScan *result)
        : m_text(text.constData())
        , m_tokens(text, systemVerilog)
        , m_index(index)
        , m_result(result)
    {
        advance();
    }

    void run();

private:
    enum Block { Plain, Conditional };

    struct OpenUnit
    {
        int index;             ///< In the result's units.
        QVector<Block> blocks; ///< Open generate blocks and cases.
    };

    void advance() { m_token = m_tokens.next(); }
    Token nextToken() const { return VerilogTokens(m_tokens).next(); }
    bool atEnd() const { return m_token.kind == Token::EndOfText; }
    bool inUnit() const { return !m_open.isEmpty(); }
    DesignUnit &unit() { return m_result->units[m_open.last().index]; }

    void scanItem();
    bool scanRegion();
    void scanGenerate();
    void scanOtherItem();
    void openUnit(DesignUnit::Kind kind);
    void closeUnit();
    void openBlock(bool conditional);
    void closeBlock();
    bool isConditional() const;

    void scanInstantiation();
    bool scanOneInstantiation(Instantiation *instantiation);
    void scanValues(Instantiation *instantiation);
    bool scanInstances(Instantiation *instantiation);
    void scanBind();
    void scanDefparam();
    Connections scanConnections();
    void scanSwitches();
    void scanTerminals();
    void scanAlias();

    void skipAttribute();
    void skipGroup();
    void skipRanges(Instantiation *instantiation);
    void skipToSemicolon();
    void skipToSemicolonOrLabel();
    void skipPast(Keyword keyword);
    void skipClass();
    void skipClocking();
    void skipProcess();
    void skipLabel();

    int position() const { return int(m_token.place - m_text); }

    const char *m_text;
    VerilogTokens m_tokens;
    Token m_token;
    int m_index;
    ModuleScan *m_result;
    QVector<OpenUnit> m_open;
    bool m_branch = false; ///< The next item belongs to an if, else, for or case.
};

void Scanner::run()
{
    while (!atEnd())
        scanItem();
    if (inUnit())
        m_result->balanced = false;
}

void Scanner::scanItem()
{
    if (m_token.is('(')) {
        skipAttribute();
    } else if (endsUnit(m_token)) {
        closeUnit();
    } else if (scanRegion()) {
        m_branch = false;
    } else if (!inUnit()) {
        advance();
    } else if (m_token.kind == Token::Reserved) {
        scanGenerate();
    } else {
        scanOtherItem();
    }
}

/// What has an end keyword of its own or can stand outside of modules too.
bool Scanner::scanRegion()
{
    if (m_token.kind != Token::Reserved)
        return false;
    switch (m_token.keyword) {
    case Keyword::Module:
        openUnit(DesignUnit::Module);
        break;
    case Keyword::Interface:
        openUnit(DesignUnit::Interface);
        break;
    case Keyword::Program:
        openUnit(DesignUnit::Program);
        break;
    case Keyword::Primitive:
        openUnit(DesignUnit::Primitive);
        skipPast(Keyword::Endprimitive);
        break;
    case Keyword::Checker:
        openUnit(DesignUnit::Checker);
        skipPast(Keyword::Endchecker);
        break;
    case Keyword::Package:
        skipPast(Keyword::Endpackage);
        break;
    case Keyword::Config:
        skipPast(Keyword::Endconfig);
        break;
    case Keyword::Class:
        skipClass();
        break;
    case Keyword::Function:
        skipPast(Keyword::Endfunction);
        break;
    case Keyword::Task:
        skipPast(Keyword::Endtask);
        break;
    case Keyword::Covergroup:
        skipPast(Keyword::Endgroup);
        break;
    case Keyword::Property:
        skipPast(Keyword::Endproperty);
        break;
    case Keyword::Sequence:
        skipPast(Keyword::Endsequence);
        break;
    case Keyword::Specify:
        skipPast(Keyword::Endspecify);
        break;
    case Keyword::Clocking:
        skipClocking();
        break;
    case Keyword::Extern:
    case Keyword::Typedef:
        skipToSemicolon();
        break;
    case Keyword::Virtual:
        advance();
        if (!m_token.is(Keyword::Class))
            skipToSemicolon();
        break;
    case Keyword::Bind:
        scanBind();
        break;
    default:
        return false;
    }
    return true;
}

/// The keywords of generate constructs; every other one begins an item without instances.
void Scanner::scanGenerate()
{
    switch (m_token.keyword) {
    case Keyword::If:
    case Keyword::For:
        advance();
        skipGroup();
        m_branch = true;
        break;
    case Keyword::Case:
        advance();
        skipGroup();
        openBlock(true);
        break;
    case Keyword::Else:
        advance();
        m_branch = true;
        break;
    case Keyword::Begin:
        advance();
        skipLabel();
        openBlock(m_branch);
        break;
    case Keyword::End:
    case Keyword::Endcase:
        closeBlock();
        advance();
        skipLabel();
        break;
    case Keyword::Generate:
    case Keyword::Endgenerate:
        advance();
        break;
    case Keyword::Default:
        advance();
        if (m_token.is(':'))
            advance();
        else if (m_token.is(Keyword::Clocking))
            skipClocking();
        break;
    case Keyword::Always:
    case Keyword::Assert:
        skipProcess();
        m_branch = false;
        break;
    case Keyword::Tran:
        scanSwitches();
        m_branch = false;
        break;
    case Keyword::Alias:
        scanAlias();
        m_branch = false;
        break;
    case Keyword::Defparam:
        scanDefparam();
        m_branch = false;
        break;
    default:
        if (endsRegion(m_token)) {
            advance();
            skipLabel();
        } else {
            skipToSemicolon();
        }
        m_branch = false;
    }
}

void Scanner::scanOtherItem()
{
    if (m_token.is(';')) {
        advance();
        m_branch = false;
    } else if (m_token.kind == Token::Identifier) {
        scanInstantiation();
    } else {
        skipToSemicolonOrLabel();
    }
}

void Scanner::openUnit(DesignUnit::Kind kind)
{
    advance();
    if (m_token.is(Keyword::Class)) { // interface class
        skipClass();
        return;
    }
    while (m_token.is(Keyword::Other)) // automatic, static
        advance();
    if (m_token.kind != Token::Identifier) {
        m_result->balanced = false;
        return;
    }
    DesignUnit unit;
    unit.name = toBytes(m_token.text);
    unit.kind = kind;
    unit.place = {m_index, m_token.line};
    unit.nested = inUnit();
    m_result->units.append(unit);
    if (kind == DesignUnit::Primitive || kind == DesignUnit::Checker)
        return;
    m_open.append(OpenUnit{m_result->units.size() - 1, {}});
    advance();
    while (m_token.is(Keyword::Extern)) // import of packages
        skipToSemicolon();
    skipToSemicolon();
}

void Scanner::closeUnit()
{
    advance();
    skipLabel();
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

/// An identifier at the beginning of an item: an instantiation, or one of the many other things
/// that begin with an identifier.
void Scanner::scanInstantiation()
{
    if (nextToken().is(':')) { // A label; what it labels follows.
        advance();
        advance();
        return;
    }
    Instantiation instantiation;
    instantiation.conditional = isConditional();
    if (scanOneInstantiation(&instantiation)) {
        unit().instantiations.append(instantiation);
        skipToSemicolon();
        m_branch = false;
    } else {
        skipToSemicolonOrLabel();
    }
}

/// NAME #(PARAMETERS) INSTANCE [RANGE] (PINS), ... up to the semicolon. Of a primitive, strengths
/// in parentheses may stand in front of its delays, and names may be missing.
bool Scanner::scanOneInstantiation(Instantiation *instantiation)
{
    instantiation->module = toBytes(m_token.text);
    instantiation->first = {m_index, m_token.line};
    const bool isSystemTask = *m_token.place == '$';
    advance();
    if (m_token.is('(') && nextToken().kind == Token::Reserved) {
        const int begin = position();
        skipGroup();
        instantiation->values.append({begin, position()});
    }
    if (m_token.is('#'))
        scanValues(instantiation);
    const bool mayBegin = m_token.kind == Token::Identifier || (m_token.is('(') && !isSystemTask);
    const bool isInstantiation = mayBegin && scanInstances(instantiation);
    instantiation->last = {m_index, m_token.line};
    return isInstantiation;
}

/// At the hash.
void Scanner::scanValues(Instantiation *instantiation)
{
    const int begin = position();
    advance();
    if (m_token.is('(')) {
        const Connections parameters = scanConnections();
        instantiation->parameters = parameters.named;
        instantiation->positionalParameters = parameters.positional;
    } else {
        instantiation->positionalParameters = 1;
        advance();
        if (m_token.is('.')) { // A delay with a fraction.
            advance();
            advance();
        }
    }
    instantiation->values.append({begin, position()});
}

/// Ends at the semicolon, or where the text stops looking like instances.
bool Scanner::scanInstances(Instantiation *instantiation)
{
    instantiation->bare = true;
    while (m_token.kind == Token::Identifier || m_token.is('(')) {
        if (m_token.is('(')) {
            instantiation->unnamed.append(position());
        } else {
            instantiation->instances.append(toBytes(m_token.text));
            advance();
        }
        if (m_token.is('['))
            skipRanges(instantiation);
        if (m_token.is('(')) {
            const Connections pins = scanConnections();
            instantiation->pins += pins.named;
            instantiation->positionalPins = qMax(instantiation->positionalPins, pins.positional);
            instantiation->bare = false;
        }
        if (!m_token.is(','))
            break;
        advance();
    }
    const bool isNamed = instantiation->unnamed.isEmpty(); // Otherwise it may be a label.
    return (!instantiation->bare && isNamed) || m_token.is(';');
}

/// At the parenthesis; ends behind the closing one. Elements are ".name", ".name(...)", ".*" or
/// anything else, which counts by its position.
Connections Scanner::scanConnections()
{
    Connections result;
    int elements = 0;
    bool anyNamed = false;
    bool last = false;
    advance();
    while (!last && !atEnd() && !endsUnit(m_token)) {
        while (m_token.is('(') && nextToken().is('*'))
            skipAttribute();
        bool isEmpty = true;
        if (m_token.is('.')) {
            anyNamed = true;
            advance();
            if (m_token.kind == Token::Identifier)
                result.named.append(toBytes(m_token.text));
        }
        while (!atEnd() && !endsUnit(m_token) && !m_token.is(',') && !m_token.is(')')) {
            isEmpty = false;
            if (opensGroup(m_token))
                skipGroup();
            else
                advance();
        }
        last = m_token.is(')');
        if (!last || !isEmpty || elements > 0)
            ++elements;
        if (!atEnd() && !endsUnit(m_token))
            advance();
    }
    result.positional = anyNamed ? 0 : elements;
    return result;
}

/// bind TARGET [: INSTANCE, ...] MODULE ... ; of these only the module matters.
void Scanner::scanBind()
{
    advance();
    while (m_token.kind == Token::Identifier) {
        const Token following = nextToken();
        if (following.is('#') || following.kind == Token::Identifier) {
            const VerilogTokens position = m_tokens;
            const Token token = m_token;
            Instantiation instantiation;
            if (scanOneInstantiation(&instantiation) && !instantiation.bare) {
                instantiation.conditional = true;
                m_result->bindings.append(instantiation);
                break;
            }
            m_tokens = position;
            m_token = token;
        }
        advance();
        while (m_token.is('['))
            skipGroup();
        while (m_token.is('.') || m_token.is(':') || m_token.is(','))
            advance();
    }
    skipToSemicolon();
}

/// defparam PATH.PARAMETER = VALUE, ... ;
void Scanner::scanDefparam()
{
    do {
        advance();
        Defparam defparam;
        while (m_token.kind == Token::Identifier) {
            defparam.instance = defparam.parameter;
            defparam.parameter = toBytes(m_token.text);
            advance();
            while (m_token.is('['))
                skipGroup();
            if (!m_token.is('.'))
                break;
            advance();
        }
        if (!defparam.instance.isEmpty())
            unit().defparams.append(defparam);
        while (!atEnd() && !endsUnit(m_token) && !m_token.is(',') && !m_token.is(';')) {
            if (opensGroup(m_token))
                skipGroup();
            else
                advance();
        }
    } while (m_token.is(','));
    skipToSemicolon();
}

/// tran #DELAY NAME [RANGE] (NET, NET, CONTROL), ... ;
void Scanner::scanSwitches()
{
    do {
        advance();
        if (m_token.is('#')) {
            advance();
            if (m_token.is('('))
                skipGroup();
            else
                advance();
        }
        if (m_token.kind == Token::Identifier)
            advance();
        while (m_token.is('['))
            skipGroup();
        if (m_token.is('('))
            scanTerminals();
    } while (m_token.is(','));
    skipToSemicolon();
}

/// At the parenthesis; ends behind the closing one. The first two terminals are the connected ones.
void Scanner::scanTerminals()
{
    int depth = 0;
    int terminal = 0;
    do {
        if (m_token.is('[')) {
            skipGroup();
            continue;
        }
        if (m_token.is('(') || m_token.is('{'))
            ++depth;
        else if (m_token.is(')') || m_token.is('}'))
            --depth;
        else if (m_token.is(',') && depth == 1)
            ++terminal;
        else if (m_token.kind == Token::Identifier && terminal < 2)
            unit().tiedNets.append(toBytes(m_token.text));
        advance();
    } while (depth > 0 && !atEnd() && !endsUnit(m_token));
}

/// alias NET = NET = ... ;
void Scanner::scanAlias()
{
    while (!atEnd() && !endsUnit(m_token) && !m_token.is(';')) {
        if (m_token.is('[')) {
            skipGroup();
            continue;
        }
        if (m_token.kind == Token::Identifier)
            unit().tiedNets.append(toBytes(m_token.text));
        advance();
    }
    skipToSemicolon();
}

/// (* ... *), or a group in parentheses where an item begins.
void Scanner::skipAttribute()
{
    advance();
    if (!m_token.is('*'))
        return;
    advance();
    bool afterStar = false;
    while (!atEnd() && !endsUnit(m_token)) {
        if (afterStar && m_token.is(')')) {
            advance();
            return;
        }
        afterStar = m_token.is('*');
        advance();
    }
}

/// At an opening bracket: ends behind the closing one. Elsewhere does nothing.
void Scanner::skipGroup()
{
    int depth = 0;
    while (!atEnd() && !endsUnit(m_token)) {
        if (opensGroup(m_token))
            ++depth;
        else if (closesGroup(m_token))
            --depth;
        if (depth <= 0) {
            if (m_token.kind == Token::Punctuation)
                advance();
            return;
        }
        advance();
    }
}

/// At the first of some groups in brackets.
void Scanner::skipRanges(Instantiation *instantiation)
{
    const TextLine place{m_index, m_token.line};
    TextRange range;
    range.begin = position();
    skipGroup();
    if (m_token.is('['))
        instantiation->multidimensional = place;
    while (m_token.is('['))
        skipGroup();
    range.end = position();
    instantiation->ranges.append(range);
}

void Scanner::skipToSemicolon()
{
    while (!atEnd() && !endsUnit(m_token)) {
        if (m_token.is(';')) {
            advance();
            return;
        }
        if (opensGroup(m_token))
            skipGroup();
        else
            advance();
    }
}

/// The end of an item of unknown kind, or of the label of a generated case: a colon that belongs to
/// no conditional expression.
void Scanner::skipToSemicolonOrLabel()
{
    bool isLabel = true;
    while (!atEnd() && !endsUnit(m_token)) {
        if (m_token.is(';')) {
            advance();
            m_branch = false;
            return;
        }
        if (m_token.is(':') && isLabel) {
            advance();
            return;
        }
        if (m_token.is('=') || m_token.is('?'))
            isLabel = false;
        if (opensGroup(m_token))
            skipGroup();
        else
            advance();
    }
}

void Scanner::skipPast(Keyword keyword)
{
    while (!atEnd() && !m_token.is(keyword) && !endsUnit(m_token))
        advance();
    if (m_token.is(keyword)) {
        advance();
        skipLabel();
    }
}

/// Classes nest, and their methods may be declared without a body.
void Scanner::skipClass()
{
    int depth = 0;
    bool isForward = false; // typedef class NAME;
    while (!atEnd() && !endsUnit(m_token)) {
        if (m_token.is(Keyword::Class) && !isForward)
            ++depth;
        isForward = m_token.is(Keyword::Typedef);
        const bool closes = m_token.is(Keyword::Endclass);
        advance();
        if (closes && --depth <= 0) {
            skipLabel();
            return;
        }
    }
}

/// "default clocking NAME;" refers to a block, everything else that begins so is one.
void Scanner::skipClocking()
{
    bool hasEvent = false;
    while (!atEnd() && !endsUnit(m_token) && !m_token.is(';')) {
        hasEvent = hasEvent || m_token.is('@');
        advance();
    }
    if (hasEvent)
        skipPast(Keyword::Endclocking);
}

/// A procedural statement: it ends with the semicolon or the end keyword that leaves nothing open,
/// unless an else of its own follows.
void Scanner::skipProcess()
{
    int depth = 0;
    int ifs = 0; // Those that may still have an else; within blocks they do not matter.
    bool afterDisable = false;
    while (!atEnd() && !endsUnit(m_token)) {
        if (opensGroup(m_token)) {
            skipGroup();
            continue;
        }
        const bool opens = m_token.is(Keyword::Begin) || m_token.is(Keyword::Case) ||
                           (m_token.is(Keyword::Fork) && !afterDisable);
        const bool closes =
            m_token.is(Keyword::End) || m_token.is(Keyword::Endcase) || m_token.is(Keyword::Join);
        const bool mayEnd = closes || m_token.is(';');
        if (depth == 0 && (m_token.is(Keyword::If) || m_token.is(Keyword::Assert)))
            ++ifs;
        else if (depth == 0 && m_token.is(Keyword::Else))
            --ifs;
        afterDisable = m_token.is(Keyword::Disable);
        depth += opens ? 1 : closes ? -1 : 0;
        advance();
        if (opens || closes)
            skipLabel();
        if (mayEnd && depth <= 0 && (ifs <= 0 || !m_token.is(Keyword::Else)))
            return;
    }
}

/// ": NAME" behind a begin or an end.
void Scanner::skipLabel()
{
    if (!m_token.is(':'))
        return;
    advance();
    if (m_token.kind == Token::Identifier)
        advance();
}

} // namespace

void scanModules(const QByteArray &text, int index, bool systemVerilog, ModuleScan *result)
{
    Scanner(text, index, systemVerilog, result).run();
}

} // namespace NETWEIR::Internal
