// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "textitems.h"

#include "tokenreader.h"

#include <QHash>
#include <QMultiHash>

#include <algorithm>
#include <iterator>
#include <utility>

namespace NETWEIR::Internal {

namespace {

/// Nested assertions are rare, so only this many beginnings before a position are tried.
constexpr int MostNested = 8;

/// Whether the end of the item, which has no end keyword, must be searched. Not for processes and
/// assignments.
bool hasEndByStatement(const TextItem &item)
{
    return item.kind == TextItem::Assertion || item.kind == TextItem::Let ||
           item.kind == TextItem::Constraint ||
           (item.kind == TextItem::Clocking && item.range.end == 0);
}

bool isRegionKind(const TextItem &item)
{
    return item.kind < TextItem::Statement && item.range.end > 0;
}

/// In the order in which items are left out.
void sortInnermostFirst(QVector<TextItem> *items)
{
    const auto rankOf = [](const TextItem &item) {
        const int kind = item.isVerification() ? TextItem::Assertion : item.kind;
        return std::make_pair(kind, -item.range.begin);
    };
    std::sort(items->begin(), items->end(),
              [rankOf](const TextItem &a, const TextItem &b) { return rankOf(a) < rankOf(b); });
}

} // namespace

TextItems::TextItems(const QByteArray &text, bool systemVerilog)
    : m_text(text)
    , m_systemVerilog(systemVerilog)
    , m_starts(findItemStarts(m_text, systemVerilog))
    , m_lines(lineStarts(m_text))
{
}

/// An item without an end gets an empty range.
TextItem TextItems::completed(const ItemStart &start) const
{
    TextItem item = start.item;
    if (item.range.end > 0)
        return item;
    TokenReader reader(start.after, start.word);
    bool ends = false;
    if (item.kind == TextItem::Assertion || item.kind == TextItem::Process)
        ends = reader.skipStatement();
    else if (item.kind == TextItem::Constraint)
        ends = reader.skipConstraint();
    else if (item.kind == TextItem::Let || item.kind == TextItem::Assignment ||
             (item.kind == TextItem::Clocking && item.name.isEmpty()))
        ends = reader.skipToSemicolon();
    item.range.end = ends ? reader.end() : item.range.begin;
    return item;
}

QVector<TextItem> TextItems::around(int line, int column) const
{
    return around(offsetOf(line, column));
}

QVector<TextItem> TextItems::around(int offset) const
{
    const auto after = std::upper_bound(
        m_starts.begin(), m_starts.end(), offset,
        [](int position, const ItemStart &start) { return position < start.item.range.begin; });
    QVector<TextItem> result;
    const int last = int(after - m_starts.begin()) - 1;
    const auto take = [&](int start) {
        const TextItem item = start < 0 ? TextItem() : completed(m_starts[start]);
        if (offset < item.range.end)
            result.append(item);
    };
    if (last < 0)
        return result;
    for (int start = last; start > last - MostNested && start >= 0; --start) {
        if (hasEndByStatement(m_starts[start].item))
            take(start);
    }
    const bool isRegion = isRegionKind(m_starts[last].item);
    for (int start = isRegion ? last : m_starts[last].region; start >= 0;
         start = m_starts[start].region)
        take(start);
    take(m_starts[last].process);
    take(m_starts[last].assignment);
    const bool isUnit = m_starts[last].item.kind == TextItem::Module ||
                        m_starts[last].item.kind == TextItem::OtherUnit;
    for (int start = isUnit ? last : m_starts[last].unit; start >= 0; start = m_starts[start].unit)
        take(start);
    sortInnermostFirst(&result);
    return result;
}

int TextItems::offsetOf(int line, int column) const
{
    const int begin = m_lines.value(qBound(1, line, m_lines.size()) - 1);
    const int end = m_text.indexOf('\n', begin);
    return qMin(begin + qMax(0, column - 1), end < 0 ? m_text.size() : end);
}

VerilogTokens TextItems::tokensOf(const TextItem &item) const
{
    return VerilogTokens(m_text, m_systemVerilog, item.range);
}

QVector<TextItem> TextItems::usersOf(const QVector<TextItem> &declared) const
{
    QMultiHash<QByteArray, TextItem> names;
    for (const TextItem &item : declared) {
        if (!item.name.isEmpty() && item.kind < TextItem::Statement)
            names.insert(item.name, item);
    }
    QVector<TextItem> result;
    if (names.isEmpty())
        return result;
    Token previous;
    for (TokenReader reader(VerilogTokens(m_text, m_systemVerilog)); !reader.atEnd();
         previous = reader.token(), reader.advance()) {
        if (reader.token().kind != Token::Identifier)
            continue;
        const QList<TextItem> meant = names.values(toBytes(reader.token().text));
        for (const TextItem &item : meant) {
            const TextItem user = userAt(reader, previous, item);
            if (user.range.end <= user.range.begin)
                continue;
            result.append(user);
            if (user.kind == TextItem::Statement && !user.name.isEmpty())
                names.insert(user.name, item);
        }
    }
    return result;
}

/// The item that uses @p declared by its name, which is the next token. An empty range when there
/// is none.
TextItem TextItems::userAt(const TokenReader &reader, const Token &previous,
                           const TextItem &declared) const
{
    const int offset = reader.token().offset;
    if (offset >= declared.range.begin && offset < declared.range.end)
        return {};
    if (declared.kind == TextItem::Covergroup || declared.kind == TextItem::Checker ||
        declared.kind == TextItem::Class)
        return statementAt(reader, previous);
    const bool usedByProcesses =
        declared.kind == TextItem::Let || declared.kind == TextItem::Clocking;
    const QVector<TextItem> items = around(offset);
    const auto user = std::find_if(items.begin(), items.end(), [&](const TextItem &item) {
        const bool isSameUnit = declared.unit.isEmpty() || item.unit == declared.unit;
        return isSameUnit &&
               (item.isVerification() || (usedByProcesses && item.kind == TextItem::Process));
    });
    return user == items.end() ? TextItem() : *user;
}

/// The statement or declaration that begins with the next token. Its name is the name that it
/// declares.
TextItem TextItems::statementAt(TokenReader reader, const Token &previous) const
{
    TextItem statement;
    const bool begins = previous.is(';') || previous.is(')') || previous.is(':') ||
                        previous.kind == Token::Reserved;
    if (!begins)
        return statement;
    statement.kind = TextItem::Statement;
    statement.line = reader.token().line;
    statement.range.begin = reader.token().offset;
    const Token instance = reader.following();
    if (instance.kind == Token::Identifier)
        statement.name = toBytes(instance.text);
    if (reader.skipToSemicolon())
        statement.range.end = reader.end();
    return statement;
}

QVector<WrittenName> TextItems::writtenBy(const TextItem &item) const
{
    TextItem writer = item;
    if (item.kind == TextItem::Assertion) { // The asserted property writes nothing.
        TokenReader reader(tokensOf(item));
        while (!reader.atEnd() && !reader.token().is('('))
            reader.advance();
        reader.skipGroup();
        if (reader.atEnd())
            return {};
        writer.range.begin = reader.token().offset;
    }
    return writtenNames(tokensOf(writer));
}

bool TextItems::isBeyondGrammar(const TextItem &item) const
{
    static const std::string_view words[] = {"expect",       "iff",    "matches",   "randomize",
                                             "randsequence", "tagged", "wait_order"};
    Token previous;
    for (TokenReader reader(tokensOf(item)); !reader.atEnd(); reader.advance()) {
        const Token &token = reader.token();
        const bool isCycles = token.is('#') && previous.is('#');
        const bool isKnown =
            std::none_of(std::begin(words), std::end(words),
                         [&token](std::string_view word) { return isWord(token, word); });
        // In Verilog the words are names.
        if ((m_systemVerilog && (isCycles || !isKnown)) ||
            (isWord(token, "repeat") && previous.is('=')))
            return true;
        previous = token;
    }
    return false;
}

} // namespace NETWEIR::Internal
