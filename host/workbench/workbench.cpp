// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "workbench.h"

#include "commandline.h"
#include "mainwindow.h"
#include "messagelog.h"
#include "session.h"
#include "tarnopener.h"

#include <core/viewmanager.h>
#include <extsys/pluginmanager.h>
#include <te/designmanager.h>
#include <te/taskengine.h>

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QLocale>
#include <QMessageBox>
#include <QScreen>
#include <QTranslator>

#include <csignal>
#include <cstdio>
#include <optional>

namespace Workbench {

namespace {

enum ExitCode {
    Success = 0,
    Failure = 1,
    WrongUsage = 2,
};

class Application
{
    Q_DECLARE_TR_FUNCTIONS(Workbench::Application)

public:
    explicit Application(const CommandLine &commandLine)
        : m_commandLine(commandLine)
    {
    }

    int run();

private:
    int readDesign();
    bool loadPlugins(ExtSys::PluginManager *plugins, QString *error);
    int runSession(MainWindow *window, MessageLog *log, const QString &loadError);
    int runWindow(MainWindow *window, const QString &loadError);
    void readProjectBesideFile();
    QString sessionFile() const;
    bool isSession() const { return !m_commandLine.sessionFolder.isEmpty(); }

    CommandLine m_commandLine;
    std::optional<TE::Project> m_project;
    QStringList m_warnings; ///< About the arguments of the design.
};

void printError(const QString &text)
{
    std::fprintf(stderr, "tarn-workbench: %s\n", qPrintable(text));
}

bool isShown()
{
    const QString platform = QGuiApplication::platformName();
    return platform != QLatin1String("offscreen") && platform != QLatin1String("minimal");
}

int Application::run()
{
    if (const int code = readDesign())
        return code;
    if (!isSession() && !isShown()) {
        printError(tr("There is no display. Use --session to run without one."));
        return Failure;
    }

    MessageLog log;
    ExtSys::PluginManager plugins(
        {{QStringLiteral("TARN.TarnInserterPlugin/1.0"), QStringLiteral("TarnInserterPlugin")}});
    MainWindow window(&log);
    QString error;
    if (loadPlugins(&plugins, &error))
        window.setTarnOpener(openTarnFile);
    MessageLog::warn(m_warnings);
    if (m_project)
        window.showProject(*m_project);

    const int code = isSession() ? runSession(&window, &log, error) : runWindow(&window, error);
    // Delete the closed views while the plug-in that created them is still initialised.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    plugins.shutDown();
    return code;
}

int Application::readDesign()
{
    TE::Project project;
    QString error;
    const QStringList &arguments = m_commandLine.designArguments;
    if (!m_commandLine.projectFile.isEmpty()) {
        if (!TE::readProject(m_commandLine.projectFile, &project, &error)) {
            printError(error);
            return Failure;
        }
        m_project = project;
    } else if (!arguments.isEmpty()) {
        if (!TE::projectFromArguments(arguments, QDir::currentPath(), &project, &m_warnings,
                                      &error)) {
            for (const QString &warning : qAsConst(m_warnings))
                printError(QLatin1String("WARNING: ") + warning);
            printError(error);
            return WrongUsage;
        }
        m_project = project;
    } else {
        readProjectBesideFile();
    }
    return Success;
}

/// The design of a configuration that is opened alone, for example from a file manager: the one
/// project file in its folder.
void Application::readProjectBesideFile()
{
    if (m_commandLine.tarnFiles.isEmpty())
        return;
    const QString folder = QFileInfo(m_commandLine.tarnFiles.first()).absolutePath();
    const QStringList projects = TE::projectFilesIn(folder, nullptr);
    TE::Project project;
    QString error;
    if (projects.size() > 1)
        m_warnings.append(tr("There are several project files in %1. Open the one to use.")
                              .arg(QDir::toNativeSeparators(folder)));
    else if (projects.size() == 1 && TE::readProject(projects.first(), &project, &error))
        m_project = project;
    else if (!error.isEmpty())
        m_warnings.append(error);
}

bool Application::loadPlugins(ExtSys::PluginManager *plugins, QString *error)
{
    const QString own =
        QCoreApplication::applicationDirPath() + QLatin1String("/" TARN_PLUGIN_FOLDER);
    const QString folder =
        QDir::cleanPath(m_commandLine.pluginFolder.isEmpty() ? own : m_commandLine.pluginFolder);
    QStringList errors;
    plugins->loadFolder(folder, &errors);
    plugins->initialize(&errors);
    if (errors.isEmpty() && plugins->plugins().isEmpty())
        errors.append(tr("There is no plug-in in %1.").arg(QDir::toNativeSeparators(folder)));
    *error = errors.join(QLatin1Char('\n'));
    return !plugins->plugins().isEmpty();
}

int Application::runWindow(MainWindow *window, const QString &loadError)
{
    window->resize(window->size().boundedTo(QGuiApplication::primaryScreen()->availableSize()));
    window->show();
    if (!loadError.isEmpty())
        QMessageBox::critical(window, tr("Error"), loadError);
    for (const QString &path : qAsConst(m_commandLine.tarnFiles))
        window->openTarnFile(path);
    return QApplication::exec();
}

int Application::runSession(MainWindow *window, MessageLog *log, const QString &loadError)
{
    if (!loadError.isEmpty()) {
        printError(loadError);
        return Failure;
    }
    const QString tarnFile = sessionFile();
    if (tarnFile.isEmpty()) {
        printError(tr("A session needs a .tarn file, on the command line or in the project."));
        return WrongUsage;
    }
    Session session(window, log, m_commandLine.sessionFolder);
    const bool done = session.run(tarnFile);
    for (const QString &line : session.report())
        std::printf("%s\n", qPrintable(line));
    for (const QString &reason : session.failures())
        printError(reason);
    return done ? Success : Failure;
}

QString Application::sessionFile() const
{
    if (!m_commandLine.tarnFiles.isEmpty())
        return m_commandLine.tarnFiles.first();
    if (m_project) {
        for (const TE::ProjectSource &source : m_project->sources) {
            if (source.type == TE::TarnFile)
                return source.path;
        }
    }
    return {};
}

/// Without a display a session runs off-screen; other runs then end with a message instead of an
/// abort.
void choosePlatform()
{
    for (const char *variable : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) {
        if (!qEnvironmentVariableIsEmpty(variable))
            return;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
}

QStringList toStrings(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    return arguments;
}

QIcon windowIcon()
{
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128})
        icon.addFile(QStringLiteral(":/tarn-workbench/icon-%1.png").arg(size));
    return icon;
}

int refuseUsage(const QString &error)
{
    printError(error);
    std::fputs(qPrintable(Application::tr("See tarn-workbench --help.\n")), stderr);
    return WrongUsage;
}

void installTranslation(QTranslator *translator)
{
    if (translator->load(QLocale(), QStringLiteral("tarninserter"), QStringLiteral("_"),
                         QCoreApplication::applicationDirPath() +
                             QLatin1String("/" TARN_TRANSLATION_FOLDER)))
        QCoreApplication::installTranslator(translator);
}

} // namespace

