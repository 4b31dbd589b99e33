// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/tool/workfolder.h>
#include <netweir/internal/verilator/sourcelinks.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;

namespace {

DesignSources sourcesOf(const QStringList &paths, const QStringList &includePaths)
{
    DesignSources result;
    for (const QString &path : paths) {
        SourceFile file;
        file.path = path;
        result.files.append(file);
    }
    result.includePaths = includePaths;
    return result;
}

QString aliasesOf(const QVector<PathAlias> &aliases)
{
    QByteArrayList result;
    for (const PathAlias &alias : aliases)
        result.append(alias.alias);
    return QString::fromLatin1(result.join(' '));
}

} // namespace

class TestSourceLinks : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void givePlainNames_data();
    void givePlainNames();
    void sayWhichCannotBeMade();
};

void TestSourceLinks::givePlainNames_data()
{
    QTest::addColumn<QStringList>("paths");
    QTest::addColumn<QStringList>("includePaths");
    QTest::addColumn<QString>("files");
    QTest::addColumn<QString>("folders");
    const auto row = [](const char *name, const QStringList &paths, const QStringList &includePaths,
                        const char *files, const char *folders) {
        QTest::newRow(name) << paths << includePaths << QString::fromLatin1(files)
                            << QString::fromLatin1(folders);
    };
    row("one", {"/x/a.v"}, {}, "netweir_s1/a.v", "");
    row("same folder", {"/x/a.v", "/x/b.v"}, {}, "netweir_s1/a.v netweir_s1/b.v", "");
    row("several folders", {"/x/a.v", "/y z/a.v", "/x/b.v"}, {},
        "netweir_s1/a.v netweir_s2/a.v netweir_s1/b.v", "");
    row("name with a blank", {"/x/a.v", "/y/a b.v"}, {}, "netweir_s1/a.v netweir_f1", "netweir_i0");
    row("include folders first", {"/y/a+b.v"}, {"/i", "/j k"}, "netweir_f0",
        "netweir_i0 netweir_i1 netweir_i2");
}

void TestSourceLinks::givePlainNames()
{
    QFETCH(QStringList, paths);
    QFETCH(QStringList, includePaths);
    QFETCH(QString, files);
    QFETCH(QString, folders);
    const WorkFolder folder;
    SourceLinks links;
    QString error;
    QVERIFY2(links.make(sourcesOf(paths, includePaths), folder, &error), qPrintable(error));
    QCOMPARE(aliasesOf(links.files()), files);
    QCOMPARE(aliasesOf(links.folders()), folders);
    for (int i = 0; i < paths.size(); ++i)
        QCOMPARE(links.files()[i].path, paths[i]);
    for (const PathAlias &include : links.folders())
        QCOMPARE(QFile::symLinkTarget(folder.path(QString::fromLatin1(include.alias))),
                 include.path);
}

void TestSourceLinks::sayWhichCannotBeMade()
{
    const WorkFolder folder;
    const QString path = '/' + QString(5000, 'x');
    SourceLinks links;
    QString error;
    QVERIFY(!links.make(sourcesOf({"/x/a.v"}, {path}), folder, &error));
    QVERIFY2(error.startsWith("No link to " + path), qPrintable(error));
}

TARN_TEST_MAIN(TestSourceLinks)
#include "tst_sourcelinks.moc"
