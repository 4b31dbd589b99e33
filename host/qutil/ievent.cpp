// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "ievent.h"

namespace QUtil {

IEvent::IEvent(const QString &name, const QMap<QString, QVariant> &values)
    : m_name(name)
    , m_values(values)
{
}

IEvent::~IEvent() = default;

QString IEvent::name() const
{
    return m_name;
}

QVariant IEvent::get(const QString &key) const
{
    return m_values.value(key);
}

} // namespace QUtil
