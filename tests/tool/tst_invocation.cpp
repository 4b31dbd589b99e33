// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/testcase.h>
#include <tool/command.h>
#include <tool/filenamecodec.h>
#include <tool/invocation.h>

#include <QApplication>
#include <QFile>
#include <QRandomGenerator>
#include <QTest>

using Tool::Command;

namespace {

/// A command of each kind, with options of each kind.
Command commandOf(const QString &kind)
{
    Command command;
    command.name = kind;
    command.synopsis = "[DESIGN] PATTERN";
    command.hasOutput = true;
    command.options = {{"--json", "", ""},
                       {"--format", "text|json", ""},
                       {"--ignore", "RULE", "", true},
                       {"--rules", "", "", false, true},
                       {"--language", "verilog|systemverilog", ""}};
    command.takesDesign = kind != "show";
    if (kind == "check")
        command.files = Command::Files::Many;
    if (kind == "nets") {
        command.files = Command::Files::None;
        command.words = Command::Words::LastIsWord;
    }
    if (kind == "edit") {
        command.words = Command::Words::Steps;
        command.stepNames = QStringList{"add-in", "signals"};
    }
    return command;
}

/// What was parsed, or the error, on one line.
QString parsed(const QString &kind, const QStringList &arguments)
{
    const Command command = commandOf(kind);
    Tool::Invocation invocation;
    QString error;
    if (!Tool::parseInvocation(command, arguments, &invocation, &error))
        return "error: " + error;
    if (invocation.showHelp)
        return "help";
    QStringList parts;
    const auto add = [&parts](const QString &name, const QStringList &values) {
        if (!values.isEmpty())
            parts.append(name + '=' + values.join(' '));
    };
    for (auto it = invocation.options.cbegin(); it != invocation.options.cend(); ++it)
        add(it.key(), it.value());
    add("files", invocation.files);
    if (!invocation.design.projectFile.isEmpty())
        parts.append("project=" + invocation.design.projectFile);
    add("design", invocation.design.arguments);
    add("words", invocation.words);
    return parts.join("; ");
}

} // namespace

class TestInvocation : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Tool::FileNameCodec::install(); }
    void sortsArguments_data();
    void sortsArguments();
    void keepsBlanksAndEmptyWords();
    void readsValuesOfOptions();
    void keepsEveryByteOfAFileName_data();
    void keepsEveryByteOfAFileName();
    void keepsRandomBytes();
};

