// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "progressline.h"

#include "standardstreams.h"

#include <QByteArray>

#include <sys/ioctl.h>
#include <unistd.h>

namespace Tool {

namespace {

constexpr int UsualWidth = 80;

int terminalWidth()
{
    winsize size = {};
    const bool known = ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : UsualWidth;
}

} // namespace

ProgressLine::ProgressLine()
    : m_isTerminal(::isatty(STDERR_FILENO) == 1 && qgetenv("TERM") != "dumb")
{
}

void ProgressLine::show(const QString &text)
{
    if (!m_isTerminal || (m_isShown && text == m_text))
        return;
    m_text = text;
    m_isShown = true;
    // In the last column some terminals begin a new line.
    writeToStandardError("\r" + text.left(terminalWidth() - 1).toLocal8Bit() + "\x1b[K");
}

void ProgressLine::clear()
{
    if (!m_isShown)
        return;
    m_isShown = false;
    writeToStandardError("\r\x1b[K");
}

} // namespace Tool
