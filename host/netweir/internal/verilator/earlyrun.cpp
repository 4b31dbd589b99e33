// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "earlyrun.h"

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
    : m_input(guessInput(sources))
    , m_files(m_folder, m_input.files)
{
    if (m_files.isGood())
        m_run = std::make_unique<ElaboratorRun>(program, m_input.arguments, m_folder.path(),
                                                sources.timeoutSeconds);
}

void EarlyRun::offer(const PreprocessedText &text)
{
    while (m_offered.size() < text.complete()) {
        m_offered.append(text.texts()[m_offered.size()]);
        m_files.append(m_offered.last());
    }
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
