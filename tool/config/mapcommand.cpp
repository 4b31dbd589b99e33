// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "mapcommand.h"

#include "portmap.h"

#include <tool/command.h>
#include <tool/configfile.h>
#include <tool/console.h>
#include <tool/invocation.h>
#include <tool/jsonvalue.h>

namespace Tool {

namespace {

const QString FormatOption = QStringLiteral("--format");

const char *kindOf(const MappedBit &bit)
{
    return bit.type == TARN::ProbeTypeIn ? "in" : "out";
}

void writeCsv(const OwnedCores &cores, Console *console)
{
    console->write(csvLine({"core", "kind", "port", "bit", "net", "bus", "initialValue"}));
    forEachMappedBit(cores.list(), [console](const MappedBit &bit) {
        console->write(
            csvLine({QByteArray::number(bit.core), kindOf(bit), QByteArray::number(bit.port),
                     QByteArray::number(bit.bit), bit.net.toUtf8(), bit.bus.toUtf8(),
                     bit.initialValue.isNull() ? QByteArray()
                                               : QByteArray(1, bit.initialValue.toLatin1())}));
    });
}

/// Every object has all keys. What a bit has not is null.
QByteArray jsonOf(const MappedBit &bit)
{
    JsonObject object;
    object["core"] = bit.core;
    object["kind"] = kindOf(bit);
    object["port"] = bit.port;
    object["bit"] = bit.bit;
    object["net"] = jsonText(bit.net);
    object["bus"] = nullptr;
    if (!bit.bus.isEmpty())
        object["bus"] = jsonText(bit.bus);
    object["initialValue"] = nullptr;
    if (!bit.initialValue.isNull())
        object["initialValue"] = bit.initialValue.digitValue();
    return jsonLine(object);
}

/// A line for each bit.
void writeJson(const OwnedCores &cores, Console *console)
{
    QByteArray separator = "[\n";
    forEachMappedBit(cores.list(), [console, &separator](const MappedBit &bit) {
        console->write(separator + jsonOf(bit));
        separator = ",\n";
    });
    console->write(separator == "[\n" ? "[]\n" : "\n]\n");
}

int runMap(const Invocation &invocation, Console *console)
{
    OwnedCores cores;
    if (!readConfig(invocation.files.first(), console, &cores))
        return Failure;
    if (invocation.value(FormatOption) == QLatin1String("json"))
        writeJson(cores, console);
    else
        writeCsv(cores, console);
    return Success;
}

Command makeCommand()
{
    Command command;
    command.name = QStringLiteral("export map");
    command.synopsis = QStringLiteral("FILE");
    command.summary = QStringLiteral("list every bit of every port with its net");
    command.description = QStringLiteral(
        "Lists every bit of every port, for the programs that talk to the cores: numbers\n"
        "of core and port, kind of the port (in, out), number of the bit, net, the bus to\n"
        "which the net belongs, and the initial value of a bit that a Probe Out port\n"
        "drives. Bit 0 is the least significant one: the last net of the port, and the\n"
        "last bit of its initial value.");
    command.options = {{FormatOption, QStringLiteral("csv|json"),
                        QStringLiteral("CSV by RFC 4180 (default), or a JSON list of objects")}};
    command.hasOutput = true;
    command.run = runMap;
    return command;
}

} // namespace

const Command &mapCommand()
{
    static const Command command = makeCommand();
    return command;
}

} // namespace Tool
