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

/// Assertions within assertions are rare: only so many beginnings in front of a place are tried.
constexpr int MostNested = 8;

/// The kind of what stands between @p keyword and an end of its own.
struct Region
{
    Keyword keyword;
    Keyword end;
    TextItem::Kind kind;
};

const Region *regionOf(const Token &token)
{
    static const Region regions[] = {
        {Keyword::Property, Keyword::Endproperty, TextItem::Property},
        {Keyword::Sequence, Keyword::Endsequence, TextItem::Sequence},
        {Keyword::Covergroup, Keyword::Endgroup, TextItem::Covergroup},
        {Keyword::Clocking, Keyword::Endclocking, TextItem::Clocking},
        {Keyword::Checker, Keyword::Endchecker, TextItem::Checker},
        {Keyword::Config, Keyword::Endconfig, TextItem::Config},
        {Keyword::Class, Keyword::Endclass, TextItem::Class},
    };
    for (const Region &region : regions) {
        if (token.is(region.keyword))
            return &region;
    }
    return nullptr;
}

/// Items whose end is looked for, but for processes and assignments.
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

/// In the order in which items are given up.
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

/// Finds where items begin, in one pass.
class TextItems::Scanner
{
public:
    explicit Scanner(TextItems *items)
        : m_items(items)
        , m_reader(VerilogTokens(items->m_text, items->m_systemVerilog))
    {
    }

    void run();

private:
    void scanToken();
    bool scanKeyword();
    void scanAttribute();
    void scanBlocks();
    void scanAssertion();
    void scanDefault();
    void scanFront();
    void scanRegion(const Region &region);
    void scanUnit();
    Start *add(TextItem::Kind kind);
    void closeRegion();
    void closeUnit();
    void keepFront() { m_front = m_front ? m_front : m_reader.token().place; }
    int offsetOf(const char *place) const { return int(place - m_items->m_text.constData()); }
    const Token &token() const { return m_reader.token(); }

    TextItems *m_items;
    TokenReader m_reader;
    Token m_previous;
    const char *m_front = nullptr; ///< Label, attribute or "default" in front of the next item.
    QVector<int> m_units;          ///< Open ones, as indexes of starts.
    QVector<QPair<int, Keyword>> m_regions; ///< Open ones, with the keywords that end them.
    QVector<Keyword> m_blocks;              ///< Open begin, case and fork.
    int m_process = -1;                     ///< Index of the last start of that kind.
    int m_assignment = -1;
    int m_depth = 0; ///< Of groups in brackets.
};

void TextItems::Scanner::run()
{
    while (!m_reader.atEnd())
        scanToken();
}

void TextItems::Scanner::scanToken()
{
    if (endsUnit(token())) {
        closeUnit();
        return;
    }
    if (m_depth == 0 && token().is('(') && !m_previous.is('@') && m_reader.following().is('*')) {
        scanAttribute();
        return;
    }
    m_depth += opensGroup(token()) ? 1 : closesGroup(token()) ? -1 : 0;
    m_depth = qMax(0, m_depth);
    const bool isLabel = token().kind == Token::Identifier && m_reader.following().is(':') &&
                         (m_blocks.isEmpty() || m_blocks.last() != Keyword::Case);
    if (m_depth == 0 && isLabel) {
        keepFront();
        m_reader.advance();
        m_reader.advance();
        return;
    }
    if (m_depth > 0 || !scanKeyword()) {
        m_previous = token();
        m_reader.advance();
    }
    m_front = nullptr;
}

/// (* ... *)
void TextItems::Scanner::scanAttribute()
{
    keepFront();
    m_reader.advance();
    m_reader.advance();
    bool afterStar = false;
    while (!m_reader.atEnd() && !endsUnit(token())) {
        const bool ends = afterStar && token().is(')');
        afterStar = token().is('*');
        m_reader.advance();
        if (ends)
            return;
    }
}

