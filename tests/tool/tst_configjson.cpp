// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "toolrun.h"

#include <model/configsamples.h>
#include <support/files.h>
#include <support/setting.h>
#include <support/testcase.h>

#include <model/configwriter.h>
#include <tool/config/configjson.h>
#include <tool/configfile.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <nlohmann/json.hpp>

#include <iterator>
#include <string>

using nlohmann::ordered_json;
using TARN::SignalItem;
using TarnTest::readFile;
using Tool::OwnedCores;

namespace {

QByteArray fileOf(const QList<TARN::TarnCore *> &cores)
{
    return TARN::ConfigWriter(cores).content();
}

/// The file that @p json is; the error when it is refused.
QByteArray fileOf(const QByteArray &json)
{
    OwnedCores cores;
    QString error;
    return Tool::configFromJson(json, &cores, &error) ? fileOf(cores.list()) : error.toUtf8();
}

/// Why @p json is refused; empty when it is not.
QString refusalOf(const QByteArray &json)
{
    OwnedCores cores;
    QString error;
    return Tool::configFromJson(json, &cores, &error) ? QString() : error;
}

QByteArray toBytes(const ordered_json &document, int indent = -1, bool asciiOnly = false)
{
    return QByteArray::fromStdString(document.dump(indent, ' ', asciiOnly));
}

/// A document with one Probe In port that holds @p content as its only signal, on line 1.
QByteArray withSignal(const QByteArray &content)
{
    return R"({"version":"1.0","cores":[{"index":0,"probeIns":[{"index":0,"signals":[)" + content +
           "]}]}]}";
}

/// A document with @p content as the only core.
QByteArray withCore(const QByteArray &content)
{
    return R"({"version":"1.0","cores":[)" + content + "]}";
}

/// Pieces that turn one meaning into another when they land in the right place.
const QList<QByteArray> Pieces = {"{",
                                  "}",
                                  "[",
                                  "]",
                                  "\"",
                                  "\\",
                                  ",",
                                  ":",
                                  " ",
                                  "\n",
                                  "\t",
                                  "-",
                                  "0",
                                  "9",
                                  ".0",
                                  "e1",
                                  "true",
                                  "false",
                                  "null",
                                  "\"net\"",
                                  "\"bus\"",
                                  "\"kind\": \"net\", ",
                                  "\"enabled\": true, ",
                                  "\"members\": [], ",
                                  "\"signals\": [], ",
                                  "\\n",
                                  "\\u0041",
                                  "\\ud83d\\ude00",
                                  "\\ud83d",
                                  "\\u0000",
                                  QByteArray(1, '\0'),
                                  "\xff",
                                  "\xc3\xa4",
                                  "\xef\xbb\xbf",
                                  "\xed\xa0\xbd"};

/// Puts a piece in front of the next text, where most pieces are allowed: so documents that are
/// accepted are as common as refused ones.
void changeText(QByteArray *json, int from, QRandomGenerator *random)
{
    const QByteArray start = "\": \"";
    const int position = json->indexOf(start, from);
    if (position >= 0)
        json->insert(position + start.size(), Pieces.at(random->bounded(Pieces.size())));
}

/// Changes bytes of @p json at a few places.
QByteArray jsonMutant(QByteArray json, QRandomGenerator *random)
{
    for (int i = random->bounded(1, 3); i > 0 && !json.isEmpty(); --i) {
        const int from = random->bounded(json.size());
        const int size = qMin(random->bounded(1, 60), json.size() - from);
        switch (random->bounded(8)) {
        case 0:
            json[from] = char(random->bounded(256));
            break;
        case 1:
            json.remove(from, size);
            break;
        case 2:
            json.insert(random->bounded(json.size()), json.mid(from, size));
            break;
        case 3:
            json.insert(from, Pieces.at(random->bounded(Pieces.size())));
            break;
        default:
            changeText(&json, from, random);
            break;
        }
    }
    return json;
}

/// All values of @p document, in it, itself included.
QVector<ordered_json *> placesOf(ordered_json *document)
{
    QVector<ordered_json *> places = {document};
    for (int i = 0; i < places.size(); ++i) {
        if (!places.at(i)->is_structured())
            continue;
        for (ordered_json &value : *places.at(i))
            places.append(&value);
    }
    return places;
}

/// A value that is right in some places.
ordered_json randomValue(QRandomGenerator *random)
{
    static const QVector<ordered_json> values = {
        nullptr,
        true,
        false,
        0,
        -1,
        2147483647,
        2147483648,
        -2147483648,
        -2147483649,
        18446744073709551615U,
        0.5,
        "",
        "net",
        "bus",
        "Net",
        "1.0",
        "1.1",
        "true",
        "0",
        "0x1F",
        "\u0001",
        std::string("a\0", 2),
        "a\n",
        "\x0b\n",
        "\u007f\u0085",
        "\ufffe",
        "\uffff\n",
        "\U0001ffff",
        "\ufeff",
        ordered_json::array(),
        ordered_json::array({0}),
        ordered_json::array({ordered_json::object({{"index", 0}})}),
        ordered_json::array({ordered_json::object({{"name", "a"}})}),
        ordered_json::object(),
        ordered_json::object({{"index", 3}}),
        ordered_json::object({{"name", "b"}}),
    };
    return values.at(random->bounded(values.size()));
}

std::string randomKey(QRandomGenerator *random)
{
    static const QVector<std::string> keys = {
        "version",       "cores",       "index",     "module",       "userClock",
        "syncUserClock", "probeIns",    "probeOuts", "initialValue", "signals",
        "name",          "displayName", "kind",      "enabled",      "usable",
        "members",       "Index",       "",          "kind ",        "$schema"};
    return keys.at(random->bounded(keys.size()));
}

/// Changes @p value, or what it holds.
void changePlace(ordered_json *value, QRandomGenerator *random)
{
    if (value->is_object() && random->bounded(4) != 0) {
        if (value->empty() || random->bounded(2) == 0)
            (*value)[randomKey(random)] = randomValue(random);
        else
            value->erase(std::next(value->begin(), random->bounded(int(value->size()))));
    } else if (value->is_array() && random->bounded(4) != 0) {
        value->push_back(randomValue(random));
    } else {
        *value = randomValue(random);
    }
}

/// A signal with members inside members, @p levels below the signal itself.
QByteArray nestedSignal(int levels)
{
    return QByteArray(R"({"name":"a","members":[)").repeated(levels) + R"({"name":"a"})" +
           QByteArray("]}").repeated(levels);
}

} // namespace

