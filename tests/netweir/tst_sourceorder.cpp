// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/modules/designscopes.h>
#include <netweir/internal/modules/packagecheck.h>
#include <netweir/internal/modules/sourceorder.h>
#include <netweir/internal/modules/typeuses.h>
#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/sources/preprocessedtext.h>

#include "designfixture.h"
#include "netlisttext.h"

#include <support/processortime.h>
#include <support/testcase.h>

#include <QApplication>
#include <QTest>

#include <algorithm>
#include <iterator>
#include <random>

using namespace NETWEIR::Internal;

namespace {

/// Sources by name, "-v" in front of the name of a library file. Names that end with .v are
/// Verilog.
using Sources = QVector<QPair<QString, QByteArray>>;

QString fileName(const QString &name)
{
    return name.startsWith(QLatin1String("-v ")) ? name.mid(3) : name;
}

DesignSources designOf(const Sources &sources)
{
    DesignSources design;
    design.standard = QStringLiteral("1364-2005");
    for (const auto &source : sources) {
        SourceFile file;
        file.path = fileName(source.first);
        file.systemVerilog = !file.path.endsWith(QLatin1String(".v"));
        file.library = file.path != source.first;
        design.files.append(file);
    }
    return design;
}

PreprocessedText textOf(const Sources &sources)
{
    QByteArray output;
    QVector<PathAlias> files;
    for (const auto &source : sources) {
        const QString name = fileName(source.first);
        output += "`line 1 \"" + name.toUtf8() + "\" 1\n" + source.second + "\n";
        files.append({name.toUtf8(), name});
    }
    return PreprocessedText(output, files, {});
}

/// The order of a design, and what it is made from.
struct Order
{
    explicit Order(const Sources &sources)
        : design(designOf(sources))
        , text(textOf(sources))
        , scopes(design, text)
        , order(scopes, findTypeUses(design, text, scopes))
    {
    }

