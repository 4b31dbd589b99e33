// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <te/project.h>

#include <support/files.h>
#include <support/testcase.h>
#include <te/teconstants.h>

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <random>

#include <sys/stat.h>

using namespace TE;
using TarnTest::writeFile;

class TestProjectArguments : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void collects_data();
    void collects();
    void argumentFiles_data();
    void argumentFiles();
    void listsStartInTheirFolders_data();
    void listsStartInTheirFolders();
    void projectHasWorkingFolderAndNoFile();
    void refuses_data();
    void refuses();
    void refusesFilesThatIncludeEachOther();
    void refusesDeepNesting();
    void refusesEndlessLists();
    void survivesRandomLists();
    void knowsItsOptions_data();
    void knowsItsOptions();
    void sortsNamedFiles();

private:
    QString collect(const QStringList &arguments);

    QTemporaryDir m_dir;
};

void TestProjectArguments::initTestCase()
{
    for (const char *name : {"a.v",
                             "b.sv",
                             "c.vhd",
                             "f.vhdl",
                             "sub/h.vhd",
                             "d.inc",
                             "lib.v",
                             "sub/e.v",
                             "my file.v",
                             "a//x.v",
                             "quo\"te.v",
                             "#hash.v",
                             "$HOME.v",
                             "wild/b2.sv",
                             "wild/Z.sv",
                             "wild/a.sv",
                             "wild/b1.sv",
                             "wild/C.SV",
                             "wild/.hidden.sv",
                             "wild/[x].v",
                             "wild/sub.sv/none.txt",
                             "with space/f.v",
                             "sub/deep/g.v"})
        writeFile(m_dir.filePath(QString::fromLatin1(name)), "\n");
    QCOMPARE(::mkfifo(QFile::encodeName(m_dir.filePath("pipe")).constData(), 0600), 0);
    qputenv("TARN_DIR", "sub");
    qputenv("TARN_BLANK", "with space");
    qputenv("TARN_EMPTY", "");
    qunsetenv("TARN_UNSET");
}

/// The project from @p arguments in short form, or the reason of the refusal; the folder of the
/// test is written "~".
QString TestProjectArguments::collect(const QStringList &arguments)
{
    Project project;
    project.name = QStringLiteral("untouched");
    QString error;
    QStringList warnings;
    if (!projectFromArguments(arguments, m_dir.path(), &project, &warnings, &error)) {
        if (project.name != QLatin1String("untouched"))
            return QStringLiteral("touched the project");
        return error.replace(m_dir.path(), QLatin1String("~"));
    }
    QStringList parts;
    for (const ProjectSource &source : qAsConst(project.sources)) {
        parts.append(QStringLiteral("%1:%2").arg(source.path, QString::number(source.type)));
        if (source.library != QLatin1String(DefaultVhdlLibrary))
            parts.last() += QLatin1Char('@') + source.library;
    }
    for (const QString &path : project.options.value(OPT::INCLUDEPATH).toStringList())
        parts.append(QStringLiteral("I:") + path);
    for (const QString &macro : qAsConst(project.macros))
        parts.append(QStringLiteral("D:") + macro);
    for (const QString &path : qAsConst(project.libraryFiles))
        parts.append(QStringLiteral("v:") + path);
    for (const QString &path : qAsConst(project.libraryFolders))
        parts.append(QStringLiteral("y:") + path);
    for (const QString &extension : qAsConst(project.libraryExtensions))
        parts.append(QStringLiteral("ext:") + extension);
    if (project.options.contains(OPT::TOPMODULE))
        parts.append(QStringLiteral("top:") + project.options.value(OPT::TOPMODULE).toString());
    if (project.options.contains(OPT::Verilog_Standard))
        parts.append(QStringLiteral("std:") +
                     project.options.value(OPT::Verilog_Standard).toString());
    if (project.options.contains(OPT::VHDL_Standard))
        parts.append(QStringLiteral("vhdl:") +
                     project.options.value(OPT::VHDL_Standard).toString());
    for (const QString &warning : qAsConst(warnings))
        parts.append(QStringLiteral("\nWARNING: ") + warning);
    return parts.join(QLatin1Char(' ')).replace(m_dir.path(), QLatin1String("~"));
}

