// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "preprocessoroutput.h"

#include <netweir/internal/ground/messages.h>
#include <netweir/internal/ground/textrange.h>

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

namespace NETWEIR::Internal {

/// The preprocessed texts of the sources, without hidden and encrypted code.
///
/// The elaborator reads these texts, so its locations are positions in them; place() maps them to
/// the user's files. Takes as much memory as the output of the preprocessor, which may come in
/// pieces while the preprocessor is still running.
class PreprocessedText
{
public:
    /// @p files are the files in the order given to the tool, @p folders the include folders.
    PreprocessedText(const QVector<PathAlias> &files, const QVector<PathAlias> &folders);
    /// Of the whole output.
    PreprocessedText(const QByteArray &output, const QVector<PathAlias> &files,
                     const QVector<PathAlias> &folders);

    void add(const QByteArray &output);
    /// After the last piece of the output; before this, the texts from number complete() on, places
    /// and messages are not known.
    void finish();
    /// Number of the texts, from the first on, that will not change any more.
    int complete() const { return m_complete; }

    /// One text per file, empty for a file that the tool did not reach.
    const QVector<QByteArray> &texts() const { return m_splitter.result().texts; }

    /// Where a line comes from.
    Place place(const TextLine &line) const;

    /// The path for a name that the preprocessor prints. Null for a name that is not a source.
    QString path(const QByteArray &name) const { return names().path(name); }

    /// Whether a line of a user's file is hidden or encrypted.
    bool hides(const Place &place) const;

    /// One message per mark without a counterpart and per piece of encrypted code.
    QStringList warnings() const;

private:
    /// Lines of a user's file.
    struct LineRange
    {
        int first;
        int last;
    };

    void clean();
    void hideCode(int text);
    void leaveOutEncryptedCode(int text);
    void noteHidden(int text, int first, int last);
    const SourceNames &names() const { return m_splitter.result().names; }
    const QVector<LineOrigin> &originsOf(int text) const
    {
        return m_splitter.result().origins[text];
    }

    QVector<PathAlias> m_files;
    OutputSplitter m_splitter;
    int m_complete = 0;
    QHash<QString, QVector<LineRange>> m_hidden; ///< By path.
    QVector<TextLine> m_unclosed;                ///< Marks without a counterpart.
    QVector<TextLine> m_encrypted;               ///< Where encrypted code begins.
};

} // namespace NETWEIR::Internal
