// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "wavebytes.h"

#include <netweir/internal/signals/elaboratedsignals.h>

#include <support/files.h>
#include <support/testcase.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

using namespace NETWEIR::Internal;
using TarnTest::WaveBytes;

namespace {

/// What GHDL shows of a design with the wave file of waveFile().
const char Tree[] = "top [entity]\n"
                    "+-a [port in]\n"
                    "`-rtl [arch]\n"
                    "  +-r [signal]\n"
                    "  +-none(7) [for-generate]\n"
                    "  +-g(-1) [for-generate]\n"
                    "  | `-u [instance]\n"
                    "  |   `-\\e.f\\ [entity]\n"
                    "  |     +-i [port in]\n"
                    "  |     `-beh [arch]\n"
                    "  `-v [instance]\n"
                    "work.p [package]\n";
const char Map[] = ".top(rtl).a: 0A net: 0 +A\n"
                   ".top(rtl).r.d(red,1): 0B net: 0\n"
                   ".top(rtl).r.d(red,0): 0C net: 0\n"
                   ".top(rtl).r.d(green,1): 0D net: 0\n"
                   ".top(rtl).r.d(green,0): 0E net: 0\n"
                   ".top(rtl).r.b: 0F net: 0\n"
                   ".top(rtl). 'stable: 1F net: 1\n"
                   ".top(rtl).g(-1).u@\\e.f\\(beh).i: 0A net: 0 +A\n";
const char Table[] = "0: 0A +A net: 0 smode: in #prt: 0 #drv: 0\n"
                     "1: 0B net: 0 smode: signal #prt: 0 #drv: 1\n"
                     "2: 0C net: 0 smode: signal #prt: 1 #drv: 0\n"
                     "  00AB\n"
                     "3: 0D net: 0 smode: in #prt: 0 #drv: 0   eff: 1A\n"
                     "4: 1A net: 0 smode: conv_in #prt: 0\n"
                     "5: 0E net: 0 smode: in #prt: 0 #drv: 0   eff: 0F\n"
                     "6: 0F net: 0 smode: signal #prt: 0 #drv: 0\n"
                     "7: 1F net: 0 smode: stable #prt: 1\n";

QByteArray waveFile()
{
    WaveBytes wave;
    const int bit = wave.enumeration("bit", {"'0'", "'1'"});
    wave.setWellKnown(2, bit);
    const int integer = wave.integers();
    const int color = wave.enumeration("color", {"red", "green"});
    const int plane = wave.constrained(wave.array(bit, {color, integer}),
                                       WaveBytes::letters(1) + WaveBytes::range(1, 0));
    const int empty = wave.constrained(wave.array(bit, {integer}), WaveBytes::emptyRange(0, 1));
    const int record = wave.record({{"n", empty}, {"d", plane}, {"b", bit}});
    wave.instance("top");
    wave.signal(17, "a", bit, {1});
    wave.signal(16, "r", record, {2, 3, 4, 5, 6});
    wave.scope(5, "g", WaveBytes::number(integer) + WaveBytes::integer(-1));
    wave.instance("u");
    wave.signal(17, "i", bit, {1});
    wave.end();
    wave.end();
    wave.instance("v");
    wave.end();
    wave.end();
    return wave.file();
}

} // namespace

class TestElaboratedSignals : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void joinsTables();
    void findsGenerics();
    void ignoresOtherLines();
    void refusesWhatDoesNotAgree_data();
    void refusesWhatDoesNotAgree();

private:
    std::unique_ptr<ElaboratedSignals> read(const QByteArray &output)
    {
        TarnTest::writeFile(m_folder.filePath("wave"), waveFile());
        TarnTest::writeFile(m_folder.filePath("stdout"), output);
        m_error.clear();
        return readElaboratedSignals(m_folder.filePath("stdout"), m_folder.filePath("wave"),
                                     &m_error);
    }

    QTemporaryDir m_folder;
    QString m_error;
};

void TestElaboratedSignals::joinsTables()
{
    const auto design = read(QByteArray(Tree) + Map + Table);
    QVERIFY2(design, qPrintable(m_error));
    QCOMPARE(design->tree.size(), std::size_t(4));
    QCOMPARE(QByteArray::fromStdString(design->tree.at(2).entity), QByteArray("\\e.f\\"));
    QCOMPARE(QByteArray::fromStdString(design->tree.at(3).name), QByteArray("v"));
    QCOMPARE(design->nets, (std::vector<int>{0, 1, 2, 3, 4, 5, 0}));
    QByteArray driven;
    for (const int net : design->nets)
        driven += design->drivers.isDriven(net) ? '1' : '0';
    QCOMPARE(driven, QByteArray("0111000"));
}

