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
    void projectHasWorkingFolderAndNoFile();
    void refuses_data();
    void refuses();
    void refusesFilesThatIncludeEachOther();
    void refusesDeepNesting();
    void refusesEndlessLists();
    void survivesRandomLists();

private:
    QString collect(const QStringList &arguments);

    QTemporaryDir m_dir;
};

void TestProjectArguments::initTestCase()
{
    for (const char *name : {"a.v", "b.sv", "c.vhd", "d.inc", "lib.v", "sub/e.v", "my file.v",
                             "a//x.v", "quo\"te.v", "#hash.v"})
        writeFile(m_dir.filePath(QString::fromLatin1(name)), "\n");
    QCOMPARE(::mkfifo(QFile::encodeName(m_dir.filePath("pipe")).constData(), 0600), 0);
}

/// The project from @p arguments in short form, or the reason of the refusal; the folder of the
/// test is written "~".
QString TestProjectArguments::collect(const QStringList &arguments)
{
    Project project;
    project.name = QStringLiteral("untouched");
    QString error;
    if (!projectFromArguments(arguments, m_dir.path(), &project, &error)) {
        if (project.name != QLatin1String("untouched"))
            return QStringLiteral("touched the project");
        return error.replace(m_dir.path(), QLatin1String("~"));
    }
    QStringList parts;
    for (const ProjectSource &source : qAsConst(project.sources))
        parts.append(QStringLiteral("%1:%2").arg(source.path, QString::number(source.type)));
    for (const QString &path : project.options.value(OPT::INCLUDEPATH).toStringList())
        parts.append(QStringLiteral("I:") + path);
    for (const QString &macro : qAsConst(project.macros))
        parts.append(QStringLiteral("D:") + macro);
    for (const QString &path : qAsConst(project.libraryFiles))
        parts.append(QStringLiteral("v:") + path);
    if (project.options.contains(OPT::TOPMODULE))
        parts.append(QStringLiteral("top:") + project.options.value(OPT::TOPMODULE).toString());
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
    row("-DS=\"\\\"x\\\"\"", "D:S=\"x\"");
    row("-I \"inc dir\" +incdir+\"x y\"+z", "I:inc dir I:x y I:z");
    row("-I\ninc\n--top\nmain", "I:inc top:main");
    row("-v lib.v +define+A=1 -DB", "D:A=1 D:B v:~/lib.v");
    row("a.v\\", "cannot read");
    row("-D", "~/list.f: -D needs a value");
    row("\n\n \"a.v", "~/list.f:3: the quote is not closed");
    row("a.v 'b", "~/list.f:1: the quote is not closed");
    row("a.v\n/* b.v", "~/list.f:2: the comment is not closed");
    row("missing.v", "~/list.f: cannot read the file ~/missing.v");
    row("-x", "~/list.f: unknown argument -x");
}

void TestProjectArguments::argumentFiles()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, result);
    writeFile(m_dir.filePath("list.f"), content);
    const QString got = collect({"-f", "list.f"});
    if (result == QLatin1String("cannot read"))
        QCOMPARE(got, QStringLiteral("~/list.f: cannot read the file ~/a.v\\"));
    else
        QCOMPARE(got, result);

    // Nested, from another folder: paths still start in the working folder.
    writeFile(m_dir.filePath("sub/outer.f"), "sub/e.v -f ./list.f sub/e.v");
    if (!result.contains(QLatin1String("list.f")) && result != QLatin1String("cannot read"))
        QCOMPARE(collect({"-f", "sub/outer.f"}).remove("~/sub/e.v:2").trimmed(), result);
}

void TestProjectArguments::projectHasWorkingFolderAndNoFile()
{
    Project project;
    QString error;
    QVERIFY(projectFromArguments({"a.v"}, m_dir.path() + "/sub/..", &project, &error));
    QCOMPARE(project.filePath, QString());
    QCOMPARE(project.workingDir, m_dir.path());
    QCOMPARE(project.name, QDir(m_dir.path()).dirName());
    QVERIFY(project.sources.first().enabled);
    QVERIFY(projectFromArguments({}, QStringLiteral("/"), &project, &error));
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
    for (const char *option : {"-f", "-I", "-D", "-v", "--top"}) {
        const QString text = QString::fromLatin1(option);
        row({"a.v", text}, qPrintable(text + " needs a value"));
        row({text, ""}, qPrintable(text + " needs a value"));
    }
    row({"+incdir"}, "+incdir needs a value");
    row({"+incdir+"}, "+incdir+ needs a value");
    row({"+incdir+a++b"}, "+incdir+a++b needs a value");
    row({"+define+"}, "+define+ needs a value");
    row({"+libext+.v"}, "unknown argument +libext+.v");
    row({"-y", "lib"}, "unknown argument -y");
    row({"--lint"}, "unknown argument --lint");
    row({"-"}, "unknown argument -");
    row({"-D1A"}, "1A is no macro definition: NAME or NAME=VALUE");
    row({"+define+A+=2"}, "=2 is no macro definition: NAME or NAME=VALUE");
    row({"-DA=1\n2"}, "A=1\n2 is no macro definition: NAME or NAME=VALUE");
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
        QStringLiteral("~/y.f: the argument file ~/x.f includes itself or is nested too deep"));
    // Twice beside each other is no circle.
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
             QStringLiteral("~/n39.f: the argument file ~/n40.f includes itself or is nested too "
                            "deep"));
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

/// Whatever the text, the reader ends with a reason or a project; never both, never neither.
void TestProjectArguments::survivesRandomLists()
{
    std::mt19937 random(7);
    const QList<QByteArray> pieces = {"a.v",      "b.sv",
                                      " ",        "\n",
                                      "\"",       "'",
                                      "\\",       "//",
                                      "/*",       "*/",
                                      "#",        "-I",
                                      "-D",       "-f",
                                      "-v",       "x",
                                      "=",        "+incdir+",
                                      "+define+", "--top",
                                      "\xff",     QByteArray("\0", 1),
                                      "list.f",   "-"};
    int accepted = 0;
    for (int round = 0; round < 1500; ++round) {
        QByteArray content;
        for (int length = int(random() % 12); length > 0; --length)
            content += pieces.at(int(random() % unsigned(pieces.size())));
        writeFile(m_dir.filePath("list.f"), content);
        Project project;
        QString error;
        const bool good = projectFromArguments({"-f", "list.f"}, m_dir.path(), &project, &error);
        QCOMPARE(error.isEmpty(), good);
        QCOMPARE(project.workingDir.isEmpty(), !good);
        for (const ProjectSource &source : qAsConst(project.sources))
            QVERIFY(QFile::exists(source.path));
        accepted += good;
    }
    QVERIFY(accepted > 50);
    QVERIFY(accepted < 1200);
}

TARN_TEST_MAIN(TestProjectArguments)
#include "tst_projectarguments.moc"
