// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designfixture.h"
#include "dialogwatch.h"
#include "smalldisks.h"
#include "temporaryfolder.h"
#include "toolscript.h"

#include <netweir/internal/tool/toolprocess.h>

#include <support/testcase.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QProgressDialog>
#include <QTest>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace NETWEIR;
using TarnTest::DesignFixture;
using TarnTest::DialogWatch;
using TarnTest::ToolScript;

namespace {

const char Endless[] = "module top; genvar i;\n"
                       "generate for (i = 0; i < 1000000000; i = i + 1) begin : g wire x; end\n"
                       "endgenerate\nendmodule\n";

/// Beginning of the script of a tool that preprocesses a design of "module top; endmodule".
const QByteArray PreprocessTop("case \"$1\" in -E) echo '`line 1 \"netweir_s1/top.v\" 1';"
                               " echo 'module top; endmodule'; exit 0;; esac\n");

} // namespace

/// Designs whose reading the tool, the system or the user ends.
class TestExtractionFaults : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void waitsForAnIncludedPipeUntilTheTimeout();
    void cancelEndsTheSecondReading();
    void cancelEndsARunWithoutWhatCannotBeRead_data();
    void cancelEndsARunWithoutWhatCannotBeRead();
    void lateErrorsGoToTheDebugStream();
    void cancelEndsTheToolAtOnce_data();
    void cancelEndsTheToolAtOnce();
    void cancelEndsTheReader();
    void boundsTheReader();
    void endsWithTheApplication_data();
    void endsWithTheApplication();
    void showsPhaseAndTime();
    void survivesTheDeathOfTheParent();
    void callsMayNest();
    void reportsAToolThat_data();
    void reportsAToolThat();
    void reportsALateTimeout();
    void namesATemporaryFolderThatIsNone_data();
    void namesATemporaryFolderThatIsNone();
    void namesAnIncludeFolderThatCannotBeLinked();
    void saysThatAFileForTheToolCannotBeWritten();
    void saysThatTheTemporaryFolderIsFull();
    void reportsAMissingTool();
    void limitsMemoryAndStackOfTheTool();

private:
    QByteArray toolOfEndlessReading() const;

    const TarnTest::TemporaryFolder m_folder;
};

void TestExtractionFaults::cleanup()
{
    qunsetenv("TARN_VERILATOR");
    TestCase::cleanup();
    m_folder.verifyNothingIsLeft();
}

