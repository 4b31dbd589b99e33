// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/tool/pipedfiles.h>
#include <netweir/internal/tool/workfolder.h>

#include <support/testcase.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <future>
#include <memory>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace NETWEIR::Internal;

namespace {

const QStringList Names{"a", "b", "c"};
const QVector<QByteArray> Contents{"one", QByteArray(300000, 'x'), "three"};

/// Opens and reads files in an order of its own, as a tool does.
class Reader
{
public:
    Reader(const WorkFolder &folder, const QStringList &names)
        : m_thread(QThread::create([this, &folder, names] {
            for (const QString &name : names)
                read(folder.path(name));
        }))
    {
        m_thread->start();
    }
    ~Reader() { m_thread->wait(); }

    QVector<QByteArray> contents()
    {
        m_thread->wait();
        return m_contents;
    }

private:
    void read(const QString &path)
    {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            m_contents.append(file.readAll());
    }

    QVector<QByteArray> m_contents;
    std::unique_ptr<QThread> m_thread;
};

/// While it exists, no thread can start: there is no memory for a stack.
class NoThreads
{
public:
    NoThreads()
    {
        getrlimit(RLIMIT_AS, &m_limit);
        rlimit little = m_limit;
        little.rlim_cur = usedMemory() + 1024 * 1024;
        setrlimit(RLIMIT_AS, &little);
        const std::shared_future<void> end(m_end.get_future());
        try {
            while (m_threads.size() < MostStacks)
                m_threads.emplace_back([end] { end.wait(); });
        } catch (const std::system_error &) { // The stacks of earlier threads are in use now.
        }
    }
    ~NoThreads()
    {
        setrlimit(RLIMIT_AS, &m_limit);
        m_end.set_value();
        for (std::thread &thread : m_threads)
            thread.join();
    }
    NoThreads(const NoThreads &) = delete;
    NoThreads &operator=(const NoThreads &) = delete;

private:
    static constexpr std::size_t MostStacks = 100;

    static rlim_t usedMemory()
    {
        QFile file(QStringLiteral("/proc/self/statm"));
        if (!file.open(QIODevice::ReadOnly))
            return 0;
        return file.readAll().split(' ').first().toULongLong() * rlim_t(sysconf(_SC_PAGESIZE));
    }

    rlimit m_limit;
    std::promise<void> m_end;
    std::vector<std::thread> m_threads;
};

/// The numbers of all threads but this one.
QVector<pid_t> otherThreads()
{
    QVector<pid_t> result;
    const QDir threads(QStringLiteral("/proc/self/task"));
    for (const QString &name : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (name.toInt() != ::getpid())
            result.append(name.toInt());
    }
    return result;
}

/// True when all threads but this one wait for something.
bool othersSleep()
{
    const QVector<pid_t> threads = otherThreads();
    return std::all_of(threads.begin(), threads.end(), [](pid_t thread) {
        QFile file(QStringLiteral("/proc/self/task/%1/stat").arg(thread));
        const QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        return text.mid(text.lastIndexOf(')')).startsWith(") S");
    });
}

std::atomic<int> signalsMet{0};

/// Lets a signal end the system calls of all other threads. Returns whether they wait again.
bool interruptOthers()
{
    struct sigaction action = {};
    struct sigaction before;
    action.sa_handler = [](int) { ++signalsMet; };
    sigaction(SIGUSR1, &action, &before);
    signalsMet = 0;
    const QVector<pid_t> threads = otherThreads();
    for (const pid_t thread : threads)
        ::syscall(SYS_tgkill, ::getpid(), thread, SIGUSR1);
    const bool isOver =
        QTest::qWaitFor([&threads] { return signalsMet == threads.size() && othersSleep(); });
    sigaction(SIGUSR1, &before, nullptr);
    return isOver;
}

/// Waits until the thread of @p files has the first content and waits for a tool.
bool waitUntilOffered(const WorkFolder &folder, PipedFiles *files)
{
    files->append(Contents.first());
    return QTest::qWaitFor([&folder] {
        const QFileInfo file(folder.path(QStringLiteral("a.complete")));
        return file.size() == Contents.first().size() && othersSleep();
    });
}

/// Waits until somebody opens the pipe for reading. The returned descriptor keeps it open.
int openWaitedFor(const QString &path)
{
    return ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CLOEXEC);
}

} // namespace

class TestPipedFiles : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void giveContentsInOrder_data();
    void giveContentsInOrder();
    void areRegularFilesWhenTheyWereRead();
    void noticeAToolThatIsAhead();
    void needPipes();
    void needThreads_data();
    void needThreads();
    void goOnAfterASignal();
    void letNoToolWaitForAFileThatCannotBeWritten_data();
    void letNoToolWaitForAFileThatCannotBeWritten();
    void endWithoutATool_data();
    void endWithoutATool();
};

void TestPipedFiles::giveContentsInOrder_data()
{
    QTest::addColumn<int>("early");
    QTest::addColumn<QStringList>("order");
    const QStringList inOrder{"a", "b", "c"};
    for (int early = 0; early <= Names.size(); ++early)
        QTest::addRow("%d early", early) << early << inOrder;
    QTest::newRow("each twice") << 1 << QStringList{"a", "a", "b", "b", "c", "c"};
}

