// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

namespace NETWEIR::Internal {

/// Blanks the code between the comments that hide it from synthesis ("-- synthesis translate_off"
/// and "translate_on"), and these comments. Line ends stay, so that all other text keeps its place.
/// Marks do not nest; a region without an end extends to the end of the text. Linear in the text.
void blankHiddenVhdl(QByteArray *text);

} // namespace NETWEIR::Internal
