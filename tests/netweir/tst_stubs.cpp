// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/modules/designmodules.h>
#include <netweir/internal/modules/stubs.h>
#include <netweir/internal/sources/preprocessedtext.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;

namespace {

Stubs stubsOf(const QByteArray &source)
{
    ModuleScan scan;
    scanModules(source, 0, true, &scan);
    const PreprocessedText text({}, {}, {});
    return Stubs(DesignModules(scan, text).unknownInstantiations(), scan);
}

} // namespace

class TestStubs : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void standInForUnknownModules_data();
    void standInForUnknownModules();
    void usePrimitivesOfTheDevice();
    void learnMissingPins();
    void learnTypes();
    void singleInstancesStandInForArrays_data();
    void singleInstancesStandInForArrays();
};

void TestStubs::standInForUnknownModules_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QByteArray>("expected"); // Behind the first line.
    const auto row = [](const char *name, const char *source, const char *expected) {
        QTest::newRow(name) << QByteArray(source) << QByteArray(expected);
    };
    row("named", "module m; s u(.a(x), .b(y)); endmodule",
        "module \\s (input [8191:0] \\a , input [8191:0] \\b );\nendmodule\n");
    row("positional", "module m; s u(x, y); endmodule",
        "module \\s (input [8191:0] \\pin_1 , input [8191:0] \\pin_2 );\nendmodule\n");
    row("array", "module m; s u[3:0](.a(x)); s v(.b(y)); endmodule",
        "module \\s (input [8191:0] \\a , input [8191:0] \\b );\nendmodule\n");
    row("no pins", "module m; s u(); endmodule", "module \\s ();\nendmodule\n");
    row("parameters", "module m; s #(.P(\"x\"), .Q(1)) u(); t #(1, 2) v(); endmodule",
        "module \\s #(parameter \\P = 0, parameter \\Q = 0) ();\nendmodule\n"
        "module \\t #(parameter \\parameter_1 = 0, parameter \\parameter_2 = 0) ();\nendmodule\n");
    row("all uses together",
        "module m; s #(.P(1)) u(.a(x)), v(.b(y)); s #(.Q(1)) w(.a(x), .c(z)); s k(x, y, z, t);"
        " endmodule",
        "module \\s #(parameter \\P = 0, parameter \\Q = 0) "
        "(input [8191:0] \\a , input [8191:0] \\b , input [8191:0] \\c , input [8191:0] \\pin_4 "
        ");\nendmodule\n");
    row("defparam", "module m; s u(.a(x)); defparam u.Q = 1, u.P = 2; endmodule",
        "module \\s #(parameter \\Q = 0, parameter \\P = 0) (input [8191:0] \\a );\nendmodule\n");
    row("defparam from above",
        "module m; n v(); defparam v.u.P = 1; endmodule"
        " module n; s u(); endmodule",
        "module \\s #(parameter \\P = 0) ();\nendmodule\n");
    row("bound", "module m; endmodule bind m s u(.a(x));",
        "module \\s (input [8191:0] \\a );\nendmodule\n");
    row("order of first use", "module m; z u(); a v(); z w(); endmodule",
        "module \\z ();\nendmodule\nmodule \\a ();\nendmodule\n");
    row("known ones are left alone",
        "module m; n u(); i v(); p w(); s x(); endmodule module n; endmodule interface i; "
        "endinterface primitive p(o, i); endprimitive",
        "module \\s ();\nendmodule\n");
    row("declarations are no instances", "module m; t x; t y, z; endmodule", "");
    row("own module of a primitive's name",
        "module m; KX_PLL u(.X(a)); endmodule module KX_PLL(input X); endmodule", "");
}

void TestStubs::standInForUnknownModules()
{
    QFETCH(QByteArray, source);
    QFETCH(QByteArray, expected);
    const Stubs stubs = stubsOf(source);
    QCOMPARE(stubs.text(), "`resetall\n" + expected);
    QCOMPARE(stubs.isEmpty(), expected.isEmpty());
    QVERIFY(stubs.primitiveModules().isEmpty());
    QCOMPARE(stubs.unknownModules().size(), expected.count("endmodule"));
}

