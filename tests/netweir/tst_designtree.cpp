// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/signals/designtree.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;

class TestDesignTree : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void listsScopes_data();
    void listsScopes();
    void endsWithTheTree();
};

void TestDesignTree::listsScopes_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QByteArray>("scopes");
    const auto row = [](const char *name, const char *lines, const char *scopes) {
        QTest::newRow(name) << QByteArray(lines) << QByteArray(scopes);
    };
    row("top", "top [entity]\n`-rtl [arch]", "top@top(rtl) -1");
    row("lines in front",
        "a.vhd:1:2:@0ms:(report note): hello [entity]\nx [entity]\n\n"
        "top [entity]\n+-clk [port in]\n`-rtl [arch]\n  `-s [signal]",
        "top@top(rtl) -1");
    row("instances",
        "top [entity]\n"
        "`-rtl [arch]\n"
        "  +-s [signal]\n"
        "  +-u1 [instance]\n"
        "  | +-clk [port in]\n"
        "  | `-leaf [entity]\n"
        "  |   +-clk [port in]\n"
        "  |   `-fast [arch]\n"
        "  |     +-u2 [instance]\n"
        "  |     | `-deep [entity]\n"
        "  |     |   `-rtl [arch]\n"
        "  |     `-P0 [process]\n"
        "  +-u3 [instance]\n"
        "  | +-a [port in]\n"
        "  | `-b [port out]\n"
        "  `-u4 [instance]\n"
        "    `-leaf [entity]\n"
        "      `-slow [arch]",
        "top@top(rtl) -1, u1@leaf(fast) 0, u2@deep(rtl) 1, u3@() 0, u4@leaf(slow) 0");
    row("blocks and generates",
        "top [entity]\n"
        "`-rtl [arch]\n"
        "  +-b [block]\n"
        "  | `-x [signal]\n"
        "  +-gi [if-generate true]\n"
        "  | `-u [instance]\n"
        "  |   `-leaf [entity]\n"
        "  |     `-rtl [arch]\n"
        "  +-no [if-generate false]\n"
        "  +-g(-1) [for-generate]\n"
        "  | `-h(red) [for-generate]\n"
        "  |   `-P0 [process]\n"
        "  `-g(0) [for-generate]",
        "top@top(rtl) -1, b@() 0, gi@() 0, u@leaf(rtl) 2, g(-1)@() 0 round, h(red)@() 4 round, "
        "g(0)@() 0 round");
    row("extended identifiers",
        "top [entity]\n"
        "`-\\R.tl()\\ [arch]\n"
        "  +-\\| `-x [instance]\\ [instance]\n"
        "  | `-\\E [entity]\\ [entity]\n"
        "  |   `-\\a [arch]\\ [arch]\n"
        "  `-\\+-u\\ [block]",
        "top@top(\\R.tl()\\) -1, \\| `-x [instance]\\@\\E [entity]\\(\\a [arch]\\) 0, "
        "\\+-u\\@() 0");
    row("packages",
        "top [entity]\n`-rtl [arch]\nwork.p [package]\n`-s [signal]\n"
        "x [entity]\n`-y [arch]",
        "top@top(rtl) -1");
    row("levels that are left out",
        "top [entity]\n      `-leaf [entity]\n  | `-rtl [arch]\n"
        "          `-u [instance]",
        "top@top() -1, u@() -1");
}

void TestDesignTree::listsScopes()
{
    QFETCH(QByteArray, lines);
    QFETCH(QByteArray, scopes);
    DesignTree tree("top");
    const QByteArrayList all = lines.split('\n');
    for (const QByteArray &line : all)
        tree.addLine({line.constData(), std::size_t(line.size())});
    QByteArrayList found;
    for (const TreeScope &scope : tree.scopes())
        found += QByteArray::fromStdString(scope.name + '@' + scope.entity + '(' +
                                           scope.architecture + ") ") +
                 QByteArray::number(scope.parent) + (scope.isRound ? " round" : "");
    QCOMPARE(found.join(", "), scopes);
}

void TestDesignTree::endsWithTheTree()
{
    DesignTree tree("top");
    QVERIFY(!tree.addLine(""));
    QVERIFY(!tree.addLine("other [entity]"));
    QVERIFY(tree.addLine("top [entity]"));
    QVERIFY(tree.addLine("`-rtl [arch]"));
    QVERIFY(tree.addLine("work.p [package]"));
    QVERIFY(!tree.addLine(".top(rtl).clk: 000055B2 net: 0"));
    QVERIFY(!tree.addLine(""));
}

TARN_TEST_MAIN(TestDesignTree)
#include "tst_designtree.moc"
