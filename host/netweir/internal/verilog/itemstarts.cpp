// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "itemstarts.h"

#include "tokenreader.h"

#include <optional>

namespace NETWEIR::Internal {

namespace {

/// The kind of item that @p keyword begins, if the item has an end keyword and can be left out.
std::optional<TextItem::Kind> regionKind(Keyword keyword)
{
    switch (keyword) {
    case Keyword::Property:
        return TextItem::Property;
    case Keyword::Sequence:
        return TextItem::Sequence;
    case Keyword::Covergroup:
        return TextItem::Covergroup;
    case Keyword::Clocking:
        return TextItem::Clocking;
    case Keyword::Checker:
        return TextItem::Checker;
    case Keyword::Config:
        return TextItem::Config;
    case Keyword::Class:
        return TextItem::Class;
    default:
        return {};
    }
}

class ItemScanner
{
public:
    ItemScanner(const QByteArray &text, bool systemVerilog)
        : m_reader(VerilogTokens(text, systemVerilog))
    {
    }

    QVector<ItemStart> run();

private:
    void scanToken();
    bool isLabel() const;
    bool scanKeyword();
    bool scanScope();
    void scanBlocks();
    void scanAssertion();
    void scanDefault();
    void scanFront();
    void scanRegion(TextItem::Kind kind);
    bool isClockingBlock() const;
    void scanUnit();
    ItemStart *add(TextItem::Kind kind);
    void addNamed(TextItem::Kind kind);
    void advance();
    void keepFront();
    void closeRegion();
    void closeUnit();
    const Token &token() const { return m_reader.token(); }

