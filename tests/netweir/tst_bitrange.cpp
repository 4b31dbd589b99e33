// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/nets/bitrange.h>

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR::Internal;

Q_DECLARE_METATYPE(NETWEIR::Internal::BitRange)

class TestBitRange : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void eachBitIsVisitedOnce_data();
    void eachBitIsVisitedOnce();
};

void TestBitRange::eachBitIsVisitedOnce_data()
{
    QTest::addColumn<BitRange>("range");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const BitRange &range, const char *expected) {
        QTest::newRow(name) << range << QString::fromLatin1(expected);
    };
    row("none", {}, "");
    row("one", {3, 3, 1, 1, 8}, "3");
    row("a row", {2, 2, 1, 3, 8}, "2 3 4");
    row("rows apart", {0, 8, 4, 2, 16}, "0 1 4 5 8 9");
    row("rows side by side", {0, 4, 2, 2, 16}, "0 1 2 3 4 5");
    row("rows that overlap", {0, 2, 1, 3, 16}, "0 1 2 3 4");
    row("a row beyond the end", {6, 6, 1, 4, 8}, "6 7");
    row("rows beyond the end", {0, 8, 4, 3, 6}, "0 1 2 4 5");
    row("all beyond the end", {8, 12, 4, 2, 8}, "");
    row("rows without bits", {0, 4, 2, 0, 8}, "");
}

void TestBitRange::eachBitIsVisitedOnce()
{
    QFETCH(BitRange, range);
    QStringList bits;
    forEachBit(range, [&bits](qint64 bit) { bits += QString::number(bit); });
    QTEST(bits.join(QLatin1Char(' ')), "expected");
}

QTEST_APPLESS_MAIN(TestBitRange)
#include "tst_bitrange.moc"
