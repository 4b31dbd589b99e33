// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "namematcher.h"

#include "netsearch.h"

#include <algorithm>

namespace TARN {

namespace {

bool isAscii(const QString &text)
{
    return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() < 0x80; });
}

bool hasSurrogates(const QString &text)
{
    return std::any_of(text.cbegin(), text.cend(), [](QChar c) { return c.isSurrogate(); });
}

/// Collects runs of literal characters and keeps the longest.
class LiteralRuns
{
public:
    void add(QChar c) { m_run += c; }

    /// A character right before a quantifier may be missing from the match.
    void dropLast() { m_run.chop(1); }

    void end()
    {
        if (m_run.size() > m_longest.size())
            m_longest = m_run;
        m_run.clear();
    }

    QString longest()
    {
        end();
        return m_longest;
    }

private:
    QString m_run;
    QString m_longest;
};

/// Index behind the set that opens at @p open, 0 when its extent is not plain to see.
int endOfSet(const QString &pattern, int open)
{
    int i = open + 1;
    if (i < pattern.size() && pattern.at(i) == QLatin1Char('^'))
        ++i;
    // In first place or behind a backslash the bracket may be one of the set.
    const int close = pattern.indexOf(QLatin1Char(']'), i);
    if (close == i || pattern.midRef(i, close - i).contains(QLatin1Char('\\')))
        return 0;
    return close + 1;
}

QString literalOfWildcard(const QString &pattern)
{
    LiteralRuns runs;
    for (int i = 0; i < pattern.size();) {
        const QChar c = pattern.at(i);
        if (c == QLatin1Char('[')) {
            runs.end();
            i = endOfSet(pattern, i);
            if (i == 0)
                return QString();
            continue;
        }
        ++i;
        if (c == QLatin1Char('*') || c == QLatin1Char('?'))
            runs.end();
        else if (c == QLatin1Char('\\') && i < pattern.size() &&
                 QStringLiteral("*?[]").contains(pattern.at(i)))
            runs.add(pattern.at(i++));
        else
            runs.add(c);
    }
    return runs.longest();
}

QString literalOfExpression(const QString &pattern)
{
    LiteralRuns runs;
    int depth = 0; // Of groups: what they hold may be missing from the match.
    for (int i = 0; i < pattern.size();) {
        QChar c = pattern.at(i);
        bool literal = false;
        int next = i + 1;
        switch (c.unicode()) {
        case '(':
            ++depth;
            break;
        case ')':
            --depth;
            break;
        case '|':
            if (depth == 0)
                return QString();
            break;
        case '[':
            next = endOfSet(pattern, i);
            break;
        case '{':
            next = pattern.indexOf(QLatin1Char('}'), i) + 1;
            Q_FALLTHROUGH();
        case '*':
        case '?':
            runs.dropLast();
            break;
        case '+':
        case '.':
        case '^':
        case '$':
            break;
        case '\\':
            if (next == pattern.size())
                return QString();
            c = pattern.at(next++);
            if (QStringLiteral("dDsSwWbB").contains(c))
                break;
            if (c.isLetterOrNumber())
                return QString();
            literal = true;
            break;
        default:
            literal = true;
        }
        if (next == 0)
            return QString();
        if (!literal)
            runs.end();
        else if (depth == 0)
            runs.add(c);
        i = next;
    }
    return runs.longest();
}

} // namespace

QString requiredLiteral(const QString &pattern, QRegExp::PatternSyntax syntax)
{
    if (syntax == QRegExp::WildcardUnix)
        return literalOfWildcard(pattern);
    if (syntax == QRegExp::RegExp)
        return literalOfExpression(pattern);
    return QString();
}

NameMatcher::NameMatcher(const SearchOptions &options)
    : m_caseSensitivity(static_cast<Qt::CaseSensitivity>(options.caseSensitivity))
    , m_pattern(options.pattern)
{
    if (m_pattern.isEmpty())
        return;
    if (!options.usePattern) {
        m_mode = Mode::Substring;
        m_plainSearch = hasSurrogates(m_pattern);
        m_literal = QStringMatcher(m_pattern, m_caseSensitivity);
        return;
    }
    const auto syntax = static_cast<QRegExp::PatternSyntax>(options.patternSyntax);
    m_expression = QRegExp(m_pattern, m_caseSensitivity, syntax);
    m_mode = Mode::Expression;
    m_literal = QStringMatcher(requiredLiteral(m_pattern, syntax), m_caseSensitivity);
}

bool NameMatcher::matches(const QString &name)
{
    switch (m_mode) {
    case Mode::All:
        return true;
    case Mode::Substring:
        return m_plainSearch ? name.indexOf(m_pattern, 0, m_caseSensitivity) != -1
                             : m_literal.indexIn(name) != -1;
    case Mode::Expression:
        return mayMatchExpression(name) && m_expression.exactMatch(name);
    }
    return false;
}

bool NameMatcher::mayMatchExpression(const QString &name) const
{
    if (m_literal.indexIn(name) != -1)
        return true;
    // QRegExp and the substring search fold some letters beyond ASCII differently.
    return m_caseSensitivity == Qt::CaseInsensitive && !isAscii(name);
}

} // namespace TARN
