// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "joinednetlist.h"
#include "rootlist.h"

#include <netweir/internal/parts/designunits.h>
#include <netweir/internal/parts/partelaborator.h>
#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/tool/elaborator.h>

#include <QDeadlineTimer>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace NETWEIR::Internal {

/// The elaborator of one of the languages of a design.
struct LanguageElaborator
{
    Language language;
    std::unique_ptr<PartElaborator> elaborator;
};

/// Reads designs in one or several languages: each language with an elaborator of its own, and the
/// results joined at the instances of units of the other language.
///
/// Finds the tops over the units of all languages. Then elaborates in rounds: first the top, in its
/// language. Each distinct unit of the other language that its instances name becomes a root of the
/// next round, in that language, and so on, until a round finds no new roots. A design in one
/// language takes one round, whose result is not read before the netlist is built.
class DesignElaborator final : public Elaborator
{
public:
    /// The languages in the order in which their messages appear, each once.
    DesignElaborator(const DesignSources &design, std::vector<LanguageElaborator> languages);
    ~DesignElaborator() override;

    // Elaborator
    void elaborate(ExtractionProgress *progress, int limit) override;
    QStringList tops() const override { return m_tops; }
    QStringList modules() const override { return m_modules; }
    std::unique_ptr<RtlNetlist> buildNetlist(ExtractionProgress *progress) override;
    QStringList messages() const override;

private:
    struct Side
    {
        Language language;
        std::unique_ptr<PartElaborator> elaborator;
        std::vector<DeclaredUnit> foreign; ///< The units of the other languages.
        bool hasBegun = false;
    };

    /// One elaboration. Without roots, only the search for errors.
    struct Round
    {
        int side;
        std::vector<int> roots;
        bool isOver = false; ///< The tool has ended.
    };

    bool hasErrors() const;
    void scan(ExtractionProgress *progress);
    void tellForeignUnits();
    void lookAtUnits();
    void beginWithTop(ExtractionProgress *progress);
    void begin(int side, const std::vector<int> &roots, ExtractionProgress *progress);
    void beginSearchForErrors(ExtractionProgress *progress);
    bool goOn(ExtractionProgress *progress, const QDeadlineTimer &end);
    bool isToBeRead() const;
    bool readInThread(ExtractionProgress *progress,
                      const std::function<bool(QString *error)> &reading);
    bool readRound(QString *error);
    void checkPorts(const std::vector<int> &roots);
    std::vector<int> addRoots(ReadPart *part);
    int addRoot(const PartRoot &root, Language from);
    void beginNextRound(const std::vector<int> &roots, ExtractionProgress *progress);
    int sideOf(Language language) const;
    QString topNodeName() const;

    const DesignSources m_design;
    std::vector<Side> m_sides;
    bool m_isScanned = false;

    std::vector<DeclaredUnit> m_units; ///< Of all languages.
    std::unique_ptr<DesignUnits> m_designUnits;
    QStringList m_tops;
    QStringList m_modules;
    QStringList m_topMessages;

    RootList m_roots;
    std::vector<ReadRoot> m_readRoots; ///< By the numbers of m_roots.
    std::vector<ReadPart> m_parts;
    std::optional<Round> m_round; ///< The current one.
    int m_rounds = 0;             ///< Number of rounds with roots.
    bool m_hasFailed = false;
    QStringList m_errors; ///< Errors that belong to no single language.
};

} // namespace NETWEIR::Internal
