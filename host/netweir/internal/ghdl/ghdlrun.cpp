// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "ghdlrun.h"

#include <files/regularfile.h>
#include <netweir/internal/tool/extractionprogress.h>

#include <QDeadlineTimer>
#include <QFile>

namespace NETWEIR::Internal {

namespace {

/// The processor time in milliseconds after which a silent run has nothing more to write. Within
/// the tables there are at most pauses to wait for the disk or the processor.
constexpr qint64 MostSilence = 1000;

/// Whether the table of signals, which GHDL prints last, has begun, and ends with a whole line.
bool isInTable(const QString &output)
{
    constexpr int TailLength = 4096;
    QFile file;
    QString error;
    if (Files::openRegularFile(output, &file, &error) != Files::Access::Granted)
        return false;
    file.seek(qMax<qint64>(0, file.size() - TailLength));
    const QByteArray tail = file.readAll();
    return tail.endsWith('\n') && tail.contains(" smode: ");
}

} // namespace

bool isHeaderComplete(const QString &wave)
{
    QFile file;
    QString error;
    if (Files::openRegularFile(wave, &file, &error) != Files::Access::Granted)
        return false;
    // Processes may have written any number of values behind the header. So the end is searched
    // from the beginning, piece by piece.
    constexpr int Piece = 1024 * 1024;
    const QByteArray end = QByteArray::fromRawData("EOH\0SNP\0", 8);
    QByteArray text;
    while (!file.atEnd()) {
        text = text.right(end.size()) + file.read(Piece);
        if (text.contains(end))
            return true;
    }
    return text.endsWith(end.left(end.size() / 2));
}

void GhdlRun::waitForSignals(const QString &output, const QString &wave,
                             ExtractionProgress *progress, int limit)
{
    constexpr int LookAgain = 200; // In milliseconds.
    const QDeadlineTimer end(limit < 0 ? QDeadlineTimer(QDeadlineTimer::Forever)
                                       : QDeadlineTimer(limit));
    do {
        const qint64 left = end.isForever() ? LookAgain : end.remainingTime();
        wait(progress, int(qMin<qint64>(LookAgain, left)));
        if (isOver() || progress->isCancelled())
            return;
        const qint64 size = QFile(output).size() + QFile(wave).size();
        if (size != m_size) {
            m_size = size;
            m_usedBefore = usedMilliseconds();
        } else if (usedMilliseconds() - m_usedBefore > MostSilence && isInTable(output) &&
                   isHeaderComplete(wave)) {
            stop();
            m_isStopped = true;
            return;
        }
    } while (!end.hasExpired());
}

QVector<GhdlMessage> GhdlRun::errorsWith(const QByteArray &output) const
{
    return parseGhdlErrors(m_errorOutput + '\n' + output);
}

void GhdlRun::readMessages(const QByteArray &errorOutput)
{
    m_errorOutput = errorOutput;
    m_errors = parseGhdlErrors(errorOutput);
}

} // namespace NETWEIR::Internal
