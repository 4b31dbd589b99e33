// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <probes/signalitem.h>

#include <QList>
#include <QString>
#include <QStringList>

namespace TarnTest {

inline TARN::SignalItem net(const QString &name)
{
    TARN::SignalItem item;
    item.name = name;
    item.kind = TARN::SignalItem::Net;
    return item;
}

/// A bus with these members.
inline TARN::SignalItem bus(const QString &name, const QStringList &members)
{
    TARN::SignalItem item;
    item.name = name;
    item.kind = TARN::SignalItem::Bus;
    for (const QString &member : members) {
        item.members.append(net(member));
        item.members.last().kind = TARN::SignalItem::Bus;
    }
    return item;
}

/// A bus "name" with the members "name[width-1]" to "name[0]".
inline TARN::SignalItem bus(const QString &name, int width)
{
    QStringList members;
    for (int i = width - 1; i >= 0; --i)
        members.append(QStringLiteral("%1[%2]").arg(name).arg(i));
    return bus(name, members);
}

inline QStringList namesOf(const QList<TARN::SignalItem> &items)
{
    QStringList names;
    for (const TARN::SignalItem &item : items)
        names.append(item.name);
    return names;
}

} // namespace TarnTest
