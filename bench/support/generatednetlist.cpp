// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "generatednetlist.h"

#include <netweir/hierachy.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnetlist.h>

#include <QString>

#include <algorithm>
#include <vector>

using NETWEIR::Hierachy;
using NETWEIR::NetlistBuilder;
using NETWEIR::NetMarks;

namespace TarnBench {

namespace {

constexpr int GroupCount = 400;
constexpr int BlocksPerGroup = 49;
constexpr int NetCount = 250000;
constexpr int BusCount = 25000;
constexpr int BusWidth = 30;
constexpr int ShortPath = 57; ///< Letters of the average full path, without a prefix.

/// The names and marks that are common to all blocks.
struct Content
{
    std::vector<QString> nets;
    std::vector<QString> buses;
    std::vector<NetMarks> free = std::vector<NetMarks>(BusWidth);
    std::vector<NetMarks> partlyDriven = free;

    Content()
    {
        for (int i = 0; i < 13; ++i)
            nets.push_back(QStringLiteral("state_register_%1").arg(i));
        for (int i = 0; i < 2; ++i)
            buses.push_back(QStringLiteral("data_register_%1").arg(i));
        partlyDriven.back().excludedForProbeOut = true;
    }
};

/// What the name of an instance begins with when it is @p letters longer than usual.
QString prefix(int letters)
{
    const QString words = QStringLiteral("channel_of_the_memory_interface_");
    return words.repeated(letters / words.size() + 1).right(letters);
}

/// The share of the block @p index when @p total is distributed evenly.
int shareOf(int total, int index)
{
    constexpr qint64 blocks = GroupCount * BlocksPerGroup;
    return int((index + 1) * qint64(total) / blocks - index * qint64(total) / blocks);
}

void fillBlock(NetlistBuilder &builder, Hierachy *node, int index, const Content &content)
{
    const int nets = shareOf(NetCount, index);
    for (int i = 0; i < nets; ++i)
        builder.addNet(node, content.nets[std::size_t(i)], {i == 3, i == 5});
    const int buses = shareOf(BusCount, index);
    for (int i = 0; i < buses; ++i)
        builder.addBus(node, content.buses[std::size_t(i)], BusWidth - 1, 0,
                       index % 5 == 0 ? content.partlyDriven : content.free);
}

} // namespace

std::unique_ptr<NETWEIR::RtlNetlist> generatedNetlist(int lettersOfPath)
{
    const Content content;
    const QString module = QStringLiteral("block");
    const int added = std::max(0, lettersOfPath - ShortPath);
    const QString groupName = prefix(added / 2) + QStringLiteral("group_inst_%1");
    const QString blockName = prefix(added - added / 2) + QStringLiteral("block_inst_%1");
    NetlistBuilder builder(QStringLiteral("bench_top"));
    int index = 0;
    for (int group = 0; group < GroupCount; ++group) {
        Hierachy *parent =
            builder.addHierachy(builder.top(), groupName.arg(group), QStringLiteral("group"));
        for (int block = 0; block < BlocksPerGroup; ++block) {
            Hierachy *node = builder.addHierachy(parent, blockName.arg(block), module);
            fillBlock(builder, node, index++, content);
        }
    }
    return builder.take();
}

} // namespace TarnBench
