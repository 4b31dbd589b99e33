// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/sources/designsources.h>

#include <QStringList>

#include <memory>

namespace NETWEIR {
class RtlNetlist;
} // namespace NETWEIR

namespace NETWEIR::Internal {

class Elaborator;
class ExtractionProgress;

/// The way of one design from its sources to its netlist, in two calls that may come again and in
/// any order. Between them the elaborator goes on; its result serves once.
class Extraction
{
public:
    explicit Extraction(const DesignSources &sources);
    ~Extraction();

    /// Checks and reads the sources and fills the lists of modules. If there is one top, its
    /// elaboration starts and is waited for a while, so that most of what is wrong with a design is
    /// known at the end.
    void findModules(ExtractionProgress *progress, QStringList *tops, QStringList *modules,
                     QStringList *messages);

    /// Completes the elaboration, or does all again when its result has been used up, and reads the
    /// netlist. Null on failure.
    std::unique_ptr<RtlNetlist> buildNetlist(ExtractionProgress *progress, QStringList *messages);

    /// Time spent in the last findModules() and buildNetlist().
    qint64 spentMilliseconds() const { return m_spent; }

private:
    const DesignSources m_design;
    std::unique_ptr<Elaborator> m_elaborator; ///< Of findModules(), until buildNetlist() takes it.
    QStringList m_said;                       ///< Its messages that are handed out.
    qint64 m_spent = 0;
};

} // namespace NETWEIR::Internal
