// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designxml.h"

#include <netweir/internal/nets/layout.h>
#include <netweir/internal/nets/memories.h>

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR::Internal;
using TarnTest::DesignXml;

class TestLayout : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void netsGetTheirBits_data();
    void netsGetTheirBits();
    void memoriesTakeOneBit_data();
    void memoriesTakeOneBit();
    void largestArraysAreListed();
    void variablesGetTheirBits();
    void placingEndsWithTooManyBits();
    void referencesAreLocated_data();
    void referencesAreLocated();
    void partsOfMemoriesAreTheirBit_data();
    void partsOfMemoriesAreTheirBit();
    void locatedBitsCountFromThoseOfTheVariable();
};

namespace {

/// "v[7:0]@4", the lowest bit last; "m@2!" for an excluded net.
QString netText(const PlacedNet &net)
{
    QString text = net.name;
    if (net.isBus)
        text += QStringLiteral("[%1:%2]").arg(net.left).arg(net.right);
    return text + '@' + QString::number(net.bit) +
           (net.isExcluded ? QStringLiteral("!") : QString());
}

/// The number of bits and all nets.
QString placedText(const PlacedDefinition &placed)
{
    QStringList texts{QString::number(placed.bits)};
    for (const PlacedNet &net : placed.nets)
        texts += netText(net);
    return texts.join(QLatin1Char(' '));
}

/// The arrays of the first variable that the computed indexes in @p definition make memories.
Memories memoriesIn(const Definition &definition)
{
    Memories memories;
    for (const Occurrence &selection : definition.computedIndexes) {
        forEachReference(selection, [&](const Reference &reference) {
            memories.add(definition.variables.front(), reference);
        });
    }
    return memories;
}

/// The bits of the first variable from the most significant on, 'X' for those that the reference in
/// the element "target" selects.
QString locatedText(const DesignXml &design, const Memories &memories)
{
    const Definition &definition = design->top();
    const Layout layout(design->types(), memories);
    const PlacedDefinition placed = layout.place(definition);
    const IndexEvaluator indexes(definition, design->types());
    QString text(int(placed.bits), QLatin1Char('.'));
    forEachReference({design.element("target").first_child(), 0}, [&](const Reference &reference) {
        forEachBit(layout.locate(placed.variables.front(), reference, indexes),
                   [&](qint64 bit) { text[int(placed.bits - 1 - bit)] = QLatin1Char('X'); });
    });
    return text;
}

const char Types[] = "(packarraydtype id=bits sub_dtype_id=bit (range 3 0))"
                     "(packarraydtype id=rows sub_dtype_id=u4 (range 0 1))"
                     "(packarraydtype id=cube sub_dtype_id=rows (range 2 1))"
                     "(unpackarraydtype id=down sub_dtype_id=u2 (range 3 1))"
                     "(unpackarraydtype id=up sub_dtype_id=u2 (range -1 1))"
                     "(unpackarraydtype id=pair sub_dtype_id=up (range 1 0))"
                     "(unpackarraydtype id=flags sub_dtype_id=bit (range 3 0))"
                     "(unpackarraydtype id=reals sub_dtype_id=real (range 1 0))"
                     "(unpackarraydtype id=large sub_dtype_id=u1 (range 4096 0))"
                     "(unpackarraydtype id=largest sub_dtype_id=u1 (range 4095 0))"
                     "(basicdtype id=real name=real)"
                     "(basicdtype id=neg name=logic left=1 right=-2)"
                     "(basicdtype id=rise name=logic left=0 right=2)"
                     "(structdtype id=s (memberdtype id=s1 name=a sub_dtype_id=u3)"
                     " (memberdtype id=s2 name=b sub_dtype_id=bit))"
                     "(structdtype id=outer (memberdtype id=o1 name=x sub_dtype_id=bit)"
                     " (memberdtype id=o2 name=in sub_dtype_id=s))"
                     "(structdtype id=mixed (memberdtype id=m1 name=a sub_dtype_id=down)"
                     " (memberdtype id=m2 name=b sub_dtype_id=up)"
                     " (memberdtype id=m3 name=c sub_dtype_id=bit))"
                     "(structdtype id=none)"
                     "(basicdtype id=wide name=logic left=4999 right=0)"
                     "(unpackarraydtype id=one sub_dtype_id=bit (range 0 0))"
                     "(unpackarraydtype id=ones sub_dtype_id=one (range 0 0))"
                     "(uniondtype id=uone (memberdtype id=u6m name=a sub_dtype_id=one))"
                     "(uniondtype id=u (memberdtype id=u1m name=a sub_dtype_id=u3)"
                     " (memberdtype id=u2m name=b sub_dtype_id=s))"
                     "(uniondtype id=ubit (memberdtype id=u3m name=a sub_dtype_id=bit))"
                     "(uniondtype id=umix (memberdtype id=u4m name=a sub_dtype_id=down)"
                     " (memberdtype id=u5m name=b sub_dtype_id=u4))"
                     "(unpackarraydtype id=structs sub_dtype_id=s (range 1 0))"
                     "(unpackarraydtype id=mixes sub_dtype_id=mixed (range 0 1))"
                     "(packarraydtype id=pstructs sub_dtype_id=s (range 1 0))";

void addTargetColumns()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("expected");
}

