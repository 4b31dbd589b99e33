// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <support/files.h>

#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace TarnTest {

/// A shell script that runs in place of the elaborator as long as the object lives.
class ToolScript
{
public:
    explicit ToolScript(const QByteArray &script)
        : m_folder(QDir::tempPath() + QStringLiteral("/tool-XXXXXX"))
    {
        const QString path = m_folder.filePath(QStringLiteral("verilator_bin"));
        writeFile(path, "#!/bin/sh\n" + script);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("TARN_VERILATOR", path.toLocal8Bit());
    }
    ~ToolScript() { qunsetenv("TARN_VERILATOR"); }
    ToolScript(const ToolScript &) = delete;
    ToolScript &operator=(const ToolScript &) = delete;

    /// The last line of a script, which runs the real elaborator.
    static QByteArray elaborate()
    {
        const QString program = QStandardPaths::findExecutable(QStringLiteral("verilator_bin"));
        return "exec " + program.toLocal8Bit() + " \"$@\"\n";
    }

private:
    QTemporaryDir m_folder;
};

} // namespace TarnTest
