// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "fakelanguage.h"
#include "netlisttext.h"

#include <netweir/internal/dialog/extractiondialog.h>
#include <netweir/internal/join/designelaborator.h>
#include <netweir/internal/tool/extractionprogress.h>

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR;
using namespace NETWEIR::Internal;
using namespace TarnTest;

namespace {

constexpr int NoLimit = -1;

/// A design in Verilog and VHDL, or only in one of them, with the units of fakelanguage.h.
class Design
{
public:
    explicit Design(const QString &units = QString(), const QString &top = QString())
    {
        sources.top = top;
        sources.files.append(SourceFile());
        for (const FakeUnit &unit : fakeUnitsOf(units)) {
            const bool isVhdl = unit.declared.language == Language::Vhdl;
            (isVhdl ? vhdl : verilog).units.push_back(unit);
        }
    }

    DesignElaborator *start()
    {
        std::vector<LanguageElaborator> languages;
        if (!verilog.units.empty())
            languages.push_back({Language::Verilog, std::make_unique<FakePartElaborator>(
                                                        Language::Verilog, &verilog)});
        if (!vhdl.units.empty())
            languages.push_back(
                {Language::Vhdl, std::make_unique<FakePartElaborator>(Language::Vhdl, &vhdl)});
        m_elaborator = std::make_unique<DesignElaborator>(sources, std::move(languages));
        return m_elaborator.get();
    }

    /// The netlist as text, or the messages when there is none.
    QString read()
    {
        ExtractionProgress progress(nullptr);
        DesignElaborator *elaborator = start();
        elaborator->elaborate(&progress, NoLimit);
        const std::unique_ptr<RtlNetlist> netlist = elaborator->buildNetlist(&progress);
        usesJtag = netlist && netlist->usesJtagPrimitive();
        return netlist ? netlistText(netlist->top())
                       : elaborator->messages().join(QLatin1Char('\n'));
    }

    DesignSources sources;
    FakeLanguage verilog;
    FakeLanguage vhdl;
    bool usesJtag = false;

private:
    std::unique_ptr<DesignElaborator> m_elaborator;
};

void addColumns()
{
    QTest::addColumn<QString>("units");
    QTest::addColumn<QString>("expected");
}

void row(const char *name, const char *units, const char *expected)
{
    QTest::newRow(name) << QString::fromLatin1(units) << QString::fromLatin1(expected);
}

} // namespace

class TestDesignElaborator : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void partsAreJoined_data();
    void partsAreJoined();
    void equalRootsAreElaboratedOnce();
    void topHasTheNameThatWasChosen_data();
    void topHasTheNameThatWasChosen();
    void singleLanguageIsReadWhenTheNetlistIsBuilt();
    void languagesAreScannedWithTheUnitsOfTheOther();
    void errorsAreReported_data();
    void errorsAreReported();
    void messagesComeInTheOrderOfThePhases();
    void errorsOfOneLanguageDoNotHideThoseOfTheOther_data();
    void errorsOfOneLanguageDoNotHideThoseOfTheOther();
    void unusedLanguageIsSearchedForErrors();
    void severalTopsAreNotElaborated();
    void topWithoutSourcesIsNotMissed();
    void runningToolIsWaitedForAgain();
    void cancellingEndsTheRounds();
    void failureToReadIsAnError_data();
    void failureToReadIsAnError();
    void jtagPrimitiveIsFoundInEachPart_data();
    void jtagPrimitiveIsFoundInEachPart();
    void manyRootsTakeLinearTime();
};

