// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "extractionmonitor.h"

#include <netweir/internal/tool/extractionprogress.h>

namespace NETWEIR {

ExtractionMonitor::ExtractionMonitor() = default;

ExtractionMonitor::~ExtractionMonitor() = default;

void ExtractionMonitor::wake()
{
    if (m_progress)
        m_progress->look();
}

} // namespace NETWEIR
