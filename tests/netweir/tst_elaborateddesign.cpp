// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designxml.h"

#include <netweir/internal/xml/xmlfile.h>

#include <support/files.h>
#include <support/testcase.h>

#include <QTemporaryDir>
#include <QTest>

using namespace NETWEIR::Internal;
using TarnTest::DesignXml;

class TestElaboratedDesign : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void otherDocumentsAreRefused_data();
    void otherDocumentsAreRefused();
    void topsAreFound_data();
    void topsAreFound();
    void definitionsComeBottomUp_data();
    void definitionsComeBottomUp();
    void instancesAreFoundByTheirRawName();
    void routinesTellWhatTheyWrite_data();
    void routinesTellWhatTheyWrite();
    void variablesOfPackagesAreToldBySource_data();
    void variablesOfPackagesAreToldBySource();
    void changedDefinitionsAreNoticed_data();
    void changedDefinitionsAreNoticed();
};

void TestElaboratedDesign::otherDocumentsAreRefused_data()
{
    QTest::addColumn<QString>("document");
    QTest::newRow("nothing") << "";
    QTest::newRow("another root") << "(other (netlist (typetable)))";
    QTest::newRow("no netlist") << "(verilator_xml (files))";
    QTest::newRow("no types") << "(verilator_xml (netlist (module name=top topModule=1)))";
}

void TestElaboratedDesign::otherDocumentsAreRefused()
{
    QFETCH(QString, document);
    pugi::xml_document xml;
    TarnTest::appendElements(xml, document);
    ElaboratedDesign design;
    QString error;
    QVERIFY(!design.read(xml, {}, {}, &error));
    QCOMPARE(error, QStringLiteral("The elaborated design contains no netlist."));
}

void TestElaboratedDesign::topsAreFound_data()
{
    QTest::addColumn<QString>("netlist");
    QTest::addColumn<bool>("isWrapped");
    QTest::addColumn<QString>("expected"); ///< Empty when there is none.
    const QString leaf = QStringLiteral(" (module name=leaf origName=leaf)");
    const QString pair = QStringLiteral("(module name=a origName=a topModule=1 "
                                        "(instance name=u defName=leaf) (instance name=w "
                                        "defName=leaf))");
    const QString one =
        QStringLiteral("(module name=a origName=a topModule=1 (instance name=u defName=leaf))");
    QTest::newRow("a top") << one + leaf << false << "a";
    QTest::newRow("a top behind others") << leaf + one << false << "a";
    QTest::newRow("none") << leaf << false << "";
    QTest::newRow("not the top") << "(module name=a topModule=2)" << false << "";
    QTest::newRow("the first of two")
        << one + "(module name=leaf origName=leaf topModule=1)" << false << "a";
    QTest::newRow("wrapped") << one + leaf << true << "leaf";
    QTest::newRow("wrapped with another") << pair + leaf << true << "leaf leaf";
    QTest::newRow("a wrapper of nothing") << "(module name=a topModule=1)" << true << "";
    QTest::newRow("a wrapper of something unknown") << one << true << "";
}

void TestElaboratedDesign::topsAreFound()
{
    QFETCH(QString, netlist);
    QFETCH(bool, isWrapped);
    QFETCH(QString, expected);
    pugi::xml_document xml;
    TarnTest::appendElements(
        xml, QStringLiteral("(verilator_xml (netlist %1 (typetable)))").arg(netlist));
    ReadOptions options;
    options.rootsAreWrapped = isWrapped;
    ElaboratedDesign design;
    QString error;
    if (design.read(xml, options, {}, &error)) {
        QStringList roots;
        for (const Definition *root : design.roots())
            roots.append(root->sourceName);
        QCOMPARE(roots.join(QLatin1Char(' ')), expected);
    } else {
        QCOMPARE(expected, QString());
        QCOMPARE(error, QStringLiteral("The elaborated design contains no top module."));
    }
}