void TestDesignElaborator::partsAreJoined_data()
{
    addColumns();
    row("Verilog alone", "module top | in a 2 | l -", "top : top\n    a[1:0] OO\n    l : own\n");
    row("VHDL alone", "work.entity top | in a 2 | l -", "top : top\n    a[1:0] OO\n    l : own\n");
    row("VHDL below Verilog",
        "module top | in a 2 | u Leaf A<a, l -, v leaf a<0\nwork.entity Leaf | in a 2",
        "top : top\n"
        "    a[1:0] OO\n"
        "    u : Leaf\n"
        "        a[1:0] OO\n"
        "    l : own\n"
        "    v : Leaf\n"
        "        a[1:0] ..\n");
    row("Verilog below VHDL",
        "work.entity top | in a 1, out q 1 | u LEAF D<a, v leaf d<0\nmodule Leaf | in d 1, out q 2",
        "top : top\n"
        "    a[0:0] O\n"
        "    q[0:0] O\n"
        "    u : Leaf\n"
        "        d[0:0] O\n"
        "        q[1:0] OO\n"
        "    v : Leaf\n"
        "        d[0:0] .\n"
        "        q[1:0] OO\n");
    row("three levels",
        "module top | in a 1 | u e a<a b<0, w e a<0 b<a\n"
        "work.entity e | in a 1, in b 1 | v m x<a y<b, l -\n"
        "module m | in x 1, in y 1 | z f c<x d<y\n"
        "work.entity f | in c 1, in d 1",
        "top : top\n"
        "    a[0:0] O\n"
        "    u : e\n"
        "        a[0:0] O\n"
        "        b[0:0] .\n"
        "        v : m\n"
        "            x[0:0] O\n"
        "            y[0:0] .\n"
        "            z : f\n"
        "                c[0:0] O\n"
        "                d[0:0] .\n"
        "        l : own\n"
        "    w : e\n"
        "        a[0:0] .\n"
        "        b[0:0] O\n"
        "        v : m\n"
        "            x[0:0] .\n"
        "            y[0:0] O\n"
        "            z : f\n"
        "                c[0:0] .\n"
        "                d[0:0] O\n"
        "        l : own\n");
    row("recursion that ends",
        "module top | in a 1 | u e #W=2\nwork.entity e | in c 1 | v m #W-\n"
        "module m | in d 1 | w e #W-",
        "top : top\n"
        "    a[0:0] O\n"
        "    u : e\n"
        "        c[0:0] .\n"
        "        v : m\n"
        "            d[0:0] .\n"
        "            w : e\n"
        "                c[0:0] .\n");
}

void TestDesignElaborator::partsAreJoined()
{
    QFETCH(QString, units);
    Design design(units);
    QTEST(design.read(), "expected");
}

void TestDesignElaborator::equalRootsAreElaboratedOnce()
{
    Design design(QStringLiteral("module top | in a 1 | u e #W=1, v E #W=1, w e #W=2, x f\n"
                                 "work.entity e | in c 1 | y m\nwork.entity f | in c 1 | z m\n"
                                 "module m | in d 1"));
    design.read();
    QCOMPARE(design.verilog.calls.filter(QStringLiteral("begin")),
             QStringList({"begin(top)", "begin(m)"}));
    QCOMPARE(design.vhdl.calls.filter(QStringLiteral("begin")), QStringList({"begin(e=1 e=2 f)"}));
}

void TestDesignElaborator::topHasTheNameThatWasChosen_data()
{
    QTest::addColumn<QString>("units");
    QTest::addColumn<QString>("top");
    QTest::addColumn<QString>("expected");
    const QString two = QStringLiteral("work.entity Top\nwork.entity Other\nmodule m");
    QTest::newRow("entity") << two << "Top"
                            << "Top : Top\n";
    QTest::newRow("entity in another case") << two << "tOP"
                                            << "tOP : tOP\n";
    QTest::newRow("module") << two << "m"
                            << "m : m\n";
    QTest::newRow("not chosen") << "work.entity Top"
                                << ""
                                << "Top : Top\n";
    QTest::newRow("not chosen, but wrong") << "work.entity Top"
                                           << "none"
                                           << "Top : Top\n";
}

void TestDesignElaborator::topHasTheNameThatWasChosen()
{
    QFETCH(QString, units);
    QFETCH(QString, top);
    Design design(units, top);
    QTEST(design.read(), "expected");
}

void TestDesignElaborator::singleLanguageIsReadWhenTheNetlistIsBuilt()
{
    Design design(QStringLiteral("module top"));
    ExtractionProgress progress(nullptr);
    DesignElaborator *elaborator = design.start();
    elaborator->elaborate(&progress, NoLimit);
    elaborator->elaborate(&progress, NoLimit);
    QCOMPARE(design.verilog.calls.mid(2), QStringList({"scan", "0 foreign", "begin(top)"}));
    QVERIFY(elaborator->buildNetlist(&progress));
    QCOMPARE(design.verilog.calls.last(), QStringLiteral("read"));
}

void TestDesignElaborator::languagesAreScannedWithTheUnitsOfTheOther()
{
    Design design(QStringLiteral("module top\nwork.entity a\nwork.entity b"));
    ExtractionProgress progress(nullptr);
    DesignElaborator *elaborator = design.start();
    elaborator->elaborate(&progress, NoLimit);
    QCOMPARE(design.vhdl.calls.mid(0, 4),
             QStringList({"0 foreign", "scan", "0 foreign", "1 foreign"}));
    QCOMPARE(design.verilog.calls.mid(0, 4),
             QStringList({"0 foreign", "2 foreign", "scan", "2 foreign"}));
    QCOMPARE(elaborator->tops(), QStringList({"top", "a", "b"}));
    QCOMPARE(elaborator->modules(), QStringList({"top", "a", "b"}));
}

