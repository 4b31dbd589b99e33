// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "vhdlfile.h"

#include <QByteArray>

namespace NETWEIR::Internal {

/// Finds the design units of a VHDL text of any edition, with their instances and declarations. Not
/// a parser: it accepts any text, finds what it can in a text with errors, and leaves the errors to
/// GHDL. Subprograms, processes and protected types are skipped. Time and memory are linear;
/// nothing is recursive.
VhdlFile scanVhdl(const QByteArray &text);

} // namespace NETWEIR::Internal
