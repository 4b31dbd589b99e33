// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "tarnopener.h"

#include <plugin/tarnviewmanager.h>

namespace Workbench {

void openTarnFile(const QString &path, const DEV::DeviceArg &device)
{
    if (TARN::TarnViewManager *manager = TARN::TarnViewManager::instance())
        manager->openTarnView(path, device);
}

} // namespace Workbench
