// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/modules/verilogunits.h>
#include <netweir/internal/sources/preprocessedtext.h>
#include <netweir/internal/verilog/modulescan.h>

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR::Internal;

namespace {

/// The units of a source a.v as text: line, kind, name and uses of each. "?" follows the name of a
/// conditional use, "." that of one without a list of connections.
QString unitsIn(const QByteArray &source)
{
    const PreprocessedText text("`line 1 \"a\" 1\n" + source, {{"a", QStringLiteral("a.v")}}, {});
    ModuleScan scan;
    scanModules(text.texts()[0], 0, true, &scan);
    QStringList result;
    for (const DeclaredUnit &unit : verilogUnits(scan, text)) {
        const char *const kind = unit.kind == DeclaredUnit::Module    ? "module"
                                 : unit.kind == DeclaredUnit::Outside ? "outside"
                                                                      : "other";
        QString words = QStringLiteral("%1 %2").arg(unit.place.line).arg(QLatin1String(kind));
        if (!unit.name.isEmpty())
            words += ' ' + unit.name;
        if (unit.nested)
            words += QLatin1String(" nested");
        for (const UnitUse &use : unit.uses)
            words += ' ' + use.unit + (use.conditional ? "?" : "") + (use.bare ? "." : "");
        result.append(words);
    }
    return result.join(QLatin1String("; "));
}

} // namespace

class TestVerilogUnits : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void unitsAreThoseOfTheText_data();
    void unitsAreThoseOfTheText();
    void portsAndParametersAreDeclared();
    void libraryFilesAreBackups();
};

void TestVerilogUnits::unitsAreThoseOfTheText_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *source, const char *expected) {
        QTest::newRow(name) << QByteArray(source) << QString::fromLatin1(expected);
    };
    row("none", "", "");
    row("package", "package p; endpackage", "");
    row("uses", "module b; endmodule\nmodule a; b u(), v(); c w(); endmodule",
        "1 module b; 2 module a b c");
    row("conditional", "module a; if (P) b u(); endmodule", "1 module a b?");
    row("without parentheses", "module a; b u; endmodule", "1 module a b.");
    row("nested", "module a;\nmodule b; endmodule endmodule", "1 module a; 2 module b nested");
    row("other kinds", "interface i; endinterface program p; endprogram module a; endmodule",
        "1 other i; 1 other p; 1 module a");
    row("bound", "module a; endmodule bind a b u();", "1 module a; 0 outside b?");
}

void TestVerilogUnits::unitsAreThoseOfTheText()
{
    QFETCH(QByteArray, source);
    QTEST(unitsIn(source), "expected");
}

void TestVerilogUnits::portsAndParametersAreDeclared()
{
    const PreprocessedText text("`line 1 \"a\" 1\nmodule m #(parameter W = 1)(input [1:0] i, "
                                "output o, inout x); endmodule\n",
                                {{"a", QStringLiteral("a.v")}}, {});
    ModuleScan scan;
    scanModules(text.texts()[0], 0, true, &scan);
    const DeclaredUnit unit = verilogUnits(scan, text).front();
    QCOMPARE(unit.generics, QStringList{"W"});
    QCOMPARE(unit.ports.size(), std::size_t(3));
    QCOMPARE(unit.ports[0].name, QStringLiteral("i"));
    QVERIFY(unit.ports[0].isVector && !unit.ports[1].isVector);
    QVERIFY(unit.ports[0].direction == PortDirection::Input);
    QVERIFY(unit.ports[1].direction == PortDirection::Output);
    QVERIFY(unit.ports[2].direction == PortDirection::Inout);
}

void TestVerilogUnits::libraryFilesAreBackups()
{
    const PreprocessedText text("`line 1 \"a\" 1\nmodule a; endmodule",
                                {{"a", QStringLiteral("a.v")}}, {});
    ModuleScan scan;
    scanModules(text.texts()[0], 0, true, &scan);
    QVERIFY(!verilogUnits(scan, text).front().backup);
    scan.units[0].library = true;
    QVERIFY(verilogUnits(scan, text).front().backup);
}

QTEST_GUILESS_MAIN(TestVerilogUnits)
#include "tst_verilogunits.moc"
