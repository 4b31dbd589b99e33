// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "pagestate.h"

#include <model/configsnapshot.h>
#include <probes/initialvalueline.h>
#include <probes/probeportsoptionwidget.h>
#include <support/benchmark.h>

#include <QApplication>
#include <QTreeWidget>

#include <memory>

namespace TarnBench {

namespace {

using TARN::CoreSnapshot;
using TARN::PortSnapshot;
using TARN::ProbePortsOptionWidget;
using TARN::SignalItem;
using TARN::TarnCore;
using TARN::Typing;
using Content = std::shared_ptr<const CoreSnapshot>;

constexpr int PortCount = 64;
constexpr int SignalCount = 256;
constexpr int Rounds = 9;
constexpr int Reads = 100;

QList<SignalItem> netsFrom(int first)
{
    QList<SignalItem> items;
    for (int i = 0; i < SignalCount; ++i) {
        SignalItem item;
        item.name = QStringLiteral("soc_top/u_cluster/u_core/u_lsu/data_%1").arg(first + i);
        item.kind = SignalItem::Net;
        items.append(item);
    }
    return items;
}

std::shared_ptr<const PortSnapshot> portOf(int index, int first, QChar digit)
{
    return std::make_shared<const PortSnapshot>(PortSnapshot{
        index, netsFrom(first), QStringLiteral("0x") + QString(SignalCount / 4, digit)});
}

CoreSnapshot fullCore(int first, QChar digit)
{
    CoreSnapshot core;
    for (int i = 0; i < PortCount; ++i) {
        const PortSnapshot in{i, netsFrom(first + i), QString()};
        core.probeIns.append(std::make_shared<const PortSnapshot>(in));
        core.probeOuts.append(portOf(i, first + i, digit));
    }
    return core;
}

CoreSnapshot withoutFirstPorts(CoreSnapshot core)
{
    for (auto *ports : {&core.probeIns, &core.probeOuts}) {
        ports->removeFirst();
        for (int i = 0; i < ports->size(); ++i) {
            PortSnapshot port = *ports->at(i);
            port.index = i;
            (*ports)[i] = std::make_shared<const PortSnapshot>(port);
        }
    }
    return core;
}

/// The page of a core with all ports, on the screen, with all rows of the Probe Out ports expanded.
class StatePage
{
public:
    explicit StatePage(const CoreSnapshot &content)
        : m_core(TARN::newCore(0, content))
    {
    }

    void build()
    {
        m_page = std::make_unique<ProbePortsOptionWidget>(m_core.get(), nullptr, nullptr);
        m_page->resize(900, 600);
        m_page->show();
        m_page->findChild<QTreeWidget *>(QStringLiteral("treeProbeOut"))->expandAll();
        settle();
    }
    void restore(const CoreSnapshot &content)
    {
        m_page->restore(content);
        settle();
    }
    Content read(const Content &former = {}) const
    {
        return m_page->shown(Typing::LeftOut, former);
    }
    void readOften(const Content &former) const
    {
        for (int i = 0; i < Reads; ++i) {
            if (read(former) != former)
                fail("the page shows something else");
        }
    }
    void readAfterEdits()
    {
        auto *values = m_page->findChild<QTreeWidget *>(QStringLiteral("treeValue"));
        auto *line = qobject_cast<TARN::InitialValueLine *>(
            values->itemWidget(values->topLevelItem(PortCount / 2), 0));
        Content former = read();
        for (int i = 0; i < Reads; ++i) {
            line->setText(QStringLiteral("0x") +
                          QString(SignalCount / 4, QLatin1Char(i % 2 ? '1' : '2')));
            line->onTextChange();
            Content now = read(former);
            if (now == former || now->probeOuts.at(0) != former->probeOuts.at(0))
                fail("the page does not show the edit alone");
            former = std::move(now);
        }
    }

private:
    static void settle()
    {
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
    }

    std::unique_ptr<TarnCore> m_core;
    std::unique_ptr<ProbePortsOptionWidget> m_page;
};

} // namespace

bool measurePageState()
{
    const CoreSnapshot full = fullCore(0, QLatin1Char('A'));
    const CoreSnapshot other = fullCore(100000, QLatin1Char('5'));
    CoreSnapshot otherValue = full;
    otherValue.probeOuts[PortCount / 2] = portOf(PortCount / 2, PortCount / 2, QLatin1Char('3'));
    CoreSnapshot otherPort = full;
    otherPort.probeOuts[PortCount / 2] = other.probeOuts.at(PortCount / 2);
    otherPort.probeIns[PortCount / 2] = other.probeIns.at(PortCount / 2);
    const CoreSnapshot fewer = withoutFirstPorts(full);
    CoreSnapshot empty;

    StatePage page(full);
    page.build();
    const Content shown = page.read(std::make_shared<const CoreSnapshot>(full));
    const std::vector<double> times = interleavedMedians(
        Rounds,
        {[&] { page.build(); }, [&] { page.readOften(shown); }, [&] { page.readAfterEdits(); },
         [&] { page.restore(full); }, [&] { page.restore(otherValue); },
         [&] { page.restore(otherPort); }, [&] { page.restore(full); },
         [&] { page.restore(fewer); }, [&] { page.restore(full); }, [&] { page.restore(other); },
         [&] { page.restore(full); }, [&] { page.restore(empty); }, [&] { page.restore(full); }});

    const double build = times[0];
    Table table("State of a page of " + std::to_string(PortCount) + " + " +
                std::to_string(PortCount) + " ports of " + std::to_string(SignalCount) +
                " single nets, shown, Probe Out ports expanded, CPU time, median of " +
                std::to_string(Rounds) + " rounds");
    table.add("building the page", build, "s", 0.35);
    table.add("reading it, nothing changed", times[1] / Reads * 1e3, "ms", 1);
    table.add("applying a value and reading the page", times[2] / Reads * 1e3, "ms");
    table.add("restoring one value", times[4], "s");
    table.add("restoring the signals of two ports", times[5], "s");
    table.add("removing the first ports", times[7], "s");
    table.add("bringing back the first ports", times[8], "s");
    table.add("restoring other signals and values everywhere", times[9], "s");
    table.add("the same / building the page", times[9] / build, "x", 2);
    table.add("removing all ports", times[11], "s");
    table.add("bringing back all ports", times[12], "s");
    table.add("the same / building the page", times[12] / build, "x", 2);
    return table.print();
}

} // namespace TarnBench
