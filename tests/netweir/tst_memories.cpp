// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designxml.h"

#include <netweir/internal/nets/instancetree.h>
#include <netweir/internal/nets/interfacebindings.h>
#include <netweir/internal/nets/memories.h>
#include <netweir/internal/nets/pathresolver.h>

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR::Internal;
using TarnTest::DesignXml;

class TestMemories : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void arraysBehindComputedIndexesAreMemories_data();
    void arraysBehindComputedIndexesAreMemories();
    void pathsJoinMembers();
};

void TestMemories::arraysBehindComputedIndexesAreMemories_data()
{
    QTest::addColumn<QString>("members");
    QTest::addColumn<QString>("expected"); ///< Of v, v.a, v.a.b and of w in the instance u.
    const auto row = [](const char *members, const char *expected) {
        QTest::newRow(members) << QString::fromLatin1(members) << QString::fromLatin1(expected);
    };
    row("", "");
    row("(arraysel v 1)", "");
    row("(arraysel v i)", "v");
    row("(arraysel (arraysel v i) 1)", "v");
    row("(arraysel (structsel v name=a) i)", "v.a");
    row("(arraysel (structsel (structsel v name=a) name=b) i)", "v.a.b");
    row("(arraysel (structsel (arraysel v 1) name=a) i)", "v.a");
    row("(arraysel v i) (arraysel (structsel v name=a) i) (arraysel v i)", "v v.a");
    row("(arraysel (varxref name=w dotted=u) i)", "w");
    row("(arraysel (varxref name=v dotted=u) i)", "");
    row("(arraysel (varxref name=w dotted=z) i)", "");
    row("(arraysel z i)", "");
    row("(readmem file v)", "v");
    row("(arraysel u i)", ""); // An instance.
}

void TestMemories::arraysBehindComputedIndexesAreMemories()
{
    QFETCH(QString, members);
    const DesignXml design(QStringLiteral("(module name=top origName=top (var:u8 name=v) "
                                          "(instance name=u defName=leaf) %1) "
                                          "(module name=leaf origName=leaf (var:u8 name=w))")
                               .arg(members));
    InstanceTree tree;
    QVERIFY(tree.build(design->top()));
    const InterfaceBindings bindings = bindInterfaces(*design, tree);
    Memories memories;
    for (const Definition *definition : design->bottomUp())
        memories.addOf(*definition);
    memories.addElsewhere(tree, PathResolver(design->types(), tree, bindings));

    const Variable &own = design->top().variables.front();
    const Variable &inner = tree.definitionOf(1).variables.front();
    QStringList found;
    if (memories.contains(own, ""))
        found += QStringLiteral("v");
    if (memories.contains(own, "a"))
        found += QStringLiteral("v.a");
    if (memories.contains(own, "a.b"))
        found += QStringLiteral("v.a.b");
    if (memories.contains(inner, ""))
        found += QStringLiteral("w");
    QTEST(found.join(QLatin1Char(' ')), "expected");
}

void TestMemories::pathsJoinMembers()
{
    QCOMPARE(memberPath("", "a"), std::string("a"));
    QCOMPARE(memberPath("a", "b"), std::string("a.b"));
}

QTEST_APPLESS_MAIN(TestMemories)
#include "tst_memories.moc"
