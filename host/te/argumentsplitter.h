// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

namespace TE {

/// Divides the text of an argument file (`-f`) into its arguments: white space divides, comments
/// (`//` and `#` at the start of an argument to the end of the line, `/* */`) are skipped, single
/// and double quotes group, a backslash takes the next character as it is, but not within single
/// quotes. Returns false and sets @p error, with the line, when a quote or a comment is not closed.
bool splitArguments(const QString &text, QStringList *arguments, QString *error);

} // namespace TE
