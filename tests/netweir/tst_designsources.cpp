// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/sources/designsources.h>

#include <support/files.h>
#include <support/processortime.h>
#include <support/testcase.h>

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using namespace NETWEIR::Internal;

class TestDesignSources : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void checksInLinearTime_data();
    void checksInLinearTime();
    void followsIncludes_data();
    void followsIncludes();
    void findsFilesInLibraryFolders();

private:
    QStringList check(const QByteArray &text);

    QTemporaryDir m_folder;
};

QStringList TestDesignSources::check(const QByteArray &text)
{
    DesignSources sources;
    SourceFile file;
    file.path = m_folder.filePath(QStringLiteral("a.v"));
    TarnTest::writeFile(file.path, text);
    sources.files.append(file);
    return checkSources(sources);
}

void TestDesignSources::checksInLinearTime_data()
{
    QTest::addColumn<QByteArray>("piece");
    QTest::newRow("lines") << QByteArray("wire a;\n");
    QTest::newRow("open brackets") << QByteArray("`include <\n");
    QTest::newRow("open quotes") << QByteArray("`include \"\n");
    QTest::newRow("open brackets in a line") << QByteArray("`include <");
    QTest::newRow("directives only") << QByteArray("`include");
}

void TestDesignSources::checksInLinearTime()
{
    QFETCH(QByteArray, piece);
    const auto nanoseconds = [&](int size) {
        const QByteArray text = piece.repeated(size / piece.size());
        qint64 best = std::numeric_limits<qint64>::max();
        for (int run = 0; run < 3; ++run) {
            const qint64 begun = TarnTest::processorNanoseconds();
            check(text);
            best = qMin(best, TarnTest::processorNanoseconds() - begun);
        }
        return best;
    };
    // Sixteen times the text: quadratic time would be 256-fold.
    const qint64 small = nanoseconds(50000);
    const qint64 large = nanoseconds(800000);
    QVERIFY2(large < small * 80 + 2000000,
             qPrintable(QStringLiteral("%1 ns and %2 ns").arg(small).arg(large)));
}

void TestDesignSources::followsIncludes_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("found");
    QTest::newRow("quotes") << QByteArray("`include \"bad.vh\"\n") << true;
    QTest::newRow("brackets") << QByteArray("`include <bad.vh>\n") << true;
    QTest::newRow("at the end of the text") << QByteArray("`include \t\"bad.vh\"") << true;
    QTest::newRow("behind one without end") << QByteArray("`include <\n`include <bad.vh>") << true;
    QTest::newRow("two in a line") << QByteArray("`include \"a\" `include \"bad.vh\"") << true;
    QTest::newRow("no end") << QByteArray("`include \"bad.vh") << false;
    QTest::newRow("end in the next line") << QByteArray("`include \"bad.vh\n\"") << false;
    QTest::newRow("other end") << QByteArray("`include <bad.vh\"") << false;
}

void TestDesignSources::followsIncludes()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, found);
    TarnTest::writeFile(m_folder.filePath(QStringLiteral("bad.vh")), QByteArray("\0", 1));
    QCOMPARE(check(text).size(), found ? 1 : 0);
}

void TestDesignSources::findsFilesInLibraryFolders()
{
    for (const char *name : {"one/a.v", "one/a.sv", "two/a.v", "two/b.sv", "two/c.v", "two/d.v/x",
                             "one/known.v", "escape.v"})
        TarnTest::writeFile(m_folder.filePath(QString::fromLatin1(name)), "\n");
    DesignSources design;
    SourceFile known;
    known.path = m_folder.filePath(QStringLiteral("one/known.v"));
    design.files.append(known);
    const auto find = [&](const QByteArrayList &modules) {
        DesignSources sources = design;
        QStringList found;
        const int count = addFilesOfLibraryFolders(modules, &sources);
        for (const SourceFile &file : sources.files.mid(1)) {
            found.append(QDir(m_folder.path()).relativeFilePath(file.path) +
                         QLatin1String(file.systemVerilog ? " sv" : "") +
                         QLatin1String(file.library ? "" : " no library"));
        }
        return count == found.size() ? found.join(QLatin1Char(' ')) : QStringLiteral("miscounted");
    };
    const QByteArrayList modules = {"b", "a", "known", "d", "../escape", "none", "c", "a"};
    QCOMPARE(find(modules), QString());
    design.libraryFolders = QStringList{m_folder.filePath(QStringLiteral("one")),
                                        m_folder.filePath(QStringLiteral("two"))};
    QCOMPARE(find(modules), QString());
    design.libraryExtensions = QStringList{QStringLiteral(".v"), QStringLiteral(".sv")};
    QCOMPARE(find(modules), QStringLiteral("two/b.sv sv one/a.v two/c.v"));
    design.libraryExtensions = QStringList{QStringLiteral(".sv"), QStringLiteral(".v")};
    QCOMPARE(find({"a", "c"}), QStringLiteral("one/a.sv sv two/c.v"));
    design.libraryFolders = QStringList{m_folder.filePath(QStringLiteral("two"))};
    QCOMPARE(find({"a", "c"}), QStringLiteral("two/a.v two/c.v"));
}

TARN_TEST_MAIN(TestDesignSources)
#include "tst_designsources.moc"
