// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "qutil_global.h"

#include <QMap>
#include <QString>
#include <QVariant>

namespace QUtil {

/// A named event of the host with named values.
class QUTIL_EXPORT IEvent
{
public:
    explicit IEvent(const QString &name, const QMap<QString, QVariant> &values = {});
    virtual ~IEvent();

    /// The name under which handlers subscribe, for example "TE.File.Add".
    QString name() const;

    /// The value of @p key, an invalid variant when the event has none.
    virtual QVariant get(const QString &key) const;

private:
    QString m_name;
    QMap<QString, QVariant> m_values;
};

} // namespace QUtil
