// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProcess>
#include <QStandardPaths>
#include <QString>
#include <QStringList>

namespace TarnTest {

constexpr int SimulatorTimeout = 300000; ///< In milliseconds; for builds on a machine under load.

/// What became of a simulator or its model.
struct Run
{
    int exitCode = -1; ///< -1: did not start, did not end by itself, or not in time.
    QString output;    ///< Both streams.
};

/// Runs @p program in @p folder. Objects that Verilator has compiled before are taken from the
/// compiler cache, if there is one.
inline Run run(const QString &program, const QStringList &arguments, const QString &folder)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!QStandardPaths::findExecutable("ccache").isEmpty())
        environment.insert("OBJCACHE", "ccache");
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    Run result;
    if (!process.waitForFinished(SimulatorTimeout)) {
        process.kill();
        process.waitForFinished();
        result.output = program + ": " + process.errorString();
        return result;
    }
    if (process.exitStatus() == QProcess::NormalExit)
        result.exitCode = process.exitCode();
    result.output = QString::fromUtf8(process.readAll());
    return result;
}

/// The last line that begins with PASS or FAIL, empty when there is none.
inline QString verdict(const Run &result)
{
    QString found;
    for (const QString &line : result.output.split('\n')) {
        if (line.startsWith("PASS") || line.startsWith("FAIL"))
            found = line.left(4);
    }
    return found;
}

} // namespace TarnTest
