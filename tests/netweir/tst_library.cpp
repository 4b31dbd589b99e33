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
    void onlyTheDialogNeedsWindows();
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
               builder + "setIdentifiers(NETWEIR::Hierachy*, std::vector<int, "
                         "std::allocator<int> > const&)",
               builder + "setIdentifiers(NETWEIR::RtlNet*, std::vector<int, "
                         "std::allocator<int> > const&)",
               builder + "setIdentifiers(NETWEIR::RtlNetBus*, std::vector<int, "
                         "std::allocator<int> > const&)",
               builder + "setUsesJtagPrimitive(bool)",
               builder + "setVhdl(NETWEIR::Hierachy*, bool)",
               builder + "take()",
               builder + "top() const",
               builder + "~NetlistBuilder()",
               "NETWEIR::RtlNet::copyFullPathName(QString*, NETWEIR::RtlNet const*) const",
               "NETWEIR::RtlNet::fullPathName() const",
               "NETWEIR::RtlNet::name() const",
               "NETWEIR::RtlNetBus::BusName() const",
               "NETWEIR::RtlNetBus::copyFullBusName(QString*, NETWEIR::RtlNetBus const*) const",
               "NETWEIR::RtlNetBus::fullBusName() const",
               netlist + "RtlNetlist(std::unique_ptr<NETWEIR::RtlNetlist::Private, "
                         "std::default_delete<NETWEIR::RtlNetlist::Private> >)",
               netlist + "findNet(QString const&) const",
               netlist + "nameStepsOf(NETWEIR::Hierachy const*) const",
               netlist + "nameStepsOf(NETWEIR::RtlNet const*) const",
               netlist + "nameStepsOf(NETWEIR::RtlNetBus const*) const",
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

void TestLibrary::onlyTheDialogNeedsWindows()
{
    const QRegularExpression ofWindows("^libQt5(Gui|Widgets)\\.so");
    QVERIFY(neededLibraries(NETLIST_LIBRARY_FILE).contains("libQt5Core.so.5"));
    QCOMPARE(neededLibraries(NETLIST_LIBRARY_FILE).filter(ofWindows), QStringList());
    QCOMPARE(neededLibraries(NETWEIR_LIBRARY_FILE).filter(ofWindows),
             (QStringList{"libQt5Gui.so.5", "libQt5Widgets.so.5"}));
}

QTEST_GUILESS_MAIN(TestLibrary)
#include "tst_library.moc"
