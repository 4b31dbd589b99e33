// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/setting.h>
#include <support/testcase.h>

#include <netweir/hierachy.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>
#include <select/netsearch.h>

#include <QApplication>
#include <QRandomGenerator>
#include <QRegExp>
#include <QTest>

using namespace TARN;
using NETWEIR::Hierachy;
using NETWEIR::RtlNet;
using NETWEIR::RtlNetBus;
using NETWEIR::RtlNetlist;
using TarnTest::setting;

namespace {

/// top: clk, rst, data[1:0]; u0 (core): clk, clk_div, cnt[1:0]; u0/deep (leaf)/deeper (leaf): Flag;
/// u1 (core): idle; u2 (none) without nets.
std::unique_ptr<RtlNetlist> makeNetlist()
{
    NETWEIR::NetlistBuilder builder("top");
    builder.addNet(builder.top(), "clk");
    builder.addNet(builder.top(), "rst");
    builder.addBus(builder.top(), "data", 1, 0);
    Hierachy *u0 = builder.addHierachy(builder.top(), "u0", "core");
    builder.addNet(u0, "clk");
    builder.addNet(u0, "clk_div");
    builder.addBus(u0, "cnt", 1, 0);
    Hierachy *deep = builder.addHierachy(u0, "deep", "leaf");
    builder.addNet(builder.addHierachy(deep, "deeper", "leaf"), "Flag");
    builder.addNet(builder.addHierachy(builder.top(), "u1", "core"), "idle");
    builder.addHierachy(builder.top(), "u2", "none");
    return builder.take();
}

SearchOptions everywhere(const RtlNetlist &netlist, const QString &pattern)
{
    SearchOptions options;
    options.pattern = pattern;
    options.useSearchIn = true;
    options.searchIn = netlist.top();
    options.includeSubentries = true;
    return options;
}

QStringList namesOf(const QList<RtlNet *> &nets, const QList<RtlNetBus *> &buses)
{
    QStringList names;
    for (const RtlNet *net : nets)
        names.append(net->fullPathName());
    for (const RtlNetBus *bus : buses)
        names.append(bus->fullBusName());
    return names;
}

QStringList search(RtlNetlist *netlist, const SearchOptions &options)
{
    QList<RtlNet *> nets;
    QList<RtlNetBus *> buses;
    searchNets(netlist, options, nets, buses);
    return namesOf(nets, buses);
}

/// The module as text, a line each for the label, the nets and buses, and the modules below.
QString textOf(const ModuleForWidget &module, int depth = 0)
{
    const QString blanks(4 * depth, ' ');
    QString text = blanks + module.name + ":";
    for (const RtlNet *net : module.nets)
        text += " " + net->name();
    for (const RtlNetBus *bus : module.buses)
        text += " " + bus->BusName();
    text += "\n";
    for (const ModuleForWidget &subModule : module.subModules)
        text += textOf(subModule, depth + 1);
    return text;
}

void collect(const ModuleForWidget &module, QList<RtlNet *> &nets, QList<RtlNetBus *> &buses)
{
    nets += module.nets;
    buses += module.buses;
    for (const ModuleForWidget &subModule : module.subModules)
        collect(subModule, nets, buses);
}

std::unique_ptr<RtlNetlist> makeRandomNetlist(QRandomGenerator &random)
{
    const QStringList names{"a", "A", "ab", "data", "DATA", "s", "\u017f", "\u00b5s", "x\\[0\\]"};
    NETWEIR::NetlistBuilder builder("top");
    QList<Hierachy *> nodes{builder.top()};
    for (int i = 0; i < 20; ++i) {
        Hierachy *parent = nodes.at(random.bounded(nodes.size()));
        nodes.append(builder.addHierachy(parent, QString("u%1").arg(i), "m"));
    }
    for (int i = 0; i < 40; ++i) {
        Hierachy *node = nodes.at(random.bounded(nodes.size()));
        const QString &name = names.at(random.bounded(names.size()));
        if (random.bounded(2))
            builder.addNet(node, name);
        else
            builder.addBus(node, name, random.bounded(4), 0);
    }
    return builder.take();
}

/// A piece of one of the @p names, which may lie across a slash, sometimes in another case.
QString randomPattern(QRandomGenerator &random, const QStringList &names)
{
    const QString &name = names.at(random.bounded(names.size()));
    const QString piece = name.mid(random.bounded(name.size()), random.bounded(1, 8));
    return random.bounded(4) ? piece : piece.toUpper();
}

/// The @p names that match, tested one by one.
QStringList matchesOf(const QStringList &names, const SearchOptions &options)
{
    const auto sensitivity = Qt::CaseSensitivity(options.caseSensitivity);
    const QRegExp expression(options.pattern, sensitivity,
                             QRegExp::PatternSyntax(options.patternSyntax));
    QStringList matches;
    for (const QString &name : names) {
        if (options.usePattern ? expression.exactMatch(name)
                               : name.contains(options.pattern, sensitivity))
            matches.append(name);
    }
    return matches;
}

} // namespace

