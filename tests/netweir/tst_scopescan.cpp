// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/verilog/scopescan.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

#include <algorithm>

using namespace NETWEIR::Internal;

namespace {

QByteArray sorted(const QSet<QByteArray> &names)
{
    QByteArrayList list = names.values();
    std::sort(list.begin(), list.end());
    return list.join(' ');
}

QByteArray usesText(const QVector<PackageUse> &uses)
{
    QByteArray text;
    for (const PackageUse &use : uses)
        text += (use.imported ? " import " : " use ") + use.package + '@' +
                QByteArray::number(use.offset) + ':' + QByteArray::number(use.line);
    return text;
}

/// A line for each block, "PACKAGE@LINE <text> types imports uses", then one for the uses outside
/// and one for all types.
QByteArray scopesText(const QByteArray &text, bool systemVerilog = true)
{
    const TextScopes scopes = scanScopes(text, systemVerilog);
    QByteArrayList lines;
    for (const ScopeBlock &block : scopes.blocks) {
        QByteArray line = block.package + '@' + QByteArray::number(block.line) + " <" +
                          text.mid(block.range.begin, block.range.end - block.range.begin) + '>';
        if (!block.types.isEmpty())
            line += " types " + sorted(block.types);
        for (const auto &import : block.imports)
            line += " brings " + import.first +
                    "::" + (import.second.isNull() ? QByteArray("*") : import.second);
        lines.append(line + usesText(block.uses));
    }
    if (!scopes.uses.isEmpty())
        lines.append("outside" + usesText(scopes.uses));
    if (!scopes.types.isEmpty())
        lines.append("all types " + sorted(scopes.types));
    return lines.join('\n');
}

} // namespace

class TestScopeScan : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void findsBlocks_data();
    void findsBlocks();
    void findsUses_data();
    void findsUses();
    void findsMentions();
};

void TestScopeScan::findsBlocks_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const char *text, const char *expected) {
        QTest::newRow(name) << QByteArray(text) << QByteArray(expected);
    };
    row("nothing", "", "");
    row("package", "x\npackage p; wire a; endpackage y", "p@2 <package p; wire a; endpackage >");
    row("package with a label", "package automatic p; endpackage : p y",
        "p@1 <package automatic p; endpackage : p >");
    row("package without an end", "package p; wire a;", "p@1 <package p; wire a;>");
    row("package in a package", "package p; package q; endpackage",
        "p@1 <package p; >\nq@1 <package q; endpackage>");
    row("package without a name", "package", "?@1 <package>");
    row("types of a package",
        "package p; typedef int t; typedef struct { int a; } s[2]; class c; class d; endclass "
        "endclass endpackage",
        "p@1 <package p; typedef int t; typedef struct { int a; } s[2]; class c; class d; endclass "
        "endclass endpackage> types c d s t\nall types c d s t");
    row("covergroup of a package", "package p; covergroup g; endgroup endpackage",
        "p@1 <package p; covergroup g; endgroup endpackage> types g\nall types g");
    row("what functions declare", "package p; function f; typedef int t; endfunction endpackage",
        "p@1 <package p; function f; typedef int t; endfunction endpackage>");
    row("type", "typedef enum {\nA } t; x", "@1 <typedef enum {\nA } t; > types t\nall types t");
    row("class", "class c; endclass : c x", "@1 <class c; endclass : c > types c\nall types c");
    row("forward class", "typedef class c; x", "@1 <typedef class c; > types c\nall types c");
    row("virtual class", "virtual class c; endclass x",
        "@1 <virtual class c; endclass > types c\nall types c");
    row("interface class", "interface class c; endclass x",
        "@1 <interface class c; endclass > types c\nall types c");
    row("import", "import p::*, q::a; x",
        "@1 <import p::*, q::a; > brings p::* brings q::a import p@7:1 import q@13:1");
    row("exported function", "export \"DPI-C\" function f; x", "");
    row("types of units",
        "module m #(type T = int, U = T); typedef int t; class c; endclass endmodule "
        "interface i; typedef int s; endinterface program p; typedef int r; endprogram x",
        "all types T U c r s t");
    row("type after a covergroup", "covergroup g; endgroup typedef int t; x",
        "@1 <typedef int t; > types t\nall types g t");
    row("type after a module", "module m; endmodule typedef int t; x",
        "@1 <typedef int t; > types t\nall types t");
    row("interface in an interface",
        "interface i; virtual interface j v; endinterface typedef int t; x",
        "@1 <typedef int t; > types t\nall types t");
    row("task of a package",
        "package p; task f; typedef int t; endtask class c; endclass endpackage",
        "p@1 <package p; task f; typedef int t; endtask class c; endclass endpackage> types c\nall "
        "types c");
    row("module in a module", "module m; module n; endmodule typedef int t; endmodule",
        "all types t");
    row("declaration of a module", "extern module m(input a); typedef int t;",
        "@1 <typedef int t;> types t\nall types t");
    row("virtual interface", "virtual interface i v; typedef int t;",
        "@1 <typedef int t;> types t\nall types t");
    row("old names", "wire package, class; typedef int t;", "");
}

void TestScopeScan::findsBlocks()
{
    QFETCH(QByteArray, text);
    const bool isSystemVerilog = !QByteArray(QTest::currentDataTag()).startsWith("old");
    QTEST(scopesText(text, isSystemVerilog), "expected");
}

void TestScopeScan::findsUses_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("expected"); // Its last line.
    const auto row = [](const char *name, const char *text, const char *expected) {
        QTest::newRow(name) << QByteArray(text) << QByteArray(expected);
    };
    row("scope", "module m; p::t a; endmodule", "outside use p@10:1");
    row("import in a module", "module m;\nimport p::*; endmodule", "outside import p@17:2");
    row("each once", "module m; p::t a; p::t b; q::t c; endmodule",
        "outside use p@10:1 use q@26:1");
    row("imported later", "module m; p::t a; endmodule module n; import p::*; endmodule",
        "outside import p@10:1");
    row("scope in a scope", "module m; p::c::t a; s.q::t b; endmodule", "outside use p@10:1");
    row("built in", "module m; std::t a; $unit::t b; process::self(); endmodule", "");
    row("in a package", "package q; p::t a; endpackage",
        "q@1 <package q; p::t a; endpackage> use p@11:1");
    row("in a string", "module m; initial f(\"p::t\"); endmodule", "");
}

void TestScopeScan::findsUses()
{
    QFETCH(QByteArray, text);
    QTEST(scopesText(text).split('\n').last(), "expected");
}

void TestScopeScan::findsMentions()
{
    QByteArray found;
    for (const NameMention &mention :
         mentionsOf({"t", "module", "u"}, "module t; t a; p::t b; c.t; \\u ; // t\n\"t\" tt"))
        found += mention.name + '@' + QByteArray::number(mention.offset) + ' ';
    QCOMPARE(found, QByteArray("t@7 t@10 u@28 "));
}

TARN_TEST_MAIN(TestScopeScan)
#include "tst_scopescan.moc"