    DesignSources design;
    PreprocessedText text;
    DesignScopes scopes;
    SourceOrder order;
};

/// The names of the pieces: FILE, or FILE/BLOCK/... for a piece of blocks.
QString orderText(const Sources &sources)
{
    const Order found(sources);
    QStringList names;
    for (const TextPiece &piece : found.order.pieces()) {
        QString name = found.design.files[piece.text].path;
        for (const int block : piece.blocks)
            name += QLatin1Char('/') + QString::number(block);
        names.append(name);
    }
    return names.join(QLatin1Char(' '));
}

void addTo(TarnTest::DesignFixture *design, const Sources &sources)
{
    QStringList libraries;
    for (const auto &source : sources) {
        const QString name = fileName(source.first);
        if (name == source.first) {
            design->add(name, source.second);
        } else {
            TarnTest::writeFile(design->path(name), source.second);
            libraries.append(design->path(name));
        }
    }
    design->set(TE::DesignInfo::LibraryFiles, libraries);
    design->set(TE::DesignInfo::Top, QStringLiteral("top"));
}

/// A design with packages, shared types and a shared import, in an order in which it can be read.
Sources wellOrdered()
{
    return {
        {QStringLiteral("base_pkg.sv"), "package base_pkg;\n  localparam int W = 3;\n"
                                        "  typedef logic [W-1:0] word_t;\nendpackage\n"},
        {QStringLiteral("bus_pkg.sv"),
         "package bus_pkg;\n  import base_pkg::*;\n"
         "  typedef struct packed { word_t data; logic valid; } bus_t;\nendpackage\n"},
        {QStringLiteral("shared.sv"), "typedef enum logic [1:0] {IDLE, RUN} state_t;\n"
                                      "import bus_pkg::bus_t;\nparameter DEPTH = 5;\n"},
        {QStringLiteral("link_if.sv"), "interface link_if(input clk);\n  bus_pkg::bus_t bus;\n"
                                       "  modport sink(input bus);\nendinterface\n"},
        {QStringLiteral("leaf.sv"),
         "module leaf(input clk, output state_t state, input bus_t bus, link_if.sink link);\n"
         "  wire [DEPTH-1:0] deep;\n  always_ff @(posedge clk) state <= bus.valid ? RUN : IDLE;\n"
         "endmodule\n"},
        {QStringLiteral("top.sv"),
         "module top import base_pkg::*; (input clk, input word_t in, output state_t out);\n"
         "  bus_pkg::bus_t bus;\n  assign bus.data = in;\n  link_if link(clk);\n"
         "  leaf u_leaf(.clk(clk), .state(out), .bus(bus), .link(link));\nendmodule\n"},
    };
}

bool isDeclared(const QByteArrayList &declarations, const QByteArray &beginning)
{
    return std::any_of(
        declarations.begin(), declarations.end(),
        [&beginning](const QByteArray &declaration) { return declaration.startsWith(beginning); });
}

QByteArray randomWords(std::mt19937 *random)
{
    static const char *const words[] = {
        "package ",  "endpackage ", "module ",     "endmodule ", "import ",  "p",
        "q",         "::",          "*",           ";",          "typedef ", "class ",
        "endclass ", "t ",          "u ",          "{",          "}",        "(",
        ")",         "[",           "]",           "\n",         "type ",    "interface ",
        "virtual ",  "function ",   "\"p::\"",     "extern ",    ",",        "=",
        "struct ",   ":",           "endfunction "};
    QByteArray text;
    for (int i = 0; i < 60; ++i)
        text += words[(*random)() % std::size(words)];
    return text;
}

int lettersOf(const QByteArray &text)
{
    return int(std::count_if(text.begin(), text.end(), [](char c) { return c > ' '; }));
}

/// Random packages, shared types and modules, one per line, each after everything that it needs.
QByteArrayList randomDeclarations(std::mt19937 *random)
{
    const auto below = [random](int end) { return int((*random)() % unsigned(end)); };
    QByteArrayList result = {"package p0; localparam W = 2; typedef logic [W-1:0] t; endpackage"};
    QByteArrayList types = {"p0::t"};
    QByteArray instances;
    constexpr int Count = 24;
    for (int i = 1; i < Count; ++i) {
        const QByteArray number = QByteArray::number(i);
        const QByteArray type = types[below(types.size())];
        const QByteArray package = "p" + QByteArray::number(below(i));
        const bool isPackage = isDeclared(result, "package " + package + ";");
        switch (isPackage ? below(3) : 2) {
        case 0:
            result.append("package p" + number + "; import " + package + "::*; localparam W" +
                          number + " = " + package + "::W + 1; localparam W = " + package +
                          "::W + 1; typedef struct packed { " + package +
                          "::t a; logic [W-1:0] b; } t; endpackage");
            types.append("p" + number + "::t");
            break;
        case 1:
            result.append("typedef struct packed { " + type + " a; logic b; } t" + number + ";");
            types.append("t" + number);
            break;
        default:
            result.append("module m" + number + "(input " + type + " a, output " + type +
                          " b); assign b = a; endmodule");
            instances += type + " a" + number + ", b" + number + "; m" + number + " u" + number +
                         "(.a(a" + number + "), .b(b" + number + ")); ";
        }
    }
    return result << "module top; " + instances + "endmodule";
}

} // namespace

class TestSourceOrder : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsUsedComesFirst_data();
    void whatIsUsedComesFirst();
    void errorsNameTheFirstUse_data();
    void errorsNameTheFirstUse();
    void piecesKeepLinesAndColumns();
    void piecesHoldEachTextOnce_data();
    void piecesHoldEachTextOnce();
    void everyOrderGivesTheSameNetlist_data();
    void everyOrderGivesTheSameNetlist();
    void filesThatNeedEachOtherGiveTheSameNetlist_data();
    void filesThatNeedEachOtherGiveTheSameNetlist();
    void packagesOfLibrariesAreDeclared();
    void filesMayNeedEachOther();
    void sharedTypesMayServePackagesBehind();
    void packagesDeclaredTwiceAreNamed();
    void macrosCarryOverInTheOrderOfTheProject();
    void faultsKeepTheirPlacesWhenFilesMove();
    void designsThatCannotOpenSayWhichPackage_data();
    void designsThatCannotOpenSayWhichPackage();
    void timeGrowsWithTheText();
};