/// True when the position has moved on.
bool TextItems::Scanner::scanKeyword()
{
    const Token word = token();
    const bool isSystemVerilog = m_items->m_systemVerilog;
    if (isSystemVerilog && isWord(word, "let") && m_reader.following().kind == Token::Identifier) {
        add(TextItem::Let)->item.name = toBytes(m_reader.following().text);
        return false;
    }
    if (word.is(Keyword::Assert) || (isSystemVerilog && isWord(word, "expect"))) {
        scanAssertion();
        return true;
    }
    if (isSystemVerilog && isWord(word, "constraint") &&
        m_reader.following().kind == Token::Identifier)
        add(TextItem::Constraint)->item.name = toBytes(m_reader.following().text);
    else if (isWord(word, "assign"))
        add(TextItem::Assignment);
    if (word.kind != Token::Reserved)
        return false;
    if (!m_regions.isEmpty() && word.is(m_regions.last().second)) {
        closeRegion();
        return true;
    }
    if ((word.is(Keyword::Virtual) || word.is(Keyword::Interface)) &&
        m_reader.following().is(Keyword::Class)) {
        scanFront();
        return true;
    }
    const Region *region = regionOf(word);
    if (region && !m_previous.is(Keyword::Typedef)) {
        scanRegion(*region);
        return true;
    }
    if (word.is(Keyword::Default)) {
        scanDefault();
        return true;
    }
    if (word.is(Keyword::Always))
        add(TextItem::Process);
    else if (word.is(Keyword::Module) || word.is(Keyword::Interface) || word.is(Keyword::Program))
        scanUnit();
    else
        scanBlocks();
    return false;
}

void TextItems::Scanner::scanBlocks()
{
    const Token &word = token();
    const bool isFork = word.is(Keyword::Fork) && !m_previous.is(Keyword::Disable);
    if (word.is(Keyword::Begin) || word.is(Keyword::Case) || isFork)
        m_blocks.append(word.keyword);
    else if ((word.is(Keyword::End) || word.is(Keyword::Endcase) || word.is(Keyword::Join)) &&
             !m_blocks.isEmpty())
        m_blocks.removeLast();
}

/// assert [#0 | final | property | sequence] ( ...
void TextItems::Scanner::scanAssertion()
{
    add(TextItem::Assertion);
    m_previous = token();
    m_reader.advance();
    if (token().is(Keyword::Property) || token().is(Keyword::Sequence) ||
        token().is(Keyword::Always))
        m_reader.advance();
}

/// In front of "clocking" it belongs to that item, in front of "disable" it begins one.
void TextItems::Scanner::scanDefault()
{
    const Token next = m_reader.following();
    if (next.is(Keyword::Clocking)) {
        scanFront();
        return;
    }
    if (next.is(Keyword::Disable))
        add(TextItem::Clocking);
    m_previous = token();
    m_reader.advance();
}

/// A word in front of the keyword of a region.
void TextItems::Scanner::scanFront()
{
    keepFront();
    m_previous = token();
    m_reader.advance();
    scanRegion(*regionOf(token()));
}

void TextItems::Scanner::scanRegion(const Region &region)
{
    // "default clocking NAME;" names a block, everything else that begins so is one.
    bool isBlock = region.kind != TextItem::Clocking;
    for (TokenReader ahead = m_reader;
         !isBlock && !ahead.atEnd() && !ahead.token().is(';') && !endsUnit(ahead.token());
         ahead.advance())
        isBlock = ahead.token().is('@');
    Start *start = add(region.kind);
    m_reader.advance();
    while (token().is(Keyword::Other)) // automatic, static
        m_reader.advance();
    if (isBlock && token().kind == Token::Identifier)
        start->item.name = toBytes(token().text);
    if (isBlock)
        m_regions.append({m_items->m_starts.size() - 1, region.end});
}

void TextItems::Scanner::scanUnit()
{
    TokenReader ahead = m_reader;
    ahead.advance();
    while (ahead.token().is(Keyword::Other)) // automatic, static
        ahead.advance();
    // "interface class", "virtual interface", "extern module" have no end of their own.
    if (ahead.token().kind != Token::Identifier || m_previous.is(Keyword::Virtual) ||
        m_previous.is(Keyword::Extern))
        return;
    const bool isModule = !token().is(Keyword::Interface);
    Start *start = add(isModule ? TextItem::Module : TextItem::OtherUnit);
    start->item.name = toBytes(ahead.token().text);
    start->item.unit = start->item.name;
    m_units.append(m_items->m_starts.size() - 1);
}

