// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/tool/elaborator.h>

#include <QStringList>

#include <functional>
#include <memory>

namespace NETWEIR {
class RtlNetlist;
} // namespace NETWEIR

namespace NETWEIR::Internal {

using ElaboratorFactory = std::function<std::unique_ptr<Elaborator>(const DesignSources &)>;

/// The elaborator for the languages of the sources.
std::unique_ptr<Elaborator> createElaborator(const DesignSources &sources);

/// Reads a design from its sources to its netlist, in two calls that may be repeated in any order.
/// The elaborator keeps running between the calls; its result is used once.
class Extraction
{
public:
    explicit Extraction(const DesignSources &sources,
                        const ElaboratorFactory &create = createElaborator);

    /// Checks and reads the sources and fills the lists of modules. If there is one top, starts its
    /// elaboration and waits for it a while, so that most errors of a design are known at the end.
    void findModules(ExtractionProgress *progress, QStringList *tops, QStringList *modules,
                     QStringList *messages);

    /// Completes the elaboration, or repeats everything if its result is used up, and reads the
    /// netlist. Null on failure.
    std::unique_ptr<RtlNetlist> buildNetlist(ExtractionProgress *progress, QStringList *messages);

    /// The time of the last findModules() and buildNetlist().
    qint64 spentMilliseconds() const { return m_spent; }

private:
    const DesignSources m_design;
    const ElaboratorFactory m_create;
    std::unique_ptr<Elaborator> m_elaborator; ///< Null when there is no result to use.
    QStringList m_said;                       ///< Messages that were already reported.
    qint64 m_spent = 0;
};

} // namespace NETWEIR::Internal
