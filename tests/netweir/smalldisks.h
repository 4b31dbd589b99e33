// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "designfixture.h"
#include "temporaryfolder.h"

#include <QVector>

#include <sched.h>
#include <sys/mount.h>

namespace TarnTest {

/// Small disks as the folder for temporary files, which only this process sees.
class SmallDisks
{
public:
    explicit SmallDisks(const TemporaryFolder &folder)
        : m_folder(folder)
        , m_path(folder.path(QStringLiteral("design-disk")))
    {
        QDir().mkpath(m_path);
    }

    /// To be called first; only root may mount disks.
    static bool areAllowed()
    {
        return ::unshare(CLONE_NEWNS) == 0 &&
               ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    }

    /// Extracts @p design on disks of the sizes @p kilobytes. Fails the test when a disk is too
    /// small and the first message does not say so.
    void extract(DesignFixture *design, const QVector<int> &kilobytes)
    {
        const QByteArray path = QFile::encodeName(m_path);
        for (const int size : kilobytes) {
            const QByteArray options = "size=" + QByteArray::number(size) + "k";
            QCOMPARE(::mount("none", path.constData(), "tmpfs", 0, options.constData()), 0);
            qputenv("TMPDIR", path);
            const bool done = design->extract();
            m_folder.use();
            QCOMPARE(::umount(path.constData()), 0);
            ++(done ? m_read : m_full);
            if (done)
                continue;
            const QStringList said = design->messages + design->netMessages;
            QVERIFY2(said.value(0).startsWith(
                         QStringLiteral("ERROR: The temporary folder in %1 cannot be written to: "
                                        "No space left on device. Free some space there")
                             .arg(m_path)),
                     qPrintable(QString::number(size) + said.join('\n')));
        }
    }

    /// On how many disks extract() could read the design, and how many were too small.
    int read() const { return m_read; }
    int full() const { return m_full; }

private:
    const TemporaryFolder &m_folder;
    QString m_path;
    int m_read = 0;
    int m_full = 0;
};

} // namespace TarnTest