void TestSourceOrder::whatIsUsedComesFirst_data()
{
    QTest::addColumn<Sources>("sources");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const Sources &sources, const char *expected) {
        QTest::newRow(name) << sources << QString::fromUtf8(expected);
    };
    const auto source = [](const char *name, const char *text) {
        return qMakePair(QString::fromUtf8(name), QByteArray(text));
    };
    row("in order", {source("p", "package p; endpackage"), source("m", "module m; import p::*;")},
        "p m");
    row("nothing needs another one", {source("b", "module b;"), source("a", "module a; b u();")},
        "b a");
    row("import", {source("m", "module m; import p::*;"), source("p", "package p; endpackage")},
        "p m");
    row("import in the header",
        {source("m", "module m import p::x, q::*; ();"), source("q", "package q; endpackage"),
         source("p", "package automatic p; endpackage : p")},
        "p q m");
    row("scope", {source("m", "module m(input p::t a);"), source("p", "package p; endpackage")},
        "p m");
    row("others stay where they are",
        {source("a", "module a;"), source("b", "module b; import p::*;"), source("c", "module c;"),
         source("p", "package p; endpackage"), source("d", "module d;")},
        "a p b c d");
    row("chain",
        {source("m", "module m; import p::*;"), source("p", "package p; import q::*; endpackage"),
         source("q", "package q; parameter X = r::Y; endpackage"),
         source("r", "package r; endpackage")},
        "r q p m");
    row("circle of files",
        {source("a", "package pa; endpackage module a; import pb::*; endmodule"),
         source("b", "package pb; endpackage module b; import pa::*; endmodule")},
        "a/0 b a");
    row("circle of files by way of a third one",
        {source("a", "package pa; endpackage module a; import pb::*; endmodule"),
         source("b", "package pb; endpackage module b; import pc::*; endmodule"),
         source("c", "package pc; import pa::*; endpackage")},
        "a/0 c b a");
    row("behind the use in the same file",
        {source("a",
                "module a; import p::*; endmodule package p; import q::*; endpackage package q; "
                "endpackage")},
        "a/1 a/0 a");
    row("library", {source("m", "module m; import p::*;"), source("-v p", "package p; endpackage")},
        "p/0 m p");
    row("library with what it needs",
        {source("m", "module m; import p::*;"),
         source("-v p", "package p; import q::*; endpackage module x; endmodule"),
         source("-v q", "package q; endpackage")},
        "q/0 p/0 m p q");
    row("library that no other file needs",
        {source("m", "module m;"), source("-v p", "package p; endpackage module x; import p::*;")},
        "m p");
    row("sources win over libraries",
        {source("m", "module m; import p::*;"), source("p", "package p; endpackage"),
         source("-v v", "package p; endpackage")},
        "p m v");
    row("shared type", {source("m", "module m(input t a);"), source("t", "typedef logic [3:0] t;")},
        "t m");
    row("shared structure",
        {source("m", "module m; s_t a;"), source("t", "typedef struct { logic a; } s_t [3:0];")},
        "t m");
    row("shared class",
        {source("m", "module m; c_t a;"),
         source("t", "virtual class c_t; class inner; endclass endclass")},
        "t m");
    row("shared import",
        {source("m", "module m; t a;"), source("i", "import p::*; module i; endmodule"),
         source("p", "package p; typedef logic t; endpackage")},
        "p i m");
    row("own type of the same name",
        {source("m", "module m; typedef logic t; t a;"), source("t", "typedef logic [3:0] t;")},
        "m t");
    row("type of a module",
        {source("m", "module m; wire t;"),
         source("t", "module n; typedef logic t; endmodule package p; typedef logic t; "
                     "endpackage function f; typedef logic t; endfunction")},
        "m t");
    row("types in a circle",
        {source("a", "typedef logic a_t; module a; b_t x;"),
         source("b", "typedef logic b_t; module b; a_t x;")},
        "a/0 b a");
    row("shared type of a file that needs the package that uses it",
        {source("a", "typedef logic [1:0] w; module a; import p::*;"),
         source("p", "package p; typedef w x; endpackage")},
        "a/0 p a");
    row("blocks in the order of a text share a piece",
        {source("m", "module m; import q::*;"),
         source("-v v", "package p; endpackage module n; endmodule package q; import p::*; "
                        "endpackage package r; endpackage")},
        "v/0/1 m v");
    row("blocks between packages",
        {source("a", "typedef logic t; package p; t x; endpackage import p::*; class c; endclass : "
                     "c module a; import q::*; endmodule"),
         source("q", "package q; import p::*; c y; endpackage")},
        "a/0/1/3 q a");
    row("Verilog has no packages",
        {source("m.v", "module m; wire import, p; endmodule"),
         source("p.v", "module p; reg package; endmodule")},
        "m.v p.v");
    row("directives change the language",
        {source("m.v", "module m; wire import, p; endmodule\n"
                       "`begin_keywords \"1800-2017\"\nmodule n; import p::*; endmodule\n"
                       "`end_keywords\n"),
         source("p.v", "`begin_keywords \"1800-2017\"\npackage p; endpackage\n`end_keywords\n"
                       "module o; wire package, q; endmodule")},
        "p.v m.v");
    row("classes are no packages",
        {source("m", "module m; initial c::f(); initial $unit::g(); initial std::randomize();"),
         source("c", "module n; class c; endclass endmodule")},
        "m c");
    row("not in strings",
        {source("m", "module m; initial $display(\"import p::x;\");"),
         source("p", "package p; endpackage")},
        "m p");
    row("extern and virtual",
        {source("m", "extern module x(); interface class k; endclass virtual interface bus_if v; "
                     "import \"DPI-C\" function int f(); typedef logic t; module m; p::t a;"),
         source("p", "package p; endpackage"), source("t", "module t2; t a; endmodule")},
        "p m t");
    row("any text",
        {source("a", "package"), source("b", "import ::"), source("c", "typedef {"),
         source("d", "endpackage endmodule class"), source("e", "import p::")},
        "a b c d e");
}