void TestExtractionFaults::waitsForAnIncludedPipeUntilTheTimeout()
{
    DesignFixture design;
    design.add(QStringLiteral("top.v"), "`ifdef PIPE\n`include \"pipe.vh\"\n`include \"pipe.vh\"\n"
                                        "`endif\nmodule top; endmodule\n");
    const QString pipe = design.path(QStringLiteral("pipe.vh"));
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const QString warning =
        QStringLiteral("WARNING: %1: A source includes this file, which is a pipe or "
                       "a device. Reading it may last until the timeout.")
            .arg(pipe);
    QVERIFY(design.extract());
    QCOMPARE(design.messages, QStringList(warning));

    design.set(TE::DesignInfo::Macros, QStringList(QStringLiteral("PIPE")));
    design.set(TE::DesignInfo::Timeout, 1);
    QElapsedTimer timer;
    timer.start();
    design.findModules();
    QVERIFY2(timer.elapsed() < 3000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(design.messages.first(), warning);
    QVERIFY2(design.firstError().startsWith(
                 QLatin1String("ERROR: Reading the sources took longer than 1 seconds")),
             qPrintable(design.firstError()));
}

void TestExtractionFaults::cancelEndsTheSecondReading()
{
    const ToolScript fake("case \"$*\" in *-UVERILATOR*) ;; *-E*) sleep 1000;; esac\n" +
                          ToolScript::elaborate());
    DesignFixture design;
    design.add(QStringLiteral("a.v"),
               "`ifdef VERILATOR\n`endif\nmodule top;\nwire = 1;\nendmodule\n");
    QElapsedTimer sinceCancel;
    {
        DialogWatch watch([&](QProgressDialog *dialog) {
            QCOMPARE(m_folder.processes().isEmpty(), false);
            sinceCancel.start();
            Q_EMIT dialog->canceled();
        });
        design.findModules();
    }
    QVERIFY(sinceCancel.isValid());
    QVERIFY2(sinceCancel.elapsed() < 1000, qPrintable(QString::number(sinceCancel.elapsed())));
    QCOMPARE(design.messages.value(1), QStringLiteral("ERROR: Reading the design was cancelled."));

    design.set(TE::DesignInfo::Timeout, 1);
    design.findModules();
    QVERIFY2(design.messages.value(1).startsWith(
                 QLatin1String("ERROR: Reading the sources took longer than 1 seconds")),
             qPrintable(design.messages.join(QLatin1Char('\n'))));
    QVERIFY2(design.messages.size() == 2, qPrintable(design.messages.join(QLatin1Char('\n'))));
}

void TestExtractionFaults::cancelEndsARunWithoutWhatCannotBeRead_data()
{
    QTest::addColumn<bool>("cancelled");
    QTest::newRow("cancel") << true;
    QTest::newRow("time-out") << false;
}

/// The tool hangs as soon as the assertion has gone.
void TestExtractionFaults::cancelEndsARunWithoutWhatCannotBeRead()
{
    QFETCH(bool, cancelled);
    const ToolScript fake(
        "case \"$1\" in -E) ;; *) grep -q assert text0.sv || sleep 1000;; esac\n" +
        ToolScript::elaborate());
    DesignFixture design;
    design.add(QStringLiteral("a.sv"), "module top(input c, a);\n"
                                       "assert property (@(posedge c) a ##1 a);\nendmodule\n");
    if (!cancelled)
        design.set(TE::DesignInfo::Timeout, 1);
    QElapsedTimer sinceCancel;
    {
        DialogWatch watch([&](QProgressDialog *dialog) {
            if (!cancelled)
                return;
            sinceCancel.start();
            Q_EMIT dialog->canceled();
        });
        design.findModules();
    }
    if (cancelled)
        QVERIFY2(sinceCancel.elapsed() < 1000, qPrintable(QString::number(sinceCancel.elapsed())));
    QCOMPARE(design.messages.size(), 2);
    QVERIFY(design.messages[0].startsWith(QLatin1String("WARNING: left out: ")));
    const QString error = cancelled ? QStringLiteral("ERROR: Reading the design was cancelled.")
                                    : QStringLiteral("ERROR: Elaborating the design took longer "
                                                     "than 1 seconds and was stopped.");
    QVERIFY2(design.messages[1].startsWith(error), qPrintable(design.messages[1]));
}

/// The second call reports messages that the elaborator writes after the first one.
void TestExtractionFaults::lateErrorsGoToTheDebugStream()
{
    const ToolScript fake("case \"$1\" in -E) ;; *) sleep 3;; esac\n" + ToolScript::elaborate());
    DesignFixture design;
    design.add(QStringLiteral("a.v"), "module top;\nwire [a:0] b;\nendmodule\n");
    design.set(TE::DesignInfo::Top, QStringLiteral("x"));
    design.findModules();
    QCOMPARE(design.messages.size(), 1); // The candidates for the top.
    QCOMPARE(design.firstError(), QString());
    QVERIFY(!design.buildNetlist());
    QVERIFY(!design.netMessages.isEmpty());
    QVERIFY2(design.netMessages[0].startsWith(QLatin1String("ERROR: ")),
             qPrintable(design.netMessages[0]));
    QCOMPARE(debugLines(), design.messages + design.netMessages);
}

void TestExtractionFaults::cancelEndsTheToolAtOnce_data()
{
    QTest::addColumn<QByteArray>("tool");
    QTest::addColumn<bool>("inNets");
    QTest::newRow("while elaborating") << ToolScript::elaborate() << false;
    QTest::newRow("in the second call") << ToolScript::elaborate() << true;
    QTest::newRow("while preprocessing") << QByteArray("sleep 1000 & sleep 1000\n") << false;
    QTest::newRow("tool that ignores signals")
        << QByteArray("trap '' TERM INT HUP\nwhile true; do sleep 1000; done\n") << false;
}

void TestExtractionFaults::cancelEndsTheToolAtOnce()
{
    QFETCH(QByteArray, tool);
    QFETCH(bool, inNets);
    DesignFixture design;
    design.add(QStringLiteral("top.v"), Endless);
    const ToolScript fake(tool);
    QElapsedTimer sinceCancel;
    const auto cancel = [&](QProgressDialog *dialog) {
        QVERIFY(!m_folder.processes().isEmpty());
        sinceCancel.start();
        Q_EMIT dialog->canceled();
    };
    if (inNets) {
        design.findModules();
        QCOMPARE(design.messages, QStringList());
        DialogWatch watch(cancel);
        QVERIFY(!design.buildNetlist());
    } else {
        DialogWatch watch(cancel);
        design.findModules();
    }
    QVERIFY(sinceCancel.isValid());
    QVERIFY2(sinceCancel.elapsed() < 1000, qPrintable(QString::number(sinceCancel.elapsed())));
    m_folder.verifyNothingIsLeft();
    QCOMPARE(inNets ? design.netMessages : design.messages,
             QStringList(QStringLiteral("ERROR: Reading the design was cancelled.")));
}

/// Compares with the time of a reading that is not cancelled.
void TestExtractionFaults::cancelEndsTheReader()
{
    const QString phase = QStringLiteral("Building netlist");
    // Slow enough for the dialog to show before this phase.
    const ToolScript fake("sleep 0.3\n" + ToolScript::elaborate());
    DesignFixture design;
    design.add(QStringLiteral("top.v"), "module top; a u[0:15](); endmodule\n"
                                        "module a; b u[0:15](); endmodule\n"
                                        "module b; c u[0:15](); endmodule\n"
                                        "module c; wire [399:0] w; endmodule\n");
    QVERIFY(design.extract());

    QElapsedTimer sinceBegin;
    {
        DialogWatch watch([&](QProgressDialog *) { sinceBegin.start(); }, phase);
        QVERIFY(design.buildNetlist());
    }
    QVERIFY(sinceBegin.isValid());
    const qint64 whole = sinceBegin.nsecsElapsed();
    design.netlist.reset();

    QElapsedTimer sinceCancel;
    const auto cancel = [&](QProgressDialog *dialog) {
        sinceCancel.start();
        Q_EMIT dialog->canceled();
    };
    DialogWatch watch(cancel, phase);
    QVERIFY(!design.buildNetlist());
    QVERIFY(sinceCancel.isValid());
    const qint64 cancelled = sinceCancel.nsecsElapsed();
    QVERIFY2(cancelled < whole / 2,
             qPrintable(QStringLiteral("%1 ns of %2 ns").arg(cancelled).arg(whole)));
    QCOMPARE(design.netMessages,
             QStringList(QStringLiteral("ERROR: Reading the design was cancelled.")));
}

/// The script of a tool with a result that takes hours to read, but little time to write.
QByteArray TestExtractionFaults::toolOfEndlessReading() const
{
    constexpr int Depth = 300000;
    QByteArray xml(
        "<verilator_xml><netlist><module name=\"top\" origName=\"top\" topModule=\"1\">");
    for (int i = 0; i < Depth; ++i)
        xml += "<alias>";
    for (int i = 0; i < Depth; ++i)
        xml += "</alias>";
    xml += "</module><typetable/></netlist></verilator_xml>";
    const QString path = m_folder.path(QStringLiteral("tool-design.xml"));
    TarnTest::writeFile(path, xml);
    return PreprocessTop + "cp '" + path.toLocal8Bit() + "' design.xml\n";
}

void TestExtractionFaults::boundsTheReader()
{
    DesignFixture design;
    design.add(QStringLiteral("top.v"), "module top; endmodule\n");
    design.set(TE::DesignInfo::Timeout, 1);
    const ToolScript fake(toolOfEndlessReading());
    design.findModules();
    QCOMPARE(design.firstError(), QString());
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!design.buildNetlist());
    QVERIFY2(timer.elapsed() < 3000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(design.netMessages,
             QStringList(QStringLiteral(
                 "ERROR: The elaborated design cannot be read: Reading took longer than 1 seconds "
                 "and was stopped. Raise the timeout in the project's options.")));
    QCOMPARE(debugLines(), design.netMessages);

    design.set(TE::DesignInfo::Timeout, 1000);
    design.findModules();
    QElapsedTimer sinceCancel;
    const auto cancel = [&](QProgressDialog *dialog) {
        sinceCancel.start();
        Q_EMIT dialog->canceled();
    };
    DialogWatch watch(cancel, QStringLiteral("Building netlist"));
    QVERIFY(!design.buildNetlist());
    QVERIFY2(sinceCancel.elapsed() < 1000, qPrintable(QString::number(sinceCancel.elapsed())));
    QCOMPARE(design.netMessages,
             QStringList(QStringLiteral("ERROR: Reading the design was cancelled.")));
}

void TestExtractionFaults::endsWithTheApplication_data()
{
    QTest::addColumn<QByteArray>("tool");
    QTest::newRow("while preprocessing") << QByteArray("sleep 1000\n");
    QTest::newRow("while elaborating") << PreprocessTop + "sleep 1000\n";
    QTest::newRow("while reading") << toolOfEndlessReading();
}

/// The end of the application does not wait for a design.
void TestExtractionFaults::endsWithTheApplication()
{
    QFETCH(QByteArray, tool);
    DesignFixture design;
    design.add(QStringLiteral("top.v"), "module top; endmodule\n");
    const ToolScript fake(tool);
    QTimer::singleShot(0, [&] {
        design.findModules();
        if (design.firstError().isEmpty())
            design.buildNetlist();
        design.messages += design.netMessages;
    });
    QElapsedTimer sinceQuit;
    QTimer::singleShot(1000, [&] {
        sinceQuit.start();
        QCoreApplication::quit();
    });
    QCoreApplication::exec();
    QVERIFY2(sinceQuit.elapsed() < 1000, qPrintable(QString::number(sinceQuit.elapsed())));
    QCOMPARE(design.messages,
             QStringList(QStringLiteral("ERROR: Reading the design was cancelled.")));
}

void TestExtractionFaults::showsPhaseAndTime()
{
    DesignFixture design;
    design.add(QStringLiteral("top.v"), Endless);
    design.findModules();
    const QRegularExpression expected(
        QStringLiteral("^Elaborating design\nElapsed time: [1-9] s$"));
    QString title;
    QString label;
    Qt::WindowModality modality = Qt::NonModal;
    DialogWatch watch([&](QProgressDialog *dialog) {
        title = dialog->windowTitle();
        modality = dialog->windowModality();
        (void)QTest::qWaitFor([&] { return expected.match(dialog->labelText()).hasMatch(); });
        label = dialog->labelText();
        dialog->reject(); // As the window's close button does.
    });
    QVERIFY(!design.buildNetlist());
    QCOMPARE(title, QStringLiteral("Reading RTL Netlist"));
    QCOMPARE(modality, Qt::ApplicationModal);
    QVERIFY2(expected.match(label).hasMatch(), qPrintable(label));
}

void TestExtractionFaults::survivesTheDeathOfTheParent()
{
    DesignFixture design;
    design.add(QStringLiteral("top.v"), Endless);
    design.findModules();
    QPointer<QWidget> parent(new QWidget);
    DialogWatch watch([&](QProgressDialog *dialog) {
        QCOMPARE(dialog->parentWidget(), parent.data());
        delete parent;
    });
    RtlNetlist *netlist = nullptr;
    QStringList messages;
    catchRtlNetsWithProgressDialog(&netlist, messages, parent);
    QVERIFY(!parent);
    QVERIFY(!netlist);
    QCOMPARE(messages, QStringList(QStringLiteral("ERROR: Reading the design was cancelled.")));
}

/// A second view reads its design while the first one waits: each gets its own.
void TestExtractionFaults::callsMayNest()
{
    DesignFixture outer;
    outer.add(QStringLiteral("outer.v"), "module outer; endmodule\n");
    DesignFixture inner;
    inner.add(QStringLiteral("inner.v"), "module inner; endmodule\n");
    const ToolScript fake("sleep 1\n" + ToolScript::elaborate());
    int nested = 0;
    const auto nest = [&](QProgressDialog *) {
        ++nested;
        QVERIFY(inner.extract());
        QCOMPARE(inner.netlist->top()->instName(), QStringLiteral("inner"));
    };
    {
        DialogWatch watch(nest);
        outer.findModules();
    }
    QCOMPARE(outer.firstError(), QString());
    QCOMPARE(nested, 1);
    QVERIFY(outer.buildNetlist());
    QCOMPARE(outer.netlist->top()->instName(), QStringLiteral("outer"));
    {
        DialogWatch watch(nest);
        QVERIFY(outer.buildNetlist()); // From the start: the last call has used up the result.
    }
    QCOMPARE(nested, 2);
}

void TestExtractionFaults::reportsAToolThat_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("error");
    const auto row = [](const char *name, const QByteArray &script, const char *error) {
        QTest::newRow(name) << script << QString::fromLatin1(error);
    };
    row("crashes", "kill -SEGV $$\n", "ERROR: Reading the sources failed: the elaborator crashed.");
    row("fails without a reason", "exit 3\n",
        "ERROR: Reading the sources failed: the elaborator gave no reason (exit code 3).");
    row("hangs", "sleep 1000 & sleep 1000\n",
        "ERROR: Reading the sources took longer than 1 seconds and was stopped. Raise the timeout "
        "in the project's options.");
    row("is sent the signal of the limit of files", "kill -XFSZ $$\n",
        "ERROR: Reading the sources needs a file larger than the limit (");
    row("writes without an end", "exec truncate -s 2100000000 stdout\n",
        "ERROR: Reading the sources needs a file larger than the limit (2048000 kB) and was "
        "stopped.");
    row("crashes later", PreprocessTop + "kill -SEGV $$\n",
        "ERROR: Elaborating the design failed: the elaborator crashed.");
    row("fails later", PreprocessTop + "exit 1\n",
        "ERROR: Elaborating the design failed: the elaborator gave no reason (exit code 1).");
    row("hangs later", PreprocessTop + "sleep 1000\n",
        "ERROR: Elaborating the design took longer than 1 seconds and was stopped.");
    row("runs out of memory",
        PreprocessTop +
            "echo \"terminate called after throwing an instance of 'std::bad_alloc'\" >&2\n"
            "kill -ABRT $$\n",
        "ERROR: Elaborating the design needs more than ");
    row("writes nothing", PreprocessTop + "exit 0\n",
        "ERROR: Elaborating the design failed: its result is not complete.");
    row("writes half", PreprocessTop + "echo '<verilator_xml><netlist>' > design.xml\nexit 0\n",
        "ERROR: Elaborating the design failed: its result is not complete.");
    row("writes a pipe", PreprocessTop + "mkfifo design.xml\nexit 0\n",
        "ERROR: Elaborating the design failed: its result is not complete.");
    row("replaces its messages by a pipe", PreprocessTop + "rm stderr\nmkfifo stderr\nexit 1\n",
        "ERROR: Elaborating the design failed: the elaborator gave no reason (exit code 1).");
    row("leaves pipes for the next run",
        "case \"$1\" in -E) mkfifo text0.v stubs.sv; rm stderr; mkfifo stderr;;\n"
        "*) echo '%Error: text0.v:1:2: no' >&2; exit 1;; esac\n" +
            PreprocessTop,
        "ERROR: top.v:1:2: no");
    row("crashes with a full result",
        PreprocessTop + "echo '<verilator_xml></verilator_xml>' > design.xml\nkill -SEGV $$\n",
        "ERROR: Elaborating the design failed: the elaborator crashed.");
    row("fails with a full result",
        PreprocessTop + "echo '<verilator_xml></verilator_xml>' > design.xml\n"
                        "echo '%Error: text0.v:1:2: no' >&2\nexit 1\n",
        "ERROR: top.v:1:2: no");
}

