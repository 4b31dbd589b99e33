// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/sources/designsources.h>

#include <support/files.h>
#include <support/testcase.h>

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using namespace NETWEIR::Internal;

class TestDesignSources : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void findsFilesInLibraryFolders();

private:
    QTemporaryDir m_folder;
};

void TestDesignSources::findsFilesInLibraryFolders()
{
    for (const char *name : {"one/a.v", "one/a.sv", "two/a.v", "two/b.sv", "two/c.v", "two/d.v/x",
                             "one/known.v", "escape.v"})
        TarnTest::writeFile(m_folder.filePath(QString::fromLatin1(name)), "\n");
    DesignSources design;
    SourceFile known;
    known.path = m_folder.filePath(QStringLiteral("one/known.v"));
    design.files.append(known);
    const auto find = [&](const QByteArrayList &modules) {
        DesignSources sources = design;
        QStringList found;
        const int count = addFilesOfLibraryFolders(modules, &sources);
        for (const SourceFile &file : sources.files.mid(1)) {
            found.append(QDir(m_folder.path()).relativeFilePath(file.path) +
                         QLatin1String(file.systemVerilog ? " sv" : "") +
                         QLatin1String(file.library ? "" : " no library"));
        }
        return count == found.size() ? found.join(QLatin1Char(' ')) : QStringLiteral("miscounted");
    };
    const QByteArrayList modules = {"b", "a", "known", "d", "../escape", "none", "c", "a"};
    QCOMPARE(find(modules), QString());
    design.libraryFolders = QStringList{m_folder.filePath(QStringLiteral("one")),
                                        m_folder.filePath(QStringLiteral("two"))};
    QCOMPARE(find(modules), QString());
    design.libraryExtensions = QStringList{QStringLiteral(".v"), QStringLiteral(".sv")};
    QCOMPARE(find(modules), QStringLiteral("two/b.sv sv one/a.v two/c.v"));
    design.libraryExtensions = QStringList{QStringLiteral(".sv"), QStringLiteral(".v")};
    QCOMPARE(find({"a", "c"}), QStringLiteral("one/a.sv sv two/c.v"));
    design.libraryFolders = QStringList{m_folder.filePath(QStringLiteral("two"))};
    QCOMPARE(find({"a", "c"}), QStringLiteral("two/a.v two/c.v"));
}

TARN_TEST_MAIN(TestDesignSources)
#include "tst_designsources.moc"
