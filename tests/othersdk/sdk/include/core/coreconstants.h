// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace Core {
namespace Constants {

const QString A_FILE_SAVE = QStringLiteral("Core.Action.Save");

} // namespace Constants
} // namespace Core
