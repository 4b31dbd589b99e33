// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "toolrun.h"

#include <examples/exampleproject.h>
#include <netweir/temporaryfolder.h>
#include <netweir/toolscript.h>
#include <support/files.h>
#include <support/testcase.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>

#include <fcntl.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace TarnTest;

namespace {

/// A run of the tool that ends by itself or by a signal.
struct Ended
{
    int signal = 0;    ///< 0: it ended by itself.
    int exitCode = -1; ///< Of an end by itself.
};

Ended endOf(pid_t process)
{
    int status = 0;
    QElapsedTimer timer;
    timer.start();
    while (::waitpid(process, &status, WNOHANG) == 0) {
        if (timer.elapsed() > 20000) {
            ::kill(process, SIGKILL);
            ::waitpid(process, &status, 0);
            break;
        }
        QTest::qWait(5);
    }
    if (WIFSIGNALED(status))
        return {WTERMSIG(status), -1};
    return {0, WEXITSTATUS(status)};
}

/// Replaces the calling process, a child, by the tool in @p folder.
[[noreturn]] void becomeTool(const QStringList &arguments, const QString &folder)
{
    for (const char *variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        ::unsetenv(variable);
    std::vector<QByteArray> words = {TARN_TOOL};
    for (const QString &argument : arguments)
        words.push_back(argument.toLocal8Bit());
    std::vector<char *> pointers;
    for (QByteArray &word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    if (::chdir(QFile::encodeName(folder).constData()) == 0)
        ::execv(TARN_TOOL, pointers.data());
    ::_exit(127);
}

} // namespace

class TestInterruption : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void signalEndsAnExtraction_data();
    void signalEndsAnExtraction();
    void signalEndsReadingInput();
    void signalEndsWriting();
    void ignoredSignalStaysIgnored();
    void showsProgressOnATerminal();
    void showsNoProgressInAPipe();
    void clearsProgressBeforeMessages();
    void endsByAClosedPipe();

private:
    pid_t start(const QStringList &arguments, const std::function<void()> &inChild = {});
    QString path(const QString &name) const { return m_folder.path("design-" + name); }
    bool appears(const QString &name) const;

    TemporaryFolder m_folder;
};

void TestInterruption::initTestCase()
{
    writeFile(path("one.v"), "module one(input clk, output q); assign q = clk; endmodule\n");
    writeFile(path("bad.v"), "module bad(input clk; endmodule\n");
    writeFile(path("old.txt"), "as it was\n");
}

pid_t TestInterruption::start(const QStringList &arguments, const std::function<void()> &inChild)
{
    const pid_t process = ::fork();
    if (process == 0) {
        if (inChild)
            inChild();
        becomeTool(arguments, m_folder.path());
    }
    return process;
}

/// Waits for the file, by which a script tells that it runs.
bool TestInterruption::appears(const QString &name) const
{
    return QTest::qWaitFor([this, &name] { return QFile::exists(path(name)); }, 20000);
}

void TestInterruption::signalEndsAnExtraction_data()
{
    QTest::addColumn<int>("signal");
    QTest::addColumn<bool>("toAll");
    QTest::newRow("SIGINT") << SIGINT << false;
    QTest::newRow("SIGINT by the terminal, to the elaborator too") << SIGINT << true;
    QTest::newRow("SIGTERM") << SIGTERM << false;
    QTest::newRow("SIGHUP") << SIGHUP << false;
}

void TestInterruption::signalEndsAnExtraction()
{
    QFETCH(int, signal);
    QFETCH(bool, toAll);
    const ToolScript slow("touch '" + path("runs").toLocal8Bit() + "'\nsleep 100\n");
    QFile::remove(path("runs"));
    const pid_t process =
        start({"nets", "-o", path("old.txt"), path("one.v"), "clk"}, [] { ::setpgid(0, 0); });
    QVERIFY(appears("runs"));
    QVERIFY(!m_folder.processes().isEmpty());
    QCOMPARE(::kill(toAll ? -process : process, signal), 0);
    const Ended ended = endOf(process);
    QCOMPARE(ended.signal, signal);
    m_folder.verifyNothingIsLeft();
    QCOMPARE(readFile(path("old.txt")), QByteArray("as it was\n"));
}

void TestInterruption::signalEndsReadingInput()
{
    int ends[2];
    QCOMPARE(::pipe(ends), 0);
    const QString target = path("new.tarn");
    const pid_t process = start({"write", target}, [&ends] {
        ::dup2(ends[0], STDIN_FILENO);
        ::close(ends[0]);
        ::close(ends[1]);
    });
    ::close(ends[0]);
    QCOMPARE(::write(ends[1], "{", 1), ssize_t(1));
    // It waits for more as soon as this is read.
    QVERIFY(QTest::qWaitFor(
        [&ends] {
            int unread = 0;
            return ::ioctl(ends[1], FIONREAD, &unread) == 0 && unread == 0;
        },
        20000));
    QCOMPARE(::kill(process, SIGTERM), 0);
    QCOMPARE(endOf(process).signal, SIGTERM);
    ::close(ends[1]);
    QVERIFY(!QFile::exists(target));
}

void TestInterruption::signalEndsWriting()
{
    int ends[2];
    QCOMPARE(::pipe(ends), 0);
    // Nobody reads, so that a long output has to wait.
    QByteArray ports;
    for (int i = 0; i < 3000; ++i)
        ports += "wire [63:0] a_rather_long_name_for_a_net_" + QByteArray::number(i) + ";\n";
    writeFile(path("long.v"), "module long(input clk);\n" + ports + "endmodule\n");
    const pid_t process = start({"nets", path("long.v"), ""}, [&ends] {
        ::dup2(ends[1], STDOUT_FILENO);
        ::close(ends[0]);
        ::close(ends[1]);
    });
    ::close(ends[1]);
    QVERIFY(QTest::qWaitFor(
        [&ends] {
            int unread = 0;
            return ::ioctl(ends[0], FIONREAD, &unread) == 0 && unread > 60000;
        },
        20000));
    QCOMPARE(::kill(process, SIGINT), 0);
    QCOMPARE(endOf(process).signal, SIGINT);
    ::close(ends[0]);
}

void TestInterruption::ignoredSignalStaysIgnored()
{
    const ToolScript slow("touch '" + path("runs").toLocal8Bit() + "'\nsleep 0.5\n" +
                          ToolScript::elaborate());
    QFile::remove(path("runs"));
    const pid_t process = start({"nets", "-o", path("result.txt"), path("one.v"), "clk"},
                                [] { std::signal(SIGHUP, SIG_IGN); });
    QVERIFY(appears("runs"));
    QCOMPARE(::kill(process, SIGHUP), 0);
    const Ended ended = endOf(process);
    QCOMPARE(ended.signal, 0);
    QCOMPARE(ended.exitCode, 0);
    QCOMPARE(readFile(path("result.txt")), QByteArray("one/clk\n"));
}

/// Runs the tool with its errors on a terminal of @p columns and returns what is written there.
static QByteArray onTerminal(const QStringList &arguments, const QString &folder, int columns,
                             const char *kind = "xterm")
{
    winsize size = {24, ushort(columns), 0, 0};
    int master = -1;
    const pid_t process = ::forkpty(&master, nullptr, nullptr, &size);
    if (process == 0) {
        ::setenv("TERM", kind, 1);
        ::close(STDOUT_FILENO);
        becomeTool(arguments, folder);
    }
    QByteArray text;
    char piece[4096];
    for (ssize_t count = 0; (count = ::read(master, piece, sizeof piece)) > 0;)
        text.append(piece, int(count));
    ::close(master);
    ::waitpid(process, nullptr, 0);
    return text;
}

void TestInterruption::showsProgressOnATerminal()
{
    const QStringList arguments = {"nets", "-o", path("result.txt"), path("one.v"), "clk"};
    const QByteArray text = onTerminal(arguments, m_folder.path(), 80);
    QVERIFY2(text.startsWith("\rReading the design: "), text.constData());
    QVERIFY2(text.endsWith("\r\x1b[K"), text.constData());
    QVERIFY(!text.contains('\n'));
    const QList<QByteArray> shown = text.split('\r');
    for (const QByteArray &line : shown) {
        QVERIFY2(line.isEmpty() || line.endsWith("\x1b[K"), text.constData());
        QVERIFY2(line.size() < 80 + 3, text.constData());
    }
    QCOMPARE(shown.last(), QByteArray("\x1b[K"));

    const QByteArray narrow = onTerminal(arguments, m_folder.path(), 20);
    QVERIFY2(narrow.startsWith("\rReading the design:\x1b[K"), narrow.constData());
    QCOMPARE(onTerminal(arguments, m_folder.path(), 80, "dumb"), QByteArray());
}

void TestInterruption::clearsProgressBeforeMessages()
{
    const QByteArray text = onTerminal({"nets", path("bad.v"), "clk"}, m_folder.path(), 80);
    QVERIFY2(text.contains("\r\x1b[Ktarn: "), text.constData());
    QVERIFY2(text.endsWith("\r\n"), text.constData());
    QVERIFY2(!text.mid(text.indexOf("tarn: ")).contains("Reading the design"), text.constData());
}

void TestInterruption::showsNoProgressInAPipe()
{
    const ToolRun run = runTool({"nets", path("one.v"), "clk"});
    QCOMPARE(run.errors, QString());
    QCOMPARE(run.output, QByteArray("one/clk\n"));
    QCOMPARE(run.exitCode, 0);
}

void TestInterruption::endsByAClosedPipe()
{
    int ends[2];
    QCOMPARE(::pipe(ends), 0);
    ::close(ends[0]);
    const QString errors = path("errors.txt");
    const pid_t process = start({"show", examplePath("sensorhub", "sensorhub.tarn")}, [&] {
        ::dup2(ends[1], STDOUT_FILENO);
        ::close(ends[1]);
        const int file = ::open(QFile::encodeName(errors).constData(), O_CREAT | O_WRONLY, 0600);
        ::dup2(file, STDERR_FILENO);
    });
    ::close(ends[1]);
    QCOMPARE(endOf(process).signal, SIGPIPE);
    QCOMPARE(readFile(errors), QByteArray());
}

TARN_TEST_MAIN(TestInterruption)
#include "tst_interruption.moc"
