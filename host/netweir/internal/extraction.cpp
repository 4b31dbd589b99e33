// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "extraction.h"

#include "elaboratorinput.h"
#include "extractionprogress.h"
#include "netlistreader.h"
#include "sourcereading.h"
#include "toolfolder.h"
#include "toolmessages.h"
#include "toolprocess.h"

#include "../rtlnetlist.h"

#include <files/regularfile.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>

namespace NETWEIR {
namespace Internal {

namespace {

/// How long findModules() waits for the elaborator: long enough for the errors of all but huge
/// designs, short enough for a call that only promises the modules.
constexpr int ErrorWait = 2000;

/// The first run and one for pins that the scan did not see, or for test benches that wait.
constexpr int MostRuns = 2;

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

QString folderError()
{
    return errorMessage(
        Text::tr("The temporary folder cannot be written. Make room in %1.").arg(QDir::tempPath()));
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
    , m_sources(sources)
{
}

Extraction::~Extraction() = default;

void Extraction::findModules(ExtractionProgress *progress, QStringList *tops, QStringList *modules,
                             QStringList *messages)
{
    const Stopwatch stopwatch(&m_spent);
    QStringList found;
    prepare(progress, &found);
    if (m_state == Elaborating)
        elaborate(progress, ErrorWait, &found);
    if (m_reading) {
        *tops += m_reading->tops();
        *modules += m_reading->modules();
    }
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
        if (m_state == Elaborating)
            elaborate(progress, -1, &found);
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

/// Up to the start of the elaborator.
void Extraction::prepare(ExtractionProgress *progress, QStringList *messages)
{
    progress->setPhase(Text::tr("Reading sources"));
    QString error;
    m_program = findElaborator(&error);
    if (m_program.isEmpty()) {
        messages->append(errorMessage(error));
        return;
    }
    // Each level of a library folder's files takes a round, as their macros are those of all that
    // is read before. What an unfinished round has to say the next one says too.
    m_sources = m_design;
    QStringList found;
    bool read = false;
    do {
        found.clear();
        read = readSources(progress, &found);
    } while (read && addFilesOfLibraryFolders(m_reading->missingModules(), &m_sources) > 0);
    *messages += found;
    if (!read || m_reading->chosenTop().isEmpty())
        return;
    m_input = std::make_unique<ElaboratorInput>(m_sources, *m_reading);
    m_runs = 0;
    runElaborator(messages);
}

/// Up to the scan. False when there is nothing to go on with.
bool Extraction::readSources(ExtractionProgress *progress, QStringList *messages)
{
    *messages += checkSources(m_sources, &m_words);
    if (m_sources.files.isEmpty())
        messages->append(warningMessage({}, Text::tr("The design has no Verilog source. Add one, "
                                                     "or enable it.")));
    if (containsError(*messages) || m_sources.files.isEmpty() || !prepareFolder(messages))
        return false;
    m_reading = std::make_unique<SourceReading>(m_sources, m_words, *m_folder);
    if (!preprocess(progress, messages))
        return false;
    m_reading->scan(messages);
    return !containsError(*messages);
}

bool Extraction::prepareFolder(QStringList *messages)
{
    m_folder = std::make_unique<ToolFolder>();
    if (m_folder->isValid() && m_folder->linkSources(m_sources))
        return true;
    messages->append(errorMessage(Text::tr("No temporary folder can be made: %1. Make room in %2.")
                                      .arg(m_folder->errorString(), QDir::tempPath())));
    return false;
}

bool Extraction::preprocess(ExtractionProgress *progress, QStringList *messages)
{
    if (!m_reading->prepare(messages)) {
        messages->append(folderError());
        return false;
    }
    m_process = std::make_unique<ToolProcess>(m_folder->path());
    m_process->run(m_program, m_reading->preprocessorArguments(), m_sources.timeoutSeconds);
    progress->wait(m_process.get());
    if (progress->isCancelled()) {
        messages->append(errorMessage(Text::tr("Reading the design was cancelled.")));
        return false;
    }
    if (!m_reading->takeTexts(*m_process, messages))
        return false;
    const ToolProcess::Result result = m_process->result();
    const bool excused = m_reading->hasHiddenFaults() && result == ToolProcess::Failed;
    if (result != ToolProcess::Succeeded && !excused && !containsError(*messages))
        messages->append(failureOf(*m_process, Text::tr("Reading the sources")));
    return true;
}

void Extraction::runElaborator(QStringList *messages)
{
    QFile::remove(m_folder->path(QStringLiteral("stdout")));
    QFile::remove(m_folder->path(QLatin1String(ElaboratedFile)));
    if (!m_input->write(*m_folder)) {
        messages->append(folderError());
        m_state = Broken;
        return;
    }
    ++m_runs;
    m_state = Elaborating;
    m_process = std::make_unique<ToolProcess>(m_folder->path());
    m_process->run(m_program, m_input->arguments(), m_sources.timeoutSeconds);
}

/// Waits for the elaborator, at most @p limit milliseconds if that is not negative.
void Extraction::elaborate(ExtractionProgress *progress, int limit, QStringList *messages)
{
    progress->setPhase(Text::tr("Elaborating design"));
    while (m_state == Elaborating && progress->wait(m_process.get(), limit)) {
        if (progress->isCancelled()) {
            messages->append(errorMessage(Text::tr("Reading the design was cancelled.")));
            m_state = Broken;
        } else if (finishElaboration(messages)) {
            m_state = Elaborated;
        } else if (containsError(*messages)) {
            m_state = Broken;
        }
    }
}

/// False when it failed, or runs once more.
bool Extraction::finishElaboration(QStringList *messages)
{
    const bool succeeded = m_process->result() == ToolProcess::Succeeded;
    const QVector<ToolMessage> said = parseToolOutput(m_process->errorOutput());
    if (!succeeded && m_runs < MostRuns && m_input->learn(said)) {
        runElaborator(messages);
        return false;
    }
    QStringList found = m_input->userMessages(said);
    const bool complete = succeeded && isCompleteXml(m_folder->path(QLatin1String(ElaboratedFile)));
    if (!complete && (!containsError(found) || m_process->result() != ToolProcess::Failed))
        found.append(failureOf(*m_process, Text::tr("Elaborating the design")));
    *messages += found;
    return complete;
}

QString Extraction::failureOf(const ToolProcess &process, const QString &phase) const
{
    switch (process.result()) {
    case ToolProcess::TimedOut:
        return errorMessage(Text::tr("%1 took longer than %2 seconds and was ended. Raise the "
                                     "timeout in the project's options.")
                                .arg(phase)
                                .arg(m_sources.timeoutSeconds));
    case ToolProcess::OutOfMemory:
        return errorMessage(Text::tr("%1 needs more than %2 MB of memory and was ended.")
                                .arg(phase)
                                .arg(ToolProcess::memoryLimit() / (1024 * 1024)));
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
    const QString path = m_folder->path(QLatin1String(ElaboratedFile));
    ReadOptions options;
    m_input->describe(&options);
    options.cancelled = &progress->cancelled();
    options.timeoutSeconds = m_sources.timeoutSeconds;
    std::unique_ptr<RtlNetlist> netlist;
    QString error;
    const std::unique_ptr<QThread> thread(
        QThread::create([&] { netlist = readElaboratedXml(path, options, &error); }));
    thread->start();
    progress->wait(thread.get());
    thread->wait();
    if (progress->isCancelled()) {
        messages->append(errorMessage(Text::tr("Reading the design was cancelled.")));
        return nullptr;
    }
    if (!netlist)
        messages->append(
            errorMessage(Text::tr("The elaborated design cannot be read: %1").arg(error)));
    return netlist;
}

bool Extraction::hasOneTop() const
{
    return m_reading && m_reading->tops().size() == 1;
}

/// Ends the tool and removes its folder.
void Extraction::reset()
{
    m_process.reset();
    m_input.reset();
    m_reading.reset();
    m_folder.reset();
    m_state = Idle;
}

} // namespace Internal
} // namespace NETWEIR
