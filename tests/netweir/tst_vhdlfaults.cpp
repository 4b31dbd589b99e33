// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designfixture.h"
#include "dialogwatch.h"
#include "netlisttext.h"
#include "smalldisks.h"
#include "temporaryfolder.h"
#include "toolscript.h"

#include <support/testcase.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QProgressDialog>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>

using namespace NETWEIR;
using TarnTest::DesignFixture;
using TarnTest::DialogWatch;
using TarnTest::ToolScript;

namespace {

const char Ghdl[] = "TARN_GHDL";

const char Top[] = "entity top is\n    port (a : in bit);\nend entity;\n"
                   "architecture rtl of top is\n    signal s : bit;\nbegin\nend architecture;\n";
const char TopNetlist[] = "top : top\n    a O\n    s .\n";

/// Adds the files of @p text. Each begins with a line "=== NAME".
void addFiles(DesignFixture *design, const QByteArray &text)
{
    const QStringList files =
        QString::fromUtf8(text).split(QStringLiteral("=== "), Qt::SkipEmptyParts);
    for (const QString &file : files) {
        const int end = file.indexOf(QLatin1Char('\n'));
        design->add(file.left(end), file.mid(end + 1).toUtf8());
    }
}

/// With the slash at its end.
QString folderOf(const DesignFixture &design)
{
    return design.path(QStringLiteral("x")).chopped(1);
}

/// Errors of both calls, with the folder of the design cut from them.
QStringList errorsOf(const DesignFixture &design)
{
    QStringList errors =
        (design.messages + design.netMessages).filter(QRegularExpression(QStringLiteral("^ERROR")));
    errors.replaceInStrings(folderOf(design), QString());
    errors.removeDuplicates();
    return errors;
}

QString netlistOf(const DesignFixture &design)
{
    return design.netlist ? TarnTest::netlistText(design.netlist->top()) : QString();
}

} // namespace

/// Bad VHDL as users meet it: what they write, what they give as a source, and what the tool does.
class TestVhdlFaults : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void faultIsAnErrorAtItsPlace_data();
    void faultIsAnErrorAtItsPlace();
    void oddityDoesNoHarm_data();
    void oddityDoesNoHarm();
    void textsThatAreNoVhdl_data();
    void textsThatAreNoVhdl();
    void sourcesThatCannotBeRead_data();
    void sourcesThatCannotBeRead();
    void unusualFileNames();
    void topsOfBothLanguages_data();
    void topsOfBothLanguages();
    void designWithoutVhdlNeedsNoGhdl();
    void reportsAMissingTool();
    void reportsAToolThat_data();
    void reportsAToolThat();
    void cancelEndsTheTool_data();
    void cancelEndsTheTool();
    void saysThatTheTemporaryFolderIsFull();

private:
    const TarnTest::TemporaryFolder m_folder;
};

void TestVhdlFaults::cleanup()
{
    qunsetenv(Ghdl);
    TestCase::cleanup();
    m_folder.verifyNothingIsLeft();
}

