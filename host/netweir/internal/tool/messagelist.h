// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QSet>
#include <QStringList>

namespace NETWEIR::Internal {

/// The messages of a tool as users see them: one line each, without repetition. Errors that only
/// follow from others are counted in one line at the end. A long list ends with the number of
/// omitted messages.
class MessageList
{
public:
    /// Adds a line, or counts it if @p followsUp, unless the same line was there before.
    void add(const QString &line, bool followsUp = false);

    /// Whether this line was added before.
    bool contains(const QString &line) const { return m_seen.contains(line); }

    QStringList lines() const;

private:
    QStringList m_lines;
    QSet<QString> m_seen;
    int m_more = 0;
    int m_followUps = 0;
};

} // namespace NETWEIR::Internal
