// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/modules/designmodules.h>
#include <netweir/internal/modules/verilogunits.h>
#include <netweir/internal/parts/designunits.h>
#include <netweir/internal/sources/preprocessedtext.h>

#include <support/testcase.h>

#include <QApplication>
#include <QtTest>

using namespace NETWEIR::Internal;

namespace {

/// The scan of a source a.v and a library file l.v.
class Design
{
public:
    explicit Design(const QByteArray &source, const QByteArray &library = {})
        : m_text("`line 1 \"a\" 1\n" + source + "\n`line 1 \"l\" 1\n" + library,
                 {{"a", QStringLiteral("a.v")}, {"l", QStringLiteral("l.v")}}, {})
        , m_scan(scanOf(m_text))
        , m_modules(m_scan, m_text)
        , m_declared(verilogUnits(m_scan, m_text))
        , m_units(m_declared)
    {
    }

    const DesignModules *operator->() const { return &m_modules; }
    const DesignUnits &units() const { return m_units; }

private:
    static ModuleScan scanOf(const PreprocessedText &text)
    {
        ModuleScan scan;
        scanModules(text.texts()[0], 0, true, &scan);
        const int before = scan.units.size();
        scanModules(text.texts()[1], 1, true, &scan);
        for (int unit = before; unit < scan.units.size(); ++unit)
            scan.units[unit].library = true;
        return scan;
    }

    PreprocessedText m_text;
    ModuleScan m_scan;
    DesignModules m_modules;
    std::vector<DeclaredUnit> m_declared;
    DesignUnits m_units;
};

QString joined(const QStringList &list)
{
    return list.join(QLatin1Char(' '));
}

void addColumns()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("expected");
}

void row(const char *name, const char *source, const char *expected)
{
    QTest::newRow(name) << QByteArray(source) << QString::fromLatin1(expected);
}

} // namespace

class TestDesignModules : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void topsAreNotInstantiated_data();
    void topsAreNotInstantiated();
    void libraryModulesAreNoTops();
    void warningsNameCandidates_data();
    void warningsNameCandidates();
    void secondDefinitionsAreErrors();
    void circlesWithoutATopAreErrors_data();
    void circlesWithoutATopAreErrors();
    void endlessCirclesAreErrors_data();
    void endlessCirclesAreErrors();
    void mutualRecursionIsAnError_data();
    void mutualRecursionIsAnError();
    void longCirclesAreCut();
    void arraysOfSeveralDimensionsAreErrors();
    void tiedNetsComeByModule();
    void unknownInstantiationsAreFound();
    void missingModulesAreThoseThatAreNeeded();
};

void TestDesignModules::topsAreNotInstantiated_data()
{
    addColumns();
    row("none", "", "");
    row("one", "module b; endmodule module a; b u(); endmodule", "a");
    row("several", "module b; endmodule module a; endmodule", "b a");
    row("of its own", "module a; a u(); endmodule", "a");
    row("bound", "module a; endmodule module b; endmodule bind a b u();", "a");
    row("without parentheses", "module a; b u; endmodule module b; endmodule", "a");
    row("nested", "module a; module b; endmodule endmodule", "a");
    row("others", "interface i; endinterface program p; endprogram module a; endmodule", "a");
    row("declared twice", "module a; endmodule module a; endmodule", "a");
}

void TestDesignModules::topsAreNotInstantiated()
{
    QFETCH(QByteArray, source);
    QFETCH(QString, expected);
    const Design design(source);
    QCOMPARE(joined(design.units().tops(QString())), expected);
    QCOMPARE(joined(design.units().tops(QStringLiteral("none"))), expected);
    const QStringList modules = design.units().modules();
    for (const QString &module : modules)
        QCOMPARE(joined(design.units().tops(module)), module);
}

void TestDesignModules::libraryModulesAreNoTops()
{
    const Design design("module a; c u(); endmodule",
                        "module b; a u(); endmodule module c; endmodule");
    QCOMPARE(joined(design.units().modules()), QStringLiteral("a"));
    QCOMPARE(joined(design.units().tops(QString())), QString()); // The library module b uses it.
    QVERIFY(design->unknownInstantiations().isEmpty());
}

