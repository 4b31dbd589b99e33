// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "netlisttext.h"
#include "temporaryfolder.h"

#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/tool/extractionprogress.h>
#include <netweir/internal/verilator/verilatorelaborator.h>
#include <netweir/netlistbuilder.h>

#include <support/files.h>
#include <support/testcase.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

using namespace NETWEIR;
using namespace NETWEIR::Internal;

namespace {

DeclaredUnit entity(const QString &name, const std::vector<DeclaredPort> &ports,
                    const QStringList &generics = {})
{
    DeclaredUnit unit;
    unit.language = Language::Vhdl;
    unit.library = QStringLiteral("work");
    unit.name = name;
    unit.ports = ports;
    unit.generics = generics;
    return unit;
}

/// The entities that all designs here may instantiate.
std::vector<DeclaredUnit> entities()
{
    const std::vector<DeclaredPort> ports{{QStringLiteral("Clk"), PortDirection::Input},
                                          {QStringLiteral("D"), PortDirection::Input},
                                          {QStringLiteral("Q"), PortDirection::Output},
                                          {QStringLiteral("Pad"), PortDirection::Inout}};
    DeclaredUnit user = entity(QStringLiteral("user"), {});
    user.uses.resize(1);
    user.uses.front().unit = QStringLiteral("Helper");
    return {entity(QStringLiteral("Dff"), ports, {QStringLiteral("Width"), QStringLiteral("Name")}),
            user};
}

PartRoot rootOf(const QString &unit, bool isTop = true)
{
    PartRoot root;
    root.unit = unit;
    root.isTop = isTop;
    root.place = {QStringLiteral("user.vhd"), 7, 3};
    return root;
}

QString bitsText(const std::vector<bool> &bits)
{
    QString text;
    for (const bool bit : bits)
        text += QLatin1Char(bit ? '1' : '0');
    return text;
}

/// "D=4" for each port with its bits, "Width:i8" for each generic with the letter of its kind.
QString rootText(const PartRoot &root)
{
    QStringList words{root.unit};
    for (const PartPort &port : root.ports)
        words += port.name + '=' + QString::number(port.width);
    for (auto generic = root.generics.begin(); generic != root.generics.end(); ++generic)
        words += generic.key() + ':' + QLatin1Char("irbto"[generic->kind]) + generic->text;
    return words.join(' ');
}

/// Elaborates a design of one file, or of none.
class Design
{
public:
    explicit Design(const QByteArray &source, const QString &libraryFolder = QString())
        : m_progress(nullptr)
        , m_units(entities())
    {
        DesignSources sources;
        if (!source.isEmpty()) {
            SourceFile file;
            file.path = m_folder.filePath(QStringLiteral("a.sv"));
            file.systemVerilog = true;
            TarnTest::writeFile(file.path, source);
            sources.files.append(file);
        }
        sources.standard = QStringLiteral("1800-2017");
        if (!libraryFolder.isEmpty())
            sources.libraryFolders.append(libraryFolder);
        sources.libraryExtensions.append(QStringLiteral(".v"));
        m_elaborator = std::make_unique<VerilatorElaborator>(sources);
        m_elaborator->setForeignUnits(&m_units);
        m_elaborator->scan(&m_progress);
    }

    const VerilatorElaborator *operator->() const { return m_elaborator.get(); }

    /// Null on failure.
    std::unique_ptr<Part> read(const std::vector<PartRoot> &roots = {rootOf(QStringLiteral("top"))})
    {
        m_elaborator->begin(roots, &m_progress);
        m_elaborator->elaborate(&m_progress, -1);
        std::unique_ptr<Part> part;
        QString error;
        if (m_elaborator->isElaborated()) {
            readWithin(
                {},
                [&](QString *reason) {
                    part = m_elaborator->read(reason);
                    return part != nullptr;
                },
                &error);
        }
        return part;
    }

