// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "omissions.h"

#include "piecenames.h"

#include <netweir/internal/sources/preprocessedtext.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace NETWEIR::Internal {

namespace {

/// Whether @p message is about a construct that the elaborator does not support.
bool isUnreadable(const ToolMessage &message)
{
    static const char *const texts[] = {
        "disable isn't underneath a begin", // Legal, but not supported.
        "Usage of cycle delays requires default clocking"};
    if (message.text.contains("syntax error")) // "Unsupported or syntax error"
        return false;
    const bool isLegal =
        std::any_of(std::begin(texts), std::end(texts),
                    [&message](const char *text) { return message.text.startsWith(text); });
    return isLegal || message.code == "UNSUPPORTED" ||
           message.text.startsWith("Internal Error: ") ||
           message.text.toLower().contains("unsupported");
}

/// Whether a syntax error at @p offset comes from the text before the item, such as a missing
/// semicolon. The elaborator knows the first words of these kinds of items.
bool isFaultInFront(const TextItem &item, int offset)
{
    const bool isKnown = item.kind == TextItem::Assertion || item.kind == TextItem::Property ||
                         item.kind == TextItem::Covergroup || item.kind == TextItem::Process;
    return isKnown && offset <= item.keyword;
}

QString nameOf(const TextItem &item)
{
    switch (item.kind) {
    case TextItem::Assertion:
        return Text::tr("assertion");
    case TextItem::Property:
        return Text::tr("property");
    case TextItem::Sequence:
        return Text::tr("sequence");
    case TextItem::Covergroup:
        return Text::tr("covergroup");
    case TextItem::Clocking:
        return item.name.isEmpty() ? Text::tr("default") : Text::tr("clocking");
    case TextItem::Let:
        return Text::tr("let");
    case TextItem::Checker:
        return Text::tr("checker");
    case TextItem::Constraint:
        return Text::tr("constraint");
    case TextItem::Config:
        return Text::tr("config");
    case TextItem::Class:
        return Text::tr("class");
    case TextItem::Statement:
        return Text::tr("statement");
    case TextItem::Process:
        return Text::tr("procedural block");
    case TextItem::Assignment:
        return Text::tr("assignment");
    case TextItem::Module:
    case TextItem::OtherUnit:
        break;
    }
    return Text::tr("module");
}

} // namespace

Omissions::Omissions(const PreprocessedText &text, const QVector<bool> &isSystemVerilog,
                     const QSet<QByteArray> &roots)
    : m_text(text)
    , m_texts(text.texts())
    , m_isSystemVerilog(isSystemVerilog)
    , m_roots(roots)
{
}

Omissions::~Omissions() = default;

QStringList Omissions::leaveOut(const QVector<ToolMessage> &messages)
{
    m_found.clear();
    const bool anySyntax = std::any_of(messages.begin(), messages.end(), isSyntaxError);
    for (const ToolMessage &message : messages) {
        const Cause cause = causeOf(message, anySyntax);
        const TextLine line = cause == Cause::Fault ? TextLine() : textLineOf(message);
        if (line.text < 0)
            continue;
        const int offset = itemsOf(line.text).offsetOf(line.line, message.column);
        const QVector<TextItem> around = itemsOf(line.text).around(line.line, message.column);
        const auto item =
            std::find_if(around.begin(), around.end(), [&](const TextItem &candidate) {
                return mayGo(line.text, candidate, cause) &&
                       (cause != Cause::Syntax || !isFaultInFront(candidate, offset));
            });
        if (item != around.end())
            remove(line.text, *item, message.text);
    }
    removeUsers();
    return m_found;
}

/// Also leaves out everything that uses an omitted item, directly or indirectly.
void Omissions::removeUsers()
{
    while (!m_removed.isEmpty()) {
        const auto removed = std::exchange(m_removed, {});
        QVector<TextItem> everywhere; // Items that are declared outside of modules.
        for (auto text = removed.begin(); text != removed.end(); ++text) {
            removeUsers(text.key(), *text);
            std::copy_if(text->begin(), text->end(), std::back_inserter(everywhere),
                         [](const TextItem &item) {
                             return item.unit.isEmpty() && !item.name.isEmpty() &&
                                    item.kind < TextItem::Let;
                         });
        }
        for (TextItem &item : everywhere)
            item.range = TextRange(); // The item has no range in another text.
        for (int text = 0; text < m_texts.size() && !everywhere.isEmpty(); ++text) {
            if (!removed.contains(text) || removed.size() > 1)
                removeUsers(text, everywhere);
        }
    }
}

