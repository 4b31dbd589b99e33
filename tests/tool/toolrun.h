// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

#include <csignal>

#include <unistd.h>

namespace TarnTest {

/// The result of a run of the tool.
struct ToolRun
{
    int exitCode = -1; ///< -1: it ended by a signal, or not at all.
    QByteArray output;
    QString errors; ///< All of the standard error.
};

/// What surrounds a run.
struct ToolSurroundings
{
    QString folder;          ///< The current folder; empty: the one of the test.
    QByteArray input;        ///< The standard input.
    QString shellCommand;    ///< Runs before the tool in its shell: "ulimit -f 1".
    QString redirection;     ///< Of the tool: ">/dev/full".
    QStringList environment; ///< "NAME=VALUE".
};

/// A shell command that keeps root from writing everywhere: the tool then has the rights of the
/// owner of root's files. It can read wherever root can without help, where another user may not.
inline QString obeyPermissions()
{
    if (::geteuid() != 0)
        return {};
    return QStringLiteral(
        "exec setpriv --bounding-set -dac_override,-dac_read_search \"$0\" \"$@\"");
}

/// Starts the tool at TARN_TOOL without a display.
inline void startTool(QProcess *process, const QStringList &arguments,
                      const ToolSurroundings &surroundings = {})
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(QLatin1String(variable));
    for (const QString &setting : surroundings.environment)
        environment.insert(setting.section('=', 0, 0), setting.section('=', 1));
    process->setProcessEnvironment(environment);
    if (!surroundings.folder.isEmpty())
        process->setWorkingDirectory(surroundings.folder);
    if (surroundings.shellCommand.isEmpty() && surroundings.redirection.isEmpty()) {
        process->start(QStringLiteral(TARN_TOOL), arguments);
        return;
    }
    const QString script = surroundings.shellCommand + QLatin1String("\nexec \"$0\" \"$@\" ") +
                           surroundings.redirection;
    process->start(QStringLiteral("/bin/sh"),
                   QStringList{QStringLiteral("-c"), script, QStringLiteral(TARN_TOOL)} +
                       arguments);
}

/// Runs the tool to its end.
inline ToolRun runTool(const QStringList &arguments, const ToolSurroundings &surroundings = {})
{
    QProcess process;
    startTool(&process, arguments, surroundings);
    process.write(surroundings.input);
    process.closeWriteChannel();
    ToolRun run;
    if (!process.waitForFinished(60000))
        return run;
    if (process.exitStatus() == QProcess::NormalExit)
        run.exitCode = process.exitCode();
    run.output = process.readAllStandardOutput();
    run.errors = QString::fromLocal8Bit(process.readAllStandardError());
    return run;
}

} // namespace TarnTest
