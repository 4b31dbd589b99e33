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
    explicit LiteralRuns(Qt::CaseSensitivity caseSensitivity)
        : m_asciiOnly(caseSensitivity == Qt::CaseInsensitive)
    {
    }

    void add(QChar c)
    {
        if (m_asciiOnly && c.unicode() >= 0x80)
            end();
        else
            m_run += c;
    }

    /// The character before a quantifier may be missing from the match.
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
    bool m_asciiOnly;
};

/// Index behind the set that opens at @p open, -1 when its extent is not plain to see.
int endOfSet(const QString &pattern, int open)
{
    int i = open + 1;
    if (i < pattern.size() && pattern.at(i) == QLatin1Char('^'))
        ++i;
    const int close = pattern.indexOf(QLatin1Char(']'), i);
    if (close <= i)
        return -1;
    const QStringRef inside = pattern.midRef(i, close - i);
    const bool plain = !inside.contains(QLatin1Char('\\')) && !inside.contains(QLatin1Char('['));
    return plain ? close + 1 : -1;
}

/// Index behind the group that opens at @p open, -1 when its extent is not plain to see.
int endOfGroup(const QString &pattern, int open)
{
    int depth = 0;
    for (int i = open; i < pattern.size();) {
        const QChar c = pattern.at(i);
        if (c == QLatin1Char('\\')) {
            i += 2;
            continue;
        }
        if (c == QLatin1Char('[')) {
            i = endOfSet(pattern, i);
            if (i < 0)
                return -1;
            continue;
        }
        ++i;
        if (c == QLatin1Char('('))
            ++depth;
        else if (c == QLatin1Char(')') && --depth == 0)
            return i;
    }
    return -1;
}

QString literalOfWildcard(const QString &pattern, Qt::CaseSensitivity caseSensitivity)
{
    LiteralRuns runs(caseSensitivity);
    for (int i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern.at(i);
        if (c == QLatin1Char('\\')) {
            if (i + 1 == pattern.size() || !QStringLiteral("*?[]").contains(pattern.at(i + 1)))
                return QString();
            runs.add(pattern.at(++i));
        } else if (c == QLatin1Char('*') || c == QLatin1Char('?')) {
            runs.end();
        } else if (c == QLatin1Char('[')) {
            const int behind = endOfSet(pattern, i);
            if (behind < 0)
                return QString();
            runs.end();
            i = behind - 1;
        } else if (c == QLatin1Char(']')) {
            return QString();
        } else {
            runs.add(c);
        }
    }
    return runs.longest();
}

QString literalOfExpression(const QString &pattern, Qt::CaseSensitivity caseSensitivity)
{
    LiteralRuns runs(caseSensitivity);
    bool lastIsLiteral = false;
    for (int i = 0; i < pattern.size();) {
        const QChar c = pattern.at(i);
        bool literal = false;
        int next = i + 1;
        switch (c.unicode()) {
        case '|':
        case ')':
        case ']':
        case '}':
            return QString();
        case '(':
            next = endOfGroup(pattern, i);
            break;
        case '[':
            next = endOfSet(pattern, i);
            break;
        case '{':
            next = pattern.indexOf(QLatin1Char('}'), i) + 1;
            Q_FALLTHROUGH();
        case '*':
        case '?':
            if (lastIsLiteral)
                runs.dropLast();
            break;
        case '+':
        case '.':
        case '^':
        case '$':
            break;
        case '\\': {
            if (next == pattern.size())
                return QString();
            const QChar escaped = pattern.at(next++);
            if (QStringLiteral("dDsSwWbB").contains(escaped))
                break;
            if (escaped.isLetterOrNumber())
                return QString();
            runs.add(escaped);
            literal = true;
            break;
        }
        default:
            runs.add(c);
            literal = true;
        }
        if (next <= i)
            return QString();
        if (!literal)
            runs.end();
        lastIsLiteral = literal;
        i = next;
    }
    return runs.longest();
}

} // namespace

QString requiredLiteral(const QString &pattern, QRegExp::PatternSyntax syntax,
                        Qt::CaseSensitivity caseSensitivity)
{
    if (syntax == QRegExp::WildcardUnix)
        return literalOfWildcard(pattern, caseSensitivity);
    if (syntax == QRegExp::RegExp)
        return literalOfExpression(pattern, caseSensitivity);
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
    m_mode = m_expression.isValid() ? Mode::Expression : Mode::Nothing;
    m_literal =
        QStringMatcher(requiredLiteral(m_pattern, syntax, m_caseSensitivity), m_caseSensitivity);
}

bool NameMatcher::matches(const QString &name)
{
    switch (m_mode) {
    case Mode::All:
        return true;
    case Mode::Nothing:
        return false;
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
    if (m_literal.pattern().isEmpty() || m_literal.indexIn(name) != -1)
        return true;
    // QRegExp and the substring search fold some letters beyond ASCII differently.
    return m_caseSensitivity == Qt::CaseInsensitive && !isAscii(name);
}

} // namespace TARN
