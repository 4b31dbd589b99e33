// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "te_global.h"

#include <QString>

namespace TE {

class DesignManager;

/// Knows where the steps of the flow write their results.
class TE_EXPORT FlowManager
{
public:
    explicit FlowManager(const DesignManager *designManager);

    /// Path of the result file @p id, for example TE::RES_NETLIST, in the project's working folder.
    /// The file need not exist. Empty for an unknown id or without a project.
    QString resultFile(const QString &id) const;

private:
    const DesignManager *m_designManager;
};

} // namespace TE
