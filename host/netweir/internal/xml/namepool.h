// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QSet>
#include <QString>

#include <string>
#include <string_view>
#include <unordered_set>

namespace NETWEIR::Internal {

/// Names that stay when the document with them is gone. Owns each name once: in a large design, the
/// same names occur in many modules.
class NamePool
{
public:
    NamePool() = default;
    NamePool(const NamePool &) = delete;
    NamePool &operator=(const NamePool &) = delete;

    /// The name, valid as long as the pool.
    std::string_view keep(std::string_view name) { return *m_names.emplace(name).first; }
    /// The name in the memory that all equal names share.
    QString keep(const QString &name) { return *m_texts.insert(name); }

private:
    std::unordered_set<std::string> m_names; ///< Its elements never move.
    QSet<QString> m_texts;
};

} // namespace NETWEIR::Internal
