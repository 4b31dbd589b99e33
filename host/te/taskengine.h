// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "te_global.h"

#include <memory>

namespace TE {

class DesignManager;
class FlowManager;

/// Gives access to the managers of the open project. Lives for the whole process; GUI thread only.
class TE_EXPORT TaskEngine
{
public:
    static TaskEngine *instance();

    /// Never null. Without a project its values are empty.
    DesignManager *designManager() const;
    /// Never null.
    FlowManager *flowManager() const;

private:
    TaskEngine();
    ~TaskEngine();

    std::unique_ptr<DesignManager> m_designManager;
    std::unique_ptr<FlowManager> m_flowManager;
};

} // namespace TE
