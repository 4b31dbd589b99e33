// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/hierachy.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>

#include <memory>

namespace TarnTest {

/// top: clk, rst (not for Probe Out), data[1:0] (data[1] not for Probe In);
/// u0 (core): clk, gated (not for Probe In), cnt[1:0] (not for Probe Out);
/// u0/deep (leaf): flag; u1 (none): nothing.
inline std::unique_ptr<NETWEIR::RtlNetlist> sampleNetlist()
{
    const NETWEIR::NetMarks notIn{true, false};
    const NETWEIR::NetMarks notOut{false, true};
    NETWEIR::NetlistBuilder builder("top");
    builder.addNet(builder.top(), "clk");
    builder.addNet(builder.top(), "rst", notOut);
    builder.addBus(builder.top(), "data", 1, 0, {notIn, {}});
    NETWEIR::Hierachy *u0 = builder.addHierachy(builder.top(), "u0", "core");
    builder.addNet(u0, "clk");
    builder.addNet(u0, "gated", notIn);
    builder.addBus(u0, "cnt", 1, 0, {notOut, notOut});
    builder.addNet(builder.addHierachy(u0, "deep", "leaf"), "flag");
    builder.addHierachy(builder.top(), "u1", "none");
    return builder.take();
}

/// top: n0 to n199, more than a list shows at once.
inline std::unique_ptr<NETWEIR::RtlNetlist> longNetlist()
{
    NETWEIR::NetlistBuilder builder("top");
    for (int i = 0; i < 200; ++i)
        builder.addNet(builder.top(), QString("n%1").arg(i));
    return builder.take();
}

} // namespace TarnTest
