// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <model/replacefile.h>
#include <model/safetycopy.h>
#include <support/childprocess.h>
#include <support/files.h>
#include <support/testcase.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <atomic>
#include <csignal>
#include <memory>
#include <new>

#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using TarnTest::becomeOrdinaryUser;
using TarnTest::canMountSmallDisk;
using TarnTest::giveToOrdinaryUser;
using TarnTest::inChild;
using TarnTest::limitFileSize;
using TarnTest::mountSmallDisk;
using TarnTest::OrdinaryUser;
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
    ::stat(encoded(path).constData(), &result);
    return result;
}

QString replaceAndCompare(const QString &path, const QByteArray &content, bool expected)
{
    const QByteArray former = readFile(path);
    QString error;
    if (TARN::replaceFile(path, content, &error) != expected)
        return QStringLiteral("unexpected result, error \"%1\"").arg(error);
    if (readFile(path) != (expected ? content : former))
        return QStringLiteral("unexpected content");
    return expected || !error.isEmpty() ? QString() : QStringLiteral("no reason");
}

} // namespace

class TestReplaceFile : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void newFileIsCreated();
    void existingFileIsReplaced();
    void permissionsStay_data();
    void permissionsStay();
    void permissionsStayThoughTheOwnerDoesNot();
    void newFileHasUsualPermissions();
    void ownerStays();
    void linkStaysAndTargetIsReplaced_data();
    void linkStaysAndTargetIsReplaced();
    void linkWithoutTargetCreatesIt();
    void circleOfLinksIsRefused();
    void otherHardLinkKeepsFormerContent();
    void impossibleTargetsAreRefused_data();
    void impossibleTargetsAreRefused();
    void readOnlyFileIsRefused();
    void lockedFolderRefusesNewFile();
    void fileInLockedFolderIsWrittenInPlace();
    void foreignFileInStickyFolderIsWrittenInPlace();
    void sizeLimitKeepsFormerContent_data();
    void sizeLimitKeepsFormerContent();
    void fullDiskKeepsFormerContent_data();
    void fullDiskKeepsFormerContent();
    void sizeLimitLeavesSignalsAlone_data();
    void sizeLimitLeavesSignalsAlone();
    void killLeavesOneWholeContent();
    void longNamesAreWritten_data();
    void longNamesAreWritten();
    void copyIsKeptForTheTimeOfWritingInPlace();
    void writingInPlaceNeedsNoCopy();
    void unfinishedWriteIsRepeated_data();
    void unfinishedWriteIsRepeated();
    void unfinishedWriteIsFoundThroughALink();
    void unfinishedWriteIsReadWhereNobodyCanWrite();
    void damagedCopyIsIgnored();
    void killInLockedFolderIsMadeUpFor();

private:
    QString path(const QString &name = QStringLiteral("a.tarn")) const
    {
        return m_folder->filePath(name);
    }
    /// Names in the folder of the test, to find what was left behind.
    QStringList names() const
    {
        return QDir(m_folder->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot | QDir::System);
    }

    QStringList copies() const
    {
        return QDir(m_state->filePath(QStringLiteral("tarn"))).entryList(QDir::Files);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QTemporaryDir> m_state;
};

void TestReplaceFile::init()
{
    TestCase::init();
    m_state = std::make_unique<QTemporaryDir>();
    giveToOrdinaryUser(m_state->path());
    qputenv("XDG_STATE_HOME", encoded(m_state->path()));
    m_folder = std::make_unique<QTemporaryDir>();
    giveToOrdinaryUser(m_folder->path());
}

void TestReplaceFile::newFileIsCreated()
{
    QCOMPARE(replaceAndCompare(path(), "content", true), QString());
    QCOMPARE(replaceAndCompare(path(QStringLiteral("empty")), "", true), QString());
    QCOMPARE(names(), (QStringList{QStringLiteral("a.tarn"), QStringLiteral("empty")}));
}

