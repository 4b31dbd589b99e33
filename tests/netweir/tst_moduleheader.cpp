// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/verilog/modulescan.h>

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR::Internal;

namespace {

/// The header of the first unit: parameters, and ports with "<" for an input, ">" for an output,
/// "=" for an inout, "?" for neither, and "[]" behind a vector.
QString headerOf(const QByteArray &text)
{
    ModuleScan scan;
    scanModules(text, 0, true, &scan);
    if (scan.units.isEmpty())
        return {};
    QStringList words;
    for (const QByteArray &parameter : scan.units[0].header.parameters)
        words += QString::fromUtf8(parameter);
    words += QStringLiteral("|");
    for (const ModulePort &port : scan.units[0].header.ports)
        words += QLatin1Char("?<>="[port.direction]) + QString::fromUtf8(port.name) +
                 (port.isVector ? "[]" : "");
    return words.join(QLatin1Char(' '));
}

} // namespace

class TestModuleHeader : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void portsAndParametersAreRead_data();
    void portsAndParametersAreRead();
    void brokenTextTakesLinearTime();
};

void TestModuleHeader::portsAndParametersAreRead_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *text, const char *expected) {
        QTest::newRow(name) << QByteArray(text) << QString::fromLatin1(expected);
    };
    row("none", "module m; endmodule", "|");
    row("empty lists", "module m #() (); endmodule", "|");
    row("in the header", "module m(input a, output b, inout c); endmodule", "| <a >b =c");
    row("directions carry over", "module m(input [3:0] a, b, output c, d); endmodule",
        "| <a[] <b[] >c >d");
    row("types",
        "module m(input wire signed [W-1:0] a, input wire b, output reg [1:0] c = 0, "
        "output logic d, input integer e, input int f, input byte g); endmodule",
        "| <a[] <b >c[] >d <e[] <f[] <g[]");
    row("type without a direction", "module m(input a, logic [1:0] b, logic c); endmodule",
        "| <a <b[] <c");
    row("named type", "module m(input t a, p::t b, output c); endmodule", "| <a[] <b[] >c");
    row("interface", "module m(bus.master a, input b); endmodule", "| ?a[] <b");
    row("array", "module m(input a [3:0], input b); endmodule", "| <a[] <b");
    row("attribute", "module m((* x = 1, y *) input a, (* z *) output b); endmodule", "| <a >b");
    row("explicit name", "module m(.a(x), .b({y, z}), c); input x; endmodule", "| ?a ?b ?c");
    row("explicit name in the header", "module m(input .a(x[1:0]), output b); endmodule",
        "| <a >b");
    row("in the body",
        "module m(a, b, c, d); input [1:0] a, c; output reg b; inout d; wire e; endmodule",
        "| <a[] >b <c[] =d");
    row("not of the module", "module m(a); input a; task t; input b; begin end endtask endmodule",
        "| <a");
    row("parameters",
        "module m #(parameter A = 1, B = f(1, 2), parameter [3:0] C = 2, "
        "localparam D = 3, E = 4, parameter type T = logic, int F = 5); endmodule",
        "A B C T F |");
    row("parameters without the word", "module m #(A = 1, int B = 2) (input a); endmodule",
        "A B | <a");
    row("parameters in the body",
        "module m(a); parameter A = 1, B = 2; parameter [1:0] C = 3; localparam D = 4; endmodule",
        "A B C | ?a");
    row("local in the body", "module m #(parameter A = 1) (); parameter B = 2; endmodule", "A |");
    row("import", "module m import p::*; #(parameter A = 1) (input a); endmodule", "A | <a");
    row("escaped", "module m(input \\a+ , output b); endmodule", "| <a+ >b");
    row("no end", "module m(input a, output", "| <a");
    row("no end of the parameters", "module m #(parameter A = 1", "A |");
}

void TestModuleHeader::portsAndParametersAreRead()
{
    QFETCH(QByteArray, text);
    QTEST(headerOf(text), "expected");
}

void TestModuleHeader::brokenTextTakesLinearTime()
{
    for (const char *piece : {"module m(", "module m #(parameter A", "(* ", "input ", "parameter ",
                              "module m(input a; endmodule "}) {
        const QByteArray text = "module m(" + QByteArray(piece).repeated(100000);
        QElapsedTimer timer;
        timer.start();
        headerOf(text);
        QVERIFY2(timer.elapsed() < 2000, piece);
    }
}

QTEST_GUILESS_MAIN(TestModuleHeader)
#include "tst_moduleheader.moc"
