// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <files/regularfile.h>

#include <support/files.h>
#include <support/testcase.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <atomic>
#include <cstdio>
#include <memory>
#include <stdexcept>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using Files::Access;

namespace {

constexpr qint64 Ample = 1024 * 1024 * 1024;

void makePipe(const QString &path)
{
    ::mkfifo(QFile::encodeName(path).constData(), 0600);
}

void makeSocket(const QString &path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, QFile::encodeName(path).constData(), sizeof(address.sun_path));
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ::bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof(address));
    ::close(socket);
}

} // namespace

Q_DECLARE_METATYPE(Files::Access)

class TestRegularFile : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void readsFilesOfAnySize_data();
    void readsFilesOfAnySize();
    void readsPieceByPiece();
    void readsFilesWithoutASize();
    void followsLinks();
    void keepsTheLimit();
    void refusesAtOnce_data();
    void refusesAtOnce();
    void neverWaitsForWhatTakesThePlaceOfAFile();

private:
    QString path(const char *name) const { return m_folder.filePath(QLatin1String(name)); }

    QTemporaryDir m_folder;
};

void TestRegularFile::readsFilesOfAnySize_data()
{
    QTest::addColumn<int>("size");
    constexpr int Piece = 1024 * 1024;
    for (const int size : {0, 1, 100, Piece - 1, Piece, Piece + 1, 3 * Piece + 5})
        QTest::newRow(qPrintable(QString::number(size))) << size;
}

void TestRegularFile::readsFilesOfAnySize()
{
    QFETCH(int, size);
    QByteArray expected(size, '\0');
    for (int i = 0; i < size; ++i)
        expected[i] = char(i * 31 / 7);
    TarnTest::writeFile(path("file"), expected);
    QByteArray content("former");
    QString error;
    QCOMPARE(Files::readRegularFile(path("file"), Ample, &content, &error), Access::Granted);
    QVERIFY(content == expected);
    // Many files are held at a time: nothing of what was allowed, or of the pieces, stays taken.
    QVERIFY2(content.capacity() <= size + 100, qPrintable(QString::number(content.capacity())));

    QFile file;
    QCOMPARE(Files::openRegularFile(path("file"), &file, &error), Access::Granted);
    QVERIFY(file.readAll() == expected);
    QCOMPARE(error, QString());
}

/// Who waits for a large file can give it up.
void TestRegularFile::readsPieceByPiece()
{
    constexpr qint64 Megabyte = 1024 * 1024;
    QFile file(path("large"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(5 * Megabyte));
    int pieces = 0;
    QByteArray content;
    QString error;
    const auto count = [&pieces] { ++pieces; };
    QCOMPARE(Files::readRegularFile(path("large"), Ample, &content, &error, count),
             Access::Granted);
    QVERIFY2(pieces >= 5, qPrintable(QString::number(pieces)));

    pieces = 0;
    content.clear();
    const auto giveUp = [&pieces] {
        if (++pieces == 3)
            throw std::runtime_error("enough");
    };
    QVERIFY_EXCEPTION_THROWN(Files::readRegularFile(path("large"), Ample, &content, &error, giveUp),
                             std::runtime_error);
    QCOMPARE(pieces, 3);
    QVERIFY(content.isEmpty());
}

/// Many files of the system say that they are empty, and are not.
void TestRegularFile::readsFilesWithoutASize()
{
    QByteArray content;
    QString error;
    const QString path = QStringLiteral("/proc/self/status");
    QCOMPARE(QFileInfo(path).size(), 0);
    QCOMPARE(Files::readRegularFile(path, Ample, &content, &error), Access::Granted);
    QVERIFY(content.startsWith("Name:\ttst_files_"));
    QVERIFY(content.endsWith('\n'));
    QCOMPARE(Files::readRegularFile(path, 100, &content, &error), Access::TooLarge);
}

void TestRegularFile::followsLinks()
{
    TarnTest::writeFile(path("target"), "text");
    QVERIFY(QFile::link(path("target"), path("link")));
    QByteArray content;
    QString error;
    QCOMPARE(Files::readRegularFile(path("link"), Ample, &content, &error), Access::Granted);
    QCOMPARE(content, QByteArray("text"));
}

void TestRegularFile::keepsTheLimit()
{
    QByteArray content;
    QString error;
    TarnTest::writeFile(path("four"), "text");
    QCOMPARE(Files::readRegularFile(path("four"), 4, &content, &error), Access::Granted);
    QCOMPARE(content, QByteArray("text"));
    QCOMPARE(Files::readRegularFile(path("four"), 3, &content, &error), Access::TooLarge);
    QCOMPARE(content, QByteArray());
    QFile vast(path("vast"));
    QVERIFY(vast.open(QIODevice::WriteOnly) && vast.resize(qint64(1) << 40));
    QCOMPARE(Files::readRegularFile(path("vast"), Ample, &content, &error), Access::TooLarge);
}

void TestRegularFile::refusesAtOnce_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<Access>("access");
    QTest::addColumn<QString>("error");
    QTest::newRow("pipe") << "pipe" << Access::Special << "";
    QTest::newRow("link to a pipe") << "pipelink" << Access::Special << "";
    QTest::newRow("socket") << "socket" << Access::Special << "";
    QTest::newRow("endless device") << "/dev/zero" << Access::Special << "";
    QTest::newRow("terminal") << "/dev/tty" << Access::Special << "";
    QTest::newRow("folder") << "." << Access::Folder << "";
    QTest::newRow("missing") << "none" << Access::Failed << "No such file or directory";
    QTest::newRow("no name") << "" << Access::Failed << "No such file or directory";
    QTest::newRow("below a file") << "file/x" << Access::Failed << "Not a directory";
    QTest::newRow("link to itself")
        << "loop" << Access::Failed << "Too many levels of symbolic links";
    if (::geteuid() != 0) // Who may read everything.
        QTest::newRow("forbidden") << "locked" << Access::Failed << "Permission denied";
}