void TestInvocation::sortsArguments_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("result");
    const auto add = [](const char *name, const char *kind, const char *line, const char *result) {
        QTest::newRow(name) << kind << line << result;
    };
    add("a file", "show", "a.tarn", "files=a.tarn");
    add("any file without a design", "show", "config.xml", "files=config.xml");
    add("a flag", "show", "--json a.tarn", "--json=; files=a.tarn");
    add("a flag behind the file", "show", "a.tarn --json", "--json=; files=a.tarn");
    add("a flag twice", "show", "--json --json a.tarn", "--json= ; files=a.tarn");
    add("a value", "show", "--format json a.tarn", "--format=json; files=a.tarn");
    add("an attached value", "show", "--format=json a.tarn", "--format=json; files=a.tarn");
    add("a value with a sign", "show", "--ignore=a=b a.tarn", "--ignore=a=b; files=a.tarn");
    add("several values", "show", "--ignore x a.tarn --ignore=y", "--ignore=x y; files=a.tarn");
    add("a value like an option", "show", "--ignore --json a.tarn",
        "--ignore=--json; files=a.tarn");
    add("output", "show", "-o out a.tarn", "--output=out; files=a.tarn");
    add("long output", "show", "--output=out a.tarn", "--output=out; files=a.tarn");
    add("output to the standard output", "show", "-o - a.tarn", "--output=-; files=a.tarn");
    add("a file named -", "show", "-", "files=-");
    add("a file after --", "show", "-- -a.tarn", "files=-a.tarn");
    add("an option after --", "show", "-- --help", "files=--help");
    add("-- after --", "show", "-- --", "files=--");
    add("help", "show", "--help", "help");
    add("short help", "show", "a b c -h --frob", "help");
    add("help as a value", "show", "--ignore -h a.tarn", "--ignore=-h; files=a.tarn");
    add("a flag that stands alone", "show", "--rules", "--rules=");
    add("a flag that may stand alone", "check", "--rules x.json a.tarn",
        "--rules=; files=a.tarn; project=x.json");

    add("no file", "show", "--json", "error: no file is given");
    add("two files", "show", "a.tarn b.tarn",
        "error: only one file can be given, not also \"b.tarn\"");
    add("an unknown option", "show", "--frob a.tarn", "error: unknown option --frob");
    add("an unknown short option", "show", "-x a.tarn", "error: unknown option -x");
    add("an argument of a design", "show", "--top t a.tarn", "error: unknown option --top");
    add("a value for a flag", "show", "--json=1 a.tarn", "error: --json takes no value");
    add("no value", "show", "a.tarn --ignore", "error: --ignore needs a value: RULE");
    add("an empty value", "show", "a.tarn --ignore=", "error: --ignore needs a value: RULE");
    add("no output", "show", "a.tarn -o", "error: -o needs a value: FILE");
    add("a wrong value", "show", "--format xml a.tarn",
        "error: --format takes text or json, not \"xml\"");
    add("a value twice", "show", "--format json --format text a.tarn",
        "error: --format is given twice");
    add("output twice", "show", "-o a --output b a.tarn", "error: --output is given twice");

    add("no design", "check", "a.tarn", "files=a.tarn");
    add("several files", "check", "a.tarn b.TARN", "files=a.tarn b.TARN");
    add("a project", "check", "x.json a.tarn", "files=a.tarn; project=x.json");
    add("a project behind", "check", "a.tarn x.JSON", "files=a.tarn; project=x.JSON");
    add("sources", "check", "b.v a.tarn c.sv", "files=a.tarn; design=b.v c.sv");
    add("arguments of a design", "check",
        "-f l.f -F m.f -I d -DX=1 -v c.v -y d +libext+.v --top t -sv --std=93 --work w a.tarn",
        "files=a.tarn; design=-f l.f -F m.f -I d -DX=1 -v c.v -y d +libext+.v --top t -sv "
        "--std=93 --work w");
    add("an own value of --language", "check", "--language verilog a.tarn",
        "--language=verilog; files=a.tarn");
    add("--language of the design", "check", "--language 1364-2001 b.v a.tarn",
        "files=a.tarn; design=--language 1364-2001 b.v");
    add("--language= of the design", "check", "--language=1364-2001 b.v a.tarn",
        "files=a.tarn; design=--language 1364-2001 b.v");
    add("a source like an option", "check", "a.tarn -- -b.v +c.v",
        "files=a.tarn; design=./-b.v ./+c.v");
    add("a file like an option", "check", "b.v -- -a.tarn", "files=-a.tarn; design=b.v");
    add("no file beside a design", "check", "b.v", "error: no \".tarn\" file is given");
    add("two projects", "check", "x.json y.json a.tarn",
        "error: only one project file can be read");
    add("project and sources", "check", "x.json b.v a.tarn",
        "error: a project file and design arguments cannot be combined");
    add("project and arguments", "check", "x.json --top t a.tarn",
        "error: a project file and design arguments cannot be combined");
    add("an unknown option beside a design", "check", "--frob a.tarn",
        "error: unknown option --frob");
    add("an unknown plus argument", "check", "+frob+x a.tarn", "error: unknown option +frob+x");
    add("no value for the design", "check", "a.tarn --top", "error: --top needs a value");

    add("a pattern", "nets", "data", "words=data");
    add("a pattern and a project", "nets", "x.json data", "project=x.json; words=data");
    add("a pattern like a project", "nets", "x.json", "words=x.json");
    add("a pattern and sources", "nets", "b.v --top t c.v data",
        "design=b.v --top t c.v; words=data");
    add("options behind the pattern", "nets", "b.v data --json --top t",
        "--json=; design=b.v --top t; words=data");
    add("a pattern like an option", "nets", "b.v -- -data", "design=b.v; words=-data");
    add("a pattern like a plus argument", "nets", "b.v -- +data", "design=b.v; words=+data");
    add("no pattern", "nets", "--json", "error: no PATTERN is given");
    add("a pattern is not needed", "nets", "--rules", "--rules=");
    add("no file for the command", "nets", "a.tarn data",
        "error: the command takes no file \"a.tarn\"");

    add("steps", "edit", "a.tarn add-in 0 signals 0.in0 x",
        "files=a.tarn; words=add-in 0 signals "
        "0.in0 x");
    add("steps and a design", "edit", "a.tarn x.json add-in 0 y.json",
        "files=a.tarn; project=x.json; words=add-in 0 y.json");
    add("an option among steps", "edit", "a.tarn add-in 0 --json signals",
        "--json=; files=a.tarn; words=add-in 0 signals");
    add("an option of a step", "edit", "a.tarn signals --wildcard -x +y",
        "files=a.tarn; words=signals --wildcard -x +y");
    add("an option of a step after --", "edit", "a.tarn signals -- --json",
        "files=a.tarn; words=signals --json");
    add("no step", "edit", "a.tarn", "error: no step is given; the steps are add-in, signals");
    add("no step but words", "edit", "a.tarn frob",
        "error: there is no step \"frob\"; the steps are add-in, signals");
}

