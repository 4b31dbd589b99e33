// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "indexrangetext.h"

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR::Internal;
using TarnTest::rangeText;

namespace {

constexpr qint64 Limit = IndexLimit;

IndexRange single(qint64 value)
{
    return IndexRange::single(value);
}

QString resultText(const char *operation, const IndexRange &a, const IndexRange &b)
{
    const IndexCalculation calculation = calculationOf(operation);
    if (!calculation)
        return QStringLiteral("no calculation");
    const auto result = calculation(a, b);
    return result ? rangeText(*result) : QStringLiteral("unknown");
}

bool contains(const IndexRange &range, qint64 value)
{
    return value >= range.low && value <= range.high &&
           (range.step == 0 || (value - range.low) % range.step == 0);
}

/// Ranges of small numbers on both sides of 0.
QVector<IndexRange> smallRanges()
{
    QVector<IndexRange> ranges;
    for (qint64 low = -9; low <= 9; ++low) {
        ranges.append(single(low));
        for (qint64 step = 1; step <= 4; ++step) {
            for (qint64 count = 1; count <= 3; ++count)
                ranges.append({low, low + count * step, step});
        }
    }
    return ranges;
}

/// The value that the operation gives for two numbers; nothing for one without result.
std::optional<qint64> exactResult(const QByteArray &operation, qint64 a, qint64 b)
{
    if (operation == "add")
        return a + b;
    if (operation == "sub")
        return a - b;
    if (operation == "mul")
        return a * b;
    if (operation == "and")
        return a & b;
    if (b >= 0 && operation == "shiftl")
        return a * (qint64(1) << b);
    if (b >= 0 && operation == "shiftr")
        return a >> b;
    if (b != 0 && operation == "divs")
        return a / b;
    if (b != 0 && operation == "moddivs")
        return a % b;
    return std::nullopt;
}

} // namespace

Q_DECLARE_METATYPE(NETWEIR::Internal::IndexRange)

class TestIndexRange : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void operationsGiveRanges_data();
    void operationsGiveRanges();
    void operationsHoldEveryResult_data();
    void operationsHoldEveryResult();
    void widthsGiveRanges_data();
    void widthsGiveRanges();
    void rangesAreBounded_data();
    void rangesAreBounded();
    void repeatedProductsStayWithinTheLimit();
    void rangesAreTruncated_data();
    void rangesAreTruncated();
    void truncatedRangesHoldEveryValue();
    void wrappingLeavesSingleValuesAlone();
    void rangesAreUnited_data();
    void rangesAreUnited();
    void numbersAreCompared_data();
    void numbersAreCompared();
};

