// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designxml.h"

#include <netweir/internal/nets/interfacebindings.h>
#include <netweir/internal/nets/pathresolver.h>

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR::Internal;
using TarnTest::DesignXml;

/// How hierarchical names and interface ports lead to instances.
class TestPathResolver : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void pathsLeadToNets_data();
    void pathsLeadToNets();
    void interfacePortsAreBound_data();
    void interfacePortsAreBound();
};

namespace {

const char Design[] =
    "(module name=top origName=top (var:bit name=v) (var:bit name=p param=true)"
    " (instance name=u defName=mid (port name=b one) (port name=bs many))"
    " (instance name=arr defName=leaf (range 2 1))"
    " (instance name=one defName=bus) (instance name=many defName=bus (range 1 0))"
    " (begin name=g origName=g__BRA__0__KET__ (var:bit name=v) (begin name=h (var:bit name=x))"
    "  (instance name=w defName=mid (port name=b (arraysel many 0)))))"
    "(module name=mid origName=mid (var:bit name=v) (var:bit name=b vartype=ifaceref)"
    " (var:refs name=bs vartype=ifaceref) (task name=t) (instance name=u defName=leaf))"
    "(module name=leaf origName=leaf (var:bit name=n))"
    "(iface name=bus origName=bus (var:bit name=d))";

const char Types[] = "(ifacerefdtype id=ref)"
                     "(unpackarraydtype id=refs sub_dtype_id=ref (range 1 0))";

/// The full name of an instance: "top.u.u".
QString pathOf(const InstanceTree &tree, int instance)
{
    const int parent = tree.at(instance).parent;
    return parent < 0 ? QStringLiteral("top")
                      : pathOf(tree, parent) + QLatin1Char('.') + tree.nameOf(instance);
}

int instanceAt(const InstanceTree &tree, const QString &path)
{
    for (int i = 0; i < tree.size(); ++i) {
        if (pathOf(tree, i) == path)
            return i;
    }
    return -1;
}

} // namespace

void TestPathResolver::pathsLeadToNets_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<int>("scope");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *from, int scope, const char *path, const char *expected) {
        QTest::addRow("%s from scope %d of %s", path, scope, from)
            << QString::fromLatin1(from) << scope << QString::fromLatin1(path)
            << QString::fromLatin1(expected);
    };
    row("top", 0, "u.v", "top.u.v");
    row("top", 0, "u.u.n", "top.u.u.n");
    row("top", 0, "arr[2].n", "top.arr[2].n");
    row("top", 0, "arr[1].n", "top.arr[1].n");
    row("top", 0, "arr[0].n", "none");
    row("top", 0, "arr[x].n", "none");
    row("top", 0, "arr[1.n", "none");
    row("top", 0, "arr.n", "top.arr[2].n");
    row("top", 0, "arr__BRA__1__KET__.n", "top.arr[1].n");
    row("top", 0, "g.v", "top.v@1");
    row("top", 0, "g.h.x", "top.x@2");
    row("top", 0, "h.x", "none");
    row("top", 1, "h.x", "top.x@2");
    row("top", 2, "h.x", "top.x@2"); // Found in the scope around.
    row("top", 2, "u.v", "top.u.v");
    row("top", 0, "top.v", "top.v");
    row("top", 0, "top.p", "none");
    row("top", 0, "u.z", "none");
    row("top", 0, "z.v", "none");
    row("top.u", 0, "u.n", "top.u.u.n");
    row("top.u", 0, "top.v", "top.v");
    row("top.u", 0, "mid.v", "top.u.v");
    row("top.u", 0, "arr[2].n", "top.arr[2].n");
    row("top.u", 0, "t.v", "none");
    row("top.u", 0, "b.d", "top.one.d");
    row("top.u", 0, "b.z", "none");
    row("top.u", 0, "bs.d", "top.many[1].d");
    row("top.u", 0, "bs[0].d", "top.many[0].d");
    row("top.u", 0, "bs[2].d", "none");
    row("top.u.u", 0, "mid.v", "top.u.v");
    row("top.u.u", 0, "g.v", "top.v@1");
    row("top.g[0].w", 0, "h.x", "top.x@2");
    row("top.g[0].w", 0, "b.d", "top.many[0].d");
    row("top.g[0].w", 0, "b[1].d", "none");
    row("top.g[0].w", 0, "v[0].d", "none");
    row("top", 0, "u.b.d", "top.one.d");
}

void TestPathResolver::pathsLeadToNets()
{
    QFETCH(QString, from);
    QFETCH(int, scope);
    QFETCH(QString, path);
    const DesignXml design(QString::fromLatin1(Design), QString::fromLatin1(Types));
    InstanceTree tree;
    QVERIFY(tree.build(design->top()));
    const InterfaceBindings bindings = bindInterfaces(*design, tree);
    const PathResolver paths(design->types(), tree, bindings);
    const int start = instanceAt(tree, from);
    QVERIFY(start >= 0);

    const int dot = path.lastIndexOf(QLatin1Char('.'));
    const InstanceVariable net =
        paths.netAt({start, scope}, path.left(dot).toStdString(), path.mid(dot + 1).toStdString());
    QString found = QStringLiteral("none");
    if (net.instance >= 0) {
        const Variable &variable =
            tree.definitionOf(net.instance).variables[std::size_t(net.variable)];
        found = pathOf(tree, net.instance) + QLatin1Char('.') + variable.name;
        if (variable.scope > 0)
            found += QStringLiteral("@%1").arg(variable.scope);
    }
    QTEST(found, "expected");
}

