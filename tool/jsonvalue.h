// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nlohmann/json.hpp>

#include <QByteArray>
#include <QFile>
#include <QString>

#include <string>

namespace Tool {

/// An object whose keys keep their order.
using JsonObject = nlohmann::ordered_json;

inline std::string jsonText(const QString &text)
{
    return text.toStdString();
}

/// The name of a file. JSON cannot hold bytes that are no UTF-8: jsonLine() puts U+FFFD there.
inline std::string jsonPath(const QString &path)
{
    return QFile::encodeName(path).toStdString();
}

/// @p value on one line, without a line feed.
inline QByteArray jsonLine(const JsonObject &value)
{
    return QByteArray::fromStdString(
        value.dump(-1, ' ', false, JsonObject::error_handler_t::replace));
}

} // namespace Tool
