// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace QUtil {

class IEvent;

class IEventHandler
{
public:
    virtual ~IEventHandler() = default;
    virtual void handleIEvent(const IEvent *event) = 0;
};

} // namespace QUtil
