// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "qutil_global.h"

#include <QString>

#include <memory>

namespace QUtil {

class IEvent;
class IEventHandler;

/// The host's event bus. Lives for the whole process; GUI thread only.
///
/// Handlers receive an event in the order in which they subscribed to its name. Subscribing a
/// handler twice to a name has no effect, nor has unsubscribing one that is not subscribed. During
/// a delivery a handler may subscribe, unsubscribe and destroy itself and others. A new handler
/// does not receive the event that is being delivered; a handler that has left does not receive it
/// any more.
class QUTIL_EXPORT EventManager
{
public:
    static EventManager *instance();

    void subscribe(IEventHandler *handler, const QString &eventName);
    void unsubscribe(IEventHandler *handler, const QString &eventName);

    /// Delivers @p event to the subscribers of its name before it returns. May be called from
    /// within a delivery.
    void send(const IEvent &event);

private:
    friend class IEventHandler;
    struct Private;

    EventManager();
    ~EventManager();
    void unsubscribeAll(IEventHandler *handler);

    std::unique_ptr<Private> d;
};

} // namespace QUtil
