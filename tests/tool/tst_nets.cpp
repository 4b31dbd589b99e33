// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "toolrun.h"

#include <examples/exampleproject.h>
#include <support/setting.h>
#include <support/testcase.h>

#include <netweir/designextraction.h>
#include <netweir/hierachy.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>
#include <select/rtlnetlisttreeview.h>
#include <select/tarnsignalselectdialog.h>
#include <tool/nets/instancepath.h>
#include <tool/nets/netlisting.h>

#include <QAbstractButton>
#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QRandomGenerator>
#include <QRegExp>
#include <QTest>
#include <QTreeWidget>

#include <map>

using namespace TARN;
using namespace TarnTest;
using NETWEIR::RtlNetlist;

namespace {

/// What the user sets, in the dialog or by options.
struct Settings
{
    enum Mode { Normal, Wildcard, Regexp };

    QString pattern;
    Mode mode = Normal;
    bool caseSensitive = false;
    NETWEIR::Hierachy *in = nullptr;
    bool own = false;
    bool tree = false;
    std::optional<ProbeType> usableFor;
};

QString pathOf(NETWEIR::Hierachy *node)
{
    return (node->parent() ? pathOf(node->parent()) + '/' : QString()) + node->instName();
}

QString listed(RtlNetlist *netlist, const Settings &settings, bool json = false)
{
    Tool::NetListing listing;
    listing.search.pattern = settings.pattern;
    listing.search.caseSensitivity = settings.caseSensitive;
    listing.search.usePattern = settings.mode != Settings::Normal;
    listing.search.patternSyntax =
        settings.mode == Settings::Wildcard ? QRegExp::WildcardUnix : QRegExp::RegExp;
    listing.search.useSearchIn = true;
    listing.search.searchIn = settings.in ? settings.in : netlist->top();
    listing.search.includeSubentries = !settings.own;
    listing.usableFor = settings.usableFor;
    listing.asTree = settings.tree;
    listing.asJson = json;
    QByteArray text;
    Tool::listNets(netlist, listing, [&text](const QByteArray &piece) {
        text += piece;
        return true;
    });
    return QString::fromUtf8(text);
}

QStringList argumentsFor(const Settings &settings)
{
    QStringList arguments;
    if (settings.mode != Settings::Normal)
        arguments += settings.mode == Settings::Wildcard ? "--wildcard" : "--regexp";
    if (settings.caseSensitive)
        arguments += "--case-sensitive";
    if (settings.in)
        arguments += QStringList({"--in", pathOf(settings.in)});
    if (settings.own)
        arguments += "--own";
    if (settings.tree)
        arguments += "--tree";
    if (settings.usableFor)
        arguments += QStringList({"--for", *settings.usableFor == ProbeTypeIn ? "in" : "out"});
    return arguments + QStringList({"--", settings.pattern});
}

/// The search dialog, and what it shows as text in the form of the tool.
class Dialog : public TarnSignalSelectDialog
{
public:
    explicit Dialog(RtlNetlist *netlist, ProbeType type)
        : TarnSignalSelectDialog(netlist, type, nullptr)
    {
    }

    QString found(const Settings &settings)
    {
        findChild<QLineEdit *>("lineEditName")->setText(settings.pattern);
        const char *const modes[] = {"radioButtonNormal", "radioButtonWildcard",
                                     "radioButtonRegularExpression"};
        check(modes[settings.mode], true);
        check("checkBoxCaseSensitive", settings.caseSensitive);
        check("checkBoxAdvancedFilter", settings.in || settings.own || settings.tree);
        check("checkBoxIncludeSubentries", !settings.own);
        check("checkBoxHierarchyView", settings.tree);
        pick(settings.in);
        on_pushButtonSearch_clicked();

        m_usableOnly = settings.usableFor.has_value();
        auto *results = findChild<QTreeWidget *>("treeWidget");
        QString text;
        for (int i = 0; i < results->topLevelItemCount(); ++i) {
            if (settings.tree)
                text += moduleText(results->topLevelItem(i), QString(), true);
            else
                text += itemText(results->topLevelItem(i), QString());
        }
        return text;
    }

private:
    void check(const char *name, bool on) { findChild<QAbstractButton *>(name)->setChecked(on); }

