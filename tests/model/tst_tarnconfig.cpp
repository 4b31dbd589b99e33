// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configsamples.h"

#include <model/tarnconfig.h>
#include <probes/signalsamples.h>
#include <support/files.h>
#include <support/testcase.h>

#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamWriter>

#include <sys/stat.h>

using TARN::SignalItem;
using TARN::TarnCore;
using TarnTest::bus;
using TarnTest::net;
using TarnTest::readFile;
using TarnTest::writeFile;

namespace {

const QByteArray EmptyFile = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                             "<TARN_CONFIG>\n"
                             "    <Version>1.0</Version>\n"
                             "</TARN_CONFIG>\n";

/// A file with @p content behind the version. The content begins on line 4.
QByteArray fileWith(const QByteArray &content)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<TARN_CONFIG>\n"
           "    <Version>1.0</Version>\n" +
           content + "</TARN_CONFIG>\n";
}

/// A file with one Probe In port that holds @p content. The content begins on line 6.
QByteArray portWith(const QByteArray &content)
{
    return fileWith("    <Core index=\"0\">\n        <ProbeIn index=\"0\">\n" + content +
                    "        </ProbeIn>\n    </Core>\n");
}

/// One signal with members inside members, @p levels below the signal itself.
SignalItem nestedSignal(int levels)
{
    SignalItem item = net(QStringLiteral("level %1").arg(levels));
    for (int i = levels - 1; i >= 0; --i) {
        SignalItem outer = net(QStringLiteral("level %1").arg(i));
        outer.members = {item};
        item = outer;
    }
    return item;
}

} // namespace

class TestTarnConfig : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void newFileHoldsNoCore();
    void newFileIsWhatTheWizardWrites();
    void layoutIsFixed();
    void filesOfTheTreeAreCanonical_data();
    void filesOfTheTreeAreCanonical();
    void everyFieldComesBack();
    void unchangedContentIsRewrittenByteForByte();
    void emptyInitialValueStaysEmpty();
    void equalNamesShareTheirMemory();
    void anyTextOfXmlComesBack_data();
    void anyTextOfXmlComesBack();
    void limitsOfTheEditorDoNotHold();
    void otherTextXmlCannotHoldIsNotWritten_data();
    void otherTextXmlCannotHoldIsNotWritten();
    void membersNestToTheLimit();
    void unknownKindIsNotWritten();
    void nullCoreIsNotWritten();
    void otherLayoutsAreRead_data();
    void otherLayoutsAreRead();
    void refusalsSayWhatAndWhere_data();
    void refusalsSayWhatAndWhere();
    void everyTruncationIsRefused();
    void unreadablePathsAreRefused_data();
    void unreadablePathsAreRefused();
    void oversizedFileIsRefused();
    void hostileFilesAreRefusedQuickly_data();
    void hostileFilesAreRefusedQuickly();
    void refusalLeavesUnusedPointersAlone();
    void acceptanceWritesNoDebugLine();
    void failedWriteSaysWhyOnTheDebugStream();

private:
    QString path(const QString &name = QStringLiteral("a.tarn")) const
    {
        return m_folder.filePath(name);
    }
    Cores reread(const QList<TarnCore *> &cores);
    QString refusalOf(const QString &file);
    static void valueRow(const QByteArray &element, const QByteArray &name, const QByteArray &value,
                         const QByteArray &allowed);

    QTemporaryDir m_folder;
};

/// What a save and a reopen make of @p cores.
Cores TestTarnConfig::reread(const QList<TarnCore *> &cores)
{
    bool ok = false;
    QString error;
    if (!TARN::writeTARNConfigToXml(cores, path()))
        QTest::qFail("not written", __FILE__, __LINE__);
    Cores result(TARN::readTARNConfigFromXml(path(), &ok, &error));
    if (!ok || !error.isEmpty() || !TARN::checkTARNFile(path()))
        QTest::qFail(qPrintable(error), __FILE__, __LINE__);
    return result;
}

/// The error of reading @p file. Fails unless reading gives no core and the check refuses the file
/// with the same error on the debug stream.
QString TestTarnConfig::refusalOf(const QString &file)
{
    bool ok = true;
    QString error;
    const Cores cores(TARN::readTARNConfigFromXml(file, &ok, &error));
    clearDebugLines();
    if (ok || !cores.list.isEmpty())
        QTest::qFail("read", __FILE__, __LINE__);
    if (TARN::checkTARNFile(file) || debugLines() != QStringList{error})
        QTest::qFail("check and reading differ", __FILE__, __LINE__);
    return error;
}

