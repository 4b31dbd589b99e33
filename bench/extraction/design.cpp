// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "design.h"

#include <netweir/designextraction.h>
#include <netweir/hierachy.h>
#include <netweir/rtlextraction.h>
#include <netweir/rtlnetbus.h>

#include <te/designinfo.h>
#include <te/fileinfo.h>

#include <support/benchmark.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>

using namespace NETWEIR;

namespace {

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

} // namespace

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

void writeSource(const QString &path, const QByteArray &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) < 0)
        fail(QStringLiteral("cannot write ") + path);
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

QMap<QString, QVariant> designInfo(const Design &design)
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
    return {{TE::DesignInfo::Top, design.top},
            {TE::DesignInfo::Files, files},
            {TE::DesignInfo::IncludePaths, design.includePaths},
            {TE::DesignInfo::Macros, design.macros},
            {TE::DesignInfo::Standard, design.standard},
            {TE::DesignInfo::Timeout, 600}};
}

std::unique_ptr<RtlNetlist> extract(const Design &design)
{
    QMap<QString, QVariant> info = designInfo(design);
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

std::unique_ptr<RtlNetlist> extractWithoutWindow(const Design &design)
{
    DesignExtraction extraction(designInfo(design));
    QStringList tops;
    QStringList modules;
    QStringList messages;
    extraction.findModules(&tops, &modules, &messages);
    std::unique_ptr<RtlNetlist> netlist = extraction.buildNetlist(&messages);
    if (!netlist)
        fail(QStringLiteral("no netlist: ") + messages.join(QLatin1Char('\n')));
    return netlist;
}

int bitCount(const RtlNetlist &netlist)
{
    int bits = netlist.top()->singleNetsIncludeSub().size();
    for (const RtlNetBus *bus : netlist.top()->netbusesIncludeSub())
        bits += bus->nets().size();
    return bits;
}
