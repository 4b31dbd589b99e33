// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "messagelist.h"

#include <netweir/internal/ground/messages.h>

namespace NETWEIR::Internal {

namespace {

constexpr int MostMessages = 1000;

} // namespace

void MessageList::add(const QString &line, bool followsUp)
{
    if (m_seen.contains(line))
        return;
    m_seen.insert(line);
    if (followsUp)
        ++m_followUps;
    else if (m_lines.size() == MostMessages)
        ++m_more;
    else
        m_lines.append(line);
}

QStringList MessageList::lines() const
{
    QStringList result = m_lines;
    if (m_followUps > 0)
        result.append(
            Text::tr("%n more error(s) that follow from those above", nullptr, m_followUps));
    if (m_more > 0)
        result.append(Text::tr("%n more message(s)", nullptr, m_more));
    return result;
}

} // namespace NETWEIR::Internal
