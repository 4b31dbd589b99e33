// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "toolmessages.h"

#include <netweir/internal/tool/toolrun.h>

#include <QVector>

namespace NETWEIR::Internal {

/// One run of Verilator, as preprocessor or as elaborator, and its messages.
class ElaboratorRun final : public ToolRun
{
public:
    using ToolRun::ToolRun;

    // Of a run that is over.

    const QVector<ToolMessage> &messages() const { return m_messages; }
    int errorCount() const;

protected:
    // ToolRun
    void readMessages(const QByteArray &errorOutput) override;

private:
    QVector<ToolMessage> m_messages;
};

} // namespace NETWEIR::Internal