int run(int argc, char *argv[])
{
    // A write beyond the limit of file sizes fails like any other and does not end the process.
    std::signal(SIGXFSZ, SIG_IGN);
    // Read before QApplication exists, because QApplication needs a display, which --help does not,
    // and takes --session for an option of its own.
    CommandLine options;
    QString error;
    if (!options.parse(toStrings(argc, argv), &error))
        return refuseUsage(error);
    if (options.showHelp || options.showVersion) {
        std::fputs(options.showHelp ? qPrintable(CommandLine::help())
                                    : "tarn-workbench " TARN_VERSION "\n",
                   stdout);
        return Success;
    }
    choosePlatform();
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("tarn-workbench"));
    QApplication::setApplicationVersion(QStringLiteral(TARN_VERSION));
    // Joins the windows with the menu entry and its icon.
    QGuiApplication::setDesktopFileName(QStringLiteral("tarn-workbench"));
    QApplication::setWindowIcon(windowIcon());
    QTranslator translator;
    installTranslation(&translator);

    CommandLine commandLine;
    if (!commandLine.parse(QCoreApplication::arguments().mid(1), &error) ||
        !commandLine.check(&error))
        return refuseUsage(error);
    commandLine.sessionFolder = options.sessionFolder;
    return Application(commandLine).run();
}

} // namespace Workbench
