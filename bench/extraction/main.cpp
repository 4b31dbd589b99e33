// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "generateddesign.h"
#include "generatedvhdl.h"

#include <netweir/hierachy.h>
#include <netweir/rtlextraction.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>

#include <te/designinfo.h>
#include <te/fileinfo.h>

#include <support/benchmark.h>
#include <support/freshprocess.h>
#include <support/generatednetlist.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>

#include <memory>

using namespace NETWEIR;
using TarnBench::Table;

namespace {

/// A VHDL file and the library of its units.
struct VhdlFile
{
    QString path;
    QString library;
};

/// The input of both the extractor and the elaborators alone.
struct Design
{
    QString top;
    QString verilogTop;        ///< That of the Verilog part, when the top is an entity.
    QStringList innerEntities; ///< That the Verilog part instantiates.
    bool hasTables = true;     ///< GHDL fails on its own tables of a case generate statement.
    QStringList models; ///< Sources in place of units of the other language, for elaborators alone.
    QString standard = QStringLiteral("1800-2017");
    QStringList files; ///< Of Verilog.
    QVector<VhdlFile> vhdlFiles;
    QStringList includePaths;
    QStringList macros;
};

void fail(const QString &reason)
{
    TarnBench::fail(reason.toStdString());
}

Design exampleDesign(const QString &name, const QString &top)
{
    const QDir folder(QStringLiteral(TARN_EXAMPLES_DIR "/") + name);
    QFile file(folder.filePath(name + QStringLiteral(".json")));
    if (!file.open(QIODevice::ReadOnly))
        fail(QStringLiteral("cannot read ") + file.fileName());
    const QJsonObject project = QJsonDocument::fromJson(file.readAll()).object();
    const QJsonObject options = project.value(QLatin1String("options")).toObject();
    Design design;
    design.top = top;
    design.standard =
        options.value(QLatin1String("Verilog_Standard")).toString(QStringLiteral("1800-2017"));
    for (const QJsonValue &value : project.value(QLatin1String("sources")).toArray()) {
        const QJsonObject source = value.toObject();
        const QString type = source.value(QLatin1String("type")).toString();
        if (!source.value(QLatin1String("enabled")).toBool())
            continue;
        const QString path = folder.filePath(source.value(QLatin1String("file")).toString());
        if (type == QLatin1String("VHDL"))
            design.vhdlFiles.append(
                {path, source.value(QLatin1String("library")).toString(QStringLiteral("work"))});
        else if (type.endsWith(QLatin1String("Verilog")))
            design.files.append(path);
    }
    for (const QJsonValue &path : options.value(QLatin1String("IncludePath")).toArray())
        design.includePaths.append(folder.filePath(path.toString()));
    for (const QJsonValue &macro : project.value(QLatin1String("macros")).toArray())
        design.macros.append(macro.toString());
    return design;
}

QStringList sourceArguments(const Design &design)
{
    QStringList arguments{QStringLiteral("-Wno-fatal"), QStringLiteral("-DSYNTHESIS")};
    for (const QString &path : design.includePaths)
        arguments.append(QStringLiteral("-I") + path);
    for (const QString &macro : design.macros)
        arguments.append(QStringLiteral("-D") + macro);
    const QDir primitives(QStringLiteral(TARN_PRIMITIVES_DIR));
    for (const QString &primitive : primitives.entryList({QStringLiteral("*.v")}))
        arguments += {QStringLiteral("-v"), primitives.filePath(primitive)};
    return arguments + design.files;
}

void runTool(const QTemporaryDir &folder, const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setWorkingDirectory(folder.path());
    process.setStandardOutputFile(folder.filePath(QStringLiteral("stdout")));
    process.start(program, arguments);
    if (!process.waitForFinished(-1) || process.exitCode() != 0)
        fail(QStringLiteral("the elaborator failed: ") +
             QString::fromLocal8Bit(process.readAllStandardError()));
}

void runVerilator(const QStringList &arguments)
{
    runTool(QTemporaryDir(), QStringLiteral("verilator_bin"), arguments);
}

/// The elaborator of Verilog alone, run like the extractor runs it, on the unchanged sources.
void elaborateVerilog(const Design &design)
{
    runVerilator(QStringList{"--xml-only", "-O0", "--no-timing", "-Wno-lint", "-Wno-style",
                             "-Wno-context", "--bbox-sys", "--bbox-unsup", "--error-limit",
                             "100000", "--unroll-count", "100000", "--Mdir", ".", "--top-module",
                             design.verilogTop.isEmpty() ? design.top : design.verilogTop,
                             "--default-language", design.standard, "+1800-2017ext+sv"} +
                 sourceArguments(design) + design.models);
}

/// The elaborator of VHDL alone: collecting, analysing, and a run that writes what the extractor
/// needs.
void elaborateVhdl(const Design &design)
{
    const QTemporaryDir folder;
    const QString ghdl = QStringLiteral("ghdl");
    const QStringList options{QStringLiteral("--std=08"), QStringLiteral("-P.")};
    QMap<QString, QStringList> libraries;
    for (const VhdlFile &file : design.vhdlFiles)
        libraries[file.library].append(file.path);
    for (auto library = libraries.cbegin(); library != libraries.cend(); ++library)
        runTool(folder, ghdl,
                QStringList{QStringLiteral("-i")} + options +
                    QStringList{QStringLiteral("--work=") + library.key()} + library.value());
    for (const QString &top : QStringList{design.top} + design.innerEntities) {
        runTool(folder, ghdl, QStringList{QStringLiteral("-m")} + options + QStringList{top});
        QStringList run =
            QStringList{QStringLiteral("-r")} + options +
            QStringList{top, "--stop-time=0ns", "--asserts=disable", "--wave=wave.ghw"};
        if (design.hasTables)
            run += {"--disp-signals-map", "--disp-signals-table"};
        runTool(folder, ghdl, run);
    }
}

void elaborateAlone(const Design &design)
{
    if (!design.vhdlFiles.isEmpty())
        elaborateVhdl(design);
    if (!design.files.isEmpty())
        elaborateVerilog(design);
}

void preprocessAlone(const Design &design)
{
    if (!design.files.isEmpty())
        runVerilator(QStringList{QStringLiteral("-E")} + sourceArguments(design));
}

std::unique_ptr<RtlNetlist> extract(const Design &design)
{
    QVariantList files;
    for (const QString &file : design.files) {
        const int type =
            file.endsWith(QLatin1String(".sv")) ? TE::SystemVerilogFile : TE::VerilogFile;
        files.append(QVariantMap{{TE::DesignInfo::Path, file}, {TE::DesignInfo::Type, type}});
    }
    for (const VhdlFile &file : design.vhdlFiles)
        files.append(QVariantMap{{TE::DesignInfo::Path, file.path},
                                 {TE::DesignInfo::Type, TE::VhdlFile},
                                 {TE::DesignInfo::Library, file.library}});
    QMap<QString, QVariant> info{{TE::DesignInfo::Top, design.top},
                                 {TE::DesignInfo::Files, files},
                                 {TE::DesignInfo::IncludePaths, design.includePaths},
                                 {TE::DesignInfo::Macros, design.macros},
                                 {TE::DesignInfo::Standard, design.standard}};
    QStringList tops;
    QStringList modules;
    QStringList messages;
    catchRtlModules(tops, modules, messages, info, nullptr);
    RtlNetlist *netlist = nullptr;
    catchRtlNetsWithProgressDialog(&netlist, messages, nullptr);
    if (!netlist)
        fail(QStringLiteral("no netlist: ") + messages.join(QLatin1Char('\n')));
    return std::unique_ptr<RtlNetlist>(netlist);
}

int bitCount(const RtlNetlist &netlist)
{
    int bits = netlist.top()->singleNetsIncludeSub().size();
    for (const RtlNetBus *bus : netlist.top()->netbusesIncludeSub())
        bits += bus->nets().size();
    return bits;
}

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
         [&] { timed(1, [&] { netlist = extract(design); }); }, [&] { netlist.reset(); }});
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

