// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "elaboratorprogram.h"

#include <netweir/internal/ground/messages.h>
#include <netweir/internal/tool/toolprogram.h>

namespace NETWEIR::Internal {

QString findElaborator(QString *error)
{
    return findToolProgram(
        {"TARN_VERILATOR", "verilator_bin", NETWEIR_VERILATOR, Text::tr("Install Verilator")},
        error);
}

} // namespace NETWEIR::Internal
