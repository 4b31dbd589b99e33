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
/// Wildcards and regular expressions follow QRegExp to the letter. Most names are turned away
/// without running the expression, by a look for a piece of text that every match must contain.
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
    QStringMatcher m_literal; ///< Of Expression: empty pattern when there is no usable text.
    QRegExp m_expression;
    bool m_plainSearch = false; ///< Of Substring: the pattern is beyond QStringMatcher.
};

/// The longest text that every match of the QRegExp @p pattern provably contains, empty when none
/// is found. Without regard to case QRegExp lets some letters beyond ASCII match others than the
/// substring search does; a name of ASCII letters that matches contains the text either way.
QString requiredLiteral(const QString &pattern, QRegExp::PatternSyntax syntax);

} // namespace TARN