class TestNetSearch : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void fieldsKeepTheirOrder();
    void flatSearch_data();
    void flatSearch();
    void candidatesComeFromTheChosenPlace_data();
    void candidatesComeFromTheChosenPlace();
    void caseIsIgnoredInAllModesUnlessAsked_data();
    void caseIsIgnoredInAllModesUnlessAsked();
    void resultsAreAppended();
    void emptyPatternReplacesTheLists();
    void nullNetlistLeavesTheListsUntouched();
    void hierarchyLeavesOutBranchesWithoutMatch();
    void hierarchyOfDeepMatchIsAChain();
    void hierarchyWithoutSubentriesHoldsTheNodeOnly();
    void hierarchyRootIsThereWithoutMatch();
    void hierarchyNeedsANode();
    void hierarchyStartsAtTheNode();
    void emptyPatternListsModulesWithNetsOnly();
    void moduleIgnoresTheSubentriesSwitch();
    void singleCheckFollowsTheOptions();
    void hierarchyHoldsWhatTheFlatSearchFinds();
    void searchFindsWhatMatchesByItsFullName();
};

void TestNetSearch::fieldsKeepTheirOrder()
{
    const auto netlist = makeNetlist();
    const SearchOptions options{"p", 0, true, 4, false, netlist->top(), true};
    QCOMPARE(options.pattern, QString("p"));
    QCOMPARE(options.caseSensitivity, 0);
    QVERIFY(options.usePattern);
    QCOMPARE(options.patternSyntax, 4);
    QVERIFY(!options.useSearchIn);
    QCOMPARE(options.searchIn, netlist->top());
    QVERIFY(options.includeSubentries);
    const ModuleForWidget module{"m", {nullptr}, {nullptr, nullptr}, {ModuleForWidget()}};
    QCOMPARE(module.nets.size(), 1);
    QCOMPARE(module.buses.size(), 2);
}

void TestNetSearch::flatSearch_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<int>("syntax"); // -1: substring
    QTest::addColumn<QStringList>("names");
    const int wildcard = QRegExp::WildcardUnix;
    const int expression = QRegExp::RegExp;
    const QStringList all{"top/clk",
                          "top/rst",
                          "top/u0/clk",
                          "top/u0/clk_div",
                          "top/u0/deep/deeper/Flag",
                          "top/u1/idle",
                          "top/data[1:0]",
                          "top/u0/cnt[1:0]"};
    QTest::newRow("empty") << "" << -1 << all;
    QTest::newRow("empty wildcard") << "" << wildcard << all;
    QTest::newRow("substring of the path")
        << "clk" << -1 << QStringList{"top/clk", "top/u0/clk", "top/u0/clk_div"};
    QTest::newRow("substring with a slash")
        << "u0/c" << -1 << QStringList{"top/u0/clk", "top/u0/clk_div", "top/u0/cnt[1:0]"};
    QTest::newRow("substring is no pattern") << "c*k" << -1 << QStringList();
    QTest::newRow("blanks count") << " clk" << -1 << QStringList();
    QTest::newRow("members of buses are no candidates") << "data[0]" << -1 << QStringList();
    QTest::newRow("wildcard covers the whole path") << "clk" << wildcard << QStringList();
    QTest::newRow("wildcard") << "*/clk" << wildcard << QStringList{"top/clk", "top/u0/clk"};
    QTest::newRow("wildcard bus") << "*data*" << wildcard << QStringList{"top/data[1:0]"};
    QTest::newRow("expression covers the whole path") << "clk.*" << expression << QStringList();
    QTest::newRow("expression") << ".*/(clk|cnt.*)" << expression
                                << QStringList{"top/clk", "top/u0/clk", "top/u0/cnt[1:0]"};
    QTest::newRow("invalid expression") << "(clk" << expression << QStringList();
}

