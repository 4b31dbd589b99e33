// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

namespace NETWEIR::Internal {

struct DesignSources;

/// The macro that the elaborator defines itself.
constexpr char ToolMacro[] = "VERILATOR";

/// Words in the Verilog sources that affect the extraction.
struct SourceWords
{
    bool hidesCode = false; ///< Comments that hide code from synthesis.
    bool namesTool = false; ///< The macro that tells the sources which tool reads them.
};

/// Finds everything that would make the elaborator hang or fail without a reason: missing,
/// unreadable, empty and binary files, folders, lines over 1 MB. Also checks the files that Verilog
/// sources include by a name in the text. Returns one message per finding. Reads each file once and
/// sets @p words, if given.
QStringList checkSources(const DesignSources &sources, SourceWords *words = nullptr);

} // namespace NETWEIR::Internal
