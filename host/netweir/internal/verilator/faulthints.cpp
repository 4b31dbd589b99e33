// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "faulthints.h"

#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/verilog/verilogtokens.h>

#include <QByteArrayList>

#include <algorithm>
#include <cstring>

namespace NETWEIR::Internal {

namespace {

/// The number of errors that get hints; further ones say nothing new.
constexpr int MostExplained = 1000;

/// The length of the text before a place in which hints look for words.
constexpr int MostBefore = 4096;

constexpr int LongestName = 1024;

const char SyntaxError[] = "syntax error, unexpected ";

bool isDirection(const QByteArray &word)
{
    static const QByteArrayList directions = {"input", "output", "inout", "ref", "var", "const"};
    return directions.contains(word);
}

/// Whether a declaration may begin after the word.
bool mayPrecedeType(const QByteArray &word)
{
    static const QByteArrayList words = {";",      "{",     "}",      "(",     ",",        ")",
                                         "begin",  "end",   "static", "input", "output",   "inout",
                                         "ref",    "var",   "const",  "rand",  "typedef",  "packed",
                                         "signed", "local", "wire",   "type",  "automatic"};
    return words.contains(word) || word.startsWith("end");
}

bool isName(const QByteArray &word)
{
    VerilogTokens tokens(word, true);
    return tokens.next().kind == Token::Identifier;
}

} // namespace

FaultHints::FaultHints(const DesignSources &sources, const QVector<QByteArray> &texts,
                       const QSet<QByteArray> &names)
    : m_sources(sources)
    , m_texts(texts)
    , m_names(names)
{
}

void FaultHints::explain(ToolMessage *message, const TextLine &line)
{
    if (line.text < 0 || line.line < 1 || ++m_explained > MostExplained)
        return;
    if (m_misread.contains(line.text)) {
        message->followsUp = true;
        return;
    }
    const QVector<QByteArray> words = wordsBefore(line, message->column);
    if (!explainLanguage(message, line, words))
        explainType(message, words);
}

/// The last word is the one at the place itself. The first two come from the line before.
QVector<QByteArray> FaultHints::wordsBefore(const TextLine &line, int column)
{
    constexpr int OfLineInFront = 2;
    const QByteArray &text = m_texts[line.text];
    const int lineBegin = offsetOf(line);
    const int end = qMin(lineBegin + qMax(column, 1), text.size());
    const int begin = qMax(offsetOf({line.text, line.line - 1}), end - MostBefore);
    const QByteArray part = text.mid(begin, end - begin + LongestName);
    QVector<QByteArray> words;
    VerilogTokens tokens(part, true);
    for (Token token = tokens.next(); token.kind != Token::EndOfText; token = tokens.next()) {
        const int offset = begin + token.offset;
        if (offset >= end)
            break;
        if (offset < lineBegin && words.size() == OfLineInFront)
            words.removeFirst();
        words.append(token.kind == Token::Punctuation ? QByteArray(1, token.punctuation)
                                                      : toBytes(token.text));
    }
    return words;
}

int FaultHints::offsetOf(const TextLine &line)
{
    const QByteArray &text = m_texts[line.text];
    QVector<int> &offsets = m_lines[line.text];
    if (offsets.isEmpty())
        offsets = lineStarts(text);
    return line.line < 1 ? 0 : offsets.value(line.line - 1, text.size());
}

/// A Verilog file without errors gets no hint, because the words may be names of its own.
bool FaultHints::explainLanguage(ToolMessage *message, const TextLine &line,
                                 const QVector<QByteArray> &words)
{
    if (isSystemVerilog(m_sources, line.text))
        return false;
    QByteArray word;
    const bool isUnknown =
        message->text.startsWith(UnknownInterface) || message->text.startsWith(UnknownModule);
    if (isUnknown) {
        word = quotedName(message->text);
    } else if (message->text.startsWith(SyntaxError)) {
        const auto found = std::find_if(words.begin(), words.end(), isSystemVerilogWord);
        word = found == words.end() ? QByteArray() : *found;
    }
    if (!isSystemVerilogWord(word))
        return false;
    if (isUnknown)
        message->text.clear();
    message->advice =
        Text::tr("\"%1\" is a keyword of SystemVerilog, but the file is read as Verilog "
                 "%2.")
            .arg(QString::fromUtf8(word), m_sources.standard) +
        QLatin1Char(' ') + typeAdvice();
    m_misread.insert(line.text);
    return true;
}

/// "input T a" with an unknown T is an error about interfaces; "T [1:0] a" one of syntax.
void FaultHints::explainType(ToolMessage *message, const QVector<QByteArray> &words) const
{
    if (words.size() < 2)
        return;
    const QByteArray &before = words[words.size() - 2];
    const bool maybeDeclared = words.size() < 3 || mayPrecedeType(words[words.size() - 3]);
    if (message->text.startsWith(UnknownInterface) && isDirection(before)) {
        message->text.replace(0, int(strlen(UnknownInterface)), UnknownType);
        message->cause = message->text;
    } else if (message->text.startsWith(SyntaxError) && maybeDeclared && isName(before) &&
               (words.last() == "[" || isName(words.last())) && !m_names.contains(before)) {
        message->advice =
            Text::tr("\"%1\" may be a type that no file defines.").arg(QString::fromUtf8(before));
        message->cause = UnknownType + before;
    }
}

} // namespace NETWEIR::Internal
