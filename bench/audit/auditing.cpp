// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "jobs.h"

#include <audit/configaudit.h>
#include <audit/designnames.h>
#include <model/configsnapshot.h>
#include <model/netsignals.h>
#include <netweir/hierachy.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>
#include <support/benchmark.h>
#include <support/generatednetlist.h>

#include <memory>

using TARN::ConfigAudit;
using TARN::ConfigSnapshot;
using TARN::CoreSnapshot;
using TARN::DesignNames;
using TARN::PortSnapshot;
using TARN::SignalItem;
using TarnBench::fail;
using TarnBench::Table;

namespace {

constexpr int CoreCount = 16;
constexpr int PortCount = 64; // Of each kind, in each core.
constexpr int PortWidth = 256;
constexpr int BitsOfKind = CoreCount * PortCount * PortWidth;
constexpr int Rounds = 5;

/// The signals of port number @p port of all ports of a kind.
using Signals = std::function<QList<SignalItem>(int port)>;

SignalItem single(const QString &name)
{
    SignalItem item;
    item.name = name;
    item.kind = SignalItem::Net;
    return item;
}

std::shared_ptr<const PortSnapshot> portOf(int index, const QList<SignalItem> &items)
{
    return std::make_shared<const PortSnapshot>(PortSnapshot{index, items, QString()});
}

/// A configuration with all cores and ports.
ConfigSnapshot configOf(int cores, const Signals &ins, const Signals &outs)
{
    ConfigSnapshot config;
    for (int core = 0; core < cores; ++core) {
        auto content = std::make_shared<CoreSnapshot>();
        for (int port = 0; port < PortCount; ++port) {
            content->probeIns.append(portOf(port, ins(core * PortCount + port)));
            content->probeOuts.append(portOf(port, outs(core * PortCount + port)));
        }
        config.cores.append({core, content});
    }
    return config;
}

/// @p config with one Probe Out port in its middle that has other signals.
ConfigSnapshot edited(const ConfigSnapshot &config, const QList<SignalItem> &items)
{
    ConfigSnapshot next = config;
    ConfigSnapshot::Core &core = next.cores[next.cores.size() / 2];
    auto content = std::make_shared<CoreSnapshot>(*core.content);
    content->probeOuts[PortCount / 2] = portOf(PortCount / 2, items);
    core.content = content;
    return next;
}

/// The names of the nets that can be on both kinds of port, in memory of their own, as they are
/// after reading a file.
std::vector<QString> usableNames(const NETWEIR::RtlNetlist &netlist)
{
    std::vector<QString> names;
    const auto add = [&names](const NETWEIR::RtlNet *net) {
        const QString name = net->fullPathName();
        if (!net->excludedForProbeIn() && !net->excludedForProbeOut())
            names.emplace_back(name.constData(), name.size());
    };
    for (const NETWEIR::RtlNet *net : netlist.top()->singleNetsIncludeSub())
        add(net);
    for (const NETWEIR::RtlNetBus *bus : netlist.top()->netbusesIncludeSub()) {
        for (const NETWEIR::RtlNet *net : bus->nets())
            add(net);
    }
    return names;
}

/// Ports with consecutive names, from @p first.
Signals consecutive(const std::vector<QString> &names, int first)
{
    return [&names, first](int port) {
        QList<SignalItem> items;
        for (int bit = 0; bit < PortWidth; ++bit)
            items.append(single(
                names.at(std::size_t(first) + std::size_t(port) * PortWidth + std::size_t(bit))));
        return items;
    };
}

/// Ports with nets that the design does not have; @p different names in all.
Signals missing(int different)
{
    return [different](int port) {
        QList<SignalItem> items;
        for (int bit = 0; bit < PortWidth; ++bit) {
            const int number = (port * PortWidth + bit) % different;
            items.append(single(QStringLiteral("bench_top/group_inst_%1/block_inst_7/gone_%2")
                                    .arg(number % 400)
                                    .arg(number)));
        }
        return items;
    };
}

/// Ports with 8 buses of 30 bits, each usable for both kinds.
Signals buses(const QList<NETWEIR::RtlNetBus *> &all)
{
    return [&all](int port) {
        QList<SignalItem> items;
        for (int i = 0; i < 8; ++i) {
            SignalItem item =
                TARN::signalOf(all.at((port * 8 + i) * 2 % all.size()), TARN::ProbeTypeIn);
            for (SignalItem &member : item.members)
                member.name = QString(member.name.constData(), member.name.size());
            items.append(item);
        }
        return items;
    };
}

void expectCount(const char *what, const ConfigAudit &audit, int count)
{
    if (audit.count() != count)
        fail(std::string(what) + ": " + std::to_string(audit.count()) + " findings instead of " +
             std::to_string(count));
}

class AuditBench
{
public:
    /// @p letters are those of the average path, 0 for the usual number.
    explicit AuditBench(int letters = 0)
        : m_letters(letters)
        , m_netlist(TarnBench::generatedNetlist(letters))
        , m_names(usableNames(*m_netlist))
        , m_table(
              "Auditing 16 cores, 2048 ports and 524,288 bits, half of them driven, against a "
              "million nets" +
              (letters ? " with paths of " + std::to_string(letters) + " letters" : std::string()))
    {
        if (int(m_names.size()) < 2 * BitsOfKind)
            fail("the netlist is too small");
    }