bool measureNetlist()
{
    // First, before the process has used any memory.
    const double before = TarnBench::residentBytes();
    std::unique_ptr<RtlNetlist> netlist;
    const double coldTime = TarnBench::timeOf([&] { netlist = TarnBench::generatedNetlist(); });
    const double bits = bitCount(*netlist);
    const double indexTime = TarnBench::timeOf([&] { netlist->findNet(QString()); });
    const double bytes = TarnBench::residentBytes() - before;

    QStringList names;
    for (const RtlNetBus *bus : netlist->top()->netbusesIncludeSub())
        names.append(bus->nets().last()->fullPathName());
    const double searchTime =
        TarnBench::interleavedMedians(9, {[&] {
                                          for (const QString &name : qAsConst(names)) {
                                              if (!netlist->findNet(name))
                                                  fail(QStringLiteral("a net was not found"));
                                          }
                                      }})[0];
    const std::vector<double> warm = TarnBench::interleavedMedians(
        5, {[&] { netlist = TarnBench::generatedNetlist(); }, [&] { netlist.reset(); }});

    Table table("Netlist of " + std::to_string(int(bits)) + " bits, CPU time");
    table.add("building, first time in the process", coldTime / bits * 1e9, "ns/net", 200);
    table.add("building again", warm[0] / bits * 1e9, "ns/net", 200);
    table.add("index for findNet, at its first call", indexTime / bits * 1e9, "ns/net");
    table.add("findNet", searchTime / names.size() * 1e9, "ns");
    table.add("destruction", warm[1] / bits * 1e9, "ns/net");
    table.add("memory of a million nets, index included", bytes / bits, "MB", 300);
    return table.print();
}

void writeSource(const QString &path, const QByteArray &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) < 0)
        fail(QStringLiteral("cannot write ") + path);
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
/// argument "quick" leaves out the largest design.
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

    bool good = measureNetlist();
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
                                  generatedVhdl(folder), 5, 1.3);
    good &= measureVhdlMemory(memoryArgument);
    GeneratedDesign generated;
    good &= measureGenerated("Generated design, 500 different modules", generated, 5);
    if (!quick) {
        generated.blockModules = generated.groups * generated.blocksPerGroup;
        generated.groupModules = generated.groups;
        good &= measureGenerated("Generated design, every module different", generated, 1);
    }
    return good ? 0 : 1;
}
