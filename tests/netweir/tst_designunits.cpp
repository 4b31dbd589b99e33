// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "unittext.h"

#include <netweir/internal/parts/designunits.h>

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR::Internal;

namespace {

QString joined(const QStringList &list)
{
    return list.join(QLatin1Char(' '));
}

/// The units of a text in the form of unittext.h.
class Design
{
public:
    explicit Design(const QString &text)
        : m_units(TarnTest::unitsOf(text))
        , m_design(m_units)
    {
    }

    const DesignUnits *operator->() const { return &m_design; }

private:
    const std::vector<DeclaredUnit> m_units;
    const DesignUnits m_design;
};

void addColumns()
{
    QTest::addColumn<QString>("units");
    QTest::addColumn<QString>("expected");
}

void row(const char *name, const char *units, const QString &expected)
{
    QTest::newRow(name) << QString::fromLatin1(units) << expected;
}

void row(const char *name, const char *units, const char *expected)
{
    row(name, units, QString::fromLatin1(expected));
}

} // namespace

class TestDesignUnits : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void modulesAreListed_data();
    void modulesAreListed();
    void topsAreNotInstantiated_data();
    void topsAreNotInstantiated();
    void topMayBeChosen_data();
    void topMayBeChosen();
    void warningsNameCandidates_data();
    void warningsNameCandidates();
    void secondDefinitionsAreErrors_data();
    void secondDefinitionsAreErrors();
    void circlesWithoutATopAreErrors_data();
    void circlesWithoutATopAreErrors();
    void endlessCirclesAreErrors_data();
    void endlessCirclesAreErrors();
    void mutualRecursionOfModulesIsAnError_data();
    void mutualRecursionOfModulesIsAnError();
    void longCirclesAreCut();
};

void TestDesignUnits::modulesAreListed_data()
{
    addColumns();
    row("none", "", "");
    row("in the order of the sources", "module b\nwork.entity E\nmodule a", "b E a");
    row("nested", "module a\nnested b", "a b");
    row("other kinds", "interface i\nwork.configuration c\noutside a\nmodule a", "a");
    row("library files", "module a\nbackup module b", "a");
    row("declared twice", "module a\nmodule a", "a");
    row("of both languages", "module a\nwork.entity a", "a");
    row("differing in case", "module a\nwork.entity A\nwork.entity a", "a A");
    row("of two libraries", "x.entity a\ny.entity a\ny.entity b", "a b");
}

void TestDesignUnits::modulesAreListed()
{
    QFETCH(QString, units);
    QTEST(joined(Design(units)->modules()), "expected");
}

void TestDesignUnits::topsAreNotInstantiated_data()
{
    addColumns();
    row("none", "", "");
    row("one", "module b\nmodule a b", "a");
    row("several", "module b\nmodule a", "b a");
    row("of its own", "module a a", "a");
    row("bound", "module a\nmodule b\noutside b", "a");
    row("conditional", "module a b?\nmodule b", "a");
    row("nested", "module a\nnested b", "a");
    row("other kinds", "interface i\nmodule a\nwork.configuration c", "a");
    row("declared twice", "module a\nmodule a", "a");
    row("used by a library file", "module a\nbackup module l a", "");
    row("VHDL below Verilog", "module a e\nwork.entity E", "a");
    row("Verilog below VHDL", "module M\nwork.entity e m", "e");
    row("module below a module of its name in another case", "module M\nmodule a m", "M a");
    row("entity uses itself in another case", "work.entity e E", "e");
    row("entity below a module of its name", "module e E\nwork.entity E", "e");
    row("module and entity of one name", "module e\nwork.entity e", "e e");
    row("entities of other libraries", "x.entity a\nwork.entity b\ny.entity c", "b");
    row("entities of other libraries only", "x.entity a\nx.entity b a\ny.entity c", "b c");
    row("entity of a library below", "x.entity a\nwork.entity b x.a", "b");
    row("entity of the same name in a library", "x.entity a\nwork.entity a x.a", "a");
}

void TestDesignUnits::topsAreNotInstantiated()
{
    QFETCH(QString, units);
    QFETCH(QString, expected);
    const Design design(units);
    QCOMPARE(joined(design->tops(QString())), expected);
    QCOMPARE(joined(design->tops(QStringLiteral("none"))), expected);
    const QStringList modules = design->modules();
    for (const QString &module : modules)
        QCOMPARE(joined(design->tops(module)), module);
}

