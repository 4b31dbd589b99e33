// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designphases.h"

#include <netweir/internal/nets/connectionbuilder.h>

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR::Internal;
using TarnTest::DesignPhases;
using TarnTest::DesignXml;

/// Connections of ports and their segments, without the elaborator.
class TestConnectionBuilder : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void dividesExpressions_data();
    void dividesExpressions();
};

namespace {

/// The segments from the least significant on: first and last bit of own ones, the number of the
/// reference of others, or "driven", each with the width.
QString connectionText(const Connection &connection)
{
    QStringList found;
    for (const Segment &segment : connection.segments) {
        const QString width = QString::number(segment.width);
        if (segment.kind == Segment::Kind::Own)
            found += QStringLiteral("own %1+%2").arg(QString::number(segment.bit), width);
        else if (segment.kind == Segment::Kind::Elsewhere)
            found += QStringLiteral("#%1+%2").arg(QString::number(segment.reference), width);
        else
            found += QStringLiteral("driven+%1").arg(width);
    }
    return found.join(QStringLiteral(", "));
}

} // namespace

void TestConnectionBuilder::dividesExpressions_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("expected");
    QTest::newRow("vector") << "b:u8"
                            << "own 4+8";
    QTest::newRow("constant") << "(const:u4 name=4'hf)"
                              << "driven+4";
    QTest::newRow("part select") << "(sel:u3 b:u8 2 3)"
                                 << "own 6+3";
    QTest::newRow("element of an array") << "(arraysel:u4 m:words 1)"
                                         << "own 16+4";
    QTest::newRow("computed index") << "(sel:bit b:u8 a:u4 1)"
                                    << "driven+1";
    QTest::newRow("part beyond the end") << "(sel:u4 b:u8 6 4)"
                                         << "driven+4";
    QTest::newRow("concatenation, least significant first") << "(concat:u12 a:u4 b:u8)"
                                                            << "own 4+8, own 0+4";
    QTest::newRow("nested concatenation")
        << "(concat:u13 (concat:u12 a:u4 b:u8) (const:bit name=1'h0))"
        << "driven+1, own 4+8, own 0+4";
    QTest::newRow("calculation within a concatenation") << "(concat:u8 (not:u4 a:u4) a:u4)"
                                                        << "own 0+4, driven+4";
    QTest::newRow("extended") << "(extend:u8 a:u4)"
                              << "own 0+4, driven+4";
    QTest::newRow("extended with its sign") << "(extends:u8 a:u4)"
                                            << "own 0+4, driven+4";
    QTest::newRow("part select of a concatenation") << "(sel:u4 (concat:u12 a:u4 b:u8) 0 4)"
                                                    << "driven+4";
    QTest::newRow("local") << "p:s32"
                           << "driven+32";
    QTest::newRow("unknown name") << "nothing:u2"
                                  << "driven+2";
    QTest::newRow("other nodes")
        << "(concat:u8 (varxref:u4 name=x dotted=u) (varxref:u4 name=y dotted=u))"
        << "#0+4, #1+4";
}

void TestConnectionBuilder::dividesExpressions()
{
    QFETCH(QString, expression);
    const DesignXml xml = DesignXml::ofModule(
        QStringLiteral("(var:u4 name=a) (var:u8 name=b) (var:words name=m)"
                       " (var:s32 name=p param=true) (port name=p %1)")
            .arg(expression),
        QStringLiteral("(unpackarraydtype id=words sub_dtype_id=u4 (range 1 0))"));
    QCOMPARE(xml.error(), QString());
    const DesignPhases phases(xml);
    const BitLocator bits(phases.design, phases.layout, phases.placed.front());
    std::vector<ElsewhereReference> elsewhere;
    ConnectionBuilder builder(phases.design.types(), bits, &elsewhere);
    const Connection connection = builder.connect(3, 5, {xml.element("port").first_child(), 0});
    QCOMPARE(connection.item, 3);
    QCOMPARE(connection.port, 5);
    QTEST(connectionText(connection), "expected");
}

QTEST_GUILESS_MAIN(TestConnectionBuilder)
#include "tst_connectionbuilder.moc"
