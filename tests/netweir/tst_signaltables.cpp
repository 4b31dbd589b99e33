// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/signals/signaltables.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;

namespace {

std::string_view viewOf(const QByteArray &text)
{
    return {text.constData(), std::size_t(text.size())};
}

} // namespace

class TestSignalTables : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void readsTheMap_data();
    void readsTheMap();
    void readsTheTable_data();
    void readsTheTable();
    void knowsImplicitSignals_data();
    void knowsImplicitSignals();
};

void TestSignalTables::readsTheMap_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<quint64>("pointer");
    const auto row = [](const char *line, const char *path = "", quint64 pointer = 0) {
        QTest::newRow(line) << QByteArray(line) << QByteArray(path) << pointer;
    };
    row(".top(rtl).clk: 00005623D6BE2E50 net: 0", ".top(rtl).clk", 0x5623D6BE2E50);
    row(".top(rtl).k: 000055EDEF505D90 net: 1 +A", ".top(rtl).k", 0x55EDEF505D90);
    row(".top(rtl).q: 0012ABFF net: -2", ".top(rtl).q", 0x12ABFF);
    row(".top(rtl).m(0,-2).d(3): FFFFFFFFFFFFFFFF net: 12", ".top(rtl).m(0,-2).d(3)",
        0xFFFFFFFFFFFFFFFF);
    row(".top(rtl).g(0).l@leaf(\\R.tl()\\).r.v(3): 0A net: 0",
        ".top(rtl).g(0).l@leaf(\\R.tl()\\).r.v(3)", 10);
    row(".top(rtl).\\x: 12 net: 3\\(1): 0B net: 0", ".top(rtl).\\x: 12 net: 3\\(1)", 11);
    row(".top(rtl). 'stable: 0C net: 9", ".top(rtl). 'stable", 12);
    row("top: 0A net: 0");
    row(".top: 0A");
    row(".top: 0A net 0");
    row(".top 0A net: 0");
    row(".top: 0 net: 0");
    row(".top: xyz net: 0");
    row(".top: 11234567890ABCDEF net: 0");
    row(": 0A net: 0");
    row(". net: 0");
    row(" net: ");
    row("");
}

void TestSignalTables::readsTheMap()
{
    QFETCH(QByteArray, line);
    QFETCH(QByteArray, path);
    QFETCH(quint64, pointer);
    MapLine result;
    QCOMPARE(parseMapLine(viewOf(line), &result), pointer != 0);
    if (pointer != 0) {
        QCOMPARE(QByteArray(result.path.data(), int(result.path.size())), path);
        QCOMPARE(result.pointer, pointer);
    }
}

void TestSignalTables::readsTheTable_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<quint64>("pointer");
    QTest::addColumn<int>("drivers");
    QTest::addColumn<bool>("conversion");
    QTest::addColumn<quint64>("source");
    const auto row = [](const char *line, quint64 pointer = 0, int drivers = 0,
                        bool conversion = false, quint64 source = 0) {
        QTest::newRow(line) << QByteArray(line) << pointer << drivers << conversion << source;
    };
    row("0: 00005623D6BE2EF0 net: 0 smode: signal #prt: 0 #drv: 0  ", 0x5623D6BE2EF0);
    row("13: 0000558B8034A990 +A net: 1 smode: signal #prt: 0 #drv: 1  ", 0x558B8034A990, 1);
    row("96: 0A net: 13 smode: signal #prt: 1 #drv: 0  ", 10, 1);
    row("96: 0A net: 13 smode: inout #prt: 2 #drv: 3  ", 10, 5);
    row("87: 0A net: 16 smode: in #prt: 0 #drv: 0   eff: 0B", 10, 0, false, 11);
    row("89: 0A net: 16 smode: conv_in #prt: 0", 10, 0, true);
    row("97: 0A net: 25 smode: conv_out #prt: 0", 10);
    row("119: 0A net: 1 smode: guard #prt: 1", 10, 1);
    row("1: 0A net: 0 smode: in #prt: 99999999999 #drv: 99999999999", 10, 2147483646);
    row("  000055EDEF6FE540");
    row(": 0A net: 0 smode: in #prt: 0 #drv: 0");
    row("x: 0A net: 0 smode: in #prt: 0 #drv: 0");
    row("1: 0 net: 0 smode: in #prt: 0 #drv: 0");
    row("1: 0A net: 0");
    row("file.vhd:5:15:@0ms:(report note): 1: 0A net: 0 smode: in #prt: 0 #drv: 1");
    row("");
}

void TestSignalTables::readsTheTable()
{
    QFETCH(QByteArray, line);
    QFETCH(quint64, pointer);
    QFETCH(int, drivers);
    QFETCH(bool, conversion);
    QFETCH(quint64, source);
    TableLine result;
    QCOMPARE(parseTableLine(viewOf(line), &result), pointer != 0);
    if (pointer != 0) {
        QCOMPARE(result.pointer, pointer);
        QCOMPARE(result.drivers, drivers);
        QCOMPARE(result.isConversion, conversion);
        QCOMPARE(result.source, source);
    }
}

void TestSignalTables::knowsImplicitSignals_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<bool>("implicit");
    QTest::newRow("stable") << QByteArray(".top(rtl). 'stable") << true;
    QTest::newRow("quiet") << QByteArray(".top(rtl).b. 'quiet") << true;
    QTest::newRow("transaction") << QByteArray(".top(rtl). 'transaction") << true;
    QTest::newRow("delayed") << QByteArray(".top(rtl). 'delayed") << true;
    QTest::newRow("guard") << QByteArray(".top(rtl).b.guard") << true;
    QTest::newRow("other name") << QByteArray(".top(rtl).bodyguard") << false;
    QTest::newRow("in an identifier") << QByteArray(".top(rtl).\\x. 'stable\\") << false;
    QTest::newRow("nothing") << QByteArray() << false;
}

void TestSignalTables::knowsImplicitSignals()
{
    QFETCH(QByteArray, path);
    QFETCH(bool, implicit);
    QCOMPARE(isImplicitSignal(viewOf(path)), implicit);
}

TARN_TEST_MAIN(TestSignalTables)
#include "tst_signaltables.moc"
