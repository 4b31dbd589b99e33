// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configsamples.h"

#include <model/configsnapshot.h>
#include <model/configwriter.h>
#include <model/snapshotwriter.h>
#include <model/unsavedfile.h>
#include <support/childprocess.h>
#include <support/files.h>
#include <support/testcase.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegExp>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <csignal>
#include <functional>
#include <memory>
#include <new>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using TARN::Durability;
using TARN::UnsavedFile;
using TarnTest::becomeOrdinaryUser;
using TarnTest::canMountSmallDisk;
using TarnTest::giveToOrdinaryUser;
using TarnTest::inChild;
using TarnTest::limitFileSize;
using TarnTest::mountSmallDisk;
using TarnTest::readFile;
using TarnTest::writeFile;

namespace {

QByteArray encoded(const QString &path)
{
    return QFile::encodeName(path);
}

struct stat statOf(const QString &path)
{
    struct stat result = {};
    ::lstat(encoded(path).constData(), &result);
    return result;
}

QStringList pathsOf(const std::vector<UnsavedFile> &files)
{
    QStringList paths;
    for (const UnsavedFile &file : files)
        paths.append(file.copyPath());
    return paths;
}

/// Writes as after an edit. Returns the error, empty for none.
QString written(UnsavedFile *file, const QByteArray &content,
                Durability durability = Durability::EndOfProcess)
{
    QString error;
    const bool done = file->write(content, durability, &error);
    if (done != error.isEmpty() || done != (readFile(file->copyPath()) == content))
        return QStringLiteral("unexpected result: ") + error;
    return error;
}

QString removed(UnsavedFile *file)
{
    QString error;
    const bool done = file->remove(&error);
    return done == error.isEmpty() ? error : QStringLiteral("unexpected result: ") + error;
}

/// Another program, which does @p work, says so and does the rest, which never ends. It is killed
/// with this object.
class OtherProgram
{
public:
    explicit OtherProgram(const std::function<void()> &work,
                          const std::function<void()> &rest = {});
    ~OtherProgram() { kill(); }
    Q_DISABLE_COPY(OtherProgram)

    void kill()
    {
        if (m_process > 0) {
            ::kill(m_process, SIGKILL);
            ::waitpid(m_process, nullptr, 0);
        }
        m_process = 0;
    }

private:
    pid_t m_process = 0;
};

OtherProgram::OtherProgram(const std::function<void()> &work, const std::function<void()> &rest)
{
    int ends[2] = {};
    if (::pipe(ends) != 0)
        qFatal("no pipe");
    m_process = ::fork();
    if (m_process == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL); // Also when the test crashes.
        work();
        const char done = 0;
        if (::write(ends[1], &done, 1) != 1)
            ::_exit(1);
        if (rest)
            rest();
        for (;;)
            ::pause();
    }
    ::close(ends[1]);
    char done = 0;
    const bool heard = ::read(ends[0], &done, 1) == 1;
    ::close(ends[0]);
    if (!heard)
        qFatal("the other program ended");
}

/// What programs that work at the same time tell the test.
struct Tally
{
    std::atomic_int left{0};  ///< Copies that their programs left behind.
    std::atomic_int taken{0}; ///< Those that others found and removed.
    std::atomic_int damaged{0};
};

/// Edits, ends in order, crashes and finds copies of others in a row that depends on @p seed.
void workBesideOthers(const QString &path, quint32 seed, Tally *tally)
{
    QRandomGenerator random(seed);
    auto file = std::make_unique<UnsavedFile>(path);
    for (int i = 0; i < 300; ++i) {
        const QByteArray content = QByteArray::number(seed) + QByteArray(2000, char('a' + i % 26));
        switch (random.bounded(6)) {
        case 0:
            tally->damaged += removed(file.get()).isEmpty() ? 0 : 1;
            break;
        case 1:
            tally->left += file->copyPath().isEmpty() ? 0 : 1;
            file = std::make_unique<UnsavedFile>(path);
            break;
        case 2:
            for (UnsavedFile &each : UnsavedFile::find(path)) {
                tally->damaged += readFile(each.copyPath()).size() > 2000 ? 0 : 1;
                tally->damaged += removed(&each).isEmpty() ? 0 : 1;
                ++tally->taken;
            }
            break;
        default:
            tally->damaged += written(file.get(), content).isEmpty() ? 0 : 1;
            break;
        }
    }
    tally->left += file->copyPath().isEmpty() ? 0 : 1;
}

} // namespace

