// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

namespace TarnTest {

/// The result of a run of the workbench.
struct Run
{
    int exitCode = -1; ///< -1: it crashed or did not end.
    QString output;
    QString errors;   ///< Those of the workbench, without remarks of the toolkit.
    QString warnings; ///< About the design.
};

/// The environment of a run.
struct Surroundings
{
    QString platform = QStringLiteral("offscreen");
    QString shellCommand;    ///< Runs before the workbench in its shell: "ulimit -v 9".
    QString temporaryFolder; ///< Empty: the one of the test.
};

/// Runs the workbench at WORKBENCH without a display.
inline Run runWorkbench(const QStringList &arguments, const Surroundings &surroundings = {})
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("DISPLAY"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), surroundings.platform);
    if (!surroundings.temporaryFolder.isEmpty())
        environment.insert(QStringLiteral("TMPDIR"), surroundings.temporaryFolder);
    process.setProcessEnvironment(environment);
    const QString script = surroundings.shellCommand + QLatin1String("\nexec \"$0\" \"$@\"");
    process.start(QStringLiteral("/bin/sh"),
                  QStringList{QStringLiteral("-c"), script, QStringLiteral(WORKBENCH)} + arguments);
    Run run;
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit)
        return run;
    run.exitCode = process.exitCode();
    run.output = QString::fromLocal8Bit(process.readAllStandardOutput());
    const QStringList lines =
        QString::fromLocal8Bit(process.readAllStandardError()).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (line.startsWith(QLatin1String("tarn-workbench: ")))
            run.errors += line.mid(16) + QLatin1Char('\n');
        else if (line.startsWith(QLatin1String("WARNING: ")))
            run.warnings += line + QLatin1Char('\n');
    }
    return run;
}

} // namespace TarnTest
