// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "../netweir_global.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVector>

namespace NETWEIR {
namespace Internal {

/// A path as the tool was given it, and the path that users know it by.
struct PathAlias
{
    QByteArray alias;
    QString path;
};

/// The output of the preprocessor, taken apart into one text for each file that it was given.
///
/// In the texts every `line directive names its file by number ("f12"): the tool cuts names at the
/// first blank when it reads them back.
class NETWEIR_EXPORT PreprocessedText
{
public:
    /// @p files are the files in the order given to the tool, @p folders the include folders.
    PreprocessedText(const QByteArray &output, const QVector<PathAlias> &files,
                     const QVector<PathAlias> &folders);

    /// One text for each file, empty for one that the tool did not reach.
    const QVector<QByteArray> &texts() const { return m_texts; }

    /// The path behind a name in a tool's message: a number of the texts, or a name as the
    /// preprocessor prints it. Null for a name that is no source.
    QString path(const QByteArray &name) const;

    /// The path behind a file number.
    QString path(int file) const { return m_paths.value(file); }

private:
    struct Directive;

    void split(const QByteArray &output);
    void enterDirective(const Directive &directive);
    int numberOf(const QByteArray &name);
    int currentFile(const Directive &directive);
    QString resolve(const QByteArray &name) const;

    QVector<PathAlias> m_files;
    QHash<QByteArray, QString> m_filePaths; ///< By alias.
    QVector<PathAlias> m_folders;
    QVector<QByteArray> m_texts;
    int m_part = -1;

    QVector<QString> m_paths;             ///< By file number.
    QHash<QByteArray, int> m_numbers;     ///< By name as the preprocessor prints it.
    QHash<QByteArray, int> m_cutNumbers;  ///< By the name up to its first blank.
    QVector<QByteArray> m_open;           ///< The file being read and those that include it.
    int m_lastLine = 0;
};

} // namespace Internal
} // namespace NETWEIR
