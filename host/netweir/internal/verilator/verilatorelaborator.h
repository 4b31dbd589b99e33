// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/tool/elaborator.h>

namespace NETWEIR::Internal {

class Attempt;

/// Reads designs in Verilog and SystemVerilog with Verilator.
///
/// The preprocessor runs first; its output tells the modules and, file by file, is what the
/// elaborator then reads. So macros carry over from file to file, nothing is preprocessed twice,
/// and the names that the tool sees are free of blanks.
///
/// The sources are read as synthesis reads them. When that fails and they ask for the tool by its
/// macro, they are read once more with the macro defined. Constructs that the elaborator cannot
/// read are then left out one by one, as long as that gets further.
class VerilatorElaborator final : public Elaborator
{
public:
    explicit VerilatorElaborator(const DesignSources &design);
    ~VerilatorElaborator() override;

    // Elaborator
    void elaborate(ExtractionProgress *progress, int limit) override;
    QStringList tops() const override;
    QStringList modules() const override;
    std::unique_ptr<RtlNetlist> buildNetlist(ExtractionProgress *progress) override;
    QStringList messages() const override;

private:
    void begin(ExtractionProgress *progress, const QString &reasonForMacro = QString());
    bool tryOtherwise(ExtractionProgress *progress);
    bool mayNeedMacro() const;

    const DesignSources m_design;
    QString m_program;
    std::unique_ptr<Attempt> m_attempt; ///< Null before the first one and without a program.
    std::unique_ptr<Attempt> m_failed;  ///< To be gone back to when the current one is no better.
    bool m_hasTriedMacro = false;
    QStringList m_errors; ///< Outside of attempts.
};

} // namespace NETWEIR::Internal
