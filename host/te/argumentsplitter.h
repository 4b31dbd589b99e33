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
    int line = 0;          ///< Of its list, 0 on a command line.
    QString unsetVariable; ///< The first one without a value; in the text it stands as written.
};

/// Divides the text of an argument file (`-f`) into its arguments: white space divides, comments
/// (`//` and `#` at the start of an argument to the end of the line, `/* */`) are skipped, single
/// and double quotes group, a backslash takes the next character as it is, and `$NAME`, `${NAME}`
/// and `$(NAME)` stand for environment variables. Within single quotes neither backslash nor
/// variable means anything; the one in a number such as `8'hFF` is no quote. A backslash at the end
/// of a line, blanks behind it or not, joins the next line. Returns false and sets @p error, with
/// the line, when a quote or a comment is not closed.
bool splitArguments(const QString &text, QVector<Argument> *arguments, QString *error);

} // namespace TE
