// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "elementkind.h"

#include <unordered_map>

namespace NETWEIR::Internal {

ElementKind elementKindOf(std::string_view name)
{
    static const std::unordered_map<std::string_view, ElementKind> Kinds = {
        {"alias", ElementKind::WritesAll},
        {"always", ElementKind::Process},
        {"arraysel", ElementKind::Array},
        {"assign", ElementKind::Assignment},
        {"assigndly", ElementKind::Assignment},
        {"assignforce", ElementKind::Assignment},
        {"begin", ElementKind::Block},
        {"class", ElementKind::Skipped},
        {"clocking", ElementKind::Skipped},
        {"contassign", ElementKind::Assignment},
        {"fgets", ElementKind::WritesAll},
        {"final", ElementKind::Process},
        {"fopen", ElementKind::WritesFirst},
        {"fopenmcd", ElementKind::WritesFirst},
        {"fread", ElementKind::WritesAll},
        {"fscanf", ElementKind::WritesAll},
        {"func", ElementKind::Routine},
        {"funcref", ElementKind::Call},
        {"initial", ElementKind::Initial},
        {"initialautomatic", ElementKind::Process},
        {"initialstatic", ElementKind::Process},
        {"instance", ElementKind::Instance},
        {"modport", ElementKind::Modport},
        {"property", ElementKind::Skipped},
        {"pull", ElementKind::Pull},
        {"rand", ElementKind::WritesFirst}, // The seed.
        {"readmem", ElementKind::MemoryFile},
        {"sequence", ElementKind::Skipped},
        {"sformat", ElementKind::WritesSecond},
        {"sscanf", ElementKind::WritesAll},
        {"task", ElementKind::Routine},
        {"taskref", ElementKind::Call},
        {"typedef", ElementKind::Skipped},
        {"valueplusargs", ElementKind::WritesSecond},
        {"var", ElementKind::Variable},
    };
    const auto found = Kinds.find(name);
    return found == Kinds.end() ? ElementKind::Other : found->second;
}

} // namespace NETWEIR::Internal
