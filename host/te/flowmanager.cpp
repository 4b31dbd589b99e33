// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "flowmanager.h"

#include "designmanager.h"
#include "teconstants.h"

#include <QDir>

namespace TE {

FlowManager::FlowManager(const DesignManager *designManager)
    : m_designManager(designManager)
{
}

QString FlowManager::resultFile(const QString &id) const
{
    if (id != QLatin1String(RES_NETLIST) || !m_designManager->hasProject())
        return {};
    return QDir(m_designManager->workingDir())
        .filePath(m_designManager->project().name + QLatin1String(".netlist"));
}

} // namespace TE
