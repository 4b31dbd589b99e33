// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "preprocessoroutput.h"

#include <cstring>

namespace NETWEIR::Internal {

namespace {

const char LineWord[] = "`line ";
constexpr int LineWordLength = sizeof(LineWord) - 1;

enum Level { Continue = 0, Enter = 1 };

bool isSameOrCut(const QByteArray &full, const QByteArray &name)
{
    return full == name || (full.size() > name.size() && upToBlank(full) == name);
}

} // namespace

/// `line NUMBER "NAME" LEVEL
struct OutputSplitter::LineDirective
{
    int line = 0;
    QByteArray name;
    int level = Continue;
};

bool OutputSplitter::parseDirective(const char *begin, const char *end, LineDirective *result)
{
    if (end - begin <= LineWordLength || memcmp(begin, LineWord, LineWordLength) != 0)
        return false;
    const QByteArray text = QByteArray::fromRawData(begin, int(end - begin));
    const int open = text.indexOf('"');
    const int close = text.lastIndexOf('"');
    if (open < 0 || close <= open)
        return false;
    bool isNumber = false;
    result->line = text.mid(LineWordLength, open - LineWordLength).trimmed().toInt(&isNumber);
    result->name = text.mid(open + 1, close - open - 1);
    result->level = text.mid(close + 1).trimmed().toInt();
    return isNumber;
}

OutputSplitter::OutputSplitter(const QVector<PathAlias> &files, const QVector<PathAlias> &folders)
    : m_files(files)
    , m_folders(folders)
    , m_result{QVector<QByteArray>(files.size()), QVector<QVector<LineOrigin>>(files.size()),
               SourceNames(files)}
{
}

/// Only whole lines are split; a line may end in a later piece.
void OutputSplitter::add(const QByteArray &piece)
{
    const int end = piece.lastIndexOf('\n') + 1;
    if (end > 0 && !m_rest.isEmpty()) {
        const int first = piece.indexOf('\n') + 1;
        m_rest.append(piece.constData(), first);
        addLines(m_rest.constData(), m_rest.constData() + m_rest.size());
        addLines(piece.constData() + first, piece.constData() + end);
        m_rest.clear();
    } else {
        addLines(piece.constData(), piece.constData() + end);
    }
    m_rest.append(piece.constData() + end, piece.size() - end);
}

void OutputSplitter::finish()
{
    addLines(m_rest.constData(), m_rest.constData() + m_rest.size());
    m_rest.clear();
    m_isFinished = true;
}

int OutputSplitter::complete() const
{
    return m_isFinished ? m_files.size() : qMax(m_text, 0);
}

void OutputSplitter::addLines(const char *begin, const char *end)
{
    const char *kept = begin; // Start of the text not yet copied.
    for (const char *line = begin; line < end;) {
        const char *next = static_cast<const char *>(memchr(line, '\n', size_t(end - line)));
        next = next ? next + 1 : end;
        LineDirective directive;
        if (parseDirective(line, next, &directive)) {
            append(kept, line);
            follow(directive);
            kept = next;
        } else {
            ++m_textLine;
        }
        line = next;
    }
    append(kept, end);
}

void OutputSplitter::append(const char *begin, const char *end)
{
    if (m_text >= 0)
        m_result.texts[m_text].append(begin, int(end - begin));
}

void OutputSplitter::follow(const LineDirective &directive)
{
    // Files of the command line have names that no include line can have.
    if (directive.level == Enter && m_text + 1 < m_files.size() &&
        directive.name == m_files[m_text + 1].alias) {
        ++m_text;
        m_textLine = 1;
        m_open.clear();
    }
    if (m_text < 0)
        return;
    const int file = m_result.names.add(currentFile(directive), m_folders);
    m_result.origins[m_text].append({m_textLine, file, directive.line});
    m_lastLine = directive.line;
}

/// The full name of the file in a directive, which may be cut at a blank.
QByteArray OutputSplitter::currentFile(const LineDirective &directive)
{
    if (directive.level == Enter) {
        m_open.append(directive.name);
        return directive.name;
    }
    // The output does not mark the end of a file with a blank in its name: the same cut name with a
    // lower line number is the including file.
    if (m_open.size() > 1 && directive.line < m_lastLine &&
        isSameOrCut(m_open.last(), directive.name) &&
        isSameOrCut(m_open[m_open.size() - 2], directive.name))
        m_open.removeLast();
    for (int i = m_open.size() - 1; i >= 0; --i) {
        if (isSameOrCut(m_open[i], directive.name)) {
            m_open.resize(i + 1);
            return m_open[i];
        }
    }
    return directive.name; // Named by a `line directive of the source.
}

} // namespace NETWEIR::Internal
