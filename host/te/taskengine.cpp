// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "taskengine.h"

#include "designmanager.h"
#include "flowmanager.h"

namespace TE {

TaskEngine *TaskEngine::instance()
{
    static TaskEngine engine;
    return &engine;
}

TaskEngine::TaskEngine()
    : m_designManager(std::make_unique<DesignManager>())
    , m_flowManager(std::make_unique<FlowManager>(m_designManager.get()))
{
}

TaskEngine::~TaskEngine() = default;

DesignManager *TaskEngine::designManager() const
{
    return m_designManager.get();
}

FlowManager *TaskEngine::flowManager() const
{
    return m_flowManager.get();
}

} // namespace TE
