// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "jobs.h"

#include <netweir/hierachy.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>
#include <select/namematcher.h>
#include <select/netsearch.h>
#include <select/requiredliteral.h>
#include <support/benchmark.h>
#include <support/generatednetlist.h>

#include <QStringMatcher>

#include <numeric>

using TARN::ModuleForWidget;
using TARN::SearchOptions;
using TarnBench::fail;
using TarnBench::Goal;
using TarnBench::Table;

namespace {

using Nets = QList<NETWEIR::RtlNet *>;
using Buses = QList<NETWEIR::RtlNetBus *>;
using Names = std::vector<QString>;

struct Mode
{
    const char *name;
    bool usePattern;
    QRegExp::PatternSyntax syntax;
};

constexpr Mode Plain{"plain", false, QRegExp::FixedString};
constexpr Mode Wildcard{"wildcard", true, QRegExp::WildcardUnix};
constexpr Mode Expression{"regular expression", true, QRegExp::RegExp};

/// Mode, pattern and case sensitivity of a row of the table.
std::string titleOf(const Mode &mode, const char *pattern, Qt::CaseSensitivity sensitivity)
{
    return std::string(mode.name) + " `" + pattern + "`" +
           (sensitivity == Qt::CaseSensitive ? ", case sensitive" : "");
}

Names namesOf(const Nets &nets, const Buses &buses)
{
    Names names;
    for (const NETWEIR::RtlNet *net : nets)
        names.push_back(net->fullPathName());
    for (const NETWEIR::RtlNetBus *bus : buses)
        names.push_back(bus->fullBusName());
    return names;
}

/// The @p names for which @p matches is true.
template <typename Matches>
std::vector<const QString *> select(const Names &names, const Matches &matches)
{
    std::vector<const QString *> selected;
    for (const QString &name : names) {
        if (matches(name))
            selected.push_back(&name);
    }
    return selected;
}

void flatten(const ModuleForWidget &module, Nets *nets, Buses *buses)
{
    *nets += module.nets;
    *buses += module.buses;
    for (const ModuleForWidget &child : module.subModules)
        flatten(child, nets, buses);
}

/// The number of letters of the average name.
int lettersOf(const Names &names)
{
    const qint64 letters =
        std::accumulate(names.begin(), names.end(), qint64(0),
                        [](qint64 sum, const QString &name) { return sum + name.size(); });
    return int(letters / qint64(names.size()));
}

/// A million single nets in 20,000 nodes.
std::unique_ptr<NETWEIR::RtlNetlist> netlistOfSingleNets()
{
    constexpr int Groups = 400;
    constexpr int Blocks = 50;
    constexpr int NetsPerBlock = 50;
    std::vector<QString> names;
    for (int i = 0; i < NetsPerBlock; ++i)
        names.push_back(QStringLiteral("state_register_%1").arg(i));
    NETWEIR::NetlistBuilder builder(QStringLiteral("bench_top"));
    for (int group = 0; group < Groups; ++group) {
        NETWEIR::Hierachy *parent = builder.addHierachy(
            builder.top(), QStringLiteral("group_inst_%1").arg(group), QStringLiteral("group"));
        for (int block = 0; block < Blocks; ++block) {
            NETWEIR::Hierachy *node = builder.addHierachy(
                parent, QStringLiteral("block_inst_%1").arg(block), QStringLiteral("block"));
            for (const QString &name : names)
                builder.addNet(node, name);
        }
    }
    return builder.take();
}

class SearchBench
{
public:
    explicit SearchBench(NETWEIR::RtlNetlist *netlist)
        : m_netlist(netlist)
        , m_names(
              namesOf(netlist->top()->singleNetsIncludeSub(), netlist->top()->netbusesIncludeSub()))
        , m_table("Searching " + std::to_string(m_names.size()) +
                  " names of nets and buses in 20,000 nodes, " +
                  std::to_string(lettersOf(m_names)) +
                  " letters on average, relative to the matcher alone on a vector of the names; "
                  "hierarchical search relative to the flat one")
    {
    }

    void plain(const char *pattern, Qt::CaseSensitivity sensitivity)
    {
        const SearchOptions options = optionsOf(Plain, pattern, sensitivity);
        const QStringMatcher matcher(options.pattern, sensitivity);
        compare(options, [&matcher](const QString &name) { return matcher.indexIn(name) != -1; });
        m_table.add(titleOf(Plain, pattern, sensitivity), ratio(11), "x", 1.5);
    }

    void expression(const Mode &mode, const char *pattern, Qt::CaseSensitivity sensitivity,
                    bool rareLiteral)
    {
        const SearchOptions options = optionsOf(mode, pattern, sensitivity);
        checkLiteral(options, rareLiteral);
        const QRegExp expression(options.pattern, sensitivity, mode.syntax);
        compare(options,
                [&expression](const QString &name) { return expression.exactMatch(name); });
        m_table.add(titleOf(mode, pattern, sensitivity) +
                        (rareLiteral ? "" : ", no selective literal"),
                    ratio(5), "x", rareLiteral ? 0.15 : 1.1);
    }

    void hierarchical(const Mode &mode, const char *pattern, Qt::CaseSensitivity sensitivity)
    {
        compareViews(optionsOf(mode, pattern, sensitivity));
        m_table.add("hierarchical, " + titleOf(mode, pattern, sensitivity), ratio(11), "x", 1.5);
    }