void TestNetSearch::flatSearch()
{
    QFETCH(QString, pattern);
    QFETCH(int, syntax);
    const auto netlist = makeNetlist();
    SearchOptions options = everywhere(*netlist, pattern);
    options.usePattern = syntax != -1;
    if (options.usePattern)
        options.patternSyntax = syntax;
    QTEST(search(netlist.get(), options), "names");
}

void TestNetSearch::candidatesComeFromTheChosenPlace_data()
{
    QTest::addColumn<bool>("useSearchIn");
    QTest::addColumn<bool>("subentries");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("subtree") << true << true
                             << QStringList{"top/u0/clk", "top/u0/clk_div",
                                            "top/u0/deep/deeper/Flag", "top/u0/cnt[1:0]"};
    QTest::newRow("node") << true << false
                          << QStringList{"top/u0/clk", "top/u0/clk_div", "top/u0/cnt[1:0]"};
    const QStringList own{"top/clk", "top/rst", "top/data[1:0]"};
    QTest::newRow("top") << false << false << own;
    QTest::newRow("top, never its subtree") << false << true << own;
}

void TestNetSearch::candidatesComeFromTheChosenPlace()
{
    QFETCH(bool, useSearchIn);
    QFETCH(bool, subentries);
    const auto netlist = makeNetlist();
    for (const QString pattern : {"", "top"}) {
        SearchOptions options = everywhere(*netlist, pattern);
        options.useSearchIn = useSearchIn;
        options.searchIn = netlist->top()->children().first();
        options.includeSubentries = subentries;
        QTEST(search(netlist.get(), options), "names");
    }
}

void TestNetSearch::caseIsIgnoredInAllModesUnlessAsked_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<int>("syntax");
    QTest::newRow("substring") << "FLAG" << -1;
    QTest::newRow("wildcard") << "*FLAG" << int(QRegExp::WildcardUnix);
    QTest::newRow("expression") << ".*FLAG" << int(QRegExp::RegExp);
}

void TestNetSearch::caseIsIgnoredInAllModesUnlessAsked()
{
    QFETCH(QString, pattern);
    QFETCH(int, syntax);
    const auto netlist = makeNetlist();
    SearchOptions options = everywhere(*netlist, pattern);
    options.usePattern = syntax != -1;
    options.patternSyntax = qMax(0, syntax);
    QCOMPARE(search(netlist.get(), options), QStringList{"top/u0/deep/deeper/Flag"});
    options.caseSensitivity = Qt::CaseSensitive;
    QCOMPARE(search(netlist.get(), options), QStringList());
}

void TestNetSearch::resultsAreAppended()
{
    const auto netlist = makeNetlist();
    QList<RtlNet *> nets{netlist->top()->nets().at(0)};
    QList<RtlNetBus *> buses{netlist->top()->buses().at(0)};
    searchNets(netlist.get(), everywhere(*netlist, "/c"), nets, buses);
    QCOMPARE(namesOf(nets, buses),
             (QStringList{"top/clk", "top/clk", "top/u0/clk", "top/u0/clk_div", "top/data[1:0]",
                          "top/u0/cnt[1:0]"}));
}

