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

    /// Waits like wait(), but stops the run when GHDL has written the header of the file @p wave
    /// and the table of signals at the end of @p output, and then works for a second without
    /// writing. It simulates by then: whatever processes do at the beginning does not matter, and
    /// they may never end.
    void waitForSignals(const QString &output, const QString &wave, ExtractionProgress *progress,
                        int limit);

    // Of a run that is over.

    const QVector<GhdlMessage> &errors() const { return m_errors; }

    /// These errors and those in @p output. GHDL may say there what is wrong, and among its errors
    /// with which signal.
    QVector<GhdlMessage> errorsWith(const QByteArray &output) const;

    /// GHDL has ended by itself, with or without errors, or was stopped by waitForSignals().
    bool hasWrittenAll() const { return m_isStopped || succeeded() || failed(); }

protected:
    // ToolRun
    void readMessages(const QByteArray &errorOutput) override;

private:
    QByteArray m_errorOutput;
    QVector<GhdlMessage> m_errors;
    qint64 m_size = 0;       ///< Of the files.
    qint64 m_usedBefore = 0; ///< Processor time when they reached this size.
    bool m_isStopped = false;
};

/// Whether a wave file of GHDL has all of its header.
bool isHeaderComplete(const QString &wave);

} // namespace NETWEIR::Internal
