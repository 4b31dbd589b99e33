// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designphases.h"

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR::Internal;
using TarnTest::DesignPhases;
using TarnTest::DesignXml;

/// What drives nets from within their definition, found without the elaborator.
class TestDefinitionMarker : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void marksNets_data();
    void marksNets();
    void marksOptions();
    void listsWhatInstancesTell_data();
    void listsWhatInstancesTell();
};

namespace {

const char Types[] = "(basicdtype id=text name=string)"
                     " (unpackarraydtype id=words sub_dtype_id=u4 (range 1 0))";

/// '.' for an unmarked bit, 'W' for a written one, 'O' for one that only may be driven, 'X' for one
/// that cannot be probed at all; with a '+' where it is known to be written, too.
QString markText(quint8 marks)
{
    if ((marks & MarkBoth) == MarkBoth)
        return marks & MarkWritten ? QStringLiteral("X+") : QStringLiteral("X");
    if (marks & MarkOut)
        return marks & MarkWritten ? QStringLiteral("W") : QStringLiteral("O");
    return marks == 0 ? QStringLiteral(".") : QStringLiteral("?");
}

/// Each net with the marks of its bits from the most significant on.
QString marksText(const MarkedDefinition &marked)
{
    QStringList found;
    for (const PlacedNet &net : marked.placed->nets) {
        QString text = net.name + QLatin1Char(' ');
        for (qint64 bit = net.bit + net.width() - 1; bit >= net.bit; --bit)
            text += markText(itemAt(marked.marks, bit));
        found += text;
    }
    return found.join(QStringLiteral(", "));
}

} // namespace

void TestDefinitionMarker::marksNets_data()
{
    QTest::addColumn<QString>("members");
    QTest::addColumn<QString>("expected");
    QTest::newRow("nothing drives it") << ""
                                       << "n ., b ....";
    QTest::newRow("assignment") << "(contassign 0 n)"
                                << "n W, b ....";
    QTest::newRow("assignment to bits") << "(assign 0 (sel b:u4 1 2))"
                                        << "n ., b .WW.";
    QTest::newRow("assignment to a computed bit") << "(assign 0 (sel b:u4 n:bit 1))"
                                                  << "n ., b ..WW";
    QTest::newRow("concatenation") << "(assign 0 (concat n (sel b:u4 0 1)))"
                                   << "n W, b ...W";
    QTest::newRow("constant of a declaration") << "(var:bit name=k (const name=1'h0))"
                                               << "n ., b ...., k W";
    QTest::newRow("supply") << "(contassign loc=s (const loc=s name=1'h0)"
                               " (varref name=s loc=s) (strengthspec)) (var:bit name=s loc=s)"
                            << "n ., b ...., s X+";
    QTest::newRow("sample of a clocking block") << "(assign (sampled n) b)"
                                                << "n ., b ....";
    QTest::newRow("string") << "(var:text name=t)"
                            << "n ., b ...., t X";
    QTest::newRow("memory") << "(var:words name=m) (assign 0 (arraysel m:words n:bit))"
                            << "n ., b ...., m X+";
    QTest::newRow("array") << "(var:words name=m) (assign 0 (arraysel m:words 1))"
                           << "n ., b ...., m[1] WWWW, m[0] ....";
    QTest::newRow("output of a routine")
        << "(task name=t (var:bit name=i dir=input) (var:bit name=o dir=output))"
           " (taskref name=t (arg b) (arg n))"
        << "n W, b ....";
    QTest::newRow("argument beyond those of the routine")
        << "(task name=t (var:bit name=o dir=output)) (taskref name=t (arg n) (arg b))"
        << "n W, b ....";
    QTest::newRow("output of an instance") << "(instance name=u defName=leaf (port name=o n))"
                                           << "n W, b ....";
    QTest::newRow("input of an instance") << "(instance name=u defName=leaf (port name=i n))"
                                          << "n ., b ....";
    QTest::newRow("inout that is driven within")
        << "(instance name=u defName=leaf (port name=d b:u4))"
        << "n ., b WWWW";
    QTest::newRow("part of an inout that is driven within")
        << "(instance name=u defName=leaf (port name=h b:u4))"
        << "n ., b ..WW";
    QTest::newRow("inout that nothing drives")
        << "(instance name=u defName=leaf (port name=q n:bit))"
        << "n ., b ....";
    QTest::newRow("input that is written within")
        << "(instance name=u defName=leaf (port name=w n:bit))"
        << "n W, b ....";
    QTest::newRow("port left empty in the list")
        << "(instance name=u defName=leaf (port name=__pinNumber7 n:bit))"
        << "n ., b ....";
    QTest::newRow("pin of a module without a source")
        << "(instance name=u defName=nowhere (port name=p n))"
        << "n O, b ....";
    QTest::newRow("calculation at such a pin")
        << "(instance name=u defName=nowhere (port name=p (not n)))"
        << "n ., b ....";
    QTest::newRow("inout of a primitive") << "(instance name=u defName=udp (port name=p n))"
                                          << "n W, b ....";
}

