// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace DEV {

struct DeviceArg
{
    QString maker;
    QString series;
    QString package;
    QString deviceName;
};

} // namespace DEV