void TestVhdlFaults::faultIsAnErrorAtItsPlace_data()
{
    QTest::addColumn<QByteArray>("files");
    QTest::addColumn<QStringList>("expected"); ///< Regular expressions, one for each error.
    const auto row = [](const char *name, const char *files, const QStringList &expected) {
        QTest::newRow(name) << QByteArray(files) << expected;
    };
    row("syntax errors of all files", R"(=== a.vhd
entity top is
    port (a : in bit;
end entity;
=== good.vhd
entity good is
end entity;
=== b.vhd
architecture rtl of top is
begin
    s <= = a;
end architecture;
)",
        {"^ERROR: a\\.vhd:[234]:\\d+: ", "^ERROR: b\\.vhd:3:\\d+: "});
    row("unknown names in all files", R"(=== a.vhd
entity top is
end entity;
architecture rtl of top is
begin
    nowhere <= '1';
    u : entity work.other;
end architecture;
=== b.vhd
entity other is
end entity;
architecture rtl of other is
    signal s : no_such_type;
begin
end architecture;
)",
        {"^ERROR: a\\.vhd:5:5: .*nowhere", "^ERROR: b\\.vhd:4:16: .*no_such_type"});
    row("types that do not fit", R"(=== a.vhd
entity top is
end entity;
architecture rtl of top is
    signal b : bit;
    signal i : integer;
begin
    b <= i;
end architecture;
)",
        {"^ERROR: a\\.vhd:7:\\d+: "});
    row("missing library", R"(=== a.vhd
library orion;
use orion.functions.all;
entity top is
end entity;
architecture rtl of top is
    signal s : bit := twice('1');
begin
end architecture;
)",
        {"^ERROR: a\\.vhd:1:9: The library \"orion\" is missing.*Add the files"});
    row("several drivers", R"(=== a.vhd
entity top is
end entity;
architecture rtl of top is
    signal s : bit;
begin
    s <= '0';
    s <= '1';
end architecture;
)",
        {"^ERROR: The signal \"top\\(rtl\\)\\.s\" has several drivers"});
    row("missing package", R"(=== a.vhd
use work.numbers.all;
entity top is
end entity;
architecture rtl of top is
    signal s : bit_vector(COUNT downto 0);
begin
end architecture;
)",
        {"^ERROR: a\\.vhd:[15]:\\d+: .*numbers"});
    row("package without its body", R"(=== a.vhd
package p is
    constant LATER : integer;
end package;
use work.p.all;
entity top is
end entity;
architecture rtl of top is
    signal s : bit_vector(LATER downto 0);
begin
end architecture;
)",
        {"^ERROR: .*\\bp\\b"});
    row("entity without architecture", R"(=== a.vhd
entity top is
end entity;
)",
        {"^ERROR: a\\.vhd:1:\\d+: .*top.*architecture"});
    row("instance without architecture", R"(=== a.vhd
entity top is
end entity;
architecture rtl of top is
begin
    u : entity work.leaf;
end architecture;
entity leaf is
end entity;
)",
        {"^ERROR: a\\.vhd:[57]:\\d+: .*leaf"});
    row("architecture without entity", R"(=== a.vhd
entity top is
end entity;
architecture rtl of top is
begin
end architecture;
architecture rtl of nobody is
begin
end architecture;
)",
        {"^ERROR: a\\.vhd:6:\\d+: .*nobody"});
    row("unknown architecture", R"(=== a.vhd
entity top is
end entity;
architecture rtl of top is
begin
    u : entity work.leaf(fast);
end architecture;
entity leaf is
end entity;
architecture slow of leaf is
begin
end architecture;
)",
        {"^ERROR: a\\.vhd:5:\\d+: .*fast"});
    row("configuration of a missing architecture", R"(=== a.vhd
entity top is
end entity;
architecture rtl of top is
begin
    u : configuration work.chosen;
end architecture;
entity leaf is
end entity;
architecture slow of leaf is
begin
end architecture;
configuration chosen of leaf is
    for fast
    end for;
end configuration;
)",
        {"^ERROR: a\\.vhd:1[23]:\\d+: .*fast"});
    row("recursion without end", R"(=== a.vhd
entity top is
    generic (N : natural := 1);
end entity;
architecture rtl of top is
begin
    g : if N > 0 generate
        u : entity work.top generic map (N => N + 1);
    end generate;
end architecture;
)",
        {"^ERROR: a\\.vhd:1:8: The instantiation may never end \\(top > top\\)"});
    row("unknown port", R"(=== a.vhd
entity top is
end entity;
architecture rtl of top is
    signal s : bit;
begin
    u : entity work.leaf port map (nothing => s);
end architecture;
entity leaf is
    port (a : in bit := '0');
end entity;
architecture rtl of leaf is
begin
end architecture;
)",
        {"^ERROR: a\\.vhd:6:\\d+: .*nothing"});
    row("lengths that do not match", R"(=== a.vhd
entity top is
end entity;
architecture rtl of top is
    signal s : bit_vector(3 downto 0);
begin
    u : entity work.leaf generic map (W => 3) port map (a => s);
end architecture;
entity leaf is
    generic (W : positive);
    port (a : in bit_vector(W - 1 downto 0));
end entity;
architecture rtl of leaf is
begin
end architecture;
)",
        {"^ERROR: a\\.vhd:6: A value or a width does not fit"});
    row("bounds while elaborating", R"(=== a.vhd
entity top is
    generic (W : natural := 4);
end entity;
architecture rtl of top is
    signal s : bit_vector(3 downto 0);
    constant C : bit_vector(3 downto 0) := "0000";
    signal t : bit_vector(W downto 0) := C;
begin
end architecture;
)",
        {"^ERROR: a\\.vhd:[67]: A value or a width does not fit"});
    row("units that need each other", R"(=== a.vhd
package p is
    constant A : integer := work.q.B;
end package;
package q is
    constant B : integer := work.p.A;
end package;
entity top is
    port (s : in bit_vector(work.p.A downto 0));
end entity;
architecture rtl of top is
begin
end architecture;
)",
        {"^ERROR: "});
    row("wrong width at a Verilog module", R"(=== a.vhd
entity top is
end entity;
architecture rtl of top is
    component leaf is
        port (d : in bit_vector(2 downto 0));
    end component;
    signal s : bit_vector(2 downto 0);
begin
    u : leaf port map (d => s);
end architecture;
=== leaf.v
module leaf(input [3:0] d); endmodule
)",
        {"^ERROR: a\\.vhd:9:5: The port \"d\" of \"leaf\" has 4 bits, but 3"});
    row("unknown port of a Verilog module", R"(=== a.vhd
entity top is
end entity;
architecture rtl of top is
    component leaf is
        port (d, none : in bit);
    end component;
    signal s : bit;
begin
    u : leaf port map (d => s, none => s);
end architecture;
=== leaf.v
module leaf(input d); endmodule
)",
        {"^ERROR: a\\.vhd:9:\\d+: .*none"});
    row("unknown pin of an entity", R"(=== top.v
module top(input s);
    leaf u(.d(s), .none(s));
endmodule
=== leaf.vhd
entity leaf is
    port (d : in bit);
end entity;
architecture rtl of leaf is
begin
end architecture;
)",
        {"^ERROR: top\\.v:2(:\\d+)?: .*none"});
    row("unknown generic of an entity", R"(=== top.v
module top(input s);
    leaf #(.NONE(1)) u(.d(s));
endmodule
=== leaf.vhd
entity leaf is
    port (d : in bit);
end entity;
architecture rtl of leaf is
begin
end architecture;
)",
        {"^ERROR: top\\.v:2(:\\d+)?: .*NONE"});
    row("syntax error in the other language", R"(=== top.v
module top(input s);
    wire = s;
endmodule
=== leaf.vhd
entity leaf is
    port (d : in bit)
end entity;
)",
        {"^ERROR: top\\.v:2:\\d+: ", "^ERROR: leaf\\.vhd:[23]:\\d+: "});
    row("circle over both languages", R"(=== a.vhd
entity top is
end entity;
architecture rtl of top is
    component middle is
    end component;
begin
    u : middle;
end architecture;
=== middle.v
module middle;
    top u();
endmodule
)",
        {"^ERROR: .*(top|middle).*(top|middle)"});
}