void TestReplaceFile::existingFileIsReplaced()
{
    for (const QByteArray &content : {QByteArray("longer content"), QByteArray("short"),
                                      QByteArray(), QByteArray(3000000, 'x')})
        QCOMPARE(replaceAndCompare(path(), content, true), QString());
    QCOMPARE(names(), QStringList{QStringLiteral("a.tarn")});
}

void TestReplaceFile::permissionsStay_data()
{
    QTest::addColumn<int>("mode");
    for (int mode : {0600, 0640, 0644, 0664, 0666, 0755, 0777, 0444, 0004, 0060, 02664, 01600}) {
        if ((mode & 0200) != 0 || ::geteuid() == 0)
            QTest::newRow(QByteArray::number(mode, 8).constData()) << mode;
    }
}

void TestReplaceFile::permissionsStay()
{
    QFETCH(int, mode);
    writeFile(path(), "former");
    QCOMPARE(::chmod(encoded(path()).constData(), mode_t(mode)), 0);
    QCOMPARE(replaceAndCompare(path(), "new", true), QString());
    QCOMPARE(int(statOf(path()).st_mode & 07777), mode);
}

void TestReplaceFile::permissionsStayThoughTheOwnerDoesNot()
{
    if (::geteuid() != 0)
        QSKIP("only root can make a file of another user");
    writeFile(path(), "former");
    QCOMPARE(::chown(encoded(path()).constData(), 0, OrdinaryUser), 0);
    QCOMPARE(::chmod(encoded(path()).constData(), 04464), 0);
    QCOMPARE(inChild([this] {
                 return becomeOrdinaryUser() ? replaceAndCompare(path(), "new", true)
                                             : QStringLiteral("no other user");
             }),
             QString());
    QCOMPARE(statOf(path()).st_uid, OrdinaryUser);
    QCOMPARE(int(statOf(path()).st_mode & 07777), 0464);
}

void TestReplaceFile::newFileHasUsualPermissions()
{
    const mode_t former = ::umask(027);
    const QString problem = replaceAndCompare(path(), "new", true);
    ::umask(former);
    QCOMPARE(problem, QString());
    QCOMPARE(int(statOf(path()).st_mode & 07777), 0640);
}

void TestReplaceFile::ownerStays()
{
    if (::geteuid() != 0)
        QSKIP("only root can own a file of another user");
    writeFile(path(), "former");
    giveToOrdinaryUser(path());
    for (int mode : {0660, 0444, 0640, 06755}) {
        QCOMPARE(::chmod(encoded(path()).constData(), mode_t(mode)), 0);
        QCOMPARE(replaceAndCompare(path(), "new", true), QString());
        QCOMPARE(statOf(path()).st_uid, OrdinaryUser);
        QCOMPARE(statOf(path()).st_gid, OrdinaryUser);
        QCOMPARE(int(statOf(path()).st_mode & 07777), mode);
    }
}

void TestReplaceFile::linkStaysAndTargetIsReplaced_data()
{
    QTest::addColumn<QStringList>("targets");
    QTest::newRow("absolute") << QStringList{QStringLiteral("/real")};
    QTest::newRow("relative") << QStringList{QStringLiteral("real")};
    QTest::newRow("chain") << QStringList{QStringLiteral("link1"), QStringLiteral("link2"),
                                          QStringLiteral("real")};
    QTest::newRow("into another folder")
        << QStringList{QStringLiteral("sub/link"), QStringLiteral("../real")};
}

void TestReplaceFile::linkStaysAndTargetIsReplaced()
{
    QFETCH(QStringList, targets);
    QDir(m_folder->path()).mkdir(QStringLiteral("sub"));
    writeFile(path(QStringLiteral("real")), "former");
    QStringList links;
    QString link = path();
    for (QString target : qAsConst(targets)) {
        if (QDir::isAbsolutePath(target))
            target = m_folder->path() + target;
        QCOMPARE(::symlink(encoded(target).constData(), encoded(link).constData()), 0);
        links.append(link);
        link = QDir::cleanPath(QFileInfo(link).dir().filePath(target));
    }
    const ino_t former = statOf(path(QStringLiteral("real"))).st_ino;
    QCOMPARE(replaceAndCompare(path(), "new", true), QString());
    QCOMPARE(readFile(path(QStringLiteral("real"))), QByteArray("new"));
    QVERIFY(statOf(path(QStringLiteral("real"))).st_ino != former);
    for (const QString &each : qAsConst(links))
        QVERIFY2(QFileInfo(each).isSymLink(), qPrintable(each));
}

