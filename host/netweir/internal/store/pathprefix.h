// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringView>

namespace NETWEIR::Internal {

class TextPool;

/// The hash of a text that begins with one of the hash @p before and ends with @p text. So a name
/// can be hashed part by part.
quint32 textHash(QStringView text, quint32 before = 0);

/// The path of a node and the '/' behind it: the beginning of the full names of all its nets.
///
/// Its text is in one piece, ready to be copied, unless it is very long. Then it only has the last
/// levels, and what precedes them belongs to a node above, whose prefix must live as long as this
/// one. So the memory of all prefixes grows with the number of nodes, and not with the square of
/// their depth.
class PathPrefix
{
public:
    /// @p parent is null for the top node. The text is allocated from @p texts.
    PathPrefix(const PathPrefix *parent, QStringView instName, TextPool *texts);

    int size() const { return m_size; }
    quint32 hash() const { return m_hash; }

    /// Copies the text to memory that ends at @p end.
    void copyBefore(QChar *end) const;

    /// @p text has the size of this prefix.
    bool equals(QStringView text) const;

private:
    const PathPrefix *m_before; ///< What precedes the text; null if nothing does.
    QStringView m_text;
    int m_size; ///< Of the whole prefix.
    quint32 m_hash;
};

} // namespace NETWEIR::Internal
