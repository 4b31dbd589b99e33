// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "program.h"

#include "command.h"
#include "console.h"
#include "filenamecodec.h"
#include "help.h"
#include "interruption.h"
#include "invocation.h"
#include "printable.h"
#include "standardstreams.h"

#include <QCoreApplication>
#include <QFile>

#include <new>

namespace Tool {

namespace {

/// The libraries tell much on the debug stream. What concerns the user comes as an error too.
void dropDebugLines(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type != QtDebugMsg && type != QtInfoMsg)
        writeToStandardError("tarn: warning: " + printable(text) + '\n');
}

int refuse(Console *console, const QString &error, const QString &command = QString())
{
    console->error(error);
    writeToStandardError("See tarn " +
                         (command.isEmpty() ? QByteArray() : command.toLocal8Bit() + ' ') +
                         "--help.\n");
    return Failure;
}

/// The commands whose names begin with @p group, such as those of "export".
QStringList commandsOf(const QString &group)
{
    QStringList names;
    for (const Command *command : commands()) {
        if (command->name.startsWith(group + QLatin1Char(' ')))
            names.append(command->name);
    }
    return names;
}

/// Whether the arguments are those of "tarn export --help".
bool asksForGroup(const QStringList &arguments)
{
    const QString second = arguments.value(1);
    return (second == QLatin1String("--help") || second == QLatin1String("-h")) &&
           !commandsOf(arguments.first()).isEmpty();
}

int refuseCommand(Console *console, const QString &word)
{
    const QStringList group = commandsOf(word);
    if (!group.isEmpty()) {
        return refuse(console, QStringLiteral("%1 is the beginning of several commands: %2")
                                   .arg(word, group.join(QLatin1String(", "))));
    }
    return refuse(console, QStringLiteral("there is no command \"%1\"").arg(word));
}

int showText(Console *console, const QString &text)
{
    console->write(text.toUtf8());
    return Success;
}

int runCommand(const Command &command, const QStringList &arguments, Console *console)
{
    Invocation invocation;
    QString error;
    if (!parseInvocation(command, arguments, &invocation, &error))
        return refuse(console, error, command.name);
    if (invocation.showHelp)
        return showText(console, commandHelp(command));
    const QString output = invocation.value(QLatin1String(OutputOption));
    if (!output.isEmpty() && !console->setOutputFile(output))
        return Failure;
    const DesignArguments &design = invocation.design;
    if (!console->sparesInputs(invocation.files + design.arguments) ||
        !console->sparesInputs({design.projectFile}))
        return Failure;
    return command.run(invocation, console);
}

int showHelp(const QStringList &words, Console *console)
{
    if (words.isEmpty())
        return showText(console, programHelp());
    if (const Command *command = findCommand(words))
        return showText(console, commandHelp(*command));
    if (words.size() == 1 && !commandsOf(words.first()).isEmpty())
        return showText(console, groupHelp(words.first()));
    return refuseCommand(console, words.first());
}

int runProgram(const QStringList &arguments, Console *console)
{
    const QString first = arguments.value(0);
    if (arguments.isEmpty())
        return refuse(console, QStringLiteral("no command is given"));
    if (first == QLatin1String("--help") || first == QLatin1String("-h"))
        return showText(console, programHelp());
    if (first == QLatin1String("--version"))
        return showText(console, QStringLiteral("tarn " TARN_VERSION "\n"));
    if (first == QLatin1String("help"))
        return showHelp(arguments.mid(1), console);
    if (asksForGroup(arguments))
        return showHelp({first}, console);
    if (first.startsWith(QLatin1Char('-')))
        return refuse(console, QStringLiteral("unknown option %1").arg(first));
    const Command *command = findCommand(arguments);
    if (!command)
        return refuseCommand(console, first);
    const int nameSize = command->name.count(QLatin1Char(' ')) + 1;
    return runCommand(*command, arguments.mid(nameSize), console);
}

/// Runs the program. Without enough memory it ends with an error like any other.
int runWithinMemory(const QStringList &arguments, Console *console)
{
    try {
        return console->finish(runProgram(arguments, console));
    } catch (const std::bad_alloc &) {
        console->error(QStringLiteral("there is not enough memory"));
        return Failure;
    }
}

/// Everything between the start and the end by a signal: here processes and files are cleaned up.
int runApplication(int argc, char *argv[], bool *isClosed)
{
    FileNameCodec::install();
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QFile::decodeName(argv[i]));
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tarn"));
    qInstallMessageHandler(dropDebugLines);
    Console console;
    const int code = runWithinMemory(arguments, &console);
    *isClosed = console.isClosed();
    return code;
}

} // namespace

int run(int argc, char *argv[])
{
    keepStandardStreams();
    Interruption::watch();
    bool isClosed = false;
    const int code = runApplication(argc, argv, &isClosed);
    Interruption::endIfRequested();
    if (isClosed)
        Interruption::endByClosedPipe();
    return code;
}

} // namespace Tool
