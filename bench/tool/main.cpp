// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "processrun.h"

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
constexpr int LimitRounds = 7;
constexpr double FirstOutputGoal = 50; ///< Milliseconds.
constexpr double CheckGoal = 1.2;      ///< Times the extraction alone.

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
             int exitCode = 0)
{
    std::vector<double> times;
    for (int round = 0; round < LimitRounds; ++round)
        times.push_back(TarnBench::runProcess(command, input, exitCode).cpu);
    return TarnBench::median(times);
}

/// A design that has none of the nets of the configuration: as many findings as there can be.
std::string writeStrangeDesign(const QTemporaryDir &folder)
{
    QFile file(folder.filePath(QStringLiteral("strange.v")));
    if (!file.open(QIODevice::WriteOnly) ||
        file.write("module strange(input a, output b); assign b = a; endmodule\n") < 0)
        TarnBench::fail("cannot write " + file.fileName().toStdString());
    return file.fileName().toStdString();
}

bool measureLimits()
{
    const QTemporaryDir folder;
    const std::string config = folder.filePath(QStringLiteral("full.tarn")).toStdString();
    const std::string json = folder.filePath(QStringLiteral("full.json")).toStdString();
    const std::string copy = folder.filePath(QStringLiteral("copy.tarn")).toStdString();
    const QList<TARN::TarnCore *> cores = TarnBench::fullConfig();
    const bool written = TARN::writeTARNConfigToXml(cores, QString::fromStdString(config));
    qDeleteAll(cores);
    if (!written)
        TarnBench::fail("cannot write " + config);
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

} // namespace

/// Exits with 1 when a goal is missed.
int main(int argc, char *argv[])
{
    TarnBench::readArguments(argc, argv);
    bool good = measureStart();
    good = measureCheck() && good;
    good = measureLimits() && good;
    return good ? 0 : 1;
}