void TestTarnConfig::newFileHoldsNoCore()
{
    writeFile(path(), EmptyFile);
    bool ok = false;
    QString error;
    QVERIFY(TARN::checkTARNFile(path()));
    QVERIFY(TARN::readTARNConfigFromXml(path(), &ok, &error).isEmpty());
    QVERIFY(ok);
    QCOMPARE(error, QString());

    QVERIFY(TARN::writeTARNConfigToXml({}, path(QStringLiteral("b.tarn"))));
    QCOMPARE(readFile(path(QStringLiteral("b.tarn"))), EmptyFile);
}

void TestTarnConfig::newFileIsWhatTheWizardWrites()
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QXmlStreamWriter writer(&buffer);
    writer.setAutoFormatting(true);
    writer.writeStartDocument();
    writer.writeStartElement(QLatin1String(TARN::NODE_TARN_CONFIG));
    writer.writeTextElement(QLatin1String(TARN::NODE_VERSION), QStringLiteral("1.0"));
    writer.writeEndElement();
    writer.writeEndDocument();
    QCOMPARE(buffer.data(), EmptyFile);
    QCOMPARE(QByteArray(TARN::NODE_TARN_CONFIG), QByteArray("TARN_CONFIG"));
    QCOMPARE(QByteArray(TARN::NODE_VERSION), QByteArray("Version"));
}