void Omissions::removeUsers(int text, const QVector<TextItem> &declared)
{
    const QVector<TextItem> users = itemsOf(text).usersOf(declared);
    for (const TextItem &user : users)
        remove(text, user, Text::tr("it uses what is left out").toUtf8());
}

/// For a construct that its grammar lacks, the elaborator reports a syntax error and then others
/// that mean nothing.
Omissions::Cause Omissions::causeOf(const ToolMessage &message, bool anySyntax) const
{
    if (!message.error)
        return Cause::Fault;
    if (anySyntax)
        return isSyntaxError(message) ? Cause::Syntax : Cause::Fault;
    if (isUnreadable(message))
        return Cause::Unreadable;
    // A use of something in an omitted module.
    if (!m_modules.isEmpty() && message.text.startsWith("Can't find definition of '") &&
        message.text.contains(" in dotted "))
        return Cause::Unreadable;
    // A use of something omitted, whose name the message quotes.
    const QByteArrayList parts = message.text.split('\'');
    const bool namesGone = std::any_of(parts.begin(), parts.end(), [this](const QByteArray &part) {
        return m_names.contains(part);
    });
    return namesGone ? Cause::Unreadable : Cause::Other;
}

bool Omissions::mayGo(int text, const TextItem &item, Cause cause)
{
    if (item.kind == TextItem::OtherUnit || m_gone.contains({text, item.range.begin}))
        return false;
    if (item.kind == TextItem::Module)
        return cause == Cause::Unreadable && !m_roots.contains(item.name);
    if (item.kind == TextItem::Assignment || cause == Cause::Unreadable)
        return cause == Cause::Unreadable;
    // Anywhere else an error is an error of the source, unless a word explains it.
    const bool isClass = item.kind == TextItem::Class;
    if (cause == Cause::Syntax && item.isVerification() && !isClass)
        return true;
    const bool mayHaveWord = item.kind == TextItem::Process || (isClass && cause == Cause::Syntax);
    return mayHaveWord && itemsOf(text).isBeyondGrammar(item);
}

void Omissions::remove(int text, const TextItem &item, const QByteArray &reason)
{
    if (m_gone.contains({text, item.range.begin}))
        return;
    m_gone.insert({text, item.range.begin});
    // An assertion can write in its pass and fail statements.
    if (item.kind == TextItem::Process || item.kind == TextItem::Assignment ||
        item.kind == TextItem::Assertion)
        noteWrites(text, item);
    if (item.kind == TextItem::Module)
        m_modules.insert(item.name);
    else if (!item.name.isEmpty())
        m_names.insert(item.name);

    QByteArray &content = m_texts[text];
    blank(&content, item.range);
    if (item.kind != TextItem::Module) // It may be all that a condition has.
        content[item.range.end - 1] = ';';

    const Place place = m_text.place({text, item.line});
    m_found.append(warningMessage(
        {}, Text::tr("left out: %1:%2: %3: %4")
                .arg(place.file, QString::number(place.line),
                     item.name.isEmpty()
                         ? nameOf(item)
                         : nameOf(item) + QLatin1Char(' ') + QString::fromUtf8(item.name),
                     QString::fromUtf8(reason))));
    m_removed[text].append(item);
}

void Omissions::noteWrites(int text, const TextItem &item)
{
    const QVector<WrittenName> written = itemsOf(text).writtenBy(item);
    QVector<OmittedWrite> &writes = m_writes[QString::fromUtf8(item.unit)];
    for (const WrittenName &target : written)
        writes.append({QString::fromUtf8(target.name), QString::fromUtf8(target.path), target.left,
                       target.right});
}

TextItems &Omissions::itemsOf(int text)
{
    std::unique_ptr<TextItems> &items = m_items[text];
    if (!items)
        items = std::make_unique<TextItems>(m_texts[text], m_isSystemVerilog.value(text));
    return *items;
}

} // namespace NETWEIR::Internal