    /// Messages without the folder of the design.
    QString messages() const
    {
        const QStringList all = m_elaborator->sourceMessages() + m_elaborator->messages();
        return all.join('\n').remove(m_folder.path() + '/');
    }

private:
    QTemporaryDir m_folder;
    ExtractionProgress m_progress;
    const std::vector<DeclaredUnit> m_units;
    std::unique_ptr<VerilatorElaborator> m_elaborator;
};

/// The netlist below @p root. A border is a node with the text of its root as its module; behind
/// that are the bits that are driven.
QString builtText(const Part &part, int root = 0, const DrivenPorts &driven = {})
{
    NetlistBuilder builder(part.unitName(root));
    part.build(root, driven, builder.top(), &builder, [&](const BorderInstance &border) {
        QString text = rootText(part.foreignRoots().at(std::size_t(border.root)));
        for (auto port = border.driven.begin(); port != border.driven.end(); ++port)
            text += ' ' + port.key() + '<' + bitsText(*port);
        if (border.count > 1)
            text += QStringLiteral(" %1/%2").arg(border.position).arg(border.count);
        builder.addHierachy(border.parent, border.name, text);
    });
    return TarnTest::netlistText(builder.take()->top());
}

} // namespace

/// What the elaborator of Verilog does for designs in several languages, with the real tool.
class TestVerilatorElaborator : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void foreignInstancesAreBorders_data();
    void foreignInstancesAreBorders();
    void parametersOfForeignInstancesHaveValues_data();
    void parametersOfForeignInstancesHaveValues();
    void equalForeignInstancesShareARoot();
    void faultsAtBordersAreErrors_data();
    void faultsAtBordersAreErrors();
    void rootsHaveParametersOfTheirOwn();
    void literalsHaveTheValuesOfGenerics_data();
    void literalsHaveTheValuesOfGenerics();
    void rootsAreBuiltWithWhatDrivesThem();
    void faultsOfRootsAreErrors_data();
    void faultsOfRootsAreErrors();
    void laterRootsAreReadToo();
    void librariesHaveWhatForeignUnitsNeed_data();
    void librariesHaveWhatForeignUnitsNeed();

private:
    const TarnTest::TemporaryFolder m_temporary;
};

void TestVerilatorElaborator::cleanup()
{
    TestCase::cleanup();
    m_temporary.verifyNothingIsLeft();
}