void TestDesignUnits::topMayBeChosen_data()
{
    QTest::addColumn<QString>("units");
    QTest::addColumn<QString>("top");
    QTest::addColumn<int>("line"); // 0 when there is no such unit.
    const auto add = [](const char *name, const char *units, const char *top, int line) {
        QTest::newRow(name) << QString::fromLatin1(units) << QString::fromLatin1(top) << line;
    };
    add("module", "module b a\nmodule a", "a", 2);
    add("module in another case", "module b\nmodule a", "A", 0);
    add("entity in another case", "module b\nwork.entity Top", "tOP", 2);
    add("module before entity", "work.entity a\nmodule a", "a", 2);
    add("own library first", "x.entity a\nwork.entity a", "a", 2);
    add("other library", "x.entity a\nwork.entity b", "a", 1);
    add("configuration", "work.entity a\nwork.configuration Cfg a", "cfg", 2);
    add("interface", "interface a", "a", 0);
    add("library file", "backup module a", "a", 0);
    add("configuration of a library file", "backup work.configuration a", "a", 0);
    add("none", "outside a", "", 0);
}

void TestDesignUnits::topMayBeChosen()
{
    QFETCH(QString, units);
    QFETCH(QString, top);
    QFETCH(int, line);
    const Design design(units);
    QCOMPARE(design->findTop(top) + 1, line);
    QCOMPARE(design->tops(top) == QStringList{top}, line > 0);
    QCOMPARE(design->topWarnings(top).isEmpty(), line > 0);
}

void TestDesignUnits::warningsNameCandidates_data()
{
    QTest::addColumn<QString>("units");
    QTest::addColumn<QString>("top");
    QTest::addColumn<QString>("expected"); // Behind "WARNING: ".
    const auto add = [](const char *name, const char *units, const char *top,
                        const char *expected) {
        QTest::newRow(name) << QString::fromLatin1(units) << QString::fromLatin1(top)
                            << QString::fromLatin1(expected);
    };
    add("top", "module a\nmodule b", "b", "");
    add("only candidate", "module a", "", "");
    add("several", "module a\nwork.entity B", "",
        "The design has several candidates for the top module: a, B.");
    add("other top", "module a\nmodule b", "c",
        "The design has no module \"c\". Candidates for the top module: a, b.");
    add("other top in a circle", "module a a b\nmodule b a", "c",
        "The design has no module \"c\".");
    add("bound", "module a\noutside a", "",
        "No top module: every module is instantiated or bound. Set the top module.");
    add("no module", "interface p", "a",
        "The sources define no module. Add the files that define the modules of the design.");
}

void TestDesignUnits::warningsNameCandidates()
{
    QFETCH(QString, units);
    QFETCH(QString, top);
    QFETCH(QString, expected);
    const QString found = Design(units)->topWarnings(top).join(QLatin1Char('\n'));
    QCOMPARE(found, expected.isEmpty() ? QString() : QStringLiteral("WARNING: ") + expected);
}

void TestDesignUnits::secondDefinitionsAreErrors_data()
{
    QTest::addColumn<QString>("units");
    QTest::addColumn<QStringList>("expected"); // Line and name of the second, line of the first.
    const QStringList none;
    const auto add = [](const char *name, const char *units, const QStringList &expected) {
        QTest::newRow(name) << QString::fromLatin1(units) << expected;
    };
    add("modules", "module a\ninterface a\nmodule b\nmodule a", {"2 a 1", "4 a 1"});
    add("nested", "module a\nnested a", none);
    add("library file", "module a\nbackup module a", none);
    add("several binds", "outside a\noutside b", none);
    add("case counts in Verilog", "module a\nmodule A", none);
    add("case does not count in VHDL", "work.entity a\nwork.configuration A", {"2 A 1"});
    add("case counts in extended identifiers", "work.entity \\a\\\nwork.entity \\A\\", none);
    add("libraries", "x.entity a\ny.entity a", none);
    add("languages", "module a\nwork.entity a", none);
}

