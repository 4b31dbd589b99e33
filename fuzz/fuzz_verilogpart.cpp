// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "memoryfile.h"

#include <netweir/hierachy.h>
#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/nets/verilogpart.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>

#include <QString>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

using namespace NETWEIR;
using namespace NETWEIR::Internal;

namespace {

/// What stands before a text in UTF-8. A file with it is parsed as a whole.
constexpr std::string_view EncodingMark = "\xef\xbb\xbf";

QString netText(const RtlNet *net)
{
    return QStringLiteral("%1 %2%3%4\n")
        .arg(net->fullPathName())
        .arg(net->excludedForProbeIn())
        .arg(net->excludedForProbeOut())
        .arg(int(net->processWrites()));
}

QString netlistText(const RtlNetlist &netlist)
{
    QString text;
    std::vector<const Hierachy *> pending{netlist.top()};
    while (!pending.empty()) {
        const Hierachy *node = pending.back();
        pending.pop_back();
        text += node->instName() + QLatin1Char(' ') + node->moduleName() + QLatin1Char('\n');
        for (const RtlNet *net : node->nets())
            text += netText(net);
        for (const RtlNetBus *bus : node->buses()) {
            text += bus->fullBusName() + QLatin1Char('\n');
            for (const RtlNet *net : bus->nets())
                text += netText(net);
        }
        for (const Hierachy *child : node->children())
            pending.push_back(child);
    }
    return text;
}

struct Result
{
    bool isRead = false;
    QString error;
    QString netlist;
};

/// Definitions of more than @p runSize bytes are read run by run.
Result readDesign(std::string_view xml, qint64 runSize)
{
    constexpr qint64 MostMemory = 256 * 1024 * 1024;
    const MemoryFile file(xml);
    Result result;
    ReadOptions options;
    options.runSize = runSize;
    const auto read = [&](QString *reason) {
        PartRoot top;
        top.isTop = true;
        const auto part = VerilogPart::read(file.path(), {top}, options, reason);
        if (!part)
            return false;
        NetlistBuilder builder(part->unitName(0));
        part->build(0, {}, builder.top(), &builder, [](const BorderInstance &) {});
        result.netlist = netlistText(*builder.take());
        return true;
    };
    result.isRead = readWithin({nullptr, 5, MostMemory}, read, &result.error);
    return result;
}

bool isStopped(const Result &result)
{
    return result.error.startsWith(QLatin1String("Reading "));
}

} // namespace

/// An elaborated design is read or refused with a reason, and read in pieces it is the same as read
/// as a whole.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string_view input(reinterpret_cast<const char *>(data), size);
    const Result pieces = readDesign(input, 1);
    if (pieces.isRead != pieces.error.isEmpty())
        std::abort();
    if (input.substr(0, 1) != "<")
        return 0;
    const Result whole = readDesign(std::string(EncodingMark) + std::string(input), 1);
    if (isStopped(pieces) || isStopped(whole))
        return 0;
    if (pieces.isRead != whole.isRead || pieces.netlist != whole.netlist)
        std::abort();
    return 0;
}