void TestVhdlFaults::faultIsAnErrorAtItsPlace()
{
    QFETCH(QByteArray, files);
    QFETCH(QStringList, expected);
    DesignFixture design;
    addFiles(&design, files);
    design.set(TE::DesignInfo::Timeout, 20);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!design.extract());
    QVERIFY2(timer.elapsed() < 15000, qPrintable(QString::number(timer.elapsed())));
    const QStringList errors = errorsOf(design);
    const QString all = '\n' + (design.messages + design.netMessages).join('\n');
    for (const QString &pattern : qAsConst(expected))
        QVERIFY2(!errors.filter(QRegularExpression(pattern)).isEmpty(), qPrintable(pattern + all));
    for (const QString &error : errors) {
        const bool isExpected =
            std::any_of(expected.cbegin(), expected.cend(), [&error](const QString &pattern) {
                return QRegularExpression(pattern).match(error).hasMatch();
            });
        QVERIFY2(isExpected, qPrintable(all));
        QVERIFY2(!error.contains("/tmp"), qPrintable(error));
    }
}

void TestVhdlFaults::oddityDoesNoHarm_data()
{
    QTest::addColumn<QByteArray>("process");
    QTest::newRow("process without wait") << QByteArray("process begin s <= not s; end process;");
    QTest::newRow("endless loop") << QByteArray(
        "process begin loop s <= not s; end loop; end process;");
    QTest::newRow("loop without time") << QByteArray("s <= not s;");
    QTest::newRow("failing assertion")
        << QByteArray("s <= a; assert false report \"never\" severity failure;");
    QTest::newRow("failing bound check")
        << QByteArray("process (a) variable v : bit_vector(3 downto 0); variable n : integer := 7;"
                      " begin v(n) := a; s <= v(0); end process;");
    QTest::newRow("endless recursion")
        << QByteArray("process (a) procedure p is begin p; end procedure; begin s <= a; p;"
                      " end process;");
    QTest::newRow("division by zero")
        << QByteArray("process (a) variable n : integer := 0; begin s <= a; n := 1 / n;"
                      " end process;");
}