    void pick(const NETWEIR::Hierachy *node)
    {
        auto *modules = findChild<RtlNetlistTreeView *>();
        modules->setCurrentItem(modules->topLevelItem(0));
        for (QTreeWidgetItemIterator row(modules); node && *row; ++row) {
            if (static_cast<RtlTreeItem *>(*row)->hierachy() == node)
                modules->setCurrentItem(*row);
        }
    }

    static bool isBlack(const QTreeWidgetItem *row) { return row->flags() & Qt::ItemIsSelectable; }

    /// A net or a bus; its members only where the user would choose them alone.
    QString itemText(const QTreeWidgetItem *row, const QString &indent) const
    {
        if (!m_usableOnly || isBlack(row))
            return indent + row->text(0) + '\n';
        QString text;
        for (int i = 0; i < row->childCount(); ++i) {
            if (isBlack(row->child(i)))
                text += indent + row->child(i)->text(0) + '\n';
        }
        return text;
    }

    QString moduleText(const QTreeWidgetItem *row, const QString &indent, bool isTop) const
    {
        QString text;
        for (int i = 0; i < row->childCount(); ++i) {
            const QTreeWidgetItem *child = row->child(i);
            const bool isModule = !child->data(0, Qt::UserRole).isValid();
            text +=
                isModule ? moduleText(child, indent + "  ", false) : itemText(child, indent + "  ");
        }
        return isTop || !text.isEmpty() ? indent + row->text(0) + '\n' + text : QString();
    }

    bool m_usableOnly = false;
};

/// The names in the JSON of a list, or of a tree with its modules, in the form of the text.
QString textOfJson(const QJsonValue &value, const QString &indent = QString())
{
    QString text;
    if (value.isArray()) {
        const QJsonArray entries = value.toArray();
        for (const QJsonValue entry : entries)
            text += indent + entry["name"].toString() + '\n';
        return text;
    }
    text = indent + value["module"].toString() + '\n' + textOfJson(value["nets"], indent + "  ");
    const QJsonArray modules = value["modules"].toArray();
    for (const QJsonValue module : modules)
        text += textOfJson(module, indent + "  ");
    return text;
}

/// Short names, as trees have them, from full ones. Not for escaped names.
QString withShortNames(const QString &text)
{
    QStringList lines = text.split('\n');
    for (QString &line : lines)
        line.replace(QRegularExpression("^( *).*/"), "\\1");
    return lines.join('\n');
}

} // namespace

class TestNets : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void findsWhatTheDialogFinds_data();
    void findsWhatTheDialogFinds();
    void commandFindsWhatTheDialogFinds_data();
    void commandFindsWhatTheDialogFinds();
    void printsUsableBits_data();
    void printsUsableBits();
    void jsonHasBitsAndPorts();
    void stopsWhenNobodyReads();
    void findsInstances();
    void saysHowFarAPathLeads_data();
    void saysHowFarAPathLeads();
    void listsADeepDesign();
    void complains_data();
    void complains();

private:
    Settings randomSettings(RtlNetlist *netlist);

    std::map<QString, std::unique_ptr<RtlNetlist>> m_designs;
    QRandomGenerator m_random;
};

void TestNets::initTestCase()
{
    for (const QString &name : exampleNames()) {
        NETWEIR::DesignExtraction extraction(TE::designInfoOf(exampleProject(name)));
        QStringList messages;
        m_designs[name] = extraction.buildNetlist(&messages);
        QVERIFY2(m_designs[name], qPrintable(messages.join('\n')));
    }
}

