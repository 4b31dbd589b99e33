// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/ghdl/ghdlcommands.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;

class TestGhdlCommands final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesTheLibrariesOfTheDesign_data();
    void namesTheLibrariesOfTheDesign();
    void relaxesTheRules();
    void printsSignalsAtTheBeginningOfTime();
};

/// The arguments that depend on the library and the files.
void TestGhdlCommands::namesTheLibrariesOfTheDesign_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("expected");

    const GhdlCommands one(QStringLiteral("93"), {QStringLiteral("work")});
    const GhdlCommands two(QStringLiteral("08"), {QStringLiteral("work"), QStringLiteral("video")});
    QTest::newRow("import") << one.import(QStringLiteral("work"),
                                          {QStringLiteral("a.vhd"), QStringLiteral("b.vhd")})
                            << "-i --std=93 --work=work --workdir=lib_work a.vhd b.vhd";
    QTest::newRow("analyse") << two.analyse(QStringLiteral("video"), QStringLiteral("a.vhd"))
                             << "-a --std=08 --work=video --workdir=lib_video -Plib_work a.vhd";
    QTest::newRow("make") << two.make(QStringLiteral("work"), QStringLiteral("top"))
                          << "-m --std=08 --work=work --workdir=lib_work -Plib_video top";
}

void TestGhdlCommands::namesTheLibrariesOfTheDesign()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, expected);
    for (int i = arguments.size() - 1; i >= 0; --i) {
        if (arguments[i].startsWith(QLatin1String("-f")) ||
            arguments[i].startsWith(QLatin1String("--mb")))
            arguments.removeAt(i);
    }
    QCOMPARE(arguments.join(QLatin1Char(' ')), expected);
}

void TestGhdlCommands::relaxesTheRules()
{
    const GhdlCommands commands(QStringLiteral("08"), {QStringLiteral("work")});
    const QStringList arguments = commands.make(QStringLiteral("work"), QStringLiteral("top"));
    for (const char *option : {"-frelaxed", "-fsynopsys", "-fexplicit", "--mb-comments"})
        QVERIFY2(arguments.contains(QLatin1String(option)), option);
}

void TestGhdlCommands::printsSignalsAtTheBeginningOfTime()
{
    const GhdlCommands commands(QStringLiteral("08"), {QStringLiteral("work")});
    const QStringList arguments =
        commands.run(QStringLiteral("work"), QStringLiteral("top"), QStringLiteral("s.ghw"));
    QCOMPARE(arguments.mid(arguments.indexOf(QStringLiteral("top"))).join(QLatin1Char(' ')),
             QStringLiteral("top --stop-time=0ns --asserts=disable --disp-tree=port "
                            "--disp-signals-map --disp-signals-table --wave=s.ghw"));
}

TARN_TEST_MAIN(TestGhdlCommands)
#include "tst_ghdlcommands.moc"
