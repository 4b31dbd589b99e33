// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace NETWEIR::Internal {

/// Names that stay when the document with them is gone.
///
/// In a large design the same names occur in many modules, so a name shares its memory with an
/// equal one that came shortly before. Names that are all different take no more than their
/// letters.
class NamePool
{
public:
    NamePool() = default;
    NamePool(const NamePool &) = delete;
    NamePool &operator=(const NamePool &) = delete;

    /// The name, valid as long as the pool.
    std::string_view keep(std::string_view name);
    /// Ends the validity of all names; texts stay, as long as others hold them.
    void forgetNames();
    /// The name, in shared memory if possible.
    QString keep(const QString &name);

private:
    static constexpr std::size_t RecentNames = 4096;

    std::string_view added(std::string_view name);

    std::vector<std::unique_ptr<char[]>> m_blocks;
    char *m_free = nullptr; ///< In the last block.
    std::size_t m_freeSize = 0;
    std::array<std::string_view, RecentNames> m_recentNames; ///< By their hashes.
    std::array<QString, RecentNames> m_recentTexts;          ///< By their hashes.
};

} // namespace NETWEIR::Internal