void TestSourceOrder::whatIsUsedComesFirst()
{
    QFETCH(Sources, sources);
    QTEST(orderText(sources), "expected");
}

void TestSourceOrder::errorsNameTheFirstUse_data()
{
    QTest::addColumn<Sources>("sources");
    QTest::addColumn<QStringList>("errors");
    QTest::addColumn<QStringList>("suspicions");
    const auto row = [](const char *name, const Sources &sources, const QStringList &errors,
                        const QStringList &suspicions = {}) {
        QTest::newRow(name) << sources << errors << suspicions;
    };
    const auto source = [](const char *name, const char *text) {
        return qMakePair(QString::fromUtf8(name), QByteArray(text));
    };
    const QString missing = QStringLiteral("ERROR: %1: No file declares the package \"%2\". Add "
                                           "the file that declares it.");
    const QString circle = QStringLiteral("ERROR: %1: Packages need each other in a circle (%2). "
                                          "Move what they share into a package of its own.");
    row("none", {source("m", "module m; import p::*;"), source("p", "package p; endpackage")}, {});
    row("missing",
        {source("m", "\nmodule m;\n  import p::*, p::a; import q::b; endmodule"),
         source("n", "import p::*;")},
        {missing.arg(QStringLiteral("m:3:10"), QStringLiteral("p")),
         missing.arg(QStringLiteral("m:3:29"), QStringLiteral("q"))});
    row("scope, which a class may have too",
        {source("m", "module m; p::t a; c::t b; T::t d; endmodule"),
         source("n", "class c; endclass class k #(type U = int, T = int); initial process::self(); "
                     "endclass")},
        {}, {missing.arg(QStringLiteral("m:1:11"), QStringLiteral("p"))});
    row("scope of a package that another file imports",
        {source("m", "module m; p::t a; endmodule"), source("n", "module n; import p::*;")},
        {missing.arg(QStringLiteral("m:1:11"), QStringLiteral("p"))});
    row("circle",
        {source("m", "module m; import a::*;"), source("a", "package a;\nimport b::*; endpackage"),
         source("b", "package b; parameter x = c::y; endpackage"),
         source("c", "package c; import b::*; endpackage")},
        {circle.arg(QStringLiteral("b:1:26"), QStringLiteral("b -> c -> b"))});
    row("a package may name itself", {source("a", "package a; parameter x = a::y; endpackage")},
        {});
}

void TestSourceOrder::errorsNameTheFirstUse()
{
    QFETCH(Sources, sources);
    const Order found(sources);
    const PackageCheck check(found.design, found.text, found.scopes);
    QTEST(check.errors(), "errors");
    QTEST(check.suspicions(), "suspicions");
}

void TestSourceOrder::piecesKeepLinesAndColumns()
{
    const Sources sources = {
        {QStringLiteral("a"), "module x;\nendmodule  package pa;\nendpackage module a;\n"
                              "import pb::*;\nendmodule\n"},
        {QStringLiteral("b"), "package pb; endpackage\nmodule b; import pa::*; endmodule\n"}};
    const Order found(sources);
    QCOMPARE(found.order.pieces().size(), 3);
    const auto content = [&](int index) {
        const TextPiece &piece = found.order.pieces()[index];
        return found.order.contentOf(piece, found.text.texts()[piece.text]);
    };
    QCOMPARE(content(0), QByteArray("\n           package pa;\nendpackage \n"));
    QCOMPARE(content(1), found.text.texts()[1]);
    QCOMPARE(content(2), QByteArray("module x;\nendmodule             \n           module a;\n"
                                    "import pb::*;\nendmodule\n\n"));
}

