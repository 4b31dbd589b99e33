// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "vhdlfile.h"

#include <QByteArray>

namespace NETWEIR::Internal {

/// A scanned text of a design.
struct VhdlSource
{
    QByteArray library; ///< "work" or a name of its own.
    QByteArray text;    ///< What was scanned.
    VhdlFile file;
};

} // namespace NETWEIR::Internal