class TestUnsavedFile : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void copyIsBesideTheFile();
    void copyIsReplacedAsAWhole();
    void copyIsRemoved();
    void copyStaysWhenTheObjectGoes();
    void copyBelongsToTheFileBehindLinks_data();
    void copyBelongsToTheFileBehindLinks();
    void copyFollowsAChangedLink();
    void copyOfAFileThatBecameALinkIsFound();
    void lockedFolderMovesTheCopyToTheStateFolder();
    void folderThatTakesNoSuchFile_data();
    void folderThatTakesNoSuchFile();
    void copyReturnsToAFolderThatTakesItAgain();
    void fullDiskMovesTheCopy();
    void fullDisksKeepTheFormerCopy();
    void copyInUseIsLeftAlone();
    void copyInUseIsSparedWithoutHandles();
    void allCopiesAreFoundTheNewestFirst();
    void namesThatEverybodyUsesMoveTheCopy();
    void otherThingsOfThatNameAreSpared();
    void copyThatSomebodyTookAwayIsWrittenAnew_data();
    void copyThatSomebodyTookAwayIsWrittenAnew();
    void copyThatTheUserMayNotReadIsFound();
    void copyOfAnotherUserIsNotFound();
    void livingProgramKeepsItsCopy();
    void killLeavesAWholeCopy();
    void programsDoNotDisturbEachOther();
    void slicesGiveTheBytesOfTheFile_data();
    void slicesGiveTheBytesOfTheFile();
    void sliceStopsAtTextThatCanNotBeRead();

private:
    QString path(const QString &name = QStringLiteral("a.tarn")) const
    {
        return m_folder->filePath(name);
    }
    QString copyPath(const QString &ending = QString()) const
    {
        return path(QStringLiteral("a.tarn.unsaved")) + ending;
    }
    QStringList names() const { return namesIn(m_folder->path()); }
    QStringList stateNames() const { return namesIn(m_state->filePath(QStringLiteral("tarn"))); }
    static QStringList namesIn(const QString &folder)
    {
        return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot |
                                      QDir::System);
    }
    /// Runs @p check as a user who may not write into the folder.
    QString inLockedFolder(const std::function<QString()> &check) const;

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QTemporaryDir> m_state;
};

void TestUnsavedFile::init()
{
    TestCase::init();
    m_state = std::make_unique<QTemporaryDir>();
    giveToOrdinaryUser(m_state->path());
    qputenv("XDG_STATE_HOME", encoded(m_state->path()));
    // Temporary folders may be behind links.
    m_folder = std::make_unique<QTemporaryDir>(QFileInfo(QDir::tempPath()).canonicalFilePath() +
                                               QStringLiteral("/unsaved"));
    giveToOrdinaryUser(m_folder->path());
    writeFile(path(), "the file");
}

QString TestUnsavedFile::inLockedFolder(const std::function<QString()> &check) const
{
    ::chmod(encoded(m_folder->path()).constData(), 0555);
    const QString problem = inChild(
        [&check] { return becomeOrdinaryUser() ? check() : QStringLiteral("no other user"); });
    ::chmod(encoded(m_folder->path()).constData(), 0755);
    return problem;
}

void TestUnsavedFile::copyIsBesideTheFile()
{
    UnsavedFile file(path());
    QCOMPARE(file.copyPath(), QString());
    QCOMPARE(written(&file, "edited"), QString());
    QCOMPARE(file.copyPath(), copyPath());
    QCOMPARE(names(), (QStringList{QStringLiteral("a.tarn"), QStringLiteral("a.tarn.unsaved")}));
    QCOMPARE(stateNames(), QStringList());
    QCOMPARE(readFile(path()), QByteArray("the file"));
    // Nobody else may be meant to read the file.
    QCOMPARE(int(statOf(copyPath()).st_mode & 07777), 0600);
    QVERIFY(qAbs(file.time().secsTo(QDateTime::currentDateTime())) < 60);
}

