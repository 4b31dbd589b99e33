// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "writtennames.h"

#include "tokenreader.h"

#include <QSet>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

bool isAnyOf(const Token &token, std::initializer_list<std::string_view> words)
{
    return std::any_of(words.begin(), words.end(),
                       [&token](std::string_view word) { return isWord(token, word); });
}

bool beginsDeclaration(const Token &token)
{
    return token.is(Keyword::Other) &&
           isAnyOf(token, {"automatic", "bit",       "byte",   "chandle",  "const",      "enum",
                           "event",     "genvar",    "int",    "integer",  "localparam", "logic",
                           "longint",   "parameter", "real",   "realtime", "reg",        "shortint",
                           "shortreal", "static",    "string", "struct",   "time",       "union",
                           "var",       "wire"});
}

bool mayPrecedeStatement(const Token &token)
{
    return token.is(';') || token.is(':') || token.is(')');
}

/// The operator of an assignment: = <= += <<= ++ and the like, but not a comparison.
bool isAssigned(TokenReader reader)
{
    QByteArray sign;
    while (reader.token().kind == Token::Punctuation && sign.size() < 4 &&
           QByteArray("=<>+-*/%&|^").contains(reader.token().punctuation)) {
        sign += reader.token().punctuation;
        reader.advance();
        if (sign.endsWith('=') || sign == "++" || sign == "--")
            break;
    }
    const bool isEqual = sign == "=" && reader.token().is('=');
    return !isEqual && sign != ">=" && (sign.endsWith('=') || sign == "++" || sign == "--");
}

/// Walks over statements. At the beginning of each it looks for a left side.
class WriteScanner
{
public:
    explicit WriteScanner(const VerilogTokens &tokens)
        : m_reader(tokens)
    {
    }

    QVector<WrittenName> run();

private:
    void scanBeginning();
    void scanIncrement();
    void scanNamed();
    void scanReserved();
    void scanCall(bool isTask);
    void scanParts();
    void scanDeclaration();
    WrittenName takeTarget();
    void takeIndex(WrittenName *target);
    void skipControl();
    void skipExpression();
    bool isOwn(const WrittenName &target) const;
    const Token &token() const { return m_reader.token(); }

    TokenReader m_reader;
    bool m_begins = true;
    QVector<WrittenName> m_written;
    QSet<QByteArray> m_own; ///< Variables that the statements declare.
};

QVector<WrittenName> WriteScanner::run()
{
    while (!m_reader.atEnd()) {
        if (token().is('@') || token().is('#')) {
            m_reader.advance();
            skipControl();
            m_begins = true;
        } else if (token().kind == Token::Reserved) {
            scanReserved();
        } else if (m_begins) {
            scanBeginning();
        } else {
            m_begins = mayPrecedeStatement(token());
            m_reader.advance();
        }
    }
    m_written.erase(std::remove_if(m_written.begin(), m_written.end(),
                                   [this](const WrittenName &target) { return isOwn(target); }),
                    m_written.end());
    return m_written;
}

/// Anything but a keyword, where a statement begins.
void WriteScanner::scanBeginning()
{
    if (token().is('{')) {
        scanParts();
        skipExpression();
    } else if (token().is('+') || token().is('-')) {
        scanIncrement();
        skipExpression();
    } else if (token().kind == Token::Identifier) {
        scanNamed();
    } else {
        m_begins = mayPrecedeStatement(token()) || token().is('.'); // this.NAME
        m_reader.advance();
    }
}

/// ++ and -- before a name.
void WriteScanner::scanIncrement()
{
    const bool isTwice = m_reader.following().is(token().punctuation);
    m_reader.advance();
    if (!isTwice)
        return;
    m_reader.advance();
    if (token().kind == Token::Identifier)
        m_written.append(takeTarget());
}

/// A statement or a label that begins with a name.
void WriteScanner::scanNamed()
{
    const bool isTask =
        !isSystemName(token()) ||
        isAnyOf(token(), {"$readmemh", "$readmemb", "$fscanf", "$sscanf", "$fgets", "$fread",
                          "$cast"}); // These store their results in arguments.
    const WrittenName target = takeTarget();
    if (token().is('('))
        scanCall(isTask);
    else if (token().kind == Token::Identifier) // A variable of a type with a name.
        scanDeclaration();
    else if (isAssigned(m_reader))
        m_written.append(target);
    else if (token().is(':') || token().is(',')) // A label.
        return;
    skipExpression();
}