class TestConfigJson : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void layoutIsFixed();
    void documentShowsTheFormOfItsFile();
    void randomConfigurationsComeBack();
    void membersNestToTheLimit();
    void otherLayoutsAreRead_data();
    void otherLayoutsAreRead();
    void anyTextOfTheFileComesBack_data();
    void anyTextOfTheFileComesBack();
    void refusalsSayWhatAndWhere_data();
    void refusalsSayWhatAndWhere();
    void refusalLeavesCoresAlone();
    void everyTruncationIsRefused();
    void mutantsAreRefusedOrComeBack_data();
    void mutantsAreRefusedOrComeBack();
    void schemaAndReaderAgree();
    void readerRefusesWhatTheSchemaCannotSay_data();
    void readerRefusesWhatTheSchemaCannotSay();
    void hostileDocumentsAreRefusedQuickly_data();
    void hostileDocumentsAreRefusedQuickly();

private:
    static QList<bool> schemaVerdicts(const QList<QByteArray> &documents);
};

void TestConfigJson::layoutIsFixed()
{
    const QByteArray expected = R"({
    "version": "1.0",
    "cores": [
        {
            "index": 0,
            "module": "top",
            "userClock": "top/clk",
            "syncUserClock": true,
            "probeIns": [
                { "index": 0, "signals": [
                    { "name": "top/u0/data[1:0]", "kind": "bus", "members": [
                        { "name": "top/u0/data[1]", "kind": "bus" },
                        { "name": "top/u0/data[0]", "kind": "bus" }
                    ] },
                    { "name": "top/valid", "kind": "net" }
                ] },
                { "index": 1, "signals": [] }
            ],
            "probeOuts": [
                { "index": 0, "initialValue": "0x1F", "signals": [
                    { "name": "top/cfg[1:0]", "displayName": "cfg", "kind": "bus", "usable": false, "members": [
                        { "name": "top/cfg[1]", "kind": "bus" },
                        { "name": "top/cfg[0]", "kind": "bus", "enabled": false }
                    ] },
                    { "name": "", "enabled": false, "usable": false }
                ] },
                { "index": 1, "initialValue": "", "signals": [] }
            ]
        },
        {
            "index": 7,
            "module": "",
            "userClock": "",
            "syncUserClock": false,
            "probeIns": [],
            "probeOuts": [
                { "index": 3, "initialValue": "", "signals": [
                    { "name": "top/en", "kind": "net" }
                ] }
            ]
        }
    ]
}
)";
    QCOMPARE(Tool::configToJson(sampleCores().list), expected);
    QCOMPARE(Tool::configToJson({}),
             QByteArray("{\n    \"version\": \"1.0\",\n    \"cores\": []\n}\n"));
}

