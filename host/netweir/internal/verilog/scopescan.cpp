// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "scopescan.h"

#include "tokenreader.h"

#include <QHash>

#include <algorithm>
#include <iterator>

namespace NETWEIR::Internal {

namespace {

/// Adds uses of packages to a list that holds each once.
class UseList
{
public:
    void add(QVector<PackageUse> *uses, const PackageUse &use)
    {
        const auto known = m_indexes.constFind(use.package);
        if (known == m_indexes.constEnd()) {
            m_indexes.insert(use.package, uses->size());
            uses->append(use);
        } else {
            (*uses)[*known].imported |= use.imported;
        }
    }

private:
    QHash<QByteArray, int> m_indexes;
};

/// Walks over all tokens of a text. Skips the bodies of modules, classes and functions, but records
/// their uses.
class ScopeScanner
{
public:
    ScopeScanner(const QByteArray &text, bool systemVerilog)
        : m_reader(VerilogTokens(text, systemVerilog))
    {
    }

    TextScopes run();

private:
    void advance();
    const Token &token() const { return m_reader.token(); }
    bool inBlock() const { return m_inPackage || m_inShared; }
    ScopeBlock &block() { return m_result.blocks.last(); }

    void scanItem();
    void scanInterface();
    void scanShared();
    void openBlock();
    void openShared();
    void closeShared();
    void openPackage();
    void closePackage();
    void scanImport();
    void scanTypedef();
    void scanClass();
    void declare(const QByteArray &type);
    void noteUse(const Token &token);
    void noteTypeParameter();
    void passUnit(Keyword opening);
    void passTo(Keyword keyword);

