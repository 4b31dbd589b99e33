// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "ghdlelaboration.h"

#include "analysisorder.h"
#include "datafiles.h"
#include "ghdlfolder.h"
#include "ghdlreport.h"
#include "vhdldesign.h"

#include <files/regularfile.h>
#include <netweir/internal/ground/messages.h>
#include <netweir/internal/tool/extractionprogress.h>
#include <netweir/internal/vhdl/casegenerates.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

constexpr int MillisecondsPerSecond = 1000;

/// The last lines of a file. GHDL prints errors of the elaborated design behind its tables.
QByteArray lastLines(const QString &path)
{
    constexpr int Most = 64 * 1024;
    QFile file;
    QString error;
    if (Files::openRegularFile(path, &file, &error) != Files::Access::Granted)
        return {};
    file.seek(qMax<qint64>(0, file.size() - Most));
    return file.readAll();
}

QString phaseName()
{
    return Text::tr("Elaborating the design");
}

} // namespace

GhdlElaboration::GhdlElaboration(const QString &program, const VhdlDesign &design,
                                 const GhdlInput &input, GhdlFolder *folder, int timeoutSeconds)
    : m_program(program)
    , m_design(design)
    , m_input(input)
    , m_libraries(design.libraries() + input.libraries)
    , m_timeoutSeconds(timeoutSeconds)
    , m_commands(design.edition(), m_libraries)
    , m_places(m_design, m_input.texts)
    , m_folder(*folder)
    , m_toImport(m_libraries)
{
}

void GhdlElaboration::begin()
{
    if (hasOutdatedFiles())
        m_folder.noted.clear();
    if (!writeLibraryFolders() || !writeFiles())
        return;
    writeDataFiles();
    if (m_input.unit.isEmpty())
        startAnalysis();
    else
        importNext();
}

/// The stubs change with what is known about the other language.
bool GhdlElaboration::hasOutdatedFiles() const
{
    const QHash<QString, QByteArray> &noted = m_folder.noted;
    for (int file = 0; file < m_design.size(); ++file) {
        if (noted.value(copyNameOf(file), textOf(file)) != textOf(file))
            return true;
    }
    return std::any_of(m_input.texts.begin(), m_input.texts.end(),
                       [&noted](const GeneratedText &text) {
                           return noted.value(text.file, text.text) != text.text;
                       });
}

bool GhdlElaboration::writeLibraryFolders()
{
    for (const QString &library : m_libraries) {
        QDir folder(m_folder.files.path(GhdlCommands::folderOf(library)));
        if (!m_folder.noted.isEmpty() && folder.exists())
            continue;
        folder.removeRecursively();
        if (!QDir(m_folder.files.path()).mkdir(folder.dirName())) {
            fail(errorMessage(m_folder.files.problem()));
            return false;
        }
    }
    return true;
}

bool GhdlElaboration::writeFiles()
{
    for (int file = 0; file < m_design.size(); ++file) {
        if (m_folder.noted.contains(copyNameOf(file)))
            continue;
        const QByteArray original = textOf(file);
        const QByteArray text = withoutCaseGenerates(original);
        if (text != original)
            m_folder.rewritten.insert(copyNameOf(file).toLatin1());
        if (!writeFile(copyNameOf(file), text))
            return false;
    }
    return std::all_of(
        m_input.texts.begin(), m_input.texts.end(), [this](const GeneratedText &text) {
            return m_folder.noted.contains(text.file) || writeFile(text.file, text.text);
        });
}

bool GhdlElaboration::writeFile(const QString &name, const QByteArray &text)
{
    QString error;
    if (m_folder.files.write(name, text, &error))
        return true;
    fail(errorMessage(error));
    return false;
}

/// Without a copy, GHDL says that it cannot open the file.
void GhdlElaboration::writeDataFiles()
{
    constexpr qint64 Largest = 64 * 1024 * 1024;
    for (const DataFile &file : dataFiles(m_design)) {
        QByteArray content;
        QString error;
        const bool isFree = !QFileInfo::exists(m_folder.files.path(file.name));
        if (isFree && Files::readRegularFile(file.path, Largest, &content, &error) ==
                          Files::Access::Granted) {
            QDir(m_folder.files.path()).mkpath(QFileInfo(file.name).path());
            m_folder.files.write(file.name, content, &error);
        }
    }
}

QByteArray GhdlElaboration::textOf(int file) const
{
    return m_input.replaced.value(file, m_design.source(file).text);
}

/// The last file comes first, so that the last architecture of an entity counts.
QStringList GhdlElaboration::filesOf(const QString &library) const
{
    QStringList result;
    for (const GeneratedText &text : m_input.texts) {
        if (text.library == library)
            result.append(text.file);
    }
    for (int file = m_design.size() - 1; file >= 0 && !m_isAnalysing; --file) {
        if (m_design.library(file) == library && m_design.hasText(file))
            result.append(copyNameOf(file));
    }
    const auto isNoted = [this](const QString &file) { return m_folder.noted.contains(file); };
    result.erase(std::remove_if(result.begin(), result.end(), isNoted), result.end());
    return result;
}

