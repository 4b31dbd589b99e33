// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "sourcetexts.h"

#include "attributes.h"

#include <files/regularfile.h>

#include <QDir>

namespace NETWEIR::Internal {

namespace {

constexpr qint64 LargestFile = 1024 * 1024 * 1024;

} // namespace

void SourceTexts::setFiles(const pugi::xml_node &files, const QString &folder)
{
    m_folder = folder;
    for (const pugi::xml_node &file : files.children("file"))
        m_paths.insert(file.attribute("id").value(), toQString(attribute(file, "filename")));
}

QString SourceTexts::nameOf(const pugi::xml_node &node) const
{
    const pugi::xml_attribute original = node.attribute("origName");
    const std::string_view encoded = (original ? original : node.attribute("name")).value();
    const QString name = original ? decodedName(encoded) : toQString(encoded);
    const auto hash = encoded.find(HashedName);
    if (hash == std::string_view::npos)
        return name;
    QByteArray text = textAt(attribute(node, "loc"));
    if (text.startsWith('\\'))
        text = text.mid(1).trimmed();
    const QString whole = QString::fromUtf8(text);
    return whole.startsWith(decodedName(encoded.substr(0, hash))) ? whole : name;
}

QByteArray SourceTexts::textAt(std::string_view location) const
{
    const Location span = parse(location);
    const QList<QByteArray> &lines = linesOf(span.file);
    if (span.line < 1 || span.line > lines.size() || span.endLine != span.line)
        return {};
    return lines.at(span.line - 1).mid(span.column - 1, span.endColumn - span.column);
}

Place SourceTexts::placeOf(std::string_view location) const
{
    const Location span = parse(location);
    return {m_paths.value(span.file), span.line, span.column};
}

QByteArray SourceTexts::textBefore(std::string_view location, int lines) const
{
    const Location span = parse(location);
    const QList<QByteArray> &all = linesOf(span.file);
    if (span.line < 1 || span.line > all.size())
        return {};
    QByteArray text;
    for (int line = qMax(1, span.line - lines + 1); line < span.line; ++line)
        text += all.at(line - 1) + '\n';
    return text + all.at(span.line - 1).left(span.column - 1);
}

SourceTexts::Location SourceTexts::parse(std::string_view location)
{
    const QList<QByteArray> fields = QByteArray(location.data(), int(location.size())).split(',');
    Location span;
    if (fields.size() == 5) {
        span.file = fields.at(0);
        span.line = fields.at(1).toInt();
        span.column = fields.at(2).toInt();
        span.endLine = fields.at(3).toInt();
        span.endColumn = fields.at(4).toInt();
    }
    return span;
}

const QList<QByteArray> &SourceTexts::linesOf(const QByteArray &file) const
{
    const auto known = m_lines.constFind(file);
    if (known != m_lines.constEnd())
        return *known;
    QList<QByteArray> lines;
    if (m_paths.contains(file)) {
        QByteArray text;
        QString error;
        Files::readRegularFile(QDir(m_folder).absoluteFilePath(m_paths.value(file)), LargestFile,
                               &text, &error);
        lines = text.split('\n');
    }
    return *m_lines.insert(file, lines);
}

} // namespace NETWEIR::Internal