void TestStubs::usePrimitivesOfTheDevice()
{
    const Stubs stubs = stubsOf("module m; KX_PLL u(.CLKIN(c)); s v(); KX_BUFG w(a, b); endmodule");
    QCOMPARE(stubs.primitiveModules(),
             QSet<QString>({QStringLiteral("KX_PLL"), QStringLiteral("KX_BUFG")}));
    QCOMPARE(stubs.unknownModules(), QSet<QString>({QStringLiteral("s")}));
    QVERIFY(stubs.text().contains("output CLKOUT0"));
    QVERIFY(stubs.text().contains("module KX_BUFG("));
    QVERIFY(!stubs.text().contains("KX_JTAG"));
    QVERIFY(!stubs.isEmpty());
}

void TestStubs::learnMissingPins()
{
    Stubs stubs = stubsOf("module m;\ns u(\n.a(x));\nt v();\nendmodule");
    QVERIFY(stubs.addMissing({0, 3}, "b", false));
    QVERIFY(!stubs.addMissing({0, 2}, "a", false)); // It has this pin.
    QVERIFY(stubs.addMissing({0, 4}, "P", true));
    QVERIFY(!stubs.addMissing({0, 1}, "c", false)); // No instance there.
    QVERIFY(!stubs.addMissing({1, 2}, "c", false)); // Nor in that file.
    QCOMPARE(
        stubs.text(),
        QByteArray("`resetall\nmodule \\s (input [8191:0] \\a , input [8191:0] \\b );\nendmodule\n"
                   "module \\t #(parameter \\P = 0) ();\nendmodule\n"));
}

void TestStubs::learnTypes()
{
    Stubs stubs = stubsOf("module m;\ns #(.P(1), .T(logic)) u();\nt #(1, byte) v();\nendmodule");
    QVERIFY(stubs.addType({0, 2}, "T"));
    QVERIFY(!stubs.addType({0, 2}, "T")); // It is one.
    QVERIFY(stubs.addType({0, 3}, "__paramNumber2"));
    QVERIFY(!stubs.addType({0, 1}, "P")); // No instance there.
    QVERIFY(!stubs.isUnknownAt({0, 1}));
    QVERIFY(stubs.isUnknownAt({0, 3}));
    QVERIFY(!stubs.isUnknownAt({1, 3}));
    QCOMPARE(stubs.text(),
             QByteArray("`resetall\n"
                        "module \\s #(parameter \\P = 0, parameter type \\T = logic) ();\n"
                        "endmodule\nmodule \\t #(parameter \\parameter_1 = 0, "
                        "parameter type \\parameter_2 = logic) ();\nendmodule\n"));
}

void TestStubs::singleInstancesStandInForArrays_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const char *source, const char *expected) {
        QTest::newRow(name) << QByteArray(source) << QByteArray(expected);
    };
    row("array", "module m; s u[3:0](.a(x[1:0])); endmodule",
        "module m; s u     (.a(x[1:0])); endmodule");
    row("several", "module m; s u [1:0] (x), v(y[0]), w[N-1:f(2, v[1])](z); endmodule",
        "module m; s u       (x), v(y[0]), w                (z); endmodule");
    row("two dimensions", "module m; s u[1:0] [3] (x); endmodule",
        "module m; s u          (x); endmodule");
    row("lines and comments stay counted", "module m; s u[3 // ]\n:\n0]\n(x);\nendmodule",
        "module m; s u       \n \n  \n(x);\nendmodule");
    row("escaped name", "module m; s \\u[1] [3:0](x); endmodule",
        "module m; s \\u[1]      (x); endmodule");
    row("in a generate block", "module m; if (P) begin s u[3:0](x); end endmodule",
        "module m; if (P) begin s u     (x); end endmodule");
    row("bound", "module m; endmodule bind m s u[3:0](x);",
        "module m; endmodule bind m s u     (x);");
    const char *const known = "module m; n u[3:0](x); KX_PLL v[1:0](y); t w[3:0]; endmodule "
                              "module n(input x); endmodule";
    row("known modules, primitives and variables keep them", known, known);
}

void TestStubs::singleInstancesStandInForArrays()
{
    QFETCH(QByteArray, source);
    QFETCH(QByteArray, expected);
    const Stubs stubs = stubsOf(source);
    QCOMPARE(stubs.withoutArrays(0, source), expected);
    QCOMPARE(stubs.withoutArrays(1, source), source); // Of another file.
}

TARN_TEST_MAIN(TestStubs)
#include "tst_stubs.moc"