void TestPathResolver::interfacePortsAreBound_data()
{
    QTest::addColumn<QString>("instances");
    QTest::addColumn<QString>("expected"); ///< Ports and interfaces.
    const auto row = [](const char *name, const char *instances, const char *expected) {
        QTest::newRow(name) << QString::fromLatin1(instances) << QString::fromLatin1(expected);
    };
    row("an interface", "(instance name=u defName=user (port name=b one))", "u.b=one");
    row("by position", "(instance name=u defName=user (port name=__pinNumber1 one))", "u.b=one");
    row("the lowest element of a falling array",
        "(instance name=u defName=user (port name=b (arraysel many 0)))", "u.b=many[1]");
    row("the highest element of a falling array",
        "(instance name=u defName=user (port name=b (arraysel many 2)))", "u.b=many[3]");
    row("the lowest element of a rising array",
        "(instance name=u defName=user (port name=b (arraysel rise 0)))", "u.b=rise[0]");
    row("an element that there is not",
        "(instance name=u defName=user (port name=b (arraysel many 3)))", "u.b=");
    row("an array on an array port", "(instance name=u defName=users (port name=b many))",
        "u.b=many[3],many[2],many[1]");
    row("an array for an array of instances",
        "(instance name=u defName=user (range 2 0) (port name=b many))",
        "u[2].b=many[3] u[1].b=many[2] u[0].b=many[1]");
    row("one interface for an array of instances",
        "(instance name=u defName=user (range 1 0) (port name=b one))", "u[1].b=one u[0].b=one");
    row("an array that does not fit",
        "(instance name=u defName=user (range 1 0) (port name=b many))",
        "u[1].b=many[3],many[2],many[1] u[0].b=many[3],many[2],many[1]");
    row("handed down", "(instance name=o defName=outer (port name=b one))", "o.b=one o.i.b=one");
    row("an element handed down", "(instance name=o defName=outers (port name=b many))",
        "o.b=many[3],many[2],many[1] o.i.b=many[1]");
    row("of another node",
        "(instance name=u defName=user (port name=b (varxref name=deep dotted=h)))"
        "(instance name=h defName=holder)",
        "u.b=h.deep");
    row("of an unknown node",
        "(instance name=u defName=user (port name=b (varxref name=deep dotted=z)))", "u.b=");
    row("something that is no interface", "(instance name=u defName=user (port name=b net))",
        "u.b=");
    row("an unknown name", "(instance name=u defName=user (port name=b z))", "u.b=");
    row("another port", "(instance name=u defName=user (port name=n net) (port name=z net))", "");
    row("two instances",
        "(instance name=u defName=user (port name=b one)) "
        "(instance name=v defName=leaf) "
        "(instance name=w defName=user (port name=b (arraysel many 1)))",
        "u.b=one w.b=many[2]");
}

void TestPathResolver::interfacePortsAreBound()
{
    QFETCH(QString, instances);
    const DesignXml design(
        QStringLiteral("(module name=top origName=top (var:bit name=net)"
                       " (instance name=one defName=bus)"
                       " (instance name=many defName=bus (range 3 1))"
                       " (instance name=rise defName=bus (range 0 1)) %1)"
                       "(module name=user origName=user (var:ref name=b vartype=ifaceref)"
                       " (var:bit name=n dir=input))"
                       "(module name=users origName=users (var:refs name=b vartype=ifaceref))"
                       "(module name=outer origName=outer (var:ref name=b vartype=ifaceref)"
                       " (instance name=i defName=user (port name=b b)))"
                       "(module name=outers origName=outers (var:refs name=b vartype=ifaceref)"
                       " (instance name=i defName=user (port name=b (arraysel b 0))))"
                       "(module name=holder origName=holder (instance name=deep defName=bus))"
                       "(module name=leaf origName=leaf)"
                       "(iface name=bus origName=bus)")
            .arg(instances),
        QStringLiteral("(ifacerefdtype id=ref)"
                       "(unpackarraydtype id=refs sub_dtype_id=ref (range 2 0))"));
    InstanceTree tree;
    QVERIFY(tree.build(design->top()));
    const InterfaceBindings bindings = bindInterfaces(*design, tree);
    QStringList texts;
    for (const InterfaceBinding &binding : bindings.all()) {
        QStringList interfaces;
        for (const int interface : binding.interfaces)
            interfaces += pathOf(tree, interface).mid(4);
        const Variable &port =
            tree.definitionOf(binding.instance).variables[std::size_t(binding.port)];
        texts += pathOf(tree, binding.instance).mid(4) + QLatin1Char('.') + port.name +
                 QLatin1Char('=') + interfaces.join(QLatin1Char(','));
        QCOMPARE(bindings.find(binding.instance, binding.port), &binding.interfaces);
    }
    QTEST(texts.join(QLatin1Char(' ')), "expected");
    QVERIFY(!bindings.find(0, 0));
}

QTEST_APPLESS_MAIN(TestPathResolver)
#include "tst_pathresolver.moc"
