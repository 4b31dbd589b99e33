// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVector>

#include <pugixml.hpp>

#include <string_view>

namespace NETWEIR::Internal {

/// What marks a name that the elaborator cut.
constexpr std::string_view HashedName = "__Vhsh";

/// The source text behind the locations of the XML, for the few facts that the elaborator does not
/// write down. Files are read when first asked for and kept; a missing file has no text.
class SourceTexts
{
public:
    /// @p files is the "files" element; relative names count from @p folder.
    void setFiles(const pugi::xml_node &files, const QString &folder);

    /// The name of @p node as the user wrote it, without the backslash of an escaped one; of a
    /// module without the parameter values that the elaborator adds. Names of more than 127
    /// characters are cut and hashed in the XML; the source has them whole.
    QString nameOf(const pugi::xml_node &node) const;

    /// The text that the location "file,line,column,line,column" spans, within one line.
    QByteArray textAt(std::string_view location) const;

    /// At most @p lines lines of text before the location, up to its first character.
    QByteArray textBefore(std::string_view location, int lines) const;

private:
    struct Location
    {
        QByteArray file;
        int line = 0;
        int column = 0;
        int endLine = 0;
        int endColumn = 0;
    };

    static Location parse(std::string_view location);
    const QList<QByteArray> &linesOf(const QByteArray &file) const;

    QString m_folder;
    QHash<QByteArray, QString> m_paths;
    mutable QHash<QByteArray, QList<QByteArray>> m_lines; ///< Of the files read so far.
};

} // namespace NETWEIR::Internal