    /// A first audit after the netlist was read, and later ones after one port was edited.
    void measure(const char *title, const ConfigSnapshot &config, int findings)
    {
        std::vector<double> first;
        std::vector<double> edit;
        const ConfigSnapshot other = edited(config, missing(PortWidth)(0));
        for (int round = 0; round < Rounds; ++round) {
            const auto netlist = TarnBench::generatedNetlist(m_letters);
            const DesignNames names(netlist.get());
            ConfigAudit audit;
            first.push_back(TarnBench::timeOf([&] {
                audit.setNames(&names);
                audit.update(config);
            }));
            expectCount(title, audit, findings);
            edit.push_back(TarnBench::timeOf([&] { audit.update(other); }));
            edit.push_back(TarnBench::timeOf([&] { audit.update(config); }));
            expectCount(title, audit, findings);
        }
        m_table.add(std::string(title) + ": first audit, index of the nets included",
                    TarnBench::median(first) * 1e3, "ms", 500);
        m_table.add(std::string(title) + ": one port edited", TarnBench::median(edit) * 1e3, "ms",
                    20);
    }

    void goodConfiguration()
    {
        measure("single nets, all well",
                configOf(CoreCount, consecutive(m_names, 0), consecutive(m_names, BitsOfKind)), 0);
    }

    void otherConfigurations()
    {
        const Signals good = consecutive(m_names, 0);
        const QList<NETWEIR::RtlNetBus *> all = m_netlist->top()->netbusesIncludeSub();
        measureBuses(configOf(CoreCount, buses(all), good));
        measure("every bit missing", configOf(CoreCount, missing(BitsOfKind), missing(BitsOfKind)),
                2 * BitsOfKind);
        measure("every bit missing and driven twice",
                configOf(CoreCount, missing(BitsOfKind), missing(BitsOfKind / 2)),
                2 * BitsOfKind + BitsOfKind / 2);
        measure("every Probe Out port drives the same 256 nets",
                configOf(CoreCount, good, missing(PortWidth)), BitsOfKind + PortWidth);
        measure("one net in all places", configOf(CoreCount, good, missing(1)),
                BitsOfKind + CoreCount * PortCount + 1);
    }

    /// A new design for the same configuration, and the texts of all findings.
    void laterSteps()
    {
        const ConfigSnapshot config =
            configOf(CoreCount, missing(BitsOfKind), missing(BitsOfKind / 2));
        const DesignNames names(m_netlist.get());
        ConfigAudit audit;
        audit.setNames(&names);
        audit.update(config);
        const std::vector<double> times = TarnBench::interleavedMedians(
            Rounds, {[&] { audit.setNames(&names); }, [&] { readAll(audit); }});
        m_table.add("every bit missing and driven twice: all signals looked up again",
                    times[0] * 1e3, "ms", 500);
        m_table.add("every bit missing and driven twice: all findings with their texts",
                    times[1] * 1e3, "ms");
    }

    /// Twice the bits must take about twice the time.
    void growth()
    {
        const DesignNames names(m_netlist.get());
        const auto auditOf = [&](const ConfigSnapshot &config) {
            ConfigAudit audit;
            audit.setNames(&names);
            audit.update(config);
        };
        const ConfigSnapshot half =
            configOf(CoreCount / 2, missing(BitsOfKind), missing(BitsOfKind / 4));
        const ConfigSnapshot whole =
            configOf(CoreCount, missing(BitsOfKind), missing(BitsOfKind / 2));
        const std::vector<double> times = TarnBench::interleavedMedians(
            Rounds, {[&] { auditOf(half); }, [&] { auditOf(whole); }});
        m_table.add("twice the bits, every bit missing and driven twice", times[1] / times[0], "x",
                    2.6);
    }

    bool print() const { return m_table.print(); }

private:
    /// Excluded bits of the buses are findings, so their number is that of a first audit.
    void measureBuses(const ConfigSnapshot &config)
    {
        const DesignNames names(m_netlist.get());
        ConfigAudit audit;
        audit.setNames(&names);
        audit.update(config);
        measure("buses and single nets", config, audit.count());
    }

    static void readAll(const ConfigAudit &audit)
    {
        qint64 letters = 0;
        for (int i = 0; i < audit.count(); ++i)
            letters += audit.at(i).text.size();
        if (letters < audit.count() * qint64(20))
            fail("a finding has no text");
    }

    int m_letters;
    std::unique_ptr<NETWEIR::RtlNetlist> m_netlist;
    std::vector<QString> m_names;
    Table m_table;
};

} // namespace

bool measureAuditing()
{
    AuditBench bench;
    bench.goodConfiguration();
    bench.otherConfigurations();
    bench.laterSteps();
    bench.growth();
    bool good = bench.print();
    for (const int letters : {135, 195}) {
        AuditBench longNames(letters);
        longNames.goodConfiguration();
        good = longNames.print() && good;
    }
    return good;
}
