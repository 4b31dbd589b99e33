// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace DEV {
struct DeviceArg;
}

namespace Workbench {

/// Opens the configuration file at @p path in the plug-in, which must be initialised. A failure is
/// shown to the user.
void openTarnFile(const QString &path, const DEV::DeviceArg &device);

} // namespace Workbench