/// The examples of both documents are the same configuration.
void TestConfigJson::documentShowsTheFormOfItsFile()
{
    const auto example = [](const QString &document, const QByteArray &language) {
        const QByteArray text = readFile(QStringLiteral(TARN_SOURCE_DIR "/docs/") + document);
        const int start = text.indexOf("```" + language + "\n") + language.size() + 4;
        return text.mid(start, text.indexOf("```", start) - start);
    };
    const QByteArray json = example(QStringLiteral("json-form.md"), "json");
    const QByteArray file = example(QStringLiteral("file-format.md"), "xml");
    QCOMPARE(fileOf(json), file);
    OwnedCores cores;
    QString error;
    QVERIFY(Tool::configFromJson(json, &cores, &error));
    QCOMPARE(Tool::configToJson(cores.list()), json);
    QCOMPARE(schemaVerdicts({json.simplified()}), QList<bool>{true});

    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("top.tarn"));
    TarnTest::writeFile(path, file);
    const QByteArray map = example(QStringLiteral("json-form.md"), "csv");
    QCOMPARE(TarnTest::runTool({"export", "map", path}).output.replace("\r\n", "\n"), map);
}

void TestConfigJson::randomConfigurationsComeBack()
{
    const quint32 seed = TarnTest::setting("TARN_SEED", 1);
    const quint32 runs = TarnTest::setting("TARN_RUNS", 3000);
    QRandomGenerator random(seed);
    int withMembers = 0;
    for (quint32 run = 0; run < runs; ++run) {
        const Cores cores = randomCores(&random);
        const QByteArray file = fileOf(cores.list);
        QVERIFY(!file.isNull());
        const QByteArray json = Tool::configToJson(cores.list);
        const QByteArray place =
            "seed " + QByteArray::number(seed) + ", run " + QByteArray::number(run) + '\n' + json;
        OwnedCores copy;
        QString error;
        QVERIFY2(Tool::configFromJson(json, &copy, &error), qPrintable(error + place));
        QVERIFY2(coresText(copy.list()) == coresText(cores.list), place.constData());
        QVERIFY2(fileOf(copy.list()) == file, place.constData());
        QVERIFY2(Tool::configToJson(copy.list()) == json, place.constData());
        // The same values in other layouts, by another writer.
        const ordered_json document = ordered_json::parse(json.toStdString());
        QVERIFY2(fileOf(toBytes(document, 1, true)) == file, place.constData());
        const nlohmann::json sorted = nlohmann::json::parse(json.toStdString());
        QVERIFY2(fileOf(QByteArray::fromStdString(sorted.dump())) == file, place.constData());
        withMembers += json.contains("\"members\"") ? 1 : 0;
    }
    QVERIFY(runs < 1000 || withMembers > int(runs) / 10);
}

void TestConfigJson::membersNestToTheLimit()
{
    const QByteArray deepest = withSignal(nestedSignal(12));
    OwnedCores cores;
    QString error;
    QVERIFY2(Tool::configFromJson(deepest, &cores, &error), qPrintable(error));
    QVERIFY(!fileOf(cores.list()).isNull());
    QCOMPARE(fileOf(Tool::configToJson(cores.list())), fileOf(cores.list()));

    const QString pointer = "/cores/0/probeIns/0/signals/0" + QString("/members/0").repeated(13);
    QCOMPARE(refusalOf(withSignal(nestedSignal(13))),
             QString("Line 1, " + pointer +
                     ": Members are nested deeper than 12 levels. Remove the "
                     "inner ones."));
    QVERIFY(Tool::configFromJson(
        withSignal(nestedSignal(12).replace(R"({"name":"a"})", R"({"name":"a","members":[]})")),
        &cores, &error));
}

