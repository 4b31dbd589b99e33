// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "extraction.h"

#include "designmodules.h"
#include "extractionprogress.h"
#include "hiddencode.h"
#include "netlistreader.h"
#include "toolmessages.h"
#include "toolprocess.h"

#include "../rtlnetlist.h"

#include <files/regularfile.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>

#include <algorithm>

namespace NETWEIR {
namespace Internal {

namespace {

/// How long findModules() waits for the elaborator: long enough for the errors of all but huge
/// designs, short enough for a call that only promises the modules.
constexpr int ErrorWait = 2000;

/// The first run and one for pins that the scan did not see, or for test benches that wait.
constexpr int MostRuns = 2;

const char TextPrefix[] = "text";
/// Keeps comments that hide code. See commentFilter().
const char FilterFile[] = "netweir_filter.pl";
const char FilterProgram[] = "perl";

const char StubFile[] = "stubs.sv";

/// Instantiates a top that instantiates itself: the elaborator would drop instances of its top.
const char WrapperFile[] = "wrapper.v";
const char WrapperModule[] = "netweir_top";

/// The tool cuts names at blanks and takes several characters for its own.
bool isPlainName(const QString &name)
{
    for (const QChar c : name) {
        const bool plain = (c >= QLatin1Char('a') && c <= QLatin1Char('z')) ||
                           (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) ||
                           (c >= QLatin1Char('0') && c <= QLatin1Char('9')) ||
                           c == QLatin1Char('_') || c == QLatin1Char('.');
        if (!plain)
            return false;
    }
    return !name.isEmpty();
}

/// Never into what the tool has left under that name, which may be a pipe.
bool writeText(const QString &path, const QByteArray &text)
{
    QFile::remove(path);
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::NewOnly) &&
           file.write(text) == text.size() && file.flush();
}

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

/// Name of the text of file @p index for the elaborator. The suffix selects the language.
QString textName(const SourceFile &file, int index)
{
    return QLatin1String(TextPrefix) + QString::number(index) +
           QLatin1String(file.systemVerilog ? ".sv" : ".v");
}

/// Whether one of @p macros, each "NAME" or "NAME=VALUE", is @p name.
bool definesMacro(const QStringList &macros, const QString &name)
{
    return std::any_of(macros.begin(), macros.end(), [&name](const QString &macro) {
        return macro.section(QLatin1Char('='), 0, 0) == name;
    });
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

QStringList elaboratorArguments(const QString &top, const QString &standard, bool timed)
{
    return {
        QStringLiteral("--xml-only"),
        QStringLiteral("--xml-output"),
        QLatin1String(ElaboratedFile),
        QStringLiteral("-O0"), // The default optimisation deletes nets of the user.
        timed ? QStringLiteral("--timing") : QStringLiteral("--no-timing"),
        QStringLiteral("-Wno-fatal"),
        QStringLiteral("-Wno-lint"),
        QStringLiteral("-Wno-style"),
        QStringLiteral("-Wno-context"),
        QStringLiteral("-Wno-ASSIGNIN"),     // Other tools let modules write to their inputs.
        QStringLiteral("-Wno-MODDUP"),       // A library module that the sources define too.
        QStringLiteral("-Wno-TIMESCALEMOD"), // Stubs have no time scale.
        QStringLiteral("-Wno-STMTDLY"),      // Delays have no bearing on nets.
        QStringLiteral("--bbox-sys"),
        QStringLiteral("--bbox-unsup"),
        QStringLiteral("--error-limit"),
        QStringLiteral("100000"),
        QStringLiteral("--unroll-count"),
        QStringLiteral("100000"),
        QStringLiteral("--Mdir"),
        QStringLiteral("."),
        QStringLiteral("--top-module"),
        top,
        QStringLiteral("--default-language"),
        standard,
        QStringLiteral("+1800-2017ext+sv"),
    };
}

Extraction::Extraction(const DesignSources &sources)
    : m_sources(sources)
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
    *tops += m_tops;
    *modules += m_modules;
    *messages += found;
    if (containsError(found) || m_tops.size() != 1)
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
        if (m_state == Elaborated && m_tops.size() == 1)
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
    m_tops.clear();
    m_modules.clear();
    progress->setPhase(Text::tr("Reading sources"));
    QString error;
    m_program = findElaborator(&error);
    if (m_program.isEmpty())
        messages->append(errorMessage(error));
    else
        *messages += checkSources(m_sources, &m_words);
    if (m_sources.files.isEmpty())
        messages->append(warningMessage({}, Text::tr("The design has no Verilog source. Add one, "
                                                     "or enable it.")));
    if (containsError(*messages) || m_sources.files.isEmpty())
        return;
    if (prepareFolder(messages) && preprocess(progress, messages))
        scan(messages);
}

bool Extraction::prepareFolder(QStringList *messages)
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_files.clear();
    m_folders.clear();
    if (m_folder->isValid() && linkSources())
        return true;
    messages->append(errorMessage(Text::tr("No temporary folder can be made: %1. Make room in %2.")
                                      .arg(m_folder->errorString(), QDir::tempPath())));
    return false;
}

/// Gives every source and include folder a plain name in the private folder. A source keeps its own
/// name within a link to its folder, so that included files are found beside it; one whose own name
/// is not plain has its folder among the include folders instead.
bool Extraction::linkSources()
{
    const QDir root(m_folder->path());
    QHash<QString, QString> links; // By source folder.
    bool ok = true;
    const auto link = [&root, &ok](const QString &target, const QString &name) {
        ok = ok && QFile::link(target, root.filePath(name));
    };
    const auto addFolder = [this, &link](const QString &path) {
        const QString name = QStringLiteral("netweir_i%1").arg(m_folders.size());
        link(path, name);
        m_folders.append({name.toLatin1(), path});
    };
    for (const QString &folder : qAsConst(m_sources.includePaths))
        addFolder(folder);
    for (int i = 0; i < m_sources.files.size(); ++i) {
        const QFileInfo info(m_sources.files[i].path);
        const QString folder = info.absolutePath();
        QString &linked = links[folder];
        if (linked.isEmpty()) {
            linked = QStringLiteral("netweir_s%1").arg(links.size());
            link(folder, linked);
        }
        QString alias = linked + QLatin1Char('/') + info.fileName();
        if (!isPlainName(info.fileName())) {
            alias = QStringLiteral("netweir_f%1").arg(i);
            link(info.absoluteFilePath(), alias);
            addFolder(folder);
        }
        m_files.append({alias.toLatin1(), info.filePath()});
    }
    return ok;
}

QStringList Extraction::preprocessorArguments() const
{
    // The design is read as synthesis reads it, not as a simulation by this tool.
    QStringList arguments = {QStringLiteral("-E"), QStringLiteral("--relative-includes"),
                             QStringLiteral("-Wno-fatal"), QStringLiteral("-UVERILATOR")};
    if (m_words.hidesCode)
        arguments += {QStringLiteral("--pipe-filter"),
                      QLatin1String(FilterProgram) + QLatin1Char(' ') + QLatin1String(FilterFile)};
    if (!definesMacro(m_sources.macros, QStringLiteral("SYNTHESIS")))
        arguments.append(QStringLiteral("-DSYNTHESIS"));
    for (const QString &macro : m_sources.macros)
        arguments.append(QStringLiteral("-D") + macro);
    for (const PathAlias &folder : m_folders)
        arguments.append(QStringLiteral("-I") + QString::fromLatin1(folder.alias));
    for (int i = 0; i < m_files.size(); ++i) {
        if (m_sources.files[i].library)
            arguments.append(QStringLiteral("-v"));
        arguments.append(QString::fromLatin1(m_files[i].alias));
    }
    return arguments;
}

/// Lets the preprocessor keep the comments that hide code, if there may be some.
bool Extraction::filterComments(QStringList *messages)
{
    if (!m_words.hidesCode)
        return true;
    if (QStandardPaths::findExecutable(QLatin1String(FilterProgram)).isEmpty()) {
        messages->append(warningMessage({}, Text::tr("Code that comments hide from synthesis is "
                                                     "read too, because Perl is not installed.")));
        m_words.hidesCode = false;
        return true;
    }
    return writeText(QDir(m_folder->path()).filePath(QLatin1String(FilterFile)), commentFilter());
}

bool Extraction::preprocess(ExtractionProgress *progress, QStringList *messages)
{
    if (!filterComments(messages)) {
        messages->append(folderError());
        return false;
    }
    m_process = std::make_unique<ToolProcess>(m_folder->path());
    m_process->run(m_program, preprocessorArguments(), m_sources.timeoutSeconds);
    progress->wait(m_process.get());
    if (progress->isCancelled()) {
        messages->append(errorMessage(Text::tr("Reading the design was cancelled.")));
        return false;
    }
    const ToolProcess::Result result = m_process->result();
    m_text.reset();
    if (QFileInfo(m_process->standardOutputPath()).size() > ToolProcess::MostOutput) {
        messages->append(errorMessage(Text::tr("The sources are larger than 1 GB.")));
        return false;
    }
    m_text = std::make_unique<PreprocessedText>(m_process->standardOutput(), m_files, m_folders);
    *messages += m_text->warnings();
    const bool excused = addPreprocessorMessages(messages) && result == ToolProcess::Failed;
    if (result != ToolProcess::Succeeded && !excused && !containsError(*messages))
        messages->append(failureOf(*m_process, Text::tr("Reading the sources")));
    return true;
}

/// What is wrong in hidden code is left out. True when there was such.
bool Extraction::addPreprocessorMessages(QStringList *messages) const
{
    const auto placeOf = [this](const ToolMessage &message) {
        return Place{m_text->path(message.file), message.line, message.column};
    };
    QVector<ToolMessage> found = parseToolOutput(m_process->errorOutput());
    const auto visible =
        std::remove_if(found.begin(), found.end(),
                       [&](const ToolMessage &message) { return m_text->hides(placeOf(message)); });
    const bool anyHidden = visible != found.end();
    found.erase(visible, found.end());
    *messages += toUserMessages(found, placeOf);
    return anyHidden;
}

void Extraction::scan(QStringList *messages)
{
    ModuleScan scan;
    for (int i = 0; i < m_files.size(); ++i) {
        const SourceFile &file = m_sources.files[i];
        const int before = scan.units.size();
        scanModules(m_text->texts()[i], i,
                    file.systemVerilog || m_sources.standard.startsWith(QLatin1String("1800")),
                    &scan);
        for (int unit = before; unit < scan.units.size(); ++unit)
            scan.units[unit].library = file.library;
    }
    const DesignModules modules(scan, *m_text);
    m_modules = modules.modules();
    m_tops = modules.tops(m_sources.top);
    *messages += modules.topWarnings(m_sources.top);
    *messages += modules.duplicateErrors();
    const QString circle = modules.circleError(m_tops);
    const QString endless = m_tops.size() == 1 ? modules.endlessError(m_tops.first()) : QString();
    const QString mutual = m_tops.size() == 1 ? modules.mutualError(m_tops.first()) : QString();
    if (!circle.isEmpty())
        messages->append(circle);
    if (!endless.isEmpty())
        messages->append(endless);
    if (endless.isEmpty() && !mutual.isEmpty())
        messages->append(mutual);
    if (m_tops.size() == 1)
        *messages += modules.dimensionErrors(m_tops.first());
    if (containsError(*messages))
        return;
    m_tiedNets = modules.tiedNets();
    m_stubs = std::make_unique<Stubs>(modules.unknownInstantiations(), scan);
    if (m_tops.size() == 1)
        startElaboration(m_tops.first(), modules.instantiatesItself(m_tops.first()), messages);
    else if (!scan.balanced) // Not to be understood: let the elaborator say what is wrong.
        startElaboration(m_modules.value(0, QStringLiteral("top")), false, messages);
}

void Extraction::startElaboration(const QString &top, bool wrap, QStringList *messages)
{
    m_top = top;
    m_wrapsTop = wrap;
    m_runs = 0;
    m_timed = false;
    if (writeElaboratorInput())
        runElaborator();
    else
        messages->append(folderError());
}

bool Extraction::writeElaboratorInput()
{
    const QDir root(m_folder->path());
    QFile::remove(root.filePath(QStringLiteral("stdout")));
    bool ok = true;
    for (int i = 0; i < m_files.size() && ok; ++i)
        ok = writeText(root.filePath(textName(m_sources.files[i], i)),
                       m_stubs->withoutArrays(i, m_text->texts()[i]));
    if (m_wrapsTop && ok) {
        ok = writeText(root.filePath(QLatin1String(WrapperFile)),
                       QByteArray("module ") + WrapperModule + "; \\" + m_top.toUtf8() +
                           " top();\nendmodule\n");
    }
    return ok;
}

void Extraction::runElaborator()
{
    const QDir root(m_folder->path());
    QStringList arguments = elaboratorArguments(
        m_wrapsTop ? QString(QLatin1String(WrapperModule)) : m_top, m_sources.standard, m_timed);
    for (int i = 0; i < m_files.size(); ++i) {
        if (m_sources.files[i].library)
            arguments.append(QStringLiteral("-v"));
        arguments.append(textName(m_sources.files[i], i));
    }
    if (m_wrapsTop)
        arguments.append(QLatin1String(WrapperFile));
    if (!m_stubs->isEmpty() && writeText(root.filePath(QLatin1String(StubFile)), m_stubs->text()))
        arguments.append(QLatin1String(StubFile));

    QFile::remove(root.filePath(QLatin1String(ElaboratedFile)));
    ++m_runs;
    m_state = Elaborating;
    m_process = std::make_unique<ToolProcess>(m_folder->path());
    m_process->run(m_program, arguments, m_sources.timeoutSeconds);
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
    if (!succeeded && runsOnceMore()) {
        runElaborator();
        return false;
    }
    QStringList found = toUserMessages(parseToolOutput(m_process->errorOutput()),
                                       [this](const ToolMessage &message) {
                                           Place place = m_text->place(textLineOf(message));
                                           place.column = message.column;
                                           return place;
                                       });
    const bool complete =
        succeeded && isCompleteXml(QDir(m_folder->path()).filePath(QLatin1String(ElaboratedFile)));
    if (!complete && (!containsError(found) || m_process->result() != ToolProcess::Failed))
        found.append(failureOf(*m_process, Text::tr("Elaborating the design")));
    *messages += unknownPinErrors() + found;
    return complete;
}

/// After a failure that another run can mend.
bool Extraction::runsOnceMore()
{
    if (m_runs == MostRuns)
        return false;
    const bool needsTiming = !m_timed && m_process->errorOutput().contains("%Error-NOTIMING");
    m_timed = m_timed || needsTiming;
    const bool learned = addMissingPins();
    return addTypeParameters() || learned || needsTiming;
}

bool Extraction::addMissingPins()
{
    static const QByteArray pin("Pin not found: '");
    static const QByteArray parameter("Parameter pin not found: '");
    bool added = false;
    const QVector<ToolMessage> messages = parseToolOutput(m_process->errorOutput());
    for (const ToolMessage &message : messages) {
        const bool isParameter = message.text.startsWith(parameter);
        if (!isParameter && !message.text.startsWith(pin))
            continue;
        QByteArray name = message.text.mid(isParameter ? parameter.size() : pin.size());
        name.chop(1);
        added = m_stubs->addMissing(textLineOf(message), name, isParameter) || added;
    }
    return added;
}

/// An unknown module may have types as parameters.
bool Extraction::addTypeParameters()
{
    static const QByteArray beginning("Can't convert defparam value to constant: Param '");
    bool added = false;
    const QVector<ToolMessage> messages = parseToolOutput(m_process->errorOutput());
    for (const ToolMessage &message : messages) {
        if (!message.text.startsWith(beginning))
            continue;
        const int end = message.text.indexOf("' of '", beginning.size());
        const QByteArray name = message.text.mid(beginning.size(), end - beginning.size());
        added = m_stubs->addType(textLineOf(message), name) || added;
    }
    return added;
}

/// The elaborator takes neither an interface nor an unpacked array for the vectors that the pins of
/// stubs are.
QStringList Extraction::unknownPinErrors() const
{
    QStringList result;
    const QVector<ToolMessage> messages = parseToolOutput(m_process->errorOutput());
    for (const ToolMessage &message : messages) {
        if (!message.text.startsWith("Illegal input port connection '") ||
            !m_stubs->isUnknownAt(textLineOf(message)))
            continue;
        Place place = m_text->place(textLineOf(message));
        place.column = message.column;
        result.append(errorMessage(
            place, Text::tr("An interface or an array is connected to a module that no file "
                            "defines. Add the file that defines the module.")));
    }
    return result;
}

/// The elaborator reads the texts under the names that textName() gives them.
TextLine Extraction::textLineOf(const ToolMessage &message) const
{
    const QByteArray prefix(TextPrefix);
    bool isText = message.file.startsWith(prefix);
    const QByteArray number =
        message.file.mid(prefix.size(), message.file.indexOf('.') - prefix.size());
    const int text = isText ? number.toInt(&isText) : -1;
    return isText ? TextLine{text, message.line} : TextLine();
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
    const QString path = QDir(m_folder->path()).filePath(QLatin1String(ElaboratedFile));
    ReadOptions options;
    options.topIsWrapped = m_wrapsTop;
    options.unknownModules = m_stubs->unknownModules();
    options.primitiveModules = m_stubs->primitiveModules();
    options.tiedNets = m_tiedNets;
    options.cancelled = &progress->cancelled();
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

/// Ends the tool and removes its folder.
void Extraction::reset()
{
    m_process.reset();
    m_folder.reset();
    m_text.reset();
    m_stubs.reset();
    m_state = Idle;
}

} // namespace Internal
} // namespace NETWEIR
