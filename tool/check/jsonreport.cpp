// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "jsonreport.h"

#include "checkrules.h"
#include "checkvalues.h"

namespace Tool {

namespace {

constexpr int FormVersion = 1;

void addPlace(const CheckedPlace &place, JsonObject *object)
{
    if (place.core != -1) {
        (*object)["place"] = jsonText(place.text);
        (*object)["core"] = place.index;
    }
    if (!place.port.isEmpty())
        (*object)["port"] = jsonText(place.port);
    (*object)["line"] = place.line;
}

JsonObject placesOf(const QVector<CheckedPlace> &places)
{
    JsonObject list = JsonObject::array();
    for (const CheckedPlace &place : places) {
        JsonObject object;
        addPlace(place, &object);
        list.push_back(std::move(object));
    }
    return list;
}

JsonObject valueOf(const CheckResult &result)
{
    JsonObject object;
    object["rule"] = jsonText(checkRules().at(result.rule).id);
    object["level"] = jsonText(levelName(result.level));
    object["message"] = jsonText(result.message);
    addPlace(result.place, &object);
    if (!result.name.isEmpty())
        object["name"] = jsonText(result.name);
    if (!result.others.isEmpty())
        object["others"] = placesOf(result.others);
    addFurtherValues(result, &object);
    return object;
}

} // namespace

void JsonReport::begin()
{
    write("{\n    \"version\": " + QByteArray::number(FormVersion) + ",\n    \"files\": [");
}

void JsonReport::addFile(const QString &path)
{
    write((m_isFirstFile ? "\n" : ",\n") + QByteArray("        {\n            \"file\": ") +
          jsonLine(jsonPath(path)) + ",\n");
    m_isFirstFile = false;
}

void JsonReport::beginFile(const QString &path)
{
    addFile(path);
    write("            \"results\": [");
    m_isFirstResult = true;
}

void JsonReport::addResult(const CheckResult &result)
{
    write((m_isFirstResult ? "\n" : ",\n") + QByteArray(16, ' ') + jsonLine(valueOf(result)));
    m_isFirstResult = false;
}

void JsonReport::endFile()
{
    write((m_isFirstResult ? QByteArray() : '\n' + QByteArray(12, ' ')) + "]\n        }");
}

void JsonReport::refuseFile(const QString &path, const QString &reason)
{
    addFile(path);
    write("            \"error\": " + jsonLine(jsonText(reason)) + "\n        }");
}

void JsonReport::end(const CheckCounts &counts)
{
    write((m_isFirstFile ? QByteArray() : QByteArray("\n    ")) +
          "],\n    \"errors\": " + QByteArray::number(counts.errors) +
          ",\n    \"warnings\": " + QByteArray::number(counts.warnings) +
          ",\n    \"notes\": " + QByteArray::number(counts.notes) + "\n}\n");
}

QByteArray rulesAsJson()
{
    QByteArray text = "[";
    for (const CheckRule &rule : checkRules()) {
        JsonObject object;
        object["id"] = jsonText(rule.id);
        object["level"] = jsonText(levelName(rule.severity));
        object["meaning"] = jsonText(rule.meaning);
        object["cause"] = jsonText(rule.cause);
        object["advice"] = jsonText(rule.advice);
        text += (text.size() > 1 ? ",\n    " : "\n    ") + jsonLine(object);
    }
    return text + "\n]\n";
}

} // namespace Tool