void TestConfigJson::otherLayoutsAreRead_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("text");
    const QString core = "core 5 \"\" clock \"\" sync 0";
    QTest::newRow("nothing but the version") << QByteArray(R"({"version":"1.0"})") << "";
    QTest::newRow("version behind the cores")
        << QByteArray(R"({"cores":[{"index":5}],"version":"1.0"})") << core;
    QTest::newRow("byte order mark") << "\xef\xbb\xbf" + withCore(R"({"index":5})") << core;
    QTest::newRow("white space") << " \r\n\t" + withCore(" \r\n\t{ \"index\"\r\n: 5\t} ") + "\n\n"
                                 << core;
    QTest::newRow("defaults spelled out")
        << withCore(
               R"({"index":5,"module":"","userClock":"","syncUserClock":false,"probeIns":[],"probeOuts":[]})")
        << core;
    QTest::newRow("minus zero") << withCore(R"({"index":-0})") << QString(core).replace('5', '0');
    QTest::newRow("escapes in a key")
        << withCore(R"({"\u0069ndex":5,"\u006dodule":"\u0041\/\"\\\ud83d\ude00"})")
        << QString::fromUtf8("core 5 \"A/\"\\\xf0\x9f\x98\x80\" clock \"\" sync 0");
    QTest::newRow("defaults of signals spelled out")
        << withSignal(R"({"usable":true,"members":[],"enabled":true,"displayName":"","name":"a"})")
        << "core 0 \"\" clock \"\" sync 0\n in 0\n  \"a\" \"\" enabled 1 usable 1 kind -1";
    QTest::newRow("Probe Out before Probe In")
        << withCore(
               R"({"probeOuts":[{"signals":[{"name":"a"}],"initialValue":"x","index":2}],"probeIns":[{"index":1}],"index":0})")
        << "core 0 \"\" clock \"\" sync 0\n in 1\n out 2 \"x\"\n"
           "  \"a\" \"\" enabled 1 usable 1 kind -1";
}

void TestConfigJson::otherLayoutsAreRead()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, text);
    OwnedCores cores;
    QString error;
    QVERIFY2(Tool::configFromJson(json, &cores, &error), qPrintable(error));
    QCOMPARE(coresText(cores.list()), text);
}

void TestConfigJson::anyTextOfTheFileComesBack_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("white space") << " \t\n\r ";
    QTest::newRow("quotes and backslashes") << "\"\\\"\\\\u0041\\n/\\/";
    QTest::newRow("byte order marks") << QString(2, QChar(0xfeff)) + "a" + QChar(0xfeff);
    QTest::newRow("beyond the basic plane")
        << QString::fromUtf8("\xf0\x9f\x98\x80\xf4\x8f\xbf\xbd");
    QTest::newRow("last characters") << QString(QChar(0xfffd)) + QChar(0xe000) + QChar(0xd7ff);
    QTest::newRow("controls that XML allows") << QString::fromUtf8("\x7f\xc2\x80\xc2\x85\xc2\x9f");
    QTest::newRow("very long") << QString(1000000, QLatin1Char('"'));
}

void TestConfigJson::anyTextOfTheFileComesBack()
{
    QFETCH(QString, text);
    Cores cores = sampleCores();
    cores.list.first()->module = text;
    cores.list.first()->userClock = text;
    cores.list.first()->probeOuts.first()->initialValue = text;
    SignalItem &item = cores.list.first()->probeIns.first()->signals.first();
    item.name = text;
    item.displayName = text;
    item.members.first().name = text;
    OwnedCores copy;
    QString error;
    QVERIFY2(Tool::configFromJson(Tool::configToJson(cores.list), &copy, &error),
             qPrintable(error));
    QVERIFY(coresText(copy.list()) == coresText(cores.list));
}

