// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "namepool.h"

#include <QHash>

#include <algorithm>
#include <functional>

namespace NETWEIR::Internal {

std::string_view NamePool::keep(std::string_view name)
{
    std::string_view &recent = m_recentNames[std::hash<std::string_view>()(name) % RecentNames];
    if (recent != name)
        recent = added(name);
    return recent;
}

void NamePool::forgetNames()
{
    m_recentNames.fill({});
    m_recentTexts.fill({});
    m_blocks.clear();
    m_free = nullptr;
    m_freeSize = 0;
}

QString NamePool::keep(const QString &name)
{
    QString &recent = m_recentTexts[qHash(name) % RecentNames];
    if (recent != name)
        recent = name;
    return recent;
}

std::string_view NamePool::added(std::string_view name)
{
    constexpr std::size_t BlockSize = 64 * 1024;
    if (name.size() > m_freeSize) {
        m_freeSize = std::max(name.size(), BlockSize);
        m_blocks.push_back(std::make_unique<char[]>(m_freeSize));
        m_free = m_blocks.back().get();
    }
    const std::string_view result(m_free, name.size());
    std::copy(name.begin(), name.end(), m_free);
    m_free += name.size();
    m_freeSize -= name.size();
    return result;
}

} // namespace NETWEIR::Internal
