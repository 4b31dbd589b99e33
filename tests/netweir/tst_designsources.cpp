// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/sources/designsources.h>

#include <support/files.h>
#include <support/testcase.h>
#include <te/designinfo.h>
#include <te/fileinfo.h>

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace NETWEIR::Internal;

class TestDesignSources : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void readsLibrariesAndStandardOfVhdl_data();
    void readsLibrariesAndStandardOfVhdl();
    void findsFilesInLibraryFolders();
    void separatesLanguages();

private:
    QTemporaryDir m_folder;
};

void TestDesignSources::readsLibrariesAndStandardOfVhdl_data()
{
    QTest::addColumn<QVariantMap>("file");
    QTest::addColumn<QString>("standard");
    QTest::addColumn<QString>("expected");

    const auto file = [](const char *path, int type, const char *library) {
        QVariantMap entry{{QLatin1String(TE::DesignInfo::Path), QString::fromLatin1(path)},
                          {QLatin1String(TE::DesignInfo::Type), type}};
        if (library)
            entry.insert(QLatin1String(TE::DesignInfo::Library), QString::fromLatin1(library));
        return entry;
    };
    QTest::newRow("nothing said") << file("/a.vhd", TE::VhdlFile, nullptr) << QString()
                                  << "/a.vhd vhdl in work, 08";
    QTest::newRow("empty library") << file("/a.vhd", TE::VhdlFile, "") << "1076-2008"
                                   << "/a.vhd vhdl in work, 08";
    QTest::newRow("library and standard")
        << file("/a.vhd", TE::VhdlFile, "DSP_Cells") << "1076-1993"
        << "/a.vhd vhdl in dsp_cells, 93";
    QTest::newRow("unknown standard") << file("/a.vhd", TE::VhdlFile, "b") << "1076-1987"
                                      << "/a.vhd vhdl in b, 08";
    QTest::newRow("by type, not by name") << file("/a.txt", TE::VhdlFile, "b") << "1076-2008"
                                          << "/a.txt vhdl in b, 08";
    QTest::newRow("Verilog") << file("/a.v", TE::VerilogFile, nullptr) << "1076-2008"
                             << "/a.v in work, 08";
}

void TestDesignSources::readsLibrariesAndStandardOfVhdl()
{
    QFETCH(QVariantMap, file);
    QFETCH(QString, standard);
    QFETCH(QString, expected);

    QMap<QString, QVariant> info{{QLatin1String(TE::DesignInfo::Files), QVariantList{file}}};
    if (!standard.isNull())
        info.insert(QLatin1String(TE::DesignInfo::VhdlStandard), standard);
    const DesignSources sources = readDesignSources(info);
    QCOMPARE(sources.files.size(), 1);
    const SourceFile &read = sources.files.first();
    QCOMPARE(QStringLiteral("%1%2 in %3, %4")
                 .arg(read.path, QLatin1String(read.vhdl ? " vhdl" : ""), read.vhdlLibrary,
                      sources.vhdlStandard),
             expected);
}

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

void TestDesignSources::separatesLanguages()
{
    DesignSources sources;
    for (const bool vhdl : {false, true, false}) {
        SourceFile file;
        file.path = QString::number(sources.files.size());
        file.vhdl = vhdl;
        sources.files.append(file);
    }
    sources.top = QStringLiteral("t");
    sources.includePaths = QStringList{"i"};
    sources.libraryFolders = QStringList{"l"};
    const DesignSources verilog = sources.inLanguage(false);
    QCOMPARE(verilog.files.size(), 2);
    QCOMPARE(verilog.files[1].path, QStringLiteral("2"));
    QCOMPARE(verilog.includePaths, sources.includePaths);
    QCOMPARE(verilog.libraryFolders, sources.libraryFolders);
    const DesignSources vhdl = sources.inLanguage(true);
    QCOMPARE(vhdl.files.size(), 1);
    QCOMPARE(vhdl.files[0].path, QStringLiteral("1"));
    QCOMPARE(vhdl.top, sources.top);
    // So that missing folders are reported once.
    QVERIFY(vhdl.includePaths.isEmpty() && vhdl.libraryFolders.isEmpty());
}

TARN_TEST_MAIN(TestDesignSources)
#include "tst_designsources.moc"