void TestConfigJson::refusalsSayWhatAndWhere_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("refusal");
    const auto row = [](const char *name, const QByteArray &json, const QByteArray &refusal) {
        QTest::newRow(name) << json << QString::fromUtf8(refusal);
    };
    const QByteArray version = R"({"version":"1.0",)";

    // No JSON, or not in UTF-8.
    const QByteArray malformed = "Not well-formed JSON: syntax error while parsing ";
    row("empty", "",
        "Line 1, column 1: " + malformed +
            "value - unexpected end of input; expected '[', '{', or a literal. "
            "Correct it.");
    row("cut off", "{\n  \"version\": \"1.0\"",
        "Line 2, column 19: " + malformed +
            "object - unexpected end of input; expected '}'. Correct it.");
    row("comma at the end", "{\n\"cores\": [],\n}",
        "Line 3, column 1: " + malformed +
            "object key - unexpected '}'; expected string literal. Correct it.");
    row("something behind the end", R"({"version":"1.0"} x)",
        "Line 1, column 19: " + malformed +
            "value - invalid literal; expected end of input. Correct it.");
    row("comment", "// a\n{}",
        "Line 1, column 1: " + malformed + "value - invalid literal. Correct it.");
    row("apostrophes", "{'version':'1.0'}",
        "Line 1, column 2: " + malformed +
            "object key - invalid literal; expected string literal. Correct it.");
    row("column behind other characters", withCore("\n{\"module\":\"\xc3\xa4\xf0\x9f\x98\x80\" x"),
        "Line 2, column 16: " + malformed + "object - invalid literal; expected '}'. Correct it.");
    row("leading zero", withCore(R"({"index":01})"),
        "Line 1, column 37: " + malformed +
            "object - unexpected number literal; expected '}'. Correct it.");
    row("line feed in a text", withCore("{\"module\":\"a\nb\",\"index\":0}"),
        "Line 1, column 39: Not well-formed JSON: syntax error while parsing value - invalid "
        "string: control character U+000A (LF) must be escaped to \\u000A or \\n. Correct it.");
    row("half a surrogate pair", withCore(R"({"module":"\ud800"})"),
        "Line 1, column 44: Not well-formed JSON: syntax error while parsing value - invalid "
        "string: surrogate U+D800..U+DBFF must be followed by U+DC00..U+DFFF. Correct it.");
    row("Latin-1", withCore("{\"module\":\"\xe4\"}"),
        "Line 1, column 39: The text is not encoded in UTF-8. Convert it.");
    row("surrogate in UTF-8", withCore("{\"module\":\"\xed\xa0\xbd\"}"),
        "Line 1, column 39: The text is not encoded in UTF-8. Convert it.");
    row("UTF-16", QByteArray("\xff\xfe{\0", 4),
        "Line 1, column 1: The text is not encoded in UTF-8. Convert it.");
    row("UTF-16 without a mark", QByteArray("{\0", 2),
        "Line 1, column 1: The text is not encoded in UTF-8. Convert it.");
    row("half a byte order mark", "\xef\xbb{}",
        "Line 1, column 2: Not well-formed JSON: syntax error while parsing value - invalid BOM; "
        "must be 0xEF 0xBB 0xBF if given. Correct it.");
    row("null character", QByteArray("{\"version\":\n\"1.0\"}\n\0", 21),
        "Line 3, column 1: Not well-formed JSON: null character. Remove it.");

    // Other values than the form knows.
    row("list", "[]", "Line 1: The value is a list. Allowed: an object in { }.");
    row("text", R"("1.0")", "Line 1: The value is the text \"1.0\". Allowed: an object in { }.");
    row("no version", "{}", "Line 1: The configuration has no key \"version\". Add it.");
    row("no version, on three lines", "{\n\"cores\":[]\n}",
        "Line 1: The configuration has no key \"version\". Add it.");
    row("newer version", R"({"version":"1.1"})",
        "Line 1, /version: The form has the newer version \"1.1\"; versions up to \"1.0\" can be "
        "read. Use a newer release of this program.");
    row("unknown version", R"({"version":"one"})",
        "Line 1, /version: The form has the unknown version \"one\" instead of \"1.0\". Correct "
        "it.");
    row("number as a version", R"({"version":1.0})",
        "Line 1, /version: The value is the number 1.0. Allowed: the text \"1.0\".");
    row("unknown key", version + "\n\"core\":[]}",
        "Line 2: The key \"core\" is not known in this place. Remove it. Known: \"version\", "
        "\"cores\".");
    row("unknown long key", "{\"" + QByteArray(100, 'k') + "\":[]}",
        "Line 1: The key \"kkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkk...\" is "
        "not known in this place. Remove it. Known: \"version\", \"cores\".");
    row("key in other letter case", withCore(R"({"Index":0})"),
        "Line 1, /cores/0: The key \"Index\" is not known in this place. Remove it. Known: "
        "\"index\", \"module\", \"userClock\", \"syncUserClock\", \"probeIns\", \"probeOuts\".");
    row("repeated key", withCore("{\"index\":0,\n\"index\":0}"),
        "Line 2, /cores/0/index: The key \"index\" occurs twice. Remove one.");
    row("repeated key, escaped", withCore(R"({"index":0,"\u0069ndex":0})"),
        "Line 1, /cores/0/index: The key \"index\" occurs twice. Remove one.");
    row("no object in a list", withCore("1"),
        "Line 1, /cores/0: The value is the number 1. Allowed: an object in { }.");
    row("list in a list", withCore("{\"index\":0},[]"),
        "Line 1, /cores/1: The value is a list. Allowed: an object in { }.");
    row("object for a list", version + R"("cores":{}})",
        "Line 1, /cores: The value is an object. Allowed: a list in [ ].");
    row("null for a list", version + R"("cores":null})",
        "Line 1, /cores: The value is null. Allowed: a list in [ ].");
    row("object for a text", withCore(R"({"module":{}})"),
        "Line 1, /cores/0/module: The value is an object. Allowed: a text in quotes.");
    row("list for a text", withCore(R"({"module":[]})"),
        "Line 1, /cores/0/module: The value is a list. Allowed: a text in quotes.");
    row("null for a text", withCore(R"({"index":0,"module":null})"),
        "Line 1, /cores/0/module: The value is null. Allowed: a text in quotes.");
    row("number for a text", withCore(R"({"index":0,"module":-7})"),
        "Line 1, /cores/0/module: The value is the number -7. Allowed: a text in quotes.");
    row("no index", withCore("\n{\n\"module\":\"\"\n}"),
        "Line 2, /cores/0: The core has no key \"index\". Add it.");
    row("text for a number", withCore(R"({"index":"0"})"),
        "Line 1, /cores/0/index: The value is the text \"0\". Allowed: a whole number from "
        "-2147483648 to 2147483647, without fraction or exponent.");
    row("fraction", withCore("{\"index\":1.0\n}"),
        "Line 1, /cores/0/index: The value is the number 1.0. Allowed: a whole number from "
        "-2147483648 to 2147483647, without fraction or exponent.");
    row("exponent", withCore(R"({"index":1e0})"),
        "Line 1, /cores/0/index: The value is the number 1e0. Allowed: a whole number from "
        "-2147483648 to 2147483647, without fraction or exponent.");
    row("too large", withCore(R"({"index":2147483648})"),
        "Line 1, /cores/0/index: The value is the number 2147483648. Allowed: a whole number from "
        "-2147483648 to 2147483647, without fraction or exponent.");
    row("too small", withCore(R"({"index":-2147483649})"),
        "Line 1, /cores/0/index: The value is the number -2147483649. Allowed: a whole number from "
        "-2147483648 to 2147483647, without fraction or exponent.");
    row("of 64 bits", withCore(R"({"index":18446744073709551615})"),
        "Line 1, /cores/0/index: The value is the number 18446744073709551615. Allowed: a whole "
        "number from -2147483648 to 2147483647, without fraction or exponent.");
    row("of more bits", withCore(R"({"index":-18446744073709551616})"),
        "Line 1, /cores/0/index: The value is the number -18446744073709551616. Allowed: a whole "
        "number from -2147483648 to 2147483647, without fraction or exponent.");
    row("infinite", withCore(R"({"index":1e999})"),
        "Line 1, /cores/0/index: The value is the number 1e999. Allowed: a whole number from "
        "-2147483648 to 2147483647, without fraction or exponent.");
    row("flag in quotes", withCore(R"({"index":0,"syncUserClock":"true"})"),
        "Line 1, /cores/0/syncUserClock: The value is the text \"true\". Allowed: true, false.");
    row("number for a flag", withCore(R"({"index":0,"syncUserClock":1})"),
        "Line 1, /cores/0/syncUserClock: The value is the number 1. Allowed: true, false.");
    row("control character", withCore("{\"index\":0},{\"index\":1,\"userClock\":\"a\\u001b[31m\"}"),
        "Line 1, /cores/1/userClock: The text \"a\\x1b[31m\" has a control character or another "
        "one that the file cannot hold. Remove it.");
    row("last character", withCore(R"({"index":0,"userClock":"\uffff"})"),
        "Line 1, /cores/0/userClock: The text \"\xef\xbf\xbf\" has a control character or another "
        "one that the file cannot hold. Remove it.");
    row("initial value of a Probe In port",
        withCore(R"({"index":0,"probeIns":[{"index":0,"initialValue":""}]})"),
        "Line 1, /cores/0/probeIns/0: The key \"initialValue\" is not known in this place. Remove "
        "it. Known: \"index\", \"signals\".");
    row("number as an initial value",
        withCore(R"({"index":0,"probeOuts":[{"index":0},{"index":1,"initialValue":31}]})"),
        "Line 1, /cores/0/probeOuts/1/initialValue: The value is the number 31. Allowed: a text in "
        "quotes.");
    row("port without index", withCore(R"({"index":0,"probeOuts":[{"initialValue":""}]})"),
        "Line 1, /cores/0/probeOuts/0: The Probe Out port has no key \"index\". Add it.");
    row("port in without index", withCore(R"({"index":0,"probeIns":[{"signals":[]}]})"),
        "Line 1, /cores/0/probeIns/0: The Probe In port has no key \"index\". Add it.");
    row("signal without name", withSignal("{\"kind\":\"net\"}"),
        "Line 1, /cores/0/probeIns/0/signals/0: The signal has no key \"name\". Add it.");
    row("unknown kind", withSignal("{\"name\":\"a\"},\n{\"name\":\"b\",\"kind\":\"Net\"}"),
        "Line 2, /cores/0/probeIns/0/signals/1/kind: The value is the text \"Net\". Allowed: "
        "\"net\", \"bus\".");
    row("null as a kind", withSignal(R"({"name":"a","kind":null})"),
        "Line 1, /cores/0/probeIns/0/signals/0/kind: The value is null. Allowed: \"net\", "
        "\"bus\".");
    row("net as a text", withSignal(R"("top/a")"),
        "Line 1, /cores/0/probeIns/0/signals/0: The value is the text \"top/a\". Allowed: an "
        "object in { }.");
    row("flag of a member",
        withSignal(R"({"name":"a","members":[{"name":"b"},{"name":"c","enabled":0}]})"),
        "Line 1, /cores/0/probeIns/0/signals/0/members/1/enabled: The value is the number 0. "
        "Allowed: true, false.");
    row("text with percent marks", withSignal(R"({"name":"a","kind":"%1 %2 %3"})"),
        "Line 1, /cores/0/probeIns/0/signals/0/kind: The value is the text \"%1 %2 %3\". Allowed: "
        "\"net\", \"bus\".");
}

