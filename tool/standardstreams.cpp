// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "standardstreams.h"

#include "interruption.h"

#include <QByteArray>

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace Tool {

namespace {

/// Returns 0 or the error of the system.
int writeAll(int stream, const QByteArray &text, bool maybeInterrupted)
{
    int position = 0;
    while (position < text.size()) {
        const ssize_t written =
            ::write(stream, text.constData() + position, size_t(text.size() - position));
        if (written >= 0)
            position += int(written);
        else if (errno != EINTR || (maybeInterrupted && Interruption::isRequested()))
            return errno;
    }
    return 0;
}

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
    writeAll(STDERR_FILENO, text, false);
}

int writeToStandardOutput(const QByteArray &text)
{
    return writeAll(STDOUT_FILENO, text, true);
}

} // namespace Tool
