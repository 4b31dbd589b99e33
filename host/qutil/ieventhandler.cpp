// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "ieventhandler.h"

#include "eventmanager.h"

namespace QUtil {

IEventHandler::~IEventHandler()
{
    EventManager::instance()->unsubscribeAll(this);
}

} // namespace QUtil
