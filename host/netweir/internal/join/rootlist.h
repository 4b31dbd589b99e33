// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/parts/partroot.h>

#include <QHash>
#include <QString>

#include <vector>

namespace NETWEIR::Internal {

/// The roots of all parts of a design, numbered in the order in which they were found. Equal roots
/// are one.
class RootList
{
public:
    /// The number of a root, which is added unless it is known.
    int add(Language language, const PartRoot &root);

    int size() const { return int(m_roots.size()); }
    const PartRoot &at(int number) const;
    Language language(int number) const;

private:
    struct Entry
    {
        Language language;
        PartRoot root;
    };

    std::vector<Entry> m_roots;
    QHash<QString, int> m_numbers; ///< By all that makes roots equal.
};

} // namespace NETWEIR::Internal