void TestReplaceFile::linkWithoutTargetCreatesIt()
{
    QVERIFY(QFile::link(QStringLiteral("real"), path()));
    QCOMPARE(replaceAndCompare(path(), "new", true), QString());
    QVERIFY(QFileInfo(path()).isSymLink());
    QCOMPARE(readFile(path(QStringLiteral("real"))), QByteArray("new"));
}

void TestReplaceFile::circleOfLinksIsRefused()
{
    QVERIFY(QFile::link(QStringLiteral("b"), path()));
    QVERIFY(QFile::link(QStringLiteral("a.tarn"), path(QStringLiteral("b"))));
    QCOMPARE(replaceAndCompare(path(), "new", false), QString());
    QVERIFY(QFileInfo(path()).isSymLink());
    QVERIFY(QFileInfo(path(QStringLiteral("b"))).isSymLink());
}

void TestReplaceFile::otherHardLinkKeepsFormerContent()
{
    const QString other = path(QStringLiteral("b"));
    writeFile(path(), "former");
    QCOMPARE(::link(encoded(path()).constData(), encoded(other).constData()), 0);
    QCOMPARE(replaceAndCompare(path(), "new", true), QString());
    QCOMPARE(readFile(other), QByteArray("former"));
}

void TestReplaceFile::impossibleTargetsAreRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("folder") << "folder";
    QTest::newRow("folder with a slash") << "folder/";
    QTest::newRow("link to a folder") << "link";
    QTest::newRow("pipe") << "pipe";
    QTest::newRow("missing folder") << "missing/a.tarn";
    QTest::newRow("folder that is a file") << "file/a.tarn";
    QTest::newRow("name too long") << QString(300, QLatin1Char('a'));
}

void TestReplaceFile::impossibleTargetsAreRefused()
{
    QFETCH(QString, name);
    QDir(m_folder->path()).mkdir(QStringLiteral("folder"));
    QVERIFY(QFile::link(QStringLiteral("folder"), path(QStringLiteral("link"))));
    QCOMPARE(::mkfifo(encoded(path(QStringLiteral("pipe"))).constData(), 0600), 0);
    writeFile(path(QStringLiteral("file")), "former");
    const QStringList former = names();
    QString error;
    QVERIFY(!TARN::replaceFile(path(name), "new", &error));
    QVERIFY(!error.isEmpty());
    QCOMPARE(names(), former);
    QVERIFY(!TARN::replaceFile(QString(), "new", &error));
}

void TestReplaceFile::readOnlyFileIsRefused()
{
    writeFile(path(), "former");
    giveToOrdinaryUser(path());
    QCOMPARE(::chmod(encoded(path()).constData(), 0444), 0);
    QCOMPARE(inChild([this] {
                 return becomeOrdinaryUser() ? replaceAndCompare(path(), "new", false)
                                             : QStringLiteral("no other user");
             }),
             QString());
    QCOMPARE(names(), QStringList{QStringLiteral("a.tarn")});
}

void TestReplaceFile::lockedFolderRefusesNewFile()
{
    QCOMPARE(::chmod(encoded(m_folder->path()).constData(), 0555), 0);
    QCOMPARE(inChild([this] {
                 return becomeOrdinaryUser() ? replaceAndCompare(path(), "new", false)
                                             : QStringLiteral("no other user");
             }),
             QString());
    QCOMPARE(::chmod(encoded(m_folder->path()).constData(), 0755), 0);
    QCOMPARE(names(), QStringList());
}