Settings TestNets::randomSettings(RtlNetlist *netlist)
{
    const auto chance = [this](int percent) { return m_random.bounded(100) < percent; };
    const QList<NETWEIR::RtlNet *> nets = netlist->top()->singleNetsIncludeSub();
    const QString name = nets.at(m_random.bounded(nets.size()))->fullPathName();
    const QString part = name.mid(m_random.bounded(name.size()), 1 + m_random.bounded(8));

    Settings settings;
    settings.mode = Settings::Mode(m_random.bounded(3));
    const QStringList patterns =
        settings.mode == Settings::Normal
            ? QStringList({part, part.toUpper(), "", "d", "nothing of this name"})
        : settings.mode == Settings::Wildcard
            ? QStringList({'*' + part + '*', "*", "*/u_*/*", "*[0-9]]", name, part, "*_?", ""})
            : QStringList({".*" + QRegExp::escape(part) + ".*", ".*\\[\\d+:0\\]", "[a-z_/]*", ""});
    settings.pattern = patterns.at(m_random.bounded(patterns.size()));
    settings.caseSensitive = chance(40);
    settings.own = chance(30);
    settings.tree = chance(50);
    if (chance(50))
        settings.usableFor = chance(50) ? ProbeTypeIn : ProbeTypeOut;
    if (chance(50)) {
        settings.in = netlist->top();
        while (!settings.in->children().isEmpty() && chance(70))
            settings.in =
                settings.in->children().at(m_random.bounded(settings.in->children().size()));
    }
    return settings;
}

void TestNets::findsWhatTheDialogFinds_data()
{
    QTest::addColumn<QString>("example");
    for (const QString &name : exampleNames())
        QTest::newRow(qPrintable(name)) << name;
}

void TestNets::findsWhatTheDialogFinds()
{
    QFETCH(QString, example);
    RtlNetlist *netlist = m_designs[example].get();
    const int rounds = setting("TARN_NET_LISTINGS", 150);
    const quint32 seed = QRandomGenerator::global()->generate();
    qInfo("seed %u", seed);
    m_random.seed(seed);
    Dialog forIn(netlist, ProbeTypeIn);
    Dialog forOut(netlist, ProbeTypeOut);
    int found = 0;
    for (int round = 0; round < rounds; ++round) {
        const Settings settings = randomSettings(netlist);
        const bool isOut = settings.usableFor == ProbeTypeOut;
        const QString expected = (isOut ? forOut : forIn).found(settings);
        const QString text = listed(netlist, settings);
        QVERIFY2(text == expected, qPrintable(argumentsFor(settings).join(' ') + '\n' + text +
                                              "\nexpected\n" + expected));
        const QJsonDocument json =
            QJsonDocument::fromJson(listed(netlist, settings, true).toUtf8());
        QVERIFY(json.isArray() || json.isObject());
        const QString names =
            textOfJson(json.isArray() ? QJsonValue(json.array()) : QJsonValue(json.object()));
        QCOMPARE(settings.tree ? withShortNames(names) : names, text);
        found += text.count('\n') > 1;
    }
    QVERIFY2(found > rounds / 4, qPrintable(QString::number(found)));
}

void TestNets::commandFindsWhatTheDialogFinds_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("pattern");
    const auto add = [](const char *options, const char *pattern) {
        QTest::addRow("%s %s", options, pattern)
            << QString(options).split(' ', Qt::SkipEmptyParts) << QString(pattern);
    };
    add("", "DUTY");
    add("", "");
    add("--case-sensitive", "DUTY");
    add("--case-sensitive", "duty");
    add("--wildcard", "*duty[[]*");
    add("--wildcard --case-sensitive", "*/u_*/LEVEL*");
    add("--wildcard", "duty");
    add("--regexp", ".*\\[\\d:0\\]");
    add("--regexp --case-sensitive", "HUB.*");
    add("--in hub_top/u_regs", "d");
    add("--in hub_top/led_channel[0].u_pwm", "");
    add("--own", "d");
    add("--own --in hub_top/u_regs", "");
    add("--for in", "d");
    add("--for out", "d");
    add("--tree", "duty");
    add("--tree --in hub_top/u_regs --own", "d");
    add("--tree --for out --regexp", ".*e.*");
}