void TestExtractionFaults::reportsAToolThat()
{
    QFETCH(QByteArray, script);
    QFETCH(QString, error);
    DesignFixture design;
    design.add(QStringLiteral("top.v"), "module top; endmodule\n");
    design.set(TE::DesignInfo::Timeout, 1);
    const ToolScript fake(script);
    QElapsedTimer timer;
    timer.start();
    design.findModules();
    QVERIFY2(timer.elapsed() < 3000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY2(design.firstError().startsWith(error),
             qPrintable(design.messages.join(QLatin1Char('\n'))));
    QVERIFY(!design.buildNetlist());
}

/// The debug stream gets the reason, because findModules() has already succeeded.
void TestExtractionFaults::reportsALateTimeout()
{
    DesignFixture design;
    design.add(QStringLiteral("top.v"), "module top; endmodule\n");
    design.set(TE::DesignInfo::Timeout, 3);
    const ToolScript fake(PreprocessTop + "sleep 1000\n");
    design.findModules();
    QCOMPARE(design.messages, QStringList());
    QVERIFY(!design.buildNetlist());
    QCOMPARE(debugLines(),
             QStringList(QStringLiteral("ERROR: Elaborating the design took longer than 3 seconds "
                                        "and was stopped. Raise the timeout in the project's "
                                        "options.")));
}

void TestExtractionFaults::namesATemporaryFolderThatIsNone_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("reason");
    QTest::newRow("file") << "design-file"
                          << "Not a directory";
    QTest::newRow("missing") << "design-none"
                             << "No such file or directory";
    QTest::newRow("below a file") << "design-file/folder"
                                  << "Not a directory";
}

