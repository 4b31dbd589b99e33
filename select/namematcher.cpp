// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "namematcher.h"

#include "netsearch.h"
#include "requiredliteral.h"

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

} // namespace

bool TextSearch::isIn(const QString &name, int same)
{
    if (same != m_same) {
        m_same = same;
        m_isInSame = same > 0 && m_matcher.indexIn(name.constData(), same) != -1;
    }
    return m_isInSame || m_matcher.indexIn(name, qMax(0, same - m_overlap)) != -1;
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
        m_literal = TextSearch(m_pattern, m_caseSensitivity);
        return;
    }
    const auto syntax = static_cast<QRegExp::PatternSyntax>(options.patternSyntax);
    m_expression = QRegExp(m_pattern, m_caseSensitivity, syntax);
    m_mode = Mode::Expression;
    m_literal = TextSearch(requiredLiteral(m_pattern, syntax), m_caseSensitivity);
}

bool NameMatcher::matches(const QString &name, int same)
{
    switch (m_mode) {
    case Mode::All:
        return true;
    case Mode::Substring:
        return m_plainSearch ? name.indexOf(m_pattern, 0, m_caseSensitivity) != -1
                             : m_literal.isIn(name, same);
    case Mode::Expression:
        return mayMatchExpression(name, same) && m_expression.exactMatch(name);
    }
    return false;
}

bool NameMatcher::mayMatchExpression(const QString &name, int same)
{
    if (m_literal.isIn(name, same))
        return true;
    // QRegExp and the substring search fold some letters beyond ASCII differently.
    return m_caseSensitivity == Qt::CaseInsensitive && !isAscii(name);
}

} // namespace TARN