QString GhdlElaboration::outputPath() const
{
    return m_folder.files.path(QStringLiteral("stdout"));
}

QString GhdlElaboration::wavePath() const
{
    return m_folder.files.path(waveName());
}

void GhdlElaboration::start(Step step, const QStringList &arguments)
{
    m_step = step;
    m_run =
        std::make_unique<GhdlRun>(m_program, arguments, m_folder.files.path(), m_timeoutSeconds);
}

void GhdlElaboration::importNext()
{
    while (!m_toImport.isEmpty()) {
        const QString library = m_toImport.takeFirst();
        const QStringList files = filesOf(library);
        if (!files.isEmpty()) {
            start(Import, m_commands.import(library, files));
            return;
        }
    }
    if (m_isAnalysing)
        analyseNext();
    else
        start(Make, m_commands.make(m_input.library, m_input.unit));
}

void GhdlElaboration::elaborate(ExtractionProgress *progress, int limit)
{
    while (isRunning()) {
        progress->setPhase(Text::tr("Elaborating design"));
        if (m_step == Run)
            m_run->waitForSignals(outputPath(), wavePath(), progress, limit);
        else
            m_run->wait(progress, limit);
        if (isRunning())
            return;
        if (progress->isCancelled())
            fail(cancelError());
        else
            finishRun();
    }
}

void GhdlElaboration::finishRun()
{
    if (m_step == Analyse) {
        m_errors += m_run->errors();
        analyseNext();
    } else if (m_step == Run && m_run->hasWrittenAll() && isHeaderComplete(wavePath())) {
        // GHDL does not notice that its output is cut off.
        const QString problem = m_folder.files.problem();
        m_isElaborated = problem.isEmpty();
        if (m_isElaborated)
            noteFiles();
        else
            fail(errorMessage(problem));
    } else if (m_step == Import && (m_isAnalysing || m_run->succeeded())) {
        importNext();
    } else if (m_step == Run || !m_run->succeeded()) {
        finishFailedRun();
    } else {
        QFile::remove(wavePath()); // An earlier elaboration may have left it.
        start(Run, m_commands.run(m_input.library, m_input.unit, waveName()));
    }
}

void GhdlElaboration::noteFiles()
{
    for (const GeneratedText &text : m_input.texts)
        m_folder.noted.insert(text.file, text.text);
    for (int file = 0; file < m_design.size(); ++file)
        m_folder.noted.insert(copyNameOf(file), textOf(file));
}

void GhdlElaboration::finishFailedRun()
{
    const QString problem = m_folder.files.problem();
    if (!problem.isEmpty()) {
        fail(errorMessage(problem));
        return;
    }
    m_failedErrors = m_step == Run ? m_run->errorsWith(lastLines(outputPath())) : m_run->errors();
    m_failure = m_run->failure(phaseName());
    if (!m_run->failed() || m_failedErrors.isEmpty())
        m_messages += m_input.recursions;
    if (m_run->hitLimit())
        fail(m_failure);
    else if (m_step == Run) // What it needs has been analysed without errors.
        report();
    else
        startAnalysis();
}

/// Reads the sources as they are, in their order, and forgets what was noted before. Generated
/// texts are only noted; GHDL analyses them where they are used.
void GhdlElaboration::startAnalysis()
{
    m_isAnalysing = true;
    m_analysing.start();
    m_folder.noted.clear();
    if (!writeLibraryFolders())
        return;
    m_toAnalyse = analysisOrder(m_design);
    std::reverse(m_toAnalyse.begin(), m_toAnalyse.end());
    m_toImport = m_libraries;
    importNext();
}

void GhdlElaboration::analyseNext()
{
    const bool hasTime = !m_analysing.hasExpired(qint64(m_timeoutSeconds) * MillisecondsPerSecond);
    while (!m_toAnalyse.isEmpty() && hasTime) {
        const int file = m_toAnalyse.takeLast();
        if (!m_design.hasText(file))
            continue;
        if (!writeFile(copyNameOf(file), textOf(file)))
            return;
        start(Analyse, m_commands.analyse(m_design.library(file), copyNameOf(file)));
        return;
    }
    report();
}

void GhdlElaboration::report()
{
    QVector<GhdlMessage> errors = m_errors;
    // In a rewritten text, an error may look different.
    for (const GhdlMessage &error : qAsConst(m_failedErrors)) {
        if (m_errors.isEmpty() || !m_folder.rewritten.contains(error.file))
            errors.append(error);
    }
    m_messages += ghdlReport(m_design, m_places, errors, m_input.suspicions);
    if (!containsError(m_messages) && !m_failure.isEmpty())
        m_messages.append(m_failure);
}

void GhdlElaboration::fail(const QString &error)
{
    m_toAnalyse.clear();
    m_messages.append(error);
}

} // namespace NETWEIR::Internal
