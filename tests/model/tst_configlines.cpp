// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configsamples.h"

#include <model/configlines.h>
#include <model/configreader.h>
#include <model/tarnconfig.h>
#include <support/files.h>
#include <support/setting.h>
#include <support/testcase.h>

#include <QApplication>
#include <QBuffer>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

using TARN::ConfigLines;

namespace {

constexpr TARN::ProbeType Types[] = {TARN::ProbeTypeIn, TARN::ProbeTypeOut};

const QList<TARN::SignalItem> &signalsOf(const TARN::TarnCore &core, TARN::ProbeType type, int port)
{
    return type == TARN::ProbeTypeOut ? core.probeOuts.at(port)->signals
                                      : core.probeIns.at(port)->signals;
}

/// "1 Core, 2 In0, 3 In0.0, ...": the line and the name of each place that the cores have.
QStringList linesOf(const ConfigLines &lines, const QList<TARN::TarnCore *> &cores)
{
    QStringList texts;
    for (int core = 0; core < cores.size(); ++core) {
        const auto add = [&](const QString &name, TARN::ProbeType type, int port, int signal,
                             int bit) {
            texts += QString("%1 %2").arg(lines.lineOf(core, type, port, signal, bit)).arg(name);
        };
        add(QString::number(core), TARN::ProbeTypeIn, -1, -1, -1);
        for (TARN::ProbeType type : Types) {
            const TARN::TarnCore &content = *cores.at(core);
            const int count =
                type == TARN::ProbeTypeOut ? content.probeOuts.size() : content.probeIns.size();
            for (int port = 0; port < count; ++port) {
                const QString name = QString(type == TARN::ProbeTypeOut ? "%1.Out%2" : "%1.In%2")
                                         .arg(core)
                                         .arg(port);
                add(name, type, port, -1, -1);
                const QList<TARN::SignalItem> &items = signalsOf(content, type, port);
                for (int signal = 0; signal < items.size(); ++signal) {
                    add(name + QString(".%1").arg(signal), type, port, signal, -1);
                    for (int bit = 0; bit < items.at(signal).members.size(); ++bit)
                        add(name + QString(".%1.%2").arg(signal).arg(bit), type, port, signal, bit);
                }
            }
        }
    }
    return texts;
}

/// The places of the document @p text in its order of Probe In before Probe Out ports, by searching
/// the text for the beginnings of tags. Comments must not contain any.
QStringList searchedLines(const QByteArray &text)
{
    QStringList core;
    QStringList ins;
    QStringList outs;
    QStringList all;
    QStringList *ports = &ins;
    int line = 1;
    int cores = 0;
    int signal = 0;
    int bit = 0;
    int depth = 0; // Of members.
    QString port;
    for (int i = 0; i < text.size(); ++i) {
        const auto begins = [&](const char *what) {
            return text.mid(i, int(qstrlen(what))) == what;
        };
        if (text[i] == '\n' ? i == 0 || text[i - 1] != '\r' : text[i] == '\r')
            ++line;
        if (begins("<Core")) {
            all += core + ins + outs;
            ins.clear();
            outs.clear();
            core = QStringList(QString("%1 %2").arg(line).arg(cores++));
        } else if (begins("<Probe")) {
            ports = begins("<ProbeOut") ? &outs : &ins;
            const int number = ports->filter(QRegExp("(In|Out)\\d+$")).size();
            port = QString(begins("<ProbeOut") ? "%1.Out%2" : "%1.In%2").arg(cores - 1).arg(number);
            *ports += QString("%1 %2").arg(line).arg(port);
            signal = 0;
        } else if (begins("<Signal")) {
            *ports += QString("%1 %2.%3").arg(line).arg(port).arg(signal++);
            bit = 0;
        } else if (begins("<Member")) {
            if (depth == 0)
                *ports += QString("%1 %2.%3.%4").arg(line).arg(port).arg(signal - 1).arg(bit++);
            depth += text[text.indexOf('>', i) - 1] == '/' ? 0 : 1;
        } else if (begins("</Member")) {
            --depth;
        }
    }
    return all + core + ins + outs;
}

/// Documents in layouts that no editor of ours writes.
class RandomLayout
{
public:
    explicit RandomLayout(quint32 seed)
        : m_random(seed)
    {
    }

    QByteArray document()
    {
        QByteArray text;
        if (chance(50))
            text += "<?xml version=\"1.0\"?>";
        text += gap() + "<TARN_CONFIG>" + gap() + "<Version>1.0</Version>" + gap();
        for (int count = below(4); count > 0; --count)
            text += element("Core", "index='1'", cores());
        return text + "</TARN_CONFIG>" + gap();
    }

private:
    int below(int limit) { return m_random.bounded(limit); }
    bool chance(int percent) { return below(100) < percent; }

    QByteArray lineBreak()
    {
        static const QByteArrayList breaks{"\n", "\r\n", "\r"};
        return breaks.at(below(breaks.size()));
    }

    /// What may stand between elements.
    QByteArray gap()
    {
        QByteArray text;
        for (int count = below(4); count > 0; --count) {
            switch (below(6)) {
            case 0:
                text += "<!-- " + lineBreak() + " \"quoted\" -->";
                break;
            case 1:
                text += "<?note" + lineBreak() + "?>";
                break;
            case 2:
                text += QByteArray(below(chance(5) ? 40000 : 8), ' ');
                break;
            default:
                text += lineBreak();
            }
        }
        return text;
    }

    /// What must stand between attributes.
    QByteArray space() { return chance(70) ? QByteArray(" ") : lineBreak() + "\t"; }

