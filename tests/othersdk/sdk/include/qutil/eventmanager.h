// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMultiMap>
#include <QString>

namespace QUtil {

class IEvent;
class IEventHandler;

class EventManager
{
public:
    static EventManager *instance();

    void subscribe(IEventHandler *handler, const QString &name)
    {
        m_handlers.insert(name, handler);
    }
    void unsubscribe(IEventHandler *handler, const QString &name)
    {
        m_handlers.remove(name, handler);
    }
    void send(const IEvent *event);
    int subscriptions() { return m_handlers.size(); }

private:
    QMultiMap<QString, IEventHandler *> m_handlers;
};

} // namespace QUtil
