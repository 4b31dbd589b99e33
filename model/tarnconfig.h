// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>

namespace TARN {

class ConfigLines;
class TarnCore;

/// Names in the configuration file.
constexpr char NODE_TARN_CONFIG[] = "TARN_CONFIG";
constexpr char NODE_VERSION[] = "Version";

/// Completes a write to the file at @p path that ended with its process. Checking and reading do
/// the same. Call it before watching the file: a watcher would report the write as a change.
void finishTARNFile(const QString &path);

/// True when readTARNConfigFromXml() would read the file at @p path without an error. The reason
/// of a refusal goes to the debug stream.
bool checkTARNFile(const QString &path);

/// Reads the cores of the configuration file at @p path; the caller owns them. On failure returns
/// an empty list, sets @p ok to false and @p errorMessage to what is wrong, with line and column.
/// Both pointers may be null.
QList<TarnCore *> readTARNConfigFromXml(const QString &path, bool *ok, QString *errorMessage);

/// The same, and sets @p lines to where in the file the cores and what belongs to them begin. For
/// messages that point into the file; none of the pointers may be null.
QList<TarnCore *> readTARNConfigFromXml(const QString &path, bool *ok, QString *errorMessage,
                                        ConfigLines *lines);

/// Replaces the file at @p path with the configuration of @p cores: afterwards it holds the whole
/// new content, or, when false is returned, its former content. Unchanged content is written byte
/// for byte as it was read from a file written here. False before anything is touched when a text
/// cannot be represented in XML.
bool writeTARNConfigToXml(const QList<TarnCore *> &cores, const QString &path);

} // namespace TARN
