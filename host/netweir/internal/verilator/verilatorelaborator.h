// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/modules/foreignunits.h>
#include <netweir/internal/parts/partelaborator.h>
#include <netweir/internal/sources/designsources.h>

namespace NETWEIR::Internal {

class Attempt;

/// Reads Verilog and SystemVerilog with Verilator.
///
/// The output of the preprocessor is scanned for modules and becomes, file by file, the input of
/// the elaborator, which may start before the output is complete (EarlyRun). So macros carry over
/// from file to file, nothing is preprocessed twice, and file names for the tool contain no blanks.
///
/// The sources are read like in synthesis. If that fails and they use the macro of the tool, they
/// are read once more with the macro defined. Then constructs that the elaborator cannot read are
/// left out one by one, as long as that gets further.
class VerilatorElaborator final : public PartElaborator
{
public:
    explicit VerilatorElaborator(const DesignSources &design);
    ~VerilatorElaborator() override;

    // PartElaborator
    void setForeignUnits(const std::vector<DeclaredUnit> *units) override;
    void scan(ExtractionProgress *progress) override;
    const std::vector<DeclaredUnit> &units() const override;
    QStringList sourceMessages() const override;
    void begin(const std::vector<PartRoot> &roots, ExtractionProgress *progress) override;
    void elaborate(ExtractionProgress *progress, int limit) override;
    bool isRunning() const override;
    bool isElaborated() const override;
    std::unique_ptr<Part> read(QString *error) override;
    QStringList messages() const override;

private:
    void readSources(ExtractionProgress *progress, const QString &reasonForMacro = QString());
    bool tryMacro(ExtractionProgress *progress);
    void takeBetterAttempt();
    bool tryOtherwise(ExtractionProgress *progress);

    const DesignSources m_design;
    ForeignUnits m_foreign;
    QString m_program;
    std::unique_ptr<Attempt> m_attempt; ///< Null before the first attempt and without a program.
    std::unique_ptr<Attempt> m_failed;  ///< Used again when the current attempt is not better.
    std::vector<PartRoot> m_roots;
    bool m_hasTriedMacro = false;
    QStringList m_errors; ///< Errors that belong to no attempt.
};

} // namespace NETWEIR::Internal
