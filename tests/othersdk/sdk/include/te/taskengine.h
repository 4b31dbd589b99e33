// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace TE {

class DesignManager;
class FlowManager;

/// Without a project there is no manager; while the host starts there is no engine.
class TaskEngine
{
public:
    static TaskEngine *instance();

    DesignManager *designManager();
    FlowManager *flowManager();
};

} // namespace TE
