// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sourcenames.h"

#include <QByteArray>
#include <QVector>

namespace NETWEIR::Internal {

/// From line @p textLine of a text on, the lines come from a file, starting with its line @p line.
struct LineOrigin
{
    int textLine = 1;
    int file = 0; ///< Its number in the names.
    int line = 1;
};

/// The output of the preprocessor, one text per input file. Origins replace the `line directives of
/// the output.
struct PreprocessorOutput
{
    QVector<QByteArray> texts;            ///< Empty for a file that the tool did not reach.
    QVector<QVector<LineOrigin>> origins; ///< By text, in the order of its lines.
    SourceNames names;
};

/// Splits the output of the preprocessor, which may come in pieces. Linear in the output.
class OutputSplitter
{
public:
    /// @p files are the files in the order given to the tool, @p folders the include folders.
    OutputSplitter(const QVector<PathAlias> &files, const QVector<PathAlias> &folders);

    void add(const QByteArray &piece);
    /// After the last piece.
    void finish();

    /// Number of the texts that will not change any more. They are the first ones.
    int complete() const;

    /// Complete after finish().
    const PreprocessorOutput &result() const { return m_result; }
    /// A complete text, to be changed in place. Its lines must not change.
    QByteArray *text(int index) { return &m_result.texts[index]; }

private:
    struct LineDirective;

    static bool parseDirective(const char *begin, const char *end, LineDirective *result);
    void addLines(const char *begin, const char *end);
    void append(const char *begin, const char *end);
    void follow(const LineDirective &directive);
    QByteArray currentFile(const LineDirective &directive);

    QVector<PathAlias> m_files;
    QVector<PathAlias> m_folders;
    QByteArray m_rest; ///< The beginning of a line.
    bool m_isFinished = false;
    int m_text = -1;            ///< Being filled.
    int m_textLine = 1;         ///< Its next line.
    QVector<QByteArray> m_open; ///< The file being read, preceded by the files that include it.
    int m_lastLine = 0;
    PreprocessorOutput m_result;
};

} // namespace NETWEIR::Internal