void TestUnsavedFile::copyIsReplacedAsAWhole()
{
    UnsavedFile file(path());
    for (const Durability durability : {Durability::EndOfProcess, Durability::PowerFailure}) {
        QCOMPARE(written(&file, QByteArray(300000, 'a'), durability), QString());
        QFile former(copyPath());
        QVERIFY(former.open(QIODevice::ReadOnly));
        QCOMPARE(written(&file, "short", durability), QString());
        QCOMPARE(former.readAll(), QByteArray(300000, 'a'));
    }
    QCOMPARE(names().size(), 2);
}

void TestUnsavedFile::copyIsRemoved()
{
    UnsavedFile file(path());
    QCOMPARE(removed(&file), QString()); // There is none.
    QCOMPARE(written(&file, "edited"), QString());
    QCOMPARE(removed(&file), QString());
    QCOMPARE(file.copyPath(), QString());
    QCOMPARE(names(), QStringList{QStringLiteral("a.tarn")});
    QVERIFY(UnsavedFile::find(path()).empty());
    QCOMPARE(written(&file, "again"), QString());
    QCOMPARE(file.copyPath(), copyPath());
}

void TestUnsavedFile::copyStaysWhenTheObjectGoes()
{
    {
        UnsavedFile file(path());
        QCOMPARE(written(&file, "edited"), QString());
    }
    QCOMPARE(readFile(copyPath()), QByteArray("edited"));
    UnsavedFile file(path());
    QCOMPARE(written(&file, "others"), QString()); // A copy that was not found is not overwritten.
    QCOMPARE(file.copyPath(), copyPath(QStringLiteral(".2")));
    file.release();
    QCOMPARE(file.copyPath(), QString());
    QCOMPARE(readFile(copyPath(QStringLiteral(".2"))), QByteArray("others"));
    QCOMPARE(UnsavedFile::find(path()).size(), size_t(2));
}

void TestUnsavedFile::copyBelongsToTheFileBehindLinks_data()
{
    QTest::addColumn<QStringList>("links"); // Each leads to the next, the last one to the file.
    QTest::addColumn<QString>("file");
    const QString file = QStringLiteral("a.tarn");
    QTest::newRow("one") << QStringList{QStringLiteral("link")} << file;
    QTest::newRow("chain") << QStringList{QStringLiteral("link"), QStringLiteral("b")} << file;
    QTest::newRow("other folder") << QStringList{QStringLiteral("sub/link")} << file;
    QTest::newRow("folder of links") << QStringList{QStringLiteral("linked/link")} << file;
    QTest::newRow("to a missing file")
        << QStringList{QStringLiteral("link")} << QStringLiteral("missing.tarn");
}

void TestUnsavedFile::copyBelongsToTheFileBehindLinks()
{
    QFETCH(QStringList, links);
    QFETCH(QString, file);
    QDir(m_folder->path()).mkdir(QStringLiteral("sub"));
    QVERIFY(QFile::link(path(QStringLiteral("sub")), path(QStringLiteral("linked"))));
    for (int i = 0; i < links.size(); ++i) {
        const QString target = i + 1 < links.size() ? links.at(i + 1) : file;
        QVERIFY(QFile::link(path(target), path(links.at(i))));
    }
    {
        UnsavedFile copy(path(links.first()));
        QCOMPARE(written(&copy, "edited"), QString());
        QCOMPARE(copy.copyPath(), path(file) + QStringLiteral(".unsaved"));
    }
    for (const QString &name : links + QStringList{file})
        QCOMPARE(pathsOf(UnsavedFile::find(path(name))),
                 QStringList{path(file) + QStringLiteral(".unsaved")});
}

void TestUnsavedFile::copyFollowsAChangedLink()
{
    const QString other = path(QStringLiteral("other.tarn"));
    UnsavedFile file(path());
    QCOMPARE(written(&file, "first"), QString());
    writeFile(other, "the other file");
    QVERIFY(QFile::remove(path()));
    QVERIFY(QFile::link(other, path()));
    QCOMPARE(written(&file, "second"), QString());
    QCOMPARE(file.copyPath(), other + QStringLiteral(".unsaved"));
    QVERIFY(!QFileInfo::exists(copyPath()));
    file.release();
    QCOMPARE(UnsavedFile::find(path()).size(), size_t(1));
}

