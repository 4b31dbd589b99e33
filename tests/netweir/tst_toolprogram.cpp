// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/tool/toolprogram.h>

#include <support/files.h>
#include <support/testcase.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

using NETWEIR::Internal::findToolProgram;
using TarnTest::writeFile;

class TestToolProgram : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void findsTheProgramOrSaysWhatToDo_data();
    void findsTheProgramOrSaysWhatToDo();

private:
    QString path(const QString &name) const { return m_dir.filePath(name); }

    QTemporaryDir m_dir;
    QByteArray m_searchPath = qgetenv("PATH");
};

void TestToolProgram::initTestCase()
{
    for (const char *name : {"bin/tool", "other/tool", "built/tool", "chosen/fast"}) {
        writeFile(path(QLatin1String(name)), "#!/bin/sh\n");
        QVERIFY(
            QFile::setPermissions(path(QLatin1String(name)), QFile::ReadOwner | QFile::ExeOwner));
    }
    writeFile(path("bin/text"), "no program");
}

void TestToolProgram::cleanupTestCase()
{
    qputenv("PATH", m_searchPath);
}

/// The folder of the test is written "~".
void TestToolProgram::findsTheProgramOrSaysWhatToDo_data()
{
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QString>("searchPath");
    QTest::addColumn<QString>("built");
    QTest::addColumn<QString>("result");
    const auto row = [](const char *name, const char *variable, const char *searchPath,
                        const char *built, const char *result) {
        QTest::newRow(name) << QString::fromLatin1(variable) << QString::fromLatin1(searchPath)
                            << QString::fromLatin1(built) << QString::fromLatin1(result);
    };
    const char *missing = "The elaborator \"tool\" is not installed. Install it, or set the "
                          "environment variable TARN_TEST_TOOL to the path of tool.";
    const char *wrong = "The elaborator \"%1\" named by the environment variable TARN_TEST_TOOL is "
                        "not a program. Correct or unset the variable.";
    const auto wrongly = [wrong](const char *path) {
        return QString::fromLatin1(wrong).arg(QLatin1String(path)).toLatin1();
    };
    row("first on the search path", "", "~/none:~/bin:~/other", "~/built/tool", "~/bin/tool");
    row("only at build time", "", "~/none", "~/built/tool", "~/built/tool");
    row("name from build time", "", "~/none", "tool", missing);
    row("nowhere", "", "~/none", "~/none/tool", missing);
    row("variable before all others", "~/chosen/fast", "~/bin", "~/built/tool", "~/chosen/fast");
    row("variable with a missing file", "~/none/tool", "~/bin", "~/built/tool",
        wrongly("~/none/tool"));
    row("variable with a text", "~/bin/text", "~/bin", "~/built/tool", wrongly("~/bin/text"));
    row("variable with a folder", "~/bin", "~/bin", "~/built/tool", wrongly("~/bin"));
}

void TestToolProgram::findsTheProgramOrSaysWhatToDo()
{
    QFETCH(QString, variable);
    QFETCH(QString, searchPath);
    QFETCH(QString, built);
    const auto expanded = [this](QString text) {
        return text.replace(QLatin1Char('~'), m_dir.path());
    };
    qputenv("TARN_TEST_TOOL", expanded(variable).toLocal8Bit());
    qputenv("PATH", expanded(searchPath).toLocal8Bit());
    const QByteArray builtPath = expanded(built).toLocal8Bit();
    QString error;
    const QString found =
        findToolProgram({"TARN_TEST_TOOL", "tool", builtPath.constData(), "Install it"}, &error);
    QCOMPARE(found.isEmpty(), !error.isEmpty());
    QTEST(QString(found + error).replace(m_dir.path(), QLatin1String("~")), "result");
}

TARN_TEST_MAIN(TestToolProgram)
#include "tst_toolprogram.moc"