/// What happens in the processes does not matter for the nets.
void TestVhdlFaults::oddityDoesNoHarm()
{
    QFETCH(QByteArray, process);
    DesignFixture design;
    design.add("top.vhd", QByteArray(Top).replace("begin\nend", "begin\n" + process + "\nend"));
    design.set(TE::DesignInfo::Timeout, 20);
    QElapsedTimer timer;
    timer.start();
    QVERIFY2(design.extract(), qPrintable((design.messages + design.netMessages).join('\n')));
    QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(netlistOf(design), QString(TopNetlist).replace("s .", "s O"));
}

void TestVhdlFaults::textsThatAreNoVhdl_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("error"); ///< Regular expression; empty when the design opens.
    const QByteArray top(Top);
    const auto row = [](const char *name, const QByteArray &text, const QString &error) {
        QTest::newRow(name) << text << error;
    };
    row("DOS line ends", QByteArray(top).replace("\n", "\r\n"), QString());
    row("no line end at the end", top.trimmed(), QString());
    row("UTF-8 in comments", "-- gr\xc3\xbc\xc3\x9f\n" + top, QString());
    row("Latin-1 in comments", "-- gr\xfc\xdf\n" + top, QString());
    row("byte order mark", "\xef\xbb\xbf" + top, QString());
    row("long comment", "--" + QByteArray(900000, 'x') + '\n' + top, QString());
    row("comment block", "/* " + QByteArray(900000, '*') + " */" + top, QString());
    row("long line", QByteArray(900000, ' ') + QByteArray(top).replace('\n', ' '), QString());
    row("longer line", QByteArray(1 << 20, ' ') + QByteArray(top).replace('\n', ' '),
        QStringLiteral("^ERROR: top\\.vhd:1: The line is longer than 1 MB\\."));
    row("many lines", QByteArray(1 << 20, '\n') + top, QString());
    row("NUL bytes", top + QByteArray(3, '\0') + '\n',
        QStringLiteral("^ERROR: top\\.vhd: The file is not text: it contains NUL"));
    row("NUL byte in a name", QByteArray(top).replace("signal s", QByteArray("signal \0s", 9)),
        QStringLiteral("^ERROR: top\\.vhd: The file is not text: it contains NUL"));
    row("long name", QByteArray(top).replace("signal s", "signal " + QByteArray(100000, 'n')),
        QStringLiteral("^ERROR: top\\.vhd:[15]:\\d+: "));
    row("unterminated string", top + "\"\n", QStringLiteral("^ERROR: top\\.vhd:8:\\d+: "));
    row("unterminated comment", top + "/* \n", QStringLiteral("^ERROR: top\\.vhd:[89]:\\d+: "));
    row("unterminated extended identifier", top + "\\abc\n",
        QStringLiteral("^ERROR: top\\.vhd:8:\\d+: "));
    row("deep parentheses",
        QByteArray(top).replace("begin\n", "begin\ns <= " + QByteArray(100000, '(') + "a" +
                                               QByteArray(100000, ')') + ";\n"),
        QStringLiteral("^ERROR: "));
    row("Verilog", "module top(input a);\nendmodule\n",
        QStringLiteral("^ERROR: top\\.vhd:1:1: .*another language"));
    row("random bytes", QByteArray("\x93\x01\xfe\x7f\x05\x80\xff\x1b").repeated(1000),
        QStringLiteral("^ERROR: top\\.vhd:1:\\d+: "));
    row("empty", "", QStringLiteral("no modules"));
    row("comments only", "-- nothing\n", QStringLiteral("no modules"));
}

