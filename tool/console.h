// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "progressline.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace Tool {

/// Where the results and the messages of a command go.
///
/// Results go to the standard output piece by piece, or, with an output file, into this file at the
/// end, so that it is complete or untouched. After an error of writing the rest is dropped, and
/// finish() tells it.
class Console
{
public:
    Console() = default;
    Console(const Console &) = delete;
    Console &operator=(const Console &) = delete;

    /// Makes @p path the output file; "-" is the standard output. Returns false after an error
    /// message when the file can not be written, as far as this can be known now.
    bool setOutputFile(const QString &path);

    /// Returns false after an error message when the output file is one of @p inputs, which the
    /// command reads.
    bool sparesInputs(const QStringList &inputs);

    /// A part of the result.
    void write(const QByteArray &text);

    /// Writes "tarn: @p text" to the standard error as one line: what is wrong, where, and what to
    /// do.
    void error(const QString &text);

    /// Writes "tarn: warning: @p text" to the standard error.
    void warn(const QString &text);

    /// Writes @p text, a summary of the results, as a line to the standard error.
    void tell(const QString &text);

    /// The line that tells how far long work is; on a terminal only.
    ProgressLine *progress() { return &m_progress; }

    /// True after Ctrl+C or another request to end, and when nobody reads the output any more: the
    /// command should return soon, with any exit code and without a message.
    bool isInterrupted() const;

    /// Wants the output file written even if the command fails: the output says how.
    void keepOutput() { m_isKept = true; }

    /// Reads the standard input to its end. Returns false and sets @p error when it cannot be read,
    /// has more than @p limit bytes, or on interruption.
    static bool readInput(qint64 limit, QByteArray *content, QString *error);

    /// Completes the output of a command that returned @p exitCode: the exit code of the program.
    int finish(int exitCode);

    /// The output ended, because its reader went away.
    bool isClosed() const { return m_isClosed; }

private:
    void message(const QByteArray &kind, const QString &text);
    void flush();
    int finishFile();

    QByteArray m_pending; ///< Not yet written.
    QString m_outputFile; ///< Empty: the standard output.
    bool m_isKept = false;
    QString m_writeError;
    bool m_isClosed = false;
    ProgressLine m_progress;
};

} // namespace Tool
