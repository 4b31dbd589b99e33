// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "processrun.h"

#include <extraction/generateddesign.h>
#include <model/tarnconfig.h>
#include <model/tarncore.h>
#include <support/benchmark.h>
#include <support/fullconfig.h>

#include <QFile>
#include <QTemporaryDir>

using TarnBench::ProcessTimes;
using TarnBench::Table;

namespace {

constexpr int StartRounds = 101;
constexpr int DesignRounds = 21;
constexpr int LimitRounds = 3;
constexpr int LargeRounds = 3;
constexpr double FirstOutputGoal = 50; ///< Milliseconds.
constexpr double CheckGoal = 1.2;      ///< Times the extraction alone.
constexpr double MissingGoal = 1.5;    ///< The same where nets are missing.

const std::string Tool = TARN_TOOL;
const std::string Examples = TARN_EXAMPLES_DIR "/";

bool measureStart()
{
    const std::vector<ProcessTimes> times = TarnBench::interleavedRuns(
        StartRounds, {{TARN_START_ONLY}, {Tool, "show", Examples + "sensorhub/sensorhub.tarn"}});
    Table table("From the start of a process to its first output, by the clock; medians of " +
                std::to_string(StartRounds) + " rounds");
    table.add("a program with an application object and nothing else", times[0].firstOutput * 1e3,
              "ms");
    table.add("tarn show", times[1].firstOutput * 1e3, "ms", FirstOutputGoal);
    table.add("tarn show, CPU time of the whole run", times[1].cpu * 1e3, "ms");
    return table.print();
}

bool measureCheck()
{
    Table table("Check of an example against a program that only extracts its design; medians of " +
                std::to_string(DesignRounds) + " rounds");
    for (const std::string name : {"sensorhub", "packetfilter", "motordrive"}) {
        const std::string base = Examples + name + "/" + name;
        const std::vector<ProcessTimes> times = TarnBench::interleavedRuns(
            DesignRounds, {{TARN_EXTRACT_ONLY, base + ".json"},
                           {Tool, "check", "--format", "json", base + ".json", base + ".tarn"}});
        table.add(name + ": extraction alone", times[0].all * 1e3, "ms");
        table.add(name + ": tarn check", times[1].all * 1e3, "ms");
        table.add(name + ": by the clock", times[1].all / times[0].all, "x", CheckGoal);
        table.add(name + ": CPU time", times[1].cpu / times[0].cpu, "x", CheckGoal);
    }
    return table.print();
}

/// Writes what @p command prints to @p path.
void keepOutput(std::vector<std::string> command, const std::string &path)
{
    command.insert(command.begin(), {"/bin/sh", "-c", "\"$@\" >\"$0\" && echo done", path});
    TarnBench::runProcess(command);
}

QByteArray contentOf(const std::string &path)
{
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly))
        TarnBench::fail("cannot read " + path);
    return file.readAll();
}

/// The median CPU seconds of @p command.
double cpuOf(const std::vector<std::string> &command, const std::string &input = {},
             int exitCode = 0, int rounds = LimitRounds)
{
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round)
        times.push_back(TarnBench::runProcess(command, input, exitCode).cpu);
    return TarnBench::median(times);
}

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        TarnBench::fail("cannot write " + path.toStdString());
}

/// A design that has none of the nets of the configuration: as many findings as there can be.
std::string writeStrangeDesign(const QTemporaryDir &folder)
{
    const QString path = folder.filePath(QStringLiteral("strange.v"));
    writeFile(path, "module strange(input a, output b); assign b = a; endmodule\n");
    return path.toStdString();
}

/// A configuration at all limits, in a file of @p folder.
std::string writeFullConfig(const QTemporaryDir &folder)
{
    const QString path = folder.filePath(QStringLiteral("full.tarn"));
    const QList<TARN::TarnCore *> cores = TarnBench::fullConfig();
    const bool written = TARN::writeTARNConfigToXml(cores, path);
    qDeleteAll(cores);
    if (!written)
        TarnBench::fail("cannot write " + path.toStdString());
    return path.toStdString();
}

bool measureLimits()
{
    const QTemporaryDir folder;
    const std::string config = writeFullConfig(folder);
    const std::string json = folder.filePath(QStringLiteral("full.json")).toStdString();
    const std::string copy = folder.filePath(QStringLiteral("copy.tarn")).toStdString();
    keepOutput({Tool, "show", "--json", config}, json);

    Table table("A configuration at all limits, CPU time of the whole run; medians of " +
                std::to_string(LimitRounds) + " rounds");
    table.add("tarn show", cpuOf({Tool, "show", config}), "s");
    table.add("tarn show --json", cpuOf({Tool, "show", "--json", config}), "s");
    table.add("tarn write", cpuOf({Tool, "write", copy}, json), "s");
    for (const std::string format : {"csv", "json"})
        table.add("tarn export map --format " + format,
                  cpuOf({Tool, "export", "map", "--format", format, config}), "s");
    const std::string design = writeStrangeDesign(folder);
    for (const std::string format : {"text", "sarif"})
        table.add("tarn check --format " + format + ", every bit missing",
                  cpuOf({Tool, "check", "--format", format, design, config}, {}, 1), "s");
    if (contentOf(copy) != contentOf(config))
        TarnBench::fail("tarn write writes another configuration");
    return table.print();
}

/// The project file of a generated design with a million bits.
std::string writeLargeDesign(const QTemporaryDir &folder)
{
    const QString project = folder.filePath(QStringLiteral("bench.json"));
    writeFile(folder.filePath(QStringLiteral("bench.v")), GeneratedDesign().source());
    writeFile(project, R"({"version": 1, "name": "bench", "top": "bench_top",
        "sources": [{"enabled": true, "file": "bench.v", "type": "Verilog"}]})");
    return project.toStdString();
}

/// The tool beside a program that only reads the same design.
bool measureLargeDesign()
{
    const QTemporaryDir folder;
    const std::string design = writeLargeDesign(folder);
    const std::string config = writeFullConfig(folder);
    const double extraction = cpuOf({TARN_EXTRACT_ONLY, design}, {}, 0, LargeRounds);
    Table table("A design of a million nets, CPU time of the whole run; medians of " +
                std::to_string(LargeRounds) + " rounds");
    const auto add = [&](const std::string &name, const std::vector<std::string> &command,
                         int exitCode, TarnBench::Goal goal) {
        const double time = cpuOf(command, {}, exitCode, LargeRounds);
        table.add(name, time, "s");
        table.add("the same / extraction alone", time / extraction, "x", goal);
    };
    table.add("extraction alone", extraction, "s");
    add("tarn nets of one group", {Tool, "nets", design, "group_inst_77/"}, 0, CheckGoal);
    add("tarn nets --json, all", {Tool, "nets", "--json", design, ""}, 0, {});
    // Both name no net of the design, so that the check also looks for what took their place.
    add("tarn check, an example's configuration",
        {Tool, "check", design, Examples + "sensorhub/sensorhub.tarn"}, 1, MissingGoal);
    add("tarn check, a configuration at all limits", {Tool, "check", design, config}, 1, {});
    return table.print();
}

} // namespace

/// Exits with 1 when a goal is missed. Arguments that are not options name the jobs to measure.
int main(int argc, char *argv[])
{
    return TarnBench::runJobs(argc, argv,
                              {{"start", measureStart},
                               {"check", measureCheck},
                               {"limits", measureLimits},
                               {"large", measureLargeDesign}});
}