void TestConfigJson::refusalsSayWhatAndWhere()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, refusal);
    QCOMPARE(refusalOf(json), refusal);
}

void TestConfigJson::refusalLeavesCoresAlone()
{
    OwnedCores cores;
    QString error;
    const QByteArray json = Tool::configToJson(sampleCores().list);
    QVERIFY(Tool::configFromJson(json, &cores, &error));
    QVERIFY(!Tool::configFromJson(json.left(json.size() / 2), &cores, &error));
    QCOMPARE(Tool::configToJson(cores.list()), json);
}

void TestConfigJson::everyTruncationIsRefused()
{
    const QByteArray json = Tool::configToJson(sampleCores().list).trimmed();
    for (int size = 0; size < json.size(); ++size)
        QVERIFY2(refusalOf(json.left(size)).startsWith("Line "), json.left(size).constData());
}

void TestConfigJson::mutantsAreRefusedOrComeBack_data()
{
    QTest::addColumn<quint32>("seed");
    const quint32 first = TarnTest::setting("TARN_SEED", 1);
    for (quint32 seed = first; seed < first + 4; ++seed)
        QTest::newRow(QByteArray::number(seed).constData()) << seed;
}

/// Changes bytes of a document.
void TestConfigJson::mutantsAreRefusedOrComeBack()
{
    QFETCH(quint32, seed);
    const quint32 runs = TarnTest::setting("TARN_RUNS", 4000) / 4;
    QRandomGenerator random(seed);
    const QByteArray original = Tool::configToJson(sampleCores().list);
    quint32 accepted = 0;
    for (quint32 run = 0; run < runs; ++run) {
        const QByteArray json = jsonMutant(original, &random);
        OwnedCores cores;
        QString error;
        if (!Tool::configFromJson(json, &cores, &error)) {
            QVERIFY2(error.startsWith("Line "), json.constData());
            continue;
        }
        ++accepted;
        const QByteArray file = fileOf(cores.list());
        QVERIFY2(!file.isNull(), json.constData());
        QVERIFY2(fileOf(Tool::configToJson(cores.list())) == file, json.constData());
        // Nothing of an accepted document is lost: by another reader and writer it is the same.
        const ordered_json document = ordered_json::parse(json.toStdString(), nullptr, false);
        QVERIFY2(!document.is_discarded(), json.constData());
        QVERIFY2(fileOf(toBytes(document)) == file, json.constData());
    }
    QVERIFY2(accepted > runs / 10 && accepted < runs / 2, qPrintable(QString::number(accepted)));
}

