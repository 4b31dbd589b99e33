// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "verilatorelaborator.h"

#include "attempt.h"
#include "elaboratorprogram.h"

#include <netweir/internal/ground/messages.h>
#include <netweir/internal/nets/verilogpart.h>
#include <netweir/internal/sources/sourcecheck.h>
#include <netweir/internal/tool/extractionprogress.h>

namespace NETWEIR::Internal {

VerilatorElaborator::VerilatorElaborator(const DesignSources &design)
    : m_design(design)
{
}

VerilatorElaborator::~VerilatorElaborator() = default;

void VerilatorElaborator::setForeignUnits(const std::vector<DeclaredUnit> *units)
{
    m_foreign = ForeignUnits(units);
}

void VerilatorElaborator::scan(ExtractionProgress *progress)
{
    QString error;
    m_program = findElaborator(&error);
    if (m_program.isEmpty()) {
        m_errors.append(errorMessage(error));
        return;
    }
    readSources(progress);
    if (m_attempt->hasErrors() && tryMacro(progress) && m_attempt->hasErrors())
        takeBetterAttempt();
}

void VerilatorElaborator::readSources(ExtractionProgress *progress, const QString &reasonForMacro)
{
    m_attempt = std::make_unique<Attempt>(m_program, m_foreign, reasonForMacro);
    m_attempt->read(m_design, progress);
}

/// Reads the sources once more after a failed attempt, with the macro of the tool. False when that
/// would not help.
bool VerilatorElaborator::tryMacro(ExtractionProgress *progress)
{
    if (m_hasTriedMacro || m_attempt->isFinal() || !m_attempt->namesTool() ||
        m_design.defines(QLatin1String(ToolMacro)))
        return false;
    m_hasTriedMacro = true;
    m_failed = std::move(m_attempt);
    readSources(progress, m_failed->firstError());
    return true;
}

/// The attempt with fewer errors counts; of equal ones, the first.
void VerilatorElaborator::takeBetterAttempt()
{
    if (m_failed && m_failed->errorCount() <= m_attempt->errorCount())
        m_attempt = std::move(m_failed);
    m_failed.reset();
}

const std::vector<DeclaredUnit> &VerilatorElaborator::units() const
{
    static const std::vector<DeclaredUnit> none;
    return m_attempt ? m_attempt->units() : none;
}

QStringList VerilatorElaborator::sourceMessages() const
{
    return m_attempt ? m_attempt->sourceMessages() : m_errors;
}

void VerilatorElaborator::begin(const std::vector<PartRoot> &roots,
                                ExtractionProgress * /*progress*/)
{
    m_roots = roots;
    if (!m_attempt)
        return;
    m_attempt->begin(roots);
}

void VerilatorElaborator::elaborate(ExtractionProgress *progress, int limit)
{
    if (!m_attempt)
        return;
    do {
        m_attempt->elaborate(progress, limit);
    } while (!isRunning() && !isElaborated() && tryOtherwise(progress));
    if (isElaborated())
        m_failed.reset();
}

/// Continues after a failed attempt. False when there is nothing else to try.
bool VerilatorElaborator::tryOtherwise(ExtractionProgress *progress)
{
    const bool hasFailed = m_attempt->hasErrors() || m_failed;
    if (!hasFailed || m_attempt->isFinal())
        return false;
    if (tryMacro(progress)) {
        m_attempt->begin(m_roots);
        return true;
    }
    takeBetterAttempt();
    return m_attempt->leaveOut();
}

bool VerilatorElaborator::isRunning() const
{
    return m_attempt && m_attempt->isRunning();
}

bool VerilatorElaborator::isElaborated() const
{
    return m_attempt && m_attempt->isElaborated();
}

std::unique_ptr<Part> VerilatorElaborator::read(QString *error)
{
    return VerilogPart::read(m_attempt->resultPath(), m_attempt->roots(), m_attempt->readOptions(),
                             error);
}

QStringList VerilatorElaborator::messages() const
{
    return m_attempt ? m_attempt->elaborationMessages() : QStringList();
}

} // namespace NETWEIR::Internal