void TestElaboratedDesign::definitionsComeBottomUp_data()
{
    QTest::addColumn<QString>("modules");
    QTest::addColumn<QString>("expected");
    QTest::newRow("one") << "(module name=a origName=a)"
                         << "a";
    QTest::newRow("a chain") << "(module name=a origName=a (instance name=u defName=b)) "
                                "(module name=b origName=b (instance name=u defName=c)) "
                                "(module name=c origName=c)"
                             << "c b a";
    QTest::newRow("used twice") << "(module name=a origName=a (instance name=u defName=c) "
                                   "(instance name=w defName=b)) "
                                   "(module name=b origName=b (instance name=u defName=c)) "
                                   "(module name=c origName=c)"
                                << "c b a";
    QTest::newRow("not reached") << "(module name=a origName=a) (module name=b origName=b)"
                                 << "a";
    QTest::newRow("not in the XML") << "(module name=a origName=a (instance name=u defName=b))"
                                    << "a";
    QTest::newRow("itself") << "(module name=a origName=a (instance name=u defName=a))"
                            << "Module \"a\" contains itself.";
    QTest::newRow("a circle below the top")
        << "(module name=a origName=a (instance name=u defName=b)) "
           "(module name=b origName=b (instance name=u defName=c)) "
           "(module name=c origName=c (instance name=u defName=b))"
        << "Module \"b\" contains itself.";
}

void TestElaboratedDesign::definitionsComeBottomUp()
{
    QFETCH(QString, modules);
    const DesignXml design(modules);
    QStringList names;
    for (const Definition *definition : design->bottomUp())
        names += definition->sourceName;
    const QString found = design.error().isEmpty() ? names.join(QLatin1Char(' ')) : design.error();
    QTEST(found, "expected");
}

/// Two modules whose decoded names look the same, and one with parameter values.
void TestElaboratedDesign::instancesAreFoundByTheirRawName()
{
    const DesignXml design(QStringLiteral(
        "(module name=top origName=top (instance name=u defName=a__02f) (instance name=w "
        "defName=m__P4)) (module name=a/ origName=a__02f) (module name=m__P4 origName=m) "
        "(module name=m__P8 origName=m)"));
    const Definition &top = design->top();
    QCOMPARE(top.instances[0].definition->sourceName, QStringLiteral("a/"));
    QCOMPARE(top.instances[1].definition->sourceName, QStringLiteral("m"));
    QCOMPARE(top.instances[1].definition->rawName, std::string("m__P4"));
}

void TestElaboratedDesign::routinesTellWhatTheyWrite_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<QString>("expected"); ///< 'w' for what is written, '.' for the others.
    QTest::newRow("a task of the module") << "(taskref name=t)"
                                          << ".ww";
    QTest::newRow("a function, whose result comes first") << "(funcref name=f)"
                                                          << ".w";
    QTest::newRow("of a package") << "(taskref name=p)"
                                  << "w";
    QTest::newRow("of another module, by its name") << "(taskref name=o)"
                                                    << ".w";
    QTest::newRow("several of one name") << "(taskref name=s)"
                                         << "ww.";
    QTest::newRow("unknown") << "(taskref name=z)"
                             << "";
}

void TestElaboratedDesign::routinesTellWhatTheyWrite()
{
    QFETCH(QString, call);
    const DesignXml design(
        QStringLiteral("(module name=top origName=top "
                       "(task name=t (var name=a dir=input) (var name=b dir=output) (var name=l) "
                       "(var name=c dir=inout)) "
                       "(func name=f (var name=f dir=output) (var name=a dir=input) (var name=b "
                       "dir=ref)) %1) "
                       "(module name=other origName=other "
                       "(task name=o (var name=a dir=input) (var name=b dir=output)) "
                       "(task name=s (var name=a dir=output))) "
                       "(package name=pk (task name=p (var name=a dir=output)) "
                       "(func name=s (var name=s) (var name=a dir=input) (var name=b dir=output) "
                       "(var name=c dir=input)))")
            .arg(call));
    const Definition &top = design->top();
    QString found;
    for (const bool isWritten : design->writtenArguments(top, top.calls.front()))
        found += QLatin1Char(isWritten ? 'w' : '.');
    QTEST(found, "expected");
}

void TestElaboratedDesign::variablesOfPackagesAreToldBySource_data()
{
    QTest::addColumn<QString>("reference");
    QTest::addColumn<bool>("expected");
    QTest::newRow("behind the name of the package") << "(varref name=v loc=a,1,5,1,6)" << true;
    QTest::newRow("by its name alone") << "(varref name=v loc=a,2,3,2,4)" << false;
    QTest::newRow("another name") << "(varref name=w loc=a,1,5,1,6)" << false;
    QTest::newRow("without a source") << "(varref name=v)" << false;
}

