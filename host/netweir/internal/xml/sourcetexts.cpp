// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "sourcetexts.h"

#include "attributes.h"

#include <files/regularfile.h>
#include <netweir/internal/ground/itemat.h>

#include <QDir>

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <numeric>

namespace NETWEIR::Internal {

namespace {

constexpr qint64 LargestFile = 1024 * 1024 * 1024;

/// 0 for anything but a decimal number.
int numberOf(std::string_view text)
{
    int number = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = end.ec == std::errc() && end.ptr == text.data() + text.size();
    return isWhole ? number : 0;
}

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

qint64 SourceTexts::textSize() const
{
    return std::accumulate(
        m_texts.begin(), m_texts.end(), qint64(0),
        [](qint64 sum, const SourceText &source) { return sum + source.text.size(); });
}

QByteArray SourceTexts::textAt(std::string_view location) const
{
    const Location span = parse(location);
    const SourceText &source = textOf(span.file);
    if (!source.has(span.line) || span.endLine != span.line)
        return {};
    const bool hasEnd = span.endColumn >= span.column;
    const int end = hasEnd ? span.endColumn : std::numeric_limits<int>::max();
    const int begin = source.offsetOf(span.line, span.column);
    return source.between(begin, source.offsetOf(span.line, end));
}

Place SourceTexts::placeOf(std::string_view location) const
{
    const Location span = parse(location);
    return {m_paths.value(span.file), span.line, span.column};
}

QByteArray SourceTexts::textBefore(std::string_view location, int lines) const
{
    const Location span = parse(location);
    const SourceText &source = textOf(span.file);
    if (!source.has(span.line))
        return {};
    const int begin = source.offsetOf(qMax(1, span.line - lines + 1), 1);
    return source.between(begin, source.offsetOf(span.line, span.column));
}

SourceTexts::Location SourceTexts::parse(std::string_view location)
{
    constexpr int Fields = 5;
    std::array<std::string_view, Fields> fields;
    int count = 0;
    for (bool goesOn = true; goesOn && count <= Fields; ++count) {
        const auto comma = std::min(location.find(','), location.size());
        if (count < Fields)
            fields[std::size_t(count)] = location.substr(0, comma);
        goesOn = comma < location.size();
        location.remove_prefix(goesOn ? comma + 1 : comma);
    }
    if (count != Fields)
        return {};
    return {QByteArray(fields[0].data(), int(fields[0].size())), numberOf(fields[1]),
            numberOf(fields[2]), numberOf(fields[3]), numberOf(fields[4])};
}

int SourceTexts::SourceText::offsetOf(int line, int column) const
{
    const int begin = itemAt(lines, line - 1);
    const bool isLast = line == countOf(lines);
    const int end = isLast ? text.size() : itemAt(lines, line) - 1;
    return int(qBound<qint64>(begin, qint64(begin) + column - 1, end));
}

const SourceTexts::SourceText &SourceTexts::textOf(const QByteArray &file) const
{
    const auto known = m_texts.constFind(file);
    if (known != m_texts.constEnd())
        return *known;
    SourceText source;
    if (m_paths.contains(file)) {
        QString error;
        Files::readRegularFile(QDir(m_folder).absoluteFilePath(m_paths.value(file)), LargestFile,
                               &source.text, &error);
        source.lines.push_back(0);
        for (int end = source.text.indexOf('\n'); end >= 0;
             end = source.text.indexOf('\n', end + 1))
            source.lines.push_back(end + 1);
    }
    return *m_texts.insert(file, source);
}

} // namespace NETWEIR::Internal
