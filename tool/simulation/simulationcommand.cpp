// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "simulationcommand.h"

#include "simulationmodule.h"
#include "verilogname.h"

#include <model/tarncore.h>
#include <netweir/hierachy.h>
#include <tool/command.h>
#include <tool/configfile.h>
#include <tool/console.h>
#include <tool/design.h>
#include <tool/invocation.h>
#include <tool/wording.h>

#include <QFileInfo>
#include <QSet>

namespace Tool {

namespace {

const QString LanguageOption = QStringLiteral("--language");
const QString PathOption = QStringLiteral("--tb-path");
const QString ModuleOption = QStringLiteral("--module");
const QString SkipOption = QStringLiteral("--skip-missing");

constexpr char DefaultModule[] = "tarn_probes";
constexpr int MostMessages = 20;

/// Whether all cores and all ports of each core have numbers of their own: they are the names in
/// the module.
template <typename Item>
bool areNumbered(const QList<Item *> &items, const QString &what, Console *console)
{
    QSet<int> known;
    for (const Item *item : items) {
        if (item->index < 0 || known.contains(item->index)) {
            const QString text = item->index < 0 ? QStringLiteral("the number of %1 %2 is negative")
                                                 : QStringLiteral("the file has two of %1 %2");
            console->error(text.arg(what).arg(item->index) +
                           QLatin1String("; save it in the editor, which numbers them"));
            return false;
        }
        known.insert(item->index);
    }
    return true;
}

bool areNumbered(const OwnedCores &cores, Console *console)
{
    if (!areNumbered(cores.list(), QStringLiteral("core"), console))
        return false;
    for (const TARN::TarnCore *core : cores.list()) {
        const QString place = QStringLiteral("core %1, ").arg(core->index);
        if (!areNumbered(core->probeIns, place + QLatin1String("Probe In"), console) ||
            !areNumbered(core->probeOuts, place + QLatin1String("Probe Out"), console))
            return false;
    }
    return true;
}

/// Reads the options that need no design. @p path stays empty when none is given.
bool readOptions(const Invocation &invocation, Console *console, SimulationOptions *options,
                 QVector<NETWEIR::NameStep> *path)
{
    options->isSystemVerilog = invocation.value(LanguageOption) != QLatin1String("verilog");
    options->source = QFileInfo(invocation.files.first()).fileName();
    options->module = invocation.isSet(ModuleOption) ? invocation.value(ModuleOption)
                                                     : QLatin1String(DefaultModule);
    QVector<NETWEIR::NameStep> steps;
    if (!readVerilogPath(options->module, &steps) || steps.size() != 1 ||
        !steps.first().indexes.isEmpty()) {
        console->error(
            QStringLiteral("%1 takes the name of a module, not %2; give a Verilog identifier")
                .arg(ModuleOption, options->module));
        return false;
    }
    options->module = steps.first().identifier;
    if (!invocation.isSet(PathOption))
        return true;
    if (!readVerilogPath(invocation.value(PathOption), path)) {
        console->error(QStringLiteral("%1 takes the path of an instance, not %2; write it as in "
                                      "Verilog: hub_tb.dut")
                           .arg(PathOption, invocation.value(PathOption)));
        return false;
    }
    return true;
}

/// Whether names of the design lead out of the module.
bool isVisible(const QString &top, const SimulationOptions &options, const OwnedCores &cores,
               Console *console)
{
    const bool isModule = top == options.module;
    if (!isModule && !SimulationModule::declares(top, cores.list()))
        return true;
    const QString text = QStringLiteral("names that begin with %1 stay in the module, which has "
                                        "that name itself; %2")
                             .arg(quoted(top));
    const QString advice = isModule
                               ? QStringLiteral("give it another one with %1").arg(ModuleOption)
                               : QStringLiteral("instantiate the design in a test bench of "
                                                "another name, and give the path with %1")
                                     .arg(PathOption);
    console->error(text.arg(advice));
    return false;
}

/// False after error messages.
bool checkMisfits(const SimulationModule &module, bool skips, Console *console)
{
    const QStringList &misfits = module.misfits();
    const int shown = qMin(misfits.size(), MostMessages);
    for (int i = 0; i < shown; ++i) {
        if (skips)
            console->warn(misfits.at(i) + QLatin1String("; left out"));
        else
            console->error(misfits.at(i));
    }
    if (misfits.size() > shown) {
        const QString rest = QStringLiteral("and %1 more").arg(misfits.size() - shown);
        if (skips)
            console->warn(rest);
        else
            console->error(rest);
    }
    if (misfits.isEmpty() || skips)
        return true;
    console->error(QStringLiteral("the configuration does not fit the design; correct it, or leave "
                                  "these signals out with %1")
                       .arg(SkipOption));
    return false;
}

void warnOfVhdl(int bits, Console *console)
{
    if (bits == 0)
        return;
    console->warn(
        QStringLiteral("%1 in VHDL or below it will stay unknown; see the comments in the "
                       "module")
            .arg(counted(bits, QStringLiteral("bit"))));
}

int runSimulation(const Invocation &invocation, Console *console)
{
    SimulationOptions options;
    QVector<NETWEIR::NameStep> path;
    OwnedCores cores;
    Design design;
    if (!readOptions(invocation, console, &options, &path) ||
        !readConfig(invocation.files.first(), console, &cores) || !areNumbered(cores, console) ||
        !readDesign(invocation, console, &design))
        return Failure;
    if (path.isEmpty())
        path = design.netlist->nameStepsOf(design.netlist->top());
    if (!isVisible(path.first().identifier, options, cores, console))
        return Failure;
    options.top = verilogPath(path);
    const SimulationModule module(cores.list(), design.netlist.get(), options);
    if (!checkMisfits(module, invocation.isSet(SkipOption), console))
        return Failure;
    warnOfVhdl(module.bitsInVhdl(), console);
    console->write(module.text());
    return Success;
}

Command makeCommand()
{
    Command command;
    command.name = QStringLiteral("export simulation");
    command.synopsis = QStringLiteral("[DESIGN] FILE");
    command.summary = QStringLiteral("write a module that plays the cores in a simulation");
    command.description = QStringLiteral(
        "Writes a module for the simulation of the design. It is one more top beside the\n"
        "test bench: its Probe In ports follow their nets, and its Probe Out ports drive\n"
        "theirs, with their initial values from the begin on. Nets that the design does\n"
        "not have are errors.");
    command.options = {
        {LanguageOption, QStringLiteral("systemverilog|verilog"),
         QStringLiteral("the language of the module: SystemVerilog (default), or Verilog of 2005")},
        {PathOption, QStringLiteral("PATH"),
         QStringLiteral("the instance of the design's top: hub_tb.dut; without it, the design "
                        "itself is the top of the simulation")},
        {ModuleOption, QStringLiteral("NAME"),
         QStringLiteral("the name of the module: %1 (default)").arg(QLatin1String(DefaultModule))},
        {SkipOption, QString(),
         QStringLiteral("leave out signals that the design does not have or that do not fit")}};
    command.takesDesign = true;
    command.hasOutput = true;
    command.run = runSimulation;
    return command;
}

} // namespace

const Command &simulationCommand()
{
    static const Command command = makeCommand();
    return command;
}

} // namespace Tool