void TestProjectArguments::collects_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("result");
    const auto row = [](const QStringList &arguments, const char *result) {
        QTest::newRow(qPrintable(arguments.join(' '))) << arguments << QString::fromLatin1(result);
    };
    row({}, "");
    row({"a.v", "b.sv", "c.vhd"}, "~/a.v:2 ~/b.sv:3 ~/c.vhd:4");
    row({"d.inc"}, "~/d.inc:2");
    row({"b.sv", "a.v", "./sub/../b.sv"}, "~/b.sv:3 ~/a.v:2");
    row({m_dir.filePath("a.v")}, "~/a.v:2");
    row({"my file.v"}, "~/my file.v:2");
    row({"-I", "inc"}, "I:inc");
    row({"-Iinc", "-I/abs/inc", "-I", "inc"}, "I:inc I:/abs/inc I:inc");
    row({"+incdir+one+two", "+incdir+three"}, "I:one I:two I:three");
    row({"-DA", "-DB=1", "-D", "C=x y"}, "D:A D:B=1 D:C=x y");
    row({"+define+A+B=2+C="}, "D:A D:B=2 D:C=");
    row({"-v", "lib.v", "-v", "a.v"}, "v:~/lib.v v:~/a.v");
    row({"--top", "main"}, "top:main");
    row({"--top", "first", "--top", "second"}, "top:second");
    row({"-top", "a"}, "top:a");
    row({"--top-module=b"}, "top:b");
    row({"-y", "cells", "-y", "/abs/more", "+libext+.v+.sv+", "+libext+.vlib"},
        "y:~/cells y:/abs/more ext:.v ext:.sv ext:.vlib");
    row({"+incdir+a++b+"}, "I:a I:b");
    row({"-incdir", "a", "--incdir=b", "-define", "A=1", "-define=B=2", "-libext", ".v"},
        "I:a I:b D:A=1 D:B=2 ext:.v");
    row({"-sv"}, "std:1800-2017");
    row({"--sv"}, "std:1800-2017");
    row({"-sverilog"}, "std:1800-2017");
    row({"--language", "1364-2001"}, "std:1364-2001");
    row({"--language=1364-1995"}, "std:1364-1995");
    row({"-language", "1364-2001-noconfig"}, "std:1364-2001");
    row({"--default-language", "1800-2012"}, "std:1800-2017");
    row({"a.v", "-sv", "b.sv"}, "~/a.v:2 ~/b.sv:3 std:1800-2017");
    row({"-sv", "--language", "1364-2005"}, "std:1364-2005");
    row({"--language", "1364-2005", "-sv"}, "std:1800-2017");
    row({"wild/*.sv"}, "~/wild/Z.sv:3 ~/wild/a.sv:3 ~/wild/b1.sv:3 ~/wild/b2.sv:3");
    row({"wild/b?.sv", "wild/*.v"}, "~/wild/b1.sv:3 ~/wild/b2.sv:3 ~/wild/[x].v:2");
    row({"wild/b[2-9].sv", "wild/[x].v"}, "~/wild/b2.sv:3 ~/wild/[x].v:2");
    row({"-v", "wild/b*.sv"}, "v:~/wild/b1.sv v:~/wild/b2.sv");
    row({"$HOME.v"}, "~/$HOME.v:2");

    // VHDL.
    row({"--work", "cells", "c.vhd", "a.v", "f.vhdl"}, "~/c.vhd:4@cells ~/a.v:2 ~/f.vhdl:4@cells");
    row({"c.vhd", "-work", "Cells_1", "f.vhdl"}, "~/c.vhd:4 ~/f.vhdl:4@cells_1");
    row({"--work=a", "c.vhd", "--work", "WORK", "f.vhdl"}, "~/c.vhd:4@a ~/f.vhdl:4");
    row({"--work", "a", "*.vhd*"}, "~/c.vhd:4@a ~/f.vhdl:4@a");
    row({"--work", "./no/name", "a.v"}, "~/a.v:2");
    row({"-v", "c.vhd", "--work", "Work", "-v", "c.vhd"}, "v:~/c.vhd v:~/c.vhd");
    row({"--work", "l", "-v", "c.vhd", "-v", "a.v"},
        "v:~/c.vhd v:~/a.v \nWARNING: ~/c.vhd belongs to the library work, as it is named with -v");
    row({"c.vhd", "./c.vhd"}, "~/c.vhd:4");
    row({"--work", "a", "c.vhd", "--work", "A", "c.vhd"}, "~/c.vhd:4@a");
    row({"c.vhd", "--work", "b", "c.vhd", "f.vhdl"},
        "~/c.vhd:4 ~/f.vhdl:4@b \nWARNING: ~/c.vhd stays in the library work, as a file belongs to "
        "one library only");
    row({"--std", "93", "c.vhd"}, "~/c.vhd:4 vhdl:1076-1993");
    row({"c.vhd", "--std=08"}, "~/c.vhd:4 vhdl:1076-2008");
    row({"-std=2008", "-93"}, "vhdl:1076-1993");
    row({"-93", "-2008"}, "vhdl:1076-2008");
    row({"--std=93", "-sv"}, "std:1800-2017 vhdl:1076-1993");
}