/// The verdict of the schema on each document, which is on one line.
QList<bool> TestConfigJson::schemaVerdicts(const QList<QByteArray> &documents)
{
    QProcess process;
    process.start(QStringLiteral(TARN_PYTHON),
                  {QStringLiteral(TARN_SOURCE_DIR "/tests/tool/schemaverdicts.py"),
                   QStringLiteral(TARN_SOURCE_DIR "/tool/tarn-config.schema.json")});
    for (const QByteArray &document : documents)
        process.write(document + '\n');
    process.closeWriteChannel();
    QList<bool> verdicts;
    if (!process.waitForFinished(100000) || process.exitCode() != 0)
        return verdicts;
    for (const QByteArray &line : process.readAllStandardOutput().split('\n')) {
        if (!line.isEmpty())
            verdicts.append(line == "valid");
    }
    return verdicts;
}

/// Changes values and keys of documents.
void TestConfigJson::schemaAndReaderAgree()
{
    const quint32 seed = TarnTest::setting("TARN_SEED", 1);
    const quint32 runs = TarnTest::setting("TARN_RUNS", 3000);
    QRandomGenerator random(seed);
    QList<QByteArray> documents;
    for (quint32 run = 0; run < runs; ++run) {
        const QByteArray json = Tool::configToJson(randomCores(&random).list);
        ordered_json document = ordered_json::parse(json.toStdString());
        const QVector<ordered_json *> places = placesOf(&document);
        changePlace(places.at(random.bounded(places.size())), &random);
        documents.append(toBytes(document));
    }
    const QList<bool> verdicts = schemaVerdicts(documents);
    QCOMPARE(verdicts.size(), documents.size());
    for (int i = 0; i < documents.size(); ++i) {
        const QString refusal = refusalOf(documents.at(i));
        QVERIFY2(
            verdicts.at(i) == refusal.isEmpty(),
            qPrintable(QStringLiteral("seed %1: ").arg(seed) + refusal + '\n' + documents.at(i)));
    }
    // The program says the same.
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tarn"));
    for (int i = 0; i < qMin(40, documents.size()); ++i) {
        QFile::remove(path);
        const TarnTest::ToolRun run =
            TarnTest::runTool({"write", path}, {{}, documents.at(i), {}, {}, {}});
        QCOMPARE(run.exitCode, verdicts.at(i) ? 0 : 2);
        QCOMPARE(QFile::exists(path), verdicts.at(i));
    }
    const int accepted = verdicts.count(true);
    QVERIFY2(accepted > documents.size() / 10 && accepted < documents.size() * 9 / 10,
             qPrintable(QString::number(accepted)));
}