    QByteArray element(const QByteArray &name, const QByteArray &attributes,
                       const QByteArray &content)
    {
        const QByteArray start = '<' + name + space() + attributes + (chance(20) ? space() : "");
        if (content.isEmpty() && chance(70))
            return start + "/>" + gap();
        return start + '>' + gap() + content + "</" + name + (chance(10) ? space() : "") + '>' +
               gap();
    }

    QByteArray cores()
    {
        QByteArray ports;
        for (int count = below(5); count > 0; --count) {
            const bool out = chance(50);
            ports += element(out ? "ProbeOut" : "ProbeIn",
                             "index=\"0\"" + (out ? space() + "initialValue='0x0'" : ""), items());
        }
        return ports;
    }

    QByteArray items()
    {
        QByteArray text;
        for (int count = below(4); count > 0; --count)
            text += element("Signal", attributes(), members(0));
        return text;
    }

    QByteArray members(int depth)
    {
        QByteArray text;
        for (int count = depth > 3 ? 0 : below(depth > 0 ? 2 : 5); count > 0; --count)
            text += element("Member", attributes(), members(depth + 1));
        return text;
    }

    QByteArray attributes()
    {
        const QByteArray name = chance(20) ? "name='top/a" + lineBreak() + "b'" : "name='top/a'";
        return chance(50) ? name : "kind=\"net\"" + space() + name;
    }

    QRandomGenerator m_random;
};

} // namespace

class TestConfigLines : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void ownLayout();
    void foreignLayouts();
    void placesThatDoNotExist();
    void fileThatCannotBeRead();

private:
    Cores read(const QByteArray &content, ConfigLines *lines);

    QTemporaryDir m_folder;
    QString m_error;
};

Cores TestConfigLines::read(const QByteArray &content, ConfigLines *lines)
{
    const QString path = m_folder.filePath("a.tarn");
    TarnTest::writeFile(path, content);
    bool ok = false;
    Cores cores(TARN::readTARNConfigFromXml(path, &ok, &m_error, lines));
    if (ok != m_error.isEmpty())
        qFatal("The verdict and the message of the reader differ.");
    return cores;
}

void TestConfigLines::ownLayout()
{
    const QString path = m_folder.filePath("own.tarn");
    const Cores cores = sampleCores();
    QVERIFY(TARN::writeTARNConfigToXml(cores.list, path));
    ConfigLines lines;
    bool ok = false;
    const Cores back(TARN::readTARNConfigFromXml(path, &ok, &m_error, &lines));
    QVERIFY2(ok, qPrintable(m_error));
    const QStringList found = linesOf(lines, back.list);
    QCOMPARE(found, searchedLines(TarnTest::readFile(path)));
    QCOMPARE(found.first(), QString("4 0"));
}

void TestConfigLines::foreignLayouts()
{
    const quint32 seed = TarnTest::setting("TARN_SEED", 11);
    int places = 0;
    for (quint32 round = 0; round < TarnTest::setting("TARN_ROUNDS", 100); ++round) {
        const QByteArray text = RandomLayout(seed + round).document();
        ConfigLines lines;
        const Cores cores = read(text, &lines);
        QVERIFY2(m_error.isEmpty(), qPrintable(m_error + '\n' + text));
        const QStringList found = linesOf(lines, cores.list);
        if (found != searchedLines(text))
            qInfo("seed %u:\n%s", seed + round, text.constData());
        QCOMPARE(found, searchedLines(text));
        places += found.size();
    }
    QVERIFY(places > 1000);
}

void TestConfigLines::placesThatDoNotExist()
{
    ConfigLines lines;
    const Cores cores = read("<TARN_CONFIG><Version>1.0</Version>\n<Core index='0'>\n"
                             "<ProbeIn index='0'>\n<Signal name='a'/></ProbeIn></Core>\n"
                             "</TARN_CONFIG>",
                             &lines);
    QCOMPARE(linesOf(lines, cores.list), QStringList({"2 0", "3 0.In0", "4 0.In0.0"}));
    const auto in = TARN::ProbeTypeIn;
    for (int number : {-2, 1, 1000000}) {
        QCOMPARE(lines.lineOf(number, in, -1, -1, -1), 0);
        QCOMPARE(lines.lineOf(0, in, number, -1, -1), 0);
        QCOMPARE(lines.lineOf(0, in, 0, number, -1), 0);
        QCOMPARE(lines.lineOf(0, in, 0, 0, number), 0);
    }
    QCOMPARE(lines.lineOf(-1, in, -1, -1, -1), 0);
    QCOMPARE(lines.lineOf(0, TARN::ProbeTypeOut, 0, -1, -1), 0);
    QCOMPARE(lines.lineOf(0, in, 0, 0, 0), 0);
}

void TestConfigLines::fileThatCannotBeRead()
{
    ConfigLines lines;
    QVERIFY(read("<TARN_CONFIG>", &lines).list.isEmpty());
    QVERIFY(m_error.contains("Line 1"));
    bool ok = true;
    const QString missing = m_folder.filePath("missing.tarn");
    QVERIFY(TARN::readTARNConfigFromXml(missing, &ok, &m_error, &lines).isEmpty());
    QVERIFY(!ok);
    QVERIFY(m_error.contains(missing));
    QCOMPARE(lines.lineOf(0, TARN::ProbeTypeIn, -1, -1, -1), 0);
}

TARN_TEST_MAIN(TestConfigLines)

#include "tst_configlines.moc"