void TestDefinitionMarker::marksNets()
{
    QFETCH(QString, members);
    const DesignXml xml(
        QStringLiteral("(module name=top (var:bit name=n) (var:u4 name=b) %1)"
                       " (module name=leaf (var:bit name=o dir=output pinIndex=1)"
                       " (var:bit name=i dir=input pinIndex=2) (var:u4 name=d dir=inout pinIndex=3)"
                       " (var:u4 name=h dir=inout pinIndex=4) (var:bit name=q dir=inout pinIndex=5)"
                       " (var:bit name=w dir=input pinIndex=6)"
                       " (var:bit name=__pinNumber7 origName=__pinNumber7 dir=input pinIndex=7)"
                       " (assign 0 o) (assign 0 d) (assign 0 (sel h:u4 0 2)) (assign 0 w))"
                       " (primitive name=udp (var:bit name=p dir=inout pinIndex=1))")
            .arg(members),
        Types);
    QCOMPARE(xml.error(), QString());
    const DesignPhases phases(xml);
    QTEST(marksText(phases.top()), "expected");
}

void TestDefinitionMarker::marksOptions()
{
    ReadOptions options;
    options.tiedNets.insert(QStringLiteral("top"), {QStringLiteral("tied")});
    options.omittedWrites.insert(QStringLiteral("top"), {{QStringLiteral("b"), QString(), 1, 0}});
    options.unknownModules = {QStringLiteral("stub")};
    const DesignXml xml(QStringLiteral("(module name=top (var:bit name=tied) (var:u4 name=b)"
                                       " (var:bit name=n)"
                                       " (instance name=u defName=stub (port name=p n)))"
                                       " (module name=stub (var:bit name=p dir=inout pinIndex=1))"),
                        {}, options);
    QCOMPARE(xml.error(), QString());
    const DesignPhases phases(xml);
    QCOMPARE(marksText(phases.top()), QStringLiteral("tied O, b ..WW, n O"));
}

void TestDefinitionMarker::listsWhatInstancesTell_data()
{
    QTest::addColumn<QString>("members");
    QTest::addColumn<int>("writes");
    QTest::addColumn<int>("connections");
    QTest::addColumn<int>("connected");
    QTest::newRow("nothing") << "(assign 0 n)" << 0 << 0 << 0;
    QTest::newRow("write to another node")
        << "(assign 0 (varxref name=x dotted=u)) (assign 0 (varxref name=y dotted=u))" << 2 << 0
        << 0;
    QTest::newRow("input") << "(instance name=u defName=leaf (port name=i n))" << 0 << 1 << 0;
    QTest::newRow("input of another node's net")
        << "(instance name=u defName=leaf (port name=i (varxref:bit name=x dotted=v)))" << 0 << 1
        << 1;
    QTest::newRow("output to another node's net")
        << "(instance name=u defName=leaf (port name=o (varxref:bit name=x dotted=v)))" << 1 << 0
        << 0;
    QTest::newRow("open port") << "(instance name=u defName=leaf (port name=i))" << 0 << 0 << 0;
}

void TestDefinitionMarker::listsWhatInstancesTell()
{
    QFETCH(QString, members);
    const DesignXml xml(QStringLiteral("(module name=top (var:bit name=n) %1)"
                                       " (module name=leaf (var:bit name=i dir=input pinIndex=1)"
                                       " (var:bit name=o dir=output pinIndex=2))")
                            .arg(members));
    QCOMPARE(xml.error(), QString());
    const DesignPhases phases(xml);
    QTEST(countOf(phases.top().writesElsewhere), "writes");
    QTEST(countOf(phases.top().connections), "connections");
    QTEST(countOf(phases.top().connectedElsewhere), "connected");
}

QTEST_GUILESS_MAIN(TestDefinitionMarker)
#include "tst_definitionmarker.moc"
