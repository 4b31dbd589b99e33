// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "preprocessedtext.h"

#include "encryptedcode.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cstring>

namespace NETWEIR::Internal {

namespace {

const char LineWord[] = "`line ";
constexpr int LineWordLength = sizeof(LineWord) - 1;

enum Level { Continue = 0, Enter = 1 };

QByteArray upToBlank(const QByteArray &name)
{
    for (int i = 0; i < name.size(); ++i) {
        if (name[i] == ' ' || name[i] == '\t')
            return name.left(i);
    }
    return name;
}

bool isSameOrCut(const QByteArray &full, const QByteArray &name)
{
    return full == name || (full.size() > name.size() && upToBlank(full) == name);
}

} // namespace

/// `line NUMBER "NAME" LEVEL
struct PreprocessedText::Directive
{
    int line = 0;
    QByteArray name;
    int level = Continue;

    static bool parse(const char *begin, const char *end, Directive *result)
    {
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
};

PreprocessedText::PreprocessedText(const QByteArray &output, const QVector<PathAlias> &files,
                                   const QVector<PathAlias> &folders)
    : m_files(files)
    , m_folders(folders)
    , m_texts(files.size())
    , m_origins(files.size())
{
    for (const PathAlias &file : m_files)
        m_filePaths.insert(file.alias, file.path);
    split(output);
    blankPageBreaks();
    leaveOutEncryptedCode();
    hideCode();
}

void PreprocessedText::split(const QByteArray &output)
{
    const char *const end = output.constData() + output.size();
    const char *kept = output.constData(); // Start of the text not yet copied.
    for (const char *line = kept; line < end;) {
        const char *next = static_cast<const char *>(memchr(line, '\n', size_t(end - line)));
        next = next ? next + 1 : end;
        Directive directive;
        if (next - line > LineWordLength && memcmp(line, LineWord, LineWordLength) == 0 &&
            Directive::parse(line, next, &directive)) {
            if (m_text >= 0)
                m_texts[m_text].append(kept, int(line - kept));
            follow(directive);
            kept = next;
        } else {
            ++m_textLine;
        }
        line = next;
    }
    if (m_text >= 0)
        m_texts[m_text].append(kept, int(end - kept));
}

/// The language has form feeds among its blanks, the elaborator does not.
void PreprocessedText::blankPageBreaks()
{
    for (QByteArray &text : m_texts) {
        text.replace('\f', ' ');
        text.replace('\v', ' ');
    }
}

void PreprocessedText::follow(const Directive &directive)
{
    // The files of the command line have names that no include line can produce.
    if (directive.level == Enter && m_text + 1 < m_files.size() &&
        directive.name == m_files[m_text + 1].alias) {
        ++m_text;
        m_textLine = 1;
        m_open.clear();
    }
    if (m_text < 0)
        return;
    m_origins[m_text].append({m_textLine, currentFile(directive), directive.line});
    m_lastLine = directive.line;
}

Place PreprocessedText::place(const TextLine &line) const
{
    if (line.text < 0 || line.text >= m_origins.size())
        return {};
    const QVector<Origin> &origins = m_origins[line.text];
    const auto after = std::upper_bound(
        origins.begin(), origins.end(), line.line,
        [](int textLine, const Origin &origin) { return textLine < origin.textLine; });
    if (after == origins.begin())
        return {m_files[line.text].path, line.line};
    const Origin &origin = *(after - 1);
    return {m_paths[origin.file], origin.line + line.line - origin.textLine};
}

void PreprocessedText::hideCode()
{
    for (int text = 0; text < m_texts.size(); ++text) {
        const QVector<HiddenRegion> regions = blankHiddenCode(&m_texts[text]);
        for (const HiddenRegion &region : regions) {
            noteHidden(text, region.first, region.last);
            if (!region.closed)
                m_unclosed.append({text, region.mark});
        }
    }
}

void PreprocessedText::leaveOutEncryptedCode()
{
    for (int text = 0; text < m_texts.size(); ++text) {
        const QVector<EncryptedRegion> regions = blankEncryptedCode(&m_texts[text]);
        for (const EncryptedRegion &region : regions) {
            noteHidden(text, region.first, region.last);
            m_encrypted.append({text, region.first});
        }
    }
}

void PreprocessedText::noteHidden(int text, int first, int last)
{
    const QVector<Origin> &origins = m_origins[text];
    const auto after = std::upper_bound(
        origins.begin(), origins.end(), first,
        [](int textLine, const Origin &origin) { return textLine < origin.textLine; });
    for (auto origin = after == origins.begin() ? after : after - 1;
         origin != origins.end() && origin->textLine <= last; ++origin) {
        const int next = origin + 1 == origins.end() ? last + 1 : (origin + 1)->textLine;
        const int begin = qMax(origin->textLine, first);
        const int end = qMin(next - 1, last);
        if (begin > end)
            continue;
        m_hidden[m_paths[origin->file]].append(
            {origin->line + begin - origin->textLine, origin->line + end - origin->textLine});
    }
}

bool PreprocessedText::hides(const Place &place) const
{
    const QVector<LineRange> ranges = m_hidden.value(place.file);
    return std::any_of(ranges.begin(), ranges.end(), [&place](const LineRange &range) {
        return range.first <= place.line && place.line <= range.last;
    });
}

QStringList PreprocessedText::warnings() const
{
    QStringList result;
    for (const TextLine &mark : m_unclosed)
        result.append(
            warningMessage(place(mark), Text::tr("The code behind this comment is hidden up to the "
                                                 "end of the file. Add a comment with translate_on "
                                                 "where the design goes on.")));
    for (const TextLine &begin : m_encrypted)
        result.append(warningMessage(place(begin), Text::tr("The encrypted code from this line on "
                                                            "is left out.")));
    return result;
}

int PreprocessedText::currentFile(const Directive &directive)
{
    if (directive.level == Enter) {
        m_open.append(directive.name);
        return numberOf(directive.name);
    }
    // The end of a file whose name has a blank is not announced: the same cut name with a lower
    // line number is the including file.
    if (m_open.size() > 1 && directive.line < m_lastLine &&
        isSameOrCut(m_open.last(), directive.name) &&
        isSameOrCut(m_open[m_open.size() - 2], directive.name))
        m_open.removeLast();
    for (int i = m_open.size() - 1; i >= 0; --i) {
        if (isSameOrCut(m_open[i], directive.name)) {
            m_open.resize(i + 1);
            return numberOf(m_open[i]);
        }
    }
    return numberOf(directive.name); // Named by a `line directive of the source.
}

int PreprocessedText::numberOf(const QByteArray &name)
{
    const auto known = m_numbers.constFind(name);
    if (known != m_numbers.constEnd())
        return *known;
    const int number = m_paths.size();
    m_paths.append(resolve(name));
    m_numbers.insert(name, number);
    m_cutNumbers.insert(upToBlank(name), number);
    return number;
}

QString PreprocessedText::resolve(const QByteArray &name) const
{
    const auto file = m_filePaths.constFind(name);
    if (file != m_filePaths.constEnd())
        return *file;
    for (const PathAlias &folder : m_folders) {
        if (name.startsWith(folder.alias + '/'))
            return QDir::cleanPath(folder.path + QFile::decodeName(name.mid(folder.alias.size())));
    }
    return QFile::decodeName(name);
}

QString PreprocessedText::path(const QByteArray &name) const
{
    const int known = m_numbers.value(name, m_cutNumbers.value(name, -1));
    return known >= 0 ? m_paths[known] : m_filePaths.value(name);
}

} // namespace NETWEIR::Internal