void TestVhdlFaults::textsThatAreNoVhdl()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, error);
    DesignFixture design;
    design.add("top.vhd", text);
    design.set(TE::DesignInfo::Timeout, 20);
    const bool done = design.extract();
    const QString all = (design.messages + design.netMessages).join('\n').left(5000);
    if (error.isEmpty()) {
        QVERIFY2(done, qPrintable(all));
        QCOMPARE(netlistOf(design), QString(TopNetlist));
    } else if (error == QLatin1String("no modules")) {
        QVERIFY(!done);
        QCOMPARE(design.firstError(), QString());
        QCOMPARE(design.modules, QStringList());
        QVERIFY2(all.contains("WARNING: The sources define no module."), qPrintable(all));
    } else {
        QVERIFY(!done);
        const QStringList errors = errorsOf(design);
        QVERIFY2(!errors.filter(QRegularExpression(error)).isEmpty(), qPrintable(all));
    }
}

void TestVhdlFaults::sourcesThatCannotBeRead_data()
{
    QTest::addColumn<QByteArray>("command"); ///< Makes the source x.vhd.
    QTest::addColumn<QString>("error");
    QTest::newRow("missing") << QByteArray("true") << "^ERROR: x\\.vhd: .*";
    QTest::newRow("folder") << QByteArray("mkdir x.vhd") << "^ERROR: x\\.vhd: .*";
    QTest::newRow("pipe") << QByteArray("mkfifo x.vhd") << "^ERROR: x\\.vhd: .*";
    QTest::newRow("device") << QByteArray("ln -s /dev/zero x.vhd") << "^ERROR: x\\.vhd: .*";
    QTest::newRow("broken link") << QByteArray("ln -s nowhere x.vhd") << "^ERROR: x\\.vhd: .*";
    QTest::newRow("endless link") << QByteArray("ln -s x.vhd x.vhd") << "^ERROR: x\\.vhd: .*";
    QTest::newRow("Verilog file with VHDL in it")
        << QByteArray("cp top.vhd x.v") << "^ERROR: x\\.v:1:1: syntax error";
}

void TestVhdlFaults::sourcesThatCannotBeRead()
{
    QFETCH(QByteArray, command);
    QFETCH(QString, error);
    DesignFixture design;
    design.add("top.vhd", Top);
    QProcess shell;
    shell.setWorkingDirectory(folderOf(design));
    shell.start("sh", {"-c", command});
    QVERIFY(shell.waitForFinished() && shell.exitCode() == 0);
    design.list(command.endsWith(".v") ? "x.v" : "x.vhd");
    design.set(TE::DesignInfo::Timeout, 20);
    QVERIFY(!design.extract());
    const QStringList errors = errorsOf(design);
    QVERIFY2(errors.size() == 1 && QRegularExpression(error).match(errors[0]).hasMatch(),
             qPrintable(design.messages.join('\n')));
}

void TestVhdlFaults::unusualFileNames()
{
    DesignFixture design("gr\xc3\xbc\xc3\x9f 'folder' $HOME \"x\"");
    design.add("-top \xc3\xa4(1);&.vhd", Top);
    design.add("--std=93.vhd", "entity e is\nend entity;\narchitecture a of e is\nbegin\nend;\n");
    design.set(TE::DesignInfo::Top, "top");
    QVERIFY2(design.extract(), qPrintable(design.messages.join('\n')));
    QCOMPARE(netlistOf(design), QString(TopNetlist));

    design.add("b\xc3\xb6se.vhd", "entity b is\nend entity;\narchitecture a of b is\nsignal\n");
    design.findModules();
    QVERIFY2(design.firstError().startsWith(QString("ERROR: b\xc3\xb6se.vhd:5:1: ")),
             qPrintable(design.messages.join('\n')));
}

