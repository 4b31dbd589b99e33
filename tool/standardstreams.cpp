// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "standardstreams.h"

#include "interruption.h"

#include <QByteArray>

#include <cerrno>
#include <climits>

#include <fcntl.h>
#include <unistd.h>

namespace Tool {

namespace {

constexpr int PieceSize = 64 * 1024;

} // namespace

void keepStandardStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) >= 0)
            continue;
        // The wrong way round, so that using it fails. The lowest free number is this one.
        const int mode = stream == STDIN_FILENO ? O_WRONLY : O_RDONLY;
        if (::open("/dev/null", mode) != stream)
            return;
    }
}

void writeToStandardError(const QByteArray &text)
{
    for (int position = 0; position < text.size();) {
        const ssize_t count =
            ::write(STDERR_FILENO, text.constData() + position, size_t(text.size() - position));
        if (count < 0 && errno != EINTR)
            return;
        position += int(qMax<ssize_t>(count, 0));
    }
}

int writeToStandardOutput(const QByteArray &text)
{
    for (int position = 0; position < text.size();) {
        if (!Interruption::waitToWrite(STDOUT_FILENO))
            return EINTR;
        // Of a pipe that is ready, so much can be written without waiting for its reader.
        const int size = qMin(text.size() - position, PIPE_BUF);
        const ssize_t count = ::write(STDOUT_FILENO, text.constData() + position, size_t(size));
        if (count < 0 && errno != EINTR)
            return errno;
        position += int(qMax<ssize_t>(count, 0));
    }
    return 0;
}

int readStandardInput(qint64 limit, QByteArray *content)
{
    QByteArray piece(PieceSize, Qt::Uninitialized);
    while (content->size() <= limit) {
        if (!Interruption::waitToRead(STDIN_FILENO))
            return EINTR;
        const ssize_t count = ::read(STDIN_FILENO, piece.data(), size_t(piece.size()));
        if (count == 0)
            break;
        if (count < 0 && errno != EINTR)
            return errno;
        content->append(piece.constData(), int(qMax<ssize_t>(count, 0)));
    }
    return 0;
}

} // namespace Tool
