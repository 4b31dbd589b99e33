// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/configformat.h>

#include <QByteArray>
#include <QList>
#include <QString>

namespace TARN {
class TarnCore;
}

namespace Tool {

class OwnedCores;

// A configuration as JSON, with every field that the file has. docs/json-form.md describes the
// form, tarn-config.schema.json says it for other programs.

/// Much more than the JSON form of the largest file that the editor and this program write needs:
/// it is less than three times as long.
constexpr qint64 MaximumJsonSize = 4 * TARN::ConfigFormat::MaximumSize;

/// The JSON form of @p cores, which are such as a file can hold. Cores that are equal in every
/// field give the same bytes.
QByteArray configToJson(const QList<TARN::TarnCore *> &cores);

/// Reads the JSON form in any layout and order of keys, and refuses everything that it does not
/// know. On failure @p cores is as it was, and @p error says what is wrong, where, and what to do.
/// Time and memory grow with the size of @p json.
bool configFromJson(const QByteArray &json, OwnedCores *cores, QString *error);

} // namespace Tool