void TestReplaceFile::fileInLockedFolderIsWrittenInPlace()
{
    writeFile(path(), "former");
    giveToOrdinaryUser(path());
    const ino_t former = statOf(path()).st_ino;
    QCOMPARE(::chmod(encoded(m_folder->path()).constData(), 0555), 0);
    const QString problem = inChild([this] {
        if (!becomeOrdinaryUser())
            return QStringLiteral("no other user");
        QString problems;
        for (const QByteArray &content : {QByteArray("much longer content"), QByteArray("short"),
                                          QByteArray(), QByteArray(300000, 'x')})
            problems += replaceAndCompare(path(), content, true);
        return problems;
    });
    QCOMPARE(::chmod(encoded(m_folder->path()).constData(), 0755), 0);
    QCOMPARE(problem, QString());
    QCOMPARE(readFile(path()), QByteArray(300000, 'x'));
    QCOMPARE(statOf(path()).st_ino, former);
}

void TestReplaceFile::foreignFileInStickyFolderIsWrittenInPlace()
{
    if (::geteuid() != 0)
        QSKIP("only root can make a file of another user");
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("a.tarn"));
    writeFile(file, "former");
    QCOMPARE(::chmod(encoded(file).constData(), 0666), 0);
    QCOMPARE(::chmod(encoded(folder.path()).constData(), 01777), 0);
    QCOMPARE(inChild([file] {
                 return becomeOrdinaryUser() ? replaceAndCompare(file, "new", true)
                                             : QStringLiteral("no other user");
             }),
             QString());
    QCOMPARE(statOf(file).st_uid, uid_t(0));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{QStringLiteral("a.tarn")});
}

void TestReplaceFile::sizeLimitKeepsFormerContent_data()
{
    QTest::addColumn<int>("formerSize");
    QTest::addColumn<int>("newSize");
    QTest::addColumn<bool>("locked");
    QTest::newRow("new file") << -1 << 200000 << false;
    QTest::newRow("growing") << 1000 << 200000 << false;
    QTest::newRow("shrinking") << 300000 << 200000 << false;
    QTest::newRow("growing in place") << 1000 << 200000 << true;
    QTest::newRow("shrinking in place") << 300000 << 200000 << true;
}

void TestReplaceFile::sizeLimitKeepsFormerContent()
{
    QFETCH(int, formerSize);
    QFETCH(int, newSize);
    QFETCH(bool, locked);
    if (formerSize >= 0) {
        writeFile(path(), QByteArray(formerSize, 'a'));
        giveToOrdinaryUser(path());
    }
    if (locked)
        QCOMPARE(::chmod(encoded(m_folder->path()).constData(), 0555), 0);
    const QString problem = inChild([this, newSize] {
        limitFileSize(65536);
        return becomeOrdinaryUser() ? replaceAndCompare(path(), QByteArray(newSize, 'b'), false)
                                    : QStringLiteral("no other user");
    });
    QCOMPARE(::chmod(encoded(m_folder->path()).constData(), 0755), 0);
    QCOMPARE(problem, QString());
    QCOMPARE(names().size(), formerSize >= 0 ? 1 : 0);
}

void TestReplaceFile::fullDiskKeepsFormerContent_data()
{
    QTest::addColumn<bool>("locked");
    QTest::newRow("replaced as a whole") << false;
    QTest::newRow("in place") << true;
}

void TestReplaceFile::fullDiskKeepsFormerContent()
{
    QFETCH(bool, locked);
    if (!canMountSmallDisk(m_folder->path()))
        QSKIP("a small disk can not be mounted here; sizeLimitKeepsFormerContent covers the rest");

    QCOMPARE(inChild([this, locked] {
                 mountSmallDisk(m_folder->path(), 256 * 1024);
                 writeFile(path(), QByteArray(100000, 'a'));
                 giveToOrdinaryUser(path());
                 if (locked)
                     ::chmod(encoded(m_folder->path()).constData(), 0555);
                 if (!becomeOrdinaryUser())
                     return QStringLiteral("no other user");
                 QString problems = replaceAndCompare(path(), QByteArray(300000, 'b'), false);
                 if (names() != QStringList{QStringLiteral("a.tarn")})
                     problems += QStringLiteral("left behind: ") + names().join(QLatin1Char(' '));
                 // What fits is still written.
                 return problems + replaceAndCompare(path(), QByteArray(120000, 'c'), true);
             }),
             QString());
}

