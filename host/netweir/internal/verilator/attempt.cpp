// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "attempt.h"

#include "faultreport.h"
#include "piecenames.h"

#include <files/regularfile.h>
#include <netweir/internal/ground/messages.h>
#include <netweir/internal/modules/verilogunits.h>
#include <netweir/internal/parts/designunits.h>
#include <netweir/internal/sources/sourcecheck.h>
#include <netweir/internal/tool/extractionprogress.h>

#include <QFile>

#include <algorithm>
#include <limits>

namespace NETWEIR::Internal {

namespace {

/// The largest number of runs that leave something out.
constexpr int MostOmissions = 20;

/// A crash of the elaborator may leave an incomplete file.
bool isCompleteXml(const QString &path)
{
    constexpr int TailLength = 64;
    QFile file;
    QString error;
    if (Files::openRegularFile(path, &file, &error) != Files::Access::Granted)
        return false;
    file.seek(qMax<qint64>(0, file.size() - TailLength));
    return file.readAll().trimmed().endsWith("</verilator_xml>");
}

QStringList namesOf(const std::vector<PartRoot> &roots)
{
    QStringList result;
    for (const PartRoot &root : roots)
        result.append(root.unit);
    return result;
}

/// What is wrong with the units if there are no others.
QStringList unitErrors(const std::vector<DeclaredUnit> &units, const QString &top)
{
    const DesignUnits design(units);
    const QStringList tops = design.tops(top);
    QStringList result = design.duplicateErrors();
    result.append(design.circleError(tops));
    if (tops.size() == 1) {
        result.append(design.endlessError(tops.first()));
        result.append(design.mutualError(tops.first()));
    }
    result.removeAll(QString());
    return result;
}

QString toolMacroWarning(const QString &reason)
{
    return warningMessage({}, Text::tr("The sources are read with the macro %1 defined, since they "
                                       "cannot be read without it: %2")
                                  .arg(QLatin1String(ToolMacro), reason));
}

} // namespace

Attempt::Attempt(const QString &program, const ForeignUnits &foreign, const QString &reasonForMacro)
    : m_program(program)
    , m_foreign(foreign)
    , m_reasonForMacro(reasonForMacro)
{
}

/// Each level of library files takes one round, because their macros are those of all files before
/// them. The next round repeats the messages of an unfinished round.
void Attempt::read(const DesignSources &design, ExtractionProgress *progress)
{
    DesignSources sources = design;
    if (sources.files.isEmpty()) // All Verilog may be in library folders.
        addFilesOfLibraryFolders(m_foreign.missingModules(ModuleScan()), &sources);
    do {
        m_reading = std::make_unique<SourceReading>(sources, !m_reasonForMacro.isEmpty());
        m_reading->read(m_program, m_foreign, progress);
    } while (addFilesOfLibraryFolders(m_reading->missingNames(), &sources) > 0);

    if (!m_reasonForMacro.isEmpty())
        m_sourceMessages.append(toolMacroWarning(m_reasonForMacro));
    m_sourceMessages += m_reading->messages();
    m_isFinal = m_reading->isFinal();
    if (m_reading->scan()) {
        m_units = verilogUnits(m_reading->scan()->moduleScan(), m_reading->text());
        m_unitErrors = unitErrors(m_units, design.top);
    }
}

void Attempt::begin(const std::vector<PartRoot> &roots)
{
    m_input.reset();
    m_run.reset();
    m_earlyRun.reset();
    std::unique_ptr<EarlyRun> earlyRun = m_reading->takeEarlyRun();
    m_isElaborated = false;
    m_notes += m_outcome;
    m_outcome.clear();
    m_omissions = 0;
    m_hasLearnt = false;
    const DesignScan *scan = m_reading->scan();
    if (!scan || containsError(m_sourceMessages))
        return;
    const ElaborationRoots known(roots, *scan, !m_foreign.isEmpty());
    m_notes += scan->modules().dimensionErrors(namesOf(roots), m_foreign);
    if (known.isEmpty() || containsError(m_notes))
        return;
    m_input = std::make_unique<ElaboratorInput>(m_reading->sources(), m_reading->text(), *scan,
                                                m_foreign, known);
    if (earlyRun && earlyRun->complete(*m_input)) {
        m_run = earlyRun->takeRun();
        m_earlyRun = std::move(earlyRun);
    } else {
        earlyRun.reset();
        startRun();
    }
}

void Attempt::startRun()
{
    m_earlyRun.reset();
    const WorkFolder &folder = m_reading->folder();
    QFile::remove(resultPath());
    m_outcome.clear();
    QString error;
    if (!m_input->write(folder, &error)) {
        end(errorMessage(error));
        return;
    }
    m_run = std::make_unique<ElaboratorRun>(m_program, m_input->arguments(), folder.path(),
                                            m_reading->sources().timeoutSeconds);
}

void Attempt::elaborate(ExtractionProgress *progress, int limit)
{
    while (isRunning()) {
        progress->setPhase(Text::tr("Elaborating design"));
        m_run->wait(progress, limit);
        if (isRunning())
            return;
        if (progress->isCancelled())
            end(cancelError());
        else
            finishRun();
    }
}

/// Takes the result of a run, or runs once more with an input that its messages improve.
void Attempt::finishRun()
{
    const bool hasInput = !m_earlyRun || m_earlyRun->isGood();
    m_isElaborated = hasInput && m_run->succeeded() && isCompleteXml(resultPath());
    if (!hasInput || isToBeRepeated()) {
        startRun();
        return;
    }
    const QString problem = m_isElaborated ? QString() : folder().problem();
    if (!problem.isEmpty()) {
        end(errorMessage(problem));
        return;
    }
    if (!m_run->succeeded() && !m_hasLearnt && m_input->learn(m_run->messages())) {
        m_hasLearnt = true;
        startRun();
        return;
    }
    const FaultReport report(m_reading->sources(), m_reading->text(), *m_reading->scan(),
                             m_input->stubs(), m_input->roots());
    m_outcome = report.userMessages(m_run->messages());
    const bool isExplained = m_run->failed() && containsError(m_outcome);
    if (!m_isElaborated && !isExplained)
        m_outcome.append(m_run->failure(Text::tr("Elaborating the design")));
    m_isFinal = m_run->hitLimit();
}

/// An early run that fails without a reason, such as a full disk, proves nothing.
bool Attempt::isToBeRepeated() const
{
    return m_earlyRun && !m_isElaborated && !m_run->hitLimit() && m_run->errorCount() == 0;
}

bool Attempt::leaveOut()
{
    if (!m_input || m_omissions == MostOmissions)
        return false;
    const ElaborationRoots &roots = m_input->roots();
    if (roots.all().empty() && !roots.areWrapped()) // Texts that the scan does not understand.
        return false;
    const QStringList found = m_input->leaveOut(m_run->messages());
    if (found.isEmpty())
        return false;
    m_notes += found;
    ++m_omissions;
    m_hasLearnt = false;
    startRun();
    return true;
}

void Attempt::end(const QString &error)
{
    m_outcome.append(error);
    m_isFinal = true;
}

QString Attempt::firstError() const
{
    const QStringList all = messages();
    const auto error = std::find_if(all.begin(), all.end(), isError);
    return error == all.end() ? QString() : error->section(QLatin1Char(' '), 1);
}

/// The report has fewer errors than the tool, because many follow from others.
int Attempt::errorCount() const
{
    const QStringList all = messages();
    const int errors = int(std::count_if(all.begin(), all.end(), isError));
    const int toolErrors = m_run ? m_run->errorCount() : m_reading->toolErrors();
    return errors > 0 ? qMax(errors, toolErrors) : std::numeric_limits<int>::max();
}

ReadOptions Attempt::readOptions() const
{
    ReadOptions options = m_input->readOptions();
    options.placeMap = [this](const Place &piece) {
        Place place = m_reading->text().place(textLineOf(piece.file.toUtf8(), piece.line));
        place.column = piece.column;
        return place;
    };
    return options;
}

QString Attempt::resultPath() const
{
    return folder().path(QLatin1String(ElaboratedFile));
}

const WorkFolder &Attempt::folder() const
{
    return m_earlyRun ? m_earlyRun->folder() : m_reading->folder();
}

} // namespace NETWEIR::Internal
