// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/modules/foreignunits.h>
#include <netweir/internal/verilator/foreignstubs.h>

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR::Internal;

namespace {

std::vector<DeclaredUnit> leaf()
{
    DeclaredUnit unit;
    unit.language = Language::Vhdl;
    unit.library = QStringLiteral("work");
    unit.name = QStringLiteral("Leaf");
    unit.ports = {{QStringLiteral("Clk"), PortDirection::Input},
                  {QStringLiteral("\\q out\\"), PortDirection::Output}};
    unit.generics = QStringList(QStringLiteral("N"));
    return {unit};
}

ForeignStubs stubsOf(const QByteArray &source, const std::vector<DeclaredUnit> &units,
                     QVector<Instantiation> *rest)
{
    ModuleScan scan;
    scanModules(source, 0, true, &scan);
    *rest = scan.units.first().instantiations;
    return ForeignStubs(ForeignUnits(&units), rest);
}

const char Ports[] = "input [8191:0] \\Clk , input [8191:0] \\q_out ";
const char Parameters[] = "parameter \\N = \"netweir: not set\"";

} // namespace

/// The modules in place of foreign units.
class TestForeignStubs : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void haveTheDeclaredInterface_data();
    void haveTheDeclaredInterface();
    void takeTheirInstantiationsAlone();
    void arraysBecomeTwoInstances_data();
    void arraysBecomeTwoInstances();
};

void TestForeignStubs::haveTheDeclaredInterface_data()
{
    QTest::addColumn<QByteArray>("instances");
    QTest::addColumn<QByteArray>("expected"); // Behind the first line.
    const auto module = [](const QByteArray &name, const QByteArray &more = QByteArray(),
                           const QByteArray &moreParameters = QByteArray()) {
        return "module \\" + name + " #(" + Parameters + moreParameters + ") (" + Ports + more +
               ");\nendmodule\n";
    };
    QTest::newRow("none") << QByteArray("other u();") << QByteArray();
    QTest::newRow("declared names") << QByteArray("Leaf #(.N(1)) u(.Clk(c));") << module("Leaf");
    QTest::newRow("positional") << QByteArray("Leaf #(1) u(c, d);") << module("Leaf");
    QTest::newRow("other cases") << QByteArray("leaf u(.CLK(c)), v(.clk(c), .CLK(d));")
                                 << module("leaf",
                                           ", input [8191:0] \\CLK , input [8191:0] \\clk ");
    QTest::newRow("parameter in another case")
        << QByteArray("Leaf #(.n(1)) u();")
        << module("Leaf", QByteArray(), ", parameter \\n = \"netweir: not set\"");
    QTest::newRow("names that it does not have")
        << QByteArray("Leaf #(.x(1)) u(.y(c));") << module("Leaf");
    QTest::newRow("two spellings")
        << QByteArray("Leaf u(); LEAF v(); Leaf w();") << module("Leaf") + module("LEAF");
}

void TestForeignStubs::haveTheDeclaredInterface()
{
    QFETCH(QByteArray, instances);
    QFETCH(QByteArray, expected);
    QVector<Instantiation> rest;
    const std::vector<DeclaredUnit> units = leaf();
    const ForeignStubs stubs = stubsOf("module m; " + instances + " endmodule", units, &rest);
    QCOMPARE(stubs.text(), "`resetall\n" + expected);
    QCOMPARE(stubs.isEmpty(), expected.isEmpty());
}

void TestForeignStubs::takeTheirInstantiationsAlone()
{
    QVector<Instantiation> rest;
    const std::vector<DeclaredUnit> units = leaf();
    const ForeignStubs stubs =
        stubsOf("module m; a u(); LEAF v(); b w(); leaf x(); endmodule", units, &rest);
    QCOMPARE(rest.size(), 2);
    QCOMPARE(rest.at(0).module, QByteArray("a"));
    QCOMPARE(rest.at(1).module, QByteArray("b"));
    QStringList spellings = stubs.units().keys();
    spellings.sort();
    QCOMPARE(spellings, QStringList({QStringLiteral("LEAF"), QStringLiteral("leaf")}));
    QCOMPARE(stubs.units().value(QStringLiteral("leaf")), &units.front());
}

void TestForeignStubs::arraysBecomeTwoInstances_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const char *source, const char *expected) {
        QTest::newRow(name) << QByteArray(source) << QByteArray(expected);
    };
    row("none", "leaf u(c);", "leaf u(c);");
    row("one", "leaf u[3:0](c);", "leaf u     (c), \\u.netweir_range [3:0] ();");
    row("several", "leaf u [N] (c), v(d), w[0:1](c);",
        "leaf u     (c), \\u.netweir_range [N] (), v(d), w     (c), \\w.netweir_range [0:1] ();");
    row("over lines", "leaf u[3:\n0](c\n);", "leaf u   \n  (c\n), \\u.netweir_range [3: 0] ();");
    row("of another module", "other u[3:0](c);", "other u[3:0](c);");
}

void TestForeignStubs::arraysBecomeTwoInstances()
{
    QFETCH(QByteArray, source);
    const QByteArray text = "module m; " + source + " endmodule";
    QVector<Instantiation> rest;
    const std::vector<DeclaredUnit> units = leaf();
    const ForeignStubs stubs = stubsOf(text, units, &rest);
    QByteArray result = stubs.withoutArrays(0, text);
    QCOMPARE(result.size(), text.size());
    const QMap<int, QByteArray> instances = stubs.rangeInstances(0, text);
    for (auto instance = instances.end(); instance != instances.begin();) {
        --instance;
        result.insert(instance.key(), *instance);
    }
    QTEST(result.mid(10).chopped(10), "expected");
    QVERIFY(stubs.rangeInstances(0, QByteArray(text.size(), ' ')).isEmpty());
}

QTEST_GUILESS_MAIN(TestForeignStubs)
#include "tst_foreignstubs.moc"
