// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "console.h"

#include "command.h"
#include "interruption.h"
#include "printable.h"
#include "standardstreams.h"

#include <model/replacefile.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>

namespace Tool {

namespace {

constexpr int PieceSize = 64 * 1024;

QString shown(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

/// Why no file can be written at @p path, empty when nothing is known against it.
QString reasonAgainst(const QString &path)
{
    const QFileInfo file(path);
    const QFileInfo folder(file.absolutePath());
    if (file.isDir())
        return QStringLiteral("it is a folder");
    if (file.exists() && !file.isFile())
        return QStringLiteral("it is no regular file");
    if (!file.exists() && !folder.isDir())
        return QStringLiteral("there is no folder %1").arg(shown(folder.filePath()));
    const bool isAllowed = file.exists() ? file.isWritable() : folder.isWritable();
    return isAllowed ? QString() : qt_error_string(EACCES);
}

} // namespace

bool Console::setOutputFile(const QString &path)
{
    if (path == QLatin1String("-"))
        return true;
    const QString reason = reasonAgainst(path);
    if (!reason.isEmpty()) {
        error(QStringLiteral("cannot write %1: %2; choose another file").arg(shown(path), reason));
        return false;
    }
    m_outputFile = path;
    return true;
}

bool Console::sparesInputs(const QStringList &inputs)
{
    const QString output =
        m_outputFile.isEmpty() ? QString() : QFileInfo(m_outputFile).canonicalFilePath();
    const auto isOutput = [&output](const QString &input) {
        return QFileInfo(input).canonicalFilePath() == output;
    };
    // A file that does not exist yet is none of them.
    const auto found =
        output.isEmpty() ? inputs.end() : std::find_if(inputs.begin(), inputs.end(), isOutput);
    if (found == inputs.end())
        return true;
    error(QStringLiteral("the output would replace %1, which is read; choose another file")
              .arg(shown(*found)));
    return false;
}

void Console::write(const QByteArray &text)
{
    if (m_isClosed || !m_writeError.isEmpty())
        return;
    m_pending += text;
    if (m_outputFile.isEmpty() && m_pending.size() >= PieceSize)
        flush();
}

void Console::flush()
{
    m_progress.clear();
    const int code = writeToStandardOutput(m_pending);
    m_pending.clear();
    if (code == EPIPE)
        m_isClosed = true;
    else if (code != 0 && code != EINTR)
        m_writeError = qt_error_string(code);
}

void Console::error(const QString &text)
{
    message("tarn: ", text);
}

void Console::warn(const QString &text)
{
    message("tarn: warning: ", text);
}

void Console::tell(const QString &text)
{
    // The results come first, where both go to the same place.
    if (m_outputFile.isEmpty() && m_writeError.isEmpty())
        flush();
    if (!m_isClosed)
        message(QByteArray(), text);
}

void Console::message(const QByteArray &kind, const QString &text)
{
    m_progress.clear();
    writeToStandardError(kind + printable(text) + '\n');
}

bool Console::isInterrupted() const
{
    return m_isClosed || Interruption::isRequested();
}

bool Console::readInput(qint64 limit, QByteArray *content, QString *error)
{
    const int code = readStandardInput(limit, content);
    if (code != 0)
        *error = qt_error_string(code);
    else if (content->size() > limit)
        *error = QStringLiteral("it has more than %1 bytes").arg(limit);
    return code == 0 && content->size() <= limit;
}

int Console::finish(int exitCode)
{
    m_progress.clear();
    if (isInterrupted())
        return Failure;
    if (!m_outputFile.isEmpty())
        return exitCode == Failure && !m_isKept ? exitCode : qMax(exitCode, finishFile());
    if (m_writeError.isEmpty())
        flush();
    if (m_writeError.isEmpty())
        return exitCode;
    error(QStringLiteral("cannot write to the standard output: %1").arg(m_writeError));
    return Failure;
}

int Console::finishFile()
{
    QString reason;
    if (TARN::replaceFile(m_outputFile, m_pending, &reason))
        return Success;
    error(QStringLiteral("cannot write %1: %2").arg(shown(m_outputFile), reason));
    return Failure;
}

} // namespace Tool
