// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QRegExp>
#include <QString>
#include <QStringMatcher>

namespace TARN {

struct SearchOptions;

/// Looks for a text in one name after another. What a name has in common with the one before is
/// searched once for all names that begin so.
class TextSearch
{
public:
    TextSearch() = default;
    TextSearch(const QString &text, Qt::CaseSensitivity caseSensitivity)
        : m_matcher(text, caseSensitivity)
        , m_overlap(qMax(0, text.size() - 1))
    {
    }

    /// The first @p same letters of @p name are those of the name before.
    bool isIn(const QString &name, int same);

private:
    QStringMatcher m_matcher;
    int m_overlap = 0; ///< Letters of the beginning that a match behind it may have.
    int m_same = 0;    ///< Of the names before.
    bool m_isInSame = false;
};

/// The match test of a net search, prepared once for many names.
///
/// Wildcards and regular expressions follow QRegExp to the letter. Most names are rejected without
/// running the expression: they lack a text that every match contains.
class NameMatcher
{
public:
    explicit NameMatcher(const SearchOptions &options);

    /// Everything matches: the pattern is empty.
    bool matchesAll() const { return m_mode == Mode::All; }

    /// The first @p same letters of @p name are known to be those of the name tested before.
    bool matches(const QString &name, int same = 0);

private:
    enum class Mode { All, Substring, Expression };

    bool mayMatchExpression(const QString &name, int same);

    Mode m_mode = Mode::All;
    Qt::CaseSensitivity m_caseSensitivity = Qt::CaseInsensitive;
    QString m_pattern;
    TextSearch m_literal; ///< For Expression: empty when no text is required.
    QRegExp m_expression;
    bool m_plainSearch = false; ///< For Substring: TextSearch cannot take it.
};

} // namespace TARN
