// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "namescope.h"

namespace NETWEIR::Internal {

Symbol NameScope::find(std::string_view symbolName) const
{
    const auto found = symbols.find(symbolName);
    return found == symbols.end() ? Symbol() : found->second;
}

} // namespace NETWEIR::Internal
