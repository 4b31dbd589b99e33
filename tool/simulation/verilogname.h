// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/rtlnetlist.h>

#include <QByteArray>
#include <QString>
#include <QVector>

namespace Tool {

// Names in texts for simulators. Verilog and SystemVerilog share the rules, except that many words
// are keywords of SystemVerilog only. These count as keywords in Verilog too, because simulators
// may read one design in both languages: an escaped identifier means the same in either.

/// Whether @p word is a keyword of Verilog or SystemVerilog (IEEE 1800-2017).
bool isVerilogKeyword(const QString &word);

/// @p name as an identifier: as it is, or escaped, with a backslash and a blank.
QByteArray verilogIdentifier(const QString &name);

/// The steps of a hierarchical name, with points between them: "g[0].\a.b .c[3]".
QByteArray verilogPath(const QVector<NETWEIR::NameStep> &steps);

/// Reads a hierarchical name as a user writes it: "hub_tb.dut", "tb.g[1].\my.dut ". The blank at
/// the end of an escaped identifier may be missing at the end of the text. Returns false for
/// anything else. Each index is a plain number.
bool readVerilogPath(const QString &text, QVector<NETWEIR::NameStep> *steps);

/// @p text within the quotes of a format for $display.
QByteArray displayText(const QString &text);

} // namespace Tool
