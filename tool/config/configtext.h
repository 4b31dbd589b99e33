// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QList>

namespace TARN {
class TarnCore;
}

namespace Tool {

/// A configuration for readers: a block for each core, a line for each port, and an aligned line
/// for each signal.
QByteArray configText(const QList<TARN::TarnCore *> &cores);

} // namespace Tool
