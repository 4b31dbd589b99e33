// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/tool/elaborator.h>

namespace NETWEIR::Internal {

class Attempt;

/// Reads designs in Verilog and SystemVerilog with Verilator.
///
/// The preprocessor runs first. Its output is scanned for modules and then becomes, file by file,
/// the input of the elaborator. So macros carry over from file to file, nothing is preprocessed
/// twice, and file names for the tool contain no blanks.
///
/// The sources are read like in synthesis. If that fails and they use the macro of the tool, they
/// are read once more with the macro defined. Then constructs that the elaborator cannot read are
/// left out one by one, as long as that gets further.
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
    std::unique_ptr<Attempt> m_attempt; ///< Null before the first attempt and without a program.
    std::unique_ptr<Attempt> m_failed;  ///< Used again when the current attempt is not better.
    bool m_hasTriedMacro = false;
    QStringList m_errors; ///< Errors that belong to no attempt.
};

} // namespace NETWEIR::Internal