void TestSourceOrder::piecesHoldEachTextOnce_data()
{
    QTest::addColumn<int>("seed");
    for (int seed = 0; seed < 20; ++seed)
        QTest::addRow("%d", seed) << seed;
}

/// Whatever the texts are.
void TestSourceOrder::piecesHoldEachTextOnce()
{
    QFETCH(int, seed);
    std::mt19937 random(static_cast<unsigned>(seed));
    for (int round = 0; round < 100; ++round) {
        Sources sources;
        for (const char *name : {"a", "b", "c.v", "-v d"})
            sources.append({QString::fromUtf8(name), randomWords(&random)});
        const Order found(sources);
        QVector<int> letters(sources.size());
        for (const TextPiece &piece : found.order.pieces()) {
            const QByteArray &whole = found.text.texts()[piece.text];
            const QByteArray content = found.order.contentOf(piece, whole);
            letters[piece.text] += lettersOf(content);
            QVERIFY(content.count('\n') <= whole.count('\n') + 1);
        }
        for (int i = 0; i < sources.size(); ++i)
            QCOMPARE(letters[i], lettersOf(found.text.texts()[i]));
    }
}

void TestSourceOrder::everyOrderGivesTheSameNetlist_data()
{
    QTest::addColumn<int>("seed");
    QTest::newRow("reversed") << -1;
    for (int seed = 0; seed < 8; ++seed)
        QTest::addRow("shuffled %d", seed) << seed;
}

void TestSourceOrder::everyOrderGivesTheSameNetlist()
{
    QFETCH(int, seed);
    TarnTest::DesignFixture reference;
    addTo(&reference, wellOrdered());
    QVERIFY2(reference.extract(), qPrintable(reference.messages.join('\n')));
    Sources sources = wellOrdered();
    if (seed < 0) {
        std::reverse(sources.begin(), sources.end());
    } else {
        std::mt19937 random(static_cast<unsigned>(seed));
        std::shuffle(sources.begin(), sources.end(), random);
    }
    TarnTest::DesignFixture design;
    addTo(&design, sources);
    QVERIFY2(design.extract(), qPrintable(design.messages.join('\n')));
    QCOMPARE(design.messages, QStringList());
    const QString text = TarnTest::netlistText(design.netlist->top());
    QCOMPARE(text, TarnTest::netlistText(reference.netlist->top()));
    QVERIFY2(text.contains(QLatin1String("in[2:0]")), qPrintable(text));
}

void TestSourceOrder::filesThatNeedEachOtherGiveTheSameNetlist_data()
{
    QTest::addColumn<int>("seed");
    for (int seed = 0; seed < 12; ++seed)
        QTest::addRow("%d", seed) << seed;
}

void TestSourceOrder::filesThatNeedEachOtherGiveTheSameNetlist()
{
    QFETCH(int, seed);
    std::mt19937 random(static_cast<unsigned>(seed));
    const QByteArrayList declarations = randomDeclarations(&random);
    TarnTest::DesignFixture reference;
    addTo(&reference, {{QStringLiteral("all.sv"), declarations.join('\n')}});
    QVERIFY2(reference.extract(), qPrintable(reference.messages.join('\n')));

    constexpr int Files = 5;
    Sources sources;
    for (int i = 0; i < Files; ++i)
        sources.append({QStringLiteral("f%1.sv").arg(i), "\n"});
    for (const QByteArray &declaration : declarations)
        sources[int(random() % Files)].second += declaration + '\n';
    TarnTest::DesignFixture design;
    addTo(&design, sources);
    QVERIFY2(design.extract(), qPrintable(design.messages.join('\n')));
    QCOMPARE(TarnTest::netlistText(design.netlist->top()),
             TarnTest::netlistText(reference.netlist->top()));
}