void TestInvocation::sortsArguments()
{
    QFETCH(QString, kind);
    QFETCH(QString, line);
    QFETCH(QString, result);
    QCOMPARE(parsed(kind, line.split(' ')), result);
}

void TestInvocation::keepsBlanksAndEmptyWords()
{
    QCOMPARE(parsed("nets", {"my design.json", ""}), QString("project=my design.json; words="));
    QCOMPARE(parsed("show", {"a b.tarn"}), QString("files=a b.tarn"));
    QCOMPARE(parsed("show", {""}), QString("error: the name of a file is empty"));
    QCOMPARE(parsed("show", {"a.tarn", "--ignore", ""}),
             QString("error: --ignore needs a value: RULE"));
}

void TestInvocation::readsValuesOfOptions()
{
    Tool::Invocation invocation;
    QString error;
    QVERIFY(Tool::parseInvocation(commandOf("show"),
                                  {"--json", "--ignore", "x", "--ignore", "y", "a.tarn"},
                                  &invocation, &error));
    QVERIFY(invocation.isSet("--json"));
    QVERIFY(!invocation.isSet("--format"));
    QCOMPARE(invocation.value("--format"), QString());
    QCOMPARE(invocation.value("--ignore"), QString("y"));
    QCOMPARE(invocation.values("--ignore"), QStringList({"x", "y"}));
}

void TestInvocation::keepsEveryByteOfAFileName_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    const auto add = [](const char *name, const char *bytes, const QString &text) {
        QTest::newRow(name) << QByteArray(bytes) << text;
    };
    const auto byte = [](int value) { return QString(QChar(ushort(0xDC00 + value))); };
    add("empty", "", "");
    add("ASCII", "a b\n", "a b\n");
    add("UTF-8", "\xC3\xA9\xE2\x82\xAC", QString::fromUtf8("\xC3\xA9\xE2\x82\xAC"));
    add("beyond the first plane", "\xF0\x9F\x92\x80", QString::fromUtf8("\xF0\x9F\x92\x80"));
    add("beyond the first plane, then a byte", "\xF0\x9F\x92\x80\x80",
        QString::fromUtf8("\xF0\x9F\x92\x80") + byte(0x80));
    add("Latin-1", "caf\xE9.tarn", "caf" + byte(0xE9) + ".tarn");
    add("the beginning of a sequence", "a\xE2\x82", "a" + byte(0xE2) + byte(0x82));
    add("too long a sequence", "\xC0\x80", byte(0xC0) + byte(0x80));
    add("a surrogate", "\xED\xB2\x80", byte(0xED) + byte(0xB2) + byte(0x80));
    add("beyond Unicode", "\xF4\x90\x80\x80", byte(0xF4) + byte(0x90) + byte(0x80) + byte(0x80));
    add("no first byte", "\xFF\xFE", byte(0xFF) + byte(0xFE));
}

void TestInvocation::keepsEveryByteOfAFileName()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    QCOMPARE(QFile::decodeName(bytes), text);
    QCOMPARE(QFile::encodeName(text), bytes);
}

void TestInvocation::keepsRandomBytes()
{
    const quint32 seed = QRandomGenerator::global()->generate();
    qInfo("seed %u", seed);
    QRandomGenerator random(seed);
    for (int round = 0; round < 20000; ++round) {
        QByteArray bytes(random.bounded(12), '\0');
        for (char &byte : bytes)
            byte = char(random.bounded(2) ? random.bounded(1, 128) : random.bounded(128, 256));
        QCOMPARE(QFile::encodeName(QFile::decodeName(bytes)), bytes);
    }
}

TARN_TEST_MAIN(TestInvocation)
#include "tst_invocation.moc"