    TokenReader m_reader;
    Token m_previous;
    int m_front = -1;          ///< Offset of a label, attribute or "default" in front of an item.
    QVector<int> m_units;      ///< Open units, as indexes of starts.
    QVector<int> m_regions;    ///< The same for items with an end keyword.
    QVector<Keyword> m_blocks; ///< Open begin, case, fork and the like.
    int m_process = -1;        ///< Index of the last start of a process.
    int m_assignment = -1;     ///< The same for assignments.
    int m_depth = 0;           ///< Number of open brackets.
    QVector<ItemStart> m_starts;
};

QVector<ItemStart> ItemScanner::run()
{
    while (!m_reader.atEnd())
        scanToken();
    return m_starts;
}

void ItemScanner::scanToken()
{
    if (endsUnit(token())) {
        closeUnit();
        return;
    }
    if (m_depth == 0 && !m_previous.is('@') && m_reader.atAttribute()) {
        keepFront();
        m_reader.skipAttribute();
        return;
    }
    if (opensGroup(token()))
        ++m_depth;
    else if (closesGroup(token()))
        m_depth = qMax(0, m_depth - 1);
    if (m_depth == 0 && isLabel()) {
        keepFront();
        m_reader.advance();
        m_reader.advance();
        return;
    }
    if (m_depth > 0 || !scanKeyword())
        advance();
    m_front = -1;
}

/// The label of a case item belongs to no item.
bool ItemScanner::isLabel() const
{
    return token().kind == Token::Identifier && m_reader.following().is(':') &&
           (m_blocks.isEmpty() || m_blocks.last() != Keyword::Case);
}

/// True when the position has moved on.
bool ItemScanner::scanKeyword()
{
    switch (token().keyword) {
    case Keyword::Assert:
    case Keyword::Expect:
        scanAssertion();
        return true;
    case Keyword::Default:
        scanDefault();
        return true;
    case Keyword::Let:
        addNamed(TextItem::Let);
        return false;
    case Keyword::Constraint:
        addNamed(TextItem::Constraint);
        return false;
    case Keyword::Always:
        add(TextItem::Process);
        return false;
    case Keyword::None:
        return false;
    case Keyword::Other:
        if (token().text == "assign")
            add(TextItem::Assignment);
        return false;
    default:
        return scanScope();
    }
}

/// Begin or end of a region, a unit or a block. True when the position has moved on.
bool ItemScanner::scanScope()
{
    const Keyword keyword = token().keyword;
    if (!m_regions.isEmpty() && keyword == endOf(m_starts[m_regions.last()].word.keyword)) {
        closeRegion();
        return true;
    }
    if ((keyword == Keyword::Virtual || keyword == Keyword::Interface) &&
        m_reader.following().is(Keyword::Class)) {
        scanFront();
        return true;
    }
    const std::optional<TextItem::Kind> kind = regionKind(keyword);
    if (kind && !m_previous.is(Keyword::Typedef)) {
        scanRegion(*kind);
        return true;
    }
    if (keyword == Keyword::Module || keyword == Keyword::Interface || keyword == Keyword::Program)
        scanUnit();
    else
        scanBlocks();
    return false;
}

void ItemScanner::scanBlocks()
{
    const int step = blockStep(token(), m_previous);
    if (step > 0)
        m_blocks.append(token().keyword);
    else if (step < 0 && !m_blocks.isEmpty())
        m_blocks.removeLast();
}

/// assert [#0 | final | property | sequence] ( ...
void ItemScanner::scanAssertion()
{
    add(TextItem::Assertion);
    advance();
    if (token().is(Keyword::Property) || token().is(Keyword::Sequence) ||
        token().is(Keyword::Always))
        m_reader.advance();
}

/// Before "clocking" it belongs to that item; before "disable" it begins an item.
void ItemScanner::scanDefault()
{
    const Token next = m_reader.following();
    if (next.is(Keyword::Clocking)) {
        scanFront();
        return;
    }
    if (next.is(Keyword::Disable))
        add(TextItem::Clocking);
    advance();
}

/// A word before the keyword of a region.
void ItemScanner::scanFront()
{
    keepFront();
    advance();
    scanRegion(*regionKind(token().keyword));
}

void ItemScanner::scanRegion(TextItem::Kind kind)
{
    const bool isBlock = kind != TextItem::Clocking || isClockingBlock();
    ItemStart *const start = add(kind);
    m_reader.advance();
    while (token().is(Keyword::Other)) // automatic, static
        m_reader.advance();
    if (!isBlock)
        return;
    if (token().kind == Token::Identifier)
        start->item.name = toBytes(token().text);
    m_regions.append(m_starts.size() - 1);
}

/// "default clocking NAME;" refers to a block; any other text that begins this way is a block.
bool ItemScanner::isClockingBlock() const
{
    TokenReader ahead = m_reader;
    while (!ahead.atUnitEnd() && !ahead.token().is(';') && !ahead.token().is('@'))
        ahead.advance();
    return ahead.token().is('@');
}

void ItemScanner::scanUnit()
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
    ItemStart *const start = add(isModule ? TextItem::Module : TextItem::OtherUnit);
    start->item.name = toBytes(ahead.token().text);
    start->item.unit = start->item.name;
    m_units.append(m_starts.size() - 1);
}

ItemStart *ItemScanner::add(TextItem::Kind kind)
{
    const int index = m_starts.size();
    m_process = kind == TextItem::Process ? index : m_process;
    m_assignment = kind == TextItem::Assignment ? index : m_assignment;
    ItemStart start{TextItem(),
                    m_units.isEmpty() ? -1 : m_units.last(),
                    m_regions.isEmpty() ? -1 : m_regions.last(),
                    m_process,
                    m_assignment,
                    m_reader.tokens(),
                    token()};
    start.item.kind = kind;
    start.item.range.begin = m_front < 0 ? token().offset : m_front;
    start.item.line = token().line;
    start.item.keyword = token().offset;
    if (start.unit >= 0)
        start.item.unit = m_starts[start.unit].item.unit;
    m_starts.append(start);
    return &m_starts.last();
}

/// An item whose name follows its keyword, if one does.
void ItemScanner::addNamed(TextItem::Kind kind)
{
    const Token name = m_reader.following();
    if (name.kind == Token::Identifier)
        add(kind)->item.name = toBytes(name.text);
}

void ItemScanner::advance()
{
    m_previous = token();
    m_reader.advance();
}

void ItemScanner::keepFront()
{
    if (m_front < 0)
        m_front = token().offset;
}

void ItemScanner::closeRegion()
{
    m_reader.advance();
    m_reader.skipLabel();
    m_starts[m_regions.takeLast()].item.range.end = m_reader.end();
}

void ItemScanner::closeUnit()
{
    m_reader.advance();
    m_reader.skipLabel();
    if (!m_units.isEmpty())
        m_starts[m_units.takeLast()].item.range.end = m_reader.end();
    m_regions.clear();
    m_blocks.clear();
    m_depth = 0;
    m_front = -1;
}

} // namespace

QVector<ItemStart> findItemStarts(const QByteArray &text, bool systemVerilog)
{
    return ItemScanner(text, systemVerilog).run();
}

} // namespace NETWEIR::Internal
