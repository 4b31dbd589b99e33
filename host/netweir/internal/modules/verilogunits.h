// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/parts/declaredunit.h>

#include <vector>

namespace NETWEIR::Internal {

class PreprocessedText;
struct ModuleScan;

/// The units of @p scan, one for each, in the order of the scan. The uses by bind statements follow
/// as a unit of their own. @p text is the text of the scan.
std::vector<DeclaredUnit> verilogUnits(const ModuleScan &scan, const PreprocessedText &text);

} // namespace NETWEIR::Internal
