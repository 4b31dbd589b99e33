// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace Files {

/// Path of the folder for temporary files, also when there is no such folder: QDir::tempPath() is
/// empty then, and what is made "in" it lands in the root folder of the system.
QString temporaryPath();

/// For QTemporaryDir: a name in that folder.
QString temporaryTemplate();

} // namespace Files