void TestDesignElaborator::errorsAreReported_data()
{
    addColumns();
    row("width", "work.entity top | in a 2 | u m d<a\nmodule m | in d 3",
        "ERROR: a:1:5: The port \"d\" of \"m\" has 3 bits, but 2 in its component. Give both the "
        "same width.");
    row("port", "module top | in a 2 | u e b<a\nwork.entity e | in d 2",
        "ERROR: a:1:5: \"e\" has no port \"b\". Correct the name in the instance or its "
        "component.");
    row("circle", "module top | | u e\nwork.entity e | | v top",
        "ERROR: a:1: No top module: every module is instantiated by another one (top -> e -> top). "
        "Set the top module or break the circle.");
    row("endless with the same values",
        "module top | | u e #W=1\nwork.entity e | | v m #W=1\nmodule m | | w e #W=1",
        "ERROR: a:1:5: The instantiation never ends (e -> m -> e). Break the circle or end it with "
        "a generate condition.");
    row("endless with other values",
        "module top | | u e #W+\nwork.entity e | | v m #W+\n"
        "module m | | w e #W+",
        "ERROR: a:2:5: The instantiation of \"m\" may never end: the design has more than 32 "
        "changes between languages, one below another, or more than 10000 different instances at "
        "them.");
    row("endless without condition", "module top | | u e\nwork.entity e | | v m\nmodule m | | w e",
        "ERROR: a:2: The instantiation never ends (e -> m -> e). Break the circle or end it with "
        "a generate condition.");
}

void TestDesignElaborator::errorsAreReported()
{
    QFETCH(QString, units);
    Design design(units);
    QTEST(design.read(), "expected");
}

void TestDesignElaborator::messagesComeInTheOrderOfThePhases()
{
    Design design(QStringLiteral("module top\nwork.entity a\nwork.entity A"),
                  QStringLiteral("top"));
    design.verilog.found = QStringList{"WARNING: 1"};
    design.vhdl.found = QStringList{"WARNING: 2"};
    design.verilog.elaborating = QStringList{"WARNING: 4"};
    design.vhdl.elaborating = QStringList{"ERROR: 5"};
    QCOMPARE(design.read(),
             QStringLiteral("WARNING: 1\nWARNING: 2\nERROR: a:3: \"A\" is defined a second time; "
                            "the first definition is in a:2. Rename or remove one of them.\n"
                            "WARNING: 4\nERROR: 5"));
}

void TestDesignElaborator::errorsOfOneLanguageDoNotHideThoseOfTheOther_data()
{
    QTest::addColumn<QStringList>("found");
    QTest::addColumn<QStringList>("elaborating");
    QTest::addColumn<QString>("readError");
    QTest::addColumn<QString>("expected");
    QTest::newRow("while scanning")
        << QStringList{"ERROR: bad"} << QStringList() << QString() << "ERROR: bad\nERROR: worse";
    QTest::newRow("while elaborating")
        << QStringList() << QStringList{"ERROR: bad"} << QString() << "ERROR: bad\nERROR: worse";
    QTest::newRow("while reading")
        << QStringList() << QStringList() << "odd"
        << "ERROR: worse\nERROR: The elaborated design cannot be read: odd";
}

void TestDesignElaborator::errorsOfOneLanguageDoNotHideThoseOfTheOther()
{
    Design design(QStringLiteral("module top | | u e\nwork.entity e"));
    QFETCH(QStringList, found);
    QFETCH(QStringList, elaborating);
    QFETCH(QString, readError);
    design.verilog.found = found;
    design.verilog.elaborating = elaborating;
    design.verilog.readError = readError;
    design.vhdl.elaborating = QStringList{"ERROR: worse"};
    QTEST(design.read(), "expected");
    QCOMPARE(design.vhdl.calls.filter(QStringLiteral("begin")), QStringList{"begin()"});
}

void TestDesignElaborator::unusedLanguageIsSearchedForErrors()
{
    Design design(QStringLiteral("module top\nwork.entity e"), QStringLiteral("top"));
    QCOMPARE(design.read(), QStringLiteral("top : top\n"));
    QCOMPARE(design.vhdl.calls.filter(QStringLiteral("begin")), QStringList{"begin()"});
    design.vhdl.elaborating = QStringList{"ERROR: bad"};
    QCOMPARE(design.read(), QStringLiteral("ERROR: bad"));
}

void TestDesignElaborator::severalTopsAreNotElaborated()
{
    Design design(QStringLiteral("module a\nwork.entity b"));
    QCOMPARE(design.read(), QStringLiteral("WARNING: The design has several candidates for the top "
                                           "module: a, b."));
    QCOMPARE(design.verilog.calls.filter(QStringLiteral("begin")), QStringList{"begin()"});
    QCOMPARE(design.vhdl.calls.filter(QStringLiteral("begin")), QStringList{"begin()"});
}