void TestUnsavedFile::copyOfAFileThatBecameALinkIsFound()
{
    UnsavedFile file(path());
    QCOMPARE(written(&file, "first"), QString());
    file.release();
    QVERIFY(QFile::rename(path(), path(QStringLiteral("other.tarn"))));
    QVERIFY(QFile::link(path(QStringLiteral("other.tarn")), path()));
    QCOMPARE(pathsOf(UnsavedFile::find(path())), QStringList{copyPath()});
}

void TestUnsavedFile::lockedFolderMovesTheCopyToTheStateFolder()
{
    writeFile(path(QStringLiteral("b.tarn")), "its neighbour");
    QVERIFY(QFile::link(path(), path(QStringLiteral("link"))));
    const QString problem = inLockedFolder([this] {
        UnsavedFile file(path());
        const QString first = written(&file, "edited");
        return first + written(&file, "edited again");
    });
    QCOMPARE(problem, QString());
    QCOMPARE(stateNames().size(), 1);
    QVERIFY2(QRegExp(QStringLiteral("[0-9a-f]{64}\\.unsaved")).exactMatch(stateNames().first()),
             qPrintable(stateNames().first()));
    const QString folder = m_state->filePath(QStringLiteral("tarn/"));
    QCOMPARE(int(statOf(folder).st_mode & 07777), 0700);
    QCOMPARE(int(statOf(folder + stateNames().first()).st_mode & 07777), 0600);
    for (const QString &name : {QStringLiteral("a.tarn"), QStringLiteral("link")}) {
        QCOMPARE(pathsOf(UnsavedFile::find(path(name))),
                 QStringList{folder + stateNames().first()});
    }
    QVERIFY(UnsavedFile::find(path(QStringLiteral("b.tarn"))).empty());

    std::vector<UnsavedFile> found = UnsavedFile::find(path());
    QCOMPARE(readFile(found.front().copyPath()), QByteArray("edited again"));
    QCOMPARE(removed(&found.front()), QString());
    QCOMPARE(stateNames(), QStringList());
}

void TestUnsavedFile::folderThatTakesNoSuchFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("missing") << "missing/a.tarn";
    QTest::newRow("a file") << "a.tarn/a.tarn";
    for (int length : {247, 248, 255})
        QTest::addRow("name of %d letters", length) << QString(length, 'a');
}

void TestUnsavedFile::folderThatTakesNoSuchFile()
{
    QFETCH(QString, name);
    UnsavedFile file(path(name));
    QCOMPARE(written(&file, "edited"), QString());
    const bool fits = name.size() <= 247;
    QCOMPARE(stateNames().size(), fits && name.size() > 20 ? 0 : 1);
    file.release();
    QCOMPARE(UnsavedFile::find(path(name)).size(), size_t(1));
}

void TestUnsavedFile::copyReturnsToAFolderThatTakesItAgain()
{
    QVERIFY(QFile::rename(m_folder->path(), m_folder->path() + QStringLiteral(".away")));
    UnsavedFile file(path());
    QCOMPARE(written(&file, "away"), QString());
    QCOMPARE(stateNames().size(), 1);
    QVERIFY(QFile::rename(m_folder->path() + QStringLiteral(".away"), m_folder->path()));
    QCOMPARE(written(&file, "back"), QString());
    QCOMPARE(file.copyPath(), copyPath());
    QCOMPARE(stateNames(), QStringList());
}

void TestUnsavedFile::fullDiskMovesTheCopy()
{
    if (!canMountSmallDisk(m_folder->path()))
        QSKIP("a small disk can not be mounted here; fullDisksKeepTheFormerCopy covers the rest");
    QCOMPARE(inChild([this] {
                 mountSmallDisk(m_folder->path(), 256 * 1024);
                 UnsavedFile file(path());
                 QString problems = written(&file, "small");
                 problems += written(&file, QByteArray(300000, 'b'));
                 if (!names().isEmpty() || stateNames().size() != 1)
                     problems += QStringLiteral("not moved");
                 return problems;
             }),
             QString());
}