void TestExtractionFaults::namesATemporaryFolderThatIsNone()
{
    QFETCH(QString, folder);
    QFETCH(QString, reason);
    DesignFixture design;
    design.add(QStringLiteral("top.v"), "module top; endmodule\n");
    TarnTest::writeFile(m_folder.path(QStringLiteral("design-file")), "");
    const QString path = m_folder.path(folder);
    qputenv("TMPDIR", path.toLocal8Bit());
    design.findModules();
    m_folder.use();
    QCOMPARE(
        design.messages,
        QStringList(QStringLiteral("ERROR: No temporary folder can be created in %1: %2. Free "
                                   "some space there, or set the environment variable TMPDIR to "
                                   "another folder.")
                        .arg(path, reason)));
}

void TestExtractionFaults::namesAnIncludeFolderThatCannotBeLinked()
{
    const QString path = '/' + QString(5000, 'x');
    DesignFixture design;
    design.add("top.v", "module top; endmodule\n");
    design.set(TE::DesignInfo::IncludePaths, QStringList(path));
    design.findModules();
    QCOMPARE(
        design.firstError(),
        QStringLiteral("ERROR: No link to %1 can be created in the temporary folder in %2: File "
                       "name too long. Set the environment variable TMPDIR to a folder that "
                       "supports links.")
            .arg(path, m_folder.path()));
    QVERIFY(!design.buildNetlist());
}

