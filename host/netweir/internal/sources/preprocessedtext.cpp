// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "preprocessedtext.h"

#include "encryptedcode.h"
#include "hiddencode.h"

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

/// The origin of a line: the last one that begins at or before the line, the end when there is
/// none.
QVector<LineOrigin>::const_iterator originOf(int line, const QVector<LineOrigin> &origins)
{
    const auto after = std::upper_bound(
        origins.begin(), origins.end(), line,
        [](int textLine, const LineOrigin &origin) { return textLine < origin.textLine; });
    return after == origins.begin() ? origins.end() : after - 1;
}

/// In the language a form feed is white space; for the elaborator it is not.
void blankPageBreaks(QByteArray *text)
{
    text->replace('\f', ' ');
    text->replace('\v', ' ');
}

} // namespace

PreprocessedText::PreprocessedText(const QVector<PathAlias> &files,
                                   const QVector<PathAlias> &folders)
    : m_files(files)
    , m_splitter(files, folders)
{
}

PreprocessedText::PreprocessedText(const QByteArray &output, const QVector<PathAlias> &files,
                                   const QVector<PathAlias> &folders)
    : PreprocessedText(files, folders)
{
    add(output);
    finish();
}

void PreprocessedText::add(const QByteArray &output)
{
    m_splitter.add(output);
    clean();
}

void PreprocessedText::finish()
{
    m_splitter.finish();
    clean();
}

/// Takes what nobody is to read out of the texts that are complete now.
void PreprocessedText::clean()
{
    for (; m_complete < m_splitter.complete(); ++m_complete) {
        blankPageBreaks(m_splitter.text(m_complete));
        leaveOutEncryptedCode(m_complete);
        hideCode(m_complete);
    }
}

Place PreprocessedText::place(const TextLine &line) const
{
    if (line.text < 0 || line.text >= m_files.size())
        return {};
    const QVector<LineOrigin> &origins = originsOf(line.text);
    const auto origin = originOf(line.line, origins);
    if (origin == origins.end())
        return {m_files[line.text].path, line.line};
    return {names().path(origin->file), origin->line + line.line - origin->textLine};
}

void PreprocessedText::hideCode(int text)
{
    const QVector<HiddenRegion> regions = blankHiddenCode(m_splitter.text(text));
    for (const HiddenRegion &region : regions) {
        noteHidden(text, region.first, region.last);
        if (!region.closed)
            m_unclosed.append({text, region.mark});
    }
}

void PreprocessedText::leaveOutEncryptedCode(int text)
{
    const QVector<EncryptedRegion> regions = blankEncryptedCode(m_splitter.text(text));
    for (const EncryptedRegion &region : regions) {
        noteHidden(text, region.first, region.last);
        m_encrypted.append({text, region.first});
    }
}

/// Lines of a text may come from several files.
void PreprocessedText::noteHidden(int text, int first, int last)
{
    const QVector<LineOrigin> &origins = originsOf(text);
    for (auto origin = originOf(first, origins);
         origin != origins.end() && origin->textLine <= last; ++origin) {
        const int next = origin + 1 == origins.end() ? last + 1 : (origin + 1)->textLine;
        const int begin = qMax(origin->textLine, first);
        const int end = qMin(next - 1, last);
        const int shift = origin->line - origin->textLine;
        if (begin <= end)
            m_hidden[names().path(origin->file)].append({begin + shift, end + shift});
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
            warningMessage(place(mark), Text::tr("The code after this comment is hidden up to the "
                                                 "end of the file. Add a comment with translate_on "
                                                 "where the design continues.")));
    for (const TextLine &begin : m_encrypted)
        result.append(warningMessage(place(begin), Text::tr("The encrypted code from this line on "
                                                            "is left out.")));
    return result;
}

} // namespace NETWEIR::Internal