void TestVhdlFaults::topsOfBothLanguages_data()
{
    QTest::addColumn<QByteArray>("files");
    QTest::addColumn<QString>("top");
    QTest::addColumn<QString>("tops");
    QTest::addColumn<QString>("modules");
    const auto row = [](const char *name, const char *top, const char *files, const char *tops,
                        const char *modules) {
        QTest::newRow(name) << QByteArray(files) << QString(top) << QString(tops)
                            << QString(modules);
    };
    const char Both[] = R"(=== a.vhd
entity Upper is
end entity;
architecture rtl of upper is
    component middle is
    end component;
begin
    u : middle;
end architecture;
entity Lower is
end entity;
architecture rtl of lower is
begin
end architecture;
=== b.v
module middle; LOWER u(); endmodule
)";
    row("VHDL above", "", Both, "Upper", "Lower middle Upper");
    row("a VHDL top, whatever its case", "LOWER", Both, "LOWER", "Lower middle Upper");
    row("a Verilog top", "middle", Both, "middle", "Lower middle Upper");
    row("a Verilog top in another case", "MIDDLE", Both, "Upper", "Lower middle Upper");
    row("an unknown top", "nobody", Both, "Upper", "Lower middle Upper");
    row("a top in each language", "", R"(=== a.vhd
entity first is
end entity;
architecture rtl of first is
begin
end architecture;
=== b.v
module second; endmodule
)",
        "first second", "first second");
    row("Verilog above", "", R"(=== a.v
module top; Leaf u(); endmodule
=== b.vhd
entity leaf is
end entity;
architecture rtl of leaf is
begin
end architecture;
)",
        "top", "leaf top");
    row("entities instantiated in all ways", "", R"(=== a.vhd
entity top is
end entity;
architecture rtl of top is
    component by_component is
    end component;
    component by_binding is
    end component;
    for all : by_binding use entity work.bound;
begin
    u0 : entity work.by_entity;
    u1 : by_component;
    u2 : by_binding;
    u3 : configuration work.setup;
end architecture;
entity by_entity is end entity;
architecture rtl of by_entity is begin end architecture;
entity by_component is end entity;
architecture rtl of by_component is begin end architecture;
entity bound is end entity;
architecture rtl of bound is begin end architecture;
entity by_configuration is end entity;
architecture rtl of by_configuration is begin end architecture;
configuration setup of by_configuration is
    for rtl
    end for;
end configuration;
)",
        "top", "bound by_component by_configuration by_entity top");
}

void TestVhdlFaults::topsOfBothLanguages()
{
    QFETCH(QByteArray, files);
    QFETCH(QString, top);
    DesignFixture design;
    addFiles(&design, files);
    design.set(TE::DesignInfo::Top, top);
    design.findModules();
    QCOMPARE(errorsOf(design), QStringList());
    design.tops.sort(Qt::CaseInsensitive);
    design.modules.sort(Qt::CaseInsensitive);
    QTEST(design.tops.join(' '), "tops");
    QTEST(design.modules.join(' '), "modules");
    const RtlNetlist *netlist = design.buildNetlist();
    QCOMPARE(netlist != nullptr, design.tops.size() == 1);
    QCOMPARE(netlist ? netlist->top()->instName() : QString(),
             netlist ? design.tops[0] : QString());
}

void TestVhdlFaults::designWithoutVhdlNeedsNoGhdl()
{
    qputenv(Ghdl, "/nowhere/ghdl");
    DesignFixture design;
    design.add("top.v", "module top(input a);\nwire s;\nendmodule\n");
    QVERIFY(design.extract());
    QCOMPARE(netlistOf(design), QString(TopNetlist));
    QCOMPARE(design.messages, QStringList());
}

void TestVhdlFaults::reportsAMissingTool()
{
    DesignFixture design;
    design.add("top.vhd", Top);
    qputenv(Ghdl, "/nowhere/ghdl");
    design.findModules();
    QCOMPARE(design.messages, QStringList("ERROR: The elaborator \"/nowhere/ghdl\" named by the "
                                          "environment variable TARN_GHDL is not a program. "
                                          "Correct or unset the variable."));
    QVERIFY(!design.buildNetlist());
}

