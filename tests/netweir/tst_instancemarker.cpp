// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designphases.h"
#include "netlisttext.h"

#include <netweir/hierachy.h>
#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/nets/instancemarker.h>
#include <netweir/internal/nets/netliststamp.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnetlist.h>

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR::Internal;
using TarnTest::DesignPhases;
using TarnTest::DesignXml;

/// What drives nets by way of instances, found without the elaborator.
class TestInstanceMarker : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void marksInstances_data();
    void marksInstances();
    void marksOmittedWritesElsewhere();
    void refusesTooManyBits();
    void bindsLargeArraysInLinearTime();
    void instancesShareNames();
};

namespace {

const char Types[] = "(ifacerefdtype id=port modportname=m)";

const char Modules[] = " (module name=leaf (var:bit name=i dir=input pinIndex=1)"
                       " (var:u2 name=v dir=input pinIndex=2))"
                       " (module name=mid (var:u2 name=v dir=input pinIndex=1)"
                       " (instance name=l defName=leaf (port name=v v:u2)))"
                       " (module name=user (var:port name=p vartype=ifaceref))"
                       " (iface name=bus_if (var:bit name=c dir=input pinIndex=1) (var:bit name=o)"
                       " (var:bit name=x) (modport name=m (modportvarref name=o direction=out)"
                       " (modportvarref name=x direction=in)))";

/// Null when the design has too many bits.
std::unique_ptr<NETWEIR::RtlNetlist> netlistOf(const DesignXml &xml)
{
    const DesignPhases phases(xml);
    InstanceMarks marks;
    if (!InstanceMarks::fits(phases.tree, phases.marked))
        return nullptr;
    marks.fill(phases.tree, phases.marked);
    InstanceMarker(
        {phases.design, phases.tree, phases.bindings, phases.paths, phases.layout, phases.marked},
        &marks)
        .mark();
    NETWEIR::NetlistBuilder builder(phases.design.top().sourceName);
    stampNetlist(phases.tree, phases.placed, marks, builder.top(), &builder);
    return builder.take();
}

/// The netlist with all marks, a node a line: "name: net marks, ...".
QString netlistText(const DesignXml &xml)
{
    const std::unique_ptr<NETWEIR::RtlNetlist> netlist = netlistOf(xml);
    return netlist ? TarnTest::netlistText(netlist->top()).simplified()
                   : QStringLiteral("too many bits");
}

} // namespace

void TestInstanceMarker::marksInstances_data()
{
    QTest::addColumn<QString>("members");
    QTest::addColumn<QString>("expected");
    QTest::newRow("ports of the top")
        << "(var:bit name=i dir=input pinIndex=1) (var:bit name=o dir=output pinIndex=2)"
           " (var:bit name=d dir=inout pinIndex=3)"
        << "i O o . d O";
    QTest::newRow("input that is driven")
        << "(var:bit name=n) (assign 0 n) (instance name=l defName=leaf (port name=i n:bit))"
        << "n O l : leaf i O v[1:0] ..";
    QTest::newRow("input that is not driven")
        << "(var:bit name=n) (instance name=l defName=leaf (port name=i n:bit))"
        << "n . l : leaf i . v[1:0] ..";
    QTest::newRow("input with a constant")
        << "(instance name=l defName=leaf (port name=v (const:u2 name=2'h0)))"
        << "l : leaf i . v[1:0] OO";
    QTest::newRow("input with a wrong width")
        << "(var:u4 name=n) (instance name=l defName=leaf (port name=v n:u4))"
        << "n[3:0] .... l : leaf i . v[1:0] OO";
    QTest::newRow("some bits, two levels deep")
        << "(var:u2 name=n) (assign 0 (sel n:u2 1 1)) (instance name=m defName=mid (port name=v "
           "n:u2))"
        << "n[1:0] O. m : mid v[1:0] O. l : leaf i . v[1:0] O.";
    QTest::newRow("array of instances, each its part")
        << "(var:u4 name=n) (assign 0 (sel n:u4 0 3))"
           " (instance name=l defName=leaf (range 1 0) (port name=v n:u4))"
        << "n[3:0] .OOO l[1] : leaf i . v[1:0] .O l[0] : leaf i . v[1:0] OO";
    QTest::newRow("array of instances, parts of different widths")
        << "(var:bit name=a) (var:u2 name=b) (var:bit name=c) (assign 0 (sel b:u2 0 1)) (assign 0 "
           "c)"
           " (instance name=l defName=leaf (range 2 0) (port name=v (concat:u6 a:bit (concat:u5 "
           "(const:u2 name=2'h0) (concat:u3 b:u2 c:bit)))))"
        << "a . c O b[1:0] .O l[2] : leaf i . v[1:0] .O l[1] : leaf i . v[1:0] O. l[0] : leaf i . "
           "v[1:0] OO";
    QTest::newRow("array of instances, all the same")
        << "(var:u2 name=n) (assign 0 (sel n:u2 0 1))"
           " (instance name=l defName=leaf (range 1 0) (port name=v n:u2))"
        << "n[1:0] .O l[1] : leaf i . v[1:0] .O l[0] : leaf i . v[1:0] .O";
    QTest::newRow("write to another node")
        << "(instance name=l defName=leaf) (assign 0 (sel (varxref name=v dotted=l) 1 1))"
        << "l : leaf i . v[1:0] O.";
    QTest::newRow("input with a net of another node")
        << "(instance name=m defName=mid) (assign 0 (sel (varxref name=v dotted=m) 0 1))"
           " (instance name=l defName=leaf (port name=v (varxref:u2 name=v dotted=m)))"
        << "m : mid v[1:0] .O l : leaf i . v[1:0] .O l : leaf i . v[1:0] .O";
    QTest::newRow("output of a modport")
        << "(instance name=bus defName=bus_if) (instance name=u defName=user (port name=p bus))"
        << "bus : bus_if c . o O x . u : user";
    QTest::newRow("port of an interface, handed on")
        << "(instance name=l defName=leaf (port name=i (varxref:bit name=c dotted=bus)))"
           " (instance name=bus defName=bus_if (port name=c (const:bit name=1'h1)))"
        << "l : leaf i O v[1:0] .. bus : bus_if c O o . x .";
}

