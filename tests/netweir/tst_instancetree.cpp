// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designxml.h"

#include <netweir/internal/nets/instancetree.h>

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR::Internal;
using TarnTest::DesignXml;

class TestInstanceTree : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void instancesAreListed_data();
    void instancesAreListed();
    void childrenAreFound_data();
    void childrenAreFound();
    void tooManyInstancesAreRefused();
    void elementsOfArraysHavePositions_data();
    void elementsOfArraysHavePositions();
};

void TestInstanceTree::instancesAreListed_data()
{
    QTest::addColumn<QString>("modules");
    QTest::addColumn<QString>("expected"); ///< The names, each behind the number of its parent.
    const QString leaves = QStringLiteral(" (module name=m origName=m (instance name=x defName=l)) "
                                          "(module name=l origName=l) "
                                          "(primitive name=p origName=p)");
    const auto row = [&leaves](const char *name, const char *members, const char *expected) {
        QTest::newRow(name) << QStringLiteral("(module name=top origName=top %1)").arg(members) +
                                   leaves
                            << QString::fromLatin1(expected);
    };
    row("the top alone", "", "");
    row("one", "(instance name=u defName=l)", "0:u");
    row("levels, parents side by side", "(instance name=u defName=m) (instance name=v defName=m)",
        "0:u 0:v 1:x 2:x");
    row("a falling array", "(instance name=u defName=l (range 2 0))", "0:u[2] 0:u[1] 0:u[0]");
    row("a rising array", "(instance name=u defName=l (range -1 0))", "0:u[-1] 0:u[0]");
    row("in a scope", "(begin name=g (instance name=u defName=l))", "0:g.u");
    row("no nodes",
        "(instance name=u defName=p) (instance name=v defName=z) "
        "(instance name=w defName=l)",
        "0:w");
}

void TestInstanceTree::instancesAreListed()
{
    QFETCH(QString, modules);
    const DesignXml design(modules);
    InstanceTree tree;
    QVERIFY(tree.build(design->top()));
    QStringList names;
    for (int i = 1; i < tree.size(); ++i)
        names += QStringLiteral("%1:%2").arg(tree.at(i).parent).arg(tree.nameOf(i));
    QTEST(names.join(QLatin1Char(' ')), "expected");
}

void TestInstanceTree::childrenAreFound_data()
{
    QTest::addColumn<int>("item");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a single one") << 0 << 0 << "u";
    QTest::newRow("beyond a single one") << 0 << 1 << "none";
    QTest::newRow("the left of an array") << 1 << 0 << "v[3]";
    QTest::newRow("the right of an array") << 1 << 2 << "v[1]";
    QTest::newRow("beyond an array") << 1 << 3 << "none";
    QTest::newRow("before an array") << 1 << -1 << "none";
    QTest::newRow("behind an array") << 3 << 0 << "w";
    QTest::newRow("no node") << 2 << 0 << "none";
}

void TestInstanceTree::childrenAreFound()
{
    QFETCH(int, item);
    QFETCH(int, position);
    const DesignXml design(
        QStringLiteral("(module name=top origName=top (instance name=m defName=mid) "
                       "(instance name=n defName=mid)) "
                       "(module name=mid origName=mid (instance name=u defName=leaf) "
                       "(instance name=v defName=leaf (range 3 1)) (instance name=p defName=prim) "
                       "(instance name=w defName=leaf)) "
                       "(module name=leaf origName=leaf) (primitive name=prim origName=prim)"));
    InstanceTree tree;
    QVERIFY(tree.build(design->top()));
    const int child = tree.childOf(2, item, position);
    QTEST(child < 0 ? QStringLiteral("none") : tree.nameOf(child), "expected");
    QVERIFY(child < 0 || tree.at(child).parent == 2);
}

void TestInstanceTree::tooManyInstancesAreRefused()
{
    const DesignXml design(QStringLiteral(
        "(module name=top origName=top (instance name=u defName=leaf (range 16777215 0))) "
        "(module name=leaf origName=leaf)"));
    InstanceTree tree;
    QVERIFY(!tree.build(design->top()));
}

void TestInstanceTree::elementsOfArraysHavePositions_data()
{
    QTest::addColumn<QString>("range");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("expected");
    QTest::newRow("left") << "(range 3 1)" << 3 << 0;
    QTest::newRow("right") << "(range 3 1)" << 1 << 2;
    QTest::newRow("above") << "(range 3 1)" << 4 << -1;
    QTest::newRow("below") << "(range 3 1)" << 0 << -1;
    QTest::newRow("rising, left") << "(range -1 1)" << -1 << 0;
    QTest::newRow("rising, right") << "(range -1 1)" << 1 << 2;
    QTest::newRow("rising, above") << "(range -1 1)" << 2 << -1;
    QTest::newRow("no array") << "" << 0 << -1;
}

void TestInstanceTree::elementsOfArraysHavePositions()
{
    QFETCH(QString, range);
    QFETCH(int, index);
    QFETCH(int, expected);
    const DesignXml design = DesignXml::ofModule(QStringLiteral("(instance name=u %1)").arg(range));
    const InstanceItem &item = design->top().instances.front();
    QCOMPARE(int(item.positionOf(index)), expected);
    if (expected >= 0)
        QCOMPARE(item.indexAt(expected), index);
}

QTEST_APPLESS_MAIN(TestInstanceTree)
#include "tst_instancetree.moc"
