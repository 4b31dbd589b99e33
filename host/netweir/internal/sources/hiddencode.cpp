// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "hiddencode.h"

#include <netweir/internal/ground/resources.h>

#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <cstring>

namespace NETWEIR::Internal {

namespace {

/// The prefix that commentFilter() gives a comment.
const char KeptComment[] = "/*verilator ";

bool isBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Directives that also affect the code after the hidden code.
int lastingDirectiveLength(const char *line, const char *end)
{
    static const QRegularExpression lasting(QStringLiteral(
        "^\\s*`(default_nettype\\s+\\w+|unconnected_drive\\s+\\w+|nounconnected_drive|resetall)"
        "\\s*$"));
    const QByteArray text = QByteArray::fromRawData(line, int(end - line));
    if (!text.contains('`'))
        return 0;
    return lasting.match(QString::fromLatin1(text)).hasMatch() ? text.size() : 0;
}

/// Walks over preprocessed text from one comment to the next.
class HidingWalk
{
public:
    explicit HidingWalk(QByteArray *text)
        : m_at(text->data())
        , m_end(m_at + text->size())
    {
    }

    QVector<HiddenRegion> run();

private:
    void scanComment();
    char *endOfComment() const;
    void skipQuoted();
    void skipEscapedName();
    void meet(HidingMark mark, char *end);
    bool isCodeBefore(const char *mark) const;
    bool isCodeBehind(const char *mark) const;
    void hide(char *end);
    void blank(char *begin, char *end);
    char peek() const { return m_end - m_at > 1 ? m_at[1] : '\0'; }

    char *m_at;
    char *m_end;
    char *m_hidden = nullptr; ///< Begin of the open region.
    int m_line = 1;
    QVector<HiddenRegion> m_regions;
};

QVector<HiddenRegion> HidingWalk::run()
{
    while (m_at < m_end) {
        if (*m_at == '"') {
            skipQuoted();
        } else if (*m_at == '\\') {
            skipEscapedName();
        } else if (*m_at == '/' && peek() == '*') {
            scanComment();
        } else {
            m_line += *m_at == '\n' ? 1 : 0;
            ++m_at;
        }
    }
    if (m_hidden) {
        m_regions.last().last = m_line;
        hide(m_end);
    }
    return m_regions;
}

void HidingWalk::scanComment()
{
    char *const end = endOfComment();
    QByteArray comment(m_at, int(end - m_at));
    if (comment.startsWith(KeptComment))
        comment.replace(0, int(strlen(KeptComment)), "/*");
    meet(hidingMarkOf(comment), end);
    m_line += comment.count('\n');
    if (mentionsHidingMark(comment)) // The elaborator does not know it.
        blank(m_at, end);
    m_at = end;
}

char *HidingWalk::endOfComment() const
{
    static const char Closing[] = {'*', '/'};
    char *const close = std::search(m_at + 2, m_end, Closing, Closing + 2);
    return close == m_end ? m_end : close + 2;
}

void HidingWalk::skipQuoted()
{
    for (++m_at; m_at < m_end && *m_at != '"' && *m_at != '\n'; ++m_at) {
        if (*m_at == '\\' && m_end - m_at > 1) {
            ++m_at;
            m_line += *m_at == '\n' ? 1 : 0;
        }
    }
    if (m_at < m_end && *m_at == '"')
        ++m_at;
}

void HidingWalk::skipEscapedName()
{
    while (m_at < m_end && !isBlank(*m_at))
        ++m_at;
}

void HidingWalk::meet(HidingMark mark, char *end)
{
    if (mark == HidingMark::Off && !m_hidden) {
        m_hidden = m_at;
        m_regions.append({m_line, m_line + 1, m_line, false});
    } else if (mark == HidingMark::On && m_hidden) {
        m_regions.last().closed = true;
        m_regions.last().last = isCodeBefore(m_at) && !isCodeBehind(end) ? m_line : m_line - 1;
        hide(end);
    }
}

/// Whether hidden code shares the line with the mark at its end.
bool HidingWalk::isCodeBefore(const char *mark) const
{
    while (mark > m_hidden && mark[-1] != '\n' && isBlank(mark[-1]))
        --mark;
    return mark > m_hidden && mark[-1] != '\n';
}

bool HidingWalk::isCodeBehind(const char *mark) const
{
    while (mark < m_end && *mark != '\n' && isBlank(*mark))
        ++mark;
    return mark < m_end && *mark != '\n';
}

void HidingWalk::hide(char *end)
{
    blank(m_hidden, end);
    m_hidden = nullptr;
}

void HidingWalk::blank(char *begin, char *end)
{
    for (char *line = begin; line < end;) {
        char *const next = std::find(line, end, '\n');
        char *const from = line == begin ? line : line + lastingDirectiveLength(line, next);
        std::fill(from, next, ' ');
        line = next == end ? end : next + 1;
    }
}

} // namespace

bool mayHideCode(const QByteArray &content)
{
    return mentionsHidingMark(content) || content.contains("`include `");
}

QVector<HiddenRegion> blankHiddenCode(QByteArray *text)
{
    if (!text->contains(KeptComment))
        return {};
    return HidingWalk(text).run();
}

QByteArray commentFilter()
{
    QFile file(resourcePath(QStringLiteral("filters/hiddencode.pl")));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace NETWEIR::Internal
