// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QVector>

namespace TE {

/// One argument of a design.
struct Argument
{
    QString text;
    int line = 0;          ///< Line in its list; 0 on a command line.
    QString unsetVariable; ///< The first variable that is not set; the text keeps its reference.
};

/// Splits the text of an argument file (`-f`) into arguments.
///
/// White space separates arguments. Comments are skipped: `/* */`, and `//` and `#` at the start of
/// an argument up to the end of the line. Single and double quotes group. A backslash takes the
/// next character literally; at the end of a line, also before trailing blanks, it joins the next
/// line. `$NAME`, `${NAME}` and `$(NAME)` stand for environment variables. Within single quotes
/// backslashes and variables have no meaning. The quote in a number such as `8'hFF` is no quote.
///
/// Returns false and sets @p error, with the line, when a quote or a comment is not closed.
bool splitArguments(const QString &text, QVector<Argument> *arguments, QString *error);

} // namespace TE
