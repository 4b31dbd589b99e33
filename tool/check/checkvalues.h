// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "filecheck.h"

#include <tool/jsonvalue.h>

namespace Tool {

/// Adds to @p object what the formats with JSON say in the same way: the message of the save check
/// that says the same, and the candidates, as steps of "tarn edit".
void addFurtherValues(const CheckResult &result, JsonObject *object);

} // namespace Tool
