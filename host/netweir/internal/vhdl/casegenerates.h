// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

namespace NETWEIR::Internal {

/// @p text with every "case ... generate" as an "if ... generate" with the same labels and scopes.
/// All other text keeps its line. GHDL cannot list the signals of a design with case generates.
/// Returns the text itself when it has none, when one of them is broken, or when the result would
/// be more than 16 times as long. Linear in the text.
QByteArray withoutCaseGenerates(const QByteArray &text);

} // namespace NETWEIR::Internal