void TestSourceOrder::packagesOfLibrariesAreDeclared()
{
    TarnTest::DesignFixture design;
    addTo(&design,
          {{QStringLiteral("top.sv"),
            "module top; import p::*; wire [W-1:0] a; cell_x u(); own o(); endmodule\n"
            "module own; wire mine; endmodule\n"},
           {QStringLiteral("-v lib.sv"), "package p; import q::*; localparam W = V; endpackage\n"
                                         "module cell_x; wire [p::W:0] b; endmodule\n"
                                         "module own; wire not_mine; endmodule\n"},
           {QStringLiteral("-v more.sv"), "package q; localparam V = w::V; endpackage\n"},
           {QStringLiteral("-v words.v"),
            "`begin_keywords \"1800-2017\"\npackage w; localparam V = 4; endpackage\n"
            "`end_keywords\n"}});
    QVERIFY2(design.extract(), qPrintable(design.messages.join('\n')));
    QCOMPARE(TarnTest::netlistText(design.netlist->top()),
             QStringLiteral("top : top\n    a[3:0] ....\n    u : cell_x\n        b[4:0] .....\n"
                            "    o : own\n        mine .\n"));
}

void TestSourceOrder::filesMayNeedEachOther()
{
    TarnTest::DesignFixture design;
    addTo(&design, {{QStringLiteral("top.sv"), "package pt; localparam A = 2; endpackage\n"
                                               "module top; wire [pl::B:0] a; leaf u(); "
                                               "endmodule\n"},
                    {QStringLiteral("leaf.sv"), "package pl; localparam B = pt::A; endpackage\n"
                                                "module leaf; import pt::*; wire [A:0] b; "
                                                "endmodule\n"}});
    QVERIFY2(design.extract(), qPrintable(design.messages.join('\n')));
    QCOMPARE(TarnTest::netlistText(design.netlist->top()),
             QStringLiteral("top : top\n    a[2:0] ...\n    u : leaf\n        b[2:0] ...\n"));
}

void TestSourceOrder::sharedTypesMayServePackagesBehind()
{
    TarnTest::DesignFixture design;
    TarnTest::writeFile(design.path(QStringLiteral("types.svh")),
                        "`ifndef TYPES\n`define TYPES\ntypedef logic [1:0] word_t;\n"
                        "virtual class base #(type T = int);\nendclass : base\n`endif\n");
    addTo(&design, {{QStringLiteral("a.sv"), "`include \"types.svh\"\n"
                                             "module top import p::*; (input word_t a, "
                                             "input pair_t b);\nendmodule\n"},
                    {QStringLiteral("p.sv"), "`include \"types.svh\"\n"
                                             "package p; typedef struct packed "
                                             "{ word_t x; word_t y; } pair_t; endpackage\n"}});
    QVERIFY2(design.extract(), qPrintable(design.messages.join('\n')));
    QCOMPARE(TarnTest::netlistText(design.netlist->top()),
             QStringLiteral("top : top\n    a[1:0] OO\n    b.x[1:0] OO\n    b.y[1:0] OO\n"));
}

void TestSourceOrder::packagesDeclaredTwiceAreNamed()
{
    TarnTest::DesignFixture design;
    addTo(&design, {{QStringLiteral("a.sv"), "module top; wire [p::W-1:0] a; endmodule\n"},
                    {QStringLiteral("p.sv"), "package p; localparam W = 2; endpackage\n"},
                    {QStringLiteral("q.sv"), "\npackage p; localparam W = 3; endpackage\n"},
                    {QStringLiteral("-v v.sv"), "package p; localparam W = 4; endpackage\n"}});
    QVERIFY2(design.extract(), qPrintable(design.messages.join('\n')));
    QCOMPARE(TarnTest::netlistText(design.netlist->top()),
             QStringLiteral("top : top\n    a[1:0] ..\n"));
    QCOMPARE(design.messages,
             QStringList{QStringLiteral("WARNING: %1:2: The package \"p\" is declared a second "
                                        "time; the first declaration, in %2:1, is read.")
                             .arg(design.path(QStringLiteral("q.sv")),
                                  design.path(QStringLiteral("p.sv")))});
}

void TestSourceOrder::macrosCarryOverInTheOrderOfTheProject()
{
    TarnTest::DesignFixture design;
    addTo(&design, {{QStringLiteral("a.sv"), "`define WIDTH 4\n"
                                             "module top; wire [p::W-1:0] a; endmodule\n"},
                    {QStringLiteral("b.sv"), "`ifdef WIDTH\npackage p; localparam W = `WIDTH; "
                                             "endpackage\n`endif\n`undef WIDTH\n"}});
    QVERIFY2(design.extract(), qPrintable(design.messages.join('\n')));
    QCOMPARE(TarnTest::netlistText(design.netlist->top()),
             QStringLiteral("top : top\n    a[3:0] ....\n"));
}

