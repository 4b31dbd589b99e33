// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/librarysymbols.h>
#include <support/testcase.h>

#include <QRegularExpression>
#include <QTest>

using namespace TarnTest;

/// The libraries of the extractor as files: what they export.
class TestLibrary : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void exportsThePublicClassesAlone_data();
    void exportsThePublicClassesAlone();
};

void TestLibrary::exportsThePublicClassesAlone_data()
{
    QTest::addColumn<QString>("library");
    QTest::addColumn<QStringList>("expected");
    const QString extraction = QStringLiteral("NETWEIR::DesignExtraction::");
    const QString monitor = QStringLiteral("NETWEIR::ExtractionMonitor::");
    const QString builder = QStringLiteral("NETWEIR::NetlistBuilder::");
    const QString netlist = QStringLiteral("NETWEIR::RtlNetlist::");
    QTest::newRow("netlist")
        << NETLIST_LIBRARY_FILE
        << QStringList({
               extraction + "DesignExtraction()",
               extraction + "DesignExtraction(QMap<QString, QVariant> const&)",
               extraction + "buildNetlist(QStringList*, NETWEIR::ExtractionMonitor*)",
               extraction + "findModules(QStringList*, QStringList*, QStringList*, "
                            "NETWEIR::ExtractionMonitor*)",
               extraction + "spentMilliseconds() const",
               extraction + "~DesignExtraction()",
               monitor + "ExtractionMonitor()",
               monitor + "wake()",
               monitor + "~ExtractionMonitor()",
               "NETWEIR::Hierachy::netbusesIncludeSub() const",
               "NETWEIR::Hierachy::singleNetsIncludeSub() const",
               builder + "NetlistBuilder(QString const&)",
               builder + "addBus(NETWEIR::Hierachy*, QString const&, int, int, "
                         "std::vector<NETWEIR::NetMarks, std::allocator<NETWEIR::NetMarks> > "
                         "const&)",
               builder + "addHierachy(NETWEIR::Hierachy*, QString const&, QString const&)",
               builder + "addNet(NETWEIR::Hierachy*, QString const&, NETWEIR::NetMarks)",
               builder + "setUsesJtagPrimitive(bool)",
               builder + "take()",
               builder + "top() const",
               builder + "~NetlistBuilder()",
               netlist + "RtlNetlist(std::unique_ptr<NETWEIR::RtlNetlist::Private, "
                         "std::default_delete<NETWEIR::RtlNetlist::Private> >)",
               netlist + "findNet(QString const&) const",
               netlist + "top() const",
               netlist + "usesJtagPrimitive() const",
               netlist + "~RtlNetlist()",
               "typeinfo for NETWEIR::ExtractionMonitor",
               "typeinfo name for NETWEIR::ExtractionMonitor",
               "vtable for NETWEIR::ExtractionMonitor",
           });
    QTest::newRow("netweir")
        << NETWEIR_LIBRARY_FILE
        << QStringList({
               "NETWEIR::catchRtlModules(QStringList&, QStringList&, QStringList&, "
               "QMap<QString, QVariant>&, QWidget*)",
               "NETWEIR::catchRtlNetsWithProgressDialog(NETWEIR::RtlNetlist**, QStringList&, "
               "QWidget*)",
           });
}

void TestLibrary::exportsThePublicClassesAlone()
{
    QFETCH(QString, library);
    QFETCH(QStringList, expected);
    // Templates of the standard library are exported whatever types they are made for.
    const QRegularExpression ofNetweir("^NETWEIR::|for NETWEIR::");
    QCOMPARE(exportedSymbols(library).filter(ofNetweir).join('\n'), expected.join('\n'));
}

QTEST_GUILESS_MAIN(TestLibrary)
#include "tst_library.moc"