void TestVerilatorElaborator::foreignInstancesAreBorders_data()
{
    QTest::addColumn<QByteArray>("members"); ///< Of the module top, with "input c, [3:0] d".
    QTest::addColumn<QString>("expected");   ///< Behind the nets of the ports.
    const auto row = [](const char *name, const char *members, const char *expected) {
        QTest::newRow(name) << QByteArray(members) << QString::fromLatin1(expected);
    };
    row("by name, in any case and order",
        "wire [3:0] q; Dff u(.Q(q), .D(d), .Clk(c)); dff v(.clk(c), .q());",
        "    q[3:0] OOOO\n"
        "    u : Dff Clk=1 D=4 Q=4 Clk<1 D<1111\n"
        "    v : dff Clk=1 Clk<1\n");
    row("by position", "wire q; wire [1:0] p; DFF u(c, , q, p);",
        "    q O\n"
        "    p[1:0] OO\n"
        "    u : DFF Clk=1 Q=1 Pad=2 Clk<1 Pad<11\n");
    row("bits that nothing drives", "wire [3:0] w; assign w[2] = c; dff u(.d({w, c}), .clk(w[1]));",
        "    w[3:0] .O..\n"
        "    u : dff Clk=1 D=5 Clk<0 D<01001\n");
    row("part of a net", "wire [7:0] q; Dff u(.Q(q[5:2]));",
        "    q[7:0] ..OOOO..\n"
        "    u : Dff Q=4\n");
    row("nets that only the connection declares", "Dff u(.Q(q), .D(r));",
        "    q O\n"
        "    r .\n"
        "    u : Dff D=1 Q=1 D<0\n");
    row("expressions", "dff u(.clk(~c), .d(d & {c, 3'b0})), v(.clk(d == 3), .d(c ? d : 8'd1));",
        "    u : dff Clk=1 D=4 Clk<1 D<1111\n"
        "    v : dff Clk=1 D=8 Clk<1 D<11111111\n");
    row("numbers", "dff u(.clk(1'b0), .d('0)), v(.clk(1), .d(d + 1));",
        "    u : dff Clk=1 D=0 Clk<1 D<1\n"
        "    v : dff Clk=0 D=0 Clk<1 D<1\n");
    row("in order with modules, in scopes",
        "leaf a(); for (genvar i = 0; i < 2; i++) begin : g dff u(.clk(d[i])); leaf b(); end "
        "leaf z();",
        "    a : leaf\n"
        "    g[0].u : dff Clk=1 Clk<1\n"
        "    g[0].b : leaf\n"
        "    g[1].u : dff Clk=1 Clk<1\n"
        "    g[1].b : leaf\n"
        "    z : leaf\n");
    row("array",
        "localparam N = 3; wire [N:0] w; assign w[1] = c; wire x;\n"
        "dff u[N-1:1](.clk(c), .d(w), .q(x)), v(.clk(x)); leaf z();",
        "    x O\n"
        "    w[3:0] ..O.\n"
        "    u[2] : dff Clk=1 D=0 Q=1 Clk<1 D<0010 0/2\n"
        "    u[1] : dff Clk=1 D=0 Q=1 Clk<1 D<0010 1/2\n"
        "    v : dff Clk=1 Clk<1\n"
        "    z : leaf\n");
    row("in a module that is instantiated twice", "mid a(.x(c)); wire w; mid b(.x(w));",
        "    w .\n"
        "    a : mid\n"
        "        x O\n"
        "        u : dff Clk=1 Clk<1\n"
        "    b : mid\n"
        "        x .\n"
        "        u : dff Clk=1 Clk<0\n");
    row("driven through an output of a module", "drv a(.y(y)); wire y; ",
        "    y O\n"
        "    a : drv\n"
        "        y O\n"
        "        u : Dff Q=1\n");
    row("names of pins in a hierarchical reference", "Dff u(.Clk(c)); wire w = u.Clk;",
        "    w O\n"
        "    u : Dff Clk=1 Clk<1\n");
}

void TestVerilatorElaborator::foreignInstancesAreBorders()
{
    QFETCH(QByteArray, members);
    QFETCH(QString, expected);
    Design design("module top(input c, input [3:0] d);\n" + members +
                  "\nendmodule\nmodule leaf; endmodule\n"
                  "module mid(input x); dff u(.clk(x)); endmodule\n"
                  "module drv(output y); Dff u(.Q(y)); endmodule\n");
    const std::unique_ptr<Part> part = design.read();
    QCOMPARE(design.messages(), QString());
    QVERIFY(part);
    QString built = builtText(*part);
    built.remove("top : top\n").remove("    c O\n").remove("    d[3:0] OOOO\n");
    QCOMPARE(built, expected);
}

void TestVerilatorElaborator::parametersOfForeignInstancesHaveValues_data()
{
    QTest::addColumn<QByteArray>("values");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *values, const char *expected) {
        QTest::newRow(values) << QByteArray(values) << QString::fromLatin1(expected);
    };
    row("", "Dff");
    row("#(.Width(8))", "Dff Width:i8");
    row("#(.width(P + 1))", "Dff Width:i6");
    row("#(.Width(-3))", "Dff Width:i-3");
    row("#(7, \"ab\")", "Dff Name:tab Width:i7");
    row("#(.Width(4'b10x0))", "Dff Width:b10x0");
    row("#(.Width(8'h1f))", "Dff Width:b00011111");
    row("#(.Width(1'b1))", "Dff Width:b1");
    row("#(.Width(40'd3))", "Dff Width:b0000000000000000000000000000000000000011");
    row("#(.Width(32'h8000_0000))", "Dff Width:b10000000000000000000000000000000");
    row("#(.Width(1.5))", "Dff Width:r1.5");
    row("#(.Width(-2.0))", "Dff Width:r-2.0");
    row("#(.Name(\"\"))", "Dff Name:t");
}