void TestDesignModules::warningsNameCandidates_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("top");
    QTest::addColumn<QString>("expected"); // Behind "WARNING: ".
    const auto add = [](const char *name, const char *source, const char *top,
                        const char *expected) {
        QTest::newRow(name) << QByteArray(source) << QString::fromLatin1(top)
                            << QString::fromLatin1(expected);
    };
    const char *const two = "module a; endmodule module b; endmodule";
    add("top", two, "b", "");
    add("only candidate", "module a; endmodule", "", "");
    add("several", two, "", "The design has several candidates for the top module: a, b.");
    add("other top", two, "c",
        "The design has no module \"c\". Candidates for the top module: a, b.");
    add("other top in a circle", "module a; a u(); b v(); endmodule module b; a u(); endmodule",
        "c", "The design has no module \"c\".");
    add("bound", "module a; endmodule bind b a u();", "",
        "No top module: every module is instantiated or bound. Set the top module.");
    add("no module", "package p; endpackage", "a",
        "The sources define no module. Add the files that define the modules of the design.");
}

void TestDesignModules::warningsNameCandidates()
{
    QFETCH(QByteArray, source);
    QFETCH(QString, top);
    QFETCH(QString, expected);
    const QString found = Design(source).units().topWarnings(top).join(QLatin1Char('\n'));
    QCOMPARE(found, expected.isEmpty() ? QString() : QStringLiteral("WARNING: ") + expected);
}

void TestDesignModules::secondDefinitionsAreErrors()
{
    const Design design("module a; module a; endmodule endmodule\nmodule a; endmodule\n"
                        "interface a; endinterface\nmodule b; endmodule",
                        "module b; endmodule");
    const QString words =
        QStringLiteral("ERROR: a.v:%1: \"a\" is defined a second time; the first definition is in "
                       "a.v:1. Rename or remove one of them.");
    QCOMPARE(design.units().duplicateErrors(),
             QStringList({words.arg(QStringLiteral("2")), words.arg(QStringLiteral("3"))}));
}

void TestDesignModules::circlesWithoutATopAreErrors_data()
{
    addColumns();
    row("none", "module a; a u(); endmodule module b; endmodule", "");
    row("two", "module a; b u(); endmodule\nmodule b; if (P) a u(); endmodule",
        "ERROR: a.v:1: No top module: every module is instantiated by another one (a -> b -> a). "
        "Set the top module or break the circle.");
    row("behind others",
        "module a; b u(); endmodule module b; c v(); b u(); endmodule\n\n"
        "module c; a u(); endmodule",
        "ERROR: a.v:1: No top module: every module is instantiated by another one (a -> b -> c -> "
        "a). Set the top module or break the circle.");
}

void TestDesignModules::circlesWithoutATopAreErrors()
{
    QFETCH(QByteArray, source);
    const Design design(source);
    QTEST(design.units().circleError(design.units().tops(QString())), "expected");
    QCOMPARE(design.units().circleError({QStringLiteral("a")}), QString());
}

void TestDesignModules::endlessCirclesAreErrors_data()
{
    addColumns();
    const char *const words = "ERROR: a.v:%1: The instantiation never ends (%2). Break the circle "
                              "or end it with a generate condition.";
    const auto error = [words](int line, const char *circle) {
        return QString::fromLatin1(words).arg(line).arg(QLatin1String(circle)).toLatin1();
    };
    row("none", "module a; b u(); c v(); endmodule module b; c u(); endmodule module c; endmodule",
        "");
    row("itself", "module a; a u(); endmodule", error(1, "a -> a"));
    row("below the top",
        "module a; b u(); endmodule\nmodule b; c u(); endmodule\n"
        "module c; b u(); endmodule",
        error(2, "b -> c -> b"));
    row("under a condition", "module a; b u(); endmodule module b; if (P) a u(); endmodule", "");
    row("beside the top", "module a; endmodule module b; b u(); endmodule", "");
}

