// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QUrl>

// The results of "tarn check" in its other formats as lines of its text, so that tests compare
// them.

namespace TarnTest {

/// What of a result the formats have under different names.
struct ResultParts
{
    QString file;
    QString rule;
    QString level;
    QString message; ///< With the place.
    int line = 0;
    QVector<int> otherLines;
    QJsonObject further; ///< With the keys saveCheck and candidates.
};

inline QString otherLinesText(const ResultParts &result)
{
    QStringList lines;
    int last = result.line;
    int seen = 0;
    for (int line : result.otherLines) {
        if (lines.size() == 8)
            break;
        ++seen;
        if (line != last)
            lines += QString::number(line);
        last = line;
    }
    if (seen < result.otherLines.size())
        lines += QString("and %1 more").arg(result.otherLines.size() - seen);
    return lines.join(", ");
}

inline QStringList linesOf(const ResultParts &result)
{
    QStringList lines{QString("%1:%2: %3: %4 [%5]")
                          .arg(result.file, QString::number(result.line), result.level,
                               result.message, result.rule)};
    if (result.further.contains("saveCheck"))
        lines += "    save check: " + result.further["saveCheck"].toString() + " [save-check]";
    if (!otherLinesText(result).isEmpty())
        lines += "    also in line " + otherLinesText(result);
    const QJsonObject best = result.further["candidates"].toArray().first().toObject();
    if (best["step"] == "replace" && result.rule != "bus-changed")
        lines += QString("    hint: %1 has a similar name").arg(best["to"].toString());
    if (best["step"] == "replace-prefix")
        lines += QString("    hint: %1 may be %2 now, which finds %3 names")
                     .arg(best["from"].toString(), best["to"].toString())
                     .arg(best["finds"].toInt());
    return lines;
}

inline ResultParts partsOfJson(const QString &file, const QJsonObject &result)
{
    ResultParts parts;
    parts.file = file;
    parts.rule = result["rule"].toString();
    parts.level = result["level"].toString();
    const bool needsPlace = parts.rule != "save-check";
    parts.message =
        (needsPlace ? result["place"].toString() + ": " : "") + result["message"].toString();
    parts.line = result["line"].toInt();
    const QJsonArray others = result["others"].toArray();
    for (const QJsonValue &other : others)
        parts.otherLines += other["line"].toInt();
    parts.further = result;
    return parts;
}

inline int lineOfSarif(const QJsonValue &location)
{
    return location["physicalLocation"]["region"]["startLine"].toInt();
}

inline ResultParts partsOfSarif(const QJsonObject &result)
{
    ResultParts parts;
    const QJsonValue location = result["locations"].toArray().first();
    const QString uri = location["physicalLocation"]["artifactLocation"]["uri"].toString();
    parts.file =
        uri.startsWith("file:") ? QUrl(uri).toLocalFile() : QUrl::fromPercentEncoding(uri.toUtf8());
    parts.rule = result["ruleId"].toString();
    parts.level = result["level"].toString();
    parts.message = result["message"]["text"].toString().replace("{{", "{").replace("}}", "}");
    parts.line = lineOfSarif(location);
    const QJsonArray related = result["relatedLocations"].toArray();
    for (const QJsonValue &other : related)
        parts.otherLines += lineOfSarif(other);
    parts.further = result["properties"].toObject();
    return parts;
}

/// The lines of @p output, which has the format "json" or "sarif".
inline QStringList textOf(const QString &format, const QByteArray &output)
{
    QStringList lines;
    const QJsonDocument document = QJsonDocument::fromJson(output);
    if (format == "sarif") {
        const QJsonArray results = document["runs"][0]["results"].toArray();
        for (const QJsonValue &result : results)
            lines += linesOf(partsOfSarif(result.toObject()));
        return lines;
    }
    const QJsonArray files = document["files"].toArray();
    for (const QJsonValue &file : files) {
        const QJsonArray results = file["results"].toArray();
        for (const QJsonValue &result : results)
            lines += linesOf(partsOfJson(file["file"].toString(), result.toObject()));
    }
    return lines;
}

} // namespace TarnTest