void TestVerilatorElaborator::parametersOfForeignInstancesHaveValues()
{
    QFETCH(QByteArray, values);
    Design design("module top; localparam P = 5; Dff " + values + " u(); endmodule\n");
    const std::unique_ptr<Part> part = design.read();
    QCOMPARE(design.messages(), QString());
    QVERIFY(part);
    QCOMPARE(int(part->foreignRoots().size()), 1);
    const PartRoot root = part->foreignRoots().front();
    QTEST(rootText(root), "expected");
    QCOMPARE(QFileInfo(root.place.file).fileName(), QStringLiteral("a.sv"));
    QCOMPARE(root.place.line, 1);
    QCOMPARE(root.place.column, 36 + values.size());
}

void TestVerilatorElaborator::equalForeignInstancesShareARoot()
{
    Design design("module top(input [3:0] d); Dff #(.Width(4)) u(.D(d));\n"
                  "Dff #(.Width(4)) v(.D(d)), w(.Q(), .D(d)), x(.D(d[1:0])); Dff y(.D(d));\n"
                  "sub s(d); endmodule module sub(input [3:0] e); Dff #(4) z(.D(e)); endmodule\n"
                  "module unused; Dff a(.Clk(1'b0)); endmodule\n");
    const std::unique_ptr<Part> part = design.read();
    QCOMPARE(design.messages(), QString());
    QVERIFY(part);
    QStringList roots;
    for (const PartRoot &root : part->foreignRoots())
        roots += rootText(root);
    QCOMPARE(roots, QStringList({QStringLiteral("Dff D=4 Width:i4"),
                                 QStringLiteral("Dff D=2 Width:i4"), QStringLiteral("Dff D=4")}));
}

void TestVerilatorElaborator::faultsAtBordersAreErrors_data()
{
    QTest::addColumn<QByteArray>("members");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *members, const char *expected) {
        QTest::newRow(name) << QByteArray(members) << QString::fromLatin1(expected);
    };
    row("unknown pin", "Dff u(.X(c));", "ERROR: a.sv:2:8: Pin not found: 'X'");
    row("too many pins", "Dff u(c, c, c, c, c);",
        "ERROR: a.sv:2:19: Pin not found: '__pinNumber5'");
    row("unknown parameter", "Dff #(.X(1)) u();", "ERROR: a.sv:2:8: Parameter pin not found: 'X'");
    row("net inside", "Dff u(); wire w = u.inner;",
        "ERROR: a.sv:2:21: Can't find definition of 'inner' in dotted variable: 'u.inner'");
    row("several dimensions", "Dff u[1:0][2:0]();",
        "ERROR: a.sv:2: Arrays of instances of \"Dff\" with several dimensions are not supported. "
        "Use one dimension, or generate loops.");
}

void TestVerilatorElaborator::faultsAtBordersAreErrors()
{
    QFETCH(QByteArray, members);
    Design design("module top(input c);\n" + members + "\nendmodule\n");
    QVERIFY(!design.read());
    QTEST(design.messages(), "expected");
}

namespace {

PartRoot rootWith(const QString &unit, const QString &parameter, const GenericValue &value)
{
    PartRoot root = rootOf(unit, false);
    root.generics.insert(parameter, value);
    return root;
}

} // namespace

