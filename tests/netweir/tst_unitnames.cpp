// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "unittext.h"

#include <netweir/internal/parts/unitnames.h>

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR::Internal;

class TestUnitNames : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void namesMeanUnits_data();
    void namesMeanUnits();
    void portsAreFoundAcrossLanguages_data();
    void portsAreFoundAcrossLanguages();
};

void TestUnitNames::namesMeanUnits_data()
{
    QTest::addColumn<QString>("units");
    QTest::addColumn<QString>("name"); // Perhaps with a library in front.
    QTest::addColumn<int>("verilog");  // Line of the unit that it means in Verilog, 0 for none.
    QTest::addColumn<int>("vhdl");     // The same in a VHDL file of the library work.
    const auto row = [](const char *title, const char *units, const char *name, int verilog,
                        int vhdl) {
        QTest::newRow(title) << QString::fromLatin1(units) << QString::fromLatin1(name) << verilog
                             << vhdl;
    };
    row("none", "module a", "b", 0, 0);
    row("module", "module a", "a", 1, 1);
    row("module in another case", "module Ab", "aB", 0, 1);
    row("modules that differ in case", "module AB\nmodule ab", "ab", 2, 2);
    row("first of the modules in another case", "module AB\nmodule aB", "ab", 0, 1);
    row("entity", "work.entity Ab", "ab", 1, 1);
    row("both", "module ab\nwork.entity ab", "ab", 1, 2);
    row("both in another case", "module ab\nwork.entity ab", "AB", 2, 2);
    row("named library", "work.entity a\nx.entity a\nmodule a", "x.a", 3, 2);
    row("named library without it", "work.entity a\nmodule a", "x.a", 2, 2);
    row("own library first", "x.entity a\nwork.entity a", "a", 1, 2);
    row("another library", "x.entity a", "a", 1, 1);
    row("configuration", "work.configuration c", "C", 1, 1);
    row("interface", "interface i", "i", 1, 1);
    row("library file last", "backup module a\nmodule a", "a", 2, 2);
    row("library file", "backup module a", "a", 1, 1);
    row("first of two", "module a\nmodule a", "a", 1, 1);
    row("extended identifier of a module", "module aB", "\\aB\\", 0, 1);
    row("extended identifier is exact", "module ab", "\\aB\\", 0, 0);
    row("extended entity", "work.entity \\aB\\", "\\aB\\", 1, 1);
    row("extended entity by its bare name", "work.entity \\aB\\", "aB", 1, 0);
    row("bind", "outside a", "", 0, 0);
}

void TestUnitNames::namesMeanUnits()
{
    QFETCH(QString, units);
    QFETCH(QString, name);
    const std::vector<DeclaredUnit> declared = TarnTest::unitsOf(units);
    const UnitNames names(declared);
    UnitUse use;
    use.unit = name.section(QLatin1Char('.'), -1);
    use.library = name.section(QLatin1Char('.'), 0, -2);
    QTEST(names.find(use, Language::Verilog) + 1, "verilog");
    QTEST(names.find(use, Language::Vhdl, QStringLiteral("work")) + 1, "vhdl");
}

void TestUnitNames::portsAreFoundAcrossLanguages_data()
{
    QTest::addColumn<QStringList>("declared");
    QTest::addColumn<QString>("written");
    QTest::addColumn<int>("found");
    QTest::newRow("none") << QStringList{"a"} << "b" << -1;
    QTest::newRow("same") << QStringList{"b", "a"} << "a" << 1;
    QTest::newRow("other case") << QStringList{"b", "CLK"} << "clk" << 1;
    QTest::newRow("same before other case") << QStringList{"CLK", "clk"} << "clk" << 1;
    QTest::newRow("first in other case") << QStringList{"CLK", "Clk"} << "clk" << 0;
    QTest::newRow("extended on one side") << QStringList{"a", "In"} << "\\In\\" << 1;
    QTest::newRow("extended on the other side") << QStringList{"a", "\\In\\"} << "In" << 1;
}

void TestUnitNames::portsAreFoundAcrossLanguages()
{
    QFETCH(QStringList, declared);
    QFETCH(QString, written);
    QTEST(NamesAcross(declared).find(written), "found");
}

QTEST_GUILESS_MAIN(TestUnitNames)
#include "tst_unitnames.moc"
