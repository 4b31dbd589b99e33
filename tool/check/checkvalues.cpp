// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "checkvalues.h"

#include <utility>

namespace Tool {

namespace {

JsonObject valueOf(const TARN::Replacement &by)
{
    const bool isPrefix = by.kind == TARN::Replacement::Prefix;
    JsonObject object;
    object["step"] = isPrefix ? "replace-prefix" : "replace";
    object["from"] = jsonText(by.from);
    object["to"] = jsonText(by.to);
    if (isPrefix)
        object["finds"] = by.explains;
    return object;
}

} // namespace

void addFurtherValues(const CheckResult &result, JsonObject *object)
{
    if (!result.saveMessage.isEmpty())
        (*object)["saveCheck"] = jsonText(result.saveMessage);
    if (result.candidates.isEmpty())
        return;
    JsonObject list = JsonObject::array();
    for (const TARN::Replacement &by : result.candidates)
        list.push_back(valueOf(by));
    (*object)["candidates"] = std::move(list);
}

} // namespace Tool
