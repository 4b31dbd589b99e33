// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/xml/xmlfile.h>

#include <support/files.h>
#include <support/testcase.h>

#include <QTemporaryDir>
#include <QTest>

#include <atomic>

using namespace NETWEIR::Internal;

/// The elements of an elaborated design that are read one by one, and files that have to be read as
/// a whole.
class TestXmlFile : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void elementsAreFound_data();
    void elementsAreFound();
    void piecesWithoutAnEndOfTheirOwnAreReadWhole_data();
    void piecesWithoutAnEndOfTheirOwnAreReadWhole();
    void errorsHaveTheirByte_data();
    void errorsHaveTheirByte();
    void everyTruncationHasTheErrorOfTheWhole();
    void endsMayLieOnAnyByte_data();
    void endsMayLieOnAnyByte();
    void startsHaveNoContent();
    void smallElementsAreReadTogether();
    void changedFilesAreNoticed_data();
    void changedFilesAreNoticed();
    void searchingEndsWhenCancelled();

private:
    QString write(const QByteArray &text);

    QTemporaryDir m_folder;
};

namespace {

constexpr qint64 Limit = 1024 * 1024 * 1024;

/// The kinds of elements as letters, in their order.
QString kindsOf(const XmlFile &file)
{
    QString kinds;
    for (const XmlElement &element : file.elements())
        kinds += QLatin1Char("FTPDO"[int(element.kind)]);
    return kinds;
}

/// The elements of the file at @p path that mean something, each with its kind and attribute a;
/// "whole: " in front when the file was parsed as a whole; or the error.
QString elementsText(const QString &path)
{
    XmlFile file;
    QString error;
    if (!file.open(path, Limit, &error))
        return error;
    for (int round = 0; round < 2; ++round) {
        const bool isWhole = !file.elements().empty() && file.elements().front().node;
        QStringList texts;
        for (const XmlElement &element : file.elements()) {
            const pugi::xml_node node = file.load(element);
            if (element.kind != XmlElement::Kind::Other)
                texts += QStringLiteral("%1 %2").arg(QLatin1String(node.name()),
                                                     QLatin1String(node.attribute("a").value()));
            if (!file.isSound())
                break;
        }
        if (file.isSound())
            return (isWhole ? QStringLiteral("whole: ") : QString()) +
                   texts.join(QStringLiteral(", "));
        if (!file.loadWhole(&error))
            return error;
    }
    return QStringLiteral("not read");
}

/// What the parser says of @p text as a whole; empty when it is well-formed.
QString errorOf(QByteArray text, const QString &path)
{
    pugi::xml_document document;
    const auto parsed = document.load_buffer_inplace(text.data(), std::size_t(text.size()));
    return parsed ? QString()
                  : QStringLiteral("The elaborated design \"%1\" cannot be read: %2 (byte %3).")
                        .arg(path, QLatin1String(parsed.description()))
                        .arg(parsed.offset);
}

QByteArray netlist(const QByteArray &inner)
{
    return "<verilator_xml><netlist>" + inner + "</netlist></verilator_xml>";
}

} // namespace

QString TestXmlFile::write(const QByteArray &text)
{
    const QString path = m_folder.filePath(QStringLiteral("design.xml"));
    TarnTest::writeFile(path, text);
    return path;
}

void TestXmlFile::elementsAreFound_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const QByteArray &text, const char *expected) {
        QTest::newRow(name) << text << QString::fromLatin1(expected);
    };
    row("as the elaborator writes it",
        "<?xml version=\"1.0\" ?>\n<!-- DESCRIPTION: <module> -->\n<verilator_xml>\n  <files>\n"
        "    <file id=\"a\"/>\n  </files>\n  <module_files>\n    <file id=\"a\"/>\n"
        "  </module_files>\n  <cells>\n    <cell name=\"t\">\n      <cell name=\"u\"/>\n    "
        "</cell>\n"
        "  </cells>\n  <netlist>\n    <module a=\"1\">\n      <var/>\n    </module>\n"
        "    <package a=\"2\"/>\n    <iface a=\"3\"></iface>\n    <primitive a=\"4\">\n"
        "    </primitive>\n    <typetable a=\"5\"/>\n  </netlist>\n</verilator_xml>\n",
        "files , module 1, package 2, iface 3, primitive 4, typetable 5");
    row("end tags with blanks", netlist("<module a=\"1\"></module \n><iface a=\"2\"></iface\t>"),
        "module 1, iface 2");
    row("names that begin alike", netlist("<module a=\"1\"><modules></modules></module>"),
        "module 1");
    row("brackets in quotes", netlist("<module a=\"/>\" b='>\"'><x y=\"a>b\"/></module>"),
        "module />");
    row("text between elements", netlist("x<module a=\"1\"/>y>z<module a=\"2\"/>"),
        "module 1, module 2");
    row("comments between elements", netlist("<!-- <module> --><module a=\"1\"/><!--</netlist>-->"),
        "module 1");
    row("instructions between elements", netlist("<?a </netlist> ?><module a=\"1\"/><?b?>"),
        "module 1");
    row("comments in an element", netlist("<module a=\"1\"><!-- <module> </modul> --></module>"),
        "module 1");
    row("elements without meaning", netlist("<class a=\"1\"><module/></class><module a=\"2\"/>"),
        "module 2");
    row("the first type table and list of files",
        "<verilator_xml><files a=\"1\"/><files a=\"2\"/><netlist><typetable a=\"3\"/>"
        "<typetable a=\"4\"/></netlist></verilator_xml>",
        "files 1, typetable 3");
    row("files behind the netlist",
        "<verilator_xml><netlist><module a=\"1\"/></netlist><files a=\"2\"/></verilator_xml>",
        "module 1, files 2");
    row("an empty netlist", "<verilator_xml><netlist/></verilator_xml>", "");
}

