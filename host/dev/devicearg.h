// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dev_global.h"

#include <QMetaType>
#include <QString>

namespace DEV {

/// The FPGA device of a project, with the names of the device catalogue.
struct DeviceArg
{
    QString family;     ///< Product family, for example "KX".
    QString package;    ///< Package code, for example "FBG484".
    QString speedGrade; ///< Speed grade, for example "-2".
    QString deviceName; ///< Full device name, for example "KX70-FBG484-2".
};

} // namespace DEV

Q_DECLARE_METATYPE(DEV::DeviceArg)
