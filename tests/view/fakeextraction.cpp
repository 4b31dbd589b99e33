// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "fakeextraction.h"

#include <netweir/netlistbuilder.h>
#include <netweir/rtlextraction.h>

namespace TarnTest {

FakeExtraction &FakeExtraction::instance()
{
    static FakeExtraction fake;
    return fake;
}

void FakeExtraction::reset()
{
    *this = FakeExtraction();
    tops = modules = QStringList{QStringLiteral("top")};
    build = [] { return makeNetlist(QStringLiteral("top")); };
}

std::unique_ptr<NETWEIR::RtlNetlist> makeNetlist(const QString &top, bool usesJtag)
{
    NETWEIR::NetlistBuilder builder(top);
    NETWEIR::NetMarks dead;
    dead.excludedForProbeIn = true;
    builder.addNet(builder.top(), QStringLiteral("clk"));
    builder.addNet(builder.top(), QStringLiteral("dead"), dead);
    builder.setUsesJtagPrimitive(usesJtag);
    return builder.take();
}

} // namespace TarnTest

using TarnTest::FakeExtraction;

void NETWEIR::catchRtlModules(QStringList &tops, QStringList &modules, QStringList &messages,
                              QMap<QString, QVariant> &info, QWidget *parent)
{
    FakeExtraction &fake = FakeExtraction::instance();
    ++fake.searches;
    fake.info = info;
    fake.listsWereEmpty = tops.isEmpty() && modules.isEmpty() && messages.isEmpty();
    fake.parents.append(parent);
    tops = fake.tops;
    modules = fake.modules;
    messages = fake.messages;
    if (const auto meanwhile = std::exchange(fake.whileFindingModules, nullptr))
        meanwhile();
}

void NETWEIR::catchRtlNetsWithProgressDialog(RtlNetlist **netlist, QStringList &messages,
                                             QWidget *parent)
{
    FakeExtraction &fake = FakeExtraction::instance();
    ++fake.builds;
    fake.netlistWasNull = *netlist == nullptr;
    fake.listsWereEmpty = fake.listsWereEmpty && messages.isEmpty();
    fake.parents.append(parent);
    if (const auto meanwhile = std::exchange(fake.whileBuilding, nullptr))
        meanwhile();
    *netlist = fake.build().release();
    messages.append(QStringLiteral("ERROR: nobody reads this"));
}