/// A row with a reference to the variable v of that type and the bits that it takes.
void addTarget(const char *type, const char *target, const char *expected)
{
    QTest::addRow("%s of %s", target, type)
        << QString::fromLatin1(type) << QString::fromLatin1(target)
        << QString::fromLatin1(expected);
}

} // namespace

void TestLayout::netsGetTheirBits_data()
{
    QTest::addColumn<QString>("variables");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *variables, const char *expected) {
        QTest::newRow(name) << QString::fromLatin1(variables) << QString::fromLatin1(expected);
    };
    row("nothing", "", "0");
    row("a single net", "(var:bit name=v)", "1 v@0");
    row("a vector", "(var:u8 name=v)", "8 v[7:0]@0");
    row("a vector of one bit", "(var:u1 name=v)", "1 v[0:0]@0");
    row("several", "(var:u8 name=v) (var:bit name=w) (var:u2 name=x)", "11 v[7:0]@0 w@8 x[1:0]@9");
    row("negative bounds", "(var:neg name=v)", "4 v[1:-2]@0");
    row("a rising range", "(var:rise name=v)", "3 v[0:2]@0");
    row("no net", "(var:u8 name=p param=true) (var:u8 name=v)", "8 v[7:0]@0");
    row("in a scope", "(begin name=g (begin name=h (var:u2 name=v)))", "2 g.h.v[1:0]@0");
    row("a packed array of bits", "(var:bits name=v)", "4 v[3:0]@0");
    row("a packed array of vectors", "(var:rows name=v)", "8 v[0][3:0]@4 v[1][3:0]@0");
    row("packed arrays in three dimensions", "(var:cube name=v)",
        "16 v[2][0][3:0]@12 v[2][1][3:0]@8 v[1][0][3:0]@4 v[1][1][3:0]@0");
    row("an unpacked array", "(var:down name=v)", "6 v[3][1:0]@4 v[2][1:0]@2 v[1][1:0]@0");
    row("a rising unpacked array", "(var:up name=v)", "6 v[-1][1:0]@4 v[0][1:0]@2 v[1][1:0]@0");
    row("an unpacked array of single nets", "(var:flags name=v)", "4 v[3]@3 v[2]@2 v[1]@1 v[0]@0");
    row("nested unpacked arrays", "(var:pair name=v)",
        "12 v[1][-1][1:0]@10 v[1][0][1:0]@8 v[1][1][1:0]@6 "
        "v[0][-1][1:0]@4 v[0][0][1:0]@2 v[0][1][1:0]@0");
    row("a structure", "(var:s name=v)", "4 v.a[2:0]@1 v.b@0");
    row("a nested structure", "(var:outer name=v)", "5 v.x@4 v.in.a[2:0]@1 v.in.b@0");
    row("a structure without members", "(var:none name=v) (var:bit name=w)", "2 w@1");
    row("a packed array of structures", "(var:pstructs name=v)",
        "8 v[1].a[2:0]@5 v[1].b@4 v[0].a[2:0]@1 v[0].b@0");
    row("an unpacked array of structures", "(var:structs name=v)",
        "8 v[1].a[2:0]@5 v[1].b@4 v[0].a[2:0]@1 v[0].b@0");
    row("a structure with unpacked arrays", "(var:mixed name=v)",
        "13 v.a[3][1:0]@11 v.a[2][1:0]@9 v.a[1][1:0]@7 "
        "v.b[-1][1:0]@5 v.b[0][1:0]@3 v.b[1][1:0]@1 v.c@0");
    row("a union", "(var:u name=v)", "4 v[3:0]@0");
    row("a union of one bit", "(var:ubit name=v)", "1 v@0");
    row("a union with an unpacked array", "(var:umix name=v)",
        "6 v.a[3][1:0]@4 v.a[2][1:0]@2 v.a[1][1:0]@0 v.b[3:0]@0");
    row("a union with an unpacked array of one bit", "(var:uone name=v)", "1 v.a[0]@0");
    row("a wide vector", "(var:wide name=v)", "5000 v[4999:0]@0");
    row("something without bits", "(var:real name=v) (var:bit name=w)", "2 v@0! w@1");
    row("an array of it", "(var:reals name=v)", "2 v[1]@1! v[0]@0!");
    row("a type that is not known", "(var:z name=v)", "1 v@0!");
    row("an array too large", "(var:bit name=w) (var:large name=v) (var:bit name=x)",
        "3 w@0 v@1! x@2");
}

