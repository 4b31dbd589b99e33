// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace Files {

/// Path of the folder for temporary files, even if it does not exist: QDir::tempPath() is empty
/// then, and a file created "in" it would be in the root folder of the system.
QString temporaryPath();

/// A name in that folder for QTemporaryDir.
QString temporaryTemplate();

} // namespace Files