void TestTarnConfig::layoutIsFixed()
{
    const Cores cores = sampleCores();
    QVERIFY(TARN::writeTARNConfigToXml(cores.list, path()));
    QCOMPARE(QString::fromUtf8(readFile(path())), QStringLiteral(
                                                      R"(<?xml version="1.0" encoding="UTF-8"?>
<TARN_CONFIG>
    <Version>1.0</Version>
    <Core index="0" module="top" userClock="top/clk" syncUserClock="true">
        <ProbeIn index="0">
            <Signal name="top/u0/data[1:0]" kind="bus">
                <Member name="top/u0/data[1]" kind="bus"/>
                <Member name="top/u0/data[0]" kind="bus"/>
            </Signal>
            <Signal name="top/valid" kind="net"/>
        </ProbeIn>
        <ProbeIn index="1"/>
        <ProbeOut index="0" initialValue="0x1F">
            <Signal name="top/cfg[1:0]" displayName="cfg" kind="bus" usable="false">
                <Member name="top/cfg[1]" kind="bus"/>
                <Member name="top/cfg[0]" kind="bus" enabled="false"/>
            </Signal>
            <Signal name="" enabled="false" usable="false"/>
        </ProbeOut>
        <ProbeOut index="1" initialValue=""/>
    </Core>
    <Core index="7" module="" userClock="" syncUserClock="false">
        <ProbeOut index="3" initialValue="">
            <Signal name="top/en" kind="net"/>
        </ProbeOut>
    </Core>
</TARN_CONFIG>
)"));
}

void TestTarnConfig::filesOfTheTreeAreCanonical_data()
{
    QTest::addColumn<QByteArray>("content");
    const QDir tree(QStringLiteral(TARN_SOURCE_DIR));
    const QByteArray document = readFile(tree.filePath(QStringLiteral("docs/file-format.md")));
    const int start = document.indexOf("```xml\n") + 7;
    QTest::newRow("document") << document.mid(start, document.indexOf("```", start) - start);
    const QString examples = tree.filePath(QStringLiteral("examples"));
    QDirIterator files(examples, {QStringLiteral("*.tarn")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString file = files.next();
        QTest::newRow(qPrintable(files.fileName())) << readFile(file);
    }
}

void TestTarnConfig::filesOfTheTreeAreCanonical()
{
    QFETCH(QByteArray, content);
    writeFile(path(), content);
    bool ok = false;
    QString error;
    const Cores cores(TARN::readTARNConfigFromXml(path(), &ok, &error));
    QVERIFY2(ok, qPrintable(error));
    QVERIFY(!cores.list.isEmpty());
    QVERIFY(TARN::writeTARNConfigToXml(cores.list, path()));
    QCOMPARE(QString::fromUtf8(readFile(path())), QString::fromUtf8(content));
}

void TestTarnConfig::everyFieldComesBack()
{
    const Cores cores = sampleCores();
    const Cores copy = reread(cores.list);
    QCOMPARE(coresText(copy.list), coresText(cores.list));
}

void TestTarnConfig::unchangedContentIsRewrittenByteForByte()
{
    const Cores cores = sampleCores();
    const Cores copy = reread(cores.list);
    const QByteArray first = readFile(path());
    QVERIFY(!first.contains('\r'));
    QVERIFY(TARN::writeTARNConfigToXml(copy.list, path()));
    QCOMPARE(readFile(path()), first);
}

void TestTarnConfig::emptyInitialValueStaysEmpty()
{
    Cores cores;
    cores.add(0)->addProbeOut(0);
    const Cores copy = reread(cores.list);
    QVERIFY(copy.list.at(0)->probeOuts.at(0)->initialValue.isEmpty());
}

void TestTarnConfig::equalNamesShareTheirMemory()
{
    Cores cores;
    for (int i = 0; i < 2; ++i) {
        TarnCore *core = cores.add(i);
        core->addProbeIn(0);
        for (const QString &name : {QStringLiteral("top/a"), QStringLiteral("top/b")}) {
            core->probeIns.last()->signals.append(SignalItem());
            core->probeIns.last()->signals.last().name = QString(name.constData(), name.size());
        }
    }
    const Cores copy = reread(cores.list);
    for (int i = 0; i < 2; ++i) {
        const QString &one = copy.list.at(0)->probeIns.at(0)->signals.at(i).name;
        const QString &other = copy.list.at(1)->probeIns.at(0)->signals.at(i).name;
        QCOMPARE(one, QStringLiteral("top/") + QLatin1Char(i == 0 ? 'a' : 'b'));
        QVERIFY(one.isSharedWith(other));
    }
}

void TestTarnConfig::anyTextOfXmlComesBack_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("blanks around") << "  a b  ";
    QTest::newRow("blank only") << " ";
    QTest::newRow("tab, line feed, carriage return") << "\ta\nb\rc\r\nd\n";
    QTest::newRow("markup") << "<a b=\"c\">&amp;'</a>]]>--><!--";
    QTest::newRow("escaped identifier") << "top/\\a[0].b/c ";
    QTest::newRow("percent marks of a message") << "%1 %2 %99";
    QTest::newRow("umlauts") << QString::fromUtf8("\xc3\xa4\xc3\x96\xc3\x9f");
    QTest::newRow("beyond the basic plane") << QString::fromUtf8("\xf0\x9f\x98\x80");
    QTest::newRow("byte order mark") << QString(QChar(0xfeff));
    QTest::newRow("line separators of other scripts") << QString::fromUtf8("\xc2\x85\xe2\x80\xa8");
    QTest::newRow("last characters") << QString(QChar(0xfffd)) + QChar(0xe000) + QChar(0xd7ff);
    QTest::newRow("very long") << QString(1000000, QLatin1Char('n'));
    QTest::newRow("very long with quotes") << QStringLiteral("='\"").repeated(100000);
    QString all;
    for (ushort code = 0x20; code < 0x300; ++code)
        all.append(QChar(code));
    QTest::newRow("each of the first") << all;
}

void TestTarnConfig::anyTextOfXmlComesBack()
{
    QFETCH(QString, text);
    Cores cores;
    TarnCore *core = cores.add(0);
    core->module = text;
    core->userClock = text;
    core->addProbeIn(0);
    core->addProbeOut(0);
    core->probeOuts.at(0)->initialValue = text;
    SignalItem item = bus(text, 2);
    item.displayName = text;
    core->probeIns.at(0)->signals = {item};
    core->probeOuts.at(0)->signals = {item};

    const Cores copy = reread(cores.list);
    QCOMPARE(coresText(copy.list), coresText(cores.list));
    const QByteArray first = readFile(path());
    QVERIFY(TARN::writeTARNConfigToXml(copy.list, path()));
    QCOMPARE(readFile(path()), first);
}

void TestTarnConfig::limitsOfTheEditorDoNotHold()
{
    Cores cores;
    for (int index : {3, 3, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
        cores.add(index);
    for (int i = 0; i < 20; ++i)
        cores.add(i * 10);
    for (int i = 0; i < 70; ++i) {
        cores.list.last()->addProbeIn(i * 2);
        cores.list.last()->addProbeOut(-i);
    }
    cores.list.last()->probeIns.at(0)->signals = {bus(QStringLiteral("wide"), 300)};
    const Cores copy = reread(cores.list);
    QCOMPARE(coresText(copy.list), coresText(cores.list));
}

void TestTarnConfig::otherTextXmlCannotHoldIsNotWritten_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("null character") << QString(QChar(0));
    QTest::newRow("control character") << "a\x01";
    QTest::newRow("escape") << "\x1b[0m";
    QTest::newRow("form feed") << "\f";
    QTest::newRow("lone high surrogate") << QString(QChar(0xd83d));
    QTest::newRow("high surrogate before a letter") << QString(QChar(0xd83d)) + QLatin1Char('a');
    QTest::newRow("two high surrogates") << QString(QChar(0xd83d)) + QChar(0xd83d) + QChar(0xde00);
    QTest::newRow("lone low surrogate") << QString(QChar(0xde00));
    QTest::newRow("last but one") << QString(QChar(0xfffe));
    QTest::newRow("last") << QString(QChar(0xffff));
}

void TestTarnConfig::otherTextXmlCannotHoldIsNotWritten()
{
    QFETCH(QString, text);
    const auto setters = {
        +[](TarnCore *core, const QString &bad) { core->module = bad; },
        +[](TarnCore *core, const QString &bad) { core->userClock = bad; },
        +[](TarnCore *core, const QString &bad) { core->probeOuts.at(0)->initialValue = bad; },
        +[](TarnCore *core, const QString &bad) { core->probeIns.at(0)->signals[0].name = bad; },
        +[](TarnCore *core, const QString &bad) {
            core->probeOuts.at(0)->signals[0].displayName = bad;
        },
        +[](TarnCore *core, const QString &bad) {
            core->probeOuts.at(0)->signals[0].members[1].name = bad;
        },
    };
    writeFile(path(), "former content");
    for (const auto set : setters) {
        const Cores cores = sampleCores();
        set(cores.list.at(0), text);
        QVERIFY(!TARN::writeTARNConfigToXml(cores.list, path()));
        QCOMPARE(readFile(path()), QByteArray("former content"));
        QVERIFY(!TARN::writeTARNConfigToXml(cores.list, path(QStringLiteral("new.tarn"))));
        QVERIFY(!QFile::exists(path(QStringLiteral("new.tarn"))));
    }
}

void TestTarnConfig::membersNestToTheLimit()
{
    Cores cores;
    cores.add(0)->addProbeIn(0);
    TARN::ProbeIn *port = cores.list.at(0)->probeIns.at(0);
    port->signals = {nestedSignal(12)};
    const Cores copy = reread(cores.list);
    QCOMPARE(coresText(copy.list), coresText(cores.list));

    port->signals = {nestedSignal(13)};
    const QByteArray former = readFile(path());
    QVERIFY(!TARN::writeTARNConfigToXml(cores.list, path()));
    QCOMPARE(readFile(path()), former);
}

void TestTarnConfig::unknownKindIsNotWritten()
{
    for (int kind : {SignalItem::Unset - 1, SignalItem::Bus + 1}) {
        Cores cores = sampleCores();
        cores.list.at(0)->probeIns.at(0)->signals[0].members[0].kind = kind;
        QVERIFY(!TARN::writeTARNConfigToXml(cores.list, path(QStringLiteral("new.tarn"))));
        QVERIFY(!QFile::exists(path(QStringLiteral("new.tarn"))));
    }
}

void TestTarnConfig::nullCoreIsNotWritten()
{
    QVERIFY(!TARN::writeTARNConfigToXml({nullptr}, path(QStringLiteral("new.tarn"))));
    QVERIFY(!QFile::exists(path(QStringLiteral("new.tarn"))));
}

void TestTarnConfig::otherLayoutsAreRead_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("text");
    const QString core = QStringLiteral("core 0 \"\" clock \"\" sync 0");
    QTest::newRow("no declaration, one line")
        << QByteArray("<TARN_CONFIG><Version>1.0</Version></TARN_CONFIG>") << QString();
    QTest::newRow("byte order mark") << "\xef\xbb\xbf" + EmptyFile << QString();
    QTest::newRow("carriage returns") << QByteArray(EmptyFile).replace("\n", "\r\n") << QString();
    QTest::newRow("encoding in lower case")
        << QByteArray(EmptyFile).replace("UTF-8", "utf-8") << QString();
    QTest::newRow("comments and processing instructions")
        << "<!-- \"don't\" --><?tool hint?>" + fileWith("<!-- a -->").mid(39) + "<!-- b -->"
        << QString();
    QTest::newRow("blanks around the version")
        << QByteArray(EmptyFile).replace("1.0<", "\n 1.0\n<") << QString();
    QTest::newRow("only the index") << fileWith("<Core index=\"0\"/>") << core;
    QTest::newRow("attributes in another order, apostrophes")
        << fileWith("<Core syncUserClock='true' userClock='c' module='m' index='-4'></Core>")
        << "core -4 \"m\" clock \"c\" sync 1";
    QTest::newRow("Probe Out before Probe In")
        << fileWith("<Core index='0'><ProbeOut index='1'/><ProbeIn index='2'/></Core>")
        << core + "\n in 2\n out 1 \"\"";
    QTest::newRow("defaults spelled out")
        << portWith("<Signal name='a' displayName='' enabled='true' usable='true'/>")
        << core + "\n in 0\n  \"a\" \"\" enabled 1 usable 1 kind -1";
    QTest::newRow("character references") << fileWith("<Core index='&#49;' module='&#x41;&amp;'/>")
                                          << "core 1 \"A&\" clock \"\" sync 0";
    QTest::newRow("raw line feed in a value is a blank")
        << fileWith("<Core index='0' module='a\nb'/>") << "core 0 \"a b\" clock \"\" sync 0";
}

void TestTarnConfig::otherLayoutsAreRead()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, text);
    writeFile(path(), content);
    bool ok = false;
    QString error;
    const Cores cores(TARN::readTARNConfigFromXml(path(), &ok, &error));
    QVERIFY2(ok, qPrintable(error));
    QCOMPARE(coresText(cores.list), text);
    QVERIFY(TARN::checkTARNFile(path()));
}

