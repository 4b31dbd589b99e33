// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QRegExp>
#include <QString>
#include <QStringMatcher>

namespace TARN {

struct SearchOptions;

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

    bool matches(const QString &name);

private:
    enum class Mode { All, Substring, Expression };

    bool mayMatchExpression(const QString &name) const;

    Mode m_mode = Mode::All;
    Qt::CaseSensitivity m_caseSensitivity = Qt::CaseInsensitive;
    QString m_pattern;
    QStringMatcher m_literal; ///< For Expression: empty when no text is required.
    QRegExp m_expression;
    bool m_plainSearch = false; ///< For Substring: QStringMatcher cannot take it.
};

} // namespace TARN
