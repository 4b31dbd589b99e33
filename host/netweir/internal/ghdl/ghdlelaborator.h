// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "vhdldesign.h"

#include <netweir/internal/parts/partelaborator.h>
#include <netweir/internal/signals/vhdlpartinput.h>
#include <netweir/internal/sources/designsources.h>

namespace NETWEIR::Internal {

class GhdlElaboration;
struct GhdlFolder;

/// Reads VHDL with GHDL.
///
/// The sources are scanned once. All elaborations share a working folder with copies of the
/// sources, without hidden code.
class GhdlElaborator final : public PartElaborator
{
public:
    /// Only the VHDL files of @p design count.
    explicit GhdlElaborator(const DesignSources &design);
    ~GhdlElaborator() override;

    // PartElaborator
    void setForeignUnits(const std::vector<DeclaredUnit> *units) override;
    void scan(ExtractionProgress *progress) override;
    const std::vector<DeclaredUnit> &units() const override { return m_units; }
    QStringList sourceMessages() const override { return m_sourceMessages; }
    void begin(const std::vector<PartRoot> &roots, ExtractionProgress *progress) override;
    void elaborate(ExtractionProgress *progress, int limit) override;
    bool isRunning() const override;
    bool isElaborated() const override;
    std::unique_ptr<Part> read(QString *error) override;
    QStringList messages() const override;

private:
    const DesignSources m_sources;
    VhdlDesign m_design;
    std::vector<DeclaredUnit> m_units;
    QStringList m_sourceMessages;
    const std::vector<DeclaredUnit> *m_foreign = nullptr;
    int m_elaborations = 0;                         ///< Their number so far.
    std::unique_ptr<GhdlFolder> m_folder;           ///< Null before the first one.
    std::unique_ptr<GhdlElaboration> m_elaboration; ///< Null when it could not begin.
    VhdlPartInput m_partInput;
    QStringList m_messages; ///< Those of earlier elaborations.
};

} // namespace NETWEIR::Internal
