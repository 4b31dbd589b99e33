// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QVariant>

namespace QUtil {

class IEvent
{
public:
    virtual ~IEvent() = default;
    virtual QString name() const = 0;
    virtual QVariant get(const QString &key) const = 0;
};

} // namespace QUtil