void TestIndexRange::operationsGiveRanges_data()
{
    QTest::addColumn<QByteArray>("operation");
    QTest::addColumn<IndexRange>("a");
    QTest::addColumn<IndexRange>("b");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *operation, const IndexRange &a, const IndexRange &b,
                        const char *expected) {
        QTest::addRow("%s %s %s", qPrintable(rangeText(a)), operation, qPrintable(rangeText(b)))
            << QByteArray(operation) << a << b << QString::fromLatin1(expected);
    };
    const IndexRange threes{1, 10, 3};
    row("add", single(3), single(-5), "-2");
    row("add", threes, single(2), "3..12/3");
    row("add", threes, {0, 12, 6}, "1..22/3");
    row("add", threes, {0, 4, 2}, "1..14/1");
    row("add", {0, Limit, 1}, single(5), "5..1099511627776/1");
    row("sub", single(3), single(5), "-2");
    row("sub", threes, {0, 12, 6}, "-11..10/3");
    row("mul", single(3), single(5), "15");
    row("mul", threes, single(4), "4..40/12");
    row("mul", single(4), threes, "4..40/12");
    row("muls", threes, single(0), "0");
    row("mul", threes, threes, "unknown");
    row("mul", threes, single(-1), "unknown");
    row("mul", threes, single(65536), "65536..655360/196608");
    row("mul", threes, single(65537), "unknown");
    row("muls", {-2, 2, 2}, single(3), "-6..6/6");
    row("shiftl", threes, single(0), "1..10/3");
    row("shiftl", threes, single(16), "65536..655360/196608");
    row("shiftl", threes, single(17), "unknown");
    row("shiftl", single(1), {0, 3, 1}, "unknown");
    row("shiftl", threes, single(-1), "unknown");
    row("shiftl", {-1, 1, 1}, single(1), "unknown");
    row("shiftr", single(13), single(2), "3");
    row("shiftr", {4, 13, 3}, single(2), "1..3/1");
    row("shiftr", {4, 13, 3}, single(0), "4..13/1");
    row("shiftr", {0, Limit, 1}, single(39), "0..2/1");
    row("shiftr", {0, Limit, 1}, single(40), "unknown");
    row("shiftr", single(-1), single(1), "unknown");
    row("and", single(13), single(6), "4");
    row("and", {0, 13, 1}, single(6), "0..6/1");
    row("and", {0, 5, 1}, single(6), "0..5/1");
    row("and", {0, 5, 1}, single(0), "0..0/1");
    row("and", single(6), {0, 5, 1}, "unknown");
    row("div", single(13), single(6), "2");
    row("div", {6, 13, 1}, single(6), "1..2/1");
    row("divs", {6, 13, 1}, single(1), "6..13/1");
    row("div", {6, 13, 1}, single(0), "unknown");
    row("div", {6, 13, 1}, {1, 2, 1}, "unknown");
    row("moddiv", single(13), single(6), "1");
    row("moddivs", {6, 13, 1}, single(6), "0..5/1");
    row("moddiv", {6, 13, 1}, single(1), "0..0/1");
    row("moddiv", single(13), single(0), "unknown");
    row("or", single(1), single(2), "no calculation");
}

void TestIndexRange::operationsGiveRanges()
{
    QFETCH(QByteArray, operation);
    QFETCH(IndexRange, a);
    QFETCH(IndexRange, b);
    QTEST(resultText(operation, a, b), "expected");
}

void TestIndexRange::operationsHoldEveryResult_data()
{
    QTest::addColumn<QByteArray>("operation");
    for (const char *operation :
         {"add", "sub", "mul", "and", "shiftl", "shiftr", "divs", "moddivs"})
        QTest::newRow(operation) << QByteArray(operation);
}

/// For each pair of numbers of two small ranges, the result is in the range that they give.
void TestIndexRange::operationsHoldEveryResult()
{
    QFETCH(QByteArray, operation);
    const IndexCalculation calculation = calculationOf(operation.constData());
    QVERIFY(calculation);
    int known = 0;
    const QVector<IndexRange> ranges = smallRanges();
    for (const IndexRange &a : ranges) {
        for (const IndexRange &b : ranges) {
            const auto results = calculation(a, b);
            if (!results)
                continue;
            ++known;
            for (qint64 x = a.low; x <= a.high; x += qMax<qint64>(a.step, 1)) {
                for (qint64 y = b.low; y <= b.high; y += qMax<qint64>(b.step, 1)) {
                    const auto exact = exactResult(operation, x, y);
                    if (!exact || !contains(*results, *exact))
                        QFAIL(qPrintable(rangeText(a) + ' ' + operation + ' ' + rangeText(b)));
                }
            }
        }
    }
    QVERIFY(known > 0);
}

