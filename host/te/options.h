// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

namespace TE {

/// The options of a project that are neither its top module, its sources nor its device, in the
/// order in which the project file lists them.
QStringList optionNames();

/// The value of the option @p name while the project does not set it; invalid for an unknown name.
QVariant defaultOption(const QString &name);

/// Brings @p value into the type of the option @p name. Returns false and sets @p error (may be
/// null) when the option is not known or cannot hold that value.
bool normalizeOption(const QString &name, QVariant *value, QString *error);

/// True for "NAME" and "NAME=VALUE".
bool isMacroDefinition(const QString &text);

} // namespace TE
