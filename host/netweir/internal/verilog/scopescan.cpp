// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "scopescan.h"

#include "verilogtokens.h"

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

/// Walks over all tokens of a text. Bodies of modules, classes and functions are passed over; what
/// they use is noted on the way.
class ScopeScanner
{
public:
    ScopeScanner(const QByteArray &text, bool systemVerilog)
        : m_text(text.constData())
        , m_tokens(text, systemVerilog)
    {
        advance();
    }

    TextScopes run();

private:
    void advance();
    bool atEnd() const { return m_token.kind == Token::EndOfText; }
    bool inPackage() const { return m_inPackage; }
    ScopeBlock &block() { return m_result.blocks.last(); }
    int offset(const Token &token) const { return int(token.place - m_text); }

    void scanItem();
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
    void passUnit(Keyword opening, Keyword closing);
    void passTo(Keyword keyword);

    const char *m_text;
    VerilogTokens m_tokens;
    Token m_token;
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
    while (!atEnd())
        scanItem();
    if (inPackage())
        closePackage();
    return m_result;
}

void ScopeScanner::advance()
{
    m_beforePrevious = m_previous;
    m_previous = m_token;
    m_token = m_tokens.next();
    const bool isScoped = m_beforePrevious.is('c') || m_beforePrevious.is('.');
    if (m_token.is('c') && m_previous.kind == Token::Identifier && !isScoped)
        noteUse(m_previous);
    noteTypeParameter();
}

/// "type A = ..., B = ..."; what more is noted does no harm.
void ScopeScanner::noteTypeParameter()
{
    if (m_token.kind == Token::Identifier &&
        (m_previous.text == "type" || (m_inTypeList && m_previous.is(','))))
        m_result.types.insert(toBytes(m_token.text));
    m_inTypeList = m_previous.text == "type" || (m_inTypeList && !m_token.is(';'));
}

void ScopeScanner::scanItem()
{
    switch (m_token.keyword) {
    case Keyword::Package:
        openPackage();
        break;
    case Keyword::Endpackage:
        advance();
        closePackage();
        break;
    case Keyword::Module:
        passUnit(Keyword::Module, Keyword::Endmodule);
        break;
    case Keyword::Program:
        passUnit(Keyword::Program, Keyword::Endprogram);
        break;
    case Keyword::Virtual:
    case Keyword::Interface:
        if (VerilogTokens(m_tokens).next().is(Keyword::Class)) {
            openShared();
            advance();
            scanClass();
            closeShared();
        } else if (m_token.is(Keyword::Virtual) || m_previous.is(Keyword::Virtual)) {
            advance();
        } else {
            passUnit(Keyword::Interface, Keyword::Endinterface);
        }
        break;
    case Keyword::Function:
        passTo(Keyword::Endfunction);
        break;
    case Keyword::Task:
        passTo(Keyword::Endtask);
        break;
    case Keyword::Class:
        openShared();
        scanClass();
        closeShared();
        break;
    case Keyword::Covergroup:
        advance();
        declare(toBytes(m_token.text));
        break;
    case Keyword::Typedef:
        openShared();
        scanTypedef();
        closeShared();
        break;
    case Keyword::Extern:
        if (m_token.text == "import")
            openShared();
        scanImport();
        closeShared();
        break;
    default:
        advance();
    }
}

void ScopeScanner::openBlock()
{
    m_result.blocks.append(ScopeBlock());
    m_blockUses = UseList();
    block().line = m_token.line;
    block().range = {offset(m_token), offset(m_token)};
}

/// At the first token of something that all texts behind see, unless it stands in a package.
void ScopeScanner::openShared()
{
    if (inPackage() || m_inUnit)
        return;
    openBlock();
    m_inShared = true;
}

/// At the semicolon or behind the end.
void ScopeScanner::closeShared()
{
    if (!m_inShared)
        return;
    if (m_token.is(':')) { // endclass : NAME
        advance();
        advance();
    } else if (m_token.is(';')) {
        advance();
    }
    block().range.end = offset(m_token);
    m_inShared = false;
}

