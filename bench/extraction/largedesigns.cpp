// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "largedesigns.h"

#include "design.h"
#include "flatdesign.h"
#include "generatedvhdl.h"
#include "largedesign.h"

#include <support/benchmark.h>
#include <support/freshprocess.h>

#include <QCoreApplication>
#include <QTemporaryDir>

#include <chrono>
#include <malloc.h>
#include <sstream>

using TarnBench::Table;

namespace {

const QString FewArgument = QStringLiteral("large-few");
const QString ManyArgument = QStringLiteral("large-many");
const QString VhdlArgument = QStringLiteral("large-vhdl");
const QString CellsArgument = QStringLiteral("large-cells");
const QString NetsArgument = QStringLiteral("large-nets");

/// What the extraction of a large design took, as a process prints it.
struct Extraction
{
    double bits = 0;
    double ownCpu = 0;  ///< Seconds of this process alone.
    double toolCpu = 0; ///< Seconds of the processes of the tools.
    double wall = 0;
    double peakBytes = 0;    ///< Of this process, beyond what it had before.
    double netlistBytes = 0; ///< What remains when the extraction has ended.
    double destruction = 0;  ///< Seconds to delete the netlist.
};

Design verilogDesign(const QTemporaryDir &folder, bool hasOwnModules)
{
    LargeDesign generated;
    generated.hasOwnModules = hasOwnModules;
    Design design;
    design.top = QStringLiteral("bench_top");
    design.files.append(folder.filePath(QStringLiteral("bench.sv")));
    writeSource(design.files.first(), generated.source());
    return design;
}

Design vhdlDesign(const QTemporaryDir &folder)
{
    GeneratedVhdl generated;
    generated.groups = 64;
    Design design;
    design.top = QStringLiteral("bench_top");
    design.vhdlFiles.append({folder.filePath(QStringLiteral("bench.vhd")), QStringLiteral("work")});
    writeSource(design.vhdlFiles.first().path, generated.source());
    return design;
}

/// The elaborator takes more than linear time for one module with many nets.
Design flatDesign(const QTemporaryDir &folder, bool hasCells)
{
    FlatDesign generated;
    if (hasCells)
        generated.cells = 60000;
    else
        generated.nets = 200000;
    Design design;
    design.top = QStringLiteral("bench_top");
    design.standard = QStringLiteral("1364-2005");
    design.files.append(folder.filePath(QStringLiteral("bench.v")));
    writeSource(design.files.first(), generated.source());
    return design;
}

Design largeDesign(const QTemporaryDir &folder, const QString &argument)
{
    if (argument == VhdlArgument)
        return vhdlDesign(folder);
    if (argument == CellsArgument || argument == NetsArgument)
        return flatDesign(folder, argument == CellsArgument);
    return verilogDesign(folder, argument == ManyArgument);
}

double wallOf(const std::function<void()> &work)
{
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

Extraction measureExtraction(const Design &design)
{
    Extraction result;
    std::unique_ptr<NETWEIR::RtlNetlist> netlist;
    TarnBench::resetPeak();
    const double bytesBefore = TarnBench::residentBytes();
    const double ownBefore = TarnBench::cpuSeconds(RUSAGE_SELF);
    result.wall = wallOf([&] { netlist = extractWithoutWindow(design); });
    result.ownCpu = TarnBench::cpuSeconds(RUSAGE_SELF) - ownBefore;
    result.toolCpu = TarnBench::cpuSeconds(RUSAGE_CHILDREN);
    result.peakBytes = TarnBench::peakResidentBytes() - bytesBefore;
    ::malloc_trim(0);
    result.netlistBytes = TarnBench::residentBytes() - bytesBefore;
    result.bits = bitCount(*netlist);
    result.destruction = TarnBench::timeOf([&] { netlist.reset(); });
    return result;
}

bool measureLargeDesign(const std::string &title, const QString &argument)
{
    const QTemporaryDir folder;
    const Design design = largeDesign(folder, argument);
    const double elaboratorWall = wallOf([&] { elaborateAlone(design); });
    const TarnBench::ProcessFigures process = TarnBench::measureProcess(
        {QCoreApplication::applicationFilePath().toStdString(), argument.toStdString()});
    Extraction run;
    std::istringstream(process.output) >> run.bits >> run.ownCpu >> run.toolCpu >> run.wall >>
        run.peakBytes >> run.netlistBytes >> run.destruction;
    if (run.netlistBytes <= 0)
        fail(QStringLiteral("no figures of a large design"));

    Table table(title + ", " + std::to_string(int(run.bits)) + " bits, one run");
    table.add("own CPU time, without the tools' processes", run.ownCpu / run.bits * 1e6, "us/net",
              0.6);
    table.add("CPU time of the tools' processes", run.toolCpu, "s");
    table.add("whole extraction / elaborator alone, by the clock", run.wall / elaboratorWall, "x",
              1.25);
    table.add("own peak of memory", run.peakBytes / 1e6, "MB");
    table.add("netlist that remains", run.netlistBytes / 1e6, "MB");
    table.add("own peak / netlist that remains", run.peakBytes / run.netlistBytes, "x", 1.5);
    table.add("destruction of the netlist", run.destruction / run.bits * 1e9, "ns/net");
    return table.print();
}

} // namespace

bool measureLargeDesigns()
{
    bool good = measureLargeDesign("Large design, few modules", FewArgument);
    good &= measureLargeDesign("Large design, 16,000 modules", ManyArgument);
    good &= measureLargeDesign("Large VHDL design", VhdlArgument);
    good &= measureLargeDesign("One module with 60,000 cells", CellsArgument);
    good &= measureLargeDesign("One module with 200,000 single nets", NetsArgument);
    return good;
}

bool extractLargeDesign(const QStringList &arguments)
{
    for (const QString &argument :
         {FewArgument, ManyArgument, VhdlArgument, CellsArgument, NetsArgument}) {
        if (!arguments.contains(argument))
            continue;
        const QTemporaryDir folder;
        const Extraction run = measureExtraction(largeDesign(folder, argument));
        for (const double figure : {run.bits, run.ownCpu, run.toolCpu, run.wall, run.peakBytes,
                                    run.netlistBytes, run.destruction})
            std::printf("%.6f\n", figure);
        return true;
    }
    return false;
}