void TestDesignUnits::secondDefinitionsAreErrors()
{
    QFETCH(QString, units);
    QFETCH(QStringList, expected);
    QStringList errors;
    for (const QString &words : qAsConst(expected)) {
        const QStringList parts = words.split(QLatin1Char(' '));
        errors += QStringLiteral("ERROR: a:%1: \"%2\" is defined a second time; the first "
                                 "definition is in a:%3. Rename or remove one of them.")
                      .arg(parts[0], parts[1], parts[2]);
    }
    QCOMPARE(Design(units)->duplicateErrors(), errors);
}

void TestDesignUnits::circlesWithoutATopAreErrors_data()
{
    addColumns();
    const auto error = [](int line, const char *circle) {
        return QStringLiteral("ERROR: a:%1: No top module: every module is instantiated by another "
                              "one (%2). Set the top module or break the circle.")
            .arg(line)
            .arg(QLatin1String(circle));
    };
    row("none", "module a\nmodule b", "");
    row("two", "module a b\nmodule b a?", error(1, "a -> b -> a"));
    row("behind others", "module a b\nmodule b c b\nmodule c a", error(1, "a -> b -> c -> a"));
    row("through both languages", "work.entity E m\nmodule M e", error(1, "E -> M -> E"));
}

void TestDesignUnits::circlesWithoutATopAreErrors()
{
    QFETCH(QString, units);
    const Design design(units);
    QTEST(design->circleError(design->tops(QString())), "expected");
    QCOMPARE(design->circleError({QStringLiteral("a")}), QString());
}

void TestDesignUnits::endlessCirclesAreErrors_data()
{
    addColumns();
    const auto error = [](int line, const char *circle) {
        return QStringLiteral("ERROR: a:%1: The instantiation never ends (%2). Break the circle or "
                              "end it with a generate condition.")
            .arg(line)
            .arg(QLatin1String(circle));
    };
    row("none", "module a b c\nmodule b c\nmodule c", "");
    row("itself", "module a a", error(1, "a -> a"));
    row("below the top", "module a b\nmodule b c\nmodule c b", error(2, "b -> c -> b"));
    row("through both languages", "module a E\nwork.entity e M\nmodule m e",
        error(2, "e -> m -> e"));
    row("under a condition", "module a b\nmodule b a?", "");
    row("beside the top", "module a\nmodule b b", "");
}

void TestDesignUnits::endlessCirclesAreErrors()
{
    QFETCH(QString, units);
    QTEST(Design(units)->endlessError(QStringLiteral("a")), "expected");
    QCOMPARE(Design(units)->endlessError(QStringLiteral("none")), QString());
}

void TestDesignUnits::mutualRecursionOfModulesIsAnError_data()
{
    addColumns();
    const auto error = [](int line, const char *circle) {
        return QStringLiteral("ERROR: a:%1: Recursion through several modules (%2) cannot be read. "
                              "Break the circle or make it one module that instantiates itself.")
            .arg(line)
            .arg(QLatin1String(circle));
    };
    row("none", "module a b\nmodule b", "");
    row("itself", "module a a?", "");
    row("under a condition", "module a b\nmodule b a?", error(1, "a -> b -> a"));
    row("below an entity", "work.entity a m\nmodule m n\nmodule n m?", error(2, "m -> n -> m"));
    row("entities", "work.entity a b\nwork.entity b a?", "");
    row("through both languages", "module a e\nwork.entity e a?", "");
    row("beside the top", "module a\nmodule b c\nmodule c b?", "");
}

void TestDesignUnits::mutualRecursionOfModulesIsAnError()
{
    QFETCH(QString, units);
    QTEST(Design(units)->mutualError(QStringLiteral("a")), "expected");
    QCOMPARE(Design(units)->mutualError(QStringLiteral("none")), QString());
}

void TestDesignUnits::longCirclesAreCut()
{
    QString units;
    for (char name = 'a'; name < 'k'; ++name)
        units += QStringLiteral("module %1 %2\n")
                     .arg(QLatin1Char(name))
                     .arg(QLatin1Char(name == 'j' ? 'a' : char(name + 1)));
    const QString error = Design(units)->endlessError(QStringLiteral("a"));
    QVERIFY2(error.contains(QLatin1String("(a -> b -> c -> d -> e -> f -> g -> h -> ... -> a)")),
             qPrintable(error));
}

QTEST_GUILESS_MAIN(TestDesignUnits)
#include "tst_designunits.moc"
