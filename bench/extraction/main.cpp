// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "clockfigures.h"
#include "design.h"
#include "generateddesign.h"
#include "generatedvhdl.h"
#include "largedesigns.h"
#include "netlists.h"

#include <netweir/rtlnetlist.h>

#include <support/benchmark.h>
#include <support/freshprocess.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <memory>

using namespace NETWEIR;
using TarnBench::Table;

namespace {

bool compareWithElaborator(const std::string &title, const Design &design, int rounds, double goal)
{
    std::unique_ptr<RtlNetlist> netlist;
    std::vector<double> walls[2];
    const auto timed = [&walls](int which, const std::function<void()> &work) {
        QElapsedTimer clock;
        clock.start();
        work();
        walls[which].push_back(double(clock.nsecsElapsed()) / 1e9);
    };
    const std::vector<double> times = TarnBench::interleavedMedians(
        rounds,
        {[&] { timed(0, [&] { elaborateAlone(design); }); }, [&] { preprocessAlone(design); },
         [&] { timed(1, [&] { netlist = extract(design); }); }, [&] { netlist.reset(); }},
        rounds > 1 ? TarnBench::WarmUp::Yes : TarnBench::WarmUp::No);
    netlist = extract(design);

    Table table(title + ", " + std::to_string(bitCount(*netlist)) + " bits, CPU time, median of " +
                std::to_string(rounds) + " rounds");
    table.add("elaborator alone", times[0], "s");
    if (!design.files.isEmpty())
        table.add("preprocessor alone (-E)", times[1], "s");
    table.add("whole extraction", times[2], "s");
    table.add("whole extraction / elaborator alone", times[2] / times[0], "x", goal);
    if (!design.files.isEmpty())
        table.add("whole extraction / both processes alone", times[2] / (times[0] + times[1]), "x",
                  goal);
    table.add("the same as first, by the clock",
              TarnBench::median(walls[1]) / TarnBench::median(walls[0]), "x");
    return table.print();
}

bool measureGenerated(const std::string &title, const GeneratedDesign &generated, int rounds)
{
    QTemporaryDir folder;
    Design design;
    design.top = QStringLiteral("bench_top");
    design.standard = QStringLiteral("1364-2005");
    design.files.append(folder.filePath(QStringLiteral("bench.v")));
    writeSource(design.files.first(), generated.source());
    return compareWithElaborator(title, design, rounds, 1.3);
}

Design generatedVhdl(const QTemporaryDir &folder)
{
    Design design;
    design.top = QStringLiteral("bench_top");
    design.vhdlFiles.append({folder.filePath(QStringLiteral("bench.vhd")), QStringLiteral("work")});
    writeSource(design.vhdlFiles.first().path, GeneratedVhdl().source());
    return design;
}

/// What a process that extracts the generated VHDL design, and nothing else, needs at its peak.
bool measureVhdlMemory(const QString &argument)
{
    const TarnBench::ProcessFigures figures = TarnBench::measureProcess(
        {QCoreApplication::applicationFilePath().toStdString(), argument.toStdString()});
    Table table("Generated VHDL design, memory");
    table.add("peak of the process that extracts it", figures.peakBytes / 1e6, "MB", 300);
    return table.print();
}

} // namespace

/// Compares the extraction with the elaborator alone. Exits with 1 when a goal is missed. The
/// argument "quick" leaves out the largest designs, "large" all others,
/// "netlists" all designs, and "clock" all but the times by the clock.
int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    TarnBench::readArguments(argc, argv);
    const bool quick = app.arguments().contains(QStringLiteral("quick"));
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});

    const QString memoryArgument = QStringLiteral("vhdl-memory");
    if (app.arguments().contains(memoryArgument)) {
        const QTemporaryDir folder;
        extract(generatedVhdl(folder));
        return 0;
    }
    if (extractLargeDesign(app.arguments()) || buildNetlist(app.arguments()))
        return 0;
    if (app.arguments().contains(QStringLiteral("netlists")))
        return measureNetlists() ? 0 : 1;
    if (app.arguments().contains(QStringLiteral("large")))
        return measureLargeDesigns() ? 0 : 1;
    if (app.arguments().contains(QStringLiteral("clock")))
        return measureByTheClock() ? 0 : 1;

    bool good = measureNetlists();
    good &= compareWithElaborator(
        "Example sensorhub", exampleDesign(QStringLiteral("sensorhub"), QStringLiteral("hub_top")),
        15, 1.2);
    good &= compareWithElaborator(
        "Example packetfilter",
        exampleDesign(QStringLiteral("packetfilter"), QStringLiteral("pf_top")), 15, 1.2);
    Design motorDrive = exampleDesign(QStringLiteral("motordrive"), QStringLiteral("motor_top"));
    motorDrive.verilogTop = QStringLiteral("pwm_core");
    motorDrive.innerEntities.append(QStringLiteral("dead_time"));
    motorDrive.hasTables = false;
    motorDrive.models.append(QStringLiteral(TARN_EXAMPLES_DIR "/motordrive/tb/dead_time_model.sv"));
    good &= compareWithElaborator("Example motordrive", motorDrive, 15, 1.3);
    const QTemporaryDir folder;
    good &= compareWithElaborator("Generated VHDL design, 73 different entities",
                                  generatedVhdl(folder), 3, 1.3);
    good &= measureVhdlMemory(memoryArgument);
    good &= measureByTheClock();
    GeneratedDesign generated;
    good &= measureGenerated("Generated design, 500 different modules", generated, 5);
    if (!quick) {
        generated.blockModules = generated.groups * generated.blocksPerGroup;
        generated.groupModules = generated.groups;
        good &= measureGenerated("Generated design, every module different", generated, 1);
        good &= measureLargeDesigns();
    }
    return good ? 0 : 1;
}
