// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "ghdlprogram.h"

#include <netweir/internal/ground/messages.h>
#include <netweir/internal/tool/toolprogram.h>

namespace NETWEIR::Internal {

QString findGhdl(QString *error)
{
    return findToolProgram({"TARN_GHDL", "ghdl", NETWEIR_GHDL,
                            Text::tr("The design has VHDL sources: install GHDL (package ghdl)")},
                           error);
}

} // namespace NETWEIR::Internal