void TestXmlFile::elementsAreFound()
{
    QFETCH(QByteArray, text);
    QTEST(elementsText(write(text)), "expected");
}

void TestXmlFile::piecesWithoutAnEndOfTheirOwnAreReadWhole_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const QByteArray &text, const char *expected) {
        QTest::newRow(name) << text << QString::fromLatin1(expected);
    };
    const QByteArray more("<iface a=\"2\"/>");
    row("an end tag in a comment", netlist("<module a=\"1\"><!-- </module> --></module>" + more),
        "whole: module 1, iface 2");
    row("an end tag in a quote", netlist("<module a=\"1\"><x y=\"</module>\"/></module>" + more),
        "whole: module 1, iface 2");
    row("an end tag in its own quote", netlist("<module a=\"1\" b=\"</module>\"/>" + more),
        "module 1, iface 2");
    row("an end tag in a text", netlist("<module a=\"1\"><![CDATA[</module>]]></module>" + more),
        "whole: module 1, iface 2");
    row("an end tag in an instruction", netlist("<module a=\"1\"><?x </module>?></module>" + more),
        "whole: module 1, iface 2");
    row("within another one", netlist("<module a=\"1\"><module a=\"3\"></module></module>" + more),
        "whole: module 1, iface 2");
    row("a text between elements", netlist("<![CDATA[<module/>]]><module a=\"1\"/>" + more),
        "whole: module 1, iface 2");
    row("a document type", "<!DOCTYPE x [<!ENTITY y \"</netlist>\">]>" + netlist(more),
        "whole: iface 2");
    row("another encoding", "<?xml version=\"1.0\" encoding=\"latin1\"?>" + netlist(more),
        "whole: iface 2");
    row("a mark of the encoding", "\xef\xbb\xbf" + netlist(more), "whole: iface 2");
    row("two netlists",
        "<verilator_xml><netlist><module a=\"1\"/></netlist><netlist><module a=\"2\"/></netlist>"
        "</verilator_xml>",
        "whole: module 1");
    row("another document before it", "<a/>" + netlist(more), "whole: iface 2");
    row("another document behind it", netlist(more) + "<a/>", "whole: iface 2");
}

void TestXmlFile::piecesWithoutAnEndOfTheirOwnAreReadWhole()
{
    QFETCH(QByteArray, text);
    QTEST(elementsText(write(text)), "expected");
}

void TestXmlFile::errorsHaveTheirByte_data()
{
    QTest::addColumn<QByteArray>("text");
    const auto row = [](const char *name, const QByteArray &text) { QTest::newRow(name) << text; };
    row("in a definition", netlist("<module><var name=></module><iface/>"));
    row("in a definition's own tag", netlist("<module name><var/></module>"));
    row("an end tag that is missing", netlist("<module><var></module>"));
    row("an end tag too many", netlist("<module></var></module>"));
    row("an end tag that is cut", netlist("<module></modul"));
    row("in a tag around", "<verilator_xml x><netlist></netlist></verilator_xml>");
    row("in the tag of the netlist", "<verilator_xml><netlist x=y></netlist></verilator_xml>");
    row("in a cell", "<verilator_xml><cells><cell a><cell/></cell></cells></verilator_xml>");
    row("in a cell without others", "<verilator_xml><cells><cell a/></cells></verilator_xml>");
    row("between cells", "<verilator_xml><cells><cell/>< <cell/></cells></verilator_xml>");
    row("in what has no meaning", "<verilator_xml><other><a></other></verilator_xml>");
    row("end tags in the wrong order", "<verilator_xml><netlist></verilator_xml></netlist>");
    row("an instruction", "<?<xml?>" + netlist("<module/>"));
    row("a comment without end", netlist("<module/><!-- "));
    row("no document", "   ");
    row("nothing", "");
}

void TestXmlFile::errorsHaveTheirByte()
{
    QFETCH(QByteArray, text);
    const QString path = write(text);
    QVERIFY(!errorOf(text, path).isEmpty());
    QCOMPARE(elementsText(path), errorOf(text, path));
}