void TestDesignElaborator::topWithoutSourcesIsNotMissed()
{
    Design design(QStringLiteral("interface i"));
    QCOMPARE(design.read(),
             QStringLiteral("WARNING: The sources define no module. Add the files that define the "
                            "modules of the design."));
    design.sources.files.clear();
    QCOMPARE(design.read(), QString());
}

void TestDesignElaborator::runningToolIsWaitedForAgain()
{
    Design design(QStringLiteral("module top | | u e\nwork.entity e"));
    design.verilog.runs = 3;
    design.vhdl.runs = 2;
    ExtractionProgress progress(nullptr);
    DesignElaborator *elaborator = design.start();
    elaborator->elaborate(&progress, 100000);
    elaborator->elaborate(&progress, 100000);
    QVERIFY(!elaborator->buildNetlist(&progress));
    QVERIFY(!design.verilog.calls.contains(QStringLiteral("read")));
    elaborator->elaborate(&progress, 100000);
    QVERIFY(design.verilog.calls.contains(QStringLiteral("read")));
    QVERIFY(!design.vhdl.calls.contains(QStringLiteral("read")));
    QVERIFY(!elaborator->buildNetlist(&progress));
    elaborator->elaborate(&progress, NoLimit);
    QVERIFY(elaborator->buildNetlist(&progress));
    QCOMPARE(elaborator->messages(), QStringList());
}

void TestDesignElaborator::cancellingEndsTheRounds()
{
    Design design(QStringLiteral("module top | | u e\nwork.entity e"));
    QWidget window;
    ExtractionDialog dialog(&window);
    ExtractionProgress progress(&dialog);
    design.verilog.elaborating = QStringList{"ERROR: cancelled"};
    design.verilog.whileElaborating = [&window](ExtractionProgress *) {
        qDeleteAll(window.children()); // The dialog, which cancels.
    };
    DesignElaborator *elaborator = design.start();
    elaborator->elaborate(&progress, NoLimit);
    QVERIFY(progress.isCancelled());
    QCOMPARE(design.vhdl.calls.filter(QStringLiteral("begin")), QStringList());
    QCOMPARE(elaborator->messages(), QStringList{"ERROR: cancelled"});
    QVERIFY(!elaborator->buildNetlist(&progress));
}

void TestDesignElaborator::failureToReadIsAnError_data()
{
    QTest::addColumn<QString>("units");
    QTest::newRow("single language") << "module top";
    QTest::newRow("two languages") << "module top | | u e\nwork.entity e";
}

void TestDesignElaborator::failureToReadIsAnError()
{
    QFETCH(QString, units);
    Design design(units);
    design.verilog.readError = QStringLiteral("odd");
    QCOMPARE(design.read(), QStringLiteral("ERROR: The elaborated design cannot be read: odd"));
}

void TestDesignElaborator::jtagPrimitiveIsFoundInEachPart_data()
{
    QTest::addColumn<QString>("units");
    QTest::addColumn<bool>("inVerilog");
    QTest::addColumn<bool>("inVhdl");
    QTest::addColumn<bool>("expected");
    const QString two = QStringLiteral("module top | | u e\nwork.entity e");
    QTest::newRow("none") << two << false << false << false;
    QTest::newRow("Verilog") << two << true << false << true;
    QTest::newRow("VHDL") << two << false << true << true;
    QTest::newRow("module at a border")
        << "work.entity top | | u kx_jtag\nmodule KX_JTAG" << false << false << true;
    QTest::newRow("other module") << "work.entity top | | u kx_jtag\nmodule kx_jtag" << false
                                  << false << false;
    QTest::newRow("entity at a border")
        << "module top | | u kx_jtag\nwork.entity kx_jtag" << false << false << true;
}

void TestDesignElaborator::jtagPrimitiveIsFoundInEachPart()
{
    QFETCH(QString, units);
    QFETCH(bool, inVerilog);
    QFETCH(bool, inVhdl);
    Design design(units);
    design.verilog.usesJtag = inVerilog;
    design.vhdl.usesJtag = inVhdl;
    design.read();
    QTEST(design.usesJtag, "expected");
}

/// 20,000 instances of one unit, each with a border below it.
void TestDesignElaborator::manyRootsTakeLinearTime()
{
    constexpr int Instances = 20000;
    QStringList instances;
    for (int i = 0; i < Instances; ++i)
        instances += QStringLiteral("u%1 e").arg(i);
    Design design(QStringLiteral("module top | | %1\nwork.entity e | | v m\nmodule m")
                      .arg(instances.join(QStringLiteral(", "))));
    QElapsedTimer timer;
    timer.start();
    const QString text = design.read();
    QCOMPARE(text.count(QLatin1String(" : m\n")), Instances);
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
}

TARN_TEST_MAIN(TestDesignElaborator)
#include "tst_designelaborator.moc"
