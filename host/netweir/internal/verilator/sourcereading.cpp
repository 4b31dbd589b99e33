// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "sourcereading.h"

#include "elaboratorrun.h"
#include "preprocessorinput.h"

#include <netweir/internal/ground/messages.h>
#include <netweir/internal/tool/extractionprogress.h>

#include <QTimer>

#include <algorithm>
#include <new>

namespace NETWEIR::Internal {

namespace {

/// How often the output of the preprocessor is read, in milliseconds.
constexpr int OutputInterval = 5;

} // namespace

SourceReading::SourceReading(const DesignSources &sources, bool definesToolMacro)
    : m_sources(sources)
    , m_definesToolMacro(definesToolMacro)
{
}

void SourceReading::read(const QString &program, const ForeignUnits &foreign,
                         ExtractionProgress *progress)
{
    progress->setPhase(Text::tr("Reading sources"));
    m_isFinal = !check(foreign);
    if (m_isFinal)
        return;
    if (!m_definesToolMacro && foreign.isEmpty() && EarlyRun::isPossible(m_sources))
        m_earlyRun = std::make_unique<EarlyRun>(program, m_sources);
    const QString error = preprocess(program, progress);
    if (!error.isEmpty() || containsError(m_messages))
        m_earlyRun.reset();
    if (!error.isEmpty()) {
        m_text.reset();
        m_messages.append(error);
        m_isFinal = true;
        return;
    }
    m_scan = std::make_unique<DesignScan>(m_sources, *m_text);
    if (!containsError(m_messages))
        m_missing = m_scan->missingNames(foreign);
    m_messages += m_scan->packages().warnings() + m_scan->packages().errors();
}

/// False when there is nothing to read. Beside another language that is no reason for a warning.
bool SourceReading::check(const ForeignUnits &foreign)
{
    m_messages = checkSources(m_sources, &m_words);
    if (m_sources.files.isEmpty() && foreign.isEmpty())
        m_messages.append(warningMessage({}, Text::tr("The design has no Verilog source. Add one, "
                                                      "or enable it.")));
    return !m_sources.files.isEmpty() && !containsError(m_messages);
}

/// Returns the error that ended the reading.
QString SourceReading::preprocess(const QString &program, ExtractionProgress *progress)
{
    QString error;
    if (!m_links.make(m_sources, m_folder, &error))
        return errorMessage(error);
    const PreprocessorInput input(m_sources, m_words, m_links, m_definesToolMacro);
    m_messages += input.warnings();
    if (!input.write(m_folder, &error))
        return errorMessage(error);
    ElaboratorRun run(program, input.arguments(), m_folder.path(), m_sources.timeoutSeconds);
    m_text = std::make_unique<PreprocessedText>(m_links.files(), m_links.folders());
    readOutput(&run, progress);
    if (progress->isCancelled())
        return cancelError();
    const QString problem = m_folder.problem();
    if (!problem.isEmpty())
        return errorMessage(problem);
    if (!run.isOutputReadable())
        return errorMessage(Text::tr("The sources are larger than 1 GB."));
    m_text->finish();
    if (m_earlyRun)
        m_earlyRun->offer(*m_text);
    takeMessages(run);
    return {};
}

/// Splits the output while the preprocessor works on it. No exception may reach the event loop.
void SourceReading::readOutput(ElaboratorRun *run, ExtractionProgress *progress)
{
    const auto read = [this, run] {
        for (QByteArray output = run->nextOutput(); !output.isEmpty(); output = run->nextOutput())
            m_text->add(output);
        if (m_earlyRun)
            m_earlyRun->offer(*m_text);
    };
    bool isOutOfMemory = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        try {
            read();
        } catch (const std::bad_alloc &) {
            isOutOfMemory = true;
            timer.stop();
        }
    });
    timer.start(OutputInterval);
    run->wait(progress);
    timer.stop();
    if (isOutOfMemory)
        throw std::bad_alloc();
    if (!progress->isCancelled())
        read();
    run->removeOutput();
}

/// Errors in hidden code are not reported, because other tools do not read that code either.
void SourceReading::takeMessages(const ElaboratorRun &run)
{
    const auto placeOf = [this](const ToolMessage &message) {
        return Place{m_text->path(message.file), message.line, message.column};
    };
    QVector<ToolMessage> visible;
    std::copy_if(run.messages().begin(), run.messages().end(), std::back_inserter(visible),
                 [&](const ToolMessage &message) { return !m_text->hides(placeOf(message)); });
    m_messages += m_text->warnings() + toUserMessages(visible, placeOf);
    m_toolErrors = run.errorCount();
    m_isFinal = run.hitLimit();
    const bool isExplained =
        containsError(m_messages) || (run.failed() && visible.size() < run.messages().size());
    if (!run.succeeded() && !isExplained)
        m_messages.append(run.failure(Text::tr("Reading the sources")));
}

} // namespace NETWEIR::Internal