void TestIndexRange::widthsGiveRanges_data()
{
    QTest::addColumn<qint64>("width");
    QTest::addColumn<bool>("isSigned");
    QTest::addColumn<QString>("expected");
    QTest::newRow("one bit") << qint64(1) << false << QStringLiteral("0..1/1");
    QTest::newRow("one bit with sign") << qint64(1) << true << QStringLiteral("-1..0/1");
    QTest::newRow("three bits") << qint64(3) << false << QStringLiteral("0..7/1");
    QTest::newRow("three bits with sign") << qint64(3) << true << QStringLiteral("-4..3/1");
    QTest::newRow("38 bits") << qint64(38) << false << QStringLiteral("0..274877906943/1");
    QTest::newRow("39 bits") << qint64(39) << false << QStringLiteral("all");
    QTest::newRow("a very wide one") << qint64(1000000) << true << QStringLiteral("all");
}

void TestIndexRange::widthsGiveRanges()
{
    QFETCH(qint64, width);
    QFETCH(bool, isSigned);
    QTEST(rangeText(IndexRange::ofWidth(width, isSigned)), "expected");
}

void TestIndexRange::rangesAreBounded_data()
{
    QTest::addColumn<IndexRange>("range");
    QTest::addColumn<IndexRange>("expected");
    const auto row = [](const char *name, const IndexRange &range, const IndexRange &expected) {
        QTest::newRow(name) << range << expected;
    };
    const IndexRange all{-Limit, Limit, 1};
    row("within", {-Limit, Limit, 2}, {-Limit, Limit, 2});
    row("a single value at the limit", single(Limit), single(Limit));
    row("a single value at the lower limit", single(-Limit), single(-Limit));
    row("a single value above", single(Limit + 1), all);
    row("a single value below", single(-Limit - 1), all);
    row("the lower part above", {4, Limit + 4, 8}, {4, Limit - 4, 8});
    row("the upper part below", {-Limit - 4, -4, 8}, {-Limit + 4, -4, 8});
    row("both ends beyond", {-Limit - 2, Limit + 2, 6}, {-Limit + 4, Limit - 4, 6});
    row("all above", {Limit + 4, Limit + 12, 8}, {-Limit + 4, Limit - 4, 8});
    row("all below", {-Limit - 12, -Limit - 4, 8}, {-Limit + 4, Limit - 4, 8});
    row("steps beyond the limit", {-4 * Limit, 4 * Limit, 8 * Limit}, all);
}

void TestIndexRange::rangesAreBounded()
{
    QFETCH(IndexRange, range);
    QFETCH(IndexRange, expected);
    QCOMPARE(rangeText(bounded(range)), rangeText(expected));
    QCOMPARE(bounded(range).step, expected.step);
}

/// However often ranges are multiplied and bounded, no number overflows.
void TestIndexRange::repeatedProductsStayWithinTheLimit()
{
    const IndexCalculation product = calculationOf("mul");
    const QVector<IndexRange> starts = {{Limit / 2, Limit / 2 + 7, 1},
                                        {-Limit, Limit, 1},
                                        {0, 7, 1},
                                        {-Limit / 2 - 7, -5, 2},
                                        {Limit / 2 - 3, Limit / 2, 3}};
    for (IndexRange range : starts) {
        for (int i = 0; i < 8; ++i) {
            range = bounded(*product(range, single(65536)));
            QVERIFY2(range.low >= -Limit && range.high <= Limit, qPrintable(rangeText(range)));
            QVERIFY2(range.low <= range.high, qPrintable(rangeText(range)));
            QVERIFY2(range.isSingle() || range.step > 0, qPrintable(rangeText(range)));
        }
    }
}