void TestUnsavedFile::fullDisksKeepTheFormerCopy()
{
    QCOMPARE(inChild([this] {
                 limitFileSize(65536);
                 UnsavedFile file(path());
                 const QString problem = written(&file, "former");
                 QString error;
                 if (file.write(QByteArray(200000, 'b'), Durability::EndOfProcess, &error))
                     return QStringLiteral("no error");
                 if (!error.contains(copyPath()) || !error.contains(m_state->path()))
                     return QStringLiteral("not both places: ") + error;
                 if (readFile(file.copyPath()) != "former" || file.copyPath() != copyPath())
                     return QStringLiteral("the former copy is lost");
                 return problem + written(&file, "newer");
             }),
             QString());
    QCOMPARE(names().size(), 2);
    QCOMPARE(stateNames(), QStringList());
}

void TestUnsavedFile::copyInUseIsLeftAlone()
{
    UnsavedFile first(path());
    UnsavedFile second(path());
    QCOMPARE(written(&first, "first"), QString());
    QVERIFY(UnsavedFile::find(path()).empty());
    QCOMPARE(written(&second, "second"), QString());
    QCOMPARE(second.copyPath(), copyPath(QStringLiteral(".2")));
    QCOMPARE(written(&first, "first again"), QString());
    QVERIFY(UnsavedFile::find(path()).empty());
    QCOMPARE(removed(&second), QString());
    QCOMPARE(readFile(copyPath()), QByteArray("first again"));

    // A copy that was found is in use as well.
    first.release();
    const std::vector<UnsavedFile> found = UnsavedFile::find(path());
    QCOMPARE(found.size(), size_t(1));
    QVERIFY(UnsavedFile::find(path()).empty());
    QCOMPARE(written(&second, "second"), QString());
    QCOMPARE(second.copyPath(), copyPath(QStringLiteral(".2")));
}

void TestUnsavedFile::copyInUseIsSparedWithoutHandles()
{
    UnsavedFile own(path());
    QCOMPARE(written(&own, "own"), QString());
    QCOMPARE(inChild([this] {
                 const int next = ::dup(STDERR_FILENO);
                 ::close(next);
                 const rlimit none = {rlim_t(next), rlim_t(next)};
                 ::setrlimit(RLIMIT_NOFILE, &none);
                 return pathsOf(UnsavedFile::find(path())).join(' ');
             }),
             QString());
}

void TestUnsavedFile::allCopiesAreFoundTheNewestFirst()
{
    QStringList expected;
    {
        std::vector<UnsavedFile> files;
        for (int i = 0; i < 4; ++i) {
            files.emplace_back(path());
            QCOMPARE(written(&files.back(), QByteArray::number(i)), QString());
            const timespec times[] = {{1000 + i, 0}, {1000 + i, 0}};
            ::utimensat(AT_FDCWD, encoded(files.back().copyPath()).constData(), times, 0);
            expected.prepend(files.back().copyPath());
        }
        QCOMPARE(removed(&files.at(1)), QString()); // A gap.
    }
    expected.removeAt(2);
    QCOMPARE(pathsOf(UnsavedFile::find(path())), expected);
}

void TestUnsavedFile::namesThatEverybodyUsesMoveTheCopy()
{
    std::vector<UnsavedFile> files;
    for (int i = 0; i < 32; ++i) {
        files.emplace_back(path());
        QCOMPARE(written(&files.back(), QByteArray::number(i)), QString());
    }
    QCOMPARE(names().size(), 17);
    QCOMPARE(stateNames().size(), 16);
    UnsavedFile oneMore(path());
    QString error;
    QVERIFY(!oneMore.write("more", Durability::EndOfProcess, &error));
    QVERIFY(!error.isEmpty());
    QCOMPARE(names().size(), 17);
    QCOMPARE(stateNames().size(), 16);
    for (size_t i = 0; i < files.size(); ++i)
        QCOMPARE(readFile(files.at(i).copyPath()), QByteArray::number(int(i)));
    files.clear();
    QCOMPARE(UnsavedFile::find(path()).size(), size_t(32));
}

