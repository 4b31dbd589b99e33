// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace Tool {

/// One line at the bottom of a terminal that tells what the program does. It is redrawn in place
/// and removed at the end. Where the standard error is no terminal, nothing is written at all.
class ProgressLine
{
public:
    ProgressLine();
    ~ProgressLine() { clear(); }
    ProgressLine(const ProgressLine &) = delete;
    ProgressLine &operator=(const ProgressLine &) = delete;

    /// Shows @p text in place of the former one, cut to the width of the terminal.
    void show(const QString &text);

    /// Removes the line. To be called before anything else is written to the terminal.
    void clear();

private:
    bool m_isTerminal = false;
    bool m_isShown = false;
    QString m_text;
};

} // namespace Tool