/// Adds a row: @p value is refused for the attribute @p name of an element in its right place.
void TestTarnConfig::valueRow(const QByteArray &element, const QByteArray &name,
                              const QByteArray &value, const QByteArray &allowed)
{
    QByteArray required;
    if (element == "Signal")
        required = "name=\"a\" ";
    else if (name != "index")
        required = "index=\"0\" ";
    const QByteArray tag = "<" + element + " " + required + name + "=\"" + value + "\"/>";
    QByteArray content = fileWith("<Core index=\"0\">\n" + tag + "</Core>\n");
    int line = 5;
    if (element == "Core") {
        content = fileWith(tag);
        line = 4;
    } else if (element == "Signal") {
        content = portWith(tag);
        line = 6;
    }
    const QString reason =
        QStringLiteral("Line %1, column %2: The attribute \"%3\" has the value "
                       "\"%4\". Allowed: %5.")
            .arg(line)
            .arg(QString::fromUtf8(tag).size())
            .arg(QString::fromUtf8(name), QString::fromUtf8(value), QString::fromUtf8(allowed));
    const QByteArray row = element + ' ' + name + " '" + value + '\'';
    QTest::newRow(row.constData()) << content << reason;
}

void TestTarnConfig::refusalsSayWhatAndWhere_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason");

    const auto row = [](const char *name, const QByteArray &content, const char *reason) {
        QTest::newRow(name) << content << QString::fromUtf8(reason);
    };
    row("empty file", "", "Line 1, column 1: Not well-formed XML");
    row("no XML", "TARN\n", "Line 1, column");
    row("null bytes", QByteArray(100, '\0'), "The text is not encoded in UTF-8. Convert it.");
    row("UTF-16", QByteArray("\xff\xfe<\0T\0/\0>\0", 10),
        "The text is not encoded in UTF-8. Convert it.");
    row("UTF-16 without mark", QByteArray("<\0T\0/\0>\0", 8),
        "The text is not encoded in UTF-8. Convert it.");
    row("other declared encoding", QByteArray(EmptyFile).replace("UTF-8", "ISO-8859-1"),
        "Line 1, column 43: The file declares the encoding \"ISO-8859-1\" instead of \"UTF-8\". "
        "Convert it.");
    row("unknown declared encoding", QByteArray(EmptyFile).replace("UTF-8", "none"),
        "Not well-formed XML");
    row("broken UTF-8", QByteArray(EmptyFile).replace("1.0<", "1.\xff<"), "Not well-formed XML");
    row("XML 1.1", QByteArray(EmptyFile).replace("version=\"1.0\"", "version=\"1.1\""),
        "Line 1, column");
    row("document type", QByteArray(EmptyFile).insert(39, "<!DOCTYPE TARN_CONFIG>\n"),
        "Line 2, column 22: The file has a document type declaration. Remove it.");
    row("document type with entities",
        QByteArray(EmptyFile).insert(39, "<!DOCTYPE a [<!ENTITY b \"1.0\">]>\n"),
        "Line 2, column 32: The file has a document type declaration. Remove it.");
    row("undeclared entity", fileWith("<Core index='0' module='&b;'/>"), "Line 4, column");
    row("wrong root", QByteArray(EmptyFile).replace("TARN_CONFIG", "CONFIG"),
        "Line 2, column 8: The root element is \"CONFIG\" instead of \"TARN_CONFIG\". Choose a "
        "file that this program has written.");
    row("attribute of the root", QByteArray(EmptyFile).replace("<TARN_CONFIG", "<TARN_CONFIG a=''"),
        "Line 2, column 18: The attribute \"a\" of the element \"TARN_CONFIG\" is not known. "
        "Remove it.");
    row("name space", QByteArray(EmptyFile).replace("<TARN_CONFIG", "<TARN_CONFIG xmlns='a'"),
        "The attribute \"xmlns\" of the element \"TARN_CONFIG\" is not known. Remove it.");
    row("prefix", QByteArray(EmptyFile).replace("TARN_CONFIG", "a:TARN_CONFIG"),
        "The root element is \"a:TARN_CONFIG\"");
    row("letter case", QByteArray(EmptyFile).replace("Version", "version"),
        "Line 3, column 13: The first element is not \"Version\". Add it, with the text \"1.0\".");
    row("no version", "<TARN_CONFIG/>", "Line 1, column 14: The first element is not \"Version\"");
    row("version not first",
        "<TARN_CONFIG>\n<Core index=\"0\"/>\n<Version>1.0</Version></TARN_CONFIG>",
        "Line 2, column 17: The first element is not \"Version\"");
    row("second version", fileWith("    <Version>1.0</Version>\n"),
        "Line 4, column 13: The element \"Version\" is not known in this place. Remove it.");
    row("newer version", QByteArray(EmptyFile).replace("1.0<", "1.1<"),
        "Line 3, column 26: The file has the newer version \"1.1\"; versions up to \"1.0\" can be "
        "read. Use a newer release of this program.");
    row("much newer version", QByteArray(EmptyFile).replace("1.0<", "10.0<"), "newer version");
    row("older version", QByteArray(EmptyFile).replace("1.0<", "0.9<"),
        "Line 3, column 26: The file has the unknown version \"0.9\" instead of \"1.0\". Correct "
        "it.");
    row("empty version", QByteArray(EmptyFile).replace("1.0<", "<"), "unknown version \"\"");
    row("word as version", QByteArray(EmptyFile).replace("1.0<", "one<"), "unknown version");
    row("version with another tail", QByteArray(EmptyFile).replace("1.0<", "1.0a<"),
        "unknown version \"1.0a\"");
    row("attribute of the version", QByteArray(EmptyFile).replace("<Version", "<Version a=''"),
        "The attribute \"a\" of the element \"Version\" is not known. Remove it.");
    row("element in the version", QByteArray(EmptyFile).replace("1.0<", "1.0<b/><"),
        "Line 3, column");
    row("unknown element", fileWith("    <Probe/>\n"),
        "Line 4, column 12: The element \"Probe\" is not known in this place. Remove it.");
    row("port outside a core", fileWith("    <ProbeIn index=\"0\"/>\n"),
        "Line 4, column 24: The element \"ProbeIn\" is not known in this place. Remove it.");
    row("signal outside a port", fileWith("    <Core index=\"0\"><Signal name=\"a\"/></Core>\n"),
        "Line 4, column 38: The element \"Signal\" is not known in this place. Remove it.");
    row("member outside a signal", portWith("<Member name=\"a\"/>\n"),
        "Line 6, column 18: The element \"Member\" is not known in this place. Remove it.");
    row("signal in a signal", portWith("<Signal name=\"a\">\n<Signal name=\"b\"/></Signal>"),
        "Line 7, column 18: The element \"Signal\" is not known in this place. Remove it.");
    row("unknown attribute of a core", fileWith("<Core index=\"0\" Module=\"a\"/>"),
        "Line 4, column 28: The attribute \"Module\" of the element \"Core\" is not known. Remove "
        "it.");
    row("initial value of a Probe In",
        fileWith("<Core index=\"0\">\n<ProbeIn index=\"0\" initialValue=\"0x0\"/></Core>"),
        "Line 5, column 39: The attribute \"initialValue\" of the element \"ProbeIn\" is not "
        "known. Remove it.");
    row("unknown attribute of a signal", portWith("<Signal name=\"a\" width=\"1\"/>"),
        "The attribute \"width\" of the element \"Signal\" is not known. Remove it.");
    row("attribute with a prefix", portWith("<Signal name=\"a\" x:kind=\"net\"/>"),
        "The attribute \"x:kind\" of the element \"Signal\" is not known. Remove it.");
    row("more attributes than anyone writes",
        fileWith("<Core\n" + QByteArray("a=''\n").repeated(1001) + "/>"),
        "Line 1005, column 2: An element has more than 1000 attributes. Remove it.");
    row("attribute twice", fileWith("<Core index=\"0\" index=\"0\"/>"), "Line 4, column");
    row("core without index", fileWith("<Core/>"),
        "Line 4, column 7: The element \"Core\" has no attribute \"index\". Add it.");
    row("port without index", fileWith("<Core index=\"0\"><ProbeOut/></Core>"),
        "The element \"ProbeOut\" has no attribute \"index\". Add it.");
    row("signal without name", portWith("<Signal/>"),
        "The element \"Signal\" has no attribute \"name\". Add it.");
    row("member without name", portWith("<Signal name=\"a\"><Member/></Signal>"),
        "The element \"Member\" has no attribute \"name\". Add it.");
    row("text between elements", fileWith("    word\n"),
        "The text \"word\" stands between elements. Remove it.");
    row("text in a signal", portWith("<Signal name=\"a\">b</Signal>"),
        "Line 6, column 19: The text \"b\" stands between elements. Remove it.");
    row("CDATA", fileWith("<![CDATA[x]]>"), "The text \"x\" stands between elements. Remove it.");
    row("text behind the root", EmptyFile + "word", "Line 5, column");
    row("second root", EmptyFile + EmptyFile, "Line 5, column");
    row("null bytes behind the root", EmptyFile + QByteArray(3, '\0'), "Line 5, column");
    row("root not closed", QByteArray(EmptyFile).replace("</TARN_CONFIG>\n", ""),
        "Not well-formed XML");
    row("crossed tags", fileWith("<Core index=\"0\"></TARN_CONFIG></Core>"), "Line 4, column");
    row("control character", portWith("<Signal name=\"a\x01\"/>"), "Line 6, column");
    row("reference to a control character", portWith("<Signal name=\"&#1;\"/>"), "Line 6, column");
    row("reference to a surrogate", portWith("<Signal name=\"&#xd83d;\"/>"), "Line 6, column");

    for (const QByteArray index :
         {"", " 0", "0 ", "00", "+1", "-0", "1.0", "0x1", "a", "2147483648", "-2147483649",
          "99999999999999999999", "\xd9\xa1"}) {
        valueRow("Core", "index", index, "a whole number in digits");
        valueRow("ProbeIn", "index", index, "a whole number in digits");
    }
    for (const QByteArray flag : {"", "1", "0", "TRUE", "yes", " true"}) {
        valueRow("Core", "syncUserClock", flag, "\"true\", \"false\"");
        valueRow("Signal", "enabled", flag, "\"true\", \"false\"");
        valueRow("Signal", "usable", flag, "\"true\", \"false\"");
    }
    for (const QByteArray kind : {"", "0", "-1", "Net", "wire"})
        valueRow("Signal", "kind", kind, "\"net\", \"bus\"");
    row("long value", fileWith("<Core index=\"" + QByteArray(100000, 'x') + "\"/>"),
        "xxx...\". Allowed");
    row("percent marks", fileWith("<Core index=\"%1%2%3\"/>"), "the value \"%1%2%3\". Allowed");

    const QByteArray deep =
        portWith("<Signal name=\"a\">\n" + QByteArray("<Member name=\"a\">").repeated(13) +
                 QByteArray("</Member>").repeated(13) + "</Signal>");
    row("too deep", deep,
        "Line 7, column 221: Elements are nested deeper than 16 levels. Remove the inner ones.");
}

