// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "verilatorelaborator.h"

#include <netweir/internal/tool/elaborator.h>

namespace NETWEIR::Internal {

/// A design whose only part is in Verilog and SystemVerilog.
class VerilogDesign final : public Elaborator
{
public:
    explicit VerilogDesign(const DesignSources &design);

    // Elaborator
    void elaborate(ExtractionProgress *progress, int limit) override;
    QStringList tops() const override { return m_tops; }
    QStringList modules() const override { return m_modules; }
    std::unique_ptr<RtlNetlist> buildNetlist(ExtractionProgress *progress) override;
    QStringList messages() const override;

private:
    void begin(ExtractionProgress *progress);

    const QString m_top;
    const bool m_isEmpty;
    const int m_timeoutSeconds;
    VerilatorElaborator m_part;
    QStringList m_tops;
    QStringList m_modules;
    QStringList m_unitMessages;
    QStringList m_errors;
    bool m_hasBegun = false;
};

} // namespace NETWEIR::Internal