void TestElaboratedDesign::variablesOfPackagesAreToldBySource()
{
    QFETCH(QString, reference);
    QTemporaryDir folder;
    TarnTest::writeFile(folder.filePath(QStringLiteral("a.v")), "p:: v\n= v\n");
    const DesignXml design(QStringLiteral("(module name=top origName=top (use %1)) "
                                          "(package name=p (var name=v))")
                               .arg(reference),
                           {}, {}, folder.path(), QStringLiteral("(file id=a filename=a.v)"));
    const Reference made{design.element("use").first_child(), {}, 0};
    QTEST(design->isToPackage(made), "expected");
}

namespace {

/// A file with these members of the top. Its size does not depend on them.
QByteArray fileWith(const QByteArray &members)
{
    constexpr int Size = 800;
    return "<verilator_xml>\n<netlist>\n<module name=\"top\" origName=\"top\" topModule=\"1\">\n"
           "  <var name=\"v\" origName=\"v\" dtype_id=\"1\"/>\n  " +
           members.leftJustified(Size) +
           "\n  <var name=\"w\" origName=\"w\" dtype_id=\"1\"/>\n</module>\n"
           "<module name=\"leaf\" origName=\"leaf\"/>\n"
           "<typetable><basicdtype id=\"1\" name=\"logic\"/></typetable>\n"
           "</netlist>\n</verilator_xml>\n";
}

QByteArray instanceOfLeaf(const QByteArray &name, const QByteArray &content = QByteArray())
{
    return "<instance name=\"" + name + "\" origName=\"" + name + "\" defName=\"leaf\">" + content +
           "</instance>";
}

} // namespace

void TestElaboratedDesign::changedDefinitionsAreNoticed_data()
{
    QTest::addColumn<QByteArray>("later");
    QTest::addColumn<bool>("isSameWhole"); ///< When the definition is not large.
    QTest::addColumn<bool>("isSameInRuns");
    const QByteArray u = instanceOfLeaf("u");
    const QByteArray range = "<range><const name=\"32'h1\"/><const name=\"32'h0\"/></range>";
    const QByteArray assignment = R"(<contassign loc="a"><varref name="v" loc="a"/>)"
                                  R"(<varref name="v" loc="a"/>%</contassign>)";
    QTest::newRow("the same") << u << true << true;
    QTest::newRow("an assignment more")
        << u + QByteArray(assignment).replace('%', "") << true << true;
    QTest::newRow("no instance") << QByteArray() << false << false;
    QTest::newRow("an array of foreign instances")
        << u + instanceOfLeaf("x") + instanceOfLeaf("x.netweir_range", range) << false << false;
    QTest::newRow("a scope") << u + R"(<begin name="b"/>)" << false << false;
    QTest::newRow("a variable") << u + R"(<var name="x" origName="x" dtype_id="1"/>)" << false
                                << false;
    // A supply needs the elements of all variables, which a run does not have.
    QTest::newRow("a supply") << u + QByteArray(assignment).replace('%', "<strengthspec/>") << true
                              << false;
}

void TestElaboratedDesign::changedDefinitionsAreNoticed()
{
    QFETCH(QByteArray, later);
    QFETCH(bool, isSameWhole);
    QFETCH(bool, isSameInRuns);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("design.xml"));
    DeclaredUnit leaf;
    ReadOptions options;
    options.foreignUnits.insert(QStringLiteral("leaf"), &leaf);
    for (const bool isLarge : {false, true}) {
        TarnTest::writeFile(path, fileWith(instanceOfLeaf("u")));
        options.runSize = isLarge ? 1 : 1024 * 1024;
        XmlFile file;
        ElaboratedDesign design;
        QString error;
        const auto isSame = [](const Definition &, const ElaboratedDesign::EachRun &eachRun) {
            return eachRun(ElaboratedDesign::Use::All, [] {});
        };
        QVERIFY2(file.open(path, 1024 * 1024, &error), qPrintable(error));
        QVERIFY2(design.read(&file, options, {}, isSame, &error), qPrintable(error));
        TarnTest::writeFile(path, fileWith(later));
        QCOMPARE(design.readAgain(&file, design.top(), isSame),
                 isLarge ? isSameInRuns : isSameWhole);
        QCOMPARE(file.isSound(), isLarge ? isSameInRuns : isSameWhole);
    }
}

QTEST_APPLESS_MAIN(TestElaboratedDesign)
#include "tst_elaborateddesign.moc"