void TestRegularFile::refusesAtOnce()
{
    QFETCH(QString, name);
    QFETCH(Access, access);
    QFETCH(QString, error);
    makePipe(path("pipe"));
    makeSocket(path("socket"));
    QFile::link(path("pipe"), path("pipelink"));
    QFile::link(path("loop"), path("loop"));
    TarnTest::writeFile(path("file"), "text");
    TarnTest::writeFile(path("locked"), "text");
    QFile::setPermissions(path("locked"), QFile::WriteOwner);

    const QString target = name.isEmpty() ? name : QDir(m_folder.path()).filePath(name);
    QByteArray content("former");
    QString reason;
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(Files::readRegularFile(target, Ample, &content, &reason), access);
    QCOMPARE(content, QByteArray());
    QCOMPARE(reason, error);
    QFile file;
    QCOMPARE(Files::openRegularFile(target, &file, &reason), access);
    QVERIFY(!file.isOpen());
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
}

/// A pipe without a writer takes the file's name again and again, at any moment of the reading.
void TestRegularFile::neverWaitsForWhatTakesThePlaceOfAFile()
{
    const QByteArray target = QFile::encodeName(path("changing"));
    const QByteArray regular = QFile::encodeName(path("regular"));
    const QByteArray pipe = QFile::encodeName(path("spare"));
    std::atomic<bool> ended{false};
    const std::unique_ptr<QThread> changer(QThread::create([&] {
        while (!ended) {
            TarnTest::writeFile(QFile::decodeName(regular), "text");
            std::rename(regular.constData(), target.constData());
            ::mkfifo(pipe.constData(), 0600);
            std::rename(pipe.constData(), target.constData());
        }
    }));
    TarnTest::writeFile(QFile::decodeName(target), "text");
    changer->start();
    int granted = 0;
    int refused = 0;
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 1000) {
        QByteArray content;
        QString error;
        const Access access =
            Files::readRegularFile(QFile::decodeName(target), Ample, &content, &error);
        QVERIFY2(access == Access::Granted || access == Access::Special, qPrintable(error));
        QCOMPARE(content, access == Access::Granted ? QByteArray("text") : QByteArray());
        ++(access == Access::Granted ? granted : refused);
    }
    ended = true;
    changer->wait();
    QVERIFY2(granted > 0 && refused > 0,
             qPrintable(QStringLiteral("%1 granted, %2 refused").arg(granted).arg(refused)));
}

TARN_TEST_MAIN(TestRegularFile)
#include "tst_regularfile.moc"