void TestUnsavedFile::otherThingsOfThatNameAreSpared()
{
    QDir(m_folder->path()).mkdir(copyPath());
    QCOMPARE(::mkfifo(encoded(copyPath(QStringLiteral(".2"))).constData(), 0600), 0);
    QVERIFY(QFile::link(path(), copyPath(QStringLiteral(".3"))));
    QVERIFY(QFile::link(QStringLiteral("nowhere"), copyPath(QStringLiteral(".4"))));
    const QStringList former = names();
    QVERIFY(UnsavedFile::find(path()).empty());
    UnsavedFile file(path());
    QCOMPARE(written(&file, "edited"), QString());
    QCOMPARE(file.copyPath(), copyPath(QStringLiteral(".5")));
    QCOMPARE(removed(&file), QString());
    QCOMPARE(names(), former);
    QCOMPARE(readFile(path()), QByteArray("the file"));
}

void TestUnsavedFile::copyThatSomebodyTookAwayIsWrittenAnew_data()
{
    QTest::addColumn<bool>("replaced");
    QTest::newRow("removed") << false;
    QTest::newRow("replaced") << true;
}

void TestUnsavedFile::copyThatSomebodyTookAwayIsWrittenAnew()
{
    QFETCH(bool, replaced);
    UnsavedFile file(path());
    QCOMPARE(written(&file, "edited"), QString());
    QVERIFY(QFile::remove(copyPath()));
    if (replaced)
        writeFile(copyPath(), "of somebody");
    QCOMPARE(written(&file, "edited again"), QString());
    QCOMPARE(file.copyPath(), copyPath(replaced ? QStringLiteral(".2") : QString()));
    if (replaced)
        QCOMPARE(readFile(copyPath()), QByteArray("of somebody"));

    QVERIFY(QFile::remove(file.copyPath()));
    if (replaced)
        writeFile(copyPath(QStringLiteral(".2")), "of somebody");
    QCOMPARE(removed(&file), QString());
    QCOMPARE(names().size(), replaced ? 3 : 1);
}

void TestUnsavedFile::copyThatTheUserMayNotReadIsFound()
{
    QCOMPARE(inChild([this] {
                 if (!becomeOrdinaryUser())
                     return QStringLiteral("no other user");
                 UnsavedFile file(path());
                 QString problem = written(&file, "edited");
                 file.release();
                 ::chmod(encoded(copyPath()).constData(), 0);
                 std::vector<UnsavedFile> found = UnsavedFile::find(path());
                 if (pathsOf(found) != QStringList{copyPath()})
                     return problem + QStringLiteral("not found");
                 return problem + removed(&found.front());
             }),
             QString());
    QVERIFY2(QFileInfo::exists(copyPath()), "a copy that nobody has read was removed");
}

void TestUnsavedFile::copyOfAnotherUserIsNotFound()
{
    if (::geteuid() != 0)
        QSKIP("only root can make a file of another user");
    writeFile(copyPath(), "of root");
    ::chmod(encoded(copyPath()).constData(), 0600);
    QCOMPARE(inChild([this] {
                 if (!becomeOrdinaryUser())
                     return QStringLiteral("no other user");
                 if (!UnsavedFile::find(path()).empty())
                     return QStringLiteral("found");
                 UnsavedFile file(path());
                 return written(&file, "edited");
             }),
             QString());
    QCOMPARE(readFile(copyPath()), QByteArray("of root"));
    QCOMPARE(readFile(copyPath(QStringLiteral(".2"))), QByteArray("edited"));
}

void TestUnsavedFile::livingProgramKeepsItsCopy()
{
    OtherProgram other([this] {
        auto *file = new UnsavedFile(path());
        written(file, "of the other");
    });
    QCOMPARE(readFile(copyPath()), QByteArray("of the other"));
    QVERIFY(UnsavedFile::find(path()).empty());
    UnsavedFile own(path());
    QCOMPARE(written(&own, "own"), QString());
    QCOMPARE(own.copyPath(), copyPath(QStringLiteral(".2")));
    QCOMPARE(removed(&own), QString());
    QCOMPARE(readFile(copyPath()), QByteArray("of the other"));
    other.kill();
    QCOMPARE(pathsOf(UnsavedFile::find(path())), QStringList{copyPath()});
    QCOMPARE(readFile(copyPath()), QByteArray("of the other"));
}