void TestConfigJson::readerRefusesWhatTheSchemaCannotSay_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("fraction of a whole number") << withCore(R"({"index":1.0})");
    QTest::newRow("exponent of a whole number") << withCore(R"({"index":1e2})");
    QTest::newRow("repeated key") << withCore(R"({"index":0,"index":0})");
    QTest::newRow("deep nesting") << withSignal(nestedSignal(13));
    QTest::newRow("half a surrogate pair") << withCore(R"({"index":0,"module":"\ud800"})");
}

void TestConfigJson::readerRefusesWhatTheSchemaCannotSay()
{
    QFETCH(QByteArray, json);
    QCOMPARE(schemaVerdicts({json}), QList<bool>{true});
    QVERIFY(!refusalOf(json).isEmpty());
}

void TestConfigJson::hostileDocumentsAreRefusedQuickly_data()
{
    QTest::addColumn<QByteArray>("json");
    constexpr int Many = 3000000;
    QTest::newRow("open lists") << QByteArray(Many, '[');
    QTest::newRow("open objects") << QByteArray(R"({"cores":[)").repeated(Many / 10);
    QTest::newRow("nesting") << withSignal(nestedSignal(Many / 20));
    QTest::newRow("digits") << withCore("{\"index\":" + QByteArray(Many, '1') + "}");
    QTest::newRow("fraction") << withCore("{\"index\":0." + QByteArray(Many, '1') + "}");
    QTest::newRow("text without an end") << withCore("{\"module\":\"" + QByteArray(Many, 'a'));
    QTest::newRow("unknown key") << withCore("{\"" + QByteArray(Many, 'a') + "\":0}");
    QTest::newRow("control characters in a key")
        << withCore("{\"" + QByteArray("\\u0001").repeated(Many / 6) + "\":0}");
    QTest::newRow("white space") << QByteArray(Many, '\n') + "x";
    QTest::newRow("many cores, and a mistake at the end")
        << withCore(QByteArray("{\"index\":0},\n").repeated(Many / 13) + "{}");
}

void TestConfigJson::hostileDocumentsAreRefusedQuickly()
{
    QFETCH(QByteArray, json);
    QElapsedTimer timer;
    timer.start();
    const QString refusal = refusalOf(json);
    QVERIFY2(refusal.startsWith("Line "), qPrintable(refusal.left(1000)));
    QVERIFY2(refusal.size() < 500, qPrintable(QString::number(refusal.size())));
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
}

TARN_TEST_MAIN(TestConfigJson)
#include "tst_configjson.moc"