void TestProjectArguments::collects()
{
    QFETCH(QStringList, arguments);
    QTEST(collect(arguments), "result");
}

void TestProjectArguments::argumentFiles_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("result");
    const auto row = [](const QByteArray &content, const char *result) {
        QTest::newRow(content.constData()) << content << QString::fromLatin1(result);
    };
    row("", "");
    row("a.v\r\nb.sv\t c.vhd", "~/a.v:2 ~/b.sv:3 ~/c.vhd:4");
    row("a.v // b.sv\nc.vhd", "~/a.v:2 ~/c.vhd:4");
    row("//", "");
    row("a.v # b.sv\nc.vhd", "~/a.v:2 ~/c.vhd:4");
    row("# all\n#of\n", "");
    row("a.v /* b.sv\n // */c.vhd", "~/a.v:2 ~/c.vhd:4");
    row("a//x.v", "~/a/x.v:2");
    row("./#hash.v", "~/#hash.v:2");
    row("\"my file.v\" 'my file.v' my\\ file.v", "~/my file.v:2");
    row("\"quo\\\"te.v\"", "~/quo\"te.v:2");
    row("-DA='\\'", "D:A=\\");
    row("+define+W=8'h10+V=4'sd3 -DX=16'hFF_xz -DY='1 -DZ='h1f",
        "D:W=8'h10 D:V=4'sd3 D:X=16'hFF_xz "
        "D:Y='1 D:Z='h1f");
    row("-DA='b c' -DB='hdl' -Iinc'h d'", "I:inch d D:A=b c D:B=hdl");
    row("-DS=\"\\\"x\\\"\"", "D:S=\"x\"");
    row("-I \"inc dir\" +incdir+\"x y\"+z", "I:inc dir I:x y I:z");
    row("-I\ninc\n--top\nmain", "I:inc top:main");
    row("-v lib.v +define+A=1 -DB", "D:A=1 D:B v:~/lib.v");
    row("a.v\\", "~/a.v:2");
    row("-D", "~/list.f:1: -D needs a value");
    row("\n\n \"a.v", "~/list.f:3: the quote is not closed");
    row("a.v 'b", "~/list.f:1: the quote is not closed");
    row("a.v\n/* b.v", "~/list.f:2: the comment is not closed");
    row("\n\n a.v\nmissing.v", "~/list.f:4: cannot read the file ~/missing.v");
    row("wild/*.vhd", "~/list.f:1: no file matches ~/wild/*.vhd");

    // Lines that go on.
    row("a.v \\\nb.sv", "~/a.v:2 ~/b.sv:3");
    row("a.v \\ \t\r\n  b.sv\\\r\n c.vhd", "~/a.v:2 ~/b.sv:3 ~/c.vhd:4");
    row("+incdir+x\\\n+y", "I:x I:y");
    row("\\\n\\\n", "");
    row("a.v \\\n// b.sv \\\nc.vhd", "~/a.v:2 ~/c.vhd:4");
    row("\"my \\\nfile.v\"", "~/my file.v:2");
    row("a.v \\\n missing.v", "~/list.f:2: cannot read the file ~/missing.v");

    // Variables.
    row("$TARN_DIR/e.v ${TARN_DIR}/e.v $(TARN_DIR)/deep/g.v", "~/sub/e.v:2 ~/sub/deep/g.v:2");
    row("\"${TARN_BLANK}/f.v\" $TARN_BLANK/f.v", "~/with space/f.v:2");
    row("-y $TARN_DIR -I $TARN_DIR/h -v ${TARN_DIR}/e.v +incdir+$TARN_DIR+$(TARN_DIR)/i",
        "I:sub/h I:sub I:sub/i v:~/sub/e.v y:~/sub");
    row("$TARN_EMPTY a.v ${TARN_EMPTY}b.sv", "~/a.v:2 ~/b.sv:3");
    row("-DA=$TARN_DIR -D B=${TARN_DIR} +define+C=$(TARN_DIR)", "D:A=sub D:B=sub D:C=sub");
    row("-DA=$clog2(8) +define+B=$unsigned(1)+C=$TARN_DIR -D E=$TARN_UNSET",
        "D:A=$clog2(8) D:B=$unsigned(1) D:C=sub D:E=$TARN_UNSET");
    row("-DA='$TARN_DIR' -DB=\\$TARN_DIR '$HOME.v' \\$HOME.v",
        "~/$HOME.v:2 D:A=$TARN_DIR D:B=$TARN_DIR");
    row("a.v\n$TARN_UNSET/b.v", "~/list.f:2: the environment variable TARN_UNSET is not set");
    row("a.v\n+incdir+${TARN_UNSET}/b",
        "~/list.f:2: the environment variable TARN_UNSET is not set");
    row("-y\n$(TARN_UNSET)", "~/list.f:1: the environment variable TARN_UNSET is not set");
    row("-f $TARN_UNSET.f", "~/list.f:1: the environment variable TARN_UNSET is not set");
    row("-Da=$ -Db=$$ -Dc=${TARN_DIR -Dd=${}", "D:a=$ D:b=$$ D:c=${TARN_DIR D:d=${}");
    row("--work a c.vhd # b\n--work b f.vhdl", "~/c.vhd:4@a ~/f.vhdl:4@b");
    row("c.vhd\n-work ./no/name\na.v\nf.vhdl",
        "~/list.f:4: the library \"./no/name\" must be a VHDL identifier: letters, digits and "
        "single underscores, with a letter first");
    row("--work ieee\nc.vhd",
        "~/list.f:2: the library \"ieee\" is reserved for the packages of the standard; choose "
        "another name, and use it in the library clauses too");
    row("--std=93\na.v -std=c++11", "~/a.v:2 vhdl:1076-1993 \nWARNING: ~/list.f:2: c++11 is not an "
                                    "edition of VHDL such as 93 or 2008");
    row("--work $TARN_UNSET c.vhd", "~/list.f:1: the environment variable TARN_UNSET is not set");

    // Arguments of other tools.
    const auto unknown = [&row](const QByteArray &content, const char *files, const char *skipped) {
        const QString warning =
            QStringLiteral("\nWARNING: ~/list.f:%1 is ignored")
                .arg(QString::fromLatin1(skipped).replace('|', ": the unknown argument "));
        row(content, qPrintable(files + (*files ? QStringLiteral(" ") : QString()) + warning));
    };
    unknown("-x", "", "1|-x");
    unknown("a.v\n-timescale 1ns/1ps b.sv", "~/a.v:2 ~/b.sv:3", "2|-timescale 1ns/1ps");
    unknown("-timescale=1ns/1ps d.inc", "~/d.inc:2", "1|-timescale=1ns/1ps");
    unknown("-l list.f\nb.sv", "~/b.sv:3", "1|-l list.f");
    unknown("-quiet a.v", "~/a.v:2", "1|-quiet");
    unknown("-quiet\nd.inc", "~/d.inc:2", "1|-quiet");
    unknown("-quiet -sv", "std:1800-2017", "1|-quiet");
    unknown("-quiet +define+A", "D:A", "1|-quiet");
    unknown("+acc+r a.v", "~/a.v:2", "1|+acc+r");
    unknown("-l $TARN_UNSET", "", "1|-l $TARN_UNSET");
    unknown("-", "", "1|-");
    row("-q1 -q2", "\nWARNING: ~/list.f:1: the unknown argument -q1 is ignored "
                   "\nWARNING: ~/list.f:1: the unknown argument -q2 is ignored");
    row("--language ada", "~/list.f:1: ada is not an edition of Verilog or SystemVerilog such as "
                          "1800-2017");
}

