// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designtree.h"

#include <netweir/internal/ground/itemat.h>

#include <utility>

namespace NETWEIR::Internal {

namespace {

/// The level of the line, which has two letters for each in front of the name. Cuts them off.
int takeLevel(std::string_view *line)
{
    int level = 0;
    for (; line->size() > 1; ++level) {
        const std::string_view mark = line->substr(0, 2);
        if (mark != "| " && mark != "  " && mark != "+-" && mark != "`-")
            break;
        line->remove_prefix(2);
    }
    return level;
}

/// The kind at the end of the line, "name [kind]". Cuts it off; empty when there is none.
std::string_view takeKind(std::string_view *line)
{
    const std::size_t begin = line->rfind(" [");
    if (begin == std::string_view::npos || line->back() != ']')
        return {};
    const std::string_view kind = line->substr(begin + 2, line->size() - begin - 3);
    *line = line->substr(0, begin);
    return kind;
}

} // namespace

bool DesignTree::addLine(std::string_view line)
{
    const int level = takeLevel(&line);
    const std::string_view kind = takeKind(&line);
    const bool isTop = m_scopes.empty() && level == 0 && kind == "entity" && line == m_top;
    if (kind.empty() || (m_scopes.empty() && !isTop))
        return false;
    m_open.resize(std::size_t(level) + 1, -1);
    itemAt(m_open, level) = level > 0 ? itemAt(m_open, level - 1) : -1;
    TreeScope *around = scopeAt(level);
    if (isTop || kind == "instance" || kind == "block" || kind == "for-generate" ||
        kind == "if-generate true")
        addScope(level, line, kind == "for-generate");
    else if (around && kind == "entity")
        around->entity = line;
    else if (around && kind == "arch")
        around->architecture = line;
    if (isTop)
        m_scopes.back().entity = line;
    return true;
}

void DesignTree::addScope(int level, std::string_view name, bool isRound)
{
    TreeScope scope;
    scope.name = name;
    scope.parent = itemAt(m_open, level);
    scope.isRound = isRound;
    itemAt(m_open, level) = countOf(m_scopes);
    m_scopes.push_back(std::move(scope));
}

/// Null in a package.
TreeScope *DesignTree::scopeAt(int level)
{
    const int scope = itemAt(m_open, level);
    return scope < 0 ? nullptr : &itemAt(m_scopes, scope);
}

} // namespace NETWEIR::Internal