void TestTarnConfig::refusalsSayWhatAndWhere()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, reason);
    writeFile(path(), content);
    const QString error = refusalOf(path());
    QVERIFY2(error.contains(reason), qPrintable(error));
    const QString start = QStringLiteral("Can not read %1. Line ").arg(path());
    QVERIFY2(error.startsWith(start), qPrintable(error));
    QVERIFY(!error.contains(QLatin1Char('\n')));
    QVERIFY(error.size() < 500);
}

void TestTarnConfig::everyTruncationIsRefused()
{
    const Cores cores = sampleCores();
    QVERIFY(TARN::writeTARNConfigToXml(cores.list, path()));
    const QByteArray whole = readFile(path());
    for (int size = 0; size < whole.size() - 1; ++size) {
        // A new file: some file systems wait for the disk when an old one is truncated.
        QFile::remove(path());
        writeFile(path(), whole.left(size));
        bool ok = true;
        TARN::readTARNConfigFromXml(path(), &ok, nullptr);
        QVERIFY(!ok);
    }
    writeFile(path(), whole.left(whole.size() - 1));
    QVERIFY(TARN::checkTARNFile(path()));
}

void TestTarnConfig::unreadablePathsAreRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("missing") << "missing.tarn";
    QTest::newRow("folder") << "folder";
    QTest::newRow("pipe") << "pipe";
    QTest::newRow("dangling link") << "dangling";
    QTest::newRow("link to itself") << "loop";
}