void TestProjectArguments::argumentFiles()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, result);
    writeFile(m_dir.filePath("list.f"), content);
    QCOMPARE(collect({"-f", "list.f"}), result);

    // Nested, from another folder: paths still start in the working folder.
    writeFile(m_dir.filePath("sub/outer.f"), "sub/e.v -f ./list.f sub/e.v");
    if (!result.contains(QLatin1String("list.f")) && !result.contains(QLatin1String("sub/e.v")))
        QCOMPARE(collect({"-f", "sub/outer.f"}).remove("~/sub/e.v:2").trimmed(), result);
}

/// Paths start in the working folder in -f files, and in the list's own folder in -F files.
void TestProjectArguments::listsStartInTheirFolders_data()
{
    QTest::addColumn<QByteArray>("outer");
    QTest::addColumn<QByteArray>("inner");
    QTest::addColumn<QString>("result");
    const auto row = [](const char *name, const QByteArray &outer, const QByteArray &inner,
                        const char *result) {
        QTest::newRow(name) << outer << inner << QString::fromLatin1(result);
    };
    row("own folder", "-F sub/inner.f", "e.v deep/*.v", "~/sub/e.v:2 ~/sub/deep/g.v:2");
    row("everything", "-F sub/inner.f a.v", "-I h +incdir+../i+/abs -v e.v -y deep -DA=e.v",
        "~/a.v:2 I:~/sub/h I:~/i I:/abs D:A=e.v v:~/sub/e.v y:~/sub/deep");
    row("working folder", "-f sub/inner.f", "a.v sub/e.v -I h", "~/a.v:2 ~/sub/e.v:2 I:h");
    row("list in own folder", "-F sub/inner.f", "-F deep/third.f", "~/sub/deep/g.v:2");
    row("back to the working folder", "-F sub/inner.f", "-f deep/fourth.f e.v",
        "~/sub/deep/g.v:2 ~/sub/e.v:2");
    row("missing in own folder", "-F sub/inner.f", "\na.v",
        "~/sub/inner.f:2: cannot read the file ~/sub/a.v");
    row("hint", "-f sub/inner.f", "e.v",
        "~/sub/inner.f:1: cannot read the file ~/e.v (paths in a list start in ~ with -f, in "
        "the folder of the list with -F)");
    row("hint for a list", "\n-f sub/inner.f", "-f deep/third.f",
        "~/sub/inner.f:1: cannot read the argument file ~/deep/third.f: No such file or directory "
        "(paths in a list start in ~ with -f, in the folder of the list with -F)");
    row("library of the outer list", "--work o -F sub/inner.f f.vhdl", "h.vhd",
        "~/sub/h.vhd:4@o ~/f.vhdl:4@o");
    row("library of the inner list", "c.vhd --work o -F sub/inner.f f.vhdl", "--work i h.vhd",
        "~/c.vhd:4 ~/sub/h.vhd:4@i ~/f.vhdl:4@o");
    row("long name", "-file sub/inner.f", "a.v", "~/a.v:2");
    row("circle", "-F sub/inner.f", "-F ../outer.f",
        "~/sub/inner.f:1: the argument file ~/outer.f includes itself or is nested too deeply");
}