void TestSourceOrder::faultsKeepTheirPlacesWhenFilesMove()
{
    TarnTest::DesignFixture design;
    addTo(&design, {{QStringLiteral("top.sv"), "package pt; endpackage\n"
                                               "module top; import pl::*;\nendmodule\n"},
                    {QStringLiteral("leaf.sv"), "module leaf; import pt::*; endmodule\n"
                                                "  package pl;\n localparam B = missing;\n"
                                                "endpackage\n"}});
    design.findModules();
    QCOMPARE(design.firstError(),
             QStringLiteral("ERROR: leaf.sv:3:17: Can't find definition of variable: 'missing'"));
}

void TestSourceOrder::designsThatCannotOpenSayWhichPackage_data()
{
    QTest::addColumn<Sources>("sources");
    QTest::addColumn<QStringList>("expected");
    const QString missing = QStringLiteral("ERROR: %1: No file declares the package \"%2\". Add "
                                           "the file that declares it.");
    QTest::newRow("import") << Sources{{QStringLiteral("top.sv"),
                                        "module top;\n import p::*; t a;\n t b; assign a.c = 1;\n"
                                        "endmodule\n"}}
                            << QStringList{
                                   missing.arg(QStringLiteral("top.sv:2:9"), QStringLiteral("p"))};
    QTest::newRow("circle")
        << Sources{{QStringLiteral("top.sv"), "module top; wire [a::X:0] s; endmodule\n"},
                   {QStringLiteral("a.sv"), "package a; parameter X = b::Y; endpackage\n"},
                   {QStringLiteral("b.sv"), "package b; parameter Y = a::X; endpackage\n"}}
        << QStringList{QStringLiteral("ERROR: a.sv:1:26: Packages need each other in a circle (a "
                                      "-> b -> a). Move what they share into a package of its "
                                      "own.")};
}

void TestSourceOrder::designsThatCannotOpenSayWhichPackage()
{
    QFETCH(Sources, sources);
    TarnTest::DesignFixture design;
    addTo(&design, sources);
    design.findModules();
    QStringList messages = design.messages;
    messages.replaceInStrings(design.path(QString()) + QLatin1Char('/'), QString());
    QTEST(messages, "expected");
}

void TestSourceOrder::timeGrowsWithTheText()
{
    const auto timeOf = [](int files) {
        Sources sources;
        for (int i = 0; i < files; ++i) {
            const QByteArray number = QByteArray::number(i);
            sources.append({QStringLiteral("f%1").arg(i),
                            "typedef logic [3:0] t" + number + "; module m" + number +
                                "; import p" + QByteArray::number(files - 1 - i) + "::*; t" +
                                QByteArray::number((i + 7) % files) +
                                " a; wire b, c, d; assign b = c & d; endmodule package p" + number +
                                "; localparam X = 3; endpackage\n"});
        }
        const DesignSources design = designOf(sources);
        const PreprocessedText text = textOf(sources);
        const qint64 start = TarnTest::processorNanoseconds();
        const DesignScopes scopes(design, text);
        const SourceOrder order(scopes, findTypeUses(design, text, scopes));
        return order.pieces().size() >= files ? TarnTest::processorNanoseconds() - start : -1;
    };
    constexpr int Files = 1500;
    timeOf(Files);
    const qint64 small = timeOf(Files);
    const qint64 large = timeOf(8 * Files);
    const auto piecesOf = [](int packages) {
        QByteArray library;
        QByteArray user = "module top; ";
        for (int i = 0; i < packages; ++i) {
            const QByteArray number = QByteArray::number(i);
            library += "package p" + number + ";\n\n\n\nendpackage\n";
            user += "import p" + number + "::*; ";
        }
        const Sources sources = {{QStringLiteral("top"), user}, {QStringLiteral("-v v"), library}};
        return Order(sources).order.pieces().size();
    };
    QCOMPARE(piecesOf(2000), 3);
    QVERIFY2(small > 0 && large < 24 * small,
             qPrintable(QStringLiteral("%1 ns and %2 ns").arg(small).arg(large)));
}

TARN_TEST_MAIN(TestSourceOrder)
#include "tst_sourceorder.moc"