void TestTarnConfig::unreadablePathsAreRefused()
{
    QFETCH(QString, name);
    QDir(m_folder.path()).mkdir(QStringLiteral("folder"));
    ::mkfifo(QFile::encodeName(path(QStringLiteral("pipe"))).constData(), 0600);
    QFile::link(path(QStringLiteral("gone")), path(QStringLiteral("dangling")));
    QFile::link(path(QStringLiteral("loop")), path(QStringLiteral("loop")));

    const QString error = refusalOf(path(name));
    const QString start = QStringLiteral("Can not read %1. ").arg(path(name));
    QVERIFY2(error.startsWith(start) && error.size() > start.size(), qPrintable(error));
}

void TestTarnConfig::oversizedFileIsRefused()
{
    writeFile(path(), EmptyFile);
    // Sparse, and readable up to the limit: blanks behind the root are allowed, null bytes not.
    QFile file(path());
    QVERIFY(file.resize(256 * 1024 * 1024 + 1));
    QString error;
    TARN::readTARNConfigFromXml(path(), nullptr, &error);
    QVERIFY2(error.contains(QStringLiteral("The file is larger than 256 MB")), qPrintable(error));
    QVERIFY(!TARN::checkTARNFile(path()));
    QVERIFY(file.resize(256 * 1024 * 1024));
    TARN::readTARNConfigFromXml(path(), nullptr, &error);
    QVERIFY2(error.contains(QStringLiteral("Line 5")), qPrintable(error));
}