void TestIndexRange::rangesAreTruncated_data()
{
    QTest::addColumn<IndexRange>("range");
    QTest::addColumn<qint64>("width");
    QTest::addColumn<QString>("expected");
    const auto row = [](const IndexRange &range, qint64 width, const char *expected) {
        QTest::addRow("%s to %lld", qPrintable(rangeText(range)), width)
            << range << width << QString::fromLatin1(expected);
    };
    row(single(13), 3, "5");
    row(single(-1), 3, "7");
    row({0, 7, 1}, 3, "0..7/1");
    row({0, 3, 1}, 3, "0..3/1");
    row({1, 3, 2}, 3, "1..3/2");
    row({0, 8, 1}, 3, "0..7/1");
    row({0, 8, 4}, 3, "0..4/4");
    row({-1, 1, 2}, 3, "1..7/2");
    row({5, 13, 4}, 3, "1..5/4");
    row({5, 14, 3}, 3, "0..7/1");
    row({5, 21, 16}, 3, "5..5/8");
    row({0, 8, 1}, 0, "0..8/1");
    row({0, Limit, 1}, 39, "0..549755813887/1");
    row({0, Limit, 1}, 40, "0..1099511627776/1");
}

void TestIndexRange::rangesAreTruncated()
{
    QFETCH(IndexRange, range);
    QFETCH(qint64, width);
    QTEST(rangeText(truncated(range, width)), "expected");
}

void TestIndexRange::truncatedRangesHoldEveryValue()
{
    for (const IndexRange &range : smallRanges()) {
        for (qint64 width = 1; width <= 5; ++width) {
            const IndexRange low = truncated(range, width);
            for (qint64 x = range.low; x <= range.high; x += qMax<qint64>(range.step, 1)) {
                QVERIFY2(contains(low, x & ((1 << width) - 1)),
                         qPrintable(QStringLiteral("%1 to %2").arg(rangeText(range)).arg(width)));
            }
        }
    }
}

void TestIndexRange::wrappingLeavesSingleValuesAlone()
{
    QCOMPARE(rangeText(wrapped(single(13), 3)), QStringLiteral("13"));
    QCOMPARE(rangeText(wrapped({5, 13, 4}, 3)), QStringLiteral("1..5/4"));
}

void TestIndexRange::rangesAreUnited_data()
{
    QTest::addColumn<IndexRange>("a");
    QTest::addColumn<IndexRange>("b");
    QTest::addColumn<QString>("expected");
    QTest::newRow("equal") << single(4) << single(4) << QStringLiteral("4");
    QTest::newRow("singles") << single(9) << single(4) << QStringLiteral("4..9/5");
    QTest::newRow("steps") << IndexRange{0, 12, 6} << IndexRange{4, 16, 4}
                           << QStringLiteral("0..16/2");
    QTest::newRow("one within the other")
        << IndexRange{2, 6, 2} << IndexRange{0, 12, 2} << QStringLiteral("0..12/2");
    QTest::newRow("offset") << IndexRange{0, 12, 4} << IndexRange{2, 6, 4}
                            << QStringLiteral("0..12/2");
}

void TestIndexRange::rangesAreUnited()
{
    QFETCH(IndexRange, a);
    QFETCH(IndexRange, b);
    QTEST(rangeText(united(a, b)), "expected");
}

void TestIndexRange::numbersAreCompared_data()
{
    QTest::addColumn<QByteArray>("comparison");
    QTest::addColumn<QString>("expected"); ///< For 1 and 2, 2 and 2, 3 and 2.
    const auto row = [](const char *comparison, const char *expected) {
        QTest::newRow(comparison) << QByteArray(comparison) << QString::fromLatin1(expected);
    };
    row("gt", "nny");
    row("gts", "nny");
    row("gte", "nyy");
    row("gtes", "nyy");
    row("lt", "ynn");
    row("lts", "ynn");
    row("lte", "yyn");
    row("ltes", "yyn");
    row("eq", "nyn");
    row("neq", "yny");
    row("add", "???");
}

void TestIndexRange::numbersAreCompared()
{
    QFETCH(QByteArray, comparison);
    QString found;
    for (qint64 a = 1; a <= 3; ++a) {
        const auto result = compared(comparison.constData(), a, 2);
        found += QLatin1Char(!result ? '?' : *result ? 'y' : 'n');
    }
    QTEST(found, "expected");
}

QTEST_APPLESS_MAIN(TestIndexRange)
#include "tst_indexrange.moc"