TextItems::Start *TextItems::Scanner::add(TextItem::Kind kind)
{
    const int index = m_items->m_starts.size();
    m_process = kind == TextItem::Process ? index : m_process;
    m_assignment = kind == TextItem::Assignment ? index : m_assignment;
    Start start{TextItem(),
                m_units.isEmpty() ? -1 : m_units.last(),
                m_regions.isEmpty() ? -1 : m_regions.last().first,
                m_process,
                m_assignment,
                m_reader.tokens(),
                token()};
    start.item.kind = kind;
    start.item.range.begin = offsetOf(m_front ? m_front : token().place);
    start.item.line = token().line;
    start.item.keyword = offsetOf(token().place);
    if (start.unit >= 0)
        start.item.unit = m_items->m_starts[start.unit].item.unit;
    m_items->m_starts.append(start);
    return &m_items->m_starts.last();
}

void TextItems::Scanner::closeRegion()
{
    m_reader.advance();
    m_reader.skipLabel();
    m_items->m_starts[m_regions.takeLast().first].item.range.end = offsetOf(m_reader.end());
}

void TextItems::Scanner::closeUnit()
{
    m_reader.advance();
    m_reader.skipLabel();
    if (!m_units.isEmpty())
        m_items->m_starts[m_units.takeLast()].item.range.end = offsetOf(m_reader.end());
    m_regions.clear();
    m_blocks.clear();
    m_depth = 0;
    m_front = nullptr;
}

TextItems::TextItems(const QByteArray &text, bool systemVerilog)
    : m_text(text)
    , m_systemVerilog(systemVerilog)
{
    Scanner(this).run();
    for (int begin = 0; begin >= 0;) {
        m_lines.append(begin);
        const int end = m_text.indexOf('\n', begin);
        begin = end < 0 ? -1 : end + 1;
    }
}

/// An item without an end gets an empty range.
TextItem TextItems::completed(const Start &start) const
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
    item.range.end = ends ? int(reader.end() - m_text.constData()) : item.range.begin;
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
        [](int place, const Start &start) { return place < start.item.range.begin; });
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
    return VerilogTokens(QByteArray::fromRawData(m_text.constData() + item.range.begin,
                                                 item.range.end - item.range.begin),
                         m_systemVerilog);
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

/// What uses @p declared by its name, which is the token to be read next. An empty range for none.
TextItem TextItems::userAt(const TokenReader &reader, const Token &previous,
                           const TextItem &declared) const
{
    const int offset = int(reader.token().place - m_text.constData());
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

/// The statement or declaration that begins with the token to be read next. Its name is the one
/// that it declares.
TextItem TextItems::statementAt(TokenReader reader, const Token &previous) const
{
    TextItem statement;
    const bool begins = previous.is(';') || previous.is(')') || previous.is(':') ||
                        previous.kind == Token::Reserved;
    if (!begins)
        return statement;
    statement.kind = TextItem::Statement;
    statement.line = reader.token().line;
    statement.range.begin = int(reader.token().place - m_text.constData());
    const Token instance = reader.following();
    if (instance.kind == Token::Identifier)
        statement.name = toBytes(instance.text);
    if (reader.skipToSemicolon())
        statement.range.end = int(reader.end() - m_text.constData());
    return statement;
}

QVector<WrittenName> TextItems::writtenBy(const TextItem &item) const
{
    TextItem writer = item;
    if (item.kind == TextItem::Assertion) { // What it asserts writes nothing.
        TokenReader reader(tokensOf(item));
        while (!reader.atEnd() && !reader.token().is('('))
            reader.advance();
        reader.skipGroup();
        if (reader.atEnd())
            return {};
        writer.range.begin = int(reader.token().place - m_text.constData());
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
