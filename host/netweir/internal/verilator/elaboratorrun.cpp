// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "elaboratorrun.h"

#include <algorithm>

namespace NETWEIR::Internal {

void ElaboratorRun::readMessages(const QByteArray &errorOutput)
{
    m_messages = parseToolOutput(errorOutput);
}

int ElaboratorRun::errorCount() const
{
    return int(std::count_if(m_messages.begin(), m_messages.end(),
                             [](const ToolMessage &message) { return message.error; }));
}

} // namespace NETWEIR::Internal