/// The preprocessor leaves a folder in place of the stubs.
void TestExtractionFaults::saysThatAFileForTheToolCannotBeWritten()
{
    DesignFixture design;
    design.add("top.v", "module top; unknown u(); endmodule\n");
    const ToolScript fake(
        "mkdir stubs.sv\n" +
        QByteArray(PreprocessTop).replace("module top;", "module top; unknown u();"));
    design.findModules();
    QCOMPARE(design.messages,
             QStringList(QStringLiteral("ERROR: A file in the temporary folder in %1 cannot be "
                                        "written: File exists. Set the environment variable TMPDIR "
                                        "to another folder.")
                             .arg(m_folder.path())));
    QVERIFY(!design.buildNetlist());
}

/// Tries disks of many sizes. The tool itself does not notice that its output is cut off.
void TestExtractionFaults::saysThatTheTemporaryFolderIsFull()
{
    if (!TarnTest::SmallDisks::areAllowed())
        QSKIP("Only root can mount a small disk");

    QByteArray source("module top(input [7:0] a, output [7:0] b);\n");
    for (int i = 0; i < 500; ++i)
        source += "(* keep *) wire [7:0] w" + QByteArray::number(i) + " = a;\n";
    DesignFixture design;
    design.add(QStringLiteral("top.v"), source + "assign b = w1;\nendmodule\n");
    QVector<int> sizes;
    for (int kilobytes = 8; kilobytes <= 4096; kilobytes += kilobytes / 3)
        sizes.append(kilobytes);
    TarnTest::SmallDisks disks(m_folder);
    disks.extract(&design, sizes);
    QVERIFY2(disks.full() > 3 && disks.read() > 3,
             qPrintable(QStringLiteral("%1 %2").arg(disks.full()).arg(disks.read())));
}