    /// Without a pattern no name is compared: the flat search only joins lists, so creating the
    /// modules has no counterpart.
    void hierarchicalOfAll()
    {
        compareViews(optionsOf(Plain, "", Qt::CaseInsensitive));
        m_table.add("hierarchical, no pattern", ratio(11), "x");
    }

    bool print() const { return m_table.print(); }

private:
    SearchOptions optionsOf(const Mode &mode, const char *pattern,
                            Qt::CaseSensitivity sensitivity) const
    {
        SearchOptions options;
        options.pattern = QString::fromLatin1(pattern);
        options.caseSensitivity = sensitivity;
        options.usePattern = mode.usePattern;
        options.patternSyntax = mode.syntax;
        options.useSearchIn = true;
        options.searchIn = m_netlist->top();
        options.includeSubentries = true;
        return options;
    }

    std::pair<Nets, Buses> search(const SearchOptions &options) const
    {
        std::pair<Nets, Buses> found;
        TARN::searchNets(m_netlist, options, found.first, found.second);
        return found;
    }

    Names flat(const SearchOptions &options) const
    {
        const std::pair<Nets, Buses> found = search(options);
        return namesOf(found.first, found.second);
    }

    /// Prepares the comparison of the flat search with a loop over the names.
    template <typename Matches>
    void compare(const SearchOptions &options, Matches matches)
    {
        Names expected;
        for (const QString *name : select(m_names, matches))
            expected.push_back(*name);
        if (flat(options) != expected)
            fail("the search finds something else than the bare loop");
        m_work = [this, options] { search(options); };
        m_reference = [this, matches] { select(m_names, matches); };
    }

    /// Prepares the comparison of the hierarchical search with the flat one.
    void compareViews(const SearchOptions &options)
    {
        Nets nets;
        Buses buses;
        flatten(TARN::searchNetsHierarchy(options), &nets, &buses);
        if (namesOf(nets, buses) != flat(options))
            fail("the hierarchical search finds something else than the flat one");
        m_work = [options] { TARN::searchNetsHierarchy(options); };
        m_reference = [this, options] { search(options); };
    }

    /// Checks that the pattern is of the kind that the row claims.
    void checkLiteral(const SearchOptions &options, bool rareLiteral) const
    {
        const auto sensitivity = static_cast<Qt::CaseSensitivity>(options.caseSensitivity);
        const QString literal = TARN::requiredLiteral(
            options.pattern, static_cast<QRegExp::PatternSyntax>(options.patternSyntax));
        const std::size_t holders = select(m_names, [&](const QString &name) {
                                        return name.contains(literal, sensitivity);
                                    }).size();
        if (rareLiteral != (holders * 100 <= m_names.size()))
            fail("the literal of " + options.pattern.toStdString() + " is in " +
                 std::to_string(holders) + " names");
    }

    double ratio(int rounds) const
    {
        const std::vector<double> times =
            TarnBench::interleavedMedians(rounds, {m_work, m_reference});
        return times[0] / times[1];
    }

    NETWEIR::RtlNetlist *m_netlist;
    Names m_names;
    Table m_table;
    std::function<void()> m_work;
    std::function<void()> m_reference;
};

const Qt::CaseSensitivity sensitivities[] = {Qt::CaseSensitive, Qt::CaseInsensitive};

/// The patterns of each kind in a netlist whose names have the usual length.
bool measureAllKinds(NETWEIR::RtlNetlist *netlist)
{
    SearchBench bench(netlist);
    for (const Qt::CaseSensitivity sensitivity : sensitivities) {
        bench.plain("state", sensitivity);
        bench.plain("group_inst_77/", sensitivity);
        bench.plain("nowhere", sensitivity);

        bench.expression(Wildcard, "*group_inst_77/*", sensitivity, true);
        bench.expression(Wildcard, "bench_top/*/block_inst_7/state_register_1?", sensitivity, true);
        bench.expression(Expression, ".*group_inst_77/.*register_[0-9]+", sensitivity, true);
        bench.expression(Expression, ".*/block_inst_7/state_register_1[0-9]?", sensitivity, true);

        bench.expression(Wildcard, "*[13579]", sensitivity, false);
        bench.expression(Wildcard, "bench_top/*_register_?", sensitivity, false);
        bench.expression(Expression, "[a-z_0-9/]+", sensitivity, false);
        bench.expression(Expression, "bench_top/(group_inst_[0-9]+/)+.*", sensitivity, false);

        bench.hierarchical(Plain, "state", sensitivity);
        bench.hierarchical(Plain, "group_inst_77/", sensitivity);
        bench.hierarchical(Wildcard, "*group_inst_77/*", sensitivity);
    }
    bench.hierarchicalOfAll();
    return bench.print();
}

/// The patterns that are matched fastest, so that other work per name would show.
bool measureQuickKinds(NETWEIR::RtlNetlist *netlist)
{
    SearchBench bench(netlist);
    for (const Qt::CaseSensitivity sensitivity : sensitivities) {
        bench.plain("state", sensitivity);
        bench.plain("group_inst_77/", sensitivity);
        bench.plain("nowhere", sensitivity);
        bench.expression(Wildcard, "*group_inst_77/*", sensitivity, true);
    }
    return bench.print();
}

} // namespace

bool measureSearching(NETWEIR::RtlNetlist *netlist)
{
    bool good = measureAllKinds(netlist);
    for (const int letters : {135, 195})
        good &= measureQuickKinds(TarnBench::generatedNetlist(letters).get());
    good &= measureQuickKinds(netlistOfSingleNets().get());
    return good;
}
