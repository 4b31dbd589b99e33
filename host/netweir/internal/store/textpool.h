// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QChar>

#include <algorithm>
#include <memory>
#include <vector>

namespace NETWEIR::Internal {

/// Memory for texts that live as long as the pool. They lie one behind the other in large blocks:
/// who reads them in the order in which they were added hardly waits for the memory.
class TextPool
{
public:
    /// Memory for @p size letters.
    QChar *allocate(int size)
    {
        if (size > m_left) {
            m_left = std::max(size, BlockSize);
            m_blocks.emplace_back(new QChar[std::size_t(m_left)]);
            m_next = m_blocks.back().get();
        }
        QChar *text = m_next;
        m_next += size;
        m_left -= size;
        return text;
    }

private:
    static constexpr int BlockSize = 32 * 1024;

    std::vector<std::unique_ptr<QChar[]>> m_blocks;
    QChar *m_next = nullptr; ///< In the last block.
    int m_left = 0;          ///< The letters that are free there.
};

} // namespace NETWEIR::Internal
