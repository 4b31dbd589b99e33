// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designxml.h"

#include <netweir/internal/xml/sourcetexts.h>

#include <support/files.h>
#include <support/testcase.h>

#include <QTemporaryDir>
#include <QTest>

using namespace NETWEIR::Internal;

class TestSourceTexts : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void locationsHaveText_data();
    void locationsHaveText();
    void linesBeforeALocationAreRead_data();
    void linesBeforeALocationAreRead();
    void namesAreAsWritten_data();
    void namesAreAsWritten();
    void filesAreReadOnce();

private:
    SourceTexts sources() const;

    QTemporaryDir m_folder;
};

void TestSourceTexts::initTestCase()
{
    TarnTest::writeFile(m_folder.filePath(QStringLiteral("a.v")), "module top;\n"
                                                                  "  wire first;\n"
                                                                  "  wire a_long_name_of_a_net;\n"
                                                                  "  wire \\long/name ;\n"
                                                                  "  wire other;");
}

SourceTexts TestSourceTexts::sources() const
{
    pugi::xml_document document;
    TarnTest::appendElements(
        document, QStringLiteral("(files (file id=a filename=a.v) (file id=b filename=gone.v) "
                                 "(file id=c filename=%1) (other id=d filename=a.v))")
                      .arg(m_folder.filePath(QStringLiteral("a.v"))));
    SourceTexts sources;
    sources.setFiles(document.first_child(), m_folder.path());
    return sources;
}

void TestSourceTexts::locationsHaveText_data()
{
    QTest::addColumn<QByteArray>("location");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const char *location, const char *expected) {
        QTest::newRow(name) << QByteArray(location) << QByteArray(expected);
    };
    row("a name", "a,2,8,2,13", "first");
    row("an absolute file name", "c,2,8,2,13", "first");
    row("the first character of the file", "a,1,1,1,2", "m");
    row("the last line, which has no end", "a,5,8,5,14", "other;");
    row("an empty piece", "a,2,8,2,8", "");
    row("beyond the end of the line", "a,2,8,2,200", "first;");
    row("all beyond the end of the line", "a,2,100,2,200", "");
    row("beyond the end of the file", "a,6,1,6,5", "");
    row("line 0", "a,0,1,0,5", "");
    row("two lines", "a,1,8,2,5", "");
    row("a file that is gone", "b,1,1,1,5", "");
    row("a file that is not known", "x,1,1,1,5", "");
    row("an element of another kind", "d,1,1,1,5", "");
    row("too few numbers", "a,1,1,1", "");
    row("too many numbers", "a,1,1,1,5,6", "");
    row("no numbers", "a,b,c,d,e", "");
    row("nothing", "", "");
}

void TestSourceTexts::locationsHaveText()
{
    QFETCH(QByteArray, location);
    QTEST(sources().textAt(location.constData()), "expected");
}

void TestSourceTexts::linesBeforeALocationAreRead_data()
{
    QTest::addColumn<QByteArray>("location");
    QTest::addColumn<int>("lines");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const char *location, int lines, const char *expected) {
        QTest::newRow(name) << QByteArray(location) << lines << QByteArray(expected);
    };
    row("its own line", "a,2,8,2,13", 1, "  wire ");
    row("two lines", "a,2,8,2,13", 2, "module top;\n  wire ");
    row("more than there are", "a,2,8,2,13", 50, "module top;\n  wire ");
    row("the end of three lines", "a,3,3,3,5", 2, "  wire first;\n  ");
    row("the first character of the file", "a,1,1,1,2", 50, "");
    row("beyond the end of the line", "a,5,100,5,101", 1, "  wire other;");
    row("beyond the end of the file", "a,6,1,6,5", 1, "");
    row("line 0", "a,0,1,0,5", 1, "");
    row("a file that is gone", "b,1,1,1,5", 1, "");
    row("nothing", "", 1, "");
}

void TestSourceTexts::linesBeforeALocationAreRead()
{
    QFETCH(QByteArray, location);
    QFETCH(int, lines);
    QTEST(sources().textBefore(location.constData(), lines), "expected");
}

void TestSourceTexts::namesAreAsWritten_data()
{
    QTest::addColumn<QString>("element");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *element, const char *expected) {
        QTest::newRow(name) << QString::fromLatin1(element) << QString::fromLatin1(expected);
    };
    row("a plain name", "(var name=first origName=first)", "first");
    row("an encoded name", "(var name=x origName=a__02fb)", "a/b");
    row("a name of a module with parameters", "(module name=m__P2 origName=m)", "m");
    row("only a decoded name", "(var name=a__02fb)", "a__02fb");
    row("no name", "(var)", "");
    row("a name that was cut", "(var origName=a_long__Vhsh123 loc=a,3,8,3,28)",
        "a_long_name_of_a_net");
    row("not cut, whatever its location has", "(var origName=a_long loc=a,3,8,3,28)", "a_long");
    row("an escaped name that was cut", "(var origName=long__02f__Vhsh123 loc=a,4,8,4,19)",
        "long/name");
    row("only a decoded name that was cut", "(var name=a_long__Vhsh123 loc=a,3,8,3,28)",
        "a_long_name_of_a_net");
    row("cut, but its location has another name", "(var origName=b_long__Vhsh1 loc=a,3,8,3,28)",
        "b_long__Vhsh1");
    row("cut, and its file is gone", "(var origName=a_long__Vhsh1 loc=b,3,8,3,29)",
        "a_long__Vhsh1");
    row("cut, without a location", "(var origName=a_long__Vhsh1)", "a_long__Vhsh1");
}

void TestSourceTexts::namesAreAsWritten()
{
    QFETCH(QString, element);
    pugi::xml_document document;
    TarnTest::appendElements(document, element);
    QTEST(sources().nameOf(document.first_child()), "expected");
}

void TestSourceTexts::filesAreReadOnce()
{
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("a.v"));
    TarnTest::writeFile(file, "before");
    pugi::xml_document document;
    TarnTest::appendElements(document, QStringLiteral("(files (file id=a filename=a.v))"));
    SourceTexts sources;
    sources.setFiles(document.first_child(), folder.path());
    QCOMPARE(sources.textAt("a,1,1,1,7"), QByteArray("before"));
    TarnTest::writeFile(file, "after!");
    QCOMPARE(sources.textAt("a,1,1,1,7"), QByteArray("before"));
}

QTEST_APPLESS_MAIN(TestSourceTexts)
#include "tst_sourcetexts.moc"
