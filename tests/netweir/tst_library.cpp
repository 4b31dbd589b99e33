// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/librarysymbols.h>
#include <support/testcase.h>

#include <QRegularExpression>
#include <QTest>

using namespace TarnTest;

/// The netlist library as a file: what it exports.
class TestLibrary : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void exportsThePublicClassesAlone();
};

void TestLibrary::exportsThePublicClassesAlone()
{
    const QString builder = QStringLiteral("NETWEIR::NetlistBuilder::");
    const QString netlist = QStringLiteral("NETWEIR::RtlNetlist::");
    // Templates of the standard library are exported whatever types they are made for.
    const QRegularExpression ofNetweir("^NETWEIR::|for NETWEIR::");
    const QStringList expected({
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
        "NETWEIR::catchRtlModules(QStringList&, QStringList&, QStringList&, "
        "QMap<QString, QVariant>&, QWidget*)",
        "NETWEIR::catchRtlNetsWithProgressDialog(NETWEIR::RtlNetlist**, QStringList&, "
        "QWidget*)",
    });
    QCOMPARE(exportedSymbols(NETWEIR_LIBRARY_FILE).filter(ofNetweir).join('\n'),
             expected.join('\n'));
}

QTEST_GUILESS_MAIN(TestLibrary)
#include "tst_library.moc"