void TestNetSearch::emptyPatternReplacesTheLists()
{
    const auto netlist = makeNetlist();
    QList<RtlNet *> nets{nullptr};
    QList<RtlNetBus *> buses{nullptr};
    searchNets(netlist.get(), everywhere(*netlist, QString()), nets, buses);
    QCOMPARE(nets, netlist->top()->singleNetsIncludeSub());
    QCOMPARE(buses, netlist->top()->netbusesIncludeSub());
}

void TestNetSearch::nullNetlistLeavesTheListsUntouched()
{
    QList<RtlNet *> nets{nullptr};
    QList<RtlNetBus *> buses;
    searchNets(nullptr, SearchOptions(), nets, buses);
    QCOMPARE(nets.size(), 1);
    QVERIFY(buses.isEmpty());
}

void TestNetSearch::hierarchyLeavesOutBranchesWithoutMatch()
{
    const auto netlist = makeNetlist();
    QCOMPARE(textOf(searchNetsHierarchy(everywhere(*netlist, "c"))),
             QString("top: clk\n"
                     "    core:u0: clk clk_div cnt[1:0]\n"));
}

void TestNetSearch::hierarchyOfDeepMatchIsAChain()
{
    const auto netlist = makeNetlist();
    QCOMPARE(textOf(searchNetsHierarchy(everywhere(*netlist, "flag"))),
             QString("top:\n"
                     "    core:u0:\n"
                     "        leaf:deep:\n"
                     "            leaf:deeper: Flag\n"));
}

void TestNetSearch::hierarchyWithoutSubentriesHoldsTheNodeOnly()
{
    const auto netlist = makeNetlist();
    SearchOptions options = everywhere(*netlist, QString());
    options.includeSubentries = false;
    QCOMPARE(textOf(searchNetsHierarchy(options)), QString("top: clk rst data[1:0]\n"));
}

void TestNetSearch::hierarchyRootIsThereWithoutMatch()
{
    const auto netlist = makeNetlist();
    QCOMPARE(textOf(searchNetsHierarchy(everywhere(*netlist, "nothing"))), QString("top:\n"));
}

void TestNetSearch::hierarchyNeedsANode()
{
    const auto netlist = makeNetlist();
    SearchOptions options = everywhere(*netlist, "clk");
    options.useSearchIn = false;
    QCOMPARE(textOf(searchNetsHierarchy(options)), QString("top:\n"));
    options.searchIn = nullptr;
    QCOMPARE(textOf(searchNetsHierarchy(options)), QString(":\n"));
}

void TestNetSearch::hierarchyStartsAtTheNode()
{
    const auto netlist = makeNetlist();
    SearchOptions options = everywhere(*netlist, "clk");
    options.searchIn = netlist->top()->children().first();
    QCOMPARE(textOf(searchNetsHierarchy(options)), QString("core:u0: clk clk_div\n"));
}

void TestNetSearch::emptyPatternListsModulesWithNetsOnly()
{
    const auto netlist = makeNetlist();
    QCOMPARE(textOf(searchNetsHierarchy(everywhere(*netlist, QString()))),
             QString("top: clk rst data[1:0]\n"
                     "    core:u0: clk clk_div cnt[1:0]\n"
                     "        leaf:deep:\n"
                     "            leaf:deeper: Flag\n"
                     "    core:u1: idle\n"));
}

void TestNetSearch::moduleIgnoresTheSubentriesSwitch()
{
    const auto netlist = makeNetlist();
    SearchOptions options = everywhere(*netlist, "flag");
    options.includeSubentries = false;
    ModuleForWidget parent;
    createModuleForWidget(parent, netlist->top()->children().at(0), options);
    createModuleForWidget(parent, netlist->top()->children().at(1), options);
    QCOMPARE(textOf(parent), QString(":\n"
                                     "    core:u0:\n"
                                     "        leaf:deep:\n"
                                     "            leaf:deeper: Flag\n"));
}