void TestVerilatorElaborator::rootsHaveParametersOfTheirOwn()
{
    Design design("module a #(parameter W = 2) (input [W-1:0] i, output o); b u(); endmodule\n"
                  "module b; endmodule\nmodule c(inout p); KX_JTAG j(); endmodule\n");
    const auto part =
        design.read({rootWith(QStringLiteral("a"), QStringLiteral("W"),
                              {GenericValue::Integer, QStringLiteral("3")}),
                     rootOf(QStringLiteral("c")), rootOf(QStringLiteral("a"), false)});
    QCOMPARE(design.messages(), QString());
    QVERIFY(part);
    QCOMPARE(builtText(*part, 0), QStringLiteral("a : a\n    o .\n    i[2:0] ...\n    u : b\n"));
    QCOMPARE(builtText(*part, 1), QStringLiteral("c : c\n    p O\n"));
    QCOMPARE(builtText(*part, 2), QStringLiteral("a : a\n    o .\n    i[1:0] ..\n    u : b\n"));
    QCOMPARE(part->ports(0),
             std::vector<PartPort>({{QStringLiteral("i"), PortDirection::Input, 3},
                                    {QStringLiteral("o"), PortDirection::Output, 1}}));
    QCOMPARE(part->ports(1),
             std::vector<PartPort>({{QStringLiteral("p"), PortDirection::Inout, 1}}));
    QCOMPARE(part->unitName(2), QStringLiteral("a"));
    QVERIFY(part->usesJtagPrimitive());
    QCOMPARE(design->units().at(0).generics, QStringList(QStringLiteral("W")));
}

void TestVerilatorElaborator::literalsHaveTheValuesOfGenerics_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("condition"); ///< That the module checks.
    const auto row = [](const char *name, GenericValue::Kind kind, const char *value,
                        const char *condition) {
        QTest::newRow(name) << int(kind) << QString::fromUtf8(value) << QByteArray(condition);
    };
    row("integer", GenericValue::Integer, "12", "P == 12 && $bits(P) == 32 && P - 13 < 0");
    row("negative", GenericValue::Integer, "-2147483648", "P < 0 && P + 2147483647 == -1");
    row("large", GenericValue::Integer, "4294967296", "P == 64'd4294967296");
    row("real", GenericValue::Real, "-2.5e-3", "P < -0.0024 && P > -0.0026");
    row("bits", GenericValue::Bits, "01xz", "P === 4'b01xz && $bits(P) == 4");
    row("text", GenericValue::Text, "a\"\\b\xc3\xa9", "P == {\"a\", 8'h22, 8'h5c, \"b\", 8'he9}");
    row("true", GenericValue::Boolean, "true", "P == 1");
    row("false", GenericValue::Boolean, "false", "P == 0 && $bits(P) == 1");
}

void TestVerilatorElaborator::literalsHaveTheValuesOfGenerics()
{
    QFETCH(int, kind);
    QFETCH(QString, value);
    QFETCH(QByteArray, condition);
    Design design("module a #(parameter P = 0); if (" + condition +
                  ") b u(); endmodule\nmodule b; endmodule\n");
    const auto part = design.read(
        {rootWith(QStringLiteral("a"), QStringLiteral("P"), {GenericValue::Kind(kind), value})});
    QCOMPARE(design.messages(), QString());
    QVERIFY(part);
    QCOMPARE(builtText(*part),
             QStringLiteral("a : a\n    %1u : b\n").arg(QStringLiteral("genblk1.")));
}

void TestVerilatorElaborator::rootsAreBuiltWithWhatDrivesThem()
{
    Design design("module a(input [3:0] i, input [0:1] r, input s, n, inout p, output q);\n"
                  "b u(i[2:1]); endmodule\nmodule b(input [1:0] x); endmodule\n");
    const auto part = design.read({rootOf(QStringLiteral("a"), false)});
    QCOMPARE(design.messages(), QString());
    QVERIFY(part);
    const DrivenPorts some{{QStringLiteral("i"), {false, true, false, false}},
                           {QStringLiteral("r"), {true, false}},
                           {QStringLiteral("s"), {true}},
                           {QStringLiteral("p"), {true}}};
    const DrivenPorts others{{QStringLiteral("i"), {true}}, {QStringLiteral("n"), {true}}};
    for (int round = 0; round < 2; ++round) { // Builds leave nothing behind.
        QCOMPARE(builtText(*part, 0, some),
                 QStringLiteral("a : a\n    s O\n    n .\n    p O\n    q .\n    i[3:0] .O..\n"
                                "    r[0:1] O.\n    u : b\n        x[1:0] O.\n"));
        QCOMPARE(builtText(*part, 0, others),
                 QStringLiteral("a : a\n    s .\n    n O\n    p .\n    q .\n    i[3:0] OOOO\n"
                                "    r[0:1] ..\n    u : b\n        x[1:0] OO\n"));
    }
}

