// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "textwindow.h"

#include <netweir/internal/ground/readguard.h>

#include <QFile>

#include <algorithm>
#include <cstring>

namespace NETWEIR::Internal {

namespace {

constexpr std::size_t PieceSize = 256 * 1024;

/// Much faster than std::string_view::find() where the first character occurs often.
std::size_t placeIn(std::string_view text, std::string_view wanted, std::size_t from)
{
    if (from > text.size())
        return TextWindow::None;
    const char *found = static_cast<const char *>(
        ::memmem(text.data() + from, text.size() - from, wanted.data(), wanted.size()));
    return found ? std::size_t(found - text.data()) : TextWindow::None;
}

} // namespace

TextWindow::TextWindow(QFile *file)
    : m_file(file)
{
}

void TextWindow::skip(std::size_t size)
{
    m_used += size;
    m_begin += qint64(size);
}

bool TextWindow::skipTo(std::string_view wanted)
{
    while (true) {
        const std::size_t place = placeIn(text(), wanted, 0);
        if (place != None) {
            skip(place);
            return true;
        }
        const std::size_t size = text().size();
        skip(size - std::min(size, wanted.size() - 1)); // The end may be the beginning of it.
        if (!grow()) {
            skip(text().size());
            return false;
        }
    }
}

std::size_t TextWindow::find(std::string_view wanted, std::size_t from)
{
    while (true) {
        const std::size_t place = placeIn(text(), wanted, from);
        if (place != None)
            return place;
        const std::size_t size = text().size();
        from = std::max(from, size - std::min(size, wanted.size() - 1));
        if (!grow())
            return None;
    }
}

bool TextWindow::reach(std::size_t size)
{
    while (text().size() < size) {
        if (!grow())
            return false;
    }
    return true;
}

/// False at the end of the file. A window that grows further and further grows in larger steps.
bool TextWindow::grow()
{
    ReadGuard::checkNow();
    m_text.erase(0, m_used);
    m_used = 0;
    const std::size_t before = m_text.size();
    m_text.resize(before + std::max(PieceSize, before));
    const qint64 length = m_file->read(m_text.data() + before, qint64(m_text.size() - before));
    m_text.resize(before + std::size_t(std::max<qint64>(length, 0)));
    m_isBroken = m_isBroken || length < 0 || text().find('\0', before) != None;
    return length > 0 && !m_isBroken;
}

} // namespace NETWEIR::Internal