void TestProjectArguments::listsStartInTheirFolders()
{
    QFETCH(QByteArray, outer);
    QFETCH(QByteArray, inner);
    writeFile(m_dir.filePath("outer.f"), outer);
    writeFile(m_dir.filePath("sub/inner.f"), inner);
    writeFile(m_dir.filePath("sub/deep/third.f"), "g.v");
    writeFile(m_dir.filePath("sub/deep/fourth.f"), "sub/deep/g.v");
    QTEST(collect({"-f", "outer.f"}), "result");
}

void TestProjectArguments::projectHasWorkingFolderAndNoFile()
{
    Project project;
    QString error;
    QStringList warnings;
    QVERIFY(projectFromArguments({"a.v"}, m_dir.path() + "/sub/..", &project, &warnings, &error));
    QCOMPARE(project.filePath, QString());
    QCOMPARE(project.workingDir, m_dir.path());
    QCOMPARE(project.name, QDir(m_dir.path()).dirName());
    QVERIFY(project.sources.first().enabled);
    QVERIFY(projectFromArguments({}, QStringLiteral("/"), &project, &warnings, &error));
    QCOMPARE(project.name, QStringLiteral("project"));
}

void TestProjectArguments::refuses_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("reason");
    const auto row = [](const QStringList &arguments, const char *reason) {
        QTest::newRow(qPrintable(arguments.join(' '))) << arguments << QString::fromLatin1(reason);
    };
    row({"none.v"}, "cannot read the file ~/none.v");
    row({"sub"}, "cannot read the file ~/sub");
    row({""}, "cannot read the file ~");
    row({"-v", "none.v"}, "cannot read the file ~/none.v");
    row({"-f", "none.f"}, "cannot read the argument file ~/none.f: No such file or directory");
    row({"-f", "sub"}, "cannot read the argument file ~/sub: it is a folder");
    row({"-f", "pipe"}, "cannot read the argument file ~/pipe: it is a pipe or a device");
    row({"-f", "/dev/zero"}, "cannot read the argument file /dev/zero: it is a pipe or a device");
    for (const char *option :
         {"-f", "-F", "-I", "-D", "-v", "-y", "--top", "--language", "--work", "--std"}) {
        const QString text = QString::fromLatin1(option);
        row({"a.v", text}, qPrintable(text + " needs a value"));
        row({text, ""}, qPrintable(text + " needs a value"));
    }
    row({"+incdir"}, "+incdir needs a value");
    row({"+incdir+"}, "+incdir+ needs a value");
    row({"+define+"}, "+define+ needs a value");
    row({"+libext+"}, "+libext+ needs a value");
    row({"+acc"}, "unknown argument +acc");
    row({"--top="}, "--top= needs a value");
    row({"--language", "1800"},
        "1800 is not an edition of Verilog or SystemVerilog such as 1800-2017");
    row({"--std", "vhdl"}, "vhdl is not an edition of VHDL such as 93 or 2008");
    row({"-94"}, "unknown argument -94");
    row({"--work=", "c.vhd"}, "--work= needs a value");
    row({"--work", "a b", "c.vhd"},
        "the library \"a b\" must be a VHDL identifier: letters, digits "
        "and single underscores, with a letter first");
    row({"wild/*.vhd"}, "no file matches ~/wild/*.vhd");
    row({"--lint"}, "unknown argument --lint");
    row({"-"}, "unknown argument -");
    row({"-D1A"}, "1A is not a macro definition, NAME or NAME=VALUE");
    row({"+define+A+=2"}, "=2 is not a macro definition, NAME or NAME=VALUE");
    row({"-DA=1\n2"}, "A=1\n2 is not a macro definition, NAME or NAME=VALUE");
}

