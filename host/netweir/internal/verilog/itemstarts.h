// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "textitem.h"
#include "verilogtokens.h"

#include <QByteArray>
#include <QVector>

namespace NETWEIR::Internal {

/// The beginning of an item. Only an item with an end keyword has an end.
struct ItemStart
{
    TextItem item;
    int unit = -1;       ///< Index of the start of the unit around it.
    int region = -1;     ///< The same for the item with an end keyword around it.
    int process = -1;    ///< Index of the last process that begins here or before.
    int assignment = -1; ///< The same for assignments.
    VerilogTokens after; ///< The tokens after @p word.
    Token word;          ///< Its keyword.
};

/// Where items begin, in the order of the text. Any text is accepted. One pass; the result refers
/// to @p text.
QVector<ItemStart> findItemStarts(const QByteArray &text, bool systemVerilog);

} // namespace NETWEIR::Internal
