// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "design.h"

#include "console.h"
#include "invocation.h"

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

/// The project files in @p folder by name. Other JSON files are common beside sources.
QStringList projectFilesIn(const QString &folder)
{
    QStringList projects;
    const QFileInfoList files =
        QDir(folder).entryInfoList({QStringLiteral("*.json")}, QDir::Files, QDir::Name);
    for (const QFileInfo &file : files) {
        if (TE::isProjectFile(file.filePath()))
            projects.append(file.filePath());
    }
    return projects;
}

/// Where a project file may be when none is named: beside the configuration, else here.
QStringList foldersOf(const Invocation &invocation)
{
    QStringList folders;
    if (!invocation.files.isEmpty())
        folders.append(QFileInfo(invocation.files.first()).path());
    if (!folders.contains(QStringLiteral(".")))
        folders.append(QStringLiteral("."));
    return folders;
}

bool findDefaultProject(const Invocation &invocation, Console *console, TE::Project *project)
{
    QStringList looked;
    for (const QString &folder : foldersOf(invocation)) {
        const QStringList found = projectFilesIn(folder);
        if (found.size() == 1)
            return readProjectFile(found.first(), console, project);
        if (found.size() > 1) {
            QStringList names;
            for (const QString &path : found)
                names.append(shown(path));
            console->error(QStringLiteral("there are several project files, %1; name one of them")
                               .arg(names.join(QLatin1String(", "))));
            return false;
        }
        looked.append(shown(QFileInfo(folder).absoluteFilePath()));
    }
    console->error(QStringLiteral("there is no project file in %1; name one, or the sources of the "
                                  "design")
                       .arg(looked.join(QLatin1String(" or "))));
    return false;
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
        m_console->progress()->show(QStringLiteral("Reading the design: %1 (%2 s)")
                                        .arg(m_phase)
                                        .arg(m_timer.elapsed() / 1000));
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
        : m_console(console)
        , m_extraction(TE::designInfoOf(project))
    {
    }

    /// Null after an error message, and on interruption.
    std::unique_ptr<NETWEIR::RtlNetlist> read();

private:
    void report(const QStringList &messages);

    Console *m_console;
    NETWEIR::DesignExtraction m_extraction;
};

std::unique_ptr<NETWEIR::RtlNetlist> DesignReader::read()
{
    QStringList tops;
    QStringList modules;
    QStringList messages;
    std::unique_ptr<NETWEIR::RtlNetlist> netlist;
    {
        Progress progress(m_console);
        if (m_extraction.findModules(&tops, &modules, &messages, &progress) && tops.size() == 1)
            netlist = m_extraction.buildNetlist(&messages, &progress);
    }
    if (m_console->isInterrupted())
        return nullptr;
    report(messages);
    if (!netlist)
        m_console->error(QStringLiteral("the design cannot be read"));
    return netlist;
}

/// The messages of an extraction begin with their level.
void DesignReader::report(const QStringList &messages)
{
    const QString error = QStringLiteral("ERROR: ");
    const QString warning = QStringLiteral("WARNING: ");
    for (const QString &message : messages) {
        if (message.startsWith(error))
            m_console->error(message.mid(error.size()));
        else
            m_console->warn(message.startsWith(warning) ? message.mid(warning.size()) : message);
    }
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
    if (!findProject(invocation, console, &design->project))
        return false;
    DesignReader reader(design->project, console);
    design->netlist = reader.read();
    return design->netlist != nullptr;
}

} // namespace Tool