void TestExtractionFaults::reportsAMissingTool()
{
    DesignFixture design;
    design.add(QStringLiteral("top.v"), "module top; endmodule\n");
    qputenv("TARN_VERILATOR", "/nowhere/verilator_bin");
    design.findModules();
    QCOMPARE(design.messages,
             QStringList(QStringLiteral(
                 "ERROR: The elaborator \"/nowhere/verilator_bin\" named by the environment "
                 "variable TARN_VERILATOR is not a program. Correct or unset the variable.")));
    QVERIFY(!design.buildNetlist());

    // An executable file without a program.
    const QString path = m_folder.path("tool-elf");
    TarnTest::writeFile(path, "\x7f"
                              "ELF");
    QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner);
    qputenv("TARN_VERILATOR", path.toLocal8Bit());
    design.findModules();
    QVERIFY2(design.firstError().startsWith(QLatin1String("ERROR: Reading the sources failed: ")),
             qPrintable(design.messages.join(QLatin1Char('\n'))));
}

void TestExtractionFaults::limitsMemoryAndStackOfTheTool()
{
    constexpr rlim_t Stack = 256 * 1024 * 1024;
    const auto limitOf = [](decltype(RLIMIT_STACK) resource, rlim_t value) {
        rlimit limit;
        getrlimit(resource, &limit);
        return QString::number(qMin(value, limit.rlim_max) / 1024);
    };
    DesignFixture design;
    design.add(QStringLiteral("top.v"), "module top; endmodule\n");
    const ToolScript fake(
        "echo \"%Error: memory $(ulimit -v) kB, stack $(ulimit -s) kB\" >&2\nexit 1\n");
    design.findModules();
    QCOMPARE(design.firstError(),
             QStringLiteral("ERROR: memory %1 kB, stack %2 kB")
                 .arg(limitOf(RLIMIT_AS, rlim_t(Internal::ToolProcess::memoryLimit())),
                      limitOf(RLIMIT_STACK, Stack)));
}

TARN_TEST_MAIN(TestExtractionFaults)
#include "tst_extractionfaults.moc"