void TestDesignModules::endlessCirclesAreErrors()
{
    QFETCH(QByteArray, source);
    QTEST(Design(source).units().endlessError(QStringLiteral("a")), "expected");
    QCOMPARE(Design(source).units().endlessError(QStringLiteral("none")), QString());
}

void TestDesignModules::mutualRecursionIsAnError_data()
{
    addColumns();
    row("none", "module a; b u(); endmodule module b; endmodule", "");
    row("itself", "module a; a u(); endmodule", "");
    row("under a condition", "module a; b u(); endmodule\nmodule b; if (P) a u(); endmodule",
        "ERROR: a.v:1: Recursion through several modules (a -> b -> a) cannot be read. Break the "
        "circle or make it one module that instantiates itself.");
}

void TestDesignModules::mutualRecursionIsAnError()
{
    QFETCH(QByteArray, source);
    const Design design(source);
    QTEST(design.units().mutualError(QStringLiteral("a")), "expected");
    QCOMPARE(design->instantiatesItself(QStringLiteral("a")), source.contains("a; a u"));
    QVERIFY(!design->instantiatesItself(QStringLiteral("none")));
}

void TestDesignModules::longCirclesAreCut()
{
    QByteArray source;
    for (char name = 'a'; name < 'k'; ++name)
        source += QByteArray("module ") + name + "; " + char(name == 'j' ? 'a' : name + 1) +
                  " u(); endmodule ";
    const QString error = Design(source).units().endlessError(QStringLiteral("a"));
    QVERIFY2(error.contains(QLatin1String("(a -> b -> c -> d -> e -> f -> g -> h -> ... -> a)")),
             qPrintable(error));
}

void TestDesignModules::arraysOfSeveralDimensionsAreErrors()
{
    const Design design("module a; b u[1:0](), v(); b w[1:0]\n[2:0](); x y[1][2](); endmodule\n"
                        "module b; endmodule module c; b u[1][2](); endmodule\n"
                        "bind a b z[1][2]();");
    const QString words = QStringLiteral("ERROR: a.v:%1: Arrays of instances of \"b\" with several "
                                         "dimensions are not supported. Use one dimension, or "
                                         "generate loops.");
    QCOMPARE(design->dimensionErrors({QStringLiteral("a")}),
             QStringList({words.arg(1), words.arg(4)}));
}

void TestDesignModules::tiedNetsComeByModule()
{
    const Design design("module a; tran (x, y); endmodule module b; alias z = x; endmodule "
                        "module c; endmodule");
    const QHash<QString, QSet<QString>> tied = design->tiedNets();
    QCOMPARE(tied.size(), 2);
    QCOMPARE(tied.value(QStringLiteral("a")),
             QSet<QString>({QStringLiteral("x"), QStringLiteral("y")}));
    QCOMPARE(tied.value(QStringLiteral("b")),
             QSet<QString>({QStringLiteral("z"), QStringLiteral("x")}));
}

void TestDesignModules::unknownInstantiationsAreFound()
{
    const Design design("module a; x u(); b v(); t w; x y(); endmodule module b; endmodule "
                        "bind a z u();",
                        "module c; x l(); endmodule");
    QByteArrayList found;
    for (const Instantiation &instantiation : design->unknownInstantiations())
        found.append(instantiation.module + ' ' + instantiation.instances.join(','));
    QCOMPARE(found.join(';'), QByteArray("x u;x y;x l;z u"));
}

/// Modules that only unused library modules need are not missing.
void TestDesignModules::missingModulesAreThoseThatAreNeeded()
{
    const Design design("module a; x u(); c v(); t w; x y(); endmodule bind a z u();",
                        "module c; d l(); endmodule module d; y u(); endmodule "
                        "module e; unused u(); endmodule");
    QCOMPARE(design->missingModules().join(' '), QByteArray("x t y z"));
}

TARN_TEST_MAIN(TestDesignModules)
#include "tst_designmodules.moc"
