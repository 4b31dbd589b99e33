// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <cstddef>
#include <string>
#include <string_view>

class QFile;

namespace NETWEIR::Internal {

/// A part of a text file that moves from its beginning to its end. Owns the text in the window,
/// which grows only while somebody looks further ahead.
class TextWindow
{
public:
    static constexpr std::size_t None = std::string_view::npos;

    /// @p file must be open for reading and outlive this object.
    explicit TextWindow(QFile *file);

    /// The text in the window. Valid until the next call of another function.
    std::string_view text() const { return std::string_view(m_text).substr(m_used); }
    /// The place in the file where it begins, in bytes.
    qint64 begin() const { return m_begin; }
    /// True when the file could not be read, or contains a byte that no text has.
    bool isBroken() const { return m_isBroken; }

    /// Moves the window by @p size bytes of its text.
    void skip(std::size_t size);
    /// Moves the window to the next @p wanted, reading as far as needed. False when there is none;
    /// the window is then at the end.
    bool skipTo(std::string_view wanted);
    /// The place of the next @p wanted in the text, from @p from on. None when the file ends
    /// before.
    std::size_t find(std::string_view wanted, std::size_t from);
    /// Reads until the window has @p size bytes. False when the file ends before.
    bool reach(std::size_t size);

private:
    bool grow();

    QFile *m_file;
    std::string m_text;
    std::size_t m_used = 0; ///< Bytes of m_text before the window.
    qint64 m_begin = 0;
    bool m_isBroken = false;
};

} // namespace NETWEIR::Internal
