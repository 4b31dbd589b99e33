// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "qutil_global.h"

namespace QUtil {

class IEvent;

/// Receiver of host events. Its destructor leaves every event that it still subscribes to, so that
/// a handler may die at any time, in the middle of a delivery included.
class QUTIL_EXPORT IEventHandler
{
public:
    virtual ~IEventHandler();

    /// Called on the GUI thread for every event that the handler subscribed to.
    /// @p event lives only for the duration of the call.
    virtual void handleIEvent(const IEvent *event) = 0;
};

} // namespace QUtil
