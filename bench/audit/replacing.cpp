// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "jobs.h"

#include <audit/candidates.h>
#include <audit/designnames.h>
#include <netweir/hierachy.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>
#include <support/benchmark.h>
#include <support/generatednetlist.h>

#include <malloc.h>

#include <algorithm>

using NETWEIR::Hierachy;
using NETWEIR::NetlistBuilder;
using NETWEIR::RtlNetlist;
using TARN::CandidateSearch;
using TARN::MissingName;
using TARN::Replacement;
using TarnBench::fail;
using TarnBench::Table;

namespace {

constexpr int MissingCount = 10000;
constexpr std::chrono::microseconds Slice(2000);

using Missing = QVector<MissingName>;

struct Design
{
    const char *name;
    std::unique_ptr<RtlNetlist> netlist;
    Missing missing;
    int leastFound; ///< Of the missing names, those for which there has to be a candidate.
};

/// Bits and buses of a design of the usual shape, whose instances and nets had slightly other
/// names.
Design usualDesign()
{
    Design design{"1,000,000 bits in 20,000 instances, other names",
                  TarnBench::generatedNetlist(),
                  {},
                  MissingCount * 9 / 10};
    const QList<NETWEIR::RtlNet *> nets = design.netlist->top()->singleNetsIncludeSub();
    const QList<NETWEIR::RtlNetBus *> buses = design.netlist->top()->netbusesIncludeSub();
    for (int i = 0; i < MissingCount; ++i) {
        const bool bus = i % 4 == 0;
        QString name = bus ? buses.at(i * 2)->fullBusName() : nets.at(i * 25)->fullPathName();
        if (i % 3 == 0)
            name.replace(QLatin1String("block_inst"), QLatin1String("u_block"));
        else if (i % 3 == 1)
            name.replace(QLatin1String("register"), QLatin1String("reg"));
        else
            name.replace(QLatin1String("_register"), QLatin1String("_register_q"));
        design.missing.append({name, bus, TARN::ProbeTypeIn});
    }
    return design;
}

/// A million single nets in instances that were all below another one.
Design movedDesign()
{
    NetlistBuilder builder(QStringLiteral("top"));
    Design design{"1,000,000 nets in 10,000 instances that moved", nullptr, {}, MissingCount};
    for (int group = 0; group < 100; ++group) {
        Hierachy *parent = builder.addHierachy(
            builder.top(), QStringLiteral("new_group_%1").arg(group), QStringLiteral("group"));
        for (int block = 0; block < 100; ++block) {
            const QString name = QStringLiteral("u_block_%1").arg(block);
            Hierachy *node = builder.addHierachy(parent, name, QStringLiteral("block"));
            for (int net = 0; net < 100; ++net)
                builder.addNet(node, QStringLiteral("state_bit_%1").arg(net));
            design.missing.append({QStringLiteral("top/old_group_%1/%2/state_bit_%3")
                                       .arg(QString::number(group), name, QString::number(block)),
                                   false, TARN::ProbeTypeOut});
        }
    }
    design.netlist = builder.take();
    return design;
}

/// Everything missing is a clock, of which the design is full.
Design clockDesign()
{
    NetlistBuilder builder(QStringLiteral("top"));
    for (int i = 0; i < 100000; ++i) {
        Hierachy *node = builder.addHierachy(builder.top(), QStringLiteral("u_%1").arg(i * 7),
                                             QStringLiteral("cell"));
        builder.addNet(node, QStringLiteral("clk"));
    }
    Design design{
        "100,000 nets named clk, each missing name is another clk", builder.take(), {}, 0};
    for (int i = 0; i < MissingCount; ++i)
        design.missing.append(
            {QStringLiteral("top/u_%1_x%2/clk").arg(i * 5).arg(i), false, TARN::ProbeTypeIn});
    return design;
}

/// The ends of all paths are the same, and what is missing has another one in its middle.
Design sameEndDesign()
{
    NetlistBuilder builder(QStringLiteral("top"));
    Design design{"100,000 nets at the same ends of paths", nullptr, {}, MissingCount};
    for (int i = 0; i < 100000; ++i) {
        Hierachy *scope = builder.addHierachy(builder.top(), QStringLiteral("g[%1]").arg(i),
                                              QStringLiteral("scope"));
        builder.addNet(builder.addHierachy(scope, QStringLiteral("u"), QStringLiteral("cell")),
                       QStringLiteral("clk"));
        if (i % 10 == 0)
            design.missing.append(
                {QStringLiteral("top/gen_%1/u/clk").arg(i), false, TARN::ProbeTypeIn});
    }
    design.netlist = builder.take();
    return design;
}

/// Instances with as many names as are compared one by one, all a bit alike.
Design crowdedDesign()
{
    NetlistBuilder builder(QStringLiteral("top"));
    Design design{"instances with 60 similar nets", nullptr, {}, 0};
    for (int i = 0; i < 2000; ++i) {
        Hierachy *node = builder.addHierachy(builder.top(), QStringLiteral("u_block_%1").arg(i),
                                             QStringLiteral("block"));
        for (int net = 0; net < 60; ++net)
            builder.addNet(node,
                           QStringLiteral("receive_buffer_%1_counter").arg(QChar('a' + net % 26)) +
                               QString(net / 26, QLatin1Char('x')));
        for (int net = 0; net < 5; ++net)
            design.missing.append({QStringLiteral("top/i_block_%1/receiver_buffers_%2_count_%3")
                                       .arg(i)
                                       .arg(QChar('a' + net))
                                       .arg(net),
                                   false, TARN::ProbeTypeIn});
    }
    design.netlist = builder.take();
    return design;
}

/// One instance with very many nets of few words.
Design flatDesign()
{
    const char *words[] = {"data", "valid", "ready", "count", "state", "error", "frame", "index"};
    NetlistBuilder builder(QStringLiteral("top"));
    for (int i = 0; i < 500000; ++i)
        builder.addNet(builder.top(),
                       QStringLiteral("%1_%2_%3_%4")
                           .arg(QLatin1String(words[i % 8]), QLatin1String(words[i / 8 % 8]),
                                QLatin1String(words[i / 64 % 8]), QString::number(i / 512)));
    Design design{"500,000 nets in one instance", builder.take(), {}, MissingCount * 9 / 10};
    for (int i = 0; i < MissingCount; ++i) {
        const int number = i * 49;
        design.missing.append(
            {QStringLiteral("top/%1_%2_%3%4_q")
                 .arg(QLatin1String(words[number % 8]), QLatin1String(words[number / 8 % 8]),
                      QLatin1String(words[number / 64 % 8]), QString::number(number / 512)),
             false, TARN::ProbeTypeIn});
    }
    return design;
}

/// Every missing name has another path, deep and partly alike.
Design deepDesign()
{
    NetlistBuilder builder(QStringLiteral("top"));
    for (int i = 0; i < 300; ++i) {
        Hierachy *node = builder.top();
        for (int level = 0; level < 30; ++level)
            node = builder.addHierachy(node, QStringLiteral("level_%1_%2").arg(level).arg(i),
                                       QStringLiteral("m"));
        for (int net = 0; net < 60; ++net)
            builder.addNet(node, QStringLiteral("signal_%1_word").arg(QChar('a' + net % 26)) +
                                     QString::number(net));
    }
    Design design{"paths of 30 levels, all renamed", builder.take(), {}, 0};
    for (int i = 0; i < MissingCount; ++i) {
        QString name = QStringLiteral("top");
        for (int level = 0; level < 30; ++level)
            name += QStringLiteral("/level_%1x_%2").arg(level).arg(i % 1000 + level * 1000);
        design.missing.append(
            {name + QStringLiteral("/signal_b_word%1").arg(i), false, TARN::ProbeTypeIn});
    }
    return design;
}

bool measure(const Design &design)
{
    const TARN::DesignNames names(design.netlist.get());
    names.net(QString()); // The index that other parts have made by then.
    names.bus(QString());
    CandidateSearch search(names);
    double longest = 0;
    const auto searchAll = [&search, &longest] {
        for (bool done = false; !done;)
            longest = std::max(longest, TarnBench::timeOf([&] { done = search.step(Slice); }));
    };
    ::malloc_trim(0); // Memory that earlier jobs freed would be used first.
    const double memory = TarnBench::residentBytes();
    const double first = TarnBench::timeOf([&] {
        search.setMissing(design.missing);
        searchAll();
    });
    const double used = TarnBench::residentBytes() - memory;
    const double again = TarnBench::timeOf([&] {
        search.setMissing(design.missing.mid(1));
        searchAll();
    });
    const auto found = std::count_if(
        design.missing.cbegin() + 1, design.missing.cend(), [&search](const MissingName &missing) {
            return !search.candidates(missing.name, missing.type).isEmpty();
        });
    if (found < design.leastFound - 1)
        fail(std::string(design.name) + ": candidates for only " + std::to_string(found));

    Table table(std::string("What took the place of 10,000 missing names: ") + design.name);
    table.add("index and search", first, "s", 2);
    table.add("again with one name less", again, "s", 0.5);
    table.add("longest slice of 2 ms", longest * 1e3, "ms", 10);
    table.add("memory", used / 1e6, "MB");
    table.add("names with candidates", double(found), "");
    table.add("prefix changes", search.prefixChanges().size(), "");
    return table.print();
}

} // namespace

bool measureReplacing()
{
    bool good = true;
    for (Design (*design)() : {movedDesign, usualDesign, clockDesign, sameEndDesign, crowdedDesign,
                               flatDesign, deepDesign})
        good &= measure(design());
    return good;
}