void ScopeScanner::openPackage()
{
    if (inPackage())
        closePackage();
    openBlock();
    advance();
    while (m_token.is(Keyword::Other)) // automatic, static
        advance();
    block().package = m_token.text.empty() ? QByteArray("?") : toBytes(m_token.text);
    m_inPackage = true;
}

/// Behind the end keyword.
void ScopeScanner::closePackage()
{
    if (m_token.is(':')) {
        advance();
        advance();
    }
    if (inPackage())
        block().range.end = offset(m_token);
    m_inPackage = false;
}

/// "import NAME::NAME, ... ;". The other forms have no scopes, and functions without a body.
void ScopeScanner::scanImport()
{
    m_importing = m_token.text == "import";
    while (!atEnd() && !m_token.is(';')) {
        advance();
        const bool isShared = m_importing && m_inShared;
        if (isShared && m_previous.is('c'))
            block().imports.append({toBytes(m_beforePrevious.text),
                                    m_token.is('*') ? QByteArray() : toBytes(m_token.text)});
    }
    m_importing = false;
}

/// The name is the last one outside of brackets.
void ScopeScanner::scanTypedef()
{
    int depth = 0;
    QByteArray name;
    for (advance(); !atEnd() && (depth > 0 || !m_token.is(';')); advance()) {
        if (opensGroup(m_token))
            ++depth;
        else if (closesGroup(m_token))
            --depth;
        else if (m_token.kind == Token::Identifier && depth == 0)
            name = toBytes(m_token.text);
    }
    declare(name);
}

/// Classes nest.
void ScopeScanner::scanClass()
{
    int depth = 0;
    bool isForward = false; // typedef class NAME;
    while (!atEnd()) {
        if (m_token.is(Keyword::Class) && !isForward)
            ++depth;
        else if (m_token.kind == Token::Identifier && m_previous.is(Keyword::Class))
            declare(toBytes(m_token.text));
        isForward = m_token.is(Keyword::Typedef);
        const bool closes = m_token.is(Keyword::Endclass);
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
    if (inPackage() || m_inShared)
        block().types.insert(type);
}

void ScopeScanner::noteUse(const Token &token)
{
    static const std::string_view builtIn[] = {"$unit",   "$root",   "std",
                                               "process", "mailbox", "semaphore"};
    if (std::find(std::begin(builtIn), std::end(builtIn), token.text) != std::end(builtIn))
        return;
    const PackageUse use{toBytes(token.text), offset(token), token.line, m_importing};
    if (inPackage() || m_inShared)
        m_blockUses.add(&block().uses, use);
    else
        m_ownUses.add(&m_result.uses, use);
}

/// Up to the end of a module or one of its relatives. Modules nest; "extern module" has no end.
void ScopeScanner::passUnit(Keyword opening, Keyword closing)
{
    if (m_previous.is(Keyword::Extern)) {
        advance();
        return;
    }
    m_inUnit = true;
    int depth = 0;
    while (!atEnd()) {
        const bool nests = m_token.is(opening) && (depth == 0 || opening == Keyword::Module);
        const bool closes = m_token.is(closing);
        depth += nests ? 1 : closes ? -1 : 0;
        if (closes && depth <= 0)
            break;
        if (m_token.is(Keyword::Typedef))
            scanTypedef();
        else if (m_token.is(Keyword::Class) && depth > 0)
            scanClass();
        else if (m_token.is(Keyword::Extern))
            scanImport();
        else
            advance();
    }
    m_inUnit = false;
    advance();
}

void ScopeScanner::passTo(Keyword keyword)
{
    while (!atEnd() && !m_token.is(keyword) && !m_token.is(Keyword::Endpackage))
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
        const bool isScoped = previous.is('c') || previous.is('.');
        previous = token;
        if (token.kind != Token::Identifier || isScoped)
            continue;
        const auto name =
            names.constFind(QByteArray::fromRawData(token.text.data(), int(token.text.size())));
        if (name != names.constEnd())
            result.append({*name, int(token.place - text.constData())});
    }
    return result;
}

} // namespace NETWEIR::Internal