void TestUnsavedFile::killLeavesAWholeCopy()
{
    const QByteArray contents[] = {QByteArray(200000, 'a'), QByteArray(300000, 'b')};
    QRandomGenerator random(20262);
    for (int round = 0; round < 25; ++round) {
        UnsavedFile file(path());
        OtherProgram other([&] { written(&file, contents[0]); },
                           [&] {
                               for (int i = 1;; ++i)
                                   written(&file, contents[i % 2]);
                           });
        const int looks = random.bounded(40);
        for (int i = 0; i < looks; ++i)
            QVERIFY2(UnsavedFile::find(path()).empty(), "a copy in use was found");
        other.kill();
        std::vector<UnsavedFile> found = UnsavedFile::find(path());
        QCOMPARE(pathsOf(found), QStringList{copyPath()});
        const QByteArray content = readFile(copyPath());
        QVERIFY2(content == contents[0] || content == contents[1], "the copy is not whole");
        QCOMPARE(removed(&found.front()), QString());
    }
}

void TestUnsavedFile::programsDoNotDisturbEachOther()
{
    void *shared =
        ::mmap(nullptr, sizeof(Tally), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    QVERIFY(shared != MAP_FAILED);
    auto *tally = new (shared) Tally;
    constexpr int Programs = 4;
    for (quint32 seed = 1; seed <= Programs; ++seed) {
        if (::fork() == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            workBesideOthers(path(), seed, tally);
            ::_exit(0);
        }
    }
    int status = 0;
    for (int i = 0; i < Programs; ++i) {
        ::wait(&status);
        QCOMPARE(status, 0);
    }
    QCOMPARE(int(tally->damaged), 0);
    QVERIFY2(tally->taken > 0, "no program has met a copy of another one");
    QCOMPARE(int(UnsavedFile::find(path()).size()), tally->left - tally->taken);
    ::munmap(shared, sizeof(Tally));
}

void TestUnsavedFile::slicesGiveTheBytesOfTheFile_data()
{
    QTest::addColumn<int>("budget");
    QTest::newRow("piece by piece") << 0;
    QTest::newRow("all at once") << 1000000000;
}

void TestUnsavedFile::slicesGiveTheBytesOfTheFile()
{
    QFETCH(int, budget);
    Cores cores = sampleCores();
    TARN::SnapshotWriter empty({});
    while (!empty.step(std::chrono::microseconds(budget))) {
    }
    QCOMPARE(empty.content(), TARN::ConfigWriter({}).content());

    TARN::SnapshotWriter writer(TARN::snapshotOf(cores.list));
    int steps = 1;
    while (!writer.step(std::chrono::microseconds(budget)))
        ++steps;
    int pieces = 1;
    for (const TARN::TarnCore *core : qAsConst(cores.list))
        pieces += 2 + core->probeIns.size() + core->probeOuts.size();
    QCOMPARE(steps, budget == 0 ? pieces : 1);
    QCOMPARE(writer.content(), TARN::ConfigWriter(cores.list).content());
    QVERIFY(writer.step(std::chrono::microseconds(0)));
    QCOMPARE(writer.errorText(), QString());
}

void TestUnsavedFile::sliceStopsAtTextThatCanNotBeRead()
{
    Cores cores = sampleCores();
    cores.list.first()->getProbeIn(0)->signals.first().name = QString(QChar(1));
    TARN::SnapshotWriter writer(TARN::snapshotOf(cores.list));
    writer.finish();
    QVERIFY(writer.content().isNull());
    QVERIFY(!writer.errorText().isEmpty());
    QVERIFY(writer.step(std::chrono::microseconds(0)));
}

TARN_TEST_MAIN(TestUnsavedFile)
#include "tst_unsavedfile.moc"