void TestElaboratedSignals::findsGenerics()
{
    const QByteArray lines =
        "a:1:1:@0ms:(report note): netweir-generic::top(rtl):g(-1):u@\\e.f\\(beh):|A|i|3\n"
        "a:1:1:@0ms:(report note): netweir-generic::top(rtl):g(-1):u@\\e.f\\(beh):|B|i|4\n"
        "a:1:1:@0ms:(report note): netweir-generic::top(rtl):other@x(y):|A|i|5\n";
    const auto design = read(lines + Tree + Map + Table);
    QVERIFY2(design, qPrintable(m_error));
    QCOMPARE(design->generics.size(), std::size_t(1));
    const std::vector<GenericLine> &generics = design->generics.at(2);
    QCOMPARE(generics.size(), std::size_t(2));
    QCOMPARE(generics.at(1).name, QString("B"));
    QCOMPARE(generics.at(1).value.text, QString("4"));
}

void TestElaboratedSignals::ignoresOtherLines()
{
    QVERIFY2(read(QByteArray("a:1:1:@0ms:(report note): top [entity] 1\n\n") + Tree + Map + Table +
                  "\nx:1:1:@0ms:(report note): hello\n\n0: nothing\n"),
             qPrintable(m_error));
}

void TestElaboratedSignals::refusesWhatDoesNotAgree_data()
{
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QString>("fault");
    const QByteArray tree(Tree);
    const QByteArray map(Map);
    const QByteArray table(Table);
    const auto row = [](const char *name, const QByteArray &output, const char *fault) {
        QTest::newRow(name) << output << QString(fault);
    };
    const auto without = [](QByteArray text, const QByteArray &line) {
        const int begin = text.indexOf(line);
        return text.remove(begin, text.indexOf('\n', begin) + 1 - begin);
    };
    const auto with = [](QByteArray text, const QByteArray &from, const QByteArray &to) {
        return text.replace(from, to);
    };
    row("nothing", "", "its scopes are not those of the wave file (line 0)");
    row("no tree", map + table, "its scopes are not those of the wave file (line 17)");
    row("instance is missing", without(tree, "  `-v") + map + table,
        "its scopes are not those of the wave file (line 12)");
    row("instance too many", with(tree, "work.p", "  `-w [instance]\nwork.p") + map + table,
        "its scopes are not those of the wave file (line 14)");
    row("instance elsewhere", with(tree, "  `-v", "  | `-v") + map + table,
        "its scopes are not those of the wave file (line 13)");
    row("round is missing", with(tree, "g(-1)", "g(0)") + map + table,
        "its scopes are not those of the wave file (line 13)");
    row("no map", tree + table, "it does not show the signal .top(rtl).a (line 13)");
    row("map is cut", tree + map.left(map.indexOf(".top(rtl).r.b")),
        "it does not show the signal .top(rtl).r.b (line 17)");
    row("bit is missing", tree + without(map, ".top(rtl).r.d(red,0)") + table,
        "it does not show the signal .top(rtl).r.d(red,0) (line 15)");
    row("other architecture", tree + with(map, "(beh)", "(rtl)") + table,
        "it does not show the signal .top(rtl).g(-1).u@\\e.f\\(beh).i (line 20)");
    row("one net is two", tree + with(map, "(beh).i: 0A", "(beh).i: 3A") + table,
        "the nets are not those of the wave file");
    row("two nets are one", tree + with(map, "r.b: 0F", "r.b: 0A") + table,
        "the nets are not those of the wave file");
    row("table is cut", tree + map + table.left(table.indexOf("6: ")),
        "its table of signals is not complete");
    row("no table", tree + map, "its table of signals is not complete (line 20)");
    row("circle",
        tree + map + with(table, "#drv: 0   eff: 0F", "#drv: 0   eff: 0E") +
            "8: 0F net: 0 smode: in #prt: 0 #drv: 0 eff: 0D\n"
            "9: 0D net: 0 smode: in #prt: 0 #drv: 0 eff: 0F\n",
        "inputs get their values from each other");
}

void TestElaboratedSignals::refusesWhatDoesNotAgree()
{
    QFETCH(QByteArray, output);
    QFETCH(QString, fault);
    QVERIFY(!read(output));
    QVERIFY2(m_error.startsWith("The elaborated design \"" + m_folder.filePath("stdout") +
                                "\" cannot be read: " + fault),
             qPrintable(m_error));
}

TARN_TEST_MAIN(TestElaboratedSignals)
#include "tst_elaboratedsignals.moc"
