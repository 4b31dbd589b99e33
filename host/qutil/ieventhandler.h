// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "qutil_global.h"

namespace QUtil {

class IEvent;

/// Receiver of host events. The destructor unsubscribes from all events, so a handler may be
/// destroyed at any time, even during a delivery.
class QUTIL_EXPORT IEventHandler
{
public:
    virtual ~IEventHandler();

    /// Called on the GUI thread for every event that the handler subscribed to. @p event is valid
    /// only during the call.
    virtual void handleIEvent(const IEvent *event) = 0;
};

} // namespace QUtil
