// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "extraction.h"

#include <files/regularfile.h>
#include <netweir/internal/nets/netlistreader.h>
#include <netweir/internal/tool/extractionprogress.h>
#include <netweir/internal/tool/toolprocess.h>
#include <netweir/internal/verilator/attempt.h>
#include <netweir/rtlnetlist.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>

namespace NETWEIR::Internal {

namespace {

/// How long findModules() waits for the elaborator: long enough for the errors of all but huge
/// designs, short enough for a call that only promises the modules.
constexpr int ErrorWait = 2000;

/// The first run and one for pins that the scan did not see, or for test benches that wait.
constexpr int MostRuns = 2;

/// Runs that leave out what could not be read in the one before.
constexpr int MostOmissions = 20;

/// A crash of the elaborator may leave half a file.
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

QString toolMacroWarning(const QString &reason)
{
    return warningMessage({}, Text::tr("The sources are read with the macro %1 defined, since they "
                                       "cannot be read without it: %2")
                                  .arg(QLatin1String(ToolMacro), reason));
}

QString cancelError()
{
    return errorMessage(Text::tr("Reading the design was cancelled."));
}

/// More of the same would not help.
bool isLimit(ToolProcess::Result result)
{
    return result == ToolProcess::TimedOut || result == ToolProcess::OutOfMemory ||
           result == ToolProcess::FileTooLarge || result == ToolProcess::NotStarted;
}

/// Adds the time until its end to a sum.
class Stopwatch
{
public:
    explicit Stopwatch(qint64 *sum)
        : m_sum(sum)
    {
        m_timer.start();
    }
    ~Stopwatch() { *m_sum += m_timer.elapsed(); }
    Stopwatch(const Stopwatch &) = delete;
    Stopwatch &operator=(const Stopwatch &) = delete;

private:
    qint64 *m_sum;
    QElapsedTimer m_timer;
};

} // namespace

Extraction::Extraction(const DesignSources &sources)
    : m_design(sources)
{
}

Extraction::~Extraction() = default;

void Extraction::findModules(ExtractionProgress *progress, QStringList *tops, QStringList *modules,
                             QStringList *messages)
{
    const Stopwatch stopwatch(&m_spent);
    QStringList found;
    prepare(progress, &found);
    elaborate(progress, ErrorWait);
    if (m_attempt && m_attempt->reading) {
        *tops += m_attempt->reading->tops();
        *modules += m_attempt->reading->modules();
    }
    takeMessages(&found);
    *messages += found;
    if (containsError(found) || !hasOneTop())
        reset();
}

std::unique_ptr<RtlNetlist> Extraction::buildNetlist(ExtractionProgress *progress,
                                                     QStringList *messages)
{
    QStringList found;
    std::unique_ptr<RtlNetlist> netlist;
    {
        const Stopwatch stopwatch(&m_spent);
        if (m_state == Idle) {
            m_spent = 0;
            prepare(progress, &found);
        }
        elaborate(progress, -1);
        takeMessages(&found);
        if (m_state == Elaborated && hasOneTop())
            netlist = readNetlist(progress, &found);
        else if (!containsError(found))
            found.append(errorMessage(Text::tr("The design has no single top module. Set the top "
                                               "module.")));
    }
    *messages += found;
    reset();
    return netlist;
}

/// Up to the start of the elaborator. Adds what does not belong to an attempt to @p messages.
void Extraction::prepare(ExtractionProgress *progress, QStringList *messages)
{
    QString error;
    m_program = findElaborator(&error);
    m_stage = AsSynthesis;
    if (m_program.isEmpty())
        messages->append(errorMessage(error));
    else
        begin(progress, false);
}

/// Reads the sources and starts the elaborator.
void Extraction::begin(ExtractionProgress *progress, bool asTheTool)
{
    progress->setPhase(Text::tr("Reading sources"));
    m_state = Broken;
    // Each level of a library folder's files takes a round, as their macros are those of all that
    // is read before. What an unfinished round has to say the next one says too.
    DesignSources sources = m_design;
    bool isRead = false;
    do {
        m_attempt = std::make_unique<Attempt>(sources, asTheTool);
        if (asTheTool)
            m_attempt->notes.append(toolMacroWarning(m_failed->reason()));
        const bool hasTexts = m_attempt->prepare() && preprocess(progress);
        isRead = hasTexts && !m_attempt->hasErrors();
        if (hasTexts)
            m_attempt->reading->scan(&m_attempt->notes);
    } while (isRead && addFilesOfLibraryFolders(m_attempt->reading->missingNames(), &sources) > 0);

    if (m_attempt->canElaborate()) {
        m_attempt->input =
            std::make_unique<ElaboratorInput>(m_attempt->sources, *m_attempt->reading);
        runElaborator();
    } else if (asTheTool || m_attempt->hasErrors()) {
        tryOtherwise(progress);
    }
}

bool Extraction::preprocess(ExtractionProgress *progress)
{
    QStringList *messages = &m_attempt->notes;
    if (!m_attempt->reading->prepare(messages)) {
        messages->append(m_attempt->folder.writeError());
        return false;
    }
    m_process = std::make_unique<ToolProcess>(m_attempt->folder.path());
    m_process->run(m_program, m_attempt->reading->preprocessorArguments(), m_design.timeoutSeconds);
    progress->wait(m_process.get());
    if (progress->isCancelled()) {
        messages->append(cancelError());
        m_attempt->isFinal = true;
        return false;
    }
    if (hasFolderProblem(messages) || !m_attempt->reading->takeTexts(*m_process, messages))
        return false;
    m_attempt->take(parseToolOutput(m_process->errorOutput()));
    const ToolProcess::Result result = m_process->result();
    const bool excused = m_attempt->reading->hasHiddenFaults() && result == ToolProcess::Failed;
    if (result != ToolProcess::Succeeded && !excused && !containsError(*messages))
        messages->append(failureOf(*m_process, Text::tr("Reading the sources")));
    m_attempt->isFinal = isLimit(result);
    return true;
}

/// True when the folder of the tool is full: what came of that would only hide the cause.
bool Extraction::hasFolderProblem(QStringList *messages)
{
    const QString problem = m_attempt->folder.problem();
    if (problem.isEmpty())
        return false;
    messages->append(errorMessage(problem));
    m_attempt->isFinal = true;
    return true;
}

void Extraction::runElaborator()
{
    QFile::remove(m_attempt->folder.path(QStringLiteral("stdout")));
    QFile::remove(m_attempt->folder.path(QLatin1String(ElaboratedFile)));
    m_attempt->outcome.clear();
    if (!m_attempt->input->write(m_attempt->folder)) {
        m_attempt->outcome.append(m_attempt->folder.writeError());
        m_state = Broken;
        return;
    }
    ++m_attempt->runs;
    m_state = Elaborating;
    m_process = std::make_unique<ToolProcess>(m_attempt->folder.path());
    m_process->run(m_program, m_attempt->input->arguments(), m_design.timeoutSeconds);
}

/// Waits for the elaborator, at most @p limit milliseconds a run if that is not negative.
void Extraction::elaborate(ExtractionProgress *progress, int limit)
{
    while (m_state == Elaborating && m_attempt) {
        progress->setPhase(Text::tr("Elaborating design"));
        if (!progress->wait(m_process.get(), limit))
            return;
        if (progress->isCancelled()) {
            m_attempt->outcome.append(cancelError());
            m_state = Broken;
        } else {
            finishElaboration(progress);
        }
    }
}

/// After a run: takes its result, or runs once more.
void Extraction::finishElaboration(ExtractionProgress *progress)
{
    const ToolProcess::Result result = m_process->result();
    const bool complete = result == ToolProcess::Succeeded &&
                          isCompleteXml(m_attempt->folder.path(QLatin1String(ElaboratedFile)));
    QStringList *outcome = &m_attempt->outcome;
    if (!complete && hasFolderProblem(outcome)) {
        m_state = Broken;
        return;
    }
    m_attempt->take(parseToolOutput(m_process->errorOutput()));
    const QVector<ToolMessage> &said = m_attempt->said;
    if (result != ToolProcess::Succeeded && m_attempt->runs < MostRuns &&
        m_attempt->input->learn(said)) {
        runElaborator();
        return;
    }
    *outcome = m_attempt->input->userMessages(said);
    if (complete) {
        m_state = Elaborated;
        return;
    }
    if (!containsError(*outcome) || result != ToolProcess::Failed)
        outcome->append(failureOf(*m_process, Text::tr("Elaborating the design")));
    m_attempt->isFinal = isLimit(result);
    m_state = Broken;
    tryOtherwise(progress);
}

/// After an attempt that failed.
void Extraction::tryOtherwise(ExtractionProgress *progress)
{
    if (m_attempt->isFinal)
        return;
    if (m_stage == AsSynthesis && m_attempt->words.namesTool &&
        !m_design.defines(QLatin1String(ToolMacro))) {
        m_stage = AsTheTool;
        m_failed = std::move(m_attempt);
        begin(progress, true);
        return;
    }
    if (m_stage == AsTheTool && m_failed->errors() <= m_attempt->errors())
        m_attempt = std::move(m_failed);
    m_failed.reset();
    m_stage = Chosen;
    leaveOut();
}

/// Runs once more without what cannot be read, if that is anything new.
void Extraction::leaveOut()
{
    if (!m_attempt->input || !m_attempt->hasOneTop() || m_attempt->omissions == MostOmissions)
        return;
    const QStringList found = m_attempt->input->leaveOut(m_attempt->said);
    if (found.isEmpty())
        return;
    m_attempt->notes += found;
    ++m_attempt->omissions;
    m_attempt->runs = 0;
    runElaborator();
}

QString Extraction::failureOf(const ToolProcess &process, const QString &phase) const
{
    switch (process.result()) {
    case ToolProcess::TimedOut:
        return errorMessage(Text::tr("%1 took longer than %2 seconds and was ended. Raise the "
                                     "timeout in the project's options.")
                                .arg(phase)
                                .arg(m_design.timeoutSeconds));
    case ToolProcess::OutOfMemory:
        return errorMessage(Text::tr("%1 needs more than %2 MB of memory and was ended.")
                                .arg(phase)
                                .arg(ToolProcess::memoryLimit() / (1024 * 1024)));
    case ToolProcess::FileTooLarge:
        return errorMessage(
            Text::tr("%1 needs a larger file than is allowed (%2 kB) and was ended.")
                .arg(phase)
                .arg(ToolProcess::fileSizeLimit() / 1024));
    case ToolProcess::NotStarted:
        return errorMessage(Text::tr("%1 failed: %2 cannot be started (%3).")
                                .arg(phase, m_program, process.errorString()));
    case ToolProcess::Crashed:
        return errorMessage(Text::tr("%1 failed: the elaborator crashed. Reading fewer files may "
                                     "show which one it cannot read.")
                                .arg(phase));
    case ToolProcess::Failed:
        return errorMessage(Text::tr("%1 failed: the elaborator gave no reason (exit code %2).")
                                .arg(phase)
                                .arg(process.exitCode()));
    case ToolProcess::Succeeded:
        break;
    }
    return errorMessage(Text::tr("%1 failed: its result is not complete.").arg(phase));
}

std::unique_ptr<RtlNetlist> Extraction::readNetlist(ExtractionProgress *progress,
                                                    QStringList *messages)
{
    progress->setPhase(Text::tr("Building netlist"));
    const QString path = m_attempt->folder.path(QLatin1String(ElaboratedFile));
    ReadOptions options;
    m_attempt->input->describe(&options);
    options.cancelled = &progress->cancelled();
    options.timeoutSeconds = m_design.timeoutSeconds;
    std::unique_ptr<RtlNetlist> netlist;
    QString error;
    const std::unique_ptr<QThread> thread(
        QThread::create([&] { netlist = readElaboratedXml(path, options, &error); }));
    thread->start();
    progress->wait(thread.get());
    thread->wait();
    if (progress->isCancelled()) {
        messages->append(cancelError());
        return nullptr;
    }
    if (!netlist)
        messages->append(
            errorMessage(Text::tr("The elaborated design cannot be read: %1").arg(error)));
    return netlist;
}

bool Extraction::hasOneTop() const
{
    return m_attempt && m_attempt->hasOneTop();
}

/// Hands out what the attempt has to say and nobody was told yet.
void Extraction::takeMessages(QStringList *messages)
{
    if (!m_attempt)
        return;
    const QStringList all = m_attempt->notes + m_attempt->outcome;
    for (const QString &message : all) {
        if (!m_said.contains(message))
            messages->append(message);
        m_said.insert(message);
    }
}

/// Ends the tool and removes its folder.
void Extraction::reset()
{
    m_process.reset();
    m_attempt.reset();
    m_failed.reset();
    m_said.clear();
    m_state = Idle;
}

} // namespace NETWEIR::Internal
