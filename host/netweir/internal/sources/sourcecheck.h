// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

namespace NETWEIR::Internal {

struct DesignSources;

/// Defined by the elaborator itself.
constexpr char ToolMacro[] = "VERILATOR";

/// What the sources mention and the extraction acts on.
struct SourceWords
{
    bool hidesCode = false; ///< Comments that hide code from synthesis.
    bool namesTool = false; ///< The macro by which sources know that this tool reads them.
};

/// Looks for what would make the elaborator hang or fail without a reason: missing, unreadable,
/// empty and binary files, folders, lines over 1 MB, VHDL; included files too, as far as their
/// names stand in the text. One message a finding. Reads each file once; @p words, if given, learns
/// what they mention.
QStringList checkSources(const DesignSources &sources, SourceWords *words = nullptr);

} // namespace NETWEIR::Internal