void TestLayout::netsGetTheirBits()
{
    QFETCH(QString, variables);
    const DesignXml design = DesignXml::ofModule(variables, QString::fromLatin1(Types));
    QTEST(placedText(Layout(design->types(), Memories()).place(design->top())), "expected");
}

void TestLayout::memoriesTakeOneBit_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("selection"); ///< Of a computed index.
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *type, const char *selection,
                        const char *expected) {
        QTest::newRow(name) << QString::fromLatin1(type) << QString::fromLatin1(selection)
                            << QString::fromLatin1(expected);
    };
    row("an array", "down", "(arraysel v i)", "1 v@0!");
    row("an array of arrays, by its outer index", "pair", "(arraysel v i)", "1 v@0!");
    row("an array of arrays, by its inner index", "pair", "(arraysel (arraysel v 1) i)", "1 v@0!");
    row("an array of structures", "structs", "(arraysel v i)", "1 v@0!");
    row("a member", "mixed", "(arraysel (structsel v name=a) i)",
        "8 v.a@7! v.b[-1][1:0]@5 v.b[0][1:0]@3 v.b[1][1:0]@1 v.c@0");
    row("a member of elements", "mixes", "(arraysel (structsel (arraysel v 0) name=b) i)",
        "16 v[0].a[3][1:0]@14 v[0].a[2][1:0]@12 v[0].a[1][1:0]@10 v[0].b@9! v[0].c@8 "
        "v[1].a[3][1:0]@6 v[1].a[2][1:0]@4 v[1].a[1][1:0]@2 v[1].b@1! v[1].c@0");
    row("a member of a union", "umix", "(arraysel (structsel v name=a) i)", "4 v.a@0! v.b[3:0]@0");
    row("a packed array", "rows", "(arraysel v i)", "8 v[0][3:0]@4 v[1][3:0]@0");
}

void TestLayout::memoriesTakeOneBit()
{
    QFETCH(QString, type);
    QFETCH(QString, selection);
    const DesignXml design = DesignXml::ofModule(
        QStringLiteral("(var:%1 name=v) %2").arg(type, selection), QString::fromLatin1(Types));
    const Memories memories = memoriesIn(design->top());
    QTEST(placedText(Layout(design->types(), memories).place(design->top())), "expected");
}

/// An array of 4096 bits is the largest that is no memory.
void TestLayout::largestArraysAreListed()
{
    const DesignXml design =
        DesignXml::ofModule(QStringLiteral("(var:largest name=v)"), QString::fromLatin1(Types));
    const PlacedDefinition placed = Layout(design->types(), Memories()).place(design->top());
    QCOMPARE(placed.bits, qint64(4096));
    QCOMPARE(int(placed.nets.size()), 4096);
}

