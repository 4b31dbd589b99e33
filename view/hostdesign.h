// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

/// The design of the host's open project, as far as the plug-in reads it. While the host has no
/// task engine or no manager, every answer is empty.
namespace TARN::HostDesign {

/// True for the file types of design sources. Other files have no nets.
bool isSourceType(int type);

/// The design information map. The module finder gets it unchanged.
QMap<QString, QVariant> sourceFileInfo();

/// True when the project knows @p file as a design source that is enabled.
bool isEnabledSource(const QString &file);

/// The value of the option @p name of the project.
QVariant optionValue(const QString &name);

/// The project's working folder.
QString workingDir();

/// The path of the result @p id of the flow.
QString resultFile(const QString &id);

} // namespace TARN::HostDesign