void WriteScanner::scanReserved()
{
    const Token word = token();
    const bool isControl = word.is(Keyword::If) || word.is(Keyword::Case) ||
                           isAnyOf(word, {"while", "repeat", "wait", "foreach"});
    m_reader.advance();
    if (isControl) {
        skipControl();
        m_begins = true;
    } else if (word.is(Keyword::For)) {
        if (token().is('('))
            m_reader.advance();
        m_begins = true;
    } else if (m_begins && beginsDeclaration(word)) {
        scanDeclaration();
        skipExpression();
    } else {
        m_begins = m_begins || !word.is(Keyword::Other);
        if (word.is(Keyword::Begin) || word.is(Keyword::End) || word.is(Keyword::Fork) ||
            word.is(Keyword::Join))
            m_reader.skipLabel();
    }
}

/// NAME [INDEX] . NAME ...
WrittenName WriteScanner::takeTarget()
{
    WrittenName target;
    target.name = toBytes(token().text);
    m_reader.advance();
    bool hasIndex = false;
    while (token().is('[') || token().is('.') || token().is(Token::Scope)) {
        if (token().is('[')) {
            WrittenName indexed = target;
            takeIndex(&indexed);
            target.left = hasIndex ? -1 : indexed.left;
            target.right = hasIndex ? -1 : indexed.right;
            hasIndex = true;
            continue;
        }
        m_reader.advance();
        if (token().kind != Token::Identifier)
            break;
        target.path += (target.path.isEmpty() ? "" : ".") + target.name;
        target.name = toBytes(token().text);
        target.left = -1;
        target.right = -1;
        hasIndex = true; // The index of a member is not used.
        m_reader.advance();
    }
    return target;
}

/// [NUMBER] or [NUMBER:NUMBER]; others are skipped.
void WriteScanner::takeIndex(WrittenName *target)
{
    TokenReader ahead = m_reader;
    m_reader.skipGroup();
    const auto takeNumber = [&ahead](int *number) {
        ahead.advance();
        bool isNumber = ahead.token().kind == Token::Number;
        *number = toBytes(ahead.token().text).toInt(&isNumber);
        ahead.advance();
        return isNumber;
    };
    int left = -1;
    int right = -1;
    if (!takeNumber(&left))
        return;
    right = left;
    if (ahead.token().is(':') && !takeNumber(&right))
        return;
    if (ahead.token().is(']')) {
        target->left = left;
        target->right = right;
    }
}

/// At the parenthesis: each argument of a task that begins with a name may be an output.
void WriteScanner::scanCall(bool isTask)
{
    TokenReader after = m_reader;
    after.skipGroup();
    if (isTask)
        scanParts();
    m_reader = after;
}

/// At an opening bracket: the names that begin its parts.
void WriteScanner::scanParts()
{
    TokenReader after = m_reader;
    after.skipGroup();
    bool begins = false;
    while (!m_reader.atEnd() && m_reader.end() != after.end()) {
        if (begins && token().kind == Token::Identifier) {
            m_written.append(takeTarget());
            begins = false;
            continue;
        }
        begins = token().is('{') || token().is(',') || token().is('(');
        m_reader.advance();
    }
}

/// Behind the type, or within it: NAME [RANGE] = VALUE, ...
void WriteScanner::scanDeclaration()
{
    while (!m_reader.atEnd() && !token().is(';') && !token().is(')')) {
        if (opensGroup(token())) {
            m_reader.skipGroup();
        } else if (token().is('=')) {
            while (!m_reader.atEnd() && !token().is(',') && !token().is(';') && !token().is(')'))
                m_reader.advanceOverGroup();
        } else {
            if (token().kind == Token::Identifier)
                m_own.insert(toBytes(token().text));
            m_reader.advance();
        }
    }
}

/// ( ... ), or its equivalent in an event control or a delay.
void WriteScanner::skipControl()
{
    while (token().is('@') || token().is('#'))
        m_reader.advance();
    if (opensGroup(token())) {
        m_reader.skipGroup();
        return;
    }
    m_reader.advance();
    while (token().is('.') || token().is('[')) {
        if (token().is('[')) {
            m_reader.skipGroup();
            continue;
        }
        m_reader.advance();
        m_reader.advance();
    }
}

/// The rest of an assignment, up to the next one in a list, the semicolon or the end of a loop
/// head.
void WriteScanner::skipExpression()
{
    while (!m_reader.atEnd() && !token().is(';') && !token().is(',') && !closesGroup(token())) {
        if (token().kind == Token::Reserved && !token().is(Keyword::Other))
            break; // A statement without a semicolon ends here.
        m_reader.advanceOverGroup();
    }
    if (token().is(';') || token().is(',') || closesGroup(token()))
        m_reader.advance();
    m_begins = true;
}

bool WriteScanner::isOwn(const WrittenName &target) const
{
    return m_own.contains(target.path.isEmpty() ? target.name : target.path.split('.').first());
}

} // namespace

QVector<WrittenName> writtenNames(const VerilogTokens &tokens)
{
    return WriteScanner(tokens).run();
}

} // namespace NETWEIR::Internal