void TestLayout::variablesGetTheirBits()
{
    const DesignXml design = DesignXml::ofModule(
        QStringLiteral("(var:u8 name=v) (var:u8 name=p param=true) (var:u2 name=w)"));
    const PlacedDefinition placed = Layout(design->types(), Memories()).place(design->top());
    QCOMPARE(placed.definition, &design->top());
    QStringList texts;
    for (const PlacedVariable &variable : placed.variables) {
        texts += QStringLiteral("%1@%2+%3")
                     .arg(variable.variable->name)
                     .arg(variable.bit)
                     .arg(variable.width);
    }
    QCOMPARE(texts.join(QLatin1Char(' ')), QStringLiteral("v@0+8 p@8+0 w@8+2"));
}

void TestLayout::placingEndsWithTooManyBits()
{
    const DesignXml design = DesignXml::ofModule(
        QStringLiteral("(var:most name=v) (var:bit name=w) (var:bit name=x)"),
        QStringLiteral("(basicdtype id=most name=logic left=%1 right=0)").arg(MostBits - 1));
    const PlacedDefinition placed = Layout(design->types(), Memories()).place(design->top());
    QCOMPARE(placed.bits, MostBits + 1);
    QCOMPARE(int(placed.nets.size()), 1);
}

void TestLayout::referencesAreLocated_data()
{
    addTargetColumns();
    const auto row = addTarget;
    row("bit", "v", "X");
    row("u8", "v", "XXXXXXXX");
    row("u8", "(sel v 0 1)", ".......X");
    row("u8", "(sel v 7 1)", "X.......");
    row("u8", "(sel v 2 3)", "...XXX..");
    row("u8", "(sel v 6 4)", "XX......");
    row("u8", "(sel v 8 1)", "........");
    row("u8", "(sel v -1 1)", "........");
    row("u8", "(sel v -2 4)", "......XX");
    row("u8", "(sel v i:u2 1)", "....XXXX");
    row("u8", "(sel v i:u2 3)", "..XXXXXX");
    row("u8", "(sel v i:u8 1)", "XXXXXXXX");
    row("u8", "(sel v (mul:u8 i:u2 2) 1)", ".X.X.X.X");
    row("u8", "(sel v (mul:u8 i:u2 4) 2)", "..XX..XX");
    row("u8", "(sel v (sub:s64 (mul:s64 i:u2 4) 3) 2)", ".XX..XX.");
    row("u8", "(sel v i:s3 1)", "....XXXX");
    row("u8", "(sel v 2 i:u2)", "XXXXXX..");
    row("u8", "(sel (sel v 2 4) 1 2)", "...XX...");
    row("rows", "(sel v 4 4)", "XXXX....");
    row("down", "v", "XXXXXX");
    row("down", "(arraysel v 0)", "....XX");
    row("down", "(arraysel v 2)", "XX....");
    row("down", "(arraysel v 3)", "......");
    row("down", "(arraysel v -1)", "......");
    row("down", "(arraysel v i:u2)", "XXXXXX");
    row("down", "(sel (arraysel v i:u2) 1 1)", "X.X.X.");
    row("down", "(sel (arraysel v 1) 0 1)", "...X..");
    row("up", "(arraysel v 0)", "XX....");
    row("up", "(arraysel v 2)", "....XX");
    row("up", "(arraysel v 3)", "......");
    row("pair", "(arraysel v 1)", "XXXXXX......");
    row("pair", "(arraysel (arraysel v 0) 0)", "......XX....");
    row("pair", "(arraysel (arraysel v 2) 0)", "............");
    row("pair", "(sel (arraysel (arraysel v i:u1) 2) 0 1)", ".....X.....X");
    row("down", "(slicesel v 0 2)", "..XXXX");
    row("down", "(slicesel v 1 2)", "XXXX..");
    row("down", "(slicesel v 0 3)", "XXXXXX");
    row("down", "(slicesel v 0 4)", "......");
    row("down", "(slicesel v 2 2)", "......");
    row("down", "(slicesel v -1 2)", "......");
    row("down", "(slicesel v 0 0)", "......");
    row("down", "(slicesel v i:u2 1)", "......");
    row("down", "(slicesel v 0 i:u2)", "......");
    row("up", "(slicesel v 0 2)", "XXXX..");
    row("up", "(slicesel v 1 1)", "..XX..");
    row("u8", "(slicesel v 0 2)", "XXXXXXXX");
    row("u8", "(arraysel v 0)", "XXXXXXXX");
    row("u8", "(structsel (sel v 0 2) name=a)", "......XX");
    row("u8", "(arraysel (sel v 0 2) 0)", "......XX");
    row("u8", "(slicesel (sel v 0 2) 0 1)", "......XX");
    row("s", "(structsel v name=a)", "XXX.");
    row("s", "(structsel v name=b)", "...X");
    row("s", "(structsel v name=z)", "XXXX");
    row("s", "(sel (structsel v name=a) 1 1)", ".X..");
    row("outer", "(structsel v name=in)", ".XXXX");
    row("outer", "(structsel (structsel v name=in) name=b)", "....X");
    row("u", "(structsel v name=a)", ".XXX");
    row("u", "(structsel (structsel v name=b) name=a)", "XXX.");
    row("mixed", "(structsel v name=b)", "......XXXXXX.");
    row("mixed", "(arraysel (structsel v name=a) 2)", "XX...........");
    row("umix", "(structsel v name=b)", "..XXXX");
    row("s", "(structsel (sel v 1 3) name=b)", "XXX.");
    row("ones", "(arraysel (arraysel v 0) 0)", "X");
    row("ones", "(arraysel (arraysel v 0) 1)", ".");
    row("structs", "(structsel (arraysel v 1) name=b)", "...X....");
    row("structs", "(structsel (arraysel v i:u1) name=b)", "...X...X");
}

