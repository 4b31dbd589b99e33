// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "requiredliteral.h"

namespace TARN {

namespace {

/// Collects runs of literal characters and keeps the longest.
class LiteralRuns
{
public:
    void add(QChar c) { m_run += c; }

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

/// Index behind the set that opens at @p open, 0 when its end is not certain.
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

/// Walks over a regular expression, one element a step.
class ExpressionScan
{
public:
    explicit ExpressionScan(const QString &pattern)
        : m_pattern(pattern)
    {
    }

    QString literal()
    {
        while (m_next < m_pattern.size()) {
            if (!step())
                return QString();
        }
        return m_runs.longest();
    }

private:
    // These return false when no text is certain to be in every match.

    bool step()
    {
        const QChar c = m_pattern.at(m_next++);
        switch (c.unicode()) {
        case '\\':
            return takeEscape();
        case '(':
            ++m_depth;
            break;
        case ')':
            --m_depth;
            break;
        case '|':
            if (m_depth == 0)
                return false;
            break;
        case '[':
            m_runs.end();
            return skipTo(endOfSet(m_pattern, m_next - 1));
        case '{':
            endBeforeQuantifier();
            return skipTo(m_pattern.indexOf(QLatin1Char('}'), m_next) + 1);
        case '*':
        case '?':
            endBeforeQuantifier();
            return true;
        case '+':
        case '.':
        case '^':
        case '$':
            break;
        default:
            takeLiteral(c);
            return true;
        }
        m_runs.end();
        return true;
    }

    bool takeEscape()
    {
        if (m_next == m_pattern.size())
            return false;
        const QChar c = m_pattern.at(m_next++);
        if (QStringLiteral("dDsSwWbB").contains(c)) {
            m_runs.end();
            return true;
        }
        if (c.isLetterOrNumber())
            return false;
        takeLiteral(c);
        return true;
    }

    bool skipTo(int next)
    {
        m_next = next;
        return next != 0;
    }

    void takeLiteral(QChar c)
    {
        if (m_depth == 0) // What a group holds may be missing from the match.
            m_runs.add(c);
    }

    /// The character right before a quantifier may be missing from the match.
    void endBeforeQuantifier()
    {
        m_runs.dropLast();
        m_runs.end();
    }

    const QString m_pattern;
    LiteralRuns m_runs;
    int m_next = 0;
    int m_depth = 0; ///< Of groups.
};

} // namespace

QString requiredLiteral(const QString &pattern, QRegExp::PatternSyntax syntax)
{
    if (syntax == QRegExp::WildcardUnix)
        return literalOfWildcard(pattern);
    if (syntax == QRegExp::RegExp)
        return ExpressionScan(pattern).literal();
    return QString();
}

} // namespace TARN