/// The tool begins to read at any time before or after the contents are known.
void TestPipedFiles::giveContentsInOrder()
{
    QFETCH(int, early);
    QFETCH(QStringList, order);
    const WorkFolder folder;
    PipedFiles files(folder, Names);
    QVERIFY(files.isGood());
    Reader reader(folder, order);
    for (int i = 0; i < early; ++i)
        files.append(Contents[i]);
    const int begun = files.hold();
    QVERIFY(begun <= early);
    QVERIFY(files.complete(Contents.mid(begun)));
    QVector<QByteArray> expected;
    for (const QString &name : order)
        expected.append(Contents[Names.indexOf(name)]);
    QCOMPARE(reader.contents(), expected);
}

void TestPipedFiles::areRegularFilesWhenTheyWereRead()
{
    const WorkFolder folder;
    PipedFiles files(folder, Names);
    for (const QByteArray &content : Contents)
        files.append(content);
    Reader reader(folder, Names);
    QCOMPARE(reader.contents(), Contents);
    Reader again(folder, {"c", "b", "a"});
    QCOMPARE(again.contents(), QVector<QByteArray>({Contents[2], Contents[1], Contents[0]}));
    for (const QString &name : Names)
        QVERIFY(QFileInfo(folder.path(name)).isFile());
}

void TestPipedFiles::noticeAToolThatIsAhead()
{
    const WorkFolder folder;
    PipedFiles files(folder, Names);
    files.hold();
    Reader reader(folder, {"c"});
    const int pipe = openWaitedFor(folder.path(QStringLiteral("c")));
    QVERIFY(!files.complete(Contents));
    QVERIFY(!files.isGood());
    ::close(pipe);
    QCOMPARE(reader.contents(), QVector<QByteArray>{QByteArray()});
}

void TestPipedFiles::needPipes()
{
    const WorkFolder folder;
    QString error;
    QVERIFY(folder.write(QStringLiteral("b"), "taken", &error));
    QVERIFY(!PipedFiles(folder, Names).isGood());
}

void TestPipedFiles::needThreads_data()
{
    QTest::addColumn<bool>("complete");
    QTest::newRow("from the beginning") << false;
    QTest::newRow("after all are known") << true;
}

void TestPipedFiles::needThreads()
{
#ifdef __SANITIZE_ADDRESS__
    QSKIP("The sanitizer needs memory for itself.");
#endif
    QFETCH(bool, complete);
    const WorkFolder folder;
    std::unique_ptr<PipedFiles> files;
    if (complete) {
        files = std::make_unique<PipedFiles>(folder, Names);
        QVERIFY(waitUntilOffered(folder, files.get()));
        QCOMPARE(files->hold(), 1);
    }
    expectWarning(QStringLiteral("Thread creation error"));
    const NoThreads none;
    if (complete)
        QVERIFY(!files->complete(Contents.mid(1)));
    else
        files = std::make_unique<PipedFiles>(folder, Names);
    QVERIFY(!files->isGood());
}

void TestPipedFiles::goOnAfterASignal()
{
    const WorkFolder folder;
    PipedFiles files(folder, Names);
    QVERIFY(waitUntilOffered(folder, &files));
    QVERIFY(interruptOthers());
    QVERIFY(files.isGood());
    QVERIFY(files.complete(Contents.mid(files.hold())));
    Reader reader(folder, Names);
    QCOMPARE(reader.contents(), Contents);
}

void TestPipedFiles::letNoToolWaitForAFileThatCannotBeWritten_data()
{
    QTest::addColumn<bool>("complete");
    QTest::newRow("while others are not known") << false;
    QTest::newRow("after all are known") << true;
}

/// The tool reads nothing instead, and nobody takes its result.
void TestPipedFiles::letNoToolWaitForAFileThatCannotBeWritten()
{
    QFETCH(bool, complete);
    const WorkFolder folder;
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("a.complete")));
    PipedFiles files(folder, Names);
    if (complete) {
        files.hold();
        files.complete(Contents);
    } else {
        files.append(Contents.first());
    }
    Reader reader(folder, complete ? QStringList{"a", "a", "b", "c"} : QStringList{"a", "a"});
    QVector<QByteArray> expected{QByteArray()}; // The second time there is no file.
    if (complete)
        expected += Contents.mid(1);
    QCOMPARE(reader.contents(), expected);
    QVERIFY(!files.isGood());
}

void TestPipedFiles::endWithoutATool_data()
{
    QTest::addColumn<int>("early");
    QTest::addColumn<bool>("complete");
    QTest::newRow("nothing known") << 0 << false;
    QTest::newRow("one known") << 1 << false;
    QTest::newRow("all known") << 3 << false;
    QTest::newRow("completed from the beginning") << 0 << true;
    QTest::newRow("completed") << 2 << true;
}

/// No thread waits for ever.
void TestPipedFiles::endWithoutATool()
{
    QFETCH(int, early);
    QFETCH(bool, complete);
    const WorkFolder folder;
    PipedFiles files(folder, Names);
    for (int i = 0; i < early; ++i)
        files.append(Contents[i]);
    if (complete)
        QVERIFY(files.complete(Contents.mid(files.hold())));
}

TARN_TEST_MAIN(TestPipedFiles)
#include "tst_pipedfiles.moc"
