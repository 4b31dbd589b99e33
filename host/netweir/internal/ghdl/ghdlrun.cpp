// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "ghdlrun.h"

#include <files/regularfile.h>
#include <netweir/internal/tool/extractionprogress.h>

#include <QDeadlineTimer>
#include <QFile>

namespace NETWEIR::Internal {

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

void GhdlRun::waitForHeader(const QString &wave, ExtractionProgress *progress, int limit)
{
    constexpr int LookAgain = 200; // In milliseconds.
    const QDeadlineTimer end(limit);
    qint64 size = 0;
    for (;;) {
        const qint64 left = end.isForever() ? LookAgain : end.remainingTime();
        wait(progress, int(qMin<qint64>(LookAgain, left)));
        if (isOver() || progress->isCancelled())
            return;
        // While the file grows, there is no need to look into it.
        const qint64 sizeNow = QFile(wave).size();
        if (sizeNow > 0 && sizeNow == size && isHeaderComplete(wave)) {
            stop();
            return;
        }
        size = sizeNow;
        if (end.hasExpired())
            return;
    }
}

void GhdlRun::readMessages(const QByteArray &errorOutput)
{
    m_errors = parseGhdlErrors(errorOutput);
}

} // namespace NETWEIR::Internal