void TestLayout::referencesAreLocated()
{
    QFETCH(QString, type);
    QFETCH(QString, target);
    const DesignXml design =
        DesignXml::ofModule(QStringLiteral("(var:%1 name=v) (target %2)").arg(type, target),
                            QString::fromLatin1(Types));
    QTEST(locatedText(design, Memories()), "expected");
}

void TestLayout::partsOfMemoriesAreTheirBit_data()
{
    addTargetColumns();
    const auto row = addTarget;
    row("down", "(arraysel v i:u2)", "X");
    row("down", "(sel (arraysel v i:u2) 1 1)", "X");
    row("mixed", "(arraysel (structsel v name=a) i:u2)", "X.......");
    row("mixed", "(sel (arraysel (structsel v name=b) i:u2) 0 1)", "......X.");
    row("large", "(arraysel v 3)", "X");
}

void TestLayout::partsOfMemoriesAreTheirBit()
{
    QFETCH(QString, type);
    QFETCH(QString, target);
    const DesignXml design =
        DesignXml::ofModule(QStringLiteral("(var:%1 name=v) (target %2)").arg(type, target),
                            QString::fromLatin1(Types));
    QTEST(locatedText(design, memoriesIn(design->top())), "expected");
}

void TestLayout::locatedBitsCountFromThoseOfTheVariable()
{
    const DesignXml design =
        DesignXml::ofModule(QStringLiteral("(var:u8 name=w) (var:u4 name=v) (target (sel v 1 2))"));
    const Memories memories;
    const Layout layout(design->types(), memories);
    const PlacedDefinition placed = layout.place(design->top());
    QCOMPARE(placed.variables.back().bit, qint64(8));
    const pugi::xml_node target = design.element("target").first_child();
    const Reference reference{target.first_child(), {target}, 0};
    const BitRange range = layout.locate(placed.variables.back(), reference,
                                         IndexEvaluator(design->top(), design->types()));
    QCOMPARE(range.low, qint64(9));
    QCOMPARE(range.high, qint64(9));
    QCOMPARE(range.width, qint64(2));
    QCOMPARE(range.end, qint64(12));
}

QTEST_APPLESS_MAIN(TestLayout)
#include "tst_layout.moc"