void TestVerilatorElaborator::faultsOfRootsAreErrors_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("expected");
    QTest::newRow("unknown parameter")
        << QByteArray("module a; endmodule") << "ERROR: user.vhd:7:3: Parameter pin not found: 'P'";
    QTest::newRow("interface port")
        << QByteArray("interface i; endinterface module a #(parameter P = 1) (i p); endmodule")
        << "ERROR: a.sv:1:56: Parent instance's interface is not found: 'i'";
}

void TestVerilatorElaborator::faultsOfRootsAreErrors()
{
    QFETCH(QByteArray, source);
    Design design(source);
    const auto part = design.read({rootWith(QStringLiteral("a"), QStringLiteral("P"),
                                            {GenericValue::Integer, QStringLiteral("1")})});
    QVERIFY(!part);
    QTEST(design.messages(), "expected");
}

/// A part stays as it is when further roots are elaborated.
void TestVerilatorElaborator::laterRootsAreReadToo()
{
    Design design("module a(input i); Dff u(.D(i)); endmodule\nmodule b(output o); endmodule\n");
    const auto first = design.read({rootOf(QStringLiteral("a"))});
    QVERIFY(first);
    const auto second = design.read({rootOf(QStringLiteral("b"), false)});
    QVERIFY(second);
    QCOMPARE(design.messages(), QString());
    QCOMPARE(builtText(*first), QStringLiteral("a : a\n    i O\n    u : Dff D=1 D<1\n"));
    QCOMPARE(builtText(*second), QStringLiteral("b : b\n    o .\n"));
}

void TestVerilatorElaborator::librariesHaveWhatForeignUnitsNeed_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("units");
    QTest::newRow("beside a source") << QByteArray("module top; endmodule") << "top helper below";
    QTest::newRow("a module of the source in another case")
        << QByteArray("module HELPER; endmodule") << "HELPER";
    QTest::newRow("a source needs it too")
        << QByteArray("module top; helper u(); Dff v(); endmodule") << "top helper below";
    QTest::newRow("without any source") << QByteArray() << "helper below";
}

/// The library has an entity's file too, which does not count.
void TestVerilatorElaborator::librariesHaveWhatForeignUnitsNeed()
{
    QFETCH(QByteArray, source);
    QTemporaryDir library;
    TarnTest::writeFile(library.filePath(QStringLiteral("helper.v")),
                        "module helper; below u(); endmodule\n");
    TarnTest::writeFile(library.filePath(QStringLiteral("below.v")), "module below; endmodule\n");
    TarnTest::writeFile(library.filePath(QStringLiteral("Dff.v")), "module Dff; endmodule\n");
    Design design(source, library.path());
    QCOMPARE(design.messages(), QString());
    QStringList units;
    for (const DeclaredUnit &unit : design->units())
        units += unit.name;
    QTEST(units.join(' '), "units");
    const QString root = source.contains("HELPER") ? QStringLiteral("HELPER") : "helper";
    const auto part = design.read({rootOf(root, false)});
    QCOMPARE(design.messages(), QString());
    QVERIFY(part);
    QCOMPARE(part->unitName(0), root);
}

TARN_TEST_MAIN(TestVerilatorElaborator)
#include "tst_verilatorelaborator.moc"
