// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "tarninserterplugin.h"

#include "tarnfilewizardfactory.h"
#include "tarnviewmanager.h"

#include <QDebug>

namespace TARN {

bool TarnInserterPlugin::initialize()
{
    TarnViewManager *manager = TarnViewManager::instance();
    if (!manager) {
        qCritical("TARN Inserter was shut down and cannot be initialised again.");
        return false;
    }
    addAutoReleasedObject(new TarnFileWizardFactory);
    manager->initialize();
    return true;
}

void TarnInserterPlugin::extensionsInitialized() {}

void TarnInserterPlugin::shutDown()
{
    if (TarnViewManager *manager = TarnViewManager::instance())
        manager->deinit();
}

} // namespace TARN
