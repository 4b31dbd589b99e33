// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/ground/messages.h>

#include <QByteArray>
#include <QHash>
#include <QString>

#include <pugixml.hpp>

#include <string_view>
#include <vector>

namespace NETWEIR::Internal {

/// The mark in a name that the elaborator has cut.
constexpr std::string_view HashedName = "__Vhsh";

/// The source texts for the locations in the XML, for facts that are not in the XML. A file is read
/// at its first use and kept; a missing file has no text.
class SourceTexts
{
public:
    /// @p files is the "files" element; relative names start in @p folder.
    void setFiles(const pugi::xml_node &files, const QString &folder);

    /// The name of @p node in the source, without the backslash of an escaped name and, for a
    /// module, without the parameter values that the elaborator adds. The XML cuts and hashes names
    /// of more than 127 characters; the source has the full name.
    QString nameOf(const pugi::xml_node &node) const;

    /// The text at the location "file,line,column,line,column", within one line.
    QByteArray textAt(std::string_view location) const;

    /// The file, line and column where a location begins. The file has the name in the XML.
    Place placeOf(std::string_view location) const;

    /// At most @p lines lines of text before the location, up to its first character.
    QByteArray textBefore(std::string_view location, int lines) const;

    /// Lets go of the texts read so far.
    void forgetTexts() { m_texts.clear(); }

    /// The size of these texts in bytes.
    qint64 textSize() const;

private:
    /// A file and the places in it where its lines begin.
    struct SourceText
    {
        /// The offset of a character, both counted from 1: at most that of the end of the line.
        int offsetOf(int line, int column) const;
        bool has(int line) const { return line >= 1 && line <= int(lines.size()); }
        QByteArray between(int begin, int end) const { return text.mid(begin, end - begin); }

        QByteArray text;
        std::vector<int> lines;
    };

    struct Location
    {
        QByteArray file;
        int line = 0;
        int column = 0;
        int endLine = 0;
        int endColumn = 0;
    };

    static Location parse(std::string_view location);
    const SourceText &textOf(const QByteArray &file) const;

    QString m_folder;
    QHash<QByteArray, QString> m_paths;
    mutable QHash<QByteArray, SourceText> m_texts; ///< Of the files read so far.
};

} // namespace NETWEIR::Internal
