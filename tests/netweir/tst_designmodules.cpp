// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/modules/designmodules.h>
#include <netweir/internal/modules/foreignunits.h>
#include <netweir/internal/sources/preprocessedtext.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

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
    {
    }

    const DesignModules *operator->() const { return &m_modules; }

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
};

} // namespace

class TestDesignModules : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void modulesMayInstantiateThemselves();
    void libraryModulesAreKnown();
    void arraysOfSeveralDimensionsAreErrors();
    void tiedNetsComeByModule();
    void unknownInstantiationsAreFound();
    void missingModulesAreThoseThatAreNeeded();
};

void TestDesignModules::modulesMayInstantiateThemselves()
{
    const Design design("module a; a u(); endmodule module b; a u(); endmodule");
    QVERIFY(design->instantiatesItself(QStringLiteral("a")));
    QVERIFY(!design->instantiatesItself(QStringLiteral("b")));
    QVERIFY(!design->instantiatesItself(QStringLiteral("none")));
}

void TestDesignModules::libraryModulesAreKnown()
{
    const Design design("module a; c u(); endmodule", "module c; endmodule");
    QVERIFY(design->unknownInstantiations().isEmpty());
}

void TestDesignModules::arraysOfSeveralDimensionsAreErrors()
{
    const Design design("module a; b u[1:0](), v(); b w[1:0]\n[2:0](); x y[1][2](); endmodule\n"
                        "module b; endmodule module c; b u[1][2](); endmodule\n"
                        "bind a b z[1][2]();");
    const QString words = QStringLiteral("ERROR: a.v:%1: Arrays of instances of \"b\" with several "
                                         "dimensions are not supported. Use one dimension, or "
                                         "generate loops.");
    QCOMPARE(design->dimensionErrors({QStringLiteral("a")}, ForeignUnits()),
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
    QCOMPARE(design->missingModules(ForeignUnits()).join(' '), QByteArray("x t y z"));
}

TARN_TEST_MAIN(TestDesignModules)
#include "tst_designmodules.moc"
