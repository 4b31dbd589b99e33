// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "earlyrun.h"

#include <netweir/internal/modules/designscopes.h>
#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/sources/preprocessedtext.h>

#include <algorithm>

namespace NETWEIR::Internal {

/// Without a top, the modules have to be known first. Library folders have files that only a scan
/// of the texts names.
bool EarlyRun::isPossible(const DesignSources &sources)
{
    return !sources.top.isEmpty() && sources.libraryFolders.isEmpty();
}

EarlyRun::EarlyRun(const QString &program, const DesignSources &sources)
    : m_sources(sources)
    , m_input(guessInput(sources))
    , m_files(m_folder, m_input.files)
{
    if (m_files.isGood())
        m_run = std::make_unique<ElaboratorRun>(program, m_input.arguments, m_folder.path(),
                                                sources.timeoutSeconds);
}

void EarlyRun::offer(const PreprocessedText &text)
{
    while (m_run && m_offered.size() < text.complete()) {
        if (!isInOrder(text, m_offered.size())) {
            m_run.reset();
            return;
        }
        m_offered.append(text.texts()[m_offered.size()]);
        m_files.append(m_offered.last());
    }
}

/// False when a text imports from a package that a later text may declare.
bool EarlyRun::isInOrder(const PreprocessedText &text, int index)
{
    if (!mayUseScopes(m_sources, text, index))
        return true;
    const TextScopes scopes = scanScopes(text.texts()[index], isSystemVerilog(m_sources, index));
    QVector<PackageUse> uses = scopes.uses;
    for (const ScopeBlock &block : scopes.blocks) {
        m_packages.insert(block.package);
        uses += block.uses;
    }
    return std::all_of(uses.begin(), uses.end(), [this](const PackageUse &use) {
        return !use.imported || m_packages.contains(use.package);
    });
}

bool EarlyRun::complete(const ElaboratorInput &input)
{
    const QVector<QByteArray> contents = input.contentsFor(m_input);
    if (contents.isEmpty() || !m_run || !m_run->isRunning() || !m_files.isGood())
        return false;
    const int begun = m_files.hold();
    if (!std::equal(m_offered.begin(), m_offered.begin() + begun, contents.begin()))
        return false;
    if (!m_files.complete(contents.mid(begun)))
        return false;
    m_run->restartTimeout();
    return true;
}

} // namespace NETWEIR::Internal