void TestTarnConfig::hostileFilesAreRefusedQuickly_data()
{
    QTest::addColumn<QByteArray>("content");
    QByteArray attributes;
    for (int i = 0; i < 300000; ++i)
        attributes += " a" + QByteArray::number(i) + "=''";
    QTest::newRow("attributes") << fileWith("<Core" + attributes + "/>");
    QTest::newRow("attributes in the declaration") << "<?xml" + attributes + "?><a/>";
    QTest::newRow("nesting") << portWith("<Signal name='a'>" +
                                         QByteArray("<Member name='a'>").repeated(1000000));
    QByteArray entities = "<!DOCTYPE TARN_CONFIG [<!ENTITY e0 \"1234567890\">";
    for (int i = 1; i < 20; ++i) {
        entities += "<!ENTITY e" + QByteArray::number(i) + " \"" +
                    ("&e" + QByteArray::number(i - 1) + ";").repeated(10) + "\">";
    }
    QTest::newRow("entities") << entities + "]><TARN_CONFIG><Version>&e19;</Version></TARN_CONFIG>";
    QTest::newRow("entities in an attribute")
        << entities + "]><TARN_CONFIG a=\"&e19;\"></TARN_CONFIG>";
    QTest::newRow("name of an element") << "<" + QByteArray(10000000, 'a') + "/>";
}

