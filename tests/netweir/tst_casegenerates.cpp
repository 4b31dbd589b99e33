// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/vhdl/casegenerates.h>

#include <support/testcase.h>

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace NETWEIR::Internal;

namespace {

/// An architecture with @p statement, behind declarations that it may use.
QByteArray architectureWith(const QByteArray &statement)
{
    return "architecture rtl of top is\nsubtype small is integer range 10 to 12;\nbegin\n" +
           statement + "\nend architecture;\n";
}

/// A statement of each kind that must come out of GHDL with the same scopes.
const char Design[] = R"(
package p is
  type mode_t is (slow, fast, 'x', off);
  subtype small is integer range 10 to 12;
end;
entity leaf is port (d : in bit := '0'); end;
architecture rtl of leaf is signal s : bit; begin end;
use work.p.all;
entity top is
  generic (N : integer := 11; M : mode_t := fast; V : bit_vector(1 downto 0) := "10";
           B : boolean := true; C : character := '|');
end;
architecture rtl of top is
  signal q : bit_vector(3 to 5);
  signal sel : bit_vector(1 downto 0);
  signal o, o2 : bit;
begin
  g0 : case N generate
    when 1 | 2 => signal a1 : bit; begin
    when 3 to 5 | 9 downto 8 => signal a2 : bit; begin
    when small => signal a3 : bit; begin u : entity work.leaf; end;
    when others => signal a4 : bit; begin
  end generate g0;
  g1 : case (M) generate -- comment => when
    when L1 : slow -- x =>
      | off => /* => */ signal b1 : bit; begin end L1;
    when L2 : fast => signal b2 : bit; begin
      n1 : case V generate
        when "10" | "11" => signal b3 : bit; begin
          o <= '0' when sel = "00" else '1';
          with sel select o2 <= '1' when "00", '0' when others;
          process (all) begin
            case sel is when "00" => null; when others => null; end case;
          end process;
          z : case B generate
            when true => u2 : entity work.leaf port map (d => o);
            when false =>
          end generate;
        when L3 : others => end L3;
      end generate n1;
    end L2;
    when L4 : 'x' => end L4;
  end generate;
  g2 : case
    N + 1
    generate
    when
      others
      =>
      signal c1 : bit; begin
  end generate;
  g3 : case C generate
    when '|' => signal d1 : bit; begin
    when others =>
  end generate;
  g4 : case V(1) generate when '1' => signal e1 : bit; begin when others => end generate;
  g5 : case N generate
    when q'range =>
    when integer range 10 to 11 => signal f1 : bit; begin
    when others =>
  end generate;
  g6 : for i in 0 to 1 generate
    g7 : case i generate
      when 0 => signal h0 : bit; begin
      when 1 => signal h1 : bit; begin
      when others =>
    end generate;
  end generate;
end;
)";

/// Runs GHDL in @p folder; its output or, on failure, its messages.
QByteArray ghdl(const QString &folder, const QStringList &arguments)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start(QStringLiteral("ghdl"), arguments);
    process.waitForFinished();
    return process.exitCode() == 0 ? process.readAllStandardOutput()
                                   : process.readAllStandardError();
}

/// The names in the output of --disp-signals-map.
QByteArrayList namesOf(const QByteArray &map)
{
    QByteArrayList names;
    for (const QByteArray &line : map.split('\n')) {
        if (line.startsWith('.'))
            names.append(line.left(line.indexOf(':')));
    }
    return names;
}

} // namespace

class TestCaseGenerates : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void becomeIfGenerates_data();
    void becomeIfGenerates();
    void otherTextStays_data();
    void otherTextStays();
    void keepLinesAndScopes();
    void deepNesting();
    void hugeSelectors();
};

void TestCaseGenerates::becomeIfGenerates_data()
{
    QTest::addColumn<QByteArray>("statement");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const char *statement, const char *expected) {
        QTest::newRow(name) << QByteArray(statement) << QByteArray(expected);
    };
    row("values", "g : case n generate when 1 | 2 => when 3 => when others => end generate;",
        "g : if (n) = 1 or (n) = 2 generate elsif (n) = 3 generate else generate end generate;");
    row("ranges", "g : case (n) generate when 1 to 3 | 9 downto f(7) => end generate g;",
        "g : if ((( n )) >= 1 and (( n )) <= 3) or ((( n )) <= 9 and (( n )) >= f(7)) generate end "
        "generate g;");
    row("types", "g : case n generate when Small => when positive range 1 to 3 => end generate;",
        "g : if ((n) >= Small'low and (n) <= Small'high) generate elsif ((n) >= 1 and (n) <= 3) "
        "generate end generate;");
    row("ranges of arrays", "g : case n generate when work.p.a'range => end generate;",
        "g : if ((n) >= work.p.a'low and (n) <= work.p.a'high) generate end generate;");
    row("labels of alternatives",
        "g : case n generate when A : 1 => begin end A; when B : others => end B; end generate;",
        "g : if A : (n) = 1 generate begin end A; else B : generate end B; end generate;");
    row("others alone", "g : case n generate when others => x <= y; end generate;",
        "g : if true generate x <= y; end generate;");
    row("label and others alone", "g : case n generate when A : others => end generate;",
        "g : if A : true generate end generate;");
    row("aggregates", "g : case v(f(a => 1)) generate when (others => '0') => end generate;",
        "g : if (v ( f ( a => 1 ) )) = (others => '0') generate end generate;");
    row("characters", "g : case c generate when '|' | '\"' => end generate;",
        "g : if (c) = '|' or (c) = '\"' generate end generate;");
    row("upper case", "G : CASE N GENERATE WHEN 1 => WHEN OTHERS => END GENERATE;",
        "G : if (N) = 1 generate else generate END GENERATE;");
    row("comments", "g : case n -- generate\n generate when 1 -- =>\n => end generate;",
        "g : if (n) = 1 -- => generate end generate;");
    row("statements with when",
        "g : case n generate when 1 => a <= b when c else d; with s select a <= b when 1, c when "
        "others; process begin case x is when 1 => null; end case; end process; end generate;",
        "g : if (n) = 1 generate a <= b when c else d; with s select a <= b when 1, c when "
        "others; process begin case x is when 1 => null; end case; end process; end generate;");
    row("within one another",
        "g : case n generate when 1 => h : case m generate when 2 => when 3 => end generate; when "
        "4 => end generate; i : case k generate when 5 => end generate;",
        "g : if (n) = 1 generate h : if (m) = 2 generate elsif (m) = 3 generate end generate; "
        "elsif (n) = 4 generate end generate; i : if (k) = 5 generate end generate;");
}

