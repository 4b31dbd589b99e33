// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "design.h"

#include "console.h"
#include "invocation.h"

#include <model/designreading.h>
#include <netweir/designextraction.h>
#include <netweir/extractionmonitor.h>
#include <netweir/rtlnetlist.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>

namespace Tool {

namespace {

QString shown(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

bool readProjectFile(const QString &path, Console *console, TE::Project *project)
{
    QString error;
    if (TE::readProject(path, project, &error))
        return true;
    console->error(error);
    return false;
}

bool readArguments(const QStringList &arguments, Console *console, TE::Project *project)
{
    QStringList warnings;
    QString error;
    const bool good =
        TE::projectFromArguments(arguments, QDir::currentPath(), project, &warnings, &error);
    for (const QString &warning : qAsConst(warnings))
        console->warn(warning);
    if (!good)
        console->error(error);
    return good;
}

/// Where project files may be that no argument names: beside the configuration, else here.
QVector<QDir> defaultFolders(const Invocation &invocation)
{
    QVector<QDir> folders;
    if (!invocation.files.isEmpty())
        folders.append(QFileInfo(invocation.files.first()).absoluteDir());
    if (!folders.contains(QDir::current()))
        folders.append(QDir::current());
    return folders;
}

QString severalProjects(const QStringList &projects)
{
    QStringList names;
    for (const QString &path : projects)
        names.append(shown(path));
    return QStringLiteral("there are several project files: %1; name one of them")
        .arg(names.join(QLatin1String(", ")));
}

QString noProject(const QStringList &folders)
{
    return QStringLiteral("there is no project file in %1; name one, or the sources of the design")
        .arg(folders.join(QLatin1String(" or ")));
}

bool findDefaultProject(const Invocation &invocation, Console *console, TE::Project *project)
{
    QStringList looked;
    for (const QDir &folder : defaultFolders(invocation)) {
        QStringList others;
        const QStringList projects = TE::projectFilesIn(folder.path(), &others);
        if (projects.size() == 1)
            return readProjectFile(projects.first(), console, project);
        if (projects.size() > 1) {
            console->error(severalProjects(projects));
            return false;
        }
        QString place = shown(folder.path());
        if (!others.isEmpty())
            place += QStringLiteral(" (not a project: %1)").arg(others.join(QLatin1String(", ")));
        looked.append(place);
    }
    console->error(noProject(looked));
    return false;
}

QStringList filesOf(const TE::Project &project)
{
    QStringList files = project.libraryFiles;
    if (!project.filePath.isEmpty())
        files.append(project.filePath);
    for (const TE::ProjectSource &source : project.sources)
        files.append(source.path);
    return files;
}

/// Shows how far the extraction is.
class Progress final : public NETWEIR::ExtractionMonitor
{
public:
    explicit Progress(Console *console)
        : m_console(console)
    {
        m_timer.start();
    }
    ~Progress() override { m_console->progress()->clear(); }

    void phaseChanged(const QString &phase) override
    {
        m_phase = phase;
        show();
    }
    void ticked(qint64) override { show(); }
    bool isCancelled() const override { return m_console->isInterrupted(); }

private:
    void show()
    {
        QString text = QLatin1String("Reading the design: ") + m_phase;
        const qint64 seconds = m_timer.elapsed() / 1000;
        if (seconds > 0)
            text += QStringLiteral(" (%1 s)").arg(seconds);
        m_console->progress()->show(text);
    }

    Console *m_console;
    QString m_phase;
    QElapsedTimer m_timer;
};

/// Extracts the nets of a project.
class DesignReader
{
public:
    DesignReader(const TE::Project &project, Console *console)
        : m_project(project)
        , m_console(console)
        , m_extraction(TE::designInfoOf(project))
    {
    }

    /// Null after an error message, and on interruption.
    std::unique_ptr<NETWEIR::RtlNetlist> read();

private:
    std::unique_ptr<NETWEIR::RtlNetlist> extract(TARN::DesignFault *fault);
    bool reportMessages();
    QString explained(const TARN::DesignFault &fault) const;

    const TE::Project &m_project;
    Console *m_console;
    NETWEIR::DesignExtraction m_extraction;
    QStringList m_tops; ///< The candidates for the top module.
    QStringList m_messages;
};

std::unique_ptr<NETWEIR::RtlNetlist> DesignReader::read()
{
    TARN::DesignFault fault;
    std::unique_ptr<NETWEIR::RtlNetlist> netlist = extract(&fault);
    if (m_console->isInterrupted())
        return nullptr;
    const bool hasErrors = reportMessages();
    if (!netlist && !hasErrors)
        m_console->error(explained(fault));
    return netlist;
}

std::unique_ptr<NETWEIR::RtlNetlist> DesignReader::extract(TARN::DesignFault *fault)
{
    Progress progress(m_console);
    TARN::ExtractorCalls calls;
    calls.findModules = [this, &progress](QMap<QString, QVariant> &, QStringList &tops,
                                          QStringList &modules, QStringList &messages) {
        m_extraction.findModules(&tops, &modules, &messages, &progress);
        m_tops = tops;
        m_messages = messages;
    };
    calls.buildNetlist = [this, &progress] {
        return m_extraction.buildNetlist(&m_messages, &progress).release();
    };
    return TARN::readDesign(TE::designInfoOf(m_project), calls, fault);
}

/// Shows the messages of the extraction, which begin with their level. True when there is an error.
bool DesignReader::reportMessages()
{
    const QString error = QStringLiteral("ERROR: ");
    const QString warning = QStringLiteral("WARNING: ");
    bool hasErrors = false;
    for (const QString &message : qAsConst(m_messages)) {
        const bool isError = message.startsWith(error);
        hasErrors = hasErrors || isError;
        if (isError)
            m_console->error(message.mid(error.size()));
        else
            m_console->warn(message.startsWith(warning) ? message.mid(warning.size()) : message);
    }
    return hasErrors;
}

/// @p fault with where it is and what helps.
QString DesignReader::explained(const TARN::DesignFault &fault) const
{
    const QString place =
        m_project.filePath.isEmpty() ? QStringLiteral("the design") : shown(m_project.filePath);
    QString text = place + QLatin1String(": ") + fault.text;
    if (m_tops.size() > 1) {
        text += QStringLiteral(" (candidates: %1; choose one with %2)")
                    .arg(m_tops.join(QLatin1String(", ")),
                         m_project.filePath.isEmpty()
                             ? QStringLiteral("--top")
                             : QStringLiteral("the key \"top\" of the project"));
    }
    return text;
}

} // namespace

Design::Design() = default;
Design::~Design() = default;

bool findProject(const Invocation &invocation, Console *console, TE::Project *project)
{
    const DesignArguments &design = invocation.design;
    if (!design.projectFile.isEmpty())
        return readProjectFile(design.projectFile, console, project);
    if (!design.arguments.isEmpty())
        return readArguments(design.arguments, console, project);
    return findDefaultProject(invocation, console, project);
}

bool readDesign(const Invocation &invocation, Console *console, Design *design)
{
    if (!findProject(invocation, console, &design->project) ||
        !console->sparesInputs(filesOf(design->project)))
        return false;
    design->netlist = DesignReader(design->project, console).read();
    return design->netlist != nullptr;
}

} // namespace Tool