void TestReplaceFile::sizeLimitLeavesSignalsAlone_data()
{
    QTest::addColumn<bool>("blocked");
    QTest::newRow("of a host that knows of none") << false;
    QTest::newRow("of a host that waits for them by itself") << true;
}

void TestReplaceFile::sizeLimitLeavesSignalsAlone()
{
    QFETCH(bool, blocked);
    QCOMPARE(inChild([this, blocked] {
                 sigset_t set;
                 sigemptyset(&set);
                 sigaddset(&set, SIGXFSZ);
                 if (blocked) {
                     ::pthread_sigmask(SIG_BLOCK, &set, nullptr);
                     ::raise(SIGXFSZ);
                 }
                 limitFileSize(65536);
                 QString problem = replaceAndCompare(path(), QByteArray(200000, 'b'), false);
                 struct sigaction action = {};
                 ::sigaction(SIGXFSZ, nullptr, &action);
                 if (action.sa_handler != SIG_DFL)
                     problem += QStringLiteral("another handler");
                 sigset_t now;
                 ::sigpending(&now);
                 if (bool(sigismember(&now, SIGXFSZ)) != blocked)
                     problem += QStringLiteral("a signal too many or too few waits");
                 ::pthread_sigmask(SIG_BLOCK, nullptr, &now);
                 if (bool(sigismember(&now, SIGXFSZ)) != blocked)
                     problem += QStringLiteral("another mask");
                 return problem;
             }),
             QString());
}

void TestReplaceFile::killLeavesOneWholeContent()
{
    const QByteArray contents[] = {QByteArray(2000000, 'a'), QByteArray(3000000, 'b')};
    writeFile(path(), contents[0]);
    // Set by the child while it writes.
    void *shared = ::mmap(nullptr, sizeof(std::atomic_bool), PROT_READ | PROT_WRITE,
                          MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    QVERIFY(shared != MAP_FAILED);
    auto *writing = new (shared) std::atomic_bool(false);

    QRandomGenerator random(20261);
    int hits = 0;
    for (int round = 0; round < 25; ++round) {
        const pid_t child = ::fork();
        if (child == 0) {
            QString error;
            for (int i = 1;; ++i) {
                *writing = true;
                TARN::replaceFile(path(), contents[i % 2], &error);
                *writing = false;
            }
        }
        QThread::usleep(random.bounded(20000U));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        hits += *writing ? 1 : 0;
        const QByteArray found = readFile(path());
        QVERIFY2(found == contents[0] || found == contents[1], "neither content is whole");
    }
    ::munmap(shared, sizeof(std::atomic_bool));
    QVERIFY2(hits > 0, "no kill came during a write");
}

void TestReplaceFile::longNamesAreWritten_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("fits");
    for (int length : {248, 249, 252, 254, 255, 256}) {
        QTest::addRow("%d letters", length) << QString(length, 'a') << (length <= 255);
        // Of two bytes each, so that a cut in the middle would leave half of one.
        const QString umlauts = QString(length % 2, 'a') + QString(length / 2, QChar(0xe4));
        QTest::addRow("%d bytes of umlauts", length) << umlauts << (length <= 255);
    }
}

void TestReplaceFile::longNamesAreWritten()
{
    QFETCH(QString, name);
    QFETCH(bool, fits);
    QString error;
    for (const QByteArray &content : {QByteArray("first"), QByteArray("second")}) {
        QCOMPARE(TARN::replaceFile(path(name), content, &error), fits);
        QCOMPARE(names(), fits ? QStringList(name) : QStringList());
        QCOMPARE(readFile(path(name)), fits ? content : QByteArray());
    }
}