void TestXmlFile::everyTruncationHasTheErrorOfTheWhole()
{
    const QByteArray text =
        "<?xml version=\"1.0\" ?>\n<!-- a --><verilator_xml>\n<files><file id=\"a\"/></files>"
        "<cells>\n<cell name=\"t\"> <cell/><cell/></cell>\n</cells>\n<netlist>\n"
        "<module a=\"1>\">\n<var b='c'/> <!-- d --> </module>\n<package/>\n"
        "<typetable></typetable>\n</netlist>\n</verilator_xml>";
    QCOMPARE(errorOf(text, QString()), QString());
    for (int length = 0; length < text.size(); ++length) {
        const QString path = write(text.left(length));
        QVERIFY(!errorOf(text.left(length), path).isEmpty());
        QCOMPARE(elementsText(path), errorOf(text.left(length), path));
    }
}

void TestXmlFile::endsMayLieOnAnyByte_data()
{
    QTest::addColumn<int>("padding");
    for (const int size : {256 * 1024, 512 * 1024}) {
        for (int before = 0; before < 24; ++before)
            QTest::addRow("%d", size - before) << size - before;
    }
}

/// The file is read in pieces of 256 KB. Comments, tags and values longer than that need more.
void TestXmlFile::endsMayLieOnAnyByte()
{
    QFETCH(int, padding);
    const QByteArray filler(padding, 'x');
    const QByteArray inner("<module a=\"1\"><x/></module ><iface a=\"2\"/>");
    const QString expected = QStringLiteral("module 1, iface 2");
    QCOMPARE(elementsText(write("<!--" + filler + "-->" + netlist(inner))), expected);
    QCOMPARE(elementsText(write(netlist("<class>" + filler + "</class>" + inner))), expected);
    QCOMPARE(elementsText(write(netlist("<class b=\"" + filler + "\"/>" + inner))), expected);
    QCOMPARE(elementsText(write("<verilator_xml b='" + filler + "'><netlist>" + inner +
                                "</netlist></verilator_xml>")),
             expected);
}

void TestXmlFile::startsHaveNoContent()
{
    const QString path = write(netlist("<module a=\"1\"><var/></module><module a=\"2\"/>"));
    XmlFile file;
    QString error;
    QVERIFY2(file.open(path, Limit, &error), qPrintable(error));
    QCOMPARE(kindsOf(file), QStringLiteral("DD"));
    for (const XmlElement &element : file.elements()) {
        const QByteArray value = file.loadStart(element).attribute("a").value();
        QVERIFY(!file.loadStart(element).first_child());
        QCOMPARE(file.load(element).attribute("a").value(), value.constData());
        QCOMPARE(bool(file.load(element).first_child()), value == "1");
    }
}

/// A large hierarchy has as many cells.
void TestXmlFile::smallElementsAreReadTogether()
{
    QByteArray cells;
    for (int i = 0; i < 10000; ++i)
        cells += "<cell name=\"a\"/>\n";
    const QString path = write("<verilator_xml><cells><cell name=\"t\">" + cells +
                               "</cell></cells><netlist/></verilator_xml>");
    XmlFile file;
    QString error;
    QVERIFY2(file.open(path, Limit, &error), qPrintable(error));
    QCOMPARE(kindsOf(file), QStringLiteral("OOOO"));
    int found = 0;
    for (const XmlElement &element : file.elements()) {
        for (pugi::xml_node cell = file.load(element); cell; cell = cell.next_sibling())
            found += qstrcmp(cell.name(), "cell") == 0 ? 1 : 0;
    }
    QCOMPARE(found, 10000);
}

void TestXmlFile::changedFilesAreNoticed_data()
{
    QTest::addColumn<QByteArray>("later");
    QTest::newRow("cut") << QByteArray("<verilator_xml>");
    QTest::newRow("moved") << "   " + netlist("<module a=\"1\"><var/></module>");
}

void TestXmlFile::changedFilesAreNoticed()
{
    QFETCH(QByteArray, later);
    const QString path = write(netlist("<module a=\"1\"><var/></module>"));
    XmlFile file;
    QString error;
    QVERIFY2(file.open(path, Limit, &error), qPrintable(error));
    const XmlElement element = file.elements().front();
    QVERIFY(file.load(element));
    TarnTest::writeFile(path, later);
    QVERIFY(!file.load(element));
    QVERIFY(!file.isSound());
}

void TestXmlFile::searchingEndsWhenCancelled()
{
    const QString path = write(netlist("<module>" + QByteArray(4 * 1024 * 1024, ' ')));
    const std::atomic<bool> cancelled{true};
    ReadLimits limits;
    limits.cancelled = &cancelled;
    QString error;
    const auto read = [&path](QString *reason) {
        XmlFile file;
        return file.open(path, Limit, reason);
    };
    QVERIFY(!readWithin(limits, read, &error));
    QCOMPARE(error, QStringLiteral("Reading was cancelled."));
}

QTEST_APPLESS_MAIN(TestXmlFile)
#include "tst_xmlfile.moc"
