// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/sources/sourcecheck.h>
#include <netweir/internal/tool/workfolder.h>
#include <netweir/internal/verilator/preprocessorinput.h>
#include <netweir/internal/verilator/sourcelinks.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;

class TestPreprocessorInput : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void definesMacros_data();
    void definesMacros();
    void namesFoldersAndFiles();
    void filtersTextsThatHideCode();
};

void TestPreprocessorInput::definesMacros_data()
{
    QTest::addColumn<QStringList>("macros");
    QTest::addColumn<bool>("definesToolMacro");
    QTest::addColumn<QString>("expected");
    QTest::newRow("as synthesis") << QStringList() << false << "-UVERILATOR -DSYNTHESIS";
    QTest::newRow("as the tool") << QStringList() << true << "-DSYNTHESIS";
    QTest::newRow("of the project")
        << QStringList({"A", "B=1"}) << false << "-UVERILATOR -DSYNTHESIS -DA -DB=1";
    QTest::newRow("SYNTHESIS of the project")
        << QStringList("SYNTHESIS=2") << true << "-DSYNTHESIS=2";
}

void TestPreprocessorInput::definesMacros()
{
    QFETCH(QStringList, macros);
    QFETCH(bool, definesToolMacro);
    QFETCH(QString, expected);
    DesignSources sources;
    sources.macros = macros;
    const SourceLinks links;
    const PreprocessorInput input(sources, {}, links, definesToolMacro);
    QCOMPARE(input.arguments().filter(QRegularExpression("^-[DU]")).join(' '), expected);
    QCOMPARE(input.warnings(), QStringList());
}

void TestPreprocessorInput::namesFoldersAndFiles()
{
    DesignSources sources;
    sources.files.resize(2);
    sources.files[0].path = "/x/a.v";
    sources.files[1].path = "/x/b.v";
    sources.includePaths = QStringList({"/i", "/j"});
    const WorkFolder folder;
    SourceLinks links;
    QString error;
    QVERIFY(links.make(sources, folder, &error));
    const QStringList arguments = PreprocessorInput(sources, {}, links, true).arguments();
    QCOMPARE(arguments.mid(arguments.size() - 4),
             QStringList({"-Inetweir_i0", "-Inetweir_i1", "netweir_s1/a.v", "netweir_s1/b.v"}));
}

void TestPreprocessorInput::filtersTextsThatHideCode()
{
    const DesignSources sources;
    const SourceLinks links;
    SourceWords words;
    words.hidesCode = true;
    const QByteArray path = qgetenv("PATH");
    for (const bool hasPerl : {true, false}) {
        if (!hasPerl)
            qputenv("PATH", "/nowhere");
        const PreprocessorInput input(sources, words, links, false);
        const WorkFolder folder;
        QString error;
        const bool written = input.write(folder, &error);
        qputenv("PATH", path);
        QVERIFY2(written, qPrintable(error));
        QCOMPARE(QFileInfo::exists(folder.path("netweir_filter.pl")), hasPerl);
        QCOMPARE(input.arguments().contains("--pipe-filter"), hasPerl);
        QCOMPARE(input.warnings().isEmpty(), hasPerl);
    }
}

TARN_TEST_MAIN(TestPreprocessorInput)
#include "tst_preprocessorinput.moc"