void TestNets::commandFindsWhatTheDialogFinds()
{
    QFETCH(QStringList, options);
    QFETCH(QString, pattern);
    RtlNetlist *netlist = m_designs["sensorhub"].get();
    Settings settings;
    settings.pattern = pattern;
    settings.mode = options.contains("--wildcard") ? Settings::Wildcard
                    : options.contains("--regexp") ? Settings::Regexp
                                                   : Settings::Normal;
    settings.caseSensitive = options.contains("--case-sensitive");
    settings.own = options.contains("--own");
    settings.tree = options.contains("--tree");
    if (options.contains("--for"))
        settings.usableFor = options.contains("out") ? ProbeTypeOut : ProbeTypeIn;
    if (options.contains("--in")) {
        QString error;
        settings.in = Tool::findInstance(netlist, options.at(options.indexOf("--in") + 1), &error);
        QCOMPARE(error, QString());
    }
    Dialog dialog(netlist, settings.usableFor.value_or(ProbeTypeIn));
    const QString expected = dialog.found(settings);

    const QString folder = examplePath("sensorhub", QString());
    const ToolRun run = runTool(QStringList("nets") + options + QStringList({"--", pattern}),
                                {folder, {}, {}, {}, {}});
    QCOMPARE(QString::fromUtf8(run.output), expected);
    const bool foundAny = expected.count('\n') > (settings.tree ? 1 : 0);
    QCOMPARE(run.exitCode, foundAny ? 0 : 1);
    QCOMPARE(run.errors.startsWith("tarn: nothing matches \"" + pattern + '"'), !foundAny);
    QCOMPARE(run.errors.isEmpty(), foundAny);
}

/// A design with every mixture of marks.
static std::unique_ptr<RtlNetlist> mixedDesign()
{
    NETWEIR::NetlistBuilder builder("top");
    const NETWEIR::NetMarks noIn = {true, false};
    const NETWEIR::NetMarks noOut = {false, true};
    builder.addNet(builder.top(), "free");
    builder.addNet(builder.top(), "driven", noOut);
    builder.addBus(builder.top(), "bus", 2, 0, {{}, noOut, {}});
    auto *memory = builder.addHierachy(builder.top(), "u_memory", "memory");
    builder.addBus(memory, "cells", 0, 1, {noIn});
    builder.addNet(memory, "cell", noIn);
    auto *deep = builder.addHierachy(memory, "u_deep", "deep");
    builder.addNet(deep, "driven", noOut);
    return builder.take();
}

void TestNets::printsUsableBits_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("text");
    QTest::newRow("all") << ""
                         << "top/bus[2:0]\ntop/u_memory/cells[0:1]\ntop/free\ntop/driven\n"
                            "top/u_memory/cell\ntop/u_memory/u_deep/driven\n";
    QTest::newRow("in") << "in"
                        << "top/bus[2:0]\ntop/free\ntop/driven\n"
                           "top/u_memory/u_deep/driven\n";
    QTest::newRow("out") << "out"
                         << "top/bus[2]\ntop/bus[0]\ntop/u_memory/cells[0:1]\ntop/free\n"
                            "top/u_memory/cell\n";
    QTest::newRow("tree, in") << "tree in"
                              << "top\n  bus[2:0]\n  free\n  driven\n  memory:u_memory\n"
                                 "    deep:u_deep\n      driven\n";
    QTest::newRow("tree, out") << "tree out"
                               << "top\n  bus[2]\n  bus[0]\n  free\n  memory:u_memory\n"
                                  "    cells[0:1]\n    cell\n";
}

void TestNets::printsUsableBits()
{
    QFETCH(QString, options);
    QFETCH(QString, text);
    const std::unique_ptr<RtlNetlist> netlist = mixedDesign();
    Settings settings;
    settings.tree = options.startsWith("tree");
    if (options.endsWith("in"))
        settings.usableFor = ProbeTypeIn;
    else if (options.endsWith("out"))
        settings.usableFor = ProbeTypeOut;
    QCOMPARE(listed(netlist.get(), settings), text);
}

