// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <support/files.h>

#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace TarnTest {

/// A shell script that runs in place of an elaborator as long as the object lives.
class ToolScript
{
public:
    /// @p variable is the environment variable that names the elaborator.
    explicit ToolScript(const QByteArray &script, const char *variable = "TARN_VERILATOR")
        : m_variable(variable)
        , m_folder(QDir::tempPath() + QStringLiteral("/tool-XXXXXX"))
    {
        const QString path = m_folder.filePath(QStringLiteral("tool"));
        writeFile(path, "#!/bin/sh\n" + script);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv(m_variable, path.toLocal8Bit());
    }
    ~ToolScript() { qunsetenv(m_variable); }
    ToolScript(const ToolScript &) = delete;
    ToolScript &operator=(const ToolScript &) = delete;

    /// The last line of a script, which runs the real elaborator.
    static QByteArray elaborate() { return run(QStringLiteral("verilator_bin")); }
    static QByteArray elaborateVhdl() { return run(QStringLiteral("ghdl")); }

private:
    static QByteArray run(const QString &name)
    {
        const QString program = QStandardPaths::findExecutable(name);
        return "exec " + program.toLocal8Bit() + " \"$@\"\n";
    }

    const char *m_variable;
    QTemporaryDir m_folder;
};

} // namespace TarnTest