void TestTarnConfig::hostileFilesAreRefusedQuickly()
{
    QFETCH(QByteArray, content);
    writeFile(path(), content);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!TARN::checkTARNFile(path()));
    QVERIFY2(timer.elapsed() < 10000, "the effort has to grow with the size of the file only");
}

void TestTarnConfig::refusalLeavesUnusedPointersAlone()
{
    writeFile(path(), "broken");
    QVERIFY(TARN::readTARNConfigFromXml(path(), nullptr, nullptr).isEmpty());
    writeFile(path(), EmptyFile);
    QVERIFY(TARN::readTARNConfigFromXml(path(), nullptr, nullptr).isEmpty());
}

void TestTarnConfig::acceptanceWritesNoDebugLine()
{
    const Cores cores = sampleCores();
    QVERIFY(TARN::writeTARNConfigToXml(cores.list, path()));
    QVERIFY(TARN::checkTARNFile(path()));
    QCOMPARE(debugLines(), QStringList());
}

void TestTarnConfig::failedWriteSaysWhyOnTheDebugStream()
{
    Cores cores;
    cores.add(0)->module = QStringLiteral("a\x01");
    QVERIFY(!TARN::writeTARNConfigToXml(cores.list, path()));
    QCOMPARE(debugLines(),
             QStringList{QStringLiteral("Can not write %1: XML cannot represent the text \"a\x01\"")
                             .arg(path())});
}

TARN_TEST_MAIN(TestTarnConfig)
#include "tst_tarnconfig.moc"
