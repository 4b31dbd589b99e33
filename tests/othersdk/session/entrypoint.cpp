// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "entrypoint.h"

// Included first: the installed header stands alone.
#include <plugin/tarnviewmanager.h>

#include <dev/devicearg.h>

using TARN::TarnViewManager;

bool openInPlugin(const QString &file, const QString &deviceName)
{
    DEV::DeviceArg device;
    device.deviceName = deviceName;
    TarnViewManager *manager = TarnViewManager::instance();
    return manager && manager->openTarnView(file, device);
}

bool closeInPlugin(const QString &file)
{
    TarnViewManager *manager = TarnViewManager::instance();
    return manager && manager->closeTarnView(file);
}

int viewsInPlugin()
{
    TarnViewManager *manager = TarnViewManager::instance();
    return manager ? manager->tarnViews().size() : -1;
}