void TestNets::jsonHasBitsAndPorts()
{
    const std::unique_ptr<RtlNetlist> netlist = mixedDesign();
    Settings settings;
    settings.own = true;
    const QString expected =
        R"([
{"name":"top/bus[2:0]","kind":"bus","probeIn":true,"probeOut":false,"members":[)"
        R"({"name":"top/bus[2]","kind":"bit","probeIn":true,"probeOut":true},)"
        R"({"name":"top/bus[1]","kind":"bit","probeIn":true,"probeOut":false},)"
        R"({"name":"top/bus[0]","kind":"bit","probeIn":true,"probeOut":true}]},
{"name":"top/free","kind":"net","probeIn":true,"probeOut":true},
{"name":"top/driven","kind":"net","probeIn":true,"probeOut":false}
]
)";
    QCOMPARE(listed(netlist.get(), settings, true), expected);
    settings.usableFor = ProbeTypeOut;
    settings.tree = true;
    const QString tree = R"({"module":"top","nets":[
{"name":"top/bus[2]","kind":"bit","probeIn":true,"probeOut":true},
{"name":"top/bus[0]","kind":"bit","probeIn":true,"probeOut":true},
{"name":"top/free","kind":"net","probeIn":true,"probeOut":true}],"modules":[]}
)";
    QCOMPARE(listed(netlist.get(), settings, true), tree);
    settings.pattern = "nothing";
    settings.tree = false;
    QCOMPARE(listed(netlist.get(), settings, true), QString("[]\n"));
}

/// As when the reader of a pipe has gone: the rest of a large design takes seconds.
void TestNets::stopsWhenNobodyReads()
{
    const std::unique_ptr<RtlNetlist> netlist = mixedDesign();
    for (const bool asTree : {false, true}) {
        for (const bool asJson : {false, true}) {
            Tool::NetListing listing;
            listing.search.useSearchIn = true;
            listing.search.searchIn = netlist->top();
            listing.search.includeSubentries = true;
            listing.asTree = asTree;
            listing.asJson = asJson;
            QByteArray text;
            const bool foundAny =
                Tool::listNets(netlist.get(), listing, [&](const QByteArray &piece) {
                    text += piece;
                    return !text.contains("top/bus") && !text.contains("  bus");
                });
            QVERIFY(foundAny);
            QVERIFY2(text.contains("bus"), text.constData());
            QVERIFY2(!text.contains("free") && !text.contains("cell"), text.constData());
        }
    }
}

void TestNets::findsInstances()
{
    for (const auto &[name, netlist] : m_designs) {
        QList<NETWEIR::Hierachy *> open = {netlist->top()};
        while (!open.isEmpty()) {
            NETWEIR::Hierachy *node = open.takeFirst();
            QString error;
            QCOMPARE(Tool::findInstance(netlist.get(), pathOf(node), &error), node);
            open += node->children();
        }
    }
    // Escaped names with slashes.
    NETWEIR::NetlistBuilder builder("t");
    auto *wrong = builder.addHierachy(builder.top(), "a", "m");
    builder.addHierachy(wrong, "x", "m");
    auto *slashed = builder.addHierachy(builder.top(), "a/b", "m");
    auto *right = builder.addHierachy(slashed, "c", "m");
    const std::unique_ptr<RtlNetlist> netlist = builder.take();
    QString error;
    QCOMPARE(Tool::findInstance(netlist.get(), "t/a/b/c", &error), right);
    QCOMPARE(Tool::findInstance(netlist.get(), "t/a/b", &error), slashed);
    QCOMPARE(Tool::findInstance(netlist.get(), "t/a", &error), wrong);
    QCOMPARE(Tool::findInstance(netlist.get(), "t/a/b/", &error), slashed);
}