void TestInstanceMarker::marksInstances()
{
    QFETCH(QString, members);
    QFETCH(QString, expected);
    const DesignXml xml(QStringLiteral("(module name=top %1)").arg(members) + Modules, Types);
    QCOMPARE(xml.error(), QString());
    QCOMPARE(netlistText(xml), QStringLiteral("top : top ") + expected);
}

void TestInstanceMarker::marksOmittedWritesElsewhere()
{
    ReadOptions options;
    options.omittedWrites.insert(QStringLiteral("top"),
                                 {{QStringLiteral("v"), QStringLiteral("m.l"), 0, 0}});
    const DesignXml xml(QStringLiteral("(module name=top (instance name=m defName=mid))") + Modules,
                        Types, options);
    QCOMPARE(netlistText(xml),
             QStringLiteral("top : top m : mid v[1:0] .. l : leaf i . v[1:0] OO"));
}

void TestInstanceMarker::refusesTooManyBits()
{
    const DesignXml xml(
        QStringLiteral("(module name=top (instance name=u defName=wide (range 0 16)))"
                       " (module name=wide (var:mega name=v))"),
        QStringLiteral("(basicdtype id=mega name=logic left=1048575 right=0)"));
    QCOMPARE(xml.error(), QString());
    QCOMPARE(netlistText(xml), QStringLiteral("too many bits"));
}

/// With the square of the elements, it would take half a minute.
void TestInstanceMarker::bindsLargeArraysInLinearTime()
{
    const DesignXml xml(QStringLiteral("(module name=top (instance name=bus defName=bus_if (range "
                                       "99999 0)) (instance name=u defName=user (range 99999 0) "
                                       "(port name=p bus)))") +
                            Modules,
                        Types);
    QCOMPARE(xml.error(), QString());
    ReadLimits limits;
    limits.timeoutSeconds = 10;
    QString error;
    const bool isBound = readWithin(
        limits,
        [&xml](QString *) {
            const DesignPhases phases(xml);
            const std::vector<InterfaceBinding> &bindings = phases.bindings.all();
            for (const InterfaceBinding &binding : bindings) {
                const int item = phases.tree.at(binding.instance).item;
                const qint64 position = phases.tree.at(binding.instance).position;
                if (binding.interfaces !=
                    std::vector<int>{phases.tree.childOf(0, item - 1, position)})
                    return false;
            }
            return bindings.size() == 100000;
        },
        &error);
    QVERIFY2(isBound, qPrintable(error));
}

/// So a name takes its memory once, however many instances a module has.
void TestInstanceMarker::instancesShareNames()
{
    const DesignXml xml(QStringLiteral("(module name=top (instance name=a defName=mid) (instance "
                                       "name=b defName=mid (range 1 0)))") +
                            Modules,
                        Types);
    const auto netlist = netlistOf(xml);
    const QList<NETWEIR::Hierachy *> nodes = netlist->top()->children();
    QCOMPARE(nodes.size(), 3);
    QCOMPARE(nodes[2]->instName(), QStringLiteral("b[0]"));
    const QString first = nodes[0]->children().first()->instName();
    QCOMPARE(first, QStringLiteral("l"));
    for (const NETWEIR::Hierachy *node : nodes)
        QCOMPARE(static_cast<const void *>(node->children().first()->instName().constData()),
                 static_cast<const void *>(first.constData()));
}

QTEST_GUILESS_MAIN(TestInstanceMarker)
#include "tst_instancemarker.moc"
