// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ghdlmessages.h"

#include <netweir/internal/tool/toolrun.h>

namespace NETWEIR::Internal {

/// One run of GHDL and its errors.
class GhdlRun final : public ToolRun
{
public:
    using ToolRun::ToolRun;

    /// Waits like wait(), but stops the run when the header of the file @p wave is complete. GHDL
    /// has then written everything about the signals, and begins to simulate: whatever processes do
    /// at the beginning does not matter, and they may never end.
    void waitForHeader(const QString &wave, ExtractionProgress *progress, int limit);

    // Of a run that is over.

    const QVector<GhdlMessage> &errors() const { return m_errors; }

protected:
    // ToolRun
    void readMessages(const QByteArray &errorOutput) override;

private:
    QVector<GhdlMessage> m_errors;
};

/// Whether a wave file of GHDL has all of its header.
bool isHeaderComplete(const QString &wave);

} // namespace NETWEIR::Internal