void TestNets::saysHowFarAPathLeads_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("error");
    QTest::newRow("wrong top")
        << "hub/u_memory"
        << "there is no instance \"hub/u_memory\": paths begin with the top module, top";
    QTest::newRow("without the top")
        << "u_memory"
        << "there is no instance \"u_memory\": paths begin with the top module, top";
    QTest::newRow("empty") << ""
                           << "there is no instance \"\": paths begin with the top module, top";
    QTest::newRow("wrong case") << "top/U_memory"
                                << "there is no instance \"U_memory\" in top: u_memory";
    QTest::newRow("too long") << "top/u_memory/u_deep/x/y"
                              << "there is no instance \"x/y\" in top/u_memory/u_deep: it has none";
    QTest::newRow("part of a name") << "top/u_memory/u_dee"
                                    << "there is no instance \"u_dee\" in top/u_memory: u_deep";
    QTest::newRow("slash at the end") << "top/u_memory//"
                                      << "there is no instance \"\" in top/u_memory: u_deep";
}

void TestNets::saysHowFarAPathLeads()
{
    QFETCH(QString, path);
    QFETCH(QString, error);
    const std::unique_ptr<RtlNetlist> netlist = mixedDesign();
    QString said;
    QVERIFY(!Tool::findInstance(netlist.get(), path, &said));
    QCOMPARE(said, error);
}

void TestNets::listsADeepDesign()
{
    NETWEIR::NetlistBuilder builder("t");
    NETWEIR::Hierachy *node = builder.top();
    QString path = "t";
    for (int depth = 0; depth < 3000; ++depth) {
        node = builder.addHierachy(node, "u", "m");
        path += "/u";
    }
    builder.addNet(node, "n");
    const std::unique_ptr<RtlNetlist> netlist = builder.take();
    QString error;
    QCOMPARE(Tool::findInstance(netlist.get(), path, &error), node);
    Settings settings;
    settings.tree = true;
    const QString text = listed(netlist.get(), settings);
    QCOMPARE(text.count('\n'), 3002);
    QVERIFY(text.endsWith(QString(6000, ' ') + "m:u\n" + QString(6002, ' ') + "n\n"));
    QVERIFY(listed(netlist.get(), settings, true).endsWith("]}]}]}\n"));
}

void TestNets::complains_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("errors");
    const QString see = "See tarn nets --help.\n";
    QTest::newRow("no pattern") << QStringList() << "tarn: no PATTERN is given\n" + see;
    QTest::newRow("project for a pattern")
        << QStringList("sensorhub.json") << "tarn: no PATTERN is given\n" + see;
    QTest::newRow("source for a pattern")
        << QStringList({"sensorhub.json", "rtl/hub_top.v"}) << "tarn: no PATTERN is given\n" + see;
    QTest::newRow("two modes") << QStringList({"--wildcard", "--regexp", "x"})
                               << "tarn: --wildcard and --regexp cannot be combined; choose one\n";
    QTest::newRow("port") << QStringList({"--for", "inout", "x"})
                          << "tarn: --for takes in or out, not \"inout\"\n" + see;
    QTest::newRow("expression")
        << QStringList({"--regexp", "("})
        << "tarn: the regular expression \"(\" is invalid: unexpected end\n";
    QTest::newRow("wildcard") << QStringList({"--wildcard", "[x"})
                              << "tarn: the wildcard \"[x\" is invalid: unexpected end\n";
    QTest::newRow("instance")
        << QStringList({"--in", "hub_top/u_regs/x", "x"})
        << "tarn: there is no instance \"x\" in hub_top/u_regs: it has none\n";
}

void TestNets::complains()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, errors);
    const ToolRun run = runTool(QStringList("nets") + arguments,
                                {examplePath("sensorhub", QString()), {}, {}, {}, {}});
    QCOMPARE(run.errors, errors);
    QCOMPARE(run.exitCode, 2);
    QCOMPARE(run.output, QByteArray());
}

TARN_TEST_MAIN(TestNets)
#include "tst_nets.moc"
