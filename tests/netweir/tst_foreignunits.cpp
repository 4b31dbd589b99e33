// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/modules/foreignunits.h>
#include <netweir/internal/verilog/modulescan.h>

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR::Internal;

namespace {

DeclaredUnit entity(const QString &name, const QStringList &uses = {})
{
    DeclaredUnit unit;
    unit.language = Language::Vhdl;
    unit.library = QStringLiteral("work");
    unit.name = name;
    for (const QString &use : uses) {
        unit.uses.emplace_back();
        unit.uses.back().unit = use;
    }
    return unit;
}

} // namespace

/// What Verilog sees of the units of VHDL.
class TestForeignUnits : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void namesMeanEntitiesInAnyCase_data();
    void namesMeanEntitiesInAnyCase();
    void entitiesNeedModules();
    void noUnitsNeedNothing();
};

void TestForeignUnits::namesMeanEntitiesInAnyCase_data()
{
    QTest::addColumn<QByteArray>("module");
    QTest::addColumn<QString>("expected");
    QTest::newRow("same") << QByteArray("Leaf") << "Leaf";
    QTest::newRow("other case") << QByteArray("LEAF") << "Leaf";
    QTest::newRow("extended") << QByteArray("A+b") << "\\A+b\\";
    QTest::newRow("extended in another case") << QByteArray("a+b") << "";
    QTest::newRow("none") << QByteArray("leaf2") << "";
}

void TestForeignUnits::namesMeanEntitiesInAnyCase()
{
    QFETCH(QByteArray, module);
    const std::vector<DeclaredUnit> units{entity(QStringLiteral("Leaf")),
                                          entity(QStringLiteral("\\A+b\\"))};
    const ForeignUnits foreign(&units);
    const DeclaredUnit *found = foreign.find(module);
    QTEST(found ? found->name : QString(), "expected");
}

void TestForeignUnits::entitiesNeedModules()
{
    const std::vector<DeclaredUnit> units{
        entity(QStringLiteral("a"), {QStringLiteral("B"), QStringLiteral("Mod"),
                                     QStringLiteral("Lost"), QStringLiteral("\\Ext\\")}),
        entity(QStringLiteral("b"), {QStringLiteral("Lost"), QStringLiteral("gone")})};
    const ForeignUnits foreign(&units);
    QVERIFY(!foreign.isEmpty());
    ModuleScan scan;
    scanModules("module mod; endmodule module MOD; endmodule module other; endmodule", 0, true,
                &scan);
    QCOMPARE(foreign.missingModules(scan), QByteArrayList({"Lost", "lost", "Ext", "ext", "gone"}));
    QCOMPARE(foreign.usedModules(scan), QByteArrayList({"mod", "MOD"}));
}

void TestForeignUnits::noUnitsNeedNothing()
{
    const ForeignUnits foreign;
    QVERIFY(foreign.isEmpty());
    QVERIFY(!foreign.find("a"));
    QCOMPARE(foreign.missingModules(ModuleScan()), QByteArrayList());
}

QTEST_GUILESS_MAIN(TestForeignUnits)
#include "tst_foreignunits.moc"