void TestReplaceFile::copyIsKeptForTheTimeOfWritingInPlace()
{
    writeFile(path(), "former");
    QString error;
    QVERIFY(TARN::keepSafetyCopy(path(), "former", "new", &error));
    QCOMPARE(copies().size(), 1);
    const QString folder = m_state->filePath(QStringLiteral("tarn"));
    QCOMPARE(int(statOf(folder).st_mode & 07777), 0700);
    QCOMPARE(int(statOf(folder + '/' + copies().first()).st_mode & 07777), 0600);
    TARN::dropSafetyCopy(path());
    QCOMPARE(copies(), QStringList());

    giveToOrdinaryUser(path());
    giveToOrdinaryUser(folder);
    QCOMPARE(::chmod(encoded(m_folder->path()).constData(), 0555), 0);
    QCOMPARE(inChild([this] {
                 return becomeOrdinaryUser() ? replaceAndCompare(path(), "newer", true)
                                             : QStringLiteral("no other user");
             }),
             QString());
    QCOMPARE(::chmod(encoded(m_folder->path()).constData(), 0755), 0);
    QCOMPARE(copies(), QStringList());
}

void TestReplaceFile::writingInPlaceNeedsNoCopy()
{
    writeFile(path(), "former");
    giveToOrdinaryUser(path());
    writeFile(m_state->filePath(QStringLiteral("tarn")), "no folder");
    QCOMPARE(::chmod(encoded(m_folder->path()).constData(), 0555), 0);
    QCOMPARE(inChild([this] {
                 return becomeOrdinaryUser() ? replaceAndCompare(path(), "new", true)
                                             : QStringLiteral("no other user");
             }),
             QString());
    QCOMPARE(::chmod(encoded(m_folder->path()).constData(), 0755), 0);
}

void TestReplaceFile::unfinishedWriteIsRepeated_data()
{
    QTest::addColumn<QByteArray>("former");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("found");
    QTest::addColumn<QByteArray>("left");
    const auto space = [](int size) { return QByteArray(size, '\0'); };
    const QByteArray a5 = "aaaaa", b5 = "bbbbb", b9 = "bbbbbbbbb", a9 = "aaaaaaaaa";
    QTest::newRow("amidst") << a5 << b5 << QByteArray("bbbaa") << b5;
    QTest::newRow("in no order") << a5 << b5 << QByteArray("abbab") << b5;
    QTest::newRow("space taken") << a5 << b9 << a5 + space(4) << b9;
    QTest::newRow("growing") << a5 << b9 << QByteArray("bbbbaaaaa").left(5) + space(4) << b9;
    QTest::newRow("growing, behind the former") << a5 << b9 << b5 + "bb" + space(2) << b9;
    QTest::newRow("growing without space") << a5 << b9 << b5 + "bb" << b9;
    QTest::newRow("shrinking") << a9 << b5 << QByteArray("bbbaaaaaa") << b5;
    QTest::newRow("before the end is cut") << a9 << b5 << QByteArray("bbbbbaaaa") << b5;
    QTest::newRow("not begun") << a5 << b5 << a5 << a5;
    QTest::newRow("done") << a5 << b5 << b5 << b5;
    // Another program has written the file since then.
    QTest::newRow("other content") << a5 << b5 << QByteArray("bbxaa") << QByteArray("bbxaa");
    QTest::newRow("shorter content") << a5 << b5 << QByteArray("bba") << QByteArray("bba");
    QTest::newRow("longer content") << a5 << b5 << QByteArray("bbbaaa") << QByteArray("bbbaaa");
    QTest::newRow("null amidst") << a5 << b9 << QByteArray("bb\0aa", 5) << QByteArray("bb\0aa", 5);
}

void TestReplaceFile::unfinishedWriteIsRepeated()
{
    QFETCH(QByteArray, former);
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, found);
    QFETCH(QByteArray, left);
    writeFile(path(), former);
    QString error;
    QVERIFY(TARN::keepSafetyCopy(path(), former, content, &error));
    writeFile(path(), found);
    QByteArray restored;
    QCOMPARE(TARN::restoreFile(path(), &restored), found != left);
    QCOMPARE(readFile(path()), left);
    if (found != left) {
        QCOMPARE(restored, content);
        QCOMPARE(debugLines().last(),
                 "Repeating the last write to " + path() + ", which came to no end");
    }
    if (left == former || left == content)
        QCOMPARE(copies(), QStringList());
    QVERIFY(!TARN::restoreFile(path(), &restored));
}