void TestCaseGenerates::becomeIfGenerates()
{
    QFETCH(QByteArray, statement);
    QFETCH(QByteArray, expected);
    const QByteArray text = architectureWith(statement);
    const QByteArray result = withoutCaseGenerates(text);
    QCOMPARE(result.simplified(), architectureWith(expected).simplified());
    QCOMPARE(result.count('\n'), text.count('\n'));
}

void TestCaseGenerates::otherTextStays_data()
{
    QTest::addColumn<QByteArray>("text");
    const auto row = [](const char *name, const QByteArray &text) { QTest::newRow(name) << text; };
    row("nothing", "");
    row("no case generate", architectureWith("g : if n = 1 generate  a <= b; end generate;"));
    row("case statement",
        architectureWith("p : process begin l : case n is when 1 => end case; end process;"));
    row("no alternatives", architectureWith("g : case n generate end generate;"));
    row("no arrow", architectureWith("g : case n generate when 1 ; end generate;"));
    row("no end", "architecture rtl of top is begin g : case n generate when 1");
    row("in a comment", architectureWith("-- g : case n generate when 1 => end generate;"));
}

void TestCaseGenerates::otherTextStays()
{
    QFETCH(QByteArray, text);
    QCOMPARE(withoutCaseGenerates(text), text);
}

/// GHDL itself fails on the design with case generates.
void TestCaseGenerates::keepLinesAndScopes()
{
    const QByteArray result = withoutCaseGenerates(Design);
    const QByteArrayList lines = result.split('\n');
    const QByteArrayList before = QByteArray(Design).split('\n');
    QCOMPARE(lines.size(), before.size());
    for (int i = 0; i < lines.size(); ++i) {
        const int signal = before.at(i).indexOf("signal ");
        const QByteArray declaration =
            signal < 0 ? QByteArray() : before.at(i).mid(signal, int(strlen("signal a1")));
        QVERIFY(lines.at(i).contains(declaration));
    }

    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("design.vhd")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(result);
    file.close();
    QCOMPARE(ghdl(folder.path(),
                  {QStringLiteral("-a"), QStringLiteral("--std=08"), QStringLiteral("design.vhd")}),
             QByteArray());
    const QByteArray map = ghdl(
        folder.path(), {QStringLiteral("-r"), QStringLiteral("--std=08"), QStringLiteral("top"),
                        QStringLiteral("--stop-time=0ns"), QStringLiteral("--disp-signals-map")});
    QCOMPARE(namesOf(map).join('\n'),
             QByteArray(".top(rtl).q(3)\n.top(rtl).q(4)\n.top(rtl).q(5)\n.top(rtl).sel(1)\n"
                        ".top(rtl).sel(0)\n.top(rtl).o\n.top(rtl).o2\n.top(rtl).g0.a3\n"
                        ".top(rtl).g0.u@leaf(rtl).d\n.top(rtl).g0.u@leaf(rtl).s\n"
                        ".top(rtl).g1.b2\n.top(rtl).g1.n1.b3\n"
                        ".top(rtl).g1.n1.z.u2@leaf(rtl).d\n.top(rtl).g1.n1.z.u2@leaf(rtl).s\n"
                        ".top(rtl).g2.c1\n.top(rtl).g3.d1\n.top(rtl).g4.e1\n.top(rtl).g5.f1\n"
                        ".top(rtl).g6(0).g7.h0\n.top(rtl).g6(1).g7.h1"));
}

void TestCaseGenerates::deepNesting()
{
    constexpr int Depth = 20000;
    const QByteArray text =
        architectureWith(QByteArray("g:case n generate when 1 =>\n").repeated(Depth) +
                         QByteArray("end generate;").repeated(Depth));
    const QByteArray result = withoutCaseGenerates(text);
    QCOMPARE(result.count("if (n) = 1"), Depth);
    QCOMPARE(result.count('\n'), text.count('\n'));
}

/// A selector that would be repeated too often.
void TestCaseGenerates::hugeSelectors()
{
    const QByteArray selector(500000, 'n');
    const QByteArray choices =
        architectureWith("g : case " + selector + " generate when 1" +
                         QByteArray(" | 1").repeated(100000) + " => end generate;");
    QCOMPARE(withoutCaseGenerates(choices), choices);
    const QByteArray alternatives =
        architectureWith("g : case " + selector + " generate " +
                         QByteArray("when 1 => ").repeated(100000) + "end generate;");
    QCOMPARE(withoutCaseGenerates(alternatives), alternatives);
    const QByteArray inner("when others => h : case n generate when 1 => end generate; ");
    const QByteArray nested = architectureWith("g : case " + selector + " generate " +
                                               inner.repeated(10000) + "end generate;");
    QCOMPARE(withoutCaseGenerates(nested).count("if (n) = 1"), 10000);
}

TARN_TEST_MAIN(TestCaseGenerates)
#include "tst_casegenerates.moc"