void TestProjectArguments::refuses()
{
    QFETCH(QStringList, arguments);
    QTEST(collect(arguments), "reason");
}

void TestProjectArguments::refusesFilesThatIncludeEachOther()
{
    writeFile(m_dir.filePath("x.f"), "-f y.f");
    writeFile(m_dir.filePath("y.f"), "a.v -f sub/../x.f");
    QCOMPARE(
        collect({"-f", "x.f"}),
        QStringLiteral("~/y.f:1: the argument file ~/x.f includes itself or is nested too deeply"));
    // Listing a file twice is not a circle.
    writeFile(m_dir.filePath("y.f"), "a.v");
    QCOMPARE(collect({"-f", "y.f", "-f", "x.f"}), QStringLiteral("~/a.v:2"));
}

void TestProjectArguments::refusesDeepNesting()
{
    for (int i = 0; i < 40; ++i)
        writeFile(m_dir.filePath(QStringLiteral("n%1.f").arg(i)),
                  QStringLiteral("-f n%1.f").arg(i + 1).toLatin1());
    writeFile(m_dir.filePath(QStringLiteral("n40.f")), "a.v");
    QCOMPARE(collect({"-f", "n9.f"}), QStringLiteral("~/a.v:2"));
    QCOMPARE(collect({"-f", "n8.f"}),
             QStringLiteral(
                 "~/n39.f:1: the argument file ~/n40.f includes itself or is nested too deeply"));
}

