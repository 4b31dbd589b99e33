// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "eventmanager.h"

#include "ievent.h"
#include "ieventhandler.h"

#include <QHash>

#include <map>

namespace QUtil {

namespace {

using Ticket = quint64;

/// The handlers of one event name, by tickets that grow with every subscription. A delivery keeps
/// tickets only, so the list may change in the meantime.
struct Subscribers
{
    std::map<Ticket, IEventHandler *> handlers;
    QHash<IEventHandler *, Ticket> tickets;
};

} // namespace

struct EventManager::Private
{
    /// Entries are never removed: deliveries refer to them.
    std::map<QString, Subscribers> subscribers;
    Ticket lastTicket = 0;

    static void remove(Subscribers &from, IEventHandler *handler)
    {
        from.handlers.erase(from.tickets.take(handler));
    }
};

EventManager::EventManager()
    : d(new Private)
{
}

EventManager::~EventManager() = default;

EventManager *EventManager::instance()
{
    // Never destroyed: handlers may be static objects of other libraries, which leave at the very
    // end.
    static auto *manager = new EventManager;
    return manager;
}

void EventManager::subscribe(IEventHandler *handler, const QString &eventName)
{
    Subscribers &subscribers = d->subscribers[eventName];
    if (!handler || subscribers.tickets.contains(handler))
        return;
    const Ticket ticket = ++d->lastTicket;
    subscribers.handlers.emplace(ticket, handler);
    subscribers.tickets.insert(handler, ticket);
}

void EventManager::unsubscribe(IEventHandler *handler, const QString &eventName)
{
    const auto found = d->subscribers.find(eventName);
    if (found != d->subscribers.end())
        Private::remove(found->second, handler);
}

void EventManager::unsubscribeAll(IEventHandler *handler)
{
    for (auto &entry : d->subscribers)
        Private::remove(entry.second, handler);
}

void EventManager::send(const IEvent &event)
{
    const auto found = d->subscribers.find(event.name());
    if (found == d->subscribers.end())
        return;
    const auto &handlers = found->second.handlers;
    const Ticket last = d->lastTicket;
    for (auto it = handlers.begin(); it != handlers.end() && it->first <= last;) {
        const Ticket current = it->first;
        it->second->handleIEvent(&event);
        it = handlers.upper_bound(current);
    }
}

} // namespace QUtil