    TokenReader m_reader;
    Token m_previous;
    Token m_beforePrevious;
    bool m_importing = false;
    bool m_inUnit = false;
    bool m_inTypeList = false;
    bool m_inPackage = false;
    bool m_inShared = false; ///< In a type or import that belongs to no package and no module.
    UseList m_ownUses;
    UseList m_blockUses;
    TextScopes m_result;
};

TextScopes ScopeScanner::run()
{
    while (!m_reader.atEnd())
        scanItem();
    if (m_inPackage)
        closePackage();
    return m_result;
}

void ScopeScanner::advance()
{
    m_beforePrevious = m_previous;
    m_previous = token();
    m_reader.advance();
    const bool isScoped = m_beforePrevious.is(Token::Scope) || m_beforePrevious.is('.');
    if (token().is(Token::Scope) && m_previous.kind == Token::Identifier && !isScoped)
        noteUse(m_previous);
    noteTypeParameter();
}

/// "type A = ..., B = ..."; recording too many names does no harm.
void ScopeScanner::noteTypeParameter()
{
    if (token().kind == Token::Identifier &&
        (m_previous.text == "type" || (m_inTypeList && m_previous.is(','))))
        m_result.types.insert(toBytes(token().text));
    m_inTypeList = m_previous.text == "type" || (m_inTypeList && !token().is(';'));
}

void ScopeScanner::scanItem()
{
    switch (token().keyword) {
    case Keyword::Package:
        openPackage();
        break;
    case Keyword::Endpackage:
        advance();
        closePackage();
        break;
    case Keyword::Module:
    case Keyword::Program:
        passUnit(token().keyword);
        break;
    case Keyword::Virtual:
    case Keyword::Interface:
        scanInterface();
        break;
    case Keyword::Function:
    case Keyword::Task:
        passTo(endOf(token().keyword));
        break;
    case Keyword::Covergroup:
        advance();
        declare(toBytes(token().text));
        break;
    case Keyword::Class:
    case Keyword::Extern:
    case Keyword::Typedef:
        scanShared();
        break;
    default:
        advance();
    }
}

/// A class of interfaces, an interface, or a variable that refers to one.
void ScopeScanner::scanInterface()
{
    if (m_reader.following().is(Keyword::Class))
        scanShared();
    else if (token().is(Keyword::Virtual) || m_previous.is(Keyword::Virtual))
        advance();
    else
        passUnit(Keyword::Interface);
}

/// Something that all later texts see unless it is in a package: a class, perhaps after "virtual"
/// or "interface", a type or an import. The other words that count as "extern" declare nothing.
void ScopeScanner::scanShared()
{
    const Token first = token();
    if (!first.is(Keyword::Extern) || first.text == "import")
        openShared();
    if (first.is(Keyword::Virtual) || first.is(Keyword::Interface))
        advance();
    if (first.is(Keyword::Typedef))
        scanTypedef();
    else if (first.is(Keyword::Extern))
        scanImport();
    else
        scanClass();
    closeShared();
}

void ScopeScanner::openBlock()
{
    m_result.blocks.append(ScopeBlock());
    m_blockUses = UseList();
    block().line = token().line;
    block().range = {token().offset, token().offset};
}

/// At the first token of something that all later texts see, unless it is in a package.
void ScopeScanner::openShared()
{
    if (m_inPackage || m_inUnit)
        return;
    openBlock();
    m_inShared = true;
}

/// At the semicolon or after the end.
void ScopeScanner::closeShared()
{
    if (!m_inShared)
        return;
    if (token().is(':')) { // endclass : NAME
        advance();
        advance();
    } else if (token().is(';')) {
        advance();
    }
    block().range.end = token().offset;
    m_inShared = false;
}

void ScopeScanner::openPackage()
{
    if (m_inPackage)
        closePackage();
    openBlock();
    advance();
    while (token().is(Keyword::Other)) // automatic, static
        advance();
    block().package = token().text.empty() ? QByteArray("?") : toBytes(token().text);
    m_inPackage = true;
}

/// After the end keyword.
void ScopeScanner::closePackage()
{
    if (token().is(':')) {
        advance();
        advance();
    }
    if (m_inPackage)
        block().range.end = token().offset;
    m_inPackage = false;
}

/// "import NAME::NAME, ... ;". The other forms have no scopes, and functions without a body.
void ScopeScanner::scanImport()
{
    m_importing = token().text == "import";
    while (!m_reader.atEnd() && !token().is(';')) {
        advance();
        const bool isShared = m_importing && m_inShared;
        if (isShared && m_previous.is(Token::Scope))
            block().imports.append({toBytes(m_beforePrevious.text),
                                    token().is('*') ? QByteArray() : toBytes(token().text)});
    }
    m_importing = false;
}

/// The name is the last one outside of brackets.
void ScopeScanner::scanTypedef()
{
    int depth = 0;
    QByteArray name;
    for (advance(); !m_reader.atEnd() && (depth > 0 || !token().is(';')); advance()) {
        if (opensGroup(token()))
            ++depth;
        else if (closesGroup(token()))
            --depth;
        else if (token().kind == Token::Identifier && depth == 0)
            name = toBytes(token().text);
    }
    declare(name);
}

/// Classes nest.
void ScopeScanner::scanClass()
{
    int depth = 0;
    bool isForward = false; // typedef class NAME;
    while (!m_reader.atEnd()) {
        if (token().is(Keyword::Class) && !isForward)
            ++depth;
        else if (token().kind == Token::Identifier && m_previous.is(Keyword::Class))
            declare(toBytes(token().text));
        isForward = token().is(Keyword::Typedef);
        const bool closes = token().is(Keyword::Endclass);
        advance();
        if (closes && --depth <= 0)
            return;
    }
}

void ScopeScanner::declare(const QByteArray &type)
{
    m_result.types.insert(type);
    if (m_inUnit)
        return;
    if (inBlock())
        block().types.insert(type);
}

void ScopeScanner::noteUse(const Token &token)
{
    static const std::string_view builtIn[] = {"$unit",   "$root",   "std",
                                               "process", "mailbox", "semaphore"};
    if (std::find(std::begin(builtIn), std::end(builtIn), token.text) != std::end(builtIn))
        return;
    const PackageUse use{toBytes(token.text), token.offset, token.line, m_importing};
    if (inBlock())
        m_blockUses.add(&block().uses, use);
    else
        m_ownUses.add(&m_result.uses, use);
}

/// Up to the end of a module or a similar unit. Modules nest; "extern module" has no end.
void ScopeScanner::passUnit(Keyword opening)
{
    if (m_previous.is(Keyword::Extern)) {
        advance();
        return;
    }
    const Keyword closing = endOf(opening);
    m_inUnit = true;
    int depth = 0;
    while (!m_reader.atEnd()) {
        const bool nests = token().is(opening) && (depth == 0 || opening == Keyword::Module);
        const bool closes = token().is(closing);
        depth += nests ? 1 : closes ? -1 : 0;
        if (closes && depth <= 0)
            break;
        if (token().is(Keyword::Typedef))
            scanTypedef();
        else if (token().is(Keyword::Class) && depth > 0)
            scanClass();
        else if (token().is(Keyword::Extern))
            scanImport();
        else
            advance();
    }
    m_inUnit = false;
    advance();
}

void ScopeScanner::passTo(Keyword keyword)
{
    while (!m_reader.atEnd() && !token().is(keyword) && !token().is(Keyword::Endpackage))
        advance();
}

} // namespace

TextScopes scanScopes(const QByteArray &text, bool systemVerilog)
{
    return ScopeScanner(text, systemVerilog).run();
}

QVector<NameMention> mentionsOf(const QSet<QByteArray> &names, const QByteArray &text)
{
    QVector<NameMention> result;
    VerilogTokens tokens(text, true);
    Token previous;
    for (Token token = tokens.next(); token.kind != Token::EndOfText; token = tokens.next()) {
        const bool isScoped = previous.is(Token::Scope) || previous.is('.');
        previous = token;
        if (token.kind != Token::Identifier || isScoped)
            continue;
        const auto name =
            names.constFind(QByteArray::fromRawData(token.text.data(), int(token.text.size())));
        if (name != names.constEnd())
            result.append({*name, token.offset});
    }
    return result;
}

} // namespace NETWEIR::Internal