void TestProjectArguments::refusesEndlessLists()
{
    // Each list names the next one twice.
    for (int i = 0; i < 30; ++i) {
        const QByteArray next = QStringLiteral("-f t%1.f ").arg(i + 1).toLatin1();
        writeFile(m_dir.filePath(QStringLiteral("t%1.f").arg(i)), next + next + next + next);
    }
    writeFile(m_dir.filePath(QStringLiteral("t30.f")), "-f t30x.f");
    writeFile(m_dir.filePath(QStringLiteral("t30x.f")), "");
    const QString reason = collect({"-f", "t18.f"});
    QVERIFY2(reason.endsWith(QLatin1String("there are more than 1000 argument files")),
             qPrintable(reason));
}

/// For any text, the reader gives either a reason or a project.
void TestProjectArguments::survivesRandomLists()
{
    std::mt19937 random(7);
    const QList<QByteArray> pieces = {"a.v",       "b.sv",
                                      " ",         "\n",
                                      "\"",        "'",
                                      "\\",        "//",
                                      "/*",        "*/",
                                      "#",         "-I",
                                      "-D",        "-f",
                                      "-v",        "x",
                                      "=",         "+incdir+",
                                      "+define+",  "--top",
                                      "\xff",      QByteArray("\0", 1),
                                      "list.f",    "-",
                                      "$TARN_DIR", "${",
                                      "-y",        "-sv",
                                      "-F",        "\\\n",
                                      "*.v",       "+libext+",
                                      "--work",    "c.vhd"};
    int accepted = 0;
    for (int round = 0; round < 1500; ++round) {
        QByteArray content;
        for (int length = int(random() % 12); length > 0; --length)
            content += pieces.at(int(random() % unsigned(pieces.size())));
        writeFile(m_dir.filePath("list.f"), content);
        Project project;
        QString error;
        QStringList warnings;
        const bool good =
            projectFromArguments({"-f", "list.f"}, m_dir.path(), &project, &warnings, &error);
        QCOMPARE(error.isEmpty(), good);
        QCOMPARE(project.workingDir.isEmpty(), !good);
        for (const ProjectSource &source : qAsConst(project.sources))
            QVERIFY(QFile::exists(source.path));
        accepted += good;
    }
    QVERIFY(accepted > 50);
    QVERIFY(accepted < 1200);
}

void TestProjectArguments::knowsItsOptions_data()
{
    QTest::addColumn<QString>("argument");
    QTest::addColumn<bool>("known");
    QTest::addColumn<bool>("takesNext");
    const auto add = [](const char *argument, bool known, bool takesNext) {
        QTest::newRow(argument) << argument << known << takesNext;
    };
    for (const char *argument : {"-f", "-F", "-I", "-D", "-v", "-y", "--top", "-top", "--language",
                                 "--work", "--std", "-incdir", "-define", "-libext"})
        add(argument, true, true);
    for (const char *argument : {"-Irtl", "-DX=1", "-top=main", "-sv", "-93", "-2008",
                                 "+incdir+rtl", "+define+X", "+libext+.v"})
        add(argument, true, false);
    for (const char *argument : {"--lint", "-x", "-", "+lint", "+", "--", "a.v", "", "--topper"})
        add(argument, false, false);
}

void TestProjectArguments::knowsItsOptions()
{
    QFETCH(QString, argument);
    QFETCH(bool, known);
    QFETCH(bool, takesNext);
    QCOMPARE(isDesignOption(argument), known);
    QCOMPARE(takesNextArgument(argument), takesNext);
}

void TestProjectArguments::sortsNamedFiles()
{
    for (const char *path : {"a.v", "a.json.v", "a", "json", ".f"})
        QCOMPARE(namedFileOf(path), NamedFile::Source);
    for (const char *path : {"a.json", "d.v/a.JSON", ".json"})
        QCOMPARE(namedFileOf(path), NamedFile::Project);
    for (const char *path : {"a.tarn", "a.json.Tarn"})
        QCOMPARE(namedFileOf(path), NamedFile::Config);
}

TARN_TEST_MAIN(TestProjectArguments)
#include "tst_projectarguments.moc"
