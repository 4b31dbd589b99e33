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

#include <fcntl.h>
#include <memory>
#include <unistd.h>

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