void TestVhdlFaults::reportsAToolThat_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("error");
    const auto row = [](const char *name, const QByteArray &script, const char *error) {
        QTest::newRow(name) << script << QString::fromLatin1(error);
    };
    const QByteArray real = ToolScript::elaborateVhdl();
    const QByteArray run("case \" $* \" in *' -r '*|*--elab-run*) ");
    const QByteArray make("case \" $* \" in *' -m '*) ");
    row("crashes at once", "kill -SEGV $$\n", "^ERROR: .*(crash|signal)");
    row("crashes when elaborating", make + "kill -SEGV $$;; esac\n" + real,
        "^ERROR: .*(crash|signal)");
    row("crashes when running", run + "kill -SEGV $$;; esac\n" + real, "^ERROR: .*(crash|signal)");
    row("fails without a word", "exit 3\n", "^ERROR: .*3");
    row("fails without a word when running", run + "exit 3;; esac\n" + real, "^ERROR: .*3");
    row("hangs", "sleep 1000\n", "^ERROR: .*took longer than 1 seconds");
    row("hangs when running", run + "sleep 1000;; esac\n" + real,
        "^ERROR: .*took longer than 1 seconds");
    row("says nothing when running", run + "exit 0;; esac\n" + real, "^ERROR: ");
    row("talks nonsense", run + "echo nonsense; echo .top: x; exit 0;; esac\n" + real, "^ERROR: ");
    row("cuts its output", run + "ghdl \"$@\" | head -c 100; exit 0;; esac\n" + real, "^ERROR: ");
    row("talks without end", run + "yes '.top(rtl).a: 0000000000000001 net: 0';; esac\n" + real,
        "^ERROR: ");
    row("complains without end", "yes 'top.vhd:1:1: bad' >&2; exit 1\n", "^ERROR: ");
    row("is another program", "echo 'usage: other'; exit 0\n", "^ERROR: ");
}

void TestVhdlFaults::reportsAToolThat()
{
    QFETCH(QByteArray, script);
    QFETCH(QString, error);
    DesignFixture design;
    design.add("top.vhd", Top);
    design.set(TE::DesignInfo::Timeout, 1);
    const ToolScript fake(script, Ghdl);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!design.extract());
    QVERIFY2(timer.elapsed() < 6000, qPrintable(QString::number(timer.elapsed())));
    const QStringList errors = errorsOf(design);
    QVERIFY2(!errors.filter(QRegularExpression(error)).isEmpty(),
             qPrintable(QString::number(errors.size()) + errors.mid(0, 5).join('\n')));
}

void TestVhdlFaults::cancelEndsTheTool_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::newRow("at its first run") << QByteArray("sleep 1000 & sleep 1000\n");
    QTest::newRow("when elaborating")
        << "case \" $* \" in *' -m '*) sleep 1000;; esac\n" + ToolScript::elaborateVhdl();
    QTest::newRow("when running") << "case \" $* \" in *' -r '*|*--elab-run*) sleep 1000;; esac\n" +
                                         ToolScript::elaborateVhdl();
    QTest::newRow("that ignores signals")
        << QByteArray("trap '' TERM INT HUP\nwhile true; do sleep 1000; done\n");
}

void TestVhdlFaults::cancelEndsTheTool()
{
    QFETCH(QByteArray, script);
    DesignFixture design;
    design.add("top.vhd", Top);
    const ToolScript fake(script, Ghdl);
    QElapsedTimer sinceCancel;
    DialogWatch watch([&](QProgressDialog *dialog) {
        QVERIFY(!m_folder.processes().isEmpty());
        sinceCancel.start();
        Q_EMIT dialog->canceled();
    });
    QVERIFY(!design.extract());
    QVERIFY(sinceCancel.isValid());
    QVERIFY2(sinceCancel.elapsed() < 1000, qPrintable(QString::number(sinceCancel.elapsed())));
    m_folder.verifyNothingIsLeft();
    QCOMPARE(errorsOf(design), QStringList("ERROR: Reading the design was cancelled."));
}

/// Tries disks of many sizes.
void TestVhdlFaults::saysThatTheTemporaryFolderIsFull()
{
    if (!TarnTest::SmallDisks::areAllowed())
        QSKIP("Only root can mount a small disk");

    DesignFixture design;
    design.add("top.vhd",
               QByteArray(Top).replace("signal s : bit", "signal s : bit_vector(0 to 5000)"));
    QVector<int> sizes;
    for (int kilobytes = 8; kilobytes <= 16384; kilobytes *= 2)
        sizes.append(kilobytes);
    TarnTest::SmallDisks disks(m_folder);
    disks.extract(&design, sizes);
    QVERIFY2(disks.full() > 3 && disks.read() > 0,
             qPrintable(QStringLiteral("%1 %2").arg(disks.full()).arg(disks.read())));
}

TARN_TEST_MAIN(TestVhdlFaults)
#include "tst_vhdlfaults.moc"
