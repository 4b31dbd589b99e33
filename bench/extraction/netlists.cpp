// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "netlists.h"

#include "design.h"

#include <netweir/hierachy.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>

#include <support/benchmark.h>
#include <support/freshprocess.h>
#include <support/generatednetlist.h>

#include <QCoreApplication>
#include <QHash>

#include <memory>
#include <sstream>

using NETWEIR::RtlNet;
using NETWEIR::RtlNetBus;
using NETWEIR::RtlNetlist;
using TarnBench::Table;

namespace {

const QString LettersArgument = QStringLiteral("netlist-letters=");

/// What a netlist took, as a process prints it. Times are CPU seconds for all nets or names.
struct Figures
{
    double bits = 0;
    double letters = 0; ///< Of a full path, on average.
    double bytes = 0;   ///< The index of findNet() included.
    double firstBuilding = 0;
    double building = 0;
    double indexing = 0;
    double destruction = 0;
    double joining = 0; ///< All full paths, one after the other.
    double copying = 0; ///< The same in one string, which keeps the path of a node.
    double names = 0;   ///< The number of names that are looked up.
    double finding = 0;
    double hashing = 0; ///< The same in a hash of ready names.
};

QList<RtlNet *> allNets(const RtlNetlist &netlist)
{
    QList<RtlNet *> nets = netlist.top()->singleNetsIncludeSub();
    for (const RtlNetBus *bus : netlist.top()->netbusesIncludeSub())
        nets += bus->nets();
    return nets;
}

qint64 lettersOfNames(const QList<RtlNet *> &nets)
{
    qint64 letters = 0;
    for (const RtlNet *net : nets)
        letters += net->fullPathName().size();
    return letters;
}

/// Versions that this one is compared with may only have the full path.
template <typename Net>
auto writeName(const Net *net, QString *name, const Net *before, int)
    -> decltype(net->copyFullPathName(name, before))
{
    return net->copyFullPathName(name, before);
}

template <typename Net>
int writeName(const Net *net, QString *name, const Net *, long)
{
    *name = net->fullPathName();
    return 0;
}

void copyNames(const QList<RtlNet *> &nets)
{
    QString name;
    const RtlNet *before = nullptr;
    for (const RtlNet *net : nets) {
        writeName(net, &name, before, 0);
        before = net;
    }
}

void measureNames(const RtlNetlist &netlist, Figures *figures)
{
    const QList<RtlNet *> nets = allNets(netlist);
    qint64 letters = 0;
    const std::vector<double> times = TarnBench::interleavedMedians(
        5, {[&] { letters = lettersOfNames(nets); }, [&] { copyNames(nets); }});
    figures->letters = double(letters) / nets.size();
    figures->joining = times[0];
    figures->copying = times[1];
}

/// Looks up one bit of each bus, in the order of the netlist.
void measureFinding(const RtlNetlist &netlist, Figures *figures)
{
    QHash<QString, RtlNet *> ready;
    for (RtlNet *net : allNets(netlist))
        ready.insert(net->fullPathName(), net);
    QStringList names;
    for (const RtlNetBus *bus : netlist.top()->netbusesIncludeSub())
        names.append(bus->nets().last()->fullPathName());
    const auto check = [](const RtlNet *net) {
        if (!net)
            fail(QStringLiteral("a net was not found"));
    };
    const std::vector<double> times =
        TarnBench::interleavedMedians(9, {[&] {
                                              for (const QString &name : qAsConst(names))
                                                  check(netlist.findNet(name));
                                          },
                                          [&] {
                                              for (const QString &name : qAsConst(names))
                                                  check(ready.value(name));
                                          }});
    figures->names = names.size();
    figures->finding = times[0];
    figures->hashing = times[1];
}

Figures measureNetlist(int letters)
{
    Figures figures;
    std::unique_ptr<RtlNetlist> netlist;
    const double before = TarnBench::residentBytes();
    figures.firstBuilding =
        TarnBench::timeOf([&] { netlist = TarnBench::generatedNetlist(letters); });
    figures.indexing = TarnBench::timeOf([&] { netlist->findNet(QString()); });
    figures.bytes = TarnBench::residentBytes() - before;
    figures.bits = bitCount(*netlist);
    measureNames(*netlist, &figures);
    measureFinding(*netlist, &figures);
    const std::vector<double> times = TarnBench::interleavedMedians(
        5, {[&] { netlist = TarnBench::generatedNetlist(letters); }, [&] { netlist.reset(); }});
    figures.building = times[0];
    figures.destruction = times[1];
    return figures;
}

bool measureNetlists(int letters)
{
    const QString argument = LettersArgument + QString::number(letters);
    const TarnBench::ProcessFigures process = TarnBench::measureProcess(
        {QCoreApplication::applicationFilePath().toStdString(), argument.toStdString()});
    Figures run;
    std::istringstream(process.output) >> run.bits >> run.letters >> run.bytes >>
        run.firstBuilding >> run.building >> run.indexing >> run.destruction >> run.joining >>
        run.copying >> run.names >> run.finding >> run.hashing;
    if (run.hashing <= 0)
        fail(QStringLiteral("no figures of a netlist"));

    Table table("Netlist of " + std::to_string(int(run.bits)) + " bits, paths of " +
                std::to_string(int(run.letters)) + " letters on average, CPU time");
    table.add("memory of a million nets, index included", run.bytes / run.bits, "MB", 150);
    table.add("building, first time in the process", run.firstBuilding / run.bits * 1e9, "ns/net",
              200);
    table.add("building again", run.building / run.bits * 1e9, "ns/net", 200);
    table.add("index for findNet, at its first call", run.indexing / run.bits * 1e9, "ns/net");
    table.add("findNet", run.finding / run.names * 1e9, "ns");
    table.add("findNet / look-up in a hash of ready names", run.finding / run.hashing, "x", 1.5);
    table.add("full path of a net", run.joining / run.bits * 1e9, "ns");
    table.add("the same in the memory of the one before", run.copying / run.bits * 1e9, "ns");
    table.add("destruction", run.destruction / run.bits * 1e9, "ns/net");
    return table.print();
}

} // namespace

bool measureNetlists()
{
    bool good = true;
    for (const int letters : {0, 135, 195})
        good &= measureNetlists(letters);
    return good;
}

bool buildNetlist(const QStringList &arguments)
{
    const QStringList own = arguments.filter(LettersArgument);
    if (own.isEmpty())
        return false;
    const Figures run = measureNetlist(own.first().mid(LettersArgument.size()).toInt());
    for (const double figure :
         {run.bits, run.letters, run.bytes, run.firstBuilding, run.building, run.indexing,
          run.destruction, run.joining, run.copying, run.names, run.finding, run.hashing})
        std::printf("%.6f\n", figure);
    return true;
}
