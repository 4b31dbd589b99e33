// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "tarninserterplugin.h"

#include "tarnfilewizardfactory.h"
#include "tarnviewmanager.h"

namespace TARN {

bool TarnInserterPlugin::initialize()
{
    addAutoReleasedObject(new TarnFileWizardFactory);
    TarnViewManager::ensureInstance()->initialize();
    return true;
}

void TarnInserterPlugin::extensionsInitialized() {}

void TarnInserterPlugin::shutDown()
{
    if (TarnViewManager *manager = TarnViewManager::instance())
        manager->deinit();
}

} // namespace TARN