void TestReplaceFile::unfinishedWriteIsFoundThroughALink()
{
    writeFile(path(), "former");
    QString error;
    QVERIFY(TARN::keepSafetyCopy(path(), "former", "newest", &error));
    writeFile(path(), "newmer");
    const QString link = path(QStringLiteral("link"));
    QVERIFY(QFile::link(QStringLiteral("a.tarn"), link));
    QByteArray restored;
    QVERIFY(TARN::restoreFile(link, &restored));
    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(readFile(path()), QByteArray("newest"));
}

void TestReplaceFile::unfinishedWriteIsReadWhereNobodyCanWrite()
{
    writeFile(path(), "former");
    giveToOrdinaryUser(path());
    QCOMPARE(inChild([this] {
                 QString error;
                 if (!becomeOrdinaryUser())
                     return QStringLiteral("no other user");
                 TARN::keepSafetyCopy(path(), "former", "newest", &error);
                 writeFile(path(), "newmer");
                 ::chmod(encoded(path()).constData(), 0444);
                 ::chmod(encoded(m_folder->path()).constData(), 0555);
                 QByteArray restored;
                 const bool found = TARN::restoreFile(path(), &restored);
                 ::chmod(encoded(m_folder->path()).constData(), 0755);
                 return found && restored == "newest" ? error : QStringLiteral("not found");
             }),
             QString());
    QCOMPARE(readFile(path()), QByteArray("newmer"));
    QCOMPARE(copies().size(), 1);
}

void TestReplaceFile::damagedCopyIsIgnored()
{
    writeFile(path(), "former");
    QString error;
    QVERIFY(TARN::keepSafetyCopy(path(), "former", "newest", &error));
    writeFile(path(), "newmer");
    const QString copy = m_state->filePath(QStringLiteral("tarn/")) + copies().first();
    const QByteArray whole = readFile(copy);
    QByteArray restored;
    for (int i = 0; i < whole.size(); ++i) {
        QByteArray changed = whole;
        changed[i] = char(changed.at(i) ^ 0x41);
        writeFile(copy, i % 2 ? changed : whole.left(i));
        QVERIFY2(!TARN::restoreFile(path(), &restored), QByteArray::number(i).constData());
    }
    QCOMPARE(readFile(path()), QByteArray("newmer"));
    writeFile(copy, whole);
    QVERIFY(TARN::restoreFile(path(), &restored));
}

void TestReplaceFile::killInLockedFolderIsMadeUpFor()
{
    constexpr int MaximumRounds = 12;
    const QByteArray contents[] = {QByteArray(6000000, 'a'), QByteArray(7000000, 'b')};
    writeFile(path(), contents[0]);
    QCOMPARE(::chmod(encoded(m_folder->path()).constData(), 0555), 0);
    int round = 0;
    int damaged = 0;
    for (; round < MaximumRounds && damaged == 0; ++round) {
        giveToOrdinaryUser(path());
        QFile file(path());
        QVERIFY(file.open(QIODevice::ReadOnly));
        const volatile uchar *first = file.map(0, 1);
        const uchar former = *first;
        const pid_t child = ::fork();
        if (child == 0) {
            QString error;
            if (becomeOrdinaryUser())
                TARN::replaceFile(path(), contents[former == 'a' ? 1 : 0], &error);
            ::_exit(0);
        }
        // Comes as soon as the content begins to change.
        int status = 0;
        while (*first == former && ::waitpid(child, &status, WNOHANG) == 0)
            QThread::yieldCurrentThread();
        ::kill(child, SIGKILL);
        ::waitpid(child, &status, 0);
        QByteArray restored;
        damaged += TARN::restoreFile(path(), &restored) ? 1 : 0;
        const QByteArray found = readFile(path());
        QVERIFY2(found == contents[0] || found == contents[1], "neither content is whole");
    }
    QCOMPARE(::chmod(encoded(m_folder->path()).constData(), 0755), 0);
    qInfo("%d of %d kills left a mixture", damaged, round);
}

TARN_TEST_MAIN(TestReplaceFile)
#include "tst_replacefile.moc"
