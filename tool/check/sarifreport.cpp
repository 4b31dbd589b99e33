// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "sarifreport.h"

#include "checkrules.h"
#include "checkvalues.h"

#include <QDir>
#include <QFile>

#include <utility>

namespace Tool {

namespace {

constexpr char Schema[] = "https://json.schemastore.org/sarif-2.1.0.json";
/// The name that many programs use for the folder in which relative URIs start.
constexpr char BaseId[] = "%SRCROOT%";

constexpr char FileScheme[] = "file://";

QByteArray encoded(const QString &path)
{
    return QFile::encodeName(path).toPercentEncoding("/");
}

QString currentFolder()
{
    const QString folder = QDir::currentPath();
    return folder.endsWith(QLatin1Char('/')) ? folder : folder + QLatin1Char('/');
}

/// Without "." and "..", which URIs should not have.
QString absolutePath(const QString &path)
{
    QString absolute = QDir::cleanPath(QDir::current().absoluteFilePath(path));
    while (absolute.startsWith(QLatin1String("/../"))) // Nothing is above the root.
        absolute.remove(0, 3);
    return absolute;
}

/// Relative for a file below the current folder.
QByteArray uriOf(const QString &path)
{
    const QString folder = currentFolder();
    const QString absolute = absolutePath(path);
    return absolute.startsWith(folder) ? encoded(absolute.mid(folder.size()))
                                       : FileScheme + encoded(absolute);
}

JsonObject artifactLocation(const SarifReport::File &file)
{
    JsonObject location;
    location["uri"] = file.uri.toStdString();
    if (!file.uri.startsWith(FileScheme))
        location["uriBaseId"] = BaseId;
    return location;
}

/// Single braces mark the places of arguments in messages.
JsonObject messageOf(const QString &text)
{
    QString escaped = text;
    escaped.replace(QLatin1Char('{'), QLatin1String("{{"));
    escaped.replace(QLatin1Char('}'), QLatin1String("}}"));
    return {{"text", jsonText(escaped)}};
}

JsonObject plainText(const QString &text)
{
    return {{"text", jsonText(text)}};
}

JsonObject valueOf(const CheckRule &rule)
{
    JsonObject object;
    object["id"] = jsonText(rule.id);
    object["shortDescription"] = plainText(rule.meaning);
    object["fullDescription"] = plainText(rule.cause);
    object["help"] = plainText(rule.advice);
    object["defaultConfiguration"] = {{"level", jsonText(levelName(rule.severity))}};
    return object;
}

JsonObject driver()
{
    JsonObject rules = JsonObject::array();
    for (const CheckRule &rule : checkRules())
        rules.push_back(valueOf(rule));
    JsonObject object;
    object["name"] = "tarn";
    object["version"] = TARN_VERSION;
    object["semanticVersion"] = TARN_VERSION;
    object["rules"] = std::move(rules);
    return object;
}

JsonObject uriBases()
{
    JsonObject base;
    base["uri"] = (FileScheme + encoded(currentFolder())).toStdString();
    base["description"] = {{"text", "The folder in which the check was started."}};
    return {{BaseId, std::move(base)}};
}

/// The core or port of @p place, named as in arguments.
JsonObject logicalLocation(const CheckedPlace &place)
{
    const QString core = QStringLiteral("tarn_%1").arg(place.index);
    JsonObject object;
    if (place.port.isEmpty()) {
        object["name"] = jsonText(core);
        object["fullyQualifiedName"] = jsonText(core);
        object["kind"] = "module";
    } else {
        object["name"] = jsonText(place.port);
        object["fullyQualifiedName"] = jsonText(core + QLatin1Char('.') + place.port);
        object["kind"] = "member";
    }
    return object;
}

JsonObject locationOf(const CheckedPlace &place, const SarifReport::File &file)
{
    JsonObject artifact = artifactLocation(file);
    artifact["index"] = file.number;
    JsonObject location;
    location["physicalLocation"] = {{"artifactLocation", std::move(artifact)},
                                    {"region", {{"startLine", place.line}}}};
    if (place.core != -1)
        location["logicalLocations"] = JsonObject::array({logicalLocation(place)});
    return location;
}

JsonObject relatedLocations(const CheckResult &result, const SarifReport::File &file)
{
    JsonObject list = JsonObject::array();
    for (const CheckedPlace &place : result.others) {
        JsonObject location = locationOf(place, file);
        // Two places may be alike in all but this.
        location["id"] = list.size() + 1;
        location["message"] = messageOf(place.text);
        list.push_back(std::move(location));
    }
    return list;
}

JsonObject propertiesOf(const CheckResult &result)
{
    JsonObject properties = JsonObject::object();
    if (!result.name.isEmpty())
        properties["name"] = jsonText(result.name);
    addFurtherValues(result, &properties);
    return properties;
}

JsonObject valueOf(const CheckResult &result, const SarifReport::File &file)
{
    // The messages of the save check name the core themselves.
    const bool needsPlace = result.rule != saveCheckRule();
    const QString place = needsPlace ? result.place.text + QLatin1String(": ") : QString();
    JsonObject object;
    object["ruleId"] = jsonText(checkRules().at(result.rule).id);
    object["ruleIndex"] = result.rule;
    object["level"] = jsonText(levelName(result.level));
    object["message"] = messageOf(place + result.message);
    object["locations"] = JsonObject::array({locationOf(result.place, file)});
    if (!result.others.isEmpty())
        object["relatedLocations"] = relatedLocations(result, file);
    JsonObject properties = propertiesOf(result);
    if (!properties.empty())
        object["properties"] = std::move(properties);
    return object;
}

} // namespace

void SarifReport::begin()
{
    write("{\n    \"$schema\": \"" + QByteArray(Schema) +
          "\",\n    \"version\": \"2.1.0\",\n    \"runs\": [\n        {\n"
          "            \"tool\": " +
          jsonLine({{"driver", driver()}}) + ",\n            \"originalUriBaseIds\": " +
          jsonLine(uriBases()) + ",\n            \"results\": [");
}

void SarifReport::beginFile(const QString &path)
{
    m_files.append({m_files.size(), uriOf(path), QString()});
}

void SarifReport::addResult(const CheckResult &result)
{
    write((m_isFirstResult ? "\n" : ",\n") + QByteArray(16, ' ') +
          jsonLine(valueOf(result, m_files.last())));
    m_isFirstResult = false;
}

void SarifReport::refuseFile(const QString &path, const QString &reason)
{
    m_files.append({m_files.size(), uriOf(path), reason});
}

void SarifReport::end(const CheckCounts &)
{
    write((m_isFirstResult ? QByteArray() : '\n' + QByteArray(12, ' ')) + "],\n");
    writeArtifacts();
    writeInvocation();
    write("        }\n    ]\n}\n");
}

void SarifReport::writeArtifacts() const
{
    JsonObject artifacts = JsonObject::array();
    for (const File &file : m_files) {
        JsonObject artifact;
        artifact["location"] = artifactLocation(file);
        artifact["roles"] = JsonObject::array({"analysisTarget"});
        artifacts.push_back(std::move(artifact));
    }
    write("            \"artifacts\": " + jsonLine(artifacts) + ",\n");
}

void SarifReport::writeInvocation() const
{
    JsonObject notifications = JsonObject::array();
    for (const File &file : m_files) {
        if (file.refusal.isEmpty())
            continue;
        JsonObject notification;
        notification["level"] = "error";
        notification["message"] = messageOf(file.refusal);
        notification["locations"] = JsonObject::array(
            {{{"physicalLocation", {{"artifactLocation", artifactLocation(file)}}}}});
        notifications.push_back(std::move(notification));
    }
    JsonObject invocation;
    invocation["executionSuccessful"] = notifications.empty();
    if (!notifications.empty())
        invocation["toolExecutionNotifications"] = std::move(notifications);
    write("            \"invocations\": " + jsonLine(JsonObject::array({invocation})) + '\n');
}

} // namespace Tool
