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

} // namespace

PreprocessedText::PreprocessedText(const QByteArray &output, const QVector<PathAlias> &files,
                                   const QVector<PathAlias> &folders)
    : m_files(files)
    , m_output(splitOutput(output, files, folders))
{
    blankPageBreaks();
    leaveOutEncryptedCode();
    hideCode();
}

/// In the language a form feed is white space; for the elaborator it is not.
void PreprocessedText::blankPageBreaks()
{
    for (QByteArray &text : m_output.texts) {
        text.replace('\f', ' ');
        text.replace('\v', ' ');
    }
}

Place PreprocessedText::place(const TextLine &line) const
{
    if (line.text < 0 || line.text >= m_files.size())
        return {};
    const QVector<LineOrigin> &origins = m_output.origins[line.text];
    const auto origin = originOf(line.line, origins);
    if (origin == origins.end())
        return {m_files[line.text].path, line.line};
    return {m_output.names.path(origin->file), origin->line + line.line - origin->textLine};
}

void PreprocessedText::hideCode()
{
    for (int text = 0; text < m_files.size(); ++text) {
        const QVector<HiddenRegion> regions = blankHiddenCode(&m_output.texts[text]);
        for (const HiddenRegion &region : regions) {
            noteHidden(text, region.first, region.last);
            if (!region.closed)
                m_unclosed.append({text, region.mark});
        }
    }
}

void PreprocessedText::leaveOutEncryptedCode()
{
    for (int text = 0; text < m_files.size(); ++text) {
        const QVector<EncryptedRegion> regions = blankEncryptedCode(&m_output.texts[text]);
        for (const EncryptedRegion &region : regions) {
            noteHidden(text, region.first, region.last);
            m_encrypted.append({text, region.first});
        }
    }
}

/// Lines of a text may come from several files.
void PreprocessedText::noteHidden(int text, int first, int last)
{
    const QVector<LineOrigin> &origins = m_output.origins[text];
    for (auto origin = originOf(first, origins);
         origin != origins.end() && origin->textLine <= last; ++origin) {
        const int next = origin + 1 == origins.end() ? last + 1 : (origin + 1)->textLine;
        const int begin = qMax(origin->textLine, first);
        const int end = qMin(next - 1, last);
        const int shift = origin->line - origin->textLine;
        if (begin <= end)
            m_hidden[m_output.names.path(origin->file)].append({begin + shift, end + shift});
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
