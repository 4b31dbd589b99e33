// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "verilatorelaborator.h"

#include "attempt.h"
#include "elaboratorprogram.h"

#include <netweir/internal/ground/messages.h>
#include <netweir/internal/nets/netlistreader.h>
#include <netweir/internal/sources/sourcecheck.h>
#include <netweir/internal/tool/extractionprogress.h>
#include <netweir/rtlnetlist.h>

namespace NETWEIR::Internal {

VerilatorElaborator::VerilatorElaborator(const DesignSources &design)
    : m_design(design)
{
}

VerilatorElaborator::~VerilatorElaborator() = default;

void VerilatorElaborator::elaborate(ExtractionProgress *progress, int limit)
{
    if (!m_attempt) {
        QString error;
        m_program = findElaborator(&error);
        if (m_program.isEmpty()) {
            m_errors.append(errorMessage(error));
            return;
        }
        begin(progress);
    }
    do {
        m_attempt->elaborate(progress, limit);
    } while (!m_attempt->isRunning() && !m_attempt->isElaborated() && tryOtherwise(progress));
}

void VerilatorElaborator::begin(ExtractionProgress *progress, const QString &reasonForMacro)
{
    m_attempt = std::make_unique<Attempt>(m_program, reasonForMacro);
    m_attempt->begin(m_design, progress);
}

/// Continues after a failed attempt. False when there is nothing else to try.
bool VerilatorElaborator::tryOtherwise(ExtractionProgress *progress)
{
    const bool hasFailed = m_attempt->hasErrors() || m_failed;
    if (!hasFailed || m_attempt->isFinal())
        return false;
    if (mayNeedMacro()) {
        m_hasTriedMacro = true;
        m_failed = std::move(m_attempt);
        begin(progress, m_failed->firstError());
        return true;
    }
    if (m_failed && m_failed->errorCount() <= m_attempt->errorCount())
        m_attempt = std::move(m_failed);
    m_failed.reset();
    return m_attempt->leaveOut();
}

bool VerilatorElaborator::mayNeedMacro() const
{
    return !m_hasTriedMacro && m_attempt->namesTool() &&
           !m_design.defines(QLatin1String(ToolMacro));
}

QStringList VerilatorElaborator::tops() const
{
    return m_attempt ? m_attempt->tops() : QStringList();
}

QStringList VerilatorElaborator::modules() const
{
    return m_attempt ? m_attempt->modules() : QStringList();
}

std::unique_ptr<RtlNetlist> VerilatorElaborator::buildNetlist(ExtractionProgress *progress)
{
    if (!m_attempt || !m_attempt->isElaborated() || !m_attempt->hasOneTop())
        return nullptr;
    progress->setPhase(Text::tr("Building netlist"));
    ReadOptions options = m_attempt->readOptions();
    options.cancelled = &progress->cancelled();
    options.timeoutSeconds = m_design.timeoutSeconds;
    std::unique_ptr<RtlNetlist> netlist;
    QString error;
    progress->runInThread(
        [&] { netlist = readElaboratedXml(m_attempt->resultPath(), options, &error); });
    if (progress->isCancelled()) {
        m_errors.append(cancelError());
        return nullptr;
    }
    if (!netlist)
        m_errors.append(
            errorMessage(Text::tr("The elaborated design cannot be read: %1").arg(error)));
    return netlist;
}

QStringList VerilatorElaborator::messages() const
{
    return m_attempt ? m_attempt->messages() + m_errors : m_errors;
}

} // namespace NETWEIR::Internal
