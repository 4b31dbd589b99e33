// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "toolrun.h"

#include "extractionprogress.h"

#include <netweir/internal/ground/messages.h>

#include <QFile>

#include <algorithm>
#include <iterator>
#include <unistd.h>

namespace NETWEIR::Internal {

namespace {

/// What the tools say when they get no more memory, each in its own way.
bool isOutOfMemory(const QByteArray &errorOutput)
{
    static const char *const signs[] = {"bad_alloc", "STORAGE_ERROR", "heap exhausted"};
    return std::any_of(std::begin(signs), std::end(signs),
                       [&errorOutput](const char *sign) { return errorOutput.contains(sign); });
}

} // namespace

ToolRun::ToolRun(const QString &program, const QStringList &arguments, const QString &folder,
                 int timeoutSeconds)
    : m_program(program)
    , m_timeoutSeconds(timeoutSeconds)
    , m_process(folder)
{
    m_process.run(program, arguments, timeoutSeconds);
}

void ToolRun::wait(ExtractionProgress *progress, int limit)
{
    m_isOver = progress->wait(&m_process, limit);
    if (!m_isOver || progress->isCancelled())
        return;
    const QByteArray output = m_process.errorOutput();
    readMessages(output);
    m_isOutOfMemory = !succeeded() && result() != ToolProcess::TimedOut && isOutOfMemory(output);
}

void ToolRun::stop()
{
    m_process.end();
    m_isOver = true;
}

qint64 ToolRun::usedMilliseconds() const
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(m_process.processId()));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    // The name of the program, in brackets, may contain blanks. The 12th and 13th field behind it
    // are the times in the program and in the system.
    const QByteArray text = file.readAll();
    const QByteArrayList fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
    const qint64 ticks = fields.value(11).toLongLong() + fields.value(12).toLongLong();
    return ticks * 1000 / sysconf(_SC_CLK_TCK);
}

bool ToolRun::hitLimit() const
{
    return m_isOutOfMemory || result() == ToolProcess::TimedOut ||
           result() == ToolProcess::FileTooLarge || result() == ToolProcess::NotStarted;
}

QString ToolRun::failure(const QString &phase) const
{
    if (m_isOutOfMemory)
        return errorMessage(Text::tr("%1 needs more than %2 MB of memory and was stopped.")
                                .arg(phase)
                                .arg(ToolProcess::memoryLimit() / (1024 * 1024)));
    switch (result()) {
    case ToolProcess::TimedOut:
        return errorMessage(Text::tr("%1 took longer than %2 seconds and was stopped. Raise the "
                                     "timeout in the project's options.")
                                .arg(phase)
                                .arg(m_timeoutSeconds));
    case ToolProcess::FileTooLarge:
        return errorMessage(
            Text::tr("%1 needs a file larger than the limit (%2 kB) and was stopped.")
                .arg(phase)
                .arg(ToolProcess::fileSizeLimit() / 1024));
    case ToolProcess::NotStarted:
        return errorMessage(Text::tr("%1 failed: %2 cannot be started (%3).")
                                .arg(phase, m_program, m_process.errorString()));
    case ToolProcess::Crashed:
        return errorMessage(Text::tr("%1 failed: the elaborator crashed. Reading fewer files may "
                                     "show which one it cannot read.")
                                .arg(phase));
    case ToolProcess::Failed:
        return errorMessage(Text::tr("%1 failed: the elaborator gave no reason (exit code %2).")
                                .arg(phase)
                                .arg(m_process.exitCode()));
    case ToolProcess::Succeeded:
        break;
    }
    return errorMessage(Text::tr("%1 failed: its result is not complete.").arg(phase));
}

} // namespace NETWEIR::Internal