void TestNetSearch::singleCheckFollowsTheOptions()
{
    const auto netlist = makeNetlist();
    RtlNet *clk = netlist->top()->nets().first();
    RtlNetBus *data = netlist->top()->buses().first();
    SearchOptions options = everywhere(*netlist, "P/CLK");
    QVERIFY(checkNetForHierarchy(clk, options));
    QVERIFY(!checkNetForHierarchy(data, options));
    options.caseSensitivity = Qt::CaseSensitive;
    QVERIFY(!checkNetForHierarchy(clk, options));
    options.pattern = "top/data\\[1:0\\]";
    options.usePattern = true;
    options.patternSyntax = QRegExp::RegExp;
    QVERIFY(!checkNetForHierarchy(clk, options));
    QVERIFY(checkNetForHierarchy(data, options));
    options.pattern.clear();
    QVERIFY(checkNetForHierarchy(clk, options));
    QVERIFY(checkNetForHierarchy(data, options));
}

void TestNetSearch::hierarchyHoldsWhatTheFlatSearchFinds()
{
    QRandomGenerator random(7);
    const QStringList patterns{"",          "a",     "A",       "*a*",    "*[ad]*",
                               "*\\[*",     ".*a.*", ".*(s|b)", "\u017f", "*S",
                               ".*\u00b5s", "(",     "top*",    "top/a",  ".*\\d+\\]"};
    int found = 0;
    for (int i = 0; i < 300; ++i) {
        const auto netlist = makeRandomNetlist(random);
        SearchOptions options = everywhere(*netlist, patterns.at(random.bounded(patterns.size())));
        options.caseSensitivity = random.bounded(2);
        options.usePattern = random.bounded(2) == 1;
        options.patternSyntax = random.bounded(2) ? QRegExp::WildcardUnix : QRegExp::RegExp;
        options.includeSubentries = random.bounded(4) != 0;
        if (random.bounded(2)) {
            const QList<Hierachy *> &children = netlist->top()->children();
            options.searchIn = children.at(random.bounded(children.size()));
        }
        QList<RtlNet *> nets;
        QList<RtlNetBus *> buses;
        searchNets(netlist.get(), options, nets, buses);
        QList<RtlNet *> netsOfTree;
        QList<RtlNetBus *> busesOfTree;
        collect(searchNetsHierarchy(options), netsOfTree, busesOfTree);
        QCOMPARE(netsOfTree, nets);
        QCOMPARE(busesOfTree, buses);
        found += nets.size() + buses.size();
    }
    QVERIFY(found > 500);
}

void TestNetSearch::searchFindsWhatMatchesByItsFullName()
{
    QRandomGenerator random(setting("TARN_NETSEARCH_SEED", 1));
    const quint32 rounds = setting("TARN_NETSEARCH_ROUNDS", 200);
    int found = 0;
    for (quint32 i = 0; i < rounds; ++i) {
        const auto netlist = makeRandomNetlist(random);
        const QList<RtlNet *> nets = netlist->top()->singleNetsIncludeSub();
        const QList<RtlNetBus *> buses = netlist->top()->netbusesIncludeSub();
        const QStringList names = namesOf(nets, buses);
        for (int j = 0; j < 20; ++j) {
            SearchOptions options = everywhere(*netlist, randomPattern(random, names));
            options.caseSensitivity = random.bounded(2);
            options.usePattern = random.bounded(3) == 0;
            options.patternSyntax = QRegExp::WildcardUnix;
            if (options.usePattern)
                options.pattern = "*" + options.pattern + "*";
            const QStringList expected = matchesOf(names, options);
            found += expected.size();
            if (search(netlist.get(), options) != expected)
                QFAIL(qPrintable("pattern " + options.pattern));
        }
    }
    QVERIFY(found > 1000);
}

TARN_TEST_MAIN(TestNetSearch)

#include "tst_netsearch.moc"
