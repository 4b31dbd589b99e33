// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hiddencode.h"

#include <netweir/internal/ground/messages.h>

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

namespace NETWEIR::Internal {

/// A path that users know, and the plain name that the tool is given for it.
struct PathAlias
{
    QByteArray alias;
    QString path;
};

/// A line of one of the texts of PreprocessedText, counted from 1.
struct TextLine
{
    int text = -1;
    int line = 0;
};

/// The output of the preprocessor, taken apart into one text for each file that it was given, code
/// between marks and encrypted code left out.
///
/// The texts hold no `line directives: where a line comes from stands in a table, so that the
/// elaborator's locations are positions in the texts themselves. Memory: the size of the output.
class PreprocessedText
{
public:
    /// @p files are the files in the order given to the tool, @p folders the include folders.
    PreprocessedText(const QByteArray &output, const QVector<PathAlias> &files,
                     const QVector<PathAlias> &folders);

    /// One text for each file, empty for one that the tool did not reach.
    const QVector<QByteArray> &texts() const { return m_texts; }

    /// Where a line comes from.
    Place place(const TextLine &line) const;

    /// The path behind a name as the preprocessor prints it. Null for a name that is no source.
    QString path(const QByteArray &name) const;

    /// Whether a line of a user's file lies between marks that hide it or is encrypted.
    bool hides(const Place &place) const;

    /// One message for each mark that hides code and has no counterpart, and for each piece of
    /// encrypted code.
    QStringList warnings() const;

private:
    struct Directive;

    /// From this line of a text on, lines come from @p file, beginning with line @p line.
    struct Origin
    {
        int textLine;
        int file;
        int line;
    };

    /// Lines of a user's file.
    struct LineRange
    {
        int first;
        int last;
    };

    void split(const QByteArray &output);
    void blankPageBreaks();
    void hideCode();
    void leaveOutEncryptedCode();
    void noteHidden(int text, int first, int last);
    void follow(const Directive &directive);
    int currentFile(const Directive &directive);
    int numberOf(const QByteArray &name);
    QString resolve(const QByteArray &name) const;

    QVector<PathAlias> m_files;
    QHash<QByteArray, QString> m_filePaths; ///< By alias.
    QVector<PathAlias> m_folders;
    QVector<QByteArray> m_texts;
    QVector<QVector<Origin>> m_origins;          ///< By text, in the order of its lines.
    QHash<QString, QVector<LineRange>> m_hidden; ///< By path.
    QVector<TextLine> m_unclosed;                ///< Marks without a counterpart.
    QVector<TextLine> m_encrypted;               ///< Where encrypted code begins.

    QVector<QString> m_paths;            ///< By file number.
    QHash<QByteArray, int> m_numbers;    ///< By name as the preprocessor prints it.
    QHash<QByteArray, int> m_cutNumbers; ///< By the name up to its first blank.

    int m_text = -1;            ///< Being filled.
    int m_textLine = 1;         ///< Its next line.
    QVector<QByteArray> m_open; ///< The file being read and, in front, those that include it.
    int m_lastLine = 0;
};

} // namespace NETWEIR::Internal
