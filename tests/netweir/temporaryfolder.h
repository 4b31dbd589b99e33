// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace TarnTest {

/// The folder for all temporary files of a test program, so that it can see what the extractor
/// leaves there.
class TemporaryFolder
{
public:
    TemporaryFolder() { use(); }

    /// Makes it the folder for temporary files again.
    void use() const { qputenv("TMPDIR", m_folder.path().toLocal8Bit()); }

    QString path() const { return m_folder.path(); }
    QString path(const QString &name) const { return m_folder.filePath(name); }

    /// Ids of the processes that work below the folder.
    QStringList processes() const
    {
        QStringList result;
        const QStringList ids =
            QDir(QStringLiteral("/proc")).entryList({QStringLiteral("[0-9]*")}, QDir::Dirs);
        for (const QString &id : ids) {
            const QString folder = QFile::symLinkTarget(QStringLiteral("/proc/%1/cwd").arg(id));
            if (folder.startsWith(path()))
                result.append(id);
        }
        return result;
    }

    /// Fails the test when a process or a file of the extractor is there. Those of the test begin
    /// with "design-" and "tool-".
    void verifyNothingIsLeft() const
    {
        // What a tool started itself is killed too, but not waited for.
        QTRY_COMPARE_WITH_TIMEOUT(processes(), QStringList(), 1000);
        const QStringList all = QDir(path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
        QCOMPARE(all.filter(QRegularExpression(QStringLiteral("^(?!design-|tool-)"))),
                 QStringList());
    }

private:
    QTemporaryDir m_folder;
};

} // namespace TarnTest
